#include "canvas/canvas.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "canvas/canvas_limits.h"
#include "canvas/figure_export.h"

using namespace canvas_limits;
using namespace canvas_ops;

namespace {

constexpr int kMaxDrawWidth = 1000;

}  // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);  // the image covers every pixel: no flicker
    // Reachable with Tab, so that the figure's Ctrl+S and Ctrl+P work from
    // the keyboard too.
    setFocusPolicy(Qt::StrongFocus);
    installFigureActions(*this);
    installAccessibility();
    syncImage();
}

Canvas::~Canvas() = default;

// ----------------------------------------------------------- inspection ---

const QImage& Canvas::image() const {
    paintPending();
    return image_;
}

QColor Canvas::pixelAt(double x, double y) const {
    const QPointF d = toDevice(x, y);
    if (!std::isfinite(d.x()) || !std::isfinite(d.y())) return {};
    const double fx = std::floor(d.x());
    const double fy = std::floor(d.y());
    if (fx < 0 || fy < 0 || fx >= image_.width() || fy >= image_.height()) return {};
    return image_.pixelColor(static_cast<int>(fx), static_cast<int>(fy));
}

// ---------------------------------------------------------------- state ---

void Canvas::setBackColor(const QColor& c) {
    backColor_ = c;
    cls();
}

void Canvas::setDrawWidth(int pixels) { state_.drawWidth = std::clamp(pixels, 1, kMaxDrawWidth); }

bool Canvas::finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// ----------------------------------------------------------- operations ---

void Canvas::cls() {
    ops_.clear();
    painted_ = 0;
    opsComplete_ = true;
    trail_.clear();
    flow_ = {};
    recordedGround_ = {};
    forgetDescription();
    const UserScale s = userScale();
    currentX_ = s.left;
    currentY_ = s.top;
    syncImage();
    image_.fill(backColor_);
    update();
}

void Canvas::line(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    LineOp op{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), state_};
    if (!finite({x1, y1, x2, y2, op.x1, op.y1, op.x2, op.y2})) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::lineTo(double x2, double y2, std::optional<QColor> colour) { line(currentX_, currentY_, x2, y2, colour); }

void Canvas::box(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    BoxOp op{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), false, state_};
    if (!finite({x1, y1, x2, y2, op.x1, op.y1, op.x2, op.y2})) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::filledBox(double x1, double y1, double x2, double y2, std::optional<QColor> colour) {
    BoxOp op{fracX(x1), fracY(y1), fracX(x2), fracY(y2), colour.value_or(state_.foreColor), true, state_};
    if (!finite({x1, y1, x2, y2, op.x1, op.y1, op.x2, op.y2})) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x2;
    currentY_ = y2;
}

void Canvas::groundForTexts(double x1, double y1, double x2, double y2) {
    BoxOp op{fracX(x1), fracY(y1), fracX(x2), fracY(y2), backColor_, true, state_, true};
    if (!finite({x1, y1, x2, y2, op.x1, op.y1, op.x2, op.y2})) {
        skip();
        return;
    }
    record(std::move(op));
}

void Canvas::circle(double x, double y, double radius, std::optional<QColor> colour, std::optional<double> startAngle,
                    std::optional<double> endAngle, double aspect) {
    CircleOp op{fracX(x),
                fracY(y),
                std::fabs(radius / userScale().width),
                colour.value_or(state_.foreColor),
                startAngle,
                endAngle,
                aspect,
                state_,
                std::nullopt};
    if (!finite({x, y, radius, aspect, op.x, op.y, op.radius}) || (startAngle && !std::isfinite(*startAngle)) ||
        (endAngle && !std::isfinite(*endAngle)) || aspect <= 0.0) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x;
    currentY_ = y;
}

void Canvas::filledCircle(double x, double y, double radius, const QColor& colour) {
    CircleOp op{fracX(x), fracY(y), std::fabs(radius / userScale().width), colour, std::nullopt, std::nullopt, 1.0,
                state_,   colour};
    if (!finite({x, y, radius, op.x, op.y, op.radius})) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x;
    currentY_ = y;
}

void Canvas::pset(double x, double y, std::optional<QColor> colour) {
    PointOp op{fracX(x), fracY(y), colour.value_or(state_.foreColor), state_};
    if (!finite({x, y, op.x, op.y})) {
        skip();
        return;
    }
    record(std::move(op));
    currentX_ = x;
    currentY_ = y;
}

// --------------------------------------------------------------- events ---

void Canvas::paintEvent(QPaintEvent* event) {
    // What was drawn since the last paint, or at a new size or another
    // screen's pixel ratio the whole figure again, sharply.
    paintPending();
    QPainter painter(this);
    // The image is opaque: copy the asked-for rectangle without blending,
    // which is what an animation over the drawing repaints on every tick.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QRect area = event->rect().intersected(rect());
    const qreal dpr = image_.devicePixelRatio();
    // An image capped below the window's size is scaled up smoothly.
    if (dpr < devicePixelRatio()) painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF source(QPointF(area.topLeft()) * dpr, QSizeF(area.size()) * dpr);
    painter.drawImage(QRectF(area), image_, source);
}

void Canvas::resizeEvent(QResizeEvent*) {
    syncImage();
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
