#include "canvas/graph_axes.h"

#include <QColor>
#include <QMarginsF>

#include <algorithm>
#include <cmath>
#include <vector>

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

struct AxisLabel {
    QString text;
    double x, y;  // top-left corner, user units
};

struct Ranges {
    double xMax, xMin, yMax, yMin;
    std::optional<double> xLabelMax, yLabelMax, xStep, yStep;
};

// The labels of both axes where the present scale and font put them.
std::vector<AxisLabel> axisLabels(const Canvas& canvas, const Ranges& r) {
    std::vector<AxisLabel> labels;
    const double axisY = axisCrossing(r.yMin, r.yMax);
    const double axisX = axisCrossing(r.xMin, r.xMax);
    const double right = canvas.userPerPixelX();
    const double down = canvas.userPerPixelY();
    const double rightSign = right < 0 ? -1.0 : 1.0;
    const double downSign = down < 0 ? -1.0 : 1.0;

    const AxisTicks xTicks = labelledTicks(r.xMin, r.xMax, r.xLabelMax, r.xStep);
    const char* xPattern = axisLabelPattern(xTicks.format);
    bool zeroLabelledOnX = false;
    for (double x : xTicks.values) {
        const QString label = fmt(x, xPattern);
        labels.push_back({label, x - canvas.textWidth(label) / 2.0 * rightSign,
                          axisY + (kTickPixels + kLabelGapPixels / 2.0) * down});
        if (x == 0.0 && axisY == 0.0) zeroLabelledOnX = true;
    }
    const AxisTicks yTicks = labelledTicks(r.yMin, r.yMax, r.yLabelMax, r.yStep);
    const char* yPattern = axisLabelPattern(yTicks.format);
    for (auto it = yTicks.values.rbegin(); it != yTicks.values.rend(); ++it) {
        const double y = *it;
        if (y == 0.0 && zeroLabelledOnX) continue;  // one "0" at the origin is enough
        const QString label = fmt(y, yPattern);
        labels.push_back({label, axisX - (kTickPixels + kLabelGapPixels) * right - canvas.textWidth(label) * rightSign,
                          y - canvas.textHeight(label) / 2.0 * downSign});
    }
    return labels;
}

// How far, in pixels, a label at its place runs past each edge of the
// canvas (left, top, right, bottom; 0 where it stays inside).
QMarginsF overhang(const Canvas& canvas, const AxisLabel& label) {
    const QPointF at = canvas.toLogical(label.x, label.y);
    const QPointF end = canvas.toLogical(canvas.scaleLeft() + canvas.scaleWidth(), canvas.scaleTop() + canvas.scaleHeight());
    const double w = canvas.textWidth(label.text) / std::fabs(canvas.userPerPixelX());
    const double h = canvas.textHeight(label.text) / std::fabs(canvas.userPerPixelY());
    return {std::max(0.0, -at.x()), std::max(0.0, -at.y()), std::max(0.0, at.x() + w - end.x()),
            std::max(0.0, at.y() + h - end.y())};
}

}  // namespace

void makeRoomForTextsFrom(Canvas& canvas, double x, const QStringList& texts) {
    double widest = 0.0;
    for (const QString& text : texts) widest = std::max(widest, canvas.textWidth(text) / std::fabs(canvas.userPerPixelX()));
    for (int round = 0; round < 4; ++round) {
        const double end = canvas.toLogical(canvas.scaleLeft() + canvas.scaleWidth(), canvas.scaleTop()).x();
        // A little to spare: type drawn at another size is not measured exactly.
        const double over = canvas.toLogical(x, canvas.scaleTop()).x() + widest * 1.04 + 3.0 - end;
        // Text wider than the whole canvas cannot be helped by a scale.
        if (over <= 0.0 || widest >= end) return;
        const double right = canvas.scaleLeft() + canvas.scaleWidth() + (over + 1.0) * canvas.userPerPixelX();
        canvas.scale(canvas.scaleLeft(), canvas.scaleTop(), right, canvas.scaleTop() + canvas.scaleHeight());
        widest = 0.0;
        for (const QString& text : texts)
            widest = std::max(widest, canvas.textWidth(text) / std::fabs(canvas.userPerPixelX()));
    }
}

void makeRoomForAxisLabels(Canvas& canvas, double xMax, double xMin, double yMax, double yMin,
                           std::optional<double> xLabelMax, std::optional<double> yLabelMax,
                           std::optional<double> xStep, std::optional<double> yStep) {
    if (!usableAxisRange(xMin, xMax) || !usableAxisRange(yMin, yMax)) return;
    const Ranges ranges{xMax, xMin, yMax, yMin, xLabelMax, yLabelMax, xStep, yStep};
    // Widening the scale shrinks every unit, so the room is found in a few
    // rounds; each round only widens.
    for (int round = 0; round < 4; ++round) {
        QMarginsF need;
        for (const AxisLabel& label : axisLabels(canvas, ranges)) {
            const QMarginsF o = overhang(canvas, label);
            need = QMarginsF(std::max(need.left(), o.left()), std::max(need.top(), o.top()),
                             std::max(need.right(), o.right()), std::max(need.bottom(), o.bottom()));
        }
        if (need.isNull()) return;
        const double ux = canvas.userPerPixelX();
        const double uy = canvas.userPerPixelY();
        const double left = canvas.scaleLeft() - (need.left() + 1.0) * ux * (need.left() > 0 ? 1 : 0);
        const double right =
            canvas.scaleLeft() + canvas.scaleWidth() + (need.right() + 1.0) * ux * (need.right() > 0 ? 1 : 0);
        const double top = canvas.scaleTop() - (need.top() + 1.0) * uy * (need.top() > 0 ? 1 : 0);
        const double bottom =
            canvas.scaleTop() + canvas.scaleHeight() + (need.bottom() + 1.0) * uy * (need.bottom() > 0 ? 1 : 0);
        canvas.scale(left, top, right, bottom);
    }
}

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

    for (double x : labelledTicks(xMin, xMax, xLabelMax, xStep).values)
        canvas.line(x, axisY - kTickPixels * down, x, axisY + kTickPixels * down);
    for (double y : labelledTicks(yMin, yMax, yLabelMax, yStep).values)
        canvas.line(axisX - kTickPixels * right, y, axisX + kTickPixels * right, y);

    // A label that the scale leaves too little room for is moved in from the
    // edge rather than cut: a figure missing its first digit reads wrong.
    const Ranges ranges{xMax, xMin, yMax, yMin, xLabelMax, yLabelMax, xStep, yStep};
    for (const AxisLabel& label : axisLabels(canvas, ranges)) {
        const QMarginsF o = overhang(canvas, label);
        canvas.setCurrentX(label.x + (o.left() - o.right()) * right);
        canvas.setCurrentY(label.y + (o.top() - o.bottom()) * down);
        canvas.print(label.text);
    }
}
