#pragma once
#include <optional>
#include <vector>

// Al Haytham's rules of refraction checked against the law of refraction for
// a chosen index n (of the second medium relative to the first: n > 1 from
// rare to dense, n < 1 from dense to rare). Angles in radians unless named
// otherwise.

namespace alhaytham {

constexpr double kWaterIndex = 1.33;

// One step of the check graph, from incidence i1 = i° to i2 = (i + 1)°.
struct CheckStep {
    int incidenceDegrees;  // i
    double i1, r1, d1;     // incidence, refraction, deviation at i°
    double i2, r2, d2;     // the same at (i + 1)°
    bool rule5Violated;    // n > 1 and d1 > i1 / 2
    bool rule6Violated;    // n < 1 and d1 > (i1 + d1) / 2
};

// The steps for i = 1 … 90. A step is left out where sin i / n ≥ 1 at either
// end (total reflection: no refracted ray there). Non-finite or non-positive
// n gives no steps.
std::vector<CheckStep> checkSteps(double n);

// The rule flags as the check graph carries them from step to step, and the
// state they had when the rules were last printed: the rules are printed
// again only when a flag changes.
struct RuleFlags {
    bool rule5Violated = false;
    bool rule6Violated = false;
    bool rule5Shown = false;
    bool rule6Shown = false;

    // A new drawing clears the flags, not what was last shown.
    void startDrawing() { rule5Violated = rule6Violated = false; }
    // Takes the flags of a step; how many times the rules must be printed
    // again (once for each flag that differs from its shown state).
    int take(const CheckStep& step);
};

// The instrument: the refraction angle, in degrees, of a beam entering water
// at the incidence given in degrees (sin i = 1.33 · sin r).
double refractionInWaterDegrees(double incidenceDegrees);

}  // namespace alhaytham
