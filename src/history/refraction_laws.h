#pragma once
#include <optional>
#include <string>
#include <vector>

#include "history/data_pairs.h"

namespace history {

// Kepler's model: a straight line r = k·i through the origin, with k the
// slope of the least-squares line through the leading run of pairs whose
// incidence is below 45° (the pairs are taken in the order they were
// entered, up to the first one at 45° or more).
struct KeplerModel {
    int runLength = 0;            // pairs in the leading run
    std::optional<double> ratio;  // k; none when the run has fewer than two distinct incidences
};
KeplerModel keplerModel(const std::vector<AnglePair>& pairs);

// A point of a law's curve, degrees.
struct CurvePoint {
    double incidence;
    double refraction;
};

// Snell's law for the index n (> 0) at every whole degree of incidence from
// 0 to 90. Into the denser medium r = asin(sin i / n), up to where sin i / n
// reaches 1 (for n < 1 the light is totally reflected beyond it); out of
// the denser medium r = asin(n·sin i), only while sin i < 1/n, that is up
// to the critical angle. Empty for an index that is not a positive finite
// number.
std::vector<CurvePoint> snellCurve(double index, bool leavesDenserMedium);

// The rows that "EXPECTED" writes into the pupil's table for the index n:
// incidence 10°, 20°, ... and the refraction angle Snell's law expects,
// none beyond the critical angle. Nine rows (up to 90°) with six decimals
// for light entering a denser medium (n ≥ 1); eight rows (up to 80°) with
// five decimals for n < 1, where the grazing 90° row could only be empty.
struct ExpectedRow {
    int incidence;
    std::optional<std::string> refraction;  // formatted
};
std::vector<ExpectedRow> expectedRows(double index);

// Whether a typed index can be used by the laws.
inline bool usableIndex(double index) { return index > 0.0 && index < 1e6; }

}  // namespace history
