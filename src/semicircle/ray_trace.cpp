#include "semicircle/ray_trace.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/physics.h"

namespace {

using physics::kPi;
// A ray caught between the faces is followed through this many total
// reflections and then given up, so that no set-up can loop for ever.
constexpr int kMaxReflections = 8;
// Crossings closer than this (in radii) to the point the ray leaves from are
// the face it is leaving, met again through rounding.
constexpr double kMinStep = 1e-9;
// Slack (in radii) for a crossing to count as on a face: it lets the corners
// where the diameter meets the arc belong to both.
constexpr double kOnFace = 1e-12;

struct Vec {
    double x = 0.0;
    double y = 0.0;
};

Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
Vec operator*(double k, Vec a) { return {k * a.x, k * a.y}; }
double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
double length(Vec a) { return std::hypot(a.x, a.y); }
bool finite(Vec a) { return std::isfinite(a.x) && std::isfinite(a.y); }
bool finite(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }
Vec toVec(Point p) { return {p.x, p.y}; }
Point toPoint(Vec v) { return {v.x, v.y}; }

// The block seen in its own frame: centre at the origin, radius 1, flat face
// on x = 0 between y = −1 and 1, curved half on the −x side. Working there
// keeps the arithmetic independent of where the block stands and how large
// it is, and lets the flat face and the arc be met by the same routines
// whatever the tilt.
class BlockFrame {
public:
    explicit BlockFrame(const Block& block)
        : centre_{block.xc, block.yc}, radius_(block.radius), cos_(std::cos(block.tilt)), sin_(std::sin(block.tilt)) {
        if (block.direction == 2) {  // the same block turned by π about its centre
            cos_ = -cos_;
            sin_ = -sin_;
        }
    }
    Vec pointToLocal(Point w) const {
        const Vec offset = toVec(w) - centre_;
        return directionToLocal({offset.x / radius_, offset.y / radius_});
    }
    Point pointToWorld(Vec p) const { return toPoint(centre_ + radius_ * directionToWorld(p)); }
    Vec directionToLocal(Vec d) const { return {cos_ * d.x + sin_ * d.y, -sin_ * d.x + cos_ * d.y}; }
    Vec directionToWorld(Vec d) const { return {cos_ * d.x - sin_ * d.y, sin_ * d.x + cos_ * d.y}; }

private:
    Vec centre_;
    double radius_;
    double cos_;
    double sin_;
};

enum class Face { None, Flat, Arc };

struct Crossing {
    Face face = Face::None;
    double distance = 0.0;  // along the unit direction, in radii
    Vec point;
    Vec outwardNormal;
};

bool onCurvedSide(Vec p) { return p.x <= kOnFace; }

// First crossing of the ray p + t·d (d unit, t > 0) with the block's outline
// in the local frame. The face the ray has just left cannot be crossed again
// at once: a line meets the diameter's line only once, and the arc's second
// crossing lies beyond kMinStep.
std::optional<Crossing> firstCrossing(Vec p, Vec d, Face leaving) {
    std::optional<Crossing> best;
    auto consider = [&](Face face, Vec q, Vec normal) {
        const double t = dot(q - p, d);
        if (!(t > kMinStep) || !finite(q)) return;
        if (!best || t < best->distance) best = Crossing{face, t, q, normal};
    };

    if (leaving != Face::Flat) {
        // A second point far enough along that the line stays well defined
        // when p is far from the block.
        const Vec ahead = p + std::max(1.0, length(p)) * d;
        if (auto q = lineLineIntersection(toPoint(p), toPoint(ahead), Point{0.0, -1.0}, Point{0.0, 1.0})) {
            const Vec hit{0.0, q->y};
            if (std::fabs(hit.y) <= 1.0 + kOnFace) consider(Face::Flat, hit, Vec{1.0, 0.0});
        }
    }

    // The arc as the line y = m·x + b against the unit circle; a steep ray is
    // handled with x and y exchanged so that its slope stays within ±1.
    const bool steep = std::fabs(d.y) > std::fabs(d.x);
    const Vec s = steep ? Vec{p.y, p.x} : p;
    const Vec e = steep ? Vec{d.y, d.x} : d;
    const double m = e.y / e.x;
    const double b = s.y - m * s.x;
    for (int root : {1, 2}) {
        const CircleCrossing c = lineCircleIntersection(m, b, 0.0, 0.0, 1.0, root);
        if (!c.found) continue;
        const Vec q = steep ? Vec{c.y, c.x} : Vec{c.x, c.y};
        if (!onCurvedSide(q)) continue;
        const double r = length(q);
        if (r > 0.0) consider(Face::Arc, q, (1.0 / r) * q);
    }
    return best;
}

struct Bend {
    bool totalReflection = false;
    Vec direction;
};

// Snell's law at a face whose unit normal is `normal` (either sense), for a
// unit direction d and the ratio eta = n1/n2 of the indices before and after
// the face. The tangential part of the direction is scaled by eta; when that
// would exceed 1 the light is totally reflected. Exactly 1 leaves grazing.
Bend bend(Vec d, Vec normal, double eta) {
    double cosIncidence = -dot(d, normal);
    if (cosIncidence < 0.0) {
        normal = -1.0 * normal;
        cosIncidence = -cosIncidence;
    }
    const Vec tangential = d + cosIncidence * normal;
    const double k = eta * length(tangential);
    if (k > 1.0) {
        const Vec reflected = d + (2.0 * cosIncidence) * normal;
        return {true, (1.0 / length(reflected)) * reflected};
    }
    const Vec refracted = eta * tangential - std::sqrt(std::max(0.0, 1.0 - k * k)) * normal;
    return {false, (1.0 / length(refracted)) * refracted};
}

// The angle in degrees between a direction and the normal's line; through
// the arctangent, which stays exact near the normal where the arccosine
// loses half the digits.
double fromNormal(Vec d, Vec normal) {
    return std::atan2(std::fabs(d.x * normal.y - d.y * normal.x), std::fabs(dot(d, normal))) * 180.0 / kPi;
}

FaceHit faceHit(const BlockFrame& frame, Point at, const Crossing& crossing, Vec d, const Bend& turn, bool inside) {
    FaceHit h;
    h.at = at;
    h.normal = toPoint(frame.directionToWorld(crossing.outwardNormal));
    h.flatFace = crossing.face == Face::Flat;
    h.entering = !inside;
    h.incidenceDegrees = fromNormal(d, crossing.outwardNormal);
    h.leavingDegrees = fromNormal(turn.direction, crossing.outwardNormal);
    h.totalReflection = turn.totalReflection;
    return h;
}

bool allFinite(const RayTrace& trace) {
    for (const RaySegment& s : trace.segments) {
        if (!finite(s.segment.from) || !finite(s.segment.to)) return false;
    }
    return true;
}

}  // namespace

