#pragma once
#include <optional>
#include <vector>

namespace history {

// How well the straight line y = slope·x + intercept fits the points it was
// fitted to, and how sure the index n = 1/slope is.
struct FitStatistics {
    int points = 0;
    // The slope's standard error, s / √Σ(x − x̄)² with s² = Σe² / (N − 2);
    // none with fewer than three points, where no scatter is left to judge.
    std::optional<double> slopeError;
    // The standard uncertainty of n = 1/slope carried through the inverse:
    // u(n) = u(slope) / slope². None where the slope's error is none or the
    // slope is 0.
    std::optional<double> indexError;
    // The coefficient of determination 1 − Σe² / Σ(y − ȳ)²; none with fewer
    // than three points (two points always give 1) or when every y is equal.
    std::optional<double> rSquared;
};

// The statistics of the least-squares line through the first `count` points
// of x and y (0-based arrays); the line is computed afresh in double
// precision. Empty statistics (points = count, nothing else) when the points
// cannot be fitted (fewer than two, all x equal, non-finite values).
FitStatistics fitStatistics(const std::vector<double>& x, const std::vector<double>& y, int count);

// Each point's distance above the line (y − slope·x − intercept), for the
// first `count` points.
std::vector<double> residuals(const std::vector<double>& x, const std::vector<double>& y, int count, double slope,
                              double intercept);

}  // namespace history
