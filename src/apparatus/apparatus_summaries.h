#pragma once
#include <QString>

#include <optional>
#include <vector>

#include "apparatus/alhaytham_rules.h"
#include "apparatus/ptolemy_fitting.h"
#include "apparatus/ptolemy_geometry.h"

// The instruments' drawings in words, for a screen reader: what a pupil who
// can see the picture reads off it, with the figures worked out from the
// same values the picture is drawn from.
namespace apparatus {

// Ptolemy's instrument as last drawn.
struct PtolemyState {
    int requestedAngle;    // what the angle-in-water bar held
    int waterAngle;        // the angle drawn (below the critical angle)
    double expectedAngle;  // where the law of refraction puts the image in air
    double airAngle;       // the middle of the body in air
    double targetAngle;    // the angular size of the target and the body
    bool covered;          // H hides Z
};
QString ptolemyInstrumentSummary(const PtolemyState& state);
// The sight view: where the target is seen against the line of sight.
QString ptolemySightSummary(const std::optional<ptolemy::SightView>& view);

// Al Haytham's instrument: the beam at the incidence and its refraction in
// water; the ruler and the stylus at its place (tenths of the radius) when
// the ruler is shown.
QString alHaythamInstrumentSummary(double incidenceDegrees, double refractionDegrees, std::optional<double> stylus);

// The check of the rules for the index n, from the steps drawn.
QString alHaythamCheckSummary(double n, const std::vector<alhaytham::CheckStep>& steps);

// Ptolemy's table with the two laws; with the starting pair k when the
// values were adjusted from it.
QString ptolemyFittingSummary(const ptolemy_fit::DataSet& set, const std::vector<double>& values,
                              std::optional<int> startPair);

}  // namespace apparatus
