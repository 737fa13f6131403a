#include "ui/focus_frame.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>

namespace {

constexpr int kFrameWidth = 2;

class FocusFramePainter : public QObject {
public:
    explicit FocusFramePainter(QApplication& app) : QObject(&app) {
        connect(&app, &QApplication::focusChanged, this, [](QWidget* old, QWidget* now) {
            if (old) old->update();
            if (now) now->update();
        });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint || watched != QApplication::focusWidget()) return false;
        auto* widget = static_cast<QWidget*>(watched);
        if (!framesFocus(*widget) || !widget->window()->isActiveWindow()) return false;
        // Let the control paint itself, then draw the frame over its edge.
        static_cast<QObject*>(widget)->event(event);  // QObject::event is public, and virtual
        QPainter painter(widget);
        const QRectF outer =
            QRectF(widget->rect())
                .adjusted(kFrameWidth / 2.0, kFrameWidth / 2.0, -kFrameWidth / 2.0, -kFrameWidth / 2.0);
        painter.setPen(QPen(Qt::black, kFrameWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(outer);
        painter.setPen(QPen(Qt::white, 1));
        painter.drawRect(QRectF(widget->rect())
                             .adjusted(kFrameWidth + 0.5, kFrameWidth + 0.5, -kFrameWidth - 0.5, -kFrameWidth - 0.5));
        return true;
    }
};

}  // namespace

bool framesFocus(const QWidget& widget) {
    // Menus show their own highlight; a list shows its current row.
    if (widget.isWindow() || qobject_cast<const QMenuBar*>(&widget) || qobject_cast<const QMenu*>(&widget))
        return false;
    return widget.width() > 2 * kFrameWidth + 2 && widget.height() > 2 * kFrameWidth + 2;
}

void installFocusFrameEverywhere(QObject& application) {
    auto* app = qobject_cast<QApplication*>(&application);
    if (!app || app->property("focusFrameInstalled").toBool()) return;
    app->setProperty("focusFrameInstalled", true);
    app->installEventFilter(new FocusFramePainter(*app));
}
