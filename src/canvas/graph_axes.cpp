#include "canvas/graph_axes.h"

#include <QColor>

#include <algorithm>
#include <cmath>

#include "canvas/axis_steps.h"
#include "canvas/canvas.h"
#include "canvas/qt_format.h"

namespace {

constexpr double kTickPixels = 3.0;   // half the length of a tick mark
constexpr double kLabelGapPixels = 4.0;  // between a tick's end and its label
const QColor kGridBlue(0, 0, 255);

// The ticks from lo up to the label limit (or hi), at the step of the whole range.
AxisTicks labelledTicks(double lo, double hi, std::optional<double> labelMax, std::optional<double> step) {
    const double s = (step && std::isfinite(*step) && *step > 0.0) ? *step : derivedAxisStep(lo, hi);
    const double end = (labelMax && std::isfinite(*labelMax)) ? std::min(hi, *labelMax) : hi;
    if (end < lo) return AxisTicks{};
    return axisTicks(lo, end, s);
}

}  // namespace

void drawGraphAxes(Canvas& canvas, double xMax, double xMin, double yMax, double yMin, std::optional<double> xLabelMax,
                   std::optional<double> yLabelMax, std::optional<double> xStep, std::optional<double> yStep) {
    if (!usableAxisRange(xMin, xMax) || !usableAxisRange(yMin, yMax)) return;

    const double axisY = axisCrossing(yMin, yMax);  // where the x axis runs
    const double axisX = axisCrossing(xMin, xMax);  // where the y axis runs

    // Offsets measured in pixels, turned into user units; "down" and "right"
    // are the screen's directions whatever the signs of the scale.
    const double right = canvas.userPerPixelX();
    const double down = canvas.userPerPixelY();

    // Grid first, so that the axes, ticks and labels stay on top of it.
    const double yGridStep =
        (yStep && std::isfinite(*yStep) && *yStep > 0.0) ? *yStep : derivedAxisStep(yMin, yMax);
    const AxisTicks grid = axisTicks(yMin, yMax, yGridStep);
    for (double y : grid.values) {
        if (y >= yMax || y == axisY) continue;
        canvas.line(axisX, y, xMax, y, kGridBlue);
    }

    canvas.line(xMin, axisY, xMax, axisY);
    canvas.line(axisX, yMin, axisX, yMax);

    const AxisTicks xTicks = labelledTicks(xMin, xMax, xLabelMax, xStep);
    const char* xPattern = axisLabelPattern(xTicks.format);
    bool zeroLabelledOnX = false;
    for (double x : xTicks.values) {
        canvas.line(x, axisY - kTickPixels * down, x, axisY + kTickPixels * down);
        const QString label = fmt(x, xPattern);
        canvas.setCurrentX(x - canvas.textWidth(label) / 2.0 * (right < 0 ? -1.0 : 1.0));
        canvas.setCurrentY(axisY + (kTickPixels + kLabelGapPixels / 2.0) * down);
        canvas.print(label);
        if (x == 0.0 && axisY == 0.0) zeroLabelledOnX = true;
    }

    const AxisTicks yTicks = labelledTicks(yMin, yMax, yLabelMax, yStep);
    const char* yPattern = axisLabelPattern(yTicks.format);
    const double downSign = down < 0 ? -1.0 : 1.0;
    const double rightSign = right < 0 ? -1.0 : 1.0;
    for (auto it = yTicks.values.rbegin(); it != yTicks.values.rend(); ++it) {
        const double y = *it;
        canvas.line(axisX - kTickPixels * right, y, axisX + kTickPixels * right, y);
        if (y == 0.0 && zeroLabelledOnX) continue;  // one "0" at the origin is enough
        const QString label = fmt(y, yPattern);
        canvas.setCurrentX(axisX - (kTickPixels + kLabelGapPixels) * right - canvas.textWidth(label) * rightSign);
        canvas.setCurrentY(y - canvas.textHeight(label) / 2.0 * downSign);
        canvas.print(label);
    }
}
