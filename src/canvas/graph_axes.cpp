#include "canvas/graph_axes.h"

#include <QColor>
#include <QEvent>
#include <QMarginsF>
#include <QRectF>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "canvas/axis_steps.h"
#include "canvas/canvas.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"

namespace {

constexpr double kTickPixels = 3.0;      // half the length of a tick mark
constexpr double kLabelGapPixels = 4.0;  // between a tick's end and its label

// The ticks from lo up to the label limit (or hi), at the step of the whole range.
AxisTicks labelledTicks(double lo, double hi, std::optional<double> labelMax, std::optional<double> step) {
    const double s = (step && std::isfinite(*step) && *step > 0.0) ? *step : derivedAxisStep(lo, hi);
    const double end = (labelMax && std::isfinite(*labelMax)) ? std::min(hi, *labelMax) : hi;
    if (end < lo) return AxisTicks{};
    return axisTicks(lo, end, s);
}

struct AxisLabel {
    QString text;
    double x, y;                    // top-left corner, user units
    canvas_ops::TextAnchor anchor;  // the end next to its tick
};

struct Ranges {
    double xMax, xMin, yMax, yMin;
    std::optional<double> xLabelMax, yLabelMax, xStep, yStep;
    double crossingMark = 0.0;  // x user units
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
    // The y axis runs on below the x axis on the screen: a label under the
    // crossing would be struck through, so it goes into the corner left of it.
    const bool yAxisBelow = down < 0 ? r.yMin < axisY : r.yMax > axisY;
    std::optional<std::size_t> corner;
    for (double x : xTicks.values) {
        const QString label = fmt(x, xPattern);
        if (x == axisX && yAxisBelow) {
            // The label's nearest corner stands diagonally off the crossing,
            // outside a mark drawn there.
            const double offMark = std::fabs(r.crossingMark / right) / std::numbers::sqrt2 + 1.0;
            corner = labels.size();
            labels.push_back({label,
                              axisX - std::max(kLabelGapPixels, offMark) * right - canvas.textWidth(label) * rightSign,
                              axisY + std::max(2.0, offMark) * down, canvas_ops::kLeftUnderMark});
        } else {
            labels.push_back({label, x - canvas.textWidth(label) / 2.0 * rightSign,
                              axisY + (kTickPixels + kLabelGapPixels / 2.0) * down, canvas_ops::kUnderMark});
        }
        if (x == 0.0 && axisY == 0.0) zeroLabelledOnX = true;
    }
    const AxisTicks yTicks = labelledTicks(r.yMin, r.yMax, r.yLabelMax, r.yStep);
    const char* yPattern = axisLabelPattern(yTicks.format);
    for (auto it = yTicks.values.rbegin(); it != yTicks.values.rend(); ++it) {
        const double y = *it;
        if (y == 0.0 && zeroLabelledOnX) continue;  // one "0" at the origin is enough
        const QString label = fmt(y, yPattern);
        labels.push_back({label, axisX - (kTickPixels + kLabelGapPixels) * right - canvas.textWidth(label) * rightSign,
                          y - canvas.textHeight(label) / 2.0 * downSign, canvas_ops::kLeftOfMark});
    }
    // In the corner the crossing's label may run into the first y label
    // under the axis on a small graph; the axes crossing there say it too.
    if (corner) {
        auto box = [&canvas](const AxisLabel& l) {
            return QRectF(canvas.toLogical(l.x, l.y),
                          QSizeF(canvas.textWidth(l.text) / std::fabs(canvas.userPerPixelX()),
                                 canvas.textHeight(l.text) / std::fabs(canvas.userPerPixelY())));
        };
        const QRectF cornerBox = box(labels[*corner]).adjusted(1, 1, -1, -1);
        for (std::size_t k = 0; k < labels.size(); ++k)
            if (k != *corner && cornerBox.intersects(box(labels[k]).adjusted(1, 1, -1, -1))) {
                labels.erase(labels.begin() + static_cast<std::ptrdiff_t>(*corner));
                break;
            }
    }
    return labels;
}

// How far, in pixels, a label at its place runs past each edge of the
// canvas (left, top, right, bottom; 0 where it stays inside).
QMarginsF overhang(const Canvas& canvas, const AxisLabel& label) {
    const QPointF at = canvas.toLogical(label.x, label.y);
    const QPointF end =
        canvas.toLogical(canvas.scaleLeft() + canvas.scaleWidth(), canvas.scaleTop() + canvas.scaleHeight());
    const double w = canvas.textWidth(label.text) / std::fabs(canvas.userPerPixelX());
    const double h = canvas.textHeight(label.text) / std::fabs(canvas.userPerPixelY());
    return {std::max(0.0, -at.x()), std::max(0.0, -at.y()), std::max(0.0, at.x() + w - end.x()),
            std::max(0.0, at.y() + h - end.y())};
}

}  // namespace

