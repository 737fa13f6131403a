#pragma once
#include <numbers>
#include <optional>

// The arithmetic of refraction that every floor shares: π, degrees and
// radians, the arc sine as the program computes it, Snell's law and the
// critical angle. Plain C++; every screen and every model calls these
// rather than writing its own.
namespace physics {

inline constexpr double kPi = std::numbers::pi;
// One degree in radians.
inline constexpr double kDegree = kPi / 180.0;

constexpr double radians(double degrees) { return degrees * kPi / 180.0; }
constexpr double degrees(double radians) { return radians * 180.0 / kPi; }

// The arc sine as the program computes it: atan(x / √(1 − x²)), π/2 at
// x = 1. None outside (−1, 1], where that would divide by zero or fail.
std::optional<double> arcSine(double x);
// The same arc sine held at ±π/2 for |x| ≥ 1 (a sine rounded just past 1
// still names a grazing ray).
double clampedArcSine(double x);

// Snell's law for light entering a medium of relative index n: the sine of
// the refraction angle, sin r = sin i / n.
inline double refractedSine(double sinIncidence, double n) { return sinIncidence / n; }

// The critical angle, in degrees, between media of relative index n (either
// way round: the angle in the denser one); none for n ≤ 0, n = 1 or n not
// finite.
std::optional<double> criticalAngleDegrees(double n);

}  // namespace physics