Point sourcePoint(double incidenceDegrees, int /*direction*/) {
    const double a = incidenceDegrees * kPi / 180.0;
    return {kSourceCircleRadius * std::cos(a), kSourceCircleRadius * std::sin(a)};
}

RayTrace traceRay(const Block& block, double rayHeight, double incidenceDegrees) {
    if (block.direction != 1 && block.direction != 2) return {};
    if (!std::isfinite(rayHeight) || !std::isfinite(incidenceDegrees)) return {};
    const Point source = sourcePoint(incidenceDegrees, block.direction);
    const Point direction{0.0 - source.x, rayHeight - source.y};
    return tracePath(block, source, direction, incidenceDegrees);
}

namespace {

bool traceable(const Block& block, Point start, Point direction, double incidenceDegrees, double reach) {
    return std::isfinite(block.xc) && std::isfinite(block.yc) && std::isfinite(block.radius) &&
           std::isfinite(block.tilt) && std::isfinite(block.index) && block.radius > 0.0 && block.index > 0.0 &&
           finite(start) && finite(direction) && std::isfinite(incidenceDegrees) && std::isfinite(reach);
}

// The direction made unit length; scaled before its length is taken, so
// that huge components do not overflow.
Vec unitDirection(Point direction) {
    const double largest = std::max(std::fabs(direction.x), std::fabs(direction.y));
    if (!(largest > 0.0)) return {std::nan(""), std::nan("")};
    const Vec scaled{direction.x / largest, direction.y / largest};
    return (1.0 / length(scaled)) * scaled;
}

// The exit angle and the measured index of a finished trace.
void measure(RayTrace& trace, std::optional<Vec> exitDirection, double incidenceDegrees) {
    if (!exitDirection || !finite(*exitDirection)) return;
    trace.exitRayAngle = std::atan2(std::fabs(exitDirection->y), std::fabs(exitDirection->x));
    // Only light refracted at both faces is a measurement of the index;
    // after a total reflection the exit angle says nothing about it.
    if (*trace.exitRayAngle != 0.0 && !trace.totalReflection) {
        const double measured = std::fabs(std::sin(incidenceDegrees * kPi / 180.0) / std::sin(*trace.exitRayAngle));
        if (std::isfinite(measured)) trace.measuredIndex = measured;
    }
}

}  // namespace

