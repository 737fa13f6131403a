#pragma once
#include <vector>

#include "semicircle/bench_random.h"
#include "semicircle/ray_trace.h"

// The nine incidence angles of a measurement: 0.6° (an incidence of exactly
// 0 would give 0/0 for the index) and then 10° … 80°.
std::vector<double> measurementIncidences();

// One ray of a series, with what the tracer measured.
struct SeriesRay {
    double incidenceDegrees;
    RayTrace trace;
};

// "RAYS FOR incidence = 0° to 90°": the nine rays of the set-up and the mean
// of the indices measured (rays without a measurement do not count).
struct RaysSeries {
    std::vector<SeriesRay> rays;
    std::optional<double> meanIndex;
};
RaysSeries runIncidenceSeries(const Block& block, double rayHeight);

// The bench controls, in their own integer units.
struct BenchControls {
    int radius = 100;  // HScroll1: bench units
    int xcoor = 0;     // fifths of a unit
    int ycoor = 0;
    int angle = 0;    // tilt, tenths of a degree
    int hvalue = 0;   // ray height, tenths of a unit
    int indexn = 15;  // index, tenths
};
// The shared values the controls stand for.
double radiusOf(const BenchControls& c);
double centreXOf(const BenchControls& c);
double centreYOf(const BenchControls& c);
double tiltDegreesOf(const BenchControls& c);
double rayHeightOf(const BenchControls& c);
double indexOf(const BenchControls& c);
// The controls that show the given values, each rounded to a whole step
// (halves away from zero).
BenchControls controlsShowing(double radius, double xc, double yc, double tiltDegrees, double rayHeight, double index);

// "ALL RANDOM": ray height, centre x, centre y from three draws of 2u − 1
// and the tilt from 11u − 5 degrees, turned into radians at once. The
// controls are then set from the values rounded to whole steps: hvalue =
// rayHeight × 10, xcoor = xc × 5, ycoor = yc × 5 and angle = the tilt in
// radians × 10 (the tilt bar receives the radian value, as the original
// experiment does); halves are rounded away from zero. `controls` carries
// the other controls unchanged.
struct RandomSetup {
    double rayHeight;
    double xc;
    double yc;
    double tiltRadians;
    BenchControls controls;
};
RandomSetup drawRandomSetup(BenchRandom& random, const BenchControls& current);

// The critical-angle experiment for a block turned to the right: the ray at
// the critical angle; none when the index is below 1.
struct CriticalAngleRun {
    double angleDegrees;
    RayTrace trace;
};
std::optional<CriticalAngleRun> runCriticalAngle(const Block& block, double rayHeight);

// Parallel rays along x across the block's height, from the right (+x) or
// from the left (−x): `count` rays (at most 1000) at the middles of equal
// strips of the height yc − radius … yc + radius, starting at x = ±200 or
// just beyond the block when it reaches further.
std::vector<RayTrace> traceParallelBeam(const Block& block, bool fromTheRight, int count = 13);

// A ray aimed with the mouse: from the clicked point towards the centre of
// the block's flat face (nothing when the point is that centre). Its angle
// with the x axis is taken as the incidence for the measured index.
RayTrace traceAimedRay(const Block& block, Point clicked);
