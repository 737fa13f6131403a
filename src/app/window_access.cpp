#include "app/window_access.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>

namespace {

bool isPlainProgramWindow(const QObject* object) {
    if (!object || !object->isWidgetType()) return false;
    const auto* w = static_cast<const QWidget*>(object);
    if (!w->isWindow() || qobject_cast<const QDialog*>(w) || qobject_cast<const QMainWindow*>(w) ||
        qobject_cast<const QMenu*>(w))
        return false;
    const Qt::WindowType type = w->windowType();
    return type == Qt::Window || type == Qt::Widget;
}

QAccessibleInterface* windowAccessible(const QString& className, QObject* object) {
    // Asked for each class from the most derived up: Qt's own interfaces
    // answer for its controls before the walk comes to plain QWidget, which
    // is where a screen made of a plain widget would be called a filler.
    if (className != QLatin1String("QWidget") || !isPlainProgramWindow(object)) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
}

void nameScrollAreaBars(QWidget& window) {
    for (QAbstractScrollArea* area : window.findChildren<QAbstractScrollArea*>()) {
        const QString name = area->accessibleName();
        if (name.isEmpty()) continue;
        const std::pair<QScrollBar*, QString> bars[] = {
            {area->verticalScrollBar(), QStringLiteral("%1: scrolling up and down  κύλιση πάνω-κάτω")},
            {area->horizontalScrollBar(), QStringLiteral("%1: scrolling across  κύλιση οριζόντια")}};
        for (const auto& [bar, text] : bars)
            if (bar && bar->accessibleName().isEmpty()) bar->setAccessibleName(text.arg(name));
    }
}

class WindowAccessWatcher : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->isWidgetType())
            if (auto* w = static_cast<QWidget*>(watched); w->isWindow()) nameScrollAreaBars(*w);
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void installWindowAccessEverywhere(QObject& application) {
    if (application.property("windowAccessInstalled").toBool()) return;
    application.setProperty("windowAccessInstalled", true);
    QAccessible::installFactory(windowAccessible);
    application.installEventFilter(new WindowAccessWatcher(&application));
}
