#include "canvas/axis_steps.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMaxIntervals = 15.0;

// Relative slack when deciding whether a quotient is whole: steps such as
// 0.1 or 0.07 are not exact in binary.
constexpr double kWholeTolerance = 1e-9;

bool nearlyWhole(double v) { return std::fabs(v - std::round(v)) <= kWholeTolerance * std::max(1.0, std::fabs(v)); }

}  // namespace

const char* axisLabelPattern(AxisLabelFormat format) {
    switch (format) {
    case AxisLabelFormat::Whole: return "0";
    case AxisLabelFormat::OneDecimal: return "0.0";
    case AxisLabelFormat::TwoDecimals: return "0.00";
    case AxisLabelFormat::Scientific: break;
    }
    return "0.00e+00";
}

bool usableAxisRange(double lo, double hi) {
    if (!std::isfinite(lo) || !std::isfinite(hi) || !(lo < hi)) return false;
    const double width = hi - lo;
    if (!std::isfinite(width) || width < 1e-300) return false;
    // Ends that agree to twelve digits leave no room for distinct ticks.
    return width >= 1e-12 * std::max(std::fabs(lo), std::fabs(hi));
}

double axisCrossing(double lo, double hi) { return (lo <= 0.0 && hi >= 0.0) ? 0.0 : lo; }

double derivedAxisStep(double lo, double hi) {
    if (!usableAxisRange(lo, hi)) return 0.0;
    const double width = hi - lo;
    // The power of ten at or just below the width, corrected for log10's
    // rounding at exact powers.
    double power = std::pow(10.0, std::floor(std::log10(width)));
    if (power * 10.0 <= width) power *= 10.0;
    if (power > width) power /= 10.0;
    for (double factor : {0.1, 0.2, 0.5, 1.0, 2.0}) {
        const double step = power * factor;
        if (step > 0.0 && width / step <= kMaxIntervals) return step;
    }
    return power * 2.0;
}

AxisLabelFormat axisLabelFormatFor(double step) {
    if (!std::isfinite(step) || step <= 0.0) return AxisLabelFormat::Whole;
    if (step >= 1e6) return AxisLabelFormat::Scientific;
    // Multiply by ten until the step is whole: the count is the decimals.
    double v = step;
    for (AxisLabelFormat format : {AxisLabelFormat::Whole, AxisLabelFormat::OneDecimal, AxisLabelFormat::TwoDecimals}) {
        if (nearlyWhole(v)) return format;
        v *= 10.0;
    }
    return AxisLabelFormat::Scientific;
}

AxisTicks axisTicks(double lo, double hi, std::optional<double> step, std::size_t maxTicks) {
    AxisTicks ticks;
    if (!usableAxisRange(lo, hi) && !(std::isfinite(lo) && lo == hi)) return ticks;
    double s = (step && std::isfinite(*step) && *step > 0.0) ? *step : derivedAxisStep(lo, hi);
    if (!(s > 0.0) || !std::isfinite(s) || maxTicks == 0) return ticks;

    // First and last multiple inside the range; coarsen by tens while there
    // would be too many. Each round divides the count by ten, so the loop
    // ends after a few hundred rounds at the very most.
    double first = 0.0, last = -1.0;
    for (int round = 0; round < 700; ++round) {
        first = std::ceil(lo / s - kWholeTolerance);
        last = std::floor(hi / s + kWholeTolerance);
        if (!std::isfinite(first) || !std::isfinite(last)) return ticks;
        if (last - first + 1.0 <= static_cast<double>(maxTicks)) break;
        s *= 10.0;
        if (!std::isfinite(s)) return ticks;
    }
    if (last < first || last - first + 1.0 > static_cast<double>(maxTicks)) {
        ticks.step = s;
        ticks.format = axisLabelFormatFor(s);
        return ticks;
    }

    ticks.step = s;
    ticks.format = axisLabelFormatFor(s);
    // Steps in whole tenths or hundredths are counted in those units, so that
    // 3 × 0.1 comes out as 0.3 and not 0.30000000000000004.
    double unit = 1.0;
    if (ticks.format == AxisLabelFormat::OneDecimal)
        unit = 10.0;
    else if (ticks.format == AxisLabelFormat::TwoDecimals)
        unit = 100.0;
    const double scaledStep = ticks.format == AxisLabelFormat::Scientific ? s : std::round(s * unit);
    if (ticks.format == AxisLabelFormat::Scientific) unit = 1.0;

    const auto count = static_cast<std::size_t>(last - first + 1.0);
    ticks.values.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double k = first + static_cast<double>(i);
        ticks.values.push_back(k * scaledStep / unit);
    }
    return ticks;
}
