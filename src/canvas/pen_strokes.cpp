// How the canvas's lines are stroked: the pen for a draw style and width,
// and the fast ways to paint long thin rules on raster images.
#include "canvas/pen_strokes.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "canvas/canvas_limits.h"

using namespace canvas_limits;

namespace canvas_ops {

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
        if (p[i] < 0.0)
            u0 = std::max(u0, u);
        else
            u1 = std::min(u1, u);
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

// The width a pen of this DrawWidth is painted with: grown by the
// presentation size on the screen.
double paintedPenWidth(int drawWidth, double magnify) { return drawWidth * magnify; }

// Thin pens of an odd width in device pixels are centred on pixel centres,
// so that a line at a whole pixel coordinate lights one full row of pixels
// rather than half of two. The offset is in logical pixels.
double penOffset(double drawWidth, qreal dpr) {
    const long deviceWidth = std::lround(drawWidth * dpr);
    return deviceWidth % 2 != 0 ? 0.5 / dpr : 0.0;
}

QPen makePen(const QColor& colour, const PenState& pen, double magnify) {
    // Operations in a row mostly share their pen: the last one made is
    // given again, which the painter recognises at once as the pen it has.
    static struct {
        QColor colour;
        int drawWidth = 0;
        DrawStyle style = DrawStyle::Solid;
        double magnify = 0.0;
        QPen made;
    } last;
    if (colour == last.colour && pen.drawWidth == last.drawWidth && pen.drawStyle == last.style &&
        magnify == last.magnify)
        return last.made;
    QPen p(colour);
    p.setWidthF(paintedPenWidth(pen.drawWidth, magnify));
    p.setStyle(penStyleFor(pen.drawStyle));
    if (p.style() != Qt::SolidLine)
        p.setCapStyle(Qt::FlatCap);  // keeps the gaps of dashes and dots open
    else if (pen.drawWidth <= 1)
        p.setCapStyle(Qt::SquareCap);  // whole end pixels
    else
        p.setCapStyle(Qt::RoundCap);
    p.setJoinStyle(Qt::RoundJoin);
    last = {colour, pen.drawWidth, pen.drawStyle, magnify, p};
    return p;
}

// A solid line along a pixel row or column whose sides and square ends all
// fall on pixel boundaries covers whole pixels and nothing else: filling
// that rectangle lights exactly the pixels that stroking it would. The
// antialiasing stroker takes thin lines pixel by pixel, so a long rule is
// filled many times faster. Only on raster images: vector files keep lines.
bool fillAsRectangle(QPainter& painter, const QPointF& a, const QPointF& b, const QPen& pen) {
    if (pen.style() != Qt::SolidLine || pen.capStyle() != Qt::SquareCap || a == b) return false;
    if (a.x() != b.x() && a.y() != b.y()) return false;
    if (painter.paintEngine()->type() != QPaintEngine::Raster) return false;
    const QTransform device = painter.deviceTransform();
    if (device.type() > QTransform::TxScale) return false;
    const double half = pen.widthF() / 2.0;
    const QRectF covered = QRectF(a, b).normalized().adjusted(-half, -half, half, half);
    const QRectF pixels = device.mapRect(covered);
    for (const double edge : {pixels.left(), pixels.top(), pixels.right(), pixels.bottom()})
        if (std::fabs(edge - std::round(edge)) > 1e-7) return false;
    painter.fillRect(covered, pen.color());
    return true;
}

// The antialiasing stroker paints a thin line along a row pixel pair by
// pixel pair, one pixel in each of the two rows it straddles, and blends
// every pair on its own: one grid line across a full-HD graph took longer
// than all the rest of the graph. Painted twice, clipped each time to one
// side of the boundary between those rows, it is blended in long runs;
// every pixel is still painted once, with the coverage the stroker gives it.
bool strokeRowBySide(QPainter& painter, const QPointF& a, const QPointF& b) {
    if (a.y() != b.y() || painter.hasClipping() || !painter.testRenderHint(QPainter::Antialiasing)) return false;
    if (painter.paintEngine()->type() != QPaintEngine::Raster) return false;
    const QTransform device = painter.deviceTransform();
    if (device.type() > QTransform::TxScale || device.m11() <= 0.0 || device.m22() <= 0.0) return false;
    const double length = std::fabs(b.x() - a.x()) * device.m11();
    if (length < 64.0 || painter.pen().widthF() * device.m22() > 1.0) return false;  // wider pens fill rows already
    const QRectF all(QPointF(0, 0), QSizeF(painter.device()->width(), painter.device()->height()));
    const double boundary = std::round(device.map(a).y());
    const QTransform logical = device.inverted();
    for (const QRectF side : {QRectF(all.topLeft(), QPointF(all.right(), boundary)),
                              QRectF(QPointF(all.left(), boundary), all.bottomRight())}) {
        painter.setClipRect(logical.mapRect(side));
        painter.drawLine(a, b);
    }
    painter.setClipping(false);
    return true;
}

}  // namespace canvas_ops
