#pragma once
#include <array>

#include "models/kymatiko.h"

// Fermat's principle of least time with three bodies: light goes from the
// magenta body (a) to the green one (c) through the blue body (b) on the
// boundary y = boundaryY; above the boundary it has the upper medium's speed,
// below it the lower one's.
namespace kymatiko {

// Descartes took light to be faster in the denser medium (c2 = c1·n),
// Fermat slower (c2 = c1 / n).
enum class SpeedLaw { Descartes, Fermat };

// Speed of light in the upper medium of the demonstration, field units per
// unit of time: travel times come out as a few units on the usual field.
inline constexpr double kUpperSpeed = 100.0;

struct Speeds {
    double upper = kUpperSpeed;
    double lower = kUpperSpeed;
};
Speeds speedsFor(SpeedLaw law, double n, double upper = kUpperSpeed);

// A body above the boundary (or on it) moves at the upper speed.
double speedAt(const Speeds& speeds, double y, double boundaryY);

struct PathTime {
    double d1 = 0.0;    // from a to b
    double d2 = 0.0;    // from b to c
    double time = 0.0;  // d1 / (speed on a's side) + d2 / (speed on c's side)
    double distance() const { return d1 + d2; }
};
PathTime travelTime(Point a, Point b, Point c, double boundaryY, const Speeds& speeds);

// What the path a → b → c shows.
enum class PathKind { Plain, Reflection, Refraction };
// The tolerances of the law tests: the angles' slopes (or sines) must agree
// within kLawTolerance and the blue body must lie within kOnBoundary units
// of the boundary.
inline constexpr double kLawTolerance = 0.05;
inline constexpr double kOnBoundary = 0.5;
// Reflection (Hero's law): a and c on the same side, b between them in x,
// equal slopes of the two segments. Refraction (only when Fermat's law is
// chosen): a and c on opposite sides and sin(upper angle) = n · sin(lower
// angle), angles from the normal.
PathKind classifyPath(Point a, Point b, Point c, double boundaryY, double n, bool fermatLaw);

// "FIND MINIMUM": 500 candidate crossings x(i) = min(xa, xc) + i·|xc − xa|/500,
// i = 1 … 500, on the boundary; the least time wins, the leftmost among
// equal times. Bodies at the same x give 500 copies of one point and the
// first wins.
struct LeastTimeSearch {
    static constexpr int kCandidates = 500;
    std::array<double, kCandidates + 1> x{};  // 1-based, as the pupil counts
    std::array<double, kCandidates + 1> time{};
    int best = 0;  // 0 when no candidate had a usable time
    double bestX = 0.0;
    double bestTime = 0.0;
};
LeastTimeSearch findLeastTime(Point a, Point c, double boundaryY, const Speeds& speeds);

}  // namespace kymatiko