RayTrace tracePath(const Block& block, Point start, Point direction, double incidenceDegrees, double reach) {
    if (!traceable(block, start, direction, incidenceDegrees, reach)) return {};
    reach = std::max(reach, 0.0);

    const BlockFrame frame(block);
    const Vec worldDirection = unitDirection(direction);
    const Vec p0 = frame.pointToLocal(start);
    if (!finite(p0) || !finite(worldDirection)) return {};

    RayTrace trace;
    auto extend = [&](SegmentKind kind, Point from, Vec localDirection) {
        const Vec w = frame.directionToWorld(localDirection);
        trace.segments.push_back({{from, toPoint(toVec(from) + reach * w)}, kind});
        return w;
    };

    Vec p = p0;
    Vec d = frame.directionToLocal(worldDirection);
    bool inside = p.x < -kOnFace && length(p) < 1.0 - kOnFace;
    SegmentKind kind = inside ? SegmentKind::Inside : SegmentKind::Incident;
    Point from = start;
    Face leaving = Face::None;
    int reflections = 0;
    std::optional<Vec> exitDirection;

    while (true) {
        const std::optional<Crossing> crossing = firstCrossing(p, d, leaving);
        if (!crossing) {
            // Outside, the ray passes the block by; inside, rounding has lost
            // the outline, and the ray is left where it is.
            if (!inside) extend(kind, from, d);
            break;
        }
        const Point hit = frame.pointToWorld(crossing->point);
        trace.segments.push_back({{from, hit}, kind});
        trace.hitBlock = true;

        const double eta = inside ? block.index : 1.0 / block.index;
        const Bend turn = bend(d, crossing->outwardNormal, eta);
        trace.hits.push_back(faceHit(frame, hit, *crossing, d, turn, inside));
        if (turn.totalReflection) {
            trace.totalReflection = true;
            if (!inside) {  // a block less dense than air turns the light back at once
                extend(SegmentKind::Reflected, hit, turn.direction);
                break;
            }
            if (++reflections > kMaxReflections) break;
        } else if (inside) {
            exitDirection = extend(SegmentKind::Emerging, hit, turn.direction);
            break;
        } else {
            inside = true;
        }
        p = crossing->point;
        d = turn.direction;
        from = hit;
        leaving = crossing->face;
        kind = SegmentKind::Inside;
    }

    if (!allFinite(trace)) return {};
    measure(trace, exitDirection, incidenceDegrees);
    return trace;
}

std::optional<double> criticalAngleDegrees(double index) {
    if (!std::isfinite(index) || index < 1.0) return std::nullopt;
    const std::optional<double> angle = physics::arcSine(1.0 / index);
    if (!angle) return std::nullopt;
    return *angle * 180.0 / kPi;
}
