#pragma once
#include <QColor>
#include <QLineF>
#include <QPointer>
#include <QRegion>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>
#include <vector>

// Small pieces that the interpretation screens share: a form timer that
// runs only while its screens are on view, a round shape that moves over a
// drawing, and a transparent layer that shows the moving lines of an
// animation. Moving shapes and layer lines are not drawn into the canvas,
// so an animation that runs for hours leaves the canvas's record as it was,
// and each tick repaints only the rectangles that changed.

// A timer with the classic Enabled and Interval: enabled means "wanted"; it
// actually ticks only while every screen it is bound to is on view (shown
// and not minimised), and stops and resumes with them where it was.
class FormTimer : public QObject {
    Q_OBJECT
public:
    FormTimer(QWidget* form, std::function<void()> tick, int intervalMs);
    // Another screen that must be on view for the timer to tick (the screen it draws on).
    void bindTo(QWidget* screen);
    void setEnabled(bool enabled);
    bool isEnabled() const { return enabled_; }
    void setInterval(int ms);
    int interval() const { return timer_.interval(); }
    bool isRunning() const { return timer_.isActive(); }
    long ticks() const { return ticks_; }  // since the program started, for measurements

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void sync();
    bool screensVisible() const;

    QTimer timer_;
    std::function<void()> tick_;
    std::vector<QPointer<QWidget>> screens_;
    bool enabled_ = false;
    long ticks_ = 0;
};

// A filled circle (or ring) that sits over a drawing and is moved by its
// centre. Clicks go through it to the drawing below.
class ShapeWidget : public QWidget {
    Q_OBJECT
public:
    ShapeWidget(QWidget* parent, const QColor& colour, int diameter, bool ring = false);
    void setCentre(QPointF centre);  // widget coordinates of the parent
    QPointF centre() const;
    QColor colour() const { return colour_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_;
    bool ring_;
};

// A transparent sheet over a drawing with a few layers of lines, each
// replaced as a whole; replacing a layer repaints the union of its old and
// new extent only.
class MovingLayer : public QWidget {
    Q_OBJECT
public:
    struct Stroke {
        std::vector<QLineF> lines;  // widget coordinates
        QColor colour;
        double width = 1.0;
        bool smooth = true;  // antialiased; many long lines draw several times faster without
    };
    static constexpr int kLayers = 3;

    explicit MovingLayer(QWidget* parent);
    void setLayer(int layer, std::vector<Stroke> strokes);
    void clearAll();
    // Areas the lines never cross, such as texts printed on the drawing
    // below (widget coordinates); empty by default.
    void setKeepClear(const QRegion& region);
    const QRegion& keepClear() const { return keepClear_; }
    const std::vector<Stroke>& layer(int layer) const { return layers_[static_cast<std::size_t>(layer)]; }
    int lineCount() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static QRect extent(const std::vector<Stroke>& strokes);
    std::array<std::vector<Stroke>, kLayers> layers_;
    QRegion keepClear_;
};
