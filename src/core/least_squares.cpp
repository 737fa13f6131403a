#include "core/least_squares.h"

#include <cmath>
#include <cstddef>
#include <numbers>

std::optional<FittedLine> leastSquaresLine(const std::vector<double>& x, const std::vector<double>& y, int count) {
    if (count < 1) return std::nullopt;
    const auto n = static_cast<std::size_t>(count);
    if (x.size() <= n || y.size() <= n) return std::nullopt;

    double sx = 0.0;
    double sy = 0.0;
    double sxy = 0.0;
    double sxx = 0.0;
    bool allXEqual = true;
    for (std::size_t i = 1; i <= n; ++i) {
        sx += x[i];
        sy += y[i];
        sxy += x[i] * y[i];
        sxx += x[i] * x[i];
        if (x[i] != x[1]) allXEqual = false;
    }
    // With every x the same the denominator is zero in exact arithmetic, but
    // the rounded sums may leave a tiny remainder that would give a wild slope.
    const double cnt = static_cast<double>(count);
    const double denominator = cnt * sxx - sx * sx;
    if (allXEqual || denominator == 0.0 || !std::isfinite(denominator)) return std::nullopt;

    const double slope = (cnt * sxy - sx * sy) / denominator;
    const double intercept = (sy - slope * sx) / cnt;
    const FittedLine line{static_cast<float>(intercept), static_cast<float>(slope)};
    if (!std::isfinite(line.intercept) || !std::isfinite(line.slope)) return std::nullopt;
    return line;
}
