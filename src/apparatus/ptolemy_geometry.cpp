#include "apparatus/ptolemy_geometry.h"

#include <algorithm>
#include <cmath>

#include "core/physics.h"

namespace ptolemy {

namespace {

bool finite(double v) { return std::isfinite(v); }

// The arc sine as atan(x / √(1 − x²)); none at |x| ≥ 1.
std::optional<double> arcSineOf(double x) {
    if (!finite(x) || std::fabs(x) >= 1.0) return std::nullopt;
    return physics::arcSine(x);
}

double clampToView(double y) { return std::clamp(y, -1.2 * kViewHalfHeight, 1.2 * kViewHalfHeight); }

// The angle from the normal (radians) of the ray from the target at w on
// the disc up to the surface point x = edgeOffset; none when the target is
// not under water.
std::optional<double> rayIncidence(double w, double edgeOffset, double discRadius) {
    const double depth = discRadius * std::cos(w);
    if (depth <= 0.0) return std::nullopt;
    return std::atan((discRadius * std::sin(w) - edgeOffset) / depth);
}

Band bandAround(double centreDegrees, double halfDegrees) {
    return {clampToView((centreDegrees + halfDegrees) * kViewUnitsPerDegree),
            clampToView((centreDegrees - halfDegrees) * kViewUnitsPerDegree)};
}
}  // namespace

std::optional<SightLine> PtolemySightLine(double waterDegrees, double edgeOffset, double index, double discRadius) {
    if (!finite(waterDegrees) || !finite(edgeOffset) || !finite(index) || !finite(discRadius) || discRadius <= 0.0)
        return std::nullopt;
    // The target on the water arc; the ray runs from it up to (edgeOffset, 0).
    const std::optional<double> incidence = rayIncidence(radians(waterDegrees), edgeOffset, discRadius);
    if (!incidence) return std::nullopt;
    const std::optional<double> air = arcSineOf(index * std::sin(*incidence));
    if (!air) return std::nullopt;
    // On into air, leaning the other way: (x0 − t·sin a, t·cos a) on the circle.
    const double sa = std::sin(*air);
    const double ca = std::cos(*air);
    const double b = -edgeOffset * sa;
    const double t = -b + std::sqrt(b * b - (edgeOffset * edgeOffset - discRadius * discRadius));
    SightLine line;
    line.incidenceDegrees = degrees(*incidence);
    line.airDegrees = degrees(*air);
    line.surfaceX = edgeOffset;
    line.endX = edgeOffset - t * sa;
    line.endY = t * ca;
    if (!finite(line.endX) || !finite(line.endY)) return std::nullopt;
    return line;
}

std::optional<double> expectedAirAngle(double waterDegrees, double index) {
    if (!finite(waterDegrees) || !finite(index)) return std::nullopt;
    const std::optional<double> a = arcSineOf(index * std::sin(radians(waterDegrees)));
    if (!a) return std::nullopt;
    return degrees(*a);
}

bool allSightLinesLeave(int waterDegrees, double index) {
    for (double edge : {0.0, kBodySize, -kBodySize})
        if (!PtolemySightLine(waterDegrees, edge, index)) return false;
    return true;
}

GuardResult guardWaterAngle(int requestedDegrees, double index) {
    GuardResult result{std::clamp(requestedDegrees, kMinWaterAngle, kMaxWaterAngle), 0, std::nullopt};
    // One degree less each time round; the lowest angle is drawn whatever
    // happens, so the loop ends after at most 87 steps.
    while (result.angle > kMinWaterAngle && !allSightLinesLeave(result.angle, index)) {
        if (PtolemySightLine(result.angle, 0.0, index) && !result.edgeTurnedBack) {
            for (double edge : {kBodySize, -kBodySize}) {
                if (PtolemySightLine(result.angle, edge, index)) continue;
                if (const auto incidence = rayIncidence(radians(result.angle), edge, kDiscRadius))
                    result.edgeTurnedBack = EdgeTurnedBack{degrees(*incidence), index * std::sin(*incidence)};
                break;
            }
        }
        --result.angle;
        ++result.restarts;
    }
    return result;
}

double bodyDisplacement(int positionValue) { return static_cast<double>(positionValue) / 100.0; }

double airBodyAngle(int waterDegrees, int positionValue, double targetAngle) {
    const double limit = 90.0 - std::max(0.0, targetAngle) / 2.0;
    const double predicted = expectedAirAngle(waterDegrees).value_or(static_cast<double>(waterDegrees));
    return std::clamp(predicted + bodyDisplacement(positionValue), -limit, limit);
}

std::optional<SightView> sightView(double waterDegrees, double airDegrees, double targetAngle, double index) {
    const std::optional<double> expected = expectedAirAngle(waterDegrees, index);
    if (!expected || !finite(airDegrees) || !finite(targetAngle)) return std::nullopt;
    const double half = std::max(0.0, targetAngle) / 2.0;
    SightView view;
    // Directions are measured from the observer's line: over H, through E.
    view.offsetDegrees = *expected - airDegrees;
    view.target = bandAround(view.offsetDegrees, half);
    view.airBody = bandAround(0.0, half);
    view.centralBody = bandAround(0.0, degrees(std::atan(kBodySize / kDiscRadius)));
    // Covered to within a quarter of the body's size, or half a step of the
    // scroll bar (a hundredth of a degree) for the smallest bodies.
    const double tolerance = std::max(half / 2.0, bodyDisplacement(1) / 2.0);
    view.covered = std::fabs(view.offsetDegrees) <= tolerance;
    return view;
}

}  // namespace ptolemy
