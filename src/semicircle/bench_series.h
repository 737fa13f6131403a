#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "semicircle/bench_experiments.h"

// The bench's measurements, as a pupil would note them in a lab notebook:
// every ray traced into the block, with the incidence angle and the
// refraction angle read on the bench's protractor, or why there was nothing
// to read, and how the ray was made.

enum class RayReading {
    Measured,         // a ray left the block after refracting at both faces
    TotalReflection,  // turned back inside (or at the first face): no angle to read
    NoMeasurement,    // left no ray to read
    Missed,           // passed the block by
};

// How a listed ray was made on the bench.
enum class RaySource { Typed, Mouse, Sweep, AllRandom, Comparison };

struct SeriesReading {
    // Angles from the protractor's zero line (the x axis, the normal of the
    // flat face when the block sits square), in degrees, never negative:
    // a pupil reads how far the ray is from the normal, not on which side.
    double incidenceDegrees = 0.0;
    RayReading reading = RayReading::NoMeasurement;
    std::optional<double> refractionDegrees;  // only for a Measured ray
    // The block as the ray was traced: the pupil may change the index or turn
    // the block between two typed angles, and the expected angle follows.
    double index = 1.5;
    int direction = 0;  // 1 flat face towards the light, 2 curved face
    RaySource source = RaySource::Typed;
    // sin i / sin r of the reading, the index the data screen would fit
    // from this one pair; none without a refraction angle or for r = 0.
    std::optional<double> pairIndex() const;
};

// What the pupil reads off one traced ray. The refraction angle is the
// exit ray's angle with the protractor's zero line, the same angle the bench
// divides by for its measured index: with a centred block the ray crosses
// the curved face along a radius, unbent, so this is the angle at the flat
// face. A misplaced or tilted block gives a reading that is off, as it would
// in a real lab; that error is what the bench teaches about.
SeriesReading readRay(const Block& block, double incidenceDegrees, const RayTrace& trace);

// Snell's law for the reading's block: with the flat face towards the light
// the light goes from air into glass (sin r = sin i / n); turned round it
// goes from glass into air at the flat face (sin r = n·sin i). None when
// the light is totally reflected, or the index is not a positive number.
std::optional<double> expectedRefractionDegrees(double incidenceDegrees, double index, int direction);
std::optional<double> expectedRefractionDegrees(const SeriesReading& reading);

// One incidence–refraction pair of a measured ray.
struct MeasuredPair {
    double incidenceDegrees;
    double refractionDegrees;
};

// The pairs as LIST OF DATA hands them on: incidence to 0.1°, refraction to
// 0.01°, as the data screen's grid shows them.
MeasuredPair roundedForTable(const MeasuredPair& pair);
std::vector<MeasuredPair> roundedForTable(const std::vector<MeasuredPair>& pairs);

// The pairs as the data screen's CSV table: the header
// "incidence,refraction", then one row per pair, '.' the decimal point.
std::string dataScreenCsv(const std::vector<MeasuredPair>& pairs);

// The index the data screen fits from the pairs (1 / slope of the least-
// squares line of sin r on sin i); none when they give no line.
std::optional<double> fittedIndex(const std::vector<MeasuredPair>& pairs);

class BenchSeries {
public:
    const std::vector<SeriesReading>& readings() const { return readings_; }

    // Each ray adds a row; the list grows until it is cleared.
    void record(const Block& block, double incidenceDegrees, const RayTrace& trace, RaySource source);
    void recordSweep(const Block& block, const RaysSeries& rays, RaySource source = RaySource::Sweep);
    void clear() { readings_.clear(); }

    // The measured pairs in the order they were taken; rays without a
    // reading are left out.
    std::vector<MeasuredPair> measuredPairs() const;

private:
    std::vector<SeriesReading> readings_;
};
