#include "semicircle/bench_experiments.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/physics.h"

namespace {

using physics::kPi;
// Parallel rays start this far out, beyond the edge of the bench (±200).
constexpr double kBeamStart = 200.0;
constexpr int kMaxBeamRays = 1000;

int roundedControl(double value) {
    // Scroll bars hold whole steps; values are rounded half away from zero
    // and kept within an int (the random draws are small, but stay safe).
    constexpr double limit = 2147483647.0;
    if (!std::isfinite(value)) return 0;
    return static_cast<int>(std::clamp(std::round(value), -limit, limit));
}

}  // namespace

std::vector<double> measurementIncidences() { return {0.6, 10.0, 20.0, 30.0, 40.0, 50.0, 60.0, 70.0, 80.0}; }

RaysSeries runIncidenceSeries(const Block& block, double rayHeight) {
    RaysSeries series;
    double sum = 0.0;
    int measured = 0;
    for (double incidence : measurementIncidences()) {
        RayTrace trace = traceRay(block, rayHeight, incidence);
        if (trace.measuredIndex) {
            sum += *trace.measuredIndex;
            ++measured;
        }
        series.rays.push_back({incidence, std::move(trace)});
    }
    if (measured > 0 && std::isfinite(sum)) series.meanIndex = sum / measured;
    return series;
}

double radiusOf(const BenchControls& c) { return c.radius; }
double centreXOf(const BenchControls& c) { return c.xcoor / 5.0; }
double centreYOf(const BenchControls& c) { return c.ycoor / 5.0; }
double tiltDegreesOf(const BenchControls& c) { return c.angle / 10.0; }
double rayHeightOf(const BenchControls& c) { return c.hvalue / 10.0; }
double indexOf(const BenchControls& c) { return c.indexn / 10.0; }

BenchControls controlsShowing(double radius, double xc, double yc, double tiltDegrees, double rayHeight, double index) {
    return {roundedControl(radius),           roundedControl(xc * 5.0),
            roundedControl(yc * 5.0),         roundedControl(tiltDegrees * 10.0),
            roundedControl(rayHeight * 10.0), roundedControl(index * 10.0)};
}

RandomSetup drawRandomSetup(BenchRandom& random, const BenchControls& current) {
    RandomSetup setup{};
    setup.rayHeight = random.rayHeightValue();
    setup.xc = random.centreXValue();
    setup.yc = random.centreYValue();
    setup.tiltRadians = kPi * random.tiltValue() / 180.0;
    setup.controls = current;
    setup.controls.hvalue = roundedControl(setup.rayHeight * 10.0);
    setup.controls.xcoor = roundedControl(setup.xc * 5.0);
    setup.controls.ycoor = roundedControl(setup.yc * 5.0);
    setup.controls.angle = roundedControl(setup.tiltRadians * 10.0);
    return setup;
}

std::optional<CriticalAngleRun> runCriticalAngle(const Block& block, double rayHeight) {
    const std::optional<double> critical = criticalAngleDegrees(block.index);
    if (!critical) return std::nullopt;
    return CriticalAngleRun{*critical, traceRay(block, rayHeight, *critical)};
}

std::vector<RayTrace> traceParallelBeam(const Block& block, bool fromTheRight, int count) {
    std::vector<RayTrace> beam;
    if (count < 1) return beam;
    count = std::min(count, kMaxBeamRays);
    // Start outside both the bench and the block, and run along ±x.
    const double startX = fromTheRight ? std::max(kBeamStart, block.xc + block.radius + 1.0)
                                       : std::min(-kBeamStart, block.xc - block.radius - 1.0);
    const Point direction{fromTheRight ? -1.0 : 1.0, 0.0};
    beam.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k) {
        // Heights at the middles of `count` equal strips of the diameter, so
        // that no ray just grazes the rim.
        const double fraction = (2.0 * k + 1.0) / count - 1.0;
        const Point start{startX, block.yc + block.radius * fraction};
        beam.push_back(tracePath(block, start, direction, 0.0));
    }
    return beam;
}

RayTrace traceAimedRay(const Block& block, Point clicked) {
    const Point direction{block.xc - clicked.x, block.yc - clicked.y};
    if (direction.x == 0.0 && direction.y == 0.0) return {};
    // The ray's own slope is its incidence, as for the bench's source: a ray
    // through the centre from the source at angle a runs at a to the x axis.
    const double incidence = std::atan2(std::fabs(direction.y), std::fabs(direction.x)) * 180.0 / kPi;
    return tracePath(block, clicked, direction, incidence);
}
