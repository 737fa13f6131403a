#include "apparatus/ptolemy_fitting.h"

#include <cmath>

#include "core/number_input.h"
#include "core/physics.h"

namespace ptolemy_fit {

const DataSet& waterSet() {
    static const DataSet set{1.3333, {0, 10, 20, 30, 40, 50, 60, 70, 80}, {0, 7.5, 15.5, 22.5, 29, 35, 40.5, 45, 50}};
    return set;
}

const DataSet& glassSet() {
    static const DataSet set{1.52, {10, 20, 30, 40, 50, 60, 70, 80}, {7, 13.5, 19.5, 25, 30, 34.5, 38.5, 42}};
    return set;
}

double proportionalRatio(const DataSet& set) {
    if (set.incidence.size() < 2 || set.refraction.size() < 2 || set.incidence[1] == 0.0) return 0.0;
    return set.refraction[1] / set.incidence[1];
}

std::vector<std::optional<double>> snellRefraction(const DataSet& set) {
    std::vector<std::optional<double>> result;
    result.reserve(set.incidence.size());
    for (double i : set.incidence) {
        const double x = std::sin(physics::radians(i)) / set.index;
        if (!std::isfinite(x) || std::fabs(x) >= 1.0) {
            result.emplace_back();
            continue;
        }
        result.emplace_back(physics::degrees(*physics::arcSine(x)));
    }
    return result;
}

StartPair readStartPair(std::string_view typed, const DataSet& set) {
    bool blank = true;
    for (char c : typed)
        if (c != ' ' && c != '\t') blank = false;
    if (blank) return {StartPairAnswer::Cancelled};
    const std::optional<double> value = parseTypedNumber(typed);
    if (!value) return {StartPairAnswer::NotANumber};
    if (*value < 1.0 || *value > 7.0) return {StartPairAnswer::OutOfRange};
    if (*value != std::floor(*value)) return {StartPairAnswer::NotWhole};
    const int k = static_cast<int>(*value);
    if (static_cast<std::size_t>(k) + 1 >= set.refraction.size()) return {StartPairAnswer::BeyondTheSet, k};
    return {StartPairAnswer::Valid, k};
}

std::vector<double> adjustFromPair(const DataSet& set, int k) {
    const std::vector<double>& r = set.refraction;
    if (k < 0 || static_cast<std::size_t>(k) + 1 >= r.size()) return {};
    const std::size_t start = static_cast<std::size_t>(k);
    std::vector<double> adjusted(r.size());
    adjusted[start] = r[start];
    adjusted[start + 1] = r[start + 1];
    const double d = r[start + 1] - r[start];
    double difference = d;
    for (std::size_t j = start + 2; j < r.size(); ++j) {
        difference += kSecondDifference;
        adjusted[j] = adjusted[j - 1] + difference;
    }
    difference = d;
    for (std::size_t j = start; j-- > 0;) {
        difference -= kSecondDifference;
        adjusted[j] = adjusted[j + 1] - difference;
    }
    return adjusted;
}

}  // namespace ptolemy_fit
