#include "canvas/canvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/figure_export.h"
#include "canvas/fonts.h"

namespace {

// Beyond this many recorded operations between two cls() the list is dropped;
// a resize then rescales the pixels instead of replaying (long animations).
constexpr std::size_t kMaxRecordedOps = 200000;

// Pixel coordinates further out than this are clipped before painting:
// the rasteriser works in fixed point internally and must never see huge values.
constexpr double kPixelLimit = 1.0e6;

constexpr int kMaxDrawWidth = 1000;
constexpr double kMinFontPoints = 1.0;
constexpr double kMaxFontPoints = 500.0;

// The printed texts kept for inspection, and how many of the newest of them
// the accessible description reads out.
constexpr qsizetype kMaxPrintedTexts = 5000;
constexpr qsizetype kDescribedTexts = 200;

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

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

double clampPixel(double v) { return std::clamp(v, -kPixelLimit, kPixelLimit); }

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

}  // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);  // the image covers every pixel: no flicker
    // Reachable with Tab, so that the figure's Ctrl+S and Ctrl+P work from
    // the keyboard too.
    setFocusPolicy(Qt::StrongFocus);
    installFigureActions(*this);
    syncImage();
}

Canvas::~Canvas() = default;

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

QPointF Canvas::toLogical(double x, double y) const {
    return {fracX(x) * areaWidth(), fracY(y) * areaHeight()};
}

QPointF Canvas::toDevice(double x, double y) const {
    return toLogical(x, y) * image().devicePixelRatio();
}

QPointF Canvas::toUser(const QPointF& widgetPoint) const {
    const UserScale s = userScale();
    return {s.fromPixelX(widgetPoint.x(), areaWidth()), s.fromPixelY(widgetPoint.y(), areaHeight())};
}

const QImage& Canvas::image() const {
    syncImage();
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

void Canvas::setFontName(const QString& name) { fontName_ = name; }

void Canvas::setFontSize(double points) {
    if (std::isfinite(points) && points > 0) fontSize_ = std::clamp(points, kMinFontPoints, kMaxFontPoints);
}

void Canvas::setFontBold(bool bold) { fontBold_ = bold; }

QFont Canvas::currentFont() const { return programFont(fontName_, fontSize_, fontBold_); }

// Text is measured on the image it is painted on, so that what print()
// advances and what the painter draws agree on any screen.
QFontMetricsF Canvas::metrics(const QFont& font) const { return QFontMetricsF(font, &image()); }

bool Canvas::finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// ----------------------------------------------------------- operations ---

void Canvas::cls() {
    ops_.clear();
    opsComplete_ = true;
    printed_.clear();
    setAccessibleDescription(QString());
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

void Canvas::lineTo(double x2, double y2, std::optional<QColor> colour) {
    line(currentX_, currentY_, x2, y2, colour);
}

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

void Canvas::circle(double x, double y, double radius, std::optional<QColor> colour, std::optional<double> startAngle,
                    std::optional<double> endAngle, double aspect) {
    CircleOp op{fracX(x), fracY(y), std::fabs(radius / userScale().width), colour.value_or(state_.foreColor),
                startAngle, endAngle, aspect, state_, std::nullopt};
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
                state_, colour};
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

void Canvas::print(const QString& text, PrintEnd end) {
    if (!finite({currentX_, currentY_, fracX(currentX_), fracY(currentY_)})) {
        skip();
        return;
    }
    const UserScale s = userScale();
    const QFont font = currentFont();
    const QFontMetricsF fm = metrics(font);
    // One line down the screen, in user units (negative on a y-up scale).
    const double lineStep = fm.lineSpacing() * s.height / areaHeight();
    QString cleaned = text;
    cleaned.remove(QLatin1Char('\r'));
    const QStringList lines = cleaned.split(QLatin1Char('\n'));
    double x = currentX_;
    double y = currentY_;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            x = s.left;
            y += lineStep;
        }
        if (!lines[i].isEmpty())
            record(TextOp{fracX(x), fracY(y), lines[i], font, state_.foreColor, areaWidth(), areaHeight()});
    }
    if (end == PrintEnd::NextLine) {
        currentX_ = s.left;
        currentY_ = y + lineStep;
    } else {
        currentX_ = x + fm.horizontalAdvance(lines.back()) * s.width / areaWidth();
        currentY_ = y;
    }

    printed_.append(text);
    if (printed_.size() > kMaxPrintedTexts) printed_.remove(0, printed_.size() - kMaxPrintedTexts);
    const qsizetype first = std::max<qsizetype>(0, printed_.size() - kDescribedTexts);
    setAccessibleDescription(printed_.mid(first).join(QLatin1Char('\n')));
}

double Canvas::textWidth(const QString& text) const {
    const QFontMetricsF fm = metrics(currentFont());
    double widest = 0.0;
    QString cleaned = text;
    cleaned.remove(QLatin1Char('\r'));
    for (const QString& lineText : cleaned.split(QLatin1Char('\n')))
        widest = std::max(widest, fm.horizontalAdvance(lineText));
    return widest * std::fabs(userPerPixelX());
}

double Canvas::textHeight(const QString& text) const {
    const auto lines = text.count(QLatin1Char('\n')) + 1;
    return metrics(currentFont()).lineSpacing() * static_cast<double>(lines) * std::fabs(userPerPixelY());
}

// ------------------------------------------------------------ recording ---

void Canvas::record(Op op) {
    syncImage();
    {
        QPainter painter(&image_);
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
                const double shrink = std::min({1.0, w / o.areaWidth, h / o.areaHeight});
                if (shrink < 1.0) font.setPointSizeF(std::max(kMinFontPoints, font.pointSizeF() * shrink));
                painter.setFont(font);
                painter.setPen(o.colour);
                const QFontMetricsF fm(font, painter.device());
                painter.drawText(QPointF(topLeft.x(), topLeft.y() + fm.ascent()), o.text);
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

// -------------------------------------------------------------- image ---

void Canvas::syncImage() const {
    const qreal dpr = devicePixelRatio();
    const QSize logical(std::max(1, width()), std::max(1, height()));
    const QSize device = (QSizeF(logical) * dpr).toSize();
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

// --------------------------------------------------------------- events ---

void Canvas::paintEvent(QPaintEvent* event) {
    syncImage();  // a new size or another screen's pixel ratio: redraw sharply first
    QPainter painter(this);
    // The image is opaque: copy the asked-for rectangle without blending,
    // which is what an animation over the drawing repaints on every tick.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QRect area = event->rect().intersected(rect());
    const qreal dpr = image_.devicePixelRatio();
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
