#include "canvas/recorded_ops.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "canvas/canvas_limits.h"
#include "canvas/pen_strokes.h"
#include "canvas/presentation_scale.h"
#include "canvas/text_flow.h"
#include "canvas/text_runs.h"
#include "core/physics.h"

using namespace canvas_limits;

namespace canvas_ops {

namespace {

// Shrinking with the area stops at this type size: smaller cannot be read
// from the back of a classroom.
constexpr double kSmallestShrunkPoints = 8.0;

// A ground is a box for a few lines of text (a readout, a legend, a label)
// on a part of the area, not a background for a picture.
constexpr double kLargestGround = 0.25;  // of the area
constexpr std::size_t kMostOnGround = 64;

constexpr double kTwoPi = 2.0 * physics::kPi;
constexpr double kDegreesPerRadian = 180.0 / physics::kPi;

void paintLine(QPainter& painter, const LineOp& o, double w, double h, qreal dpr, double m) {
    double x1 = o.x1 * w, y1 = o.y1 * h, x2 = o.x2 * w, y2 = o.y2 * h;
    if (!clipToLimit(x1, y1, x2, y2)) return;
    const double off = penOffset(paintedPenWidth(o.pen.drawWidth, m), dpr);
    const QPen pen = makePen(o.colour, o.pen, m);
    const QPointF from(x1 + off, y1 + off), to(x2 + off, y2 + off);
    if (fillAsRectangle(painter, from, to, pen)) return;
    painter.setPen(pen);
    if (from == to)
        painter.drawPoint(from);
    else if (!strokeRowBySide(painter, from, to))
        painter.drawLine(from, to);
}

void paintBox(QPainter& painter, const BoxOp& o, double w, double h, qreal dpr, double m) {
    if (o.onlyGrown) return;  // painted with its grown texts (extendGroundForTexts)
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
    const double off = penOffset(paintedPenWidth(o.pen.drawWidth, m), dpr);
    QPen pen = makePen(o.colour, o.pen, m);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(QPointF(left + off, top + off), QPointF(right + off, bottom + off)));
}

// A circle too big to hand to the rasteriser. Its outline cannot be seen
// unless it crosses the area; a filled disc that covers the whole area
// still colours it.
void paintHugeDisc(QPainter& painter, const QColor& fill, double cx, double cy, double rx, double ry, double w,
                   double h) {
    if (rx <= 0 || ry <= 0) return;
    auto inside = [&](double px, double py) {
        const double dx = (px - cx) / rx, dy = (py - cy) / ry;
        return dx * dx + dy * dy <= 1.0;
    };
    if (inside(0, 0) && inside(w, 0) && inside(0, h) && inside(w, h)) painter.fillRect(QRectF(0, 0, w, h), fill);
}

// The arc of a circle operation: magnitudes give the angles; the sign asks
// for the radius to that end. Returns whether both radii close it into a pie.
bool arcPath(QPainterPath& path, const CircleOp& o, const QRectF& rect, const QPointF& c) {
    const double s = std::fmod(std::fabs(o.start.value_or(0.0)), kTwoPi);
    const double e = std::fmod(std::fabs(o.end.value_or(kTwoPi)), kTwoPi);
    const bool radiusAtStart = o.start && *o.start < 0.0;
    const bool radiusAtEnd = o.end && *o.end < 0.0;
    double sweep = e - s;
    if (sweep <= 0.0) sweep += kTwoPi;  // counter-clockwise; equal ends make a whole turn
    const double startDeg = s * kDegreesPerRadian;
    const double sweepDeg = sweep * kDegreesPerRadian;

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
    return closedPie;
}

void paintCircle(QPainter& painter, const CircleOp& o, double w, double h, qreal dpr, double m) {
    double rx = o.radius * w;
    double ry = rx;
    if (o.aspect < 1.0)
        ry = rx * o.aspect;
    else if (o.aspect > 1.0)
        rx = ry / o.aspect;
    const double off = penOffset(paintedPenWidth(o.pen.drawWidth, m), dpr);
    const double cx = o.x * w + off;
    const double cy = o.y * h + off;
    if (!std::isfinite(rx) || !std::isfinite(ry)) return;

    const bool wholeFigure = !o.start && !o.end;
    const bool fill = o.forcedFill.has_value() || o.pen.fillStyle == FillStyle::Solid;
    const QColor fillColour = o.forcedFill.value_or(o.pen.fillColor);

    // Nothing of it near the area: nothing to paint.
    const double margin = paintedPenWidth(o.pen.drawWidth, m);
    if (cx + rx < -margin || cx - rx > w + margin || cy + ry < -margin || cy - ry > h + margin) return;
    if (rx > kPixelLimit || ry > kPixelLimit || std::fabs(cx) > kPixelLimit || std::fabs(cy) > kPixelLimit) {
        if (wholeFigure && fill) paintHugeDisc(painter, fillColour, cx, cy, rx, ry, w, h);
        return;
    }

    const QRectF rect(cx - rx, cy - ry, 2 * rx, 2 * ry);
    painter.setPen(makePen(o.colour, o.pen, m));
    painter.setBrush(fill ? QBrush(fillColour) : QBrush(Qt::NoBrush));
    if (wholeFigure) {
        painter.drawEllipse(rect);
        return;
    }
    QPainterPath path;
    if (!arcPath(path, o, rect, QPointF(cx, cy))) painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

void paintPoint(QPainter& painter, const PointOp& o, double w, double h, qreal dpr, double m) {
    const QPointF p(o.x * w, o.y * h);
    if (std::fabs(p.x()) > kPixelLimit || std::fabs(p.y()) > kPixelLimit) return;
    const double width = paintedPenWidth(o.pen.drawWidth, m);
    if (o.pen.drawWidth <= 1) {
        painter.fillRect(QRectF(std::floor(p.x()), std::floor(p.y()), width, width), o.colour);
    } else {
        const double off = penOffset(width, dpr);
        painter.setPen(Qt::NoPen);
        painter.setBrush(o.colour);
        painter.drawEllipse(p + QPointF(off, off), width / 2.0, width / 2.0);
    }
}

// The letters of a text at its painted place, with its rim if it has one;
// the painter's font is the text's as painted.
void paintLetters(QPainter& painter, const TextOp& o, QPointF base, qreal dpr) {
    if (o.halo.isValid()) {
        // A rim about one point wide, filled out in whole device pixels so
        // that no ring of pixels is left uncovered at 150 %.
        painter.setPen(o.halo);
        const int rings = static_cast<int>(std::ceil(dpr - 1e-9));
        for (int k = 1; k <= rings; ++k)
            for (const QPointF step : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1), QPointF(-1, -1),
                                       QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1)})
                paintTextLine(painter, base + step * (k / dpr), o.text);
    }
    painter.setPen(o.colour);
    paintTextLine(painter, base, o.text);
}

