#include "models/wave_fronts.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace kymatiko {

namespace {

// The part of the line p0 + u·q, lo ≤ u ≤ hi, where alpha·u ≤ beta holds
// for every constraint; none when nothing is left.
struct Constraint {
    double alpha, beta;
};

std::optional<Segment> clipLine(Point p0, Point q, double lo, double hi, std::initializer_list<Constraint> extra,
                                const Field& field) {
    auto apply = [&](double alpha, double beta) {
        if (alpha > 0.0)
            hi = std::min(hi, beta / alpha);
        else if (alpha < 0.0)
            lo = std::max(lo, beta / alpha);
        else if (beta < 0.0)
            hi = lo - 1.0;  // never holds
    };
    for (const Constraint& c : extra) apply(c.alpha, c.beta);
    apply(-q.x, p0.x);                // x ≥ 0
    apply(q.x, field.width - p0.x);   // x ≤ width
    apply(-q.y, p0.y);                // y ≥ 0
    apply(q.y, field.height - p0.y);  // y ≤ height
    if (!(hi > lo)) return std::nullopt;
    return Segment{{p0.x + lo * q.x, p0.y + lo * q.y}, {p0.x + hi * q.x, p0.y + hi * q.y}};
}

}  // namespace

WaveFronts waveFronts(const Field& field, const Refraction& refraction, double n, const WaveSettings& settings) {
    WaveFronts fronts;
    if (!refraction.valid || !std::isfinite(n) || n <= 0.0 || !(settings.wavelength >= 1.0) ||
        !std::isfinite(settings.phase) || !(settings.beamHalfWidth > 0.0) || !(field.width > 0.0) ||
        !(field.height > 0.0))
        return fronts;
    const Point hit = field.hit();
    const double yb = field.boundary();
    const double si = std::sin(refraction.incidence), ci = std::cos(refraction.incidence);
    const double sr = std::sin(refraction.refraction), cr = std::cos(refraction.refraction);
    const double b = settings.beamHalfWidth;
    // The refracted beam is narrower or wider as cos r / cos i.
    const double b2 = ci > 1e-6 ? std::min(b * cr / ci, 4.0 * (field.width + field.height)) : b;

    const double reach = field.width + field.height;
    const double lambda = settings.wavelength;
    const double phase = std::fmod(settings.phase, lambda);
    const long first = static_cast<long>(std::floor((-reach - phase) / lambda));
    const long last = static_cast<long>(std::ceil((reach - phase) / lambda));
    for (long k = first; k <= last; ++k) {
        const double s = phase + static_cast<double>(k) * lambda;
        // Incident: hit + s·(sin i, −cos i) + u·(cos i, sin i), above the boundary.
        const Point p0{hit.x + s * si, hit.y - s * ci};
        if (auto seg = clipLine(p0, {ci, si}, -b, b, {{-si, p0.y - yb}}, field)) fronts.incident.push_back(*seg);
        if (settings.reflected) {
            // Reflected: hit + s·(sin i, cos i) + u·(cos i, −sin i), above the boundary.
            const Point q0{hit.x + s * si, hit.y + s * ci};
            if (auto seg = clipLine(q0, {ci, -si}, -b, b, {{si, q0.y - yb}}, field)) fronts.reflected.push_back(*seg);
        }
        if (!refraction.totalReflection) {
            // Refracted: hit + (s/n)·(sin r, −cos r) + u·(cos r, sin r), below it.
            const double s2 = s / n;
            const Point r0{hit.x + s2 * sr, hit.y - s2 * cr};
            if (auto seg = clipLine(r0, {cr, sr}, -b2, b2, {{sr, yb - r0.y}}, field)) fronts.refracted.push_back(*seg);
        }
    }
    return fronts;
}

}  // namespace kymatiko
