#include "canvas/canvas.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/canvas_limits.h"
#include "core/physics.h"
#include "canvas/figure_export.h"

using namespace canvas_limits;

// Recording and replay: every operation is painted once into the backing
// image and kept in a list, so that the figure can be painted again at any
// size, on any device, from the same list.

namespace {

// Beyond this many recorded operations between two cls() the list is dropped;
// a resize then rescales the pixels instead of replaying (long animations).
constexpr std::size_t kMaxRecordedOps = 200000;

// Shrinking with the area stops at this type size: smaller cannot be read
// from the back of a classroom.
constexpr double kSmallestShrunkPoints = 8.0;

constexpr double kTwoPi = 2.0 * physics::kPi;
constexpr double kDegreesPerRadian = 180.0 / physics::kPi;

Qt::PenStyle penStyleFor(DrawStyle s) {
    switch (s) {
    case DrawStyle::Dash: return Qt::DashLine;
    case DrawStyle::Dot: return Qt::DotLine;
    case DrawStyle::DashDot: return Qt::DashDotLine;
    case DrawStyle::DashDotDot: return Qt::DashDotDotLine;
    case DrawStyle::Transparent: return Qt::NoPen;
    case DrawStyle::Solid:
    case DrawStyle::InsideSolid: break;
    }
    return Qt::SolidLine;
}



// Liang–Barsky clip of a segment to the square ±kPixelLimit. Returns false
// when nothing of it lies inside. The segment is walked as x1 + u·d for u in
// [0, 2] with d half the difference, which cannot overflow for finite ends.
bool clipToLimit(double& x1, double& y1, double& x2, double& y2) {
    double u0 = 0.0, u1 = 2.0;
    const double dx = x2 * 0.5 - x1 * 0.5, dy = y2 * 0.5 - y1 * 0.5;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x1 + kPixelLimit, kPixelLimit - x1, y1 + kPixelLimit, kPixelLimit - y1};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0) return false;
            continue;
        }
        const double u = q[i] / p[i];
        if (p[i] < 0.0) u0 = std::max(u0, u);
        else u1 = std::min(u1, u);
        if (u0 > u1) return false;
    }
    // Each clipped end is reckoned from the nearer original end, which keeps
    // the precision that the input has; the clamp guards against rounding in
    // ill-conditioned cases (both ends astronomically far away).
    const double ox1 = x1, oy1 = y1, ox2 = x2, oy2 = y2;
    x1 = clampPixel(ox1 + u0 * dx);
    y1 = clampPixel(oy1 + u0 * dy);
    x2 = clampPixel(ox2 - (2.0 - u1) * dx);
    y2 = clampPixel(oy2 - (2.0 - u1) * dy);
    return true;
}

// Thin pens of an odd width in device pixels are centred on pixel centres,
// so that a line at a whole pixel coordinate lights one full row of pixels
// rather than half of two. The offset is in logical pixels.
double penOffset(int drawWidth, qreal dpr) {
    const long deviceWidth = std::lround(drawWidth * dpr);
    return deviceWidth % 2 != 0 ? 0.5 / dpr : 0.0;
}


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
    syncImage();
    {
        QPainter painter(&image_);
        followImageRatio(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        paintOp(painter, op);
    }
    update();
    if (!opsComplete_) return;
    if (ops_.size() >= kMaxRecordedOps) {
        ops_.clear();
        opsComplete_ = false;
        return;
    }
    ops_.push_back(std::move(op));
}

QPen Canvas::makePen(const QColor& colour, const PenState& pen) {
    QPen p(colour);
    p.setWidthF(pen.drawWidth);
    p.setStyle(penStyleFor(pen.drawStyle));
    if (p.style() != Qt::SolidLine) p.setCapStyle(Qt::FlatCap);  // keeps the gaps of dashes and dots open
    else if (pen.drawWidth <= 1) p.setCapStyle(Qt::SquareCap);   // whole end pixels
    else p.setCapStyle(Qt::RoundCap);
    p.setJoinStyle(Qt::RoundJoin);
    return p;
}

