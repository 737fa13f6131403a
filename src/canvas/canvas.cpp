#include "canvas/canvas.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/fonts.h"

namespace {

// Beyond this many recorded operations between two cls() the list is dropped;
// a resize then rescales the pixels instead of replaying (long animations).
constexpr std::size_t kMaxRecordedOps = 200000;

// Pixel coordinates further out than this are clipped before painting:
// the painter works in integers internally and must never see huge values.
constexpr double kPixelLimit = 1.0e6;

constexpr double kTwoPi = 2.0 * std::numbers::pi;

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
// when nothing of it lies inside.
bool clipToLimit(double& x1, double& y1, double& x2, double& y2) {
    double t0 = 0.0, t1 = 1.0;
    const double dx = x2 - x1, dy = y2 - y1;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x1 + kPixelLimit, kPixelLimit - x1, y1 + kPixelLimit, kPixelLimit - y1};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0.0) t0 = std::max(t0, t);
        else t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    const double ox = x1, oy = y1;
    x1 = ox + t0 * dx;
    y1 = oy + t0 * dy;
    x2 = ox + t1 * dx;
    y2 = oy + t1 * dy;
    return true;
}

double clampPixel(double v) { return std::clamp(v, -kPixelLimit, kPixelLimit); }

}  // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);  // the image covers every pixel: no flicker
    setFocusPolicy(Qt::ClickFocus);
    rebuildImage();
}

Canvas::~Canvas() = default;

// ---------------------------------------------------------------- scale ---

void Canvas::scale(double x1, double y1, double x2, double y2) {
    if (!finite({x1, y1, x2, y2}) || x1 == x2 || y1 == y2) {
        ++skipped_;
        return;
    }
    scale_ = UserScale::fromCorners(x1, y1, x2, y2);
    customScale_ = true;
    scaleChanged();
}

void Canvas::setScaleLeft(double v) { if (std::isfinite(v)) { scale_.left = v; customScale_ = true; scaleChanged(); } }
void Canvas::setScaleTop(double v) { if (std::isfinite(v)) { scale_.top = v; customScale_ = true; scaleChanged(); } }
void Canvas::setScaleWidth(double v) {
    if (std::isfinite(v) && v != 0.0) { scale_.width = v; customScale_ = true; scaleChanged(); }
}
void Canvas::setScaleHeight(double v) {
    if (std::isfinite(v) && v != 0.0) { scale_.height = v; customScale_ = true; scaleChanged(); }
}

void Canvas::scaleChanged() { placeControls(); }

double Canvas::areaWidth() const { return std::max(1, width()); }
double Canvas::areaHeight() const { return std::max(1, height()); }

QPointF Canvas::toLogical(double x, double y) const {
    return {fracX(x) * areaWidth(), fracY(y) * areaHeight()};
}

QPointF Canvas::toDevice(double x, double y) const {
    const QPointF p = toLogical(x, y);
    return p * image_.devicePixelRatio();
}

QPointF Canvas::toUser(const QPointF& widgetPoint) const {
    return {scale_.fromPixelX(widgetPoint.x(), areaWidth()), scale_.fromPixelY(widgetPoint.y(), areaHeight())};
}

QColor Canvas::pixelAt(double x, double y) const {
    const QPointF d = toDevice(x, y);
    const int px = static_cast<int>(std::floor(d.x()));
    const int py = static_cast<int>(std::floor(d.y()));
    if (!image_.valid(px, py)) return {};
    return image_.pixelColor(px, py);
}

// ---------------------------------------------------------------- state ---

void Canvas::setBackColor(const QColor& c) {
    backColor_ = c;
    cls();
}

void Canvas::setFontName(const QString& name) { fontName_ = name; }
void Canvas::setFontSize(double points) { if (std::isfinite(points) && points > 0) fontSize_ = points; }
void Canvas::setFontBold(bool bold) { fontBold_ = bold; }

QFont Canvas::currentFont() const { return programFont(fontName_, fontSize_, fontBold_); }

