#pragma once
#include <optional>
#include <vector>

#include "semicircle/bench_experiments.h"

// The bench's last series of measurements, as a pupil would note them in a
// lab notebook: for each ray the incidence angle and the refraction angle
// read on the bench's protractor, or why there was nothing to read.

enum class RayReading {
    Measured,         // a ray left the block after refracting at both faces
    TotalReflection,  // turned back inside (or at the first face): no angle to read
    NoMeasurement,    // missed the block or left no ray to read
};

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

class BenchSeries {
public:
    enum class Kind {
        None,            // nothing measured since the start or the last erase
        IncidenceSweep,  // "RAYS FOR incidence = 0° to 90°"
        GivenAngles,     // angles typed one by one with "GIVE INCIDENCE ANGLE"
    };

    Kind kind() const { return kind_; }
    const std::vector<SeriesReading>& readings() const { return readings_; }

    // A whole sweep replaces whatever was listed.
    void recordSweep(const Block& block, const RaysSeries& rays);
    // A typed angle adds to the typed angles; after a sweep it starts anew.
    void recordGivenAngle(const Block& block, double incidenceDegrees, const RayTrace& trace);
    void clear();

    // The measured pairs in the order they were taken; rays without a
    // reading are left out.
    std::vector<MeasuredPair> measuredPairs() const;

private:
    Kind kind_ = Kind::None;
    std::vector<SeriesReading> readings_;
};
