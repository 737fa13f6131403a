#pragma once
#include <optional>
#include <string_view>
#include <vector>

// Ptolemy's tables of refraction and how he adjusted them: every difference
// between successive refraction angles half a degree (30') smaller than the
// one before, so that the second differences are constant.

namespace ptolemy_fit {

struct DataSet {
    double index;                    // the index the law of refraction uses for this medium
    std::vector<double> incidence;   // degrees, from index 0
    std::vector<double> refraction;  // degrees
};

// Air into water: nine pairs, from (0, 0).
const DataSet& waterSet();
// Air into glass: eight pairs, from (10, 7).
const DataSet& glassSet();

constexpr double kSecondDifference = -0.5;

// The proportional law r = c·i, with c from the pair at index 1 of the set.
double proportionalRatio(const DataSet& set);

// Snell's law for each incidence of the set: arcsin(sin i / n), in degrees.
// None for an incidence whose sine divided by n is 1 or more.
std::vector<std::optional<double>> snellRefraction(const DataSet& set);

// The pupil's answer to "which pair do we start from?".
enum class StartPairAnswer {
    Cancelled,     // nothing typed: leave everything as it is
    NotANumber,    // letters, a decimal comma, "nan", …
    NotWhole,      // 1.5
    OutOfRange,    // below 1 or above 7
    BeyondTheSet,  // k + 1 lies past the last pair of this set
    Valid,
};
struct StartPair {
    StartPairAnswer answer;
    int k = 0;  // the first member of the starting pair, counted from 0
};
StartPair readStartPair(std::string_view typed, const DataSet& set);

// The refraction angles rebuilt from the starting pair k, k + 1: those two
// keep their measured values, every later difference is 0.5° smaller than the
// one before and every earlier one 0.5° larger. Empty for a k with no pair
// k + 1 in the set.
std::vector<double> adjustFromPair(const DataSet& set, int k);

}  // namespace ptolemy_fit