void paintText(QPainter& painter, const TextOp& o, const ReplayArea& area, qreal dpr, double m, TextFlow& flow,
               double lift = 0.0) {
    flow.lastText.reset();
    // Where a text ends only matters to the texts that follow it on a screen
    // that shows them larger; as designed it is not measured at all.
    double width = 0.0;
    const double grown = fittedGrowth(o, m, area, [&](double g) {
        setPaintedFont(painter, o.font, paintedTextPoints(o, area, *painter.device(), g));
        width = g != 1.0 ? QFontMetricsF(painter.font(), painter.device()).horizontalAdvance(o.text) : 0.0;
        return width;
    });
    const QFontMetricsF fm(painter.font(), painter.device());
    const QSizeF size(width, fm.ascent() + fm.descent());
    const QPointF topLeft = placeText(o, size, grown, area, m, flow.placed) - QPointF(0, lift);
    if (crowdedLabel(o, QRectF(topLeft, size), m, flow.labels)) return;
    if (std::fabs(topLeft.x()) > kPixelLimit || std::fabs(topLeft.y()) > kPixelLimit) return;
    paintLetters(painter, o, QPointF(topLeft.x(), topLeft.y() + fm.ascent()), dpr);
    flow.lastText = TextFlow::Painted{QRectF(topLeft, size), fm.ascent()};
}

// A ground only for grown texts (a row of labels) lies under them as
// painted and between them: each new text adds its own place and the gap
// to those before it, and is painted again on it; the texts before it are
// left as they are.
void extendGroundForTexts(QPainter& painter, const TextOp& text, qreal dpr, TextFlow& flow) {
    if (!flow.lastText) return;  // left out
    const QRectF& box = flow.lastText->box;
    QRectF& painted = flow.ground.painted;
    QRectF added = box;
    if (!painted.isEmpty()) {
        if (box.left() >= painted.right()) added.setLeft(painted.right());
        if (box.right() <= painted.left()) added.setRight(painted.left());
        added.setTop(std::min(box.top(), painted.top()));
        added.setBottom(std::max(box.bottom(), painted.bottom()));
    }
    painter.fillRect(added, flow.ground.boxes.front().colour);
    painted |= box;
    paintLetters(painter, text, QPointF(box.left(), box.top() + flow.lastText->ascent), dpr);
}

QRectF boxRect(const BoxOp& b) { return QRectF(QPointF(b.x1, b.y1), QPointF(b.x2, b.y2)).normalized(); }