bool Canvas::finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// ----------------------------------------------------------- operations ---

void Canvas::cls() {
    ops_.clear();
    opsComplete_ = true;
    printed_.clear();
    setAccessibleDescription(QString());
    currentX_ = scale_.left;
    currentY_ = scale_.top;
    image_.fill(backColor_);
    update();
}

void Canvas::line(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    if (!finite({x1, y1, x2, y2})) { ++skipped_; return; }
    record(LineOp{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), state_});
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::lineTo(double x2, double y2, std::optional<QColor> colour) {
    line(currentX_, currentY_, x2, y2, colour);
}

void Canvas::box(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    if (!finite({x1, y1, x2, y2})) { ++skipped_; return; }
    record(BoxOp{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), false, state_});
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::filledBox(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    if (!finite({x1, y1, x2, y2})) { ++skipped_; return; }
    record(BoxOp{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), true, state_});
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::circle(double x, double y, double radius, std::optional<QColor> colour, std::optional<double> startAngle,
                    std::optional<double> endAngle, double aspect) {
    if (!finite({x, y, radius, aspect}) || (startAngle && !std::isfinite(*startAngle)) ||
        (endAngle && !std::isfinite(*endAngle)) || aspect <= 0.0) {
        ++skipped_;
        return;
    }
    record(CircleOp{fracX(x), fracY(y), std::fabs(radius / scale_.width), colour.value_or(state_.foreColor),
                    startAngle, endAngle, aspect, state_, std::nullopt});
    currentX_ = x;
    currentY_ = y;
}

void Canvas::filledCircle(double x, double y, double radius, const QColor& colour) {
    if (!finite({x, y, radius})) { ++skipped_; return; }
    record(CircleOp{fracX(x), fracY(y), std::fabs(radius / scale_.width), colour, std::nullopt, std::nullopt, 1.0,
                    state_, colour});
    currentX_ = x;
    currentY_ = y;
}

void Canvas::pset(double x, double y, std::optional<QColor> colour) {
    if (!finite({x, y})) { ++skipped_; return; }
    record(PointOp{fracX(x), fracY(y), colour.value_or(state_.foreColor), state_});
    currentX_ = x;
    currentY_ = y;
}

void Canvas::print(const QString& text) {
    if (!finite({currentX_, currentY_})) { ++skipped_; return; }
    const QStringList lines = text.split(QLatin1Char('\n'));
    const QFont font = currentFont();
    const double lineHeightUser = QFontMetricsF(font).lineSpacing() * scale_.height / areaHeight();
    for (const QString& lineText : lines) {
        record(TextOp{fracX(currentX_), fracY(currentY_), lineText, font, state_.foreColor});
        currentY_ += lineHeightUser;
        currentX_ = scale_.left;
    }
    printed_.append(text);
    setAccessibleDescription(printed_.join(QLatin1Char('\n')));
}

double Canvas::textWidth(const QString& text) const {
    return QFontMetricsF(currentFont()).horizontalAdvance(text) * std::fabs(scale_.width) / areaWidth();
}

double Canvas::textHeight(const QString& text) const {
    const int lines = static_cast<int>(text.count(QLatin1Char('\n'))) + 1;
    return QFontMetricsF(currentFont()).lineSpacing() * lines * std::fabs(scale_.height) / areaHeight();
}

// ------------------------------------------------------------ recording ---

void Canvas::record(Op op) {
    paintOne(op);
    if (!opsComplete_) return;
    if (ops_.size() >= kMaxRecordedOps) {
        ops_.clear();
        opsComplete_ = false;
        return;
    }
    ops_.push_back(std::move(op));
}

