#include "semicircle/bench_series.h"

#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/number_format.h"
#include "core/physics.h"

namespace {

using physics::kDegree;

}  // namespace

SeriesReading readRay(const Block& block, double incidenceDegrees, const RayTrace& trace) {
    SeriesReading r;
    r.incidenceDegrees = std::fabs(incidenceDegrees);
    r.index = block.index;
    r.direction = block.direction;
    if (!trace.hitBlock) {
        r.reading = RayReading::Missed;
    } else if (trace.totalReflection) {
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

std::optional<double> SeriesReading::pairIndex() const {
    if (reading != RayReading::Measured || !refractionDegrees) return std::nullopt;
    const double sinR = std::sin(*refractionDegrees * kDegree);
    if (sinR == 0.0) return std::nullopt;
    const double n = std::sin(incidenceDegrees * kDegree) / sinR;
    return std::isfinite(n) ? std::optional<double>(n) : std::nullopt;
}

MeasuredPair roundedForTable(const MeasuredPair& pair) {
    return {std::round(pair.incidenceDegrees * 10.0) / 10.0, std::round(pair.refractionDegrees * 100.0) / 100.0};
}

std::vector<MeasuredPair> roundedForTable(const std::vector<MeasuredPair>& pairs) {
    std::vector<MeasuredPair> rows;
    for (const MeasuredPair& pair : pairs) rows.push_back(roundedForTable(pair));
    return rows;
}

std::string dataScreenCsv(const std::vector<MeasuredPair>& pairs) {
    std::string text = "incidence,refraction\n";
    for (const MeasuredPair& p : pairs)
        text += formatNumber(p.incidenceDegrees, "0.0") + "," + formatNumber(p.refractionDegrees, "0.00") + "\n";
    return text;
}

std::optional<double> fittedIndex(const std::vector<MeasuredPair>& pairs) {
    // The fit takes 1-based arrays.
    std::vector<double> x{0.0};
    std::vector<double> y{0.0};
    for (const MeasuredPair& p : pairs) {
        x.push_back(std::sin(p.incidenceDegrees * kDegree));
        y.push_back(std::sin(p.refractionDegrees * kDegree));
    }
    const std::optional<FittedLine> line = leastSquaresLine(x, y, static_cast<int>(pairs.size()));
    if (!line || line->slope == 0.0f) return std::nullopt;
    const double n = 1.0 / static_cast<double>(line->slope);
    return std::isfinite(n) ? std::optional<double>(n) : std::nullopt;
}

void BenchSeries::record(const Block& block, double incidenceDegrees, const RayTrace& trace, RaySource source) {
    SeriesReading r = readRay(block, incidenceDegrees, trace);
    r.source = source;
    readings_.push_back(r);
}

void BenchSeries::recordSweep(const Block& block, const RaysSeries& rays, RaySource source) {
    for (const SeriesRay& ray : rays.rays) record(block, ray.incidenceDegrees, ray.trace, source);
}

std::vector<MeasuredPair> BenchSeries::measuredPairs() const {
    std::vector<MeasuredPair> pairs;
    for (const SeriesReading& r : readings_)
        if (r.reading == RayReading::Measured && r.refractionDegrees)
            pairs.push_back({r.incidenceDegrees, *r.refractionDegrees});
    return pairs;
}
