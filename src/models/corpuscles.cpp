#include "models/corpuscles.h"

#include <algorithm>
#include <cmath>

namespace kymatiko {

double newtonLayerThickness(double n, double pull, double speed) {
    if (!std::isfinite(n) || n <= 0.0 || !std::isfinite(pull) || pull <= 0.0) return 0.0;
    return speed * speed * std::fabs(n * n - 1.0) / (2.0 * pull);
}

namespace {

// A stretch of the motion with constant acceleration.
struct Leg {
    Point start;
    double vx, vy;    // velocity at the start
    double ax, ay;    // acceleration
    double duration;  // in table steps
    Point at(double t) const { return {start.x + vx * t + 0.5 * ax * t * t, start.y + vy * t + 0.5 * ay * t * t}; }
    Point end() const { return at(duration); }
    double endVx() const { return vx + ax * duration; }
    double endVy() const { return vy + ay * duration; }
};

// Straight on from p with velocity (vx, vy) to the edge of the field.
Leg toEdge(const Field& field, Point p, double vx, double vy) {
    const Point edge = edgeOfField(field, p, vx, vy);
    const double speed = std::hypot(vx, vy);
    const double duration = speed > 0.0 ? std::hypot(edge.x - p.x, edge.y - p.y) / speed : 0.0;
    return {p, vx, vy, 0.0, 0.0, duration};
}

bool insideField(const Field& field, Point p) {
    const double slack = 0.5;
    return p.x >= -slack && p.x <= field.width + slack && p.y >= -slack && p.y <= field.height + slack;
}

// Positions at whole time steps along the legs, while inside the field.
std::vector<Point> sample(const Field& field, const std::vector<Leg>& legs) {
    std::vector<Point> points;
    double legStart = 0.0;
    std::size_t leg = 0;
    for (int step = 0; step < kPathCapacity && leg < legs.size(); ++step) {
        const double t = step;
        while (leg < legs.size() && t > legStart + legs[leg].duration) {
            legStart += legs[leg].duration;
            ++leg;
        }
        if (leg == legs.size()) break;
        const Point p = legs[leg].at(t - legStart);
        if (!insideField(field, p) || !std::isfinite(p.x) || !std::isfinite(p.y)) break;
        points.push_back(p);
    }
    return points;
}

// The legs back up after a turn in the layers: the way down run backwards.
// The force of a layer does not depend on the direction of travel, so each
// leg back keeps its acceleration and starts with the velocity the way down
// ended with, its normal part reversed: it then retraces the way down
// mirrored, and leaves each leg with the mirror of the velocity it came in
// with. (Reversing the acceleration too would keep pulling the corpuscle
// down on its way up.)
void mirrorBack(std::vector<Leg>& legs, std::size_t firstInLayers) {
    std::vector<Leg> back;
    Point p = legs.back().end();
    for (std::size_t k = legs.size(); k-- > firstInLayers;) {
        const Leg& down = legs[k];
        Leg up{p, down.endVx(), -down.endVy(), down.ax, down.ay, down.duration};
        back.push_back(up);
        p = up.end();
    }
    legs.insert(legs.end(), back.begin(), back.end());
}

// The way through Newton's one layer, from the point of incidence with the
// speeds along (v) and across (u) the boundary: a constant pull across it,
// down into a denser medium, back up out of a rarer one.
Leg oneLayerLeg(Point hit, double v, double u, double n, double pull, double thickness, bool totalReflection) {
    const double g = pull * (n > 1.0 ? 1.0 : -1.0);  // downwards pull; negative pushes back
    const double disc = u * u + 2.0 * g * thickness;
    double down = 0.0;
    if (disc >= 0.0) down = 2.0 * thickness / (u + std::sqrt(disc));  // time to the bottom of the layer
    if (totalReflection && g < 0.0)
        down = std::min(disc >= 0.0 ? down : u / -g, u / -g);
    else if (disc < 0.0)
        down = u / -g;
    return {hit, v, -u, 0.0, -g, down};
}

// The way down through the parallel layers, each a step of the index, with
// their upper faces and the construction's check of itself.
void parallelLayerLegs(std::vector<Leg>& legs, Track& track, Point hit, double si, double n, double thickness) {
    const double layer = thickness / kParallelLayers;
    Point p = hit;
    for (int k = 1; k <= kParallelLayers; ++k) {
        track.faces.push_back(p.y);
        const double nk = std::sqrt(1.0 + (n * n - 1.0) * k / kParallelLayers);
        const double sk = si / nk;
        if (std::fabs(sk) >= kTotalReflectionSine) break;  // turns back at this face
        const double ck = std::sqrt(1.0 - sk * sk);
        const double speed = kCorpuscleSpeed * nk;
        const Leg leg{p, speed * sk, -speed * ck, 0.0, 0.0, layer / (speed * ck)};
        legs.push_back(leg);
        const Point reached = leg.end();
        if (const auto x = lineCrossingX(p.x, p.y, p.x + sk, p.y - ck, p.y - layer))
            track.mismatch = std::max(track.mismatch, std::fabs(*x - reached.x));
        p = reached;
    }
}

}  // namespace

Track corpuscleTrack(const Field& field, double incidenceRadians, double n, CorpuscleModel model, double pull) {
    Track track;
    const Refraction r = refract(incidenceRadians, n);
    if (!r.valid || !std::isfinite(pull) || pull <= 0.0 || !(field.width > 0.0) || !(field.height > 0.0)) return track;
    track.totalReflection = r.totalReflection;
    const double v1 = kCorpuscleSpeed;
    const double si = std::sin(r.incidence), ci = std::cos(r.incidence);
    const Point hit = field.hit();
    const Point start = edgeOfField(field, hit, -si, ci);
    std::vector<Leg> legs{{start, v1 * si, -v1 * ci, 0.0, 0.0, std::hypot(hit.x - start.x, hit.y - start.y) / v1}};

    const double thickness = model == CorpuscleModel::Descartes ? 0.0 : newtonLayerThickness(n, pull);
    track.thickness = thickness;
    const std::size_t firstInLayers = legs.size();
    const double u = v1 * ci;  // speed across the boundary on arrival

    if (thickness <= 0.0) {
        // Descartes (or alike media): the whole change at the boundary.
    } else if (model == CorpuscleModel::NewtonOneLayer) {
        track.faces = {field.boundary(), field.boundary() - thickness};
        legs.push_back(oneLayerLeg(hit, v1 * si, u, n, pull, thickness, r.totalReflection));
    } else {
        parallelLayerLegs(legs, track, hit, si, n, thickness);
        track.faces.push_back(field.boundary() - thickness);
    }

    const Leg& last = legs.back();
    if (r.totalReflection) {
        if (legs.size() > firstInLayers) mirrorBack(legs, firstInLayers);
        const Point back = legs.back().end();
        legs.push_back(toEdge(field, back, v1 * si, u));
    } else {
        const double v2 = v1 * n;
        const Point from = legs.size() > firstInLayers ? last.end() : hit;
        legs.push_back(toEdge(field, from, v2 * std::sin(r.refraction), -v2 * std::cos(r.refraction)));
    }
    track.points = sample(field, legs);
    return track;
}

double corpuscleIndex(long tick, int intervalMs, int k, double spacing) {
    return static_cast<double>(tick) * (intervalMs / 40.0) - k * spacing;
}

}  // namespace kymatiko