void Canvas::paintOp(QPainter& painter, const Op& op) const {
    const double w = areaWidth();
    const double h = areaHeight();
    const qreal dpr = painter.device()->devicePixelRatio();
    std::visit(
        [&](const auto& o) {
            using T = std::decay_t<decltype(o)>;
            if constexpr (std::is_same_v<T, LineOp>) {
                double x1 = o.x1 * w, y1 = o.y1 * h, x2 = o.x2 * w, y2 = o.y2 * h;
                if (!clipToLimit(x1, y1, x2, y2)) return;
                const double off = penOffset(o.pen.drawWidth, dpr);
                painter.setPen(makePen(o.colour, o.pen));
                if (x1 == x2 && y1 == y2) painter.drawPoint(QPointF(x1 + off, y1 + off));
                else painter.drawLine(QPointF(x1 + off, y1 + off), QPointF(x2 + off, y2 + off));
            } else if constexpr (std::is_same_v<T, BoxOp>) {
                const double left = clampPixel(std::min(o.x1, o.x2) * w);
                const double right = clampPixel(std::max(o.x1, o.x2) * w);
                const double top = clampPixel(std::min(o.y1, o.y2) * h);
                const double bottom = clampPixel(std::max(o.y1, o.y2) * h);
                // Interior: whole device pixels, at least one, no soft edges.
                auto snapped = [dpr](double a, double b) {
                    double da = std::round(a * dpr), db = std::round(b * dpr);
                    if (db <= da) db = da + 1.0;
                    return std::pair<double, double>(da / dpr, db / dpr);
                };
                const auto [sl, sr] = snapped(left, right);
                const auto [st, sb] = snapped(top, bottom);
                const QRectF inner(QPointF(sl, st), QPointF(sr, sb));
                if (o.filled) {
                    painter.fillRect(inner, o.colour);
                    return;
                }
                if (o.pen.fillStyle == FillStyle::Solid) painter.fillRect(inner, o.pen.fillColor);
                const double off = penOffset(o.pen.drawWidth, dpr);
                QPen pen = makePen(o.colour, o.pen);
                pen.setJoinStyle(Qt::MiterJoin);
                painter.setPen(pen);
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(QRectF(QPointF(left + off, top + off), QPointF(right + off, bottom + off)));
            } else if constexpr (std::is_same_v<T, CircleOp>) {
                paintCircle(painter, o, w, h, dpr);
            } else if constexpr (std::is_same_v<T, PointOp>) {
                const QPointF p(o.x * w, o.y * h);
                if (std::fabs(p.x()) > kPixelLimit || std::fabs(p.y()) > kPixelLimit) return;
                if (o.pen.drawWidth <= 1) {
                    painter.fillRect(QRectF(std::floor(p.x()), std::floor(p.y()), 1, 1), o.colour);
                } else {
                    const double off = penOffset(o.pen.drawWidth, dpr);
                    painter.setPen(Qt::NoPen);
                    painter.setBrush(o.colour);
                    painter.drawEllipse(p + QPointF(off, off), o.pen.drawWidth / 2.0, o.pen.drawWidth / 2.0);
                }
            } else if constexpr (std::is_same_v<T, TextOp>) {
                const QPointF topLeft(o.x * w, o.y * h);
                if (std::fabs(topLeft.x()) > kPixelLimit || std::fabs(topLeft.y()) > kPixelLimit) return;
                QFont font = o.font;
                double points = paintedPoints(o);
                // Points become pixels at the device's resolution, but the
                // figure is laid out in the screen's pixels: a printer at
                // 1200 dots per inch would otherwise get texts twelve times
                // too large for the lines around them.
                points *= static_cast<double>(logicalDpiY()) / std::max(1, painter.device()->logicalDpiY());
                font.setPointSizeF(points);
                painter.setFont(font);
                const QFontMetricsF fm(font, painter.device());
                const QPointF base(topLeft.x(), topLeft.y() + fm.ascent());
                if (o.halo.isValid()) {
                    // A rim about one point wide, filled out in whole device
                    // pixels so that no ring of pixels is left uncovered at 150 %.
                    painter.setPen(o.halo);
                    const int rings = static_cast<int>(std::ceil(dpr - 1e-9));
                    for (int k = 1; k <= rings; ++k)
                        for (const QPointF step : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1),
                                                   QPointF(-1, -1), QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1)})
                            painter.drawText(base + step * (k / dpr), o.text);
                }
                painter.setPen(o.colour);
                painter.drawText(base, o.text);
            }
        },
        op);
}