void Canvas::paintOne(const Op& op) {
    if (image_.isNull()) return;
    QPainter painter(&image_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    paintOp(painter, op);
    painter.end();
    update();
}

QPen Canvas::makePen(const QColor& colour, const PenState& pen) const {
    QPen p(colour);
    p.setWidthF(pen.drawWidth);
    p.setStyle(penStyleFor(pen.drawStyle));
    p.setCapStyle(Qt::RoundCap);
    p.setJoinStyle(Qt::RoundJoin);
    return p;
}

void Canvas::paintOp(QPainter& painter, const Op& op) const {
    const double w = areaWidth();
    const double h = areaHeight();
    std::visit(
        [&](const auto& o) {
            using T = std::decay_t<decltype(o)>;
            if constexpr (std::is_same_v<T, LineOp>) {
                double x1 = o.x1 * w, y1 = o.y1 * h, x2 = o.x2 * w, y2 = o.y2 * h;
                if (!clipToLimit(x1, y1, x2, y2)) return;
                painter.setPen(makePen(o.colour, o.pen));
                if (x1 == x2 && y1 == y2) painter.drawPoint(QPointF(x1, y1));
                else painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
            } else if constexpr (std::is_same_v<T, BoxOp>) {
                const QRectF r = QRectF(QPointF(clampPixel(o.x1 * w), clampPixel(o.y1 * h)),
                                        QPointF(clampPixel(o.x2 * w), clampPixel(o.y2 * h)))
                                     .normalized();
                if (o.filled) {
                    painter.fillRect(r, o.colour);
                } else {
                    painter.setPen(makePen(o.colour, o.pen));
                    painter.setBrush(Qt::NoBrush);
                    painter.drawRect(r);
                }
            } else if constexpr (std::is_same_v<T, CircleOp>) {
                double rx = o.radius * w;
                double ry = rx;
                if (o.aspect < 1.0) ry = rx * o.aspect;
                else if (o.aspect > 1.0) rx = ry / o.aspect;
                if (rx > kPixelLimit || ry > kPixelLimit) return;
                const QPointF c(clampPixel(o.x * w), clampPixel(o.y * h));
                const QRectF rect(c.x() - rx, c.y() - ry, 2 * rx, 2 * ry);
                painter.setPen(makePen(o.colour, o.pen));
                const bool fill = o.forcedFill.has_value() || o.pen.fillStyle == FillStyle::Solid;
                painter.setBrush(fill ? QBrush(o.forcedFill.value_or(o.pen.fillColor)) : QBrush(Qt::NoBrush));
                if (!o.start && !o.end) {
                    painter.drawEllipse(rect);
                    return;
                }
                const double s = std::fabs(o.start.value_or(0.0));
                const double e = std::fabs(o.end.value_or(kTwoPi));
                const bool radiusAtStart = o.start && *o.start < 0.0;
                const bool radiusAtEnd = o.end && *o.end < 0.0;
                double sweep = std::fmod(e - s, kTwoPi);
                if (sweep <= 0.0) sweep += kTwoPi;
                const double startDeg = s * 180.0 / std::numbers::pi;
                const double sweepDeg = sweep * 180.0 / std::numbers::pi;
                QPainterPath path;
                if (radiusAtStart || radiusAtEnd) {
                    path.moveTo(c);
                    path.arcTo(rect, startDeg, sweepDeg);
                    if (radiusAtStart && radiusAtEnd) {
                        path.closeSubpath();
                    } else if (radiusAtStart) {
                        // centre → start of arc → arc; the path already holds both
                    } else {
                        // only the radius to the end: arc first, then back to centre
                        path = QPainterPath();
                        path.arcMoveTo(rect, startDeg);
                        path.arcTo(rect, startDeg, sweepDeg);
                        path.lineTo(c);
                    }
                    if (!(radiusAtStart && radiusAtEnd)) painter.setBrush(Qt::NoBrush);
                    painter.drawPath(path);
                } else {
                    path.arcMoveTo(rect, startDeg);
                    path.arcTo(rect, startDeg, sweepDeg);
                    painter.setBrush(Qt::NoBrush);
                    painter.drawPath(path);
                }
            } else if constexpr (std::is_same_v<T, PointOp>) {
                const QPointF p(o.x * w, o.y * h);
                if (std::fabs(p.x()) > kPixelLimit || std::fabs(p.y()) > kPixelLimit) return;
                if (o.pen.drawWidth <= 1) {
                    painter.fillRect(QRectF(std::floor(p.x()), std::floor(p.y()), 1, 1), o.colour);
                } else {
                    painter.setPen(Qt::NoPen);
                    painter.setBrush(o.colour);
                    painter.drawEllipse(p, o.pen.drawWidth / 2.0, o.pen.drawWidth / 2.0);
                }
            } else if constexpr (std::is_same_v<T, TextOp>) {
                const QPointF topLeft(o.x * w, o.y * h);
                if (std::fabs(topLeft.x()) > kPixelLimit || std::fabs(topLeft.y()) > kPixelLimit) return;
                painter.setFont(o.font);
                painter.setPen(o.colour);
                const QFontMetricsF metrics(o.font);
                painter.drawText(QPointF(topLeft.x(), topLeft.y() + metrics.ascent()), o.text);
            }
        },
        op);
}

void Canvas::rebuildImage() {
    const qreal dpr = devicePixelRatioF();
    const QSize logical(std::max(1, width()), std::max(1, height()));
    const QSize device = (QSizeF(logical) * dpr).toSize();
    if (!image_.isNull() && image_.size() == device && qFuzzyCompare(image_.devicePixelRatio(), dpr)) return;

    QImage fresh(device, QImage::Format_ARGB32_Premultiplied);
    fresh.setDevicePixelRatio(dpr);
    fresh.fill(backColor_);
    QPainter painter(&fresh);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (opsComplete_) {
        for (const Op& op : ops_) paintOp(painter, op);
    } else if (!image_.isNull()) {
        painter.drawImage(QRectF(QPointF(0, 0), QSizeF(logical)), image_);
    }
    painter.end();
    image_ = std::move(fresh);
}

void Canvas::placeControl(QWidget* control, double left, double top, double width, double height) {
    if (!control || !finite({left, top, width, height})) return;
    if (control->parentWidget() != this) control->setParent(this);
    auto it = std::find_if(placements_.begin(), placements_.end(),
                           [control](const Placement& p) { return p.control == control; });
    if (it == placements_.end()) placements_.push_back({control, left, top, width, height});
    else *it = {control, left, top, width, height};
    placeControls();
}

void Canvas::placeControls() {
    for (const Placement& p : placements_) {
        if (!p.control) continue;
        const QPointF topLeft = toLogical(p.left, p.top);
        int w = p.control->width();
        int h = p.control->height();
        if (p.width != 0.0) w = static_cast<int>(std::lround(std::fabs(p.width / scale_.width) * areaWidth()));
        if (p.height != 0.0) h = static_cast<int>(std::lround(std::fabs(p.height / scale_.height) * areaHeight()));
        p.control->setGeometry(static_cast<int>(std::lround(clampPixel(topLeft.x()))),
                               static_cast<int>(std::lround(clampPixel(topLeft.y()))), std::max(w, 1),
                               std::max(h, 1));
    }
}

// --------------------------------------------------------------- events ---

void Canvas::paintEvent(QPaintEvent*) {
    // Moving to a screen of another pixel ratio: redraw at the new density.
    if (!qFuzzyCompare(image_.devicePixelRatio(), devicePixelRatioF())) rebuildImage();
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), image_);
}

void Canvas::resizeEvent(QResizeEvent*) {
    if (!customScale_) scale_ = UserScale{0, 0, areaWidth(), areaHeight()};
    rebuildImage();
    placeControls();
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    const QPointF u = toUser(event->position());
    emit mousePressed(u.x(), u.y(), event->button());
    QWidget::mousePressEvent(event);
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF u = toUser(event->position());
    emit mouseReleased(u.x(), u.y(), event->button());
    if (rect().contains(event->position().toPoint())) emit clicked(u.x(), u.y());
    QWidget::mouseReleaseEvent(event);
}
