#include "semicircle/bench_series.h"

#include <cmath>
#include <numbers>

#include "core/physics.h"

namespace {

using physics::kDegree;

}  // namespace

SeriesReading readRay(const Block& block, double incidenceDegrees, const RayTrace& trace) {
    SeriesReading r;
    r.incidenceDegrees = std::fabs(incidenceDegrees);
    r.index = block.index;
    r.direction = block.direction;
    if (trace.totalReflection) {
        r.reading = RayReading::TotalReflection;
    } else if (trace.exitRayAngle && std::isfinite(*trace.exitRayAngle)) {
        r.reading = RayReading::Measured;
        r.refractionDegrees = *trace.exitRayAngle / kDegree;
    }
    return r;
}

std::optional<double> expectedRefractionDegrees(double incidenceDegrees, double index, int direction) {
    if (!std::isfinite(incidenceDegrees) || !std::isfinite(index) || !(index > 0.0)) return std::nullopt;
    if (direction != 1 && direction != 2) return std::nullopt;
    const double sinI = std::fabs(std::sin(incidenceDegrees * kDegree));
    const double sinR = direction == 1 ? sinI / index : sinI * index;
    if (sinR > 1.0) return std::nullopt;
    return std::asin(sinR) / kDegree;
}

std::optional<double> expectedRefractionDegrees(const SeriesReading& reading) {
    return expectedRefractionDegrees(reading.incidenceDegrees, reading.index, reading.direction);
}

void BenchSeries::recordSweep(const Block& block, const RaysSeries& rays) {
    kind_ = Kind::IncidenceSweep;
    readings_.clear();
    for (const SeriesRay& ray : rays.rays) readings_.push_back(readRay(block, ray.incidenceDegrees, ray.trace));
}

void BenchSeries::recordGivenAngle(const Block& block, double incidenceDegrees, const RayTrace& trace) {
    if (kind_ != Kind::GivenAngles) {
        kind_ = Kind::GivenAngles;
        readings_.clear();
    }
    readings_.push_back(readRay(block, incidenceDegrees, trace));
}

void BenchSeries::clear() {
    kind_ = Kind::None;
    readings_.clear();
}

std::vector<MeasuredPair> BenchSeries::measuredPairs() const {
    std::vector<MeasuredPair> pairs;
    for (const SeriesReading& r : readings_)
        if (r.reading == RayReading::Measured && r.refractionDegrees)
            pairs.push_back({r.incidenceDegrees, *r.refractionDegrees});
    return pairs;
}
