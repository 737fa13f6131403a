#pragma once
#include <optional>
#include <vector>

// The least-squares straight line y = slope·x + intercept through points
// 1 … count of two 1-based arrays (element 0 is not used). With the sums
// Sx, Sy, Sxy, Sxx: slope = (count·Sxy − Sx·Sy) / (count·Sxx − Sx·Sx),
// intercept = (Sy − slope·Sx) / count, computed in double precision and
// returned rounded to single precision. None when count < 1, the arrays are
// too short, the denominator is zero (a single point, or all x equal — also
// when rounding leaves a tiny remainder), or the line overflows a single.
struct FittedLine {
    float intercept;
    float slope;
};
std::optional<FittedLine> leastSquaresLine(const std::vector<double>& x, const std::vector<double>& y, int count);
