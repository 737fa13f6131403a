#include "models/kymatiko.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kymatiko {

Field fieldFor(double pixelWidth, double pixelHeight, double units) {
    const double w = std::isfinite(pixelWidth) ? std::max(1.0, pixelWidth) : 1.0;
    const double h = std::isfinite(pixelHeight) ? std::max(1.0, pixelHeight) : 1.0;
    return {units * w / (w + h), units * h / (w + h)};
}

Refraction refract(double incidenceRadians, double n) {
    Refraction r;
    if (!std::isfinite(incidenceRadians) || !std::isfinite(n) || n <= 0.0) return r;
    r.valid = true;
    r.incidence = incidenceRadians;
    r.sinR = std::sin(incidenceRadians) / n;
    r.totalReflection = std::fabs(r.sinR) >= kTotalReflectionSine;
    r.refraction = r.totalReflection ? 0.0 : arcSine(r.sinR);
    return r;
}

Fresnel fresnel(const Refraction& refraction, double n) {
    Fresnel f;
    if (!refraction.valid || !std::isfinite(n) || n <= 0.0) return f;
    if (refraction.totalReflection) {
        f.rs = 1.0;
        f.rp = 1.0;
        return f;
    }
    const double i = refraction.incidence;
    const double r = refraction.refraction;
    const double sumSine = std::sin(i + r);
    const double sumTan = std::tan(i + r);
    // Near normal incidence both quotients are 0/0 (and at n = 1 the ray goes
    // straight through); their limits are the textbook values at 0°.
    if (std::fabs(sumSine) < 1e-9 || std::fabs(sumTan) < 1e-9) {
        f.rs = (1.0 - n) / (1.0 + n);
        f.ts = 2.0 / (1.0 + n);
        f.rp = (n - 1.0) / (n + 1.0);
        f.tp = 2.0 / (1.0 + n);
        return f;
    }
    f.rs = std::sin(i - r) / sumSine;
    f.ts = 2.0 * std::sin(r) * std::cos(i) / sumSine;
    f.rp = std::tan(i - r) / sumTan;
    f.tp = 2.0 * std::sin(r) * std::cos(i) / (sumSine * std::cos(i - r));
    return f;
}

Shares shares(const Fresnel& f) { return {100.0 * std::fabs(f.rs), 100.0 * std::fabs(f.ts)}; }

std::optional<double> lineCrossingX(double x0, double y0, double x1, double y1, double lineY) {
    if (y1 == y0) return std::nullopt;
    return x0 + (x1 - x0) * (lineY - y0) / (y1 - y0);
}

std::optional<double> lineCrossingY(double x0, double y0, double x1, double y1, double lineX) {
    if (x1 == x0) return std::nullopt;
    return y0 + (y1 - y0) * (lineX - x0) / (x1 - x0);
}

std::optional<double> lineCrossingRatio(double y0, double y1, double lineY) {
    if (y1 == y0) return std::nullopt;
    return (lineY - y0) / (y1 - y0);
}

Point edgeOfField(const Field& field, Point from, double dx, double dy) {
    // The nearest of the four edges ahead of the ray.
    double t = std::numeric_limits<double>::infinity();
    if (dx > 0.0) t = std::min(t, (field.width - from.x) / dx);
    if (dx < 0.0) t = std::min(t, -from.x / dx);
    if (dy > 0.0) t = std::min(t, (field.height - from.y) / dy);
    if (dy < 0.0) t = std::min(t, -from.y / dy);
    if (!std::isfinite(t) || t < 0.0) t = 0.0;
    return {from.x + t * dx, from.y + t * dy};
}

namespace {

// Points `step` apart from a to b, both ends included, at most what the
// tables hold.
void walk(std::vector<Point>& out, Point a, Point b, double step, int room) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const int pieces = std::clamp(static_cast<int>(std::ceil(length / step)), 1, std::max(1, room - 1));
    for (int k = 0; k <= pieces; ++k) {
        const double f = static_cast<double>(k) / pieces;
        out.push_back({a.x + f * (b.x - a.x), a.y + f * (b.y - a.y)});
    }
}

}  // namespace

RayPaths rayPaths(const Field& field, const Refraction& refraction, double step) {
    RayPaths paths;
    if (!refraction.valid || !(step > 0.0) || !std::isfinite(step)) return paths;
    const Point hit = field.hit();
    const double si = std::sin(refraction.incidence), ci = std::cos(refraction.incidence);
    // The light comes down from the upper left: back along (−sin i, cos i).
    const Point start = edgeOfField(field, hit, -si, ci);
    walk(paths.incident, start, hit, step, kPathCapacity / 3);
    walk(paths.reflected, hit, edgeOfField(field, hit, si, ci), step, kPathCapacity / 3);
    if (!refraction.totalReflection) {
        const double sr = std::sin(refraction.refraction), cr = std::cos(refraction.refraction);
        walk(paths.refracted, hit, edgeOfField(field, hit, sr, -cr), step, kPathCapacity / 3);
    }
    return paths;
}

int RayPaths::length() const {
    return static_cast<int>(incident.size() + std::max(reflected.size(), refracted.size()));
}

}  // namespace kymatiko
