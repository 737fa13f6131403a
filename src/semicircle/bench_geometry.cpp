#include "semicircle/bench_geometry.h"

#include <cmath>
#include <numbers>

#include "core/physics.h"

namespace {

using physics::kPi;
constexpr double kTwoPi = 2.0 * physics::kPi;

bool finitePoint(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Brings an arc angle into [−2π, 0]: up by 2π while below −2π, down by 2π
// while above 0. fmod keeps this quick for absurd tilts.
double intoArcRange(double angle) {
    if (angle < -kTwoPi) angle = std::fmod(angle, kTwoPi);
    if (angle > 0.0) angle = std::fmod(angle, kTwoPi) - kTwoPi;
    return angle;
}

}  // namespace

Segment flatFace(const Block& block) {
    const double dx = -block.radius * std::sin(block.tilt);
    const double dy = block.radius * std::cos(block.tilt);
    return {{block.xc + dx, block.yc + dy}, {block.xc - dx, block.yc - dy}};
}

ArcAngles blockArcAngles(const Block& block) {
    double turn = std::isfinite(block.tilt) ? block.tilt : 0.0;
    if (block.direction == 2) turn += kPi;
    double start = intoArcRange(-kPi / 2.0 - turn);
    double end = intoArcRange(-3.0 * kPi / 2.0 - turn);
    // Both must be negative so that the two radii close the half disc; a
    // start of 0 cannot carry the sign and is nudged to −0.001, an end of 0
    // is the same direction as −2π.
    if (start == 0.0) start = -0.001;
    if (end == 0.0) end = -kTwoPi;
    return {start, end};
}

bool insideBlock(const Block& block, Point p) {
    if (!finitePoint(p) || !std::isfinite(block.xc) || !std::isfinite(block.yc) || !std::isfinite(block.radius) ||
        !std::isfinite(block.tilt) || block.radius < 0.0) {
        return false;
    }
    if (block.radius == 0.0) return p.x == block.xc && p.y == block.yc;
    // In units of the radius, with the curved side along −u.
    const double wx = (p.x - block.xc) / block.radius;
    const double wy = (p.y - block.yc) / block.radius;
    if (!std::isfinite(wx) || !std::isfinite(wy)) return false;
    double ux = std::cos(block.tilt);
    double uy = std::sin(block.tilt);
    if (block.direction == 2) {
        ux = -ux;
        uy = -uy;
    }
    constexpr double tolerance = 1e-12;
    const double side = wx * ux + wy * uy;  // > 0 on the flat side, away from the arc
    return side <= tolerance && std::hypot(wx, wy) <= 1.0 + tolerance;
}

CircleCrossing lineCircleIntersection(double m, double b, double x0, double y0, double radius, int direction) {
    CircleCrossing crossing;
    const double onePlusM2 = 1.0 + m * m;
    const double offset = y0 - m * x0 - b;
    const double d = onePlusM2 * radius * radius - offset * offset;
    if (!(d > 0.0) || !std::isfinite(d)) return crossing;

    const double root = direction == 1 ? std::sqrt(d) : -std::sqrt(d);
    const double x = (x0 + m * (y0 - b) + root) / onePlusM2;
    const double y = b + m * x;
    if (!std::isfinite(x) || !std::isfinite(y)) return crossing;

    crossing.found = true;
    crossing.x = x;
    crossing.y = y;
    if (x == x0) {
        crossing.radiusSlope = 0.0;
        crossing.radiusAngle = kPi / 2.0;
    } else {
        crossing.radiusSlope = (y - y0) / (x - x0);
        crossing.radiusAngle = std::atan(crossing.radiusSlope);
    }
    crossing.lineAngle = std::atan(m);
    crossing.incidence = crossing.radiusAngle - crossing.lineAngle;
    return crossing;
}

std::optional<Point> lineLineIntersection(Point a1, Point a2, Point b1, Point b2) {
    const double rx = a2.x - a1.x;
    const double ry = a2.y - a1.y;
    const double sx = b2.x - b1.x;
    const double sy = b2.y - b1.y;
    const double denominator = rx * sy - ry * sx;
    if (denominator == 0.0 || !std::isfinite(denominator)) return std::nullopt;
    const double t = ((b1.x - a1.x) * sy - (b1.y - a1.y) * sx) / denominator;
    const Point p{a1.x + t * rx, a1.y + t * ry};
    if (!finitePoint(p)) return std::nullopt;
    return p;
}
