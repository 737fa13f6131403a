#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/canvas_limits.h"
#include "canvas/figure_export.h"
#include "canvas/presentation_scale.h"

using namespace canvas_limits;
using namespace canvas_ops;

// Recording and replay: every operation is painted once into the backing
// image and kept in a list, so that the figure can be painted again at any
// size, on any device, from the same list (recorded_ops.cpp paints one).
//
// A figure is drawn in hundreds of operations, and a painter opened for each
// costs more than the thin lines it paints. Recorded operations are therefore
// painted together, through one painter, when their pixels are first needed:
// when the image is read, shown or measured against.

namespace {

// Beyond this many recorded operations between two cls() the list is dropped;
// a resize then rescales the pixels instead of replaying (long animations).
constexpr std::size_t kMaxRecordedOps = 200000;

// The largest width and height in device pixels that any screen shows.
QSize largestScreenInDevicePixels() {
    QSize largest;
    for (const QScreen* screen : QGuiApplication::screens())
        largest = largest.expandedTo((QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize());
    // Never less than a common desktop: a small or virtual screen should not
    // blur windows that are moved to a larger one later.
    return largest.expandedTo(QSize(kSmallestImageCap, kSmallestImageCap * 5 / 8));
}

}  // namespace

// ------------------------------------------------------------ recording ---

void Canvas::record(Op op) {
    noteGround(op, recordedGround_);
    if (opsComplete_ && ops_.size() >= kMaxRecordedOps) {
        paintPending();
        ops_.clear();
        painted_ = 0;
        opsComplete_ = false;
    }
    if (!opsComplete_) {
        // Nothing is kept to paint later: the pixels are all there is.
        syncImage();
        QPainter painter(&image_);
        beginPainting(painter);
        paintOp(painter, op, replayArea(), flow_);
        painter.end();
        update();
        return;
    }
    const auto* text = std::get_if<TextOp>(&op);
    const bool grownLine = text && text->link != TextLink::None && presentationScale() != 1.0;
    // One repaint request for the whole batch.
    if (painted_ == ops_.size()) update();
    ops_.push_back(std::move(op));
    if (!grownLine) return;
    // A line that grew the block it belongs to past the bottom: the block
    // is painted again, raised so that it is seen whole. Where the line
    // lands is known once it is painted.
    paintPending();
    if (flow_.placed.newest.front().bottom > areaHeight()) rebuildImage(image_.size(), image_.devicePixelRatio());
}

void Canvas::paintPending() const {
    syncImage();  // a rebuilt image has every operation painted already
    if (painted_ >= ops_.size()) return;
    QPainter painter(&image_);
    beginPainting(painter);
    const ReplayArea area = replayArea();
    for (std::size_t i = painted_; i < ops_.size(); ++i) paintOp(painter, ops_[i], area, flow_);
    painted_ = ops_.size();
}

void Canvas::beginPainting(QPainter& painter) {
    followImageRatio(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
}

ReplayArea Canvas::replayArea() const { return {areaWidth(), areaHeight(), logicalDpiY()}; }

// ----------------------------------------------------------- inspection ---

std::vector<Canvas::DrawnText> Canvas::drawnTexts() const {
    std::vector<DrawnText> texts;
    const ReplayArea area = replayArea();
    const double m = presentationScale();
    TextPlaces place;
    std::vector<QRectF> labels;
    const std::vector<double> lifts = textLifts(ops_, area, m, image());
    std::size_t k = 0;
    for (const Op& op : ops_) {
        const auto* t = std::get_if<TextOp>(&op);
        if (!t) continue;
        const double lift = lifts[k++];
        const GrownText g = grownText(*t, area, image(), m);
        const QRectF box(placeText(*t, g.size, g.grown, area, m, place) - QPointF(0, lift), g.size);
        if (!crowdedLabel(*t, box, m, labels)) texts.push_back({t->text, box, g.font.pointSizeF(), t->colour});
    }
    return texts;
}

std::vector<Canvas::DrawnLine> Canvas::drawnLines() const {
    std::vector<DrawnLine> lines;
    const double w = areaWidth();
    const double h = areaHeight();
    for (const Op& op : ops_)
        if (const auto* l = std::get_if<LineOp>(&op))
            lines.push_back({QPointF(l->x1 * w, l->y1 * h), QPointF(l->x2 * w, l->y2 * h), l->colour});
    return lines;
}

std::vector<Canvas::DrawnDisc> Canvas::drawnDiscs() const {
    std::vector<DrawnDisc> discs;
    const double w = areaWidth();
    const double h = areaHeight();
    for (const Op& op : ops_) {
        const auto* d = std::get_if<CircleOp>(&op);
        if (!d || !d->forcedFill) continue;
        const double r = d->radius * w;  // the radius is a fraction of the width
        discs.push_back({QRectF(d->x * w - r, d->y * h - r, 2 * r, 2 * r), *d->forcedFill});
    }
    return discs;
}

// -------------------------------------------------------------- image ---

void Canvas::syncImage() const {
    const qreal screenRatio = devicePixelRatio();
    const QSize logical(std::max(1, width()), std::max(1, height()));
    const QSize full = (QSizeF(logical) * screenRatio).toSize();
    // The usual case, a window no larger than its screen, costs no look at
    // the screens.
    // The presentation size the image was painted at.
    const bool sameScale = paintedScale_ == presentationScale();
    if (!image_.isNull() && sameScale && image_.size() == full && qFuzzyCompare(image_.devicePixelRatio(), screenRatio))
        return;
    // A window larger than any screen cannot be seen whole at full
    // sharpness, so its image need not be sharper than the largest screen:
    // the figure is painted at fewer pixels per logical pixel and scaled
    // up when shown. Memory stays bounded however large the window grows.
    const QSize largest = largestScreenInDevicePixels();
    const double shrink = std::min({1.0, double(largest.width()) / std::max(1, full.width()),
                                    double(largest.height()) / std::max(1, full.height())});
    const qreal dpr = screenRatio * shrink;
    const QSize device(std::max(1, int(std::lround(logical.width() * dpr))),
                       std::max(1, int(std::lround(logical.height() * dpr))));
    if (!image_.isNull() && sameScale && image_.size() == device && qFuzzyCompare(image_.devicePixelRatio(), dpr))
        return;
    rebuildImage(device, dpr);
}

void Canvas::rebuildImage(const QSize& device, qreal dpr) const {
    QImage fresh(device, QImage::Format_ARGB32_Premultiplied);
    fresh.setDevicePixelRatio(dpr);
    // Points in text sizes mean what they mean for the widgets around.
    fresh.setDotsPerMeterX(static_cast<int>(std::lround(logicalDpiX() / 0.0254)));
    fresh.setDotsPerMeterY(static_cast<int>(std::lround(logicalDpiY() / 0.0254)));
    fresh.fill(backColor_);
    {
        QPainter painter(&fresh);
        beginPainting(painter);
        flow_ = {};
        if (opsComplete_) {
            if (presentationScale() != 1.0) flow_.lifts = textLifts(ops_, replayArea(), presentationScale(), fresh);
            for (const Op& op : ops_) paintOp(painter, op, replayArea(), flow_);
        } else if (!image_.isNull()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(QRectF(QPointF(0, 0), QSizeF(device) / dpr), image_);
        }
    }
    image_ = std::move(fresh);
    painted_ = ops_.size();
    paintedScale_ = presentationScale();
}

void Canvas::renderFigure(QPainter& painter) const {
    painter.save();
    painter.fillRect(QRectF(0, 0, areaWidth(), areaHeight()), backColor_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (opsComplete_) {
        const DesignedScale designed;  // exports are the same at every presentation size
        TextFlow flow;
        for (const Op& op : ops_) paintOp(painter, op, replayArea(), flow);
    } else {
        paintPending();
        painter.drawImage(QRectF(0, 0, areaWidth(), areaHeight()), image_);
    }
    painter.restore();
}
