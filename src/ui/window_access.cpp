#include "ui/window_access.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>

#include "ui/scroll_bars.h"

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

// Where a text box or a list stands, for its scroll bar's description.
QString scrolledTo(const QScrollBar& bar) {
    if (bar.maximum() <= bar.minimum()) return QStringLiteral("all shown  όλο φαίνεται");
    if (bar.value() <= bar.minimum()) return QStringLiteral("at the start  στην αρχή");
    if (bar.value() >= bar.maximum()) return QStringLiteral("at the end  στο τέλος");
    const int percent = static_cast<int>(100.0 * (bar.value() - bar.minimum()) / (bar.maximum() - bar.minimum()) + 0.5);
    return QStringLiteral("%1 % through  %1 % της διαδρομής").arg(percent);
}

void nameScrollAreaBars(QWidget& window) {
    for (QAbstractScrollArea* area : window.findChildren<QAbstractScrollArea*>()) {
        const QString name = area->accessibleName();
        if (name.isEmpty()) continue;
        // Qt's own parts of the box (the viewport, a table's corner button)
        // are read as the box itself.
        for (QWidget* part : area->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (part->accessibleName().isEmpty()) part->setAccessibleName(name);
        const std::pair<QScrollBar*, QString> bars[] = {
            {area->verticalScrollBar(), QStringLiteral("%1: scrolling up and down  κύλιση πάνω-κάτω")},
            {area->horizontalScrollBar(), QStringLiteral("%1: scrolling across  κύλιση οριζόντια")}};
        for (const auto& [bar, text] : bars) {
            if (!bar) continue;
            if (bar->accessibleName().isEmpty()) bar->setAccessibleName(text.arg(name));
            // The strip that holds the bar is a part of the box too; a
            // reader can land on it when the bar is hidden.
            if (QWidget* strip = bar->parentWidget(); strip && strip != area && strip->accessibleName().isEmpty())
                strip->setAccessibleName(bar->accessibleName());
            if (bar->property("positionDescribed").toBool()) continue;
            bar->setProperty("positionDescribed", true);
            describeValue(*bar, [bar](int) { return scrolledTo(*bar); });
            QObject::connect(bar, &QScrollBar::rangeChanged, bar, [bar] { refreshValueDescription(*bar); });
        }
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
