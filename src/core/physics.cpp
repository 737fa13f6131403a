#include "core/physics.h"

#include <algorithm>
#include <cmath>

namespace physics {

std::optional<double> arcSine(double x) {
    // x = 1 would divide by zero and is answered directly.
    if (x == 1.0) return kPi / 2.0;
    if (!(x > -1.0 && x < 1.0)) return std::nullopt;
    return std::atan(x / std::sqrt(1.0 - x * x));
}

double clampedArcSine(double x) {
    if (x >= 1.0) return kPi / 2.0;
    if (x <= -1.0) return -kPi / 2.0;
    return std::atan(x / std::sqrt(1.0 - x * x));
}

std::optional<double> criticalAngleDegrees(double n) {
    if (!std::isfinite(n) || n <= 0.0 || n == 1.0) return std::nullopt;
    return degrees(clampedArcSine(std::min(n, 1.0 / n)));
}

}  // namespace physics
