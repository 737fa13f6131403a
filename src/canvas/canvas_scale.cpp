#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/canvas_limits.h"

using namespace canvas_limits;

// The user scale: how user coordinates map to the area, and the controls
// placed on the area in user units.

// ---------------------------------------------------------------- scale ---

UserScale Canvas::userScale() const {
    if (customScale_) return scale_;
    return UserScale{0.0, 0.0, areaWidth(), areaHeight()};
}

void Canvas::setUserScale(const UserScale& s) {
    if (!finite({s.left, s.top, s.width, s.height}) || !s.usable()) {
        skip();
        return;
    }
    // Recorded drawing and placed controls are held in area fractions, so
    // neither moves: a new scale only changes how later coordinates map.
    scale_ = s;
    customScale_ = true;
}

void Canvas::scale(double x1, double y1, double x2, double y2) {
    if (!finite({x1, y1, x2, y2})) {
        skip();
        return;
    }
    setUserScale(UserScale::fromCorners(x1, y1, x2, y2));
}

void Canvas::setScaleLeft(double v) {
    UserScale s = userScale();
    s.left = v;
    setUserScale(s);
}

void Canvas::setScaleTop(double v) {
    UserScale s = userScale();
    s.top = v;
    setUserScale(s);
}

void Canvas::setScaleWidth(double v) {
    UserScale s = userScale();
    s.width = v;
    setUserScale(s);
}

void Canvas::setScaleHeight(double v) {
    UserScale s = userScale();
    s.height = v;
    setUserScale(s);
}

double Canvas::userPerPixelX() const { return userScale().width / areaWidth(); }
double Canvas::userPerPixelY() const { return userScale().height / areaHeight(); }

double Canvas::areaWidth() const { return std::max(1, width()); }
double Canvas::areaHeight() const { return std::max(1, height()); }

double Canvas::fracX(double x) const {
    const UserScale s = userScale();
    return (x - s.left) / s.width;
}

double Canvas::fracY(double y) const {
    const UserScale s = userScale();
    return (y - s.top) / s.height;
}

QPointF Canvas::toLogical(double x, double y) const { return {fracX(x) * areaWidth(), fracY(y) * areaHeight()}; }

QPointF Canvas::toDevice(double x, double y) const { return toLogical(x, y) * image().devicePixelRatio(); }

QPointF Canvas::toUser(const QPointF& widgetPoint) const {
    const UserScale s = userScale();
    return {s.fromPixelX(widgetPoint.x(), areaWidth()), s.fromPixelY(widgetPoint.y(), areaHeight())};
}

// ------------------------------------------------------------ controls ---

void Canvas::placeControl(QWidget* control, double left, double top, double width, double height) {
    if (!control || control == this || !finite({left, top, width, height})) return;
    const UserScale s = userScale();
    Placement placement{control, fracX(left), fracY(top), std::fabs(width / s.width), std::fabs(height / s.height)};
    if (!finite({placement.left, placement.top, placement.width, placement.height})) return;

    // A control hidden on purpose stays hidden; any other shows with the canvas
    // (a child added to a visible widget would otherwise stay invisible).
    const bool hiddenOnPurpose =
        control->testAttribute(Qt::WA_WState_ExplicitShowHide) && control->testAttribute(Qt::WA_WState_Hidden);
    if (control->parentWidget() != this) control->setParent(this);
    if (!hiddenOnPurpose) control->show();

    std::erase_if(placements_, [control](const Placement& p) { return p.control.isNull() || p.control == control; });
    placements_.push_back(placement);
    placeControls();
}

void Canvas::placeControls() {
    std::erase_if(placements_, [](const Placement& p) { return p.control.isNull(); });
    const double w = areaWidth();
    const double h = areaHeight();
    auto pixel = [](double v) { return static_cast<int>(std::lround(clampPixel(v))); };
    for (const Placement& p : placements_) {
        const int pw = p.width > 0.0 ? pixel(p.width * w) : p.control->width();
        const int ph = p.height > 0.0 ? pixel(p.height * h) : p.control->height();
        p.control->setGeometry(pixel(p.left * w), pixel(p.top * h), std::max(pw, 1), std::max(ph, 1));
    }
}