void makeRoomForTextsFrom(Canvas& canvas, double x, const QStringList& texts) {
    double widest = 0.0;
    for (const QString& text : texts)
        widest = std::max(widest, canvas.textWidth(text) / std::fabs(canvas.userPerPixelX()));
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
                           std::optional<double> xStep, std::optional<double> yStep, double crossingMark) {
    if (!usableAxisRange(xMin, xMax) || !usableAxisRange(yMin, yMax)) return;
    const Ranges ranges{xMax, xMin, yMax, yMin, xLabelMax, yLabelMax, xStep, yStep, crossingMark};
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
                   std::optional<double> yLabelMax, std::optional<double> xStep, std::optional<double> yStep,
                   double crossingMark) {
    if (!usableAxisRange(xMin, xMax) || !usableAxisRange(yMin, yMax)) return;

    const double axisY = axisCrossing(yMin, yMax);  // where the x axis runs
    const double axisX = axisCrossing(xMin, xMax);  // where the y axis runs

    // Offsets measured in pixels, turned into user units; "down" and "right"
    // are the screen's directions whatever the signs of the scale.
    const double right = canvas.userPerPixelX();
    const double down = canvas.userPerPixelY();

    // Grid first, so that the axes, ticks and labels stay on top of it.
    const double yGridStep = (yStep && std::isfinite(*yStep) && *yStep > 0.0) ? *yStep : derivedAxisStep(yMin, yMax);
    const AxisTicks grid = axisTicks(yMin, yMax, yGridStep);
    for (double y : grid.values) {
        if (y >= yMax || y == axisY) continue;
        canvas.line(axisX, y, xMax, y, palette::graph::grid);
    }

    canvas.line(xMin, axisY, xMax, axisY);
    canvas.line(axisX, yMin, axisX, yMax);

    for (double x : labelledTicks(xMin, xMax, xLabelMax, xStep).values)
        canvas.line(x, axisY - kTickPixels * down, x, axisY + kTickPixels * down);
    for (double y : labelledTicks(yMin, yMax, yLabelMax, yStep).values)
        canvas.line(axisX - kTickPixels * right, y, axisX + kTickPixels * right, y);

    // A label that the scale leaves too little room for is moved in from the
    // edge rather than cut: a figure missing its first digit reads wrong.
    const Ranges ranges{xMax, xMin, yMax, yMin, xLabelMax, yLabelMax, xStep, yStep, crossingMark};
    std::vector<AxisLabel> labels = axisLabels(canvas, ranges);
    for (AxisLabel& label : labels) {
        const QMarginsF o = overhang(canvas, label);
        label.x += (o.left() - o.right()) * right;
        label.y += (o.top() - o.bottom()) * down;
    }
    // The labels under the x axis come first, on one ground: grown, they
    // hide the grid line below them along the whole row, which seen between
    // them would read as minus signs.
    const auto others = std::stable_partition(
        labels.begin(), labels.end(), [](const AxisLabel& label) { return label.anchor == canvas_ops::kUnderMark; });
    QRectF row;
    for (auto it = labels.begin(); it != others; ++it)
        row |= QRectF(QPointF(it->x, it->y), QPointF(it->x + canvas.textWidth(it->text) * (right < 0 ? -1.0 : 1.0),
                                                     it->y + canvas.textHeight(it->text) * (down < 0 ? -1.0 : 1.0)))
                   .normalized();
    if (others != labels.begin()) canvas.groundForTexts(row.left(), row.top(), row.right(), row.bottom());
    for (const AxisLabel& label : labels) {
        canvas.setCurrentX(label.x);
        canvas.setCurrentY(label.y);
        canvas.setTextAnchor(label.anchor);
        canvas.print(label.text);
    }
    canvas.setTextAnchor({});
}

