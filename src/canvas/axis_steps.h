#pragma once
#include <cstddef>
#include <optional>
#include <vector>

// The arithmetic of graph axes, apart from any drawing: where the axes run,
// the spacing of ticks, which values get a tick, and how labels are written.
// Every function here returns promptly for any input, NaN and infinities
// included: loops run over a bounded count, never until a value is reached.

// The most ticks one axis gets; finer steps are coarsened by tens to fit.
inline constexpr std::size_t kMaxAxisTicks = 1000;

enum class AxisLabelFormat { Whole, OneDecimal, TwoDecimals, Scientific };

// The number pattern of a format: "0", "0.0", "0.00" or "0.00e+00".
const char* axisLabelPattern(AxisLabelFormat format);

// Whether an axis can be drawn from lo to hi: both finite, lo < hi, and the
// width hi − lo finite and wide enough to hold distinct ticks.
bool usableAxisRange(double lo, double hi);

// Where the other axis crosses this range: at 0 when the range contains 0,
// otherwise at its lower end (the lower or left edge of the graph).
double axisCrossing(double lo, double hi);

// A tick step from the order of magnitude of the range's width: one, two or
// five times a power of ten, the finest that leaves at most 15 intervals
// (−5 … 110 gives 10, −0.3 … 1.5 gives 0.2). 0 for an unusable range.
double derivedAxisStep(double lo, double hi);

// The decimals that labels at whole multiples of the step need: whole
// numbers for whole steps, one or two decimals for steps in tenths or
// hundredths, scientific for finer steps and for steps of a million or more.
AxisLabelFormat axisLabelFormatFor(double step);

struct AxisTicks {
    double step = 0.0;  // the spacing used (the given or derived one, coarsened if need be)
    AxisLabelFormat format = AxisLabelFormat::Whole;
    std::vector<double> values;  // whole multiples of step within lo … hi, ascending
};

// The ticks of the range lo … hi. A given step is used when it is finite and
// positive, otherwise one is derived from the range. If the step would give
// more than maxTicks ticks it is multiplied by 10 until they fit, so every
// tick is still a whole multiple of the step asked for. An unusable range
// gives no ticks.
AxisTicks axisTicks(double lo, double hi, std::optional<double> step = std::nullopt,
                    std::size_t maxTicks = kMaxAxisTicks);
