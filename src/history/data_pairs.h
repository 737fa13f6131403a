#pragma once
#include <optional>
#include <string>
#include <vector>

#include "core/least_squares.h"
#include "history/fit_statistics.h"

namespace history {

// A measured pair in degrees, held in single precision as the tables hold
// their figures.
struct AnglePair {
    float incidence;
    float refraction;
};

// One row of the pupil's table as typed.
struct TypedRow {
    std::string incidence;
    std::string refraction;
};

// Why a typed table cannot be read.
struct TypedRowError {
    enum class Kind { NotANumber, OutOfRange } kind;
    int row;            // from 1
    bool inRefraction;  // the refraction column (else incidence)
    std::string text;   // what was typed
};

// The pupil's pairs: rows from the first while its incidence box is not
// blank; a row with a blank refraction box is left out. Every angle must be
// a plain number between −180 and 180 degrees; the first that is not stops
// the reading.
struct TypedReading {
    std::vector<AnglePair> pairs;
    std::optional<TypedRowError> error;
};
TypedReading readTypedPairs(const std::vector<TypedRow>& rows);

// The pairs of a list pair: item k of the incidence list with item k of
// the refraction list, as many as both have.
std::vector<AnglePair> pairsFromLists(const std::vector<double>& incidence, const std::vector<double>& refraction);

// The analysis of a set of pairs: the sines of both angles, and the
// least-squares line of sin r on sin i with the index n = 1 / slope.
// When the light leaves the denser medium only the leading pairs with a
// refraction angle below 90° enter the fit (an angle beyond 90° is a
// mistaken extrapolation, not a measurement); every pair is plotted.
struct SineFit {
    std::vector<double> sinIncidence;  // one per pair
    std::vector<double> sinRefraction;
    int fittedPairs = 0;
    std::optional<FittedLine> line;  // none for fewer than two distinct sin i
    std::optional<double> index;     // none when there is no line or its slope is 0
    FitStatistics statistics;        // of the fitted pairs: u(n), r²
};
SineFit fitSines(const std::vector<AnglePair>& pairs, bool leavesDenserMedium);

}  // namespace history
