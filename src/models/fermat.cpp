#include "models/fermat.h"

#include <algorithm>
#include <cmath>

namespace kymatiko {

Speeds speedsFor(SpeedLaw law, double n, double upper) {
    Speeds s{upper, upper};
    if (!std::isfinite(n) || n <= 0.0) return s;
    s.lower = law == SpeedLaw::Descartes ? upper * n : upper / n;
    return s;
}

double speedAt(const Speeds& speeds, double y, double boundaryY) {
    return y >= boundaryY ? speeds.upper : speeds.lower;
}

PathTime travelTime(Point a, Point b, Point c, double boundaryY, const Speeds& speeds) {
    PathTime t;
    t.d1 = std::hypot(b.x - a.x, b.y - a.y);
    t.d2 = std::hypot(c.x - b.x, c.y - b.y);
    t.time = t.d1 / speedAt(speeds, a.y, boundaryY) + t.d2 / speedAt(speeds, c.y, boundaryY);
    return t;
}

namespace {

// Sine of the angle of a segment from the normal to the boundary.
double sineFromNormal(Point p, Point q) {
    const double length = std::hypot(q.x - p.x, q.y - p.y);
    return length > 0.0 ? std::fabs(q.x - p.x) / length : 0.0;
}

}  // namespace

PathKind classifyPath(Point a, Point b, Point c, double boundaryY, double n, bool fermatLaw) {
    if (std::fabs(b.y - boundaryY) > kOnBoundary) return PathKind::Plain;
    const double sideA = a.y - boundaryY, sideC = c.y - boundaryY;
    if (sideA * sideC > 0.0) {
        // Slopes as rise over |run|; b between a and c in x keeps both runs
        // above zero.
        if ((b.x - a.x) * (c.x - b.x) <= 0.0) return PathKind::Plain;
        const double runA = std::fabs(b.x - a.x), runC = std::fabs(c.x - b.x);
        const double slopeA = std::fabs(a.y - b.y) / runA, slopeC = std::fabs(c.y - b.y) / runC;
        return std::fabs(slopeA - slopeC) <= kLawTolerance ? PathKind::Reflection : PathKind::Plain;
    }
    if (!fermatLaw || sideA * sideC == 0.0 || !std::isfinite(n)) return PathKind::Plain;
    const Point upper = sideA > 0.0 ? a : c;
    const Point lower = sideA > 0.0 ? c : a;
    if ((b.x - a.x) * (c.x - b.x) < 0.0) return PathKind::Plain;  // light does not turn back at a boundary it crosses
    const double law = sineFromNormal(upper, b) - n * sineFromNormal(b, lower);
    return std::fabs(law) <= kLawTolerance ? PathKind::Refraction : PathKind::Plain;
}

LeastTimeSearch findLeastTime(Point a, Point c, double boundaryY, const Speeds& speeds) {
    LeastTimeSearch s;
    const double step = std::fabs(c.x - a.x) / LeastTimeSearch::kCandidates;
    const double left = std::min(a.x, c.x);
    for (int i = 1; i <= LeastTimeSearch::kCandidates; ++i) {
        s.x[i] = left + i * step;
        s.time[i] = travelTime(a, {s.x[i], boundaryY}, c, boundaryY, speeds).time;
    }
    for (int i = 1; i <= LeastTimeSearch::kCandidates; ++i) {
        if (!std::isfinite(s.time[i])) continue;
        if (s.best == 0 || s.time[i] < s.bestTime) {  // strictly less: the leftmost of equal times stays
            s.best = i;
            s.bestTime = s.time[i];
            s.bestX = s.x[i];
        }
    }
    return s;
}

}  // namespace kymatiko
