#pragma once
#include <optional>

#include "core/physics.h"

// Ptolemy's instrument: a graduated disc half in water, a small body fixed at
// its centre E, a target Z on the arc under water and a body H on the arc in
// air. Light from Z passes E, bends at the water surface and reaches the air
// arc; the pupil moves H until Z, E and H look aligned. Angles are in
// degrees from the vertical (the normal to the water surface); Z stands to
// the right under water, H to the left above it. Disc units: the centre is
// the origin, the surface is y = 0 and y grows upwards.

namespace ptolemy {

constexpr double kDiscRadius = 150.0;
constexpr double kBodySize = 3.0;  // the central body's edges lie this far from the centre
constexpr double kWaterIndex = 1.33;
constexpr int kMinWaterAngle = 1;
constexpr int kMaxWaterAngle = 88;
// Degrees of direction per unit of the sight view's height: the view is a
// magnifier around the observer's line of sight.
constexpr double kViewUnitsPerDegree = 5.0;
constexpr double kViewHalfHeight = 50.0;

using physics::degrees;
using physics::radians;

// A line of sight from the target, past a point of the water surface at
// x = edgeOffset (0 for the centre, ±kBodySize for the central body's
// edges), refracted into air.
struct SightLine {
    double incidenceDegrees;  // the ray's angle from the normal in water
    double airDegrees;        // its angle from the normal in air
    double surfaceX;          // where it crosses the surface
    double endX, endY;        // where it meets the air arc
};

// The line of sight from the target at waterDegrees on the disc of the given
// radius past x = edgeOffset. None when the ray cannot leave the water
// (index · sin of its angle ≥ 1) or the input is not finite.
std::optional<SightLine> PtolemySightLine(double waterDegrees, double edgeOffset, double index = kWaterIndex,
                                          double discRadius = kDiscRadius);

// The angle in air that the law of refraction gives for the angle in water:
// arcsin(index · sin w). None past the critical angle.
std::optional<double> expectedAirAngle(double waterDegrees, double index = kWaterIndex);

// Whether every line of sight the drawing needs (through the centre and past
// both edges of the central body) leaves the water.
bool allSightLinesLeave(int waterDegrees, double index = kWaterIndex);

// The critical-angle guard: from the angle the scroll bar holds, lower the
// angle one degree at a time until every line of sight leaves the water.
// First the line through the centre is checked, then those past the edges
// of the central body: an edge line leans further than the centre line, so
// just below the critical angle the centre line leaves the water while an
// edge line is still turned back. Always ends, at kMinWaterAngle at the
// lowest.
struct EdgeTurnedBack {
    double incidenceDegrees;  // the edge line's angle from the normal in water
    double sineTimesIndex;    // index · its sine: 1 or more
};
struct GuardResult {
    int angle;     // the angle finally drawn
    int restarts;  // how many times the drawing started again
    // The first edge line found turned back while the centre line left the
    // water, if the guard lowered the angle for one.
    std::optional<EdgeTurnedBack> edgeTurnedBack;
};
GuardResult guardWaterAngle(int requestedDegrees, double index = kWaterIndex);

// Where the body in air stands: the scroll bar's value / 100 is its
// displacement in degrees from the direction the law predicts for the angle
// in water, so at 0 it stands where the target is seen and the bar's ends
// put it 2° short of that or 3° beyond, at every angle in water. The body
// stays on the air arc.
double bodyDisplacement(int positionValue);
double airBodyAngle(int waterDegrees, int positionValue, double targetAngle);

// The bands of the sight view, in the view's units (y from +50 at the top to
// −50), measured from the observer's line of sight over H and E.
struct Band {
    double top;
    double bottom;
};
struct SightView {
    Band target;           // the target Z, seen refracted
    Band centralBody;      // E
    Band airBody;          // H, always on the observer's line
    double offsetDegrees;  // how far the target is seen from the line of sight
    bool covered;          // H hides Z: the pupil found the alignment
};

// The sight view for the target at waterDegrees seen past H at airDegrees.
// Z and H are drawn as wide as the target angle, so that their bands
// coincide exactly when H stands where the law predicts. None when the
// target cannot be seen from air.
std::optional<SightView> sightView(double waterDegrees, double airDegrees, double targetAngle,
                                   double index = kWaterIndex);

}  // namespace ptolemy
