#include "history/refraction_laws.h"

#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/number_format.h"
#include "core/physics.h"

namespace history {

namespace {
using physics::kDegree;
constexpr float kKeplerLimit = 45.0f;
}  // namespace

KeplerModel keplerModel(const std::vector<AnglePair>& pairs) {
    KeplerModel model;
    std::vector<double> x{0.0};
    std::vector<double> y{0.0};
    for (const AnglePair& p : pairs) {
        if (!(p.incidence < kKeplerLimit)) break;
        x.push_back(static_cast<double>(p.incidence));
        y.push_back(static_cast<double>(p.refraction));
    }
    model.runLength = static_cast<int>(x.size()) - 1;
    if (const auto line = leastSquaresLine(x, y, model.runLength)) model.ratio = static_cast<double>(line->slope);
    return model;
}

std::vector<CurvePoint> snellCurve(double index, bool leavesDenserMedium) {
    std::vector<CurvePoint> curve;
    if (!std::isfinite(index) || !usableIndex(index)) return curve;
    for (int degrees = 0; degrees <= 90; ++degrees) {
        const double sinI = std::sin(degrees * kDegree);
        std::optional<double> r;
        if (leavesDenserMedium) {
            if (!(sinI < 1.0 / index)) break;
            r = physics::arcSine(index * sinI);
        } else {
            const double x = sinI / index;
            if (x > 1.0) break;
            r = physics::arcSine(x);
        }
        if (!r) break;
        curve.push_back({static_cast<double>(degrees), *r / kDegree});
    }
    return curve;
}

std::vector<ExpectedRow> expectedRows(double index) {
    std::vector<ExpectedRow> rows;
    if (!std::isfinite(index) || !usableIndex(index)) return rows;
    const bool denser = index >= 1.0;
    const int count = denser ? 9 : 8;
    const char* pattern = denser ? "0.000000" : "0.00000";
    for (int k = 1; k <= count; ++k) {
        ExpectedRow row{10 * k, std::nullopt};
        const double x = std::sin(10.0 * k * kDegree) / index;
        if (x <= 1.0) {
            if (const auto r = physics::arcSine(x)) row.refraction = formatNumber(*r / kDegree, pattern);
        }
        rows.push_back(row);
    }
    return rows;
}

}  // namespace history