// Paints the ground again, grown by as much as its texts grow past their
// designed extent on each side, then the lines and texts on it: each line
// moved up or down with the text recorded after it.
void repaintGround(QPainter& painter, const ReplayArea& area, qreal dpr, double m, TextFlow& flow) {
    const QPaintDevice& device = *painter.device();
    QRectF designed, painted;
    std::vector<double> shifts;
    TextPlaces place = flow.ground.before;
    for (const Op& op : flow.ground.onIt) {
        const auto* t = std::get_if<TextOp>(&op);
        if (!t) continue;
        const QFontMetricsF asDesigned(paintedFont(*t, area, device, 1.0), &device);
        const GrownText grown = grownText(*t, area, device, m);
        const QRectF d(t->x * area.width, t->y * area.height, asDesigned.horizontalAdvance(t->text),
                       asDesigned.ascent() + asDesigned.descent());
        const QRectF p(placeText(*t, grown.size, grown.grown, area, m, place), grown.size);
        designed |= d;
        painted |= p;
        shifts.push_back(p.top() - d.top());
    }
    const double left = std::min(0.0, painted.left() - designed.left()) / area.width;
    const double up = std::min(0.0, painted.top() - designed.top()) / area.height;
    const double right = std::max(0.0, painted.right() - designed.right()) / area.width;
    const double down = std::max(0.0, painted.bottom() - designed.bottom()) / area.height;
    for (BoxOp box : flow.ground.boxes) {
        (box.x1 > box.x2 ? box.x2 : box.x1) += left;
        (box.y1 > box.y2 ? box.y2 : box.y1) += up;
        (box.x1 > box.x2 ? box.x1 : box.x2) += right;
        (box.y1 > box.y2 ? box.y1 : box.y2) += down;
        paintBox(painter, box, area.width, area.height, dpr, m);
    }
    // Its texts are painted again: they follow, and are crowded by, only
    // what was painted before them.
    flow.placed = flow.ground.before;
    flow.labels.resize(std::min(flow.labels.size(), flow.ground.labelsBefore));
    std::size_t next = 0;
    for (const Op& op : flow.ground.onIt) {
        if (const auto* t = std::get_if<TextOp>(&op)) {
            paintText(painter, *t, area, dpr, m, flow);
            ++next;
        } else if (const auto* l = std::get_if<LineOp>(&op)) {
            LineOp moved = *l;
            const double shift = (next < shifts.size() ? shifts[next] : shifts.back()) / area.height;
            moved.y1 += shift;
            moved.y2 += shift;
            paintLine(painter, moved, area.width, area.height, dpr, m);
        }
    }
}

// Keeps the ground up to date after an operation is painted (or, without a
// painter, recorded).
void followGround(QPainter* painter, const Op& op, const ReplayArea& area, qreal dpr, double m, TextFlow& flow) {
    auto& ground = flow.ground;
    const auto* box = std::get_if<BoxOp>(&op);
    if (box && box->filled) {
        // A background filled behind a whole picture is no ground for a few texts.
        const QRectF r = boxRect(*box);
        if (r.width() * r.height() <= kLargestGround)
            ground = {{*box}, {}, flow.placed, flow.labels.size(), {}};
        else
            ground = {};
        return;
    }
    if (box && !ground.boxes.empty() && ground.onIt.empty()) {
        ground.boxes.push_back(*box);
        return;
    }
    const auto* line = std::get_if<LineOp>(&op);
    const auto* text = std::get_if<TextOp>(&op);
    const bool onIt = (line && flow.onGround(line->x1, line->y1) && flow.onGround(line->x2, line->y2)) ||
                      (text && text->onGround && !ground.boxes.empty());
    if (!onIt || ground.onIt.size() >= kMostOnGround) {
        ground.boxes.clear();
        ground.onIt.clear();
        return;
    }
    ground.onIt.push_back(op);
    if (!painter || !text || m == 1.0) return;
    if (ground.boxes.front().onlyGrown)
        extendGroundForTexts(*painter, *text, dpr, flow);
    else
        repaintGround(*painter, area, dpr, m, flow);
}

}  // namespace

void paintOp(QPainter& painter, const Op& op, const ReplayArea& area, TextFlow& flow) {
    const double w = area.width;
    const double h = area.height;
    const qreal dpr = painter.device()->devicePixelRatio();
    const double m = presentationScale();  // 1 while an export paints
    std::visit(
        [&](const auto& o) {
            using T = std::decay_t<decltype(o)>;
            if constexpr (std::is_same_v<T, LineOp>)
                paintLine(painter, o, w, h, dpr, m);
            else if constexpr (std::is_same_v<T, BoxOp>)
                paintBox(painter, o, w, h, dpr, m);
            else if constexpr (std::is_same_v<T, CircleOp>)
                paintCircle(painter, o, w, h, dpr, m);
            else if constexpr (std::is_same_v<T, PointOp>)
                paintPoint(painter, o, w, h, dpr, m);
            else if constexpr (std::is_same_v<T, TextOp>)
                paintText(painter, o, area, dpr, m, flow,
                          flow.texts < flow.lifts.size() ? flow.lifts[flow.texts] : 0.0);
        },
        op);
    if (std::holds_alternative<TextOp>(op)) ++flow.texts;
    followGround(&painter, op, area, dpr, m, flow);
}

void noteGround(const Op& op, TextFlow& flow) { followGround(nullptr, op, ReplayArea{}, 1.0, 1.0, flow); }

double paintedPoints(const TextOp& text, double areaWidth, double areaHeight) {
    const double shrink = std::min({1.0, areaWidth / text.areaWidth, areaHeight / text.areaHeight});
    const double points = text.font.pointSizeF();
    if (shrink >= 1.0) return points;
    return std::max({kMinFontPoints, std::min(points, kSmallestShrunkPoints), points * shrink});
}

}  // namespace canvas_ops
