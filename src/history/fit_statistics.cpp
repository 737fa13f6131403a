#include "history/fit_statistics.h"

#include <algorithm>
#include <cmath>

namespace history {

std::vector<double> residuals(const std::vector<double>& x, const std::vector<double>& y, int count, double slope,
                              double intercept) {
    const auto n = std::min({static_cast<std::size_t>(std::max(count, 0)), x.size(), y.size()});
    std::vector<double> e(n);
    for (std::size_t k = 0; k < n; ++k) e[k] = y[k] - (slope * x[k] + intercept);
    return e;
}

FitStatistics fitStatistics(const std::vector<double>& x, const std::vector<double>& y, int count) {
    FitStatistics stats;
    stats.points = count;
    if (count < 2 || x.size() < static_cast<std::size_t>(count) || y.size() < static_cast<std::size_t>(count))
        return stats;
    const auto n = static_cast<std::size_t>(count);
    const double N = static_cast<double>(count);

    // Centred sums: they keep their precision when the x lie close together.
    double meanX = 0.0, meanY = 0.0;
    for (std::size_t k = 0; k < n; ++k) {
        meanX += x[k];
        meanY += y[k];
    }
    meanX /= N;
    meanY /= N;
    double sxx = 0.0, sxy = 0.0, syy = 0.0;
    for (std::size_t k = 0; k < n; ++k) {
        const double dx = x[k] - meanX;
        const double dy = y[k] - meanY;
        sxx += dx * dx;
        sxy += dx * dy;
        syy += dy * dy;
    }
    if (!(sxx > 0.0) || !std::isfinite(sxx) || !std::isfinite(sxy) || !std::isfinite(syy)) return stats;
    if (count < 3) return stats;

    const double slope = sxy / sxx;
    const double intercept = meanY - slope * meanX;
    double sse = 0.0;
    for (double e : residuals(x, y, count, slope, intercept)) sse += e * e;

    stats.slopeError = std::sqrt(sse / (N - 2.0) / sxx);
    if (slope != 0.0) stats.indexError = *stats.slopeError / (slope * slope);
    if (syy > 0.0) stats.rSquared = std::clamp(1.0 - sse / syy, 0.0, 1.0);
    return stats;
}

}  // namespace history
