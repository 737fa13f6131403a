#include "models/model_widgets.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

// ------------------------------------------------------------- FormTimer ---

FormTimer::FormTimer(QWidget* form, std::function<void()> tick, int intervalMs)
    : QObject(form), tick_(std::move(tick)) {
    timer_.setTimerType(Qt::PreciseTimer);  // 10 ms ticks: the coarse timer would bunch them
    timer_.setInterval(std::max(1, intervalMs));
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (!screensVisible()) {  // a screen went away between two checks
            timer_.stop();
            return;
        }
        ++ticks_;
        if (tick_) tick_();
    });
    bindTo(form);
}

void FormTimer::bindTo(QWidget* screen) {
    if (!screen || std::find(screens_.begin(), screens_.end(), screen) != screens_.end()) return;
    screens_.emplace_back(screen);
    screen->installEventFilter(this);
    if (screen->window() != screen) screen->window()->installEventFilter(this);  // where minimising is told
    sync();
}

void FormTimer::setEnabled(bool enabled) {
    enabled_ = enabled;
    sync();
}

void FormTimer::setInterval(int ms) { timer_.setInterval(std::max(1, ms)); }

// A minimised window still counts as visible to Qt, but nobody sees it:
// an animation for it would only burn the processor.
bool FormTimer::screensVisible() const {
    return std::all_of(screens_.begin(), screens_.end(),
                       [](const QPointer<QWidget>& s) { return s && s->isVisible() && !s->window()->isMinimized(); });
}

void FormTimer::sync() {
    const bool run = enabled_ && screensVisible();
    if (run && !timer_.isActive())
        timer_.start();
    else if (!run && timer_.isActive())
        timer_.stop();
}

bool FormTimer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide || event->type() == QEvent::WindowStateChange)
        sync();
    return QObject::eventFilter(watched, event);
}

// ----------------------------------------------------------- ShapeWidget ---

ShapeWidget::ShapeWidget(QWidget* parent, const QColor& colour, int diameter, bool ring)
    : QWidget(parent), colour_(colour), ring_(ring) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedSize(diameter, diameter);
    setFocusPolicy(Qt::NoFocus);
}

void ShapeWidget::setCentre(QPointF centre) {
    if (!std::isfinite(centre.x()) || !std::isfinite(centre.y())) return;
    const double limit = 1.0e6;
    const QPoint topLeft(static_cast<int>(std::lround(std::clamp(centre.x(), -limit, limit) - width() / 2.0)),
                         static_cast<int>(std::lround(std::clamp(centre.y(), -limit, limit) - height() / 2.0)));
    if (topLeft != pos()) move(topLeft);
}

QPointF ShapeWidget::centre() const { return QPointF(pos()) + QPointF(width() / 2.0, height() / 2.0); }

void ShapeWidget::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (ring_) {
        p.setPen(QPen(colour_, 2.0));
        p.setBrush(Qt::NoBrush);
    } else {
        p.setPen(QPen(colour_.darker(150), 1.0));
        p.setBrush(colour_);
    }
    p.drawEllipse(r);
}

// ----------------------------------------------------------- MovingLayer ---

MovingLayer::MovingLayer(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

QRect MovingLayer::extent(const std::vector<Stroke>& strokes) {
    QRectF box;
    for (const Stroke& s : strokes) {
        const double pad = s.width / 2.0 + 2.0;  // pen and antialiasing
        for (const QLineF& l : s.lines) {
            const QRectF r = QRectF(l.p1(), l.p2()).normalized().adjusted(-pad, -pad, pad, pad);
            box = box.isNull() ? r : box.united(r);
        }
    }
    return box.toAlignedRect();
}

void MovingLayer::setLayer(int layer, std::vector<Stroke> strokes) {
    if (layer < 0 || layer >= kLayers) return;
    auto& slot = layers_[static_cast<std::size_t>(layer)];
    const QRect before = extent(slot);
    slot = std::move(strokes);
    const QRect dirty = before.united(extent(slot)).intersected(rect());
    if (!dirty.isEmpty()) update(dirty);
}

void MovingLayer::setKeepClear(const QRegion& region) {
    if (region == keepClear_) return;
    const QRegion changed = region.xored(keepClear_);
    keepClear_ = region;
    update(changed);
}

void MovingLayer::clearAll() {
    for (int k = 0; k < kLayers; ++k) setLayer(k, {});
}

int MovingLayer::lineCount() const {
    int n = 0;
    for (const auto& l : layers_)
        for (const Stroke& s : l) n += static_cast<int>(s.lines.size());
    return n;
}

namespace {

// The parts of a line outside a rectangle (none, one or two), by the
// parameters at which it enters and leaves it.
void appendOutside(const QLineF& line, const QRectF& box, std::vector<QLineF>& out) {
    double enter = 0.0, leave = 1.0;
    const QPointF d = line.p2() - line.p1();
    auto limit = [&](double towards, double room) {  // towards·t ≤ room
        if (towards == 0.0) return room >= 0.0;
        const double t = room / towards;
        if (towards > 0.0)
            leave = std::min(leave, t);
        else
            enter = std::max(enter, t);
        return true;
    };
    const bool crosses = limit(-d.x(), line.p1().x() - box.left()) && limit(d.x(), box.right() - line.p1().x()) &&
                         limit(-d.y(), line.p1().y() - box.top()) && limit(d.y(), box.bottom() - line.p1().y()) &&
                         enter < leave;
    if (!crosses) {
        out.push_back(line);
        return;
    }
    if (enter > 0.0) out.emplace_back(line.p1(), line.pointAt(enter));
    if (leave < 1.0) out.emplace_back(line.pointAt(leave), line.p2());
}

}  // namespace

void MovingLayer::paintEvent(QPaintEvent* event) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setClipRect(event->rect());
    std::vector<QLineF> pieces, next;
    for (const auto& l : layers_)
        for (const Stroke& s : l) {
            QPen pen(s.colour, s.width);
            pen.setCapStyle(s.smooth ? Qt::RoundCap : Qt::FlatCap);
            p.setRenderHint(QPainter::Antialiasing, s.smooth);
            p.setPen(pen);
            // Only the lines that cross the repainted rectangle: a pulse
            // moving along a ray repaints a small patch among many fronts.
            const double pad = s.width / 2.0 + 2.0;
            for (const QLineF& line : s.lines) {
                const QRectF reach = QRectF(line.p1(), line.p2()).normalized().adjusted(-pad, -pad, pad, pad);
                if (!reach.intersects(event->rect())) continue;
                if (keepClear_.isEmpty() || !keepClear_.intersects(reach.toAlignedRect())) {
                    p.drawLine(line);
                    continue;
                }
                // Cut out the areas kept clear, with room for the pen.
                pieces.assign(1, line);
                for (const QRect& clear : keepClear_) {
                    const QRectF box = QRectF(clear).adjusted(-pad, -pad, pad, pad);
                    next.clear();
                    for (const QLineF& piece : pieces) appendOutside(piece, box, next);
                    pieces.swap(next);
                }
                for (const QLineF& piece : pieces) p.drawLine(piece);
            }
        }
}