void Canvas::paintCircle(QPainter& painter, const CircleOp& o, double w, double h, qreal dpr) {
    double rx = o.radius * w;
    double ry = rx;
    if (o.aspect < 1.0) ry = rx * o.aspect;
    else if (o.aspect > 1.0) rx = ry / o.aspect;
    const double off = penOffset(o.pen.drawWidth, dpr);
    const double cx = o.x * w + off;
    const double cy = o.y * h + off;
    if (!std::isfinite(rx) || !std::isfinite(ry)) return;

    const bool wholeFigure = !o.start && !o.end;
    const bool fill = o.forcedFill.has_value() || o.pen.fillStyle == FillStyle::Solid;
    const QColor fillColour = o.forcedFill.value_or(o.pen.fillColor);

    // Nothing of it near the area: nothing to paint.
    const double margin = o.pen.drawWidth;
    if (cx + rx < -margin || cx - rx > w + margin || cy + ry < -margin || cy - ry > h + margin) return;
    if (rx > kPixelLimit || ry > kPixelLimit || std::fabs(cx) > kPixelLimit || std::fabs(cy) > kPixelLimit) {
        // Too big to hand to the rasteriser. Its outline cannot be seen
        // unless it crosses the area; a filled disc that covers the whole
        // area still colours it.
        if (wholeFigure && fill && rx > 0 && ry > 0) {
            auto inside = [&](double px, double py) {
                const double dx = (px - cx) / rx, dy = (py - cy) / ry;
                return dx * dx + dy * dy <= 1.0;
            };
            if (inside(0, 0) && inside(w, 0) && inside(0, h) && inside(w, h))
                painter.fillRect(QRectF(0, 0, w, h), fillColour);
        }
        return;
    }

    const QPointF c(cx, cy);
    const QRectF rect(cx - rx, cy - ry, 2 * rx, 2 * ry);
    painter.setPen(makePen(o.colour, o.pen));
    painter.setBrush(fill ? QBrush(fillColour) : QBrush(Qt::NoBrush));
    if (wholeFigure) {
        painter.drawEllipse(rect);
        return;
    }

    // Magnitudes give the angles; the sign asks for the radius to that end.
    const double s = std::fmod(std::fabs(o.start.value_or(0.0)), kTwoPi);
    const double e = std::fmod(std::fabs(o.end.value_or(kTwoPi)), kTwoPi);
    const bool radiusAtStart = o.start && *o.start < 0.0;
    const bool radiusAtEnd = o.end && *o.end < 0.0;
    double sweep = e - s;
    if (sweep <= 0.0) sweep += kTwoPi;  // counter-clockwise; equal ends make a whole turn
    const double startDeg = s * kDegreesPerRadian;
    const double sweepDeg = sweep * kDegreesPerRadian;

    QPainterPath path;
    if (radiusAtStart) {
        path.moveTo(c);  // arcTo joins the centre to the start of the arc
        path.arcTo(rect, startDeg, sweepDeg);
    } else {
        path.arcMoveTo(rect, startDeg);
        path.arcTo(rect, startDeg, sweepDeg);
    }
    if (radiusAtEnd) path.lineTo(c);
    const bool closedPie = radiusAtStart && radiusAtEnd;
    if (closedPie) path.closeSubpath();
    if (!closedPie) painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

double Canvas::paintedPoints(const TextOp& text) const {
    const double shrink = std::min({1.0, areaWidth() / text.areaWidth, areaHeight() / text.areaHeight});
    const double points = text.font.pointSizeF();
    if (shrink >= 1.0) return points;
    return std::max({kMinFontPoints, std::min(points, kSmallestShrunkPoints), points * shrink});
}

// ----------------------------------------------------------- inspection ---

std::vector<Canvas::DrawnText> Canvas::drawnTexts() const {
    std::vector<DrawnText> texts;
    const double w = areaWidth();
    const double h = areaHeight();
    for (const Op& op : ops_) {
        const auto* t = std::get_if<TextOp>(&op);
        if (!t) continue;
        QFont font = t->font;
        font.setPointSizeF(paintedPoints(*t));
        const QFontMetricsF fm = metrics(font);
        const QRectF box(t->x * w, t->y * h, fm.horizontalAdvance(t->text), fm.ascent() + fm.descent());
        texts.push_back({t->text, box, font.pointSizeF(), t->colour});
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
    if (!image_.isNull() && image_.size() == full && qFuzzyCompare(image_.devicePixelRatio(), screenRatio)) return;
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
    if (!image_.isNull() && image_.size() == device && qFuzzyCompare(image_.devicePixelRatio(), dpr)) return;
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
        followImageRatio(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        if (opsComplete_) {
            for (const Op& op : ops_) paintOp(painter, op);
        } else if (!image_.isNull()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(QRectF(QPointF(0, 0), QSizeF(device) / dpr), image_);
        }
    }
    image_ = std::move(fresh);
}

void Canvas::renderFigure(QPainter& painter) const {
    painter.save();
    painter.fillRect(QRectF(0, 0, areaWidth(), areaHeight()), backColor_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (opsComplete_) {
        for (const Op& op : ops_) paintOp(painter, op);
    } else {
        syncImage();
        painter.drawImage(QRectF(0, 0, areaWidth(), areaHeight()), image_);
    }
    painter.restore();
}