namespace {

// The bottom and top edges of the scale, as y values.
double topEdge(const Canvas& c) { return c.scaleTop(); }
double bottomEdge(const Canvas& c) { return c.scaleTop() + c.scaleHeight(); }

// The most of the canvas's height a band may take, and the most it may
// grow to beyond its designed share when its texts are shown larger: on a
// small window at a large presentation size the graph keeps most of the
// height, and the texts may reach over its edge.
constexpr double kLargestBandShare = 0.5;
constexpr double kLargestGrownShare = 0.3;

// Moves one edge of the scale outward, the other edge fixed, until at least
// `pixels` (at most half the canvas) lie between it and graphEdge. With the
// fixed edge f, graphEdge g lies `share` of the height from the new edge e
// when g − e = share · (f − e). The band's texts are shown larger on the
// screen at a larger presentation size, and so is the band.
void makeRoomBeyond(Canvas& canvas, double graphEdge, double pixels, bool atTop) {
    const double height = std::max(1, canvas.height());
    const double designed = pixels / height;
    const double shown = std::max(designed, std::min(designed * presentationScale(), kLargestGrownShare));
    const double share = std::min(kLargestBandShare, shown);
    const double top = topEdge(canvas), bottom = bottomEdge(canvas);
    if (!std::isfinite(graphEdge) || !std::isfinite(share) || share <= 0.0) return;
    const double fixed = atTop ? bottom : top;
    // Pixels from the moving edge in to graphEdge (negative when it lies beyond).
    const double have = (atTop ? graphEdge - top : bottom - graphEdge) / canvas.userPerPixelY();
    if (have >= share * height) return;
    const double moved = (graphEdge - share * fixed) / (1.0 - share);
    canvas.scale(canvas.scaleLeft(), atTop ? moved : top, canvas.scaleLeft() + canvas.scaleWidth(),
                 atTop ? bottom : moved);
}

}  // namespace

void makeRoomAtTop(Canvas& canvas, double graphTop, double pixels) { makeRoomBeyond(canvas, graphTop, pixels, true); }

void makeRoomAtBottom(Canvas& canvas, double graphBottom, double pixels) {
    makeRoomBeyond(canvas, graphBottom, pixels, false);
}

namespace {

// Draws a canvas's picture again when the canvas changes size or is shown
// at another presentation size, as long as the canvas still holds what the
// last drawing left on it.
class ResizeRedraw : public QObject {
public:
    explicit ResizeRedraw(Canvas& canvas) : QObject(&canvas), canvas_(canvas) { canvas.installEventFilter(this); }

    // followEvents: drawn again on a resize or a new size here; otherwise
    // only for exports, the screen redrawing it itself.
    void keep(std::function<void()> draw, bool followEvents) {
        followEvents_ = followEvents;
        draw_ = std::move(draw);
        drawn_ = signature();
        drawnScale_ = presentationScale();
    }

    // Whether the canvas still holds the picture this draws.
    bool holdsPicture() const { return draw_ && signature() == drawn_; }
    bool drawnAsDesigned() const { return drawnScale_ == 1.0; }

    void drawAgain() {
        // A copy: drawing again hands this object a new function.
        const std::function<void()> draw = draw_;
        draw();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != &canvas_ || !draw_ || !followEvents_) return false;
        if (event->type() == QEvent::Resize) {
            const auto* resize = static_cast<const QResizeEvent*>(event);
            if (resize->size() == resize->oldSize()) return false;
        } else if (event->type() != QEvent::Paint || drawnScale_ == presentationScale()) {
            return false;
        }
        if (holdsPicture())
            drawAgain();
        else
            draw_ = nullptr;  // something else is on the canvas now
        return false;
    }

private:
    // What the last drawing left: enough to tell that nothing has been
    // drawn or cleared since.
    QString signature() const {
        const QStringList& printed = canvas_.printedTexts();
        return QStringLiteral("%1/%2/%3/%4")
            .arg(canvas_.recordedOperations())
            .arg(printed.size())
            .arg(printed.isEmpty() ? QString() : printed.last(), canvas_.summary());
    }

    Canvas& canvas_;
    std::function<void()> draw_;
    QString drawn_;
    double drawnScale_ = 1.0;
    bool followEvents_ = true;
};

ResizeRedraw* keeperOf(const Canvas& canvas) {
    for (QObject* child : canvas.children())
        if (auto* keeper = dynamic_cast<ResizeRedraw*>(child)) return keeper;
    return nullptr;
}

void keepDrawing(Canvas& canvas, std::function<void()> draw, bool followEvents) {
    ResizeRedraw* keeper = keeperOf(canvas);
    if (!keeper) keeper = new ResizeRedraw(canvas);
    keeper->keep(std::move(draw), followEvents);
}

}  // namespace

void redrawWhenResized(Canvas& canvas, std::function<void()> draw) { keepDrawing(canvas, std::move(draw), true); }

void drawAgainForExports(Canvas& canvas, std::function<void()> draw) { keepDrawing(canvas, std::move(draw), false); }

void renderAsDesigned(const Canvas& canvas, QPainter& painter) {
    ResizeRedraw* keeper = keeperOf(canvas);
    // A window not painted since the size changed may still hold the
    // picture laid out for another size.
    if (!keeper || !keeper->holdsPicture() || (keeper->drawnAsDesigned() && presentationScale() == 1.0)) {
        canvas.renderFigure(painter);
        return;
    }
    {
        const DesignedScale designed;
        keeper->drawAgain();
        canvas.renderFigure(painter);
    }
    keeper->drawAgain();
}
