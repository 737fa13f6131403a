#include "history/data_pairs.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>

#include "core/number_input.h"
#include "core/physics.h"

namespace history {

namespace {

using physics::kDegree;
constexpr double kLargestAngle = 180.0;

bool blank(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; });
}

}  // namespace

TypedReading readTypedPairs(const std::vector<TypedRow>& rows) {
    TypedReading reading;
    for (std::size_t k = 0; k < rows.size() && !blank(rows[k].incidence); ++k) {
        const TypedRow& row = rows[k];
        if (blank(row.refraction)) continue;
        float angles[2] = {0.0f, 0.0f};
        const std::string* texts[2] = {&row.incidence, &row.refraction};
        for (int column = 0; column < 2; ++column) {
            const auto value = parseTypedNumber(*texts[column]);
            const auto kind = !value ? TypedRowError::Kind::NotANumber : TypedRowError::Kind::OutOfRange;
            if (!value || std::fabs(*value) > kLargestAngle) {
                reading.error = TypedRowError{kind, static_cast<int>(k) + 1, column == 1, *texts[column]};
                reading.pairs.clear();
                return reading;
            }
            angles[column] = static_cast<float>(*value);
        }
        reading.pairs.push_back({angles[0], angles[1]});
    }
    return reading;
}

std::vector<AnglePair> pairsFromLists(const std::vector<double>& incidence, const std::vector<double>& refraction) {
    std::vector<AnglePair> pairs;
    const std::size_t n = std::min(incidence.size(), refraction.size());
    for (std::size_t k = 0; k < n; ++k)
        pairs.push_back({static_cast<float>(incidence[k]), static_cast<float>(refraction[k])});
    return pairs;
}

SineFit fitSines(const std::vector<AnglePair>& pairs, bool leavesDenserMedium) {
    SineFit fit;
    for (const AnglePair& p : pairs) {
        fit.sinIncidence.push_back(std::sin(static_cast<double>(p.incidence) * kDegree));
        fit.sinRefraction.push_back(std::sin(static_cast<double>(p.refraction) * kDegree));
    }
    std::size_t fitted = pairs.size();
    if (leavesDenserMedium) {
        fitted = 0;
        while (fitted < pairs.size() && pairs[fitted].refraction < 90.0f) ++fitted;
    }
    fit.fittedPairs = static_cast<int>(fitted);

    // The fit takes 1-based arrays.
    std::vector<double> x{0.0};
    std::vector<double> y{0.0};
    x.insert(x.end(), fit.sinIncidence.begin(), fit.sinIncidence.begin() + static_cast<std::ptrdiff_t>(fitted));
    y.insert(y.end(), fit.sinRefraction.begin(), fit.sinRefraction.begin() + static_cast<std::ptrdiff_t>(fitted));
    fit.line = leastSquaresLine(x, y, fit.fittedPairs);
    fit.statistics = fitStatistics(fit.sinIncidence, fit.sinRefraction, fit.fittedPairs);
    if (fit.line && fit.line->slope != 0.0f) {
        const double index = 1.0 / static_cast<double>(fit.line->slope);
        if (std::isfinite(index)) fit.index = index;
    }
    return fit;
}

}  // namespace history
