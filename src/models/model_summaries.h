#pragma once
#include <QString>

#include <optional>

#include "models/corpuscles.h"
#include "models/fermat.h"
#include "models/kymatiko.h"

// The corpuscle screen's drawings in words, for a screen reader: the
// model shown and its figures, worked out from the values the picture is
// drawn from.
namespace spoken {

// The corpuscle screen's track for a model at the incidence (degrees) and
// the ratio n.
QString corpuscles(kymatiko::CorpuscleModel model, double incidenceDegrees, double n, const kymatiko::Track& track);

// Fermat's demonstration: the speeds' law, the three bodies (field units),
// what the path shows and its travel time; the least time when the search
// placed the blue body.
struct FermatPicture {
    kymatiko::SpeedLaw law;
    double n;
    kymatiko::Speeds speeds;
    kymatiko::Point magenta, blue, green;
    double boundaryY;
    kymatiko::PathKind kind;
    kymatiko::PathTime time;
    std::optional<double> leastTime;
};
QString fermat(const FermatPicture& picture);

}  // namespace spoken
