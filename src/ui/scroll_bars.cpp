#include "ui/scroll_bars.h"

#include <QKeyEvent>

namespace {

// Qt's scroll bars step the value the way a scrolled page moves, which is
// right for a vertical bar (Down raises the value and the thumb goes down)
// but backwards for Left and Right on a horizontal one. Here the horizontal
// arrows are turned round; everything else, the mouse wheel included, is
// Qt's own.
class ProgramScrollBar : public QScrollBar {
public:
    using QScrollBar::QScrollBar;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (orientation() == Qt::Horizontal && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
            const bool raise = (event->key() == Qt::Key_Right) != (layoutDirection() == Qt::RightToLeft);
            triggerAction(raise ? SliderSingleStepAdd : SliderSingleStepSub);
            event->accept();
            return;
        }
        QScrollBar::keyPressEvent(event);
    }
};

}  // namespace

QScrollBar* createScrollBar(const ScrollBarSettings& settings) {
    auto* bar = new ProgramScrollBar(settings.orientation);
    bar->setObjectName(QString::fromLatin1(settings.objectName));
    bar->setRange(settings.minimum, settings.maximum);
    bar->setSingleStep(settings.smallChange);
    bar->setPageStep(settings.largeChange);
    bar->setValue(settings.value);
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setAccessibleName(settings.accessibleName);
    if (settings.orientation == Qt::Horizontal)
        bar->setMinimumHeight(18);
    else
        bar->setMinimumWidth(18);
    describeValue(*bar, [](int value) { return QString::number(value); });
    return bar;
}

namespace {

// Holds how a bar's value is said, so that it can be said again when
// something else the text depends on has changed.
class ValueDescription : public QObject {
public:
    ValueDescription(QScrollBar& bar, std::function<QString(int value)> shown)
        : QObject(&bar), bar_(bar), shown_(std::move(shown)) {
        setObjectName(QStringLiteral("valueDescription"));
        connect(&bar, &QScrollBar::valueChanged, this, [this](int) { refresh(); });
        refresh();
    }
    void refresh() {
        const QString text = shown_(bar_.value());
        if (text != bar_.accessibleDescription()) bar_.setAccessibleDescription(text);
    }

private:
    QScrollBar& bar_;
    std::function<QString(int value)> shown_;
};

ValueDescription* descriptionOf(QScrollBar& bar) {
    return dynamic_cast<ValueDescription*>(
        bar.findChild<QObject*>(QStringLiteral("valueDescription"), Qt::FindDirectChildrenOnly));
}

}  // namespace

void describeValue(QScrollBar& bar, std::function<QString(int value)> shown) {
    if (!shown) return;
    // One description per bar: a later call replaces the earlier one.
    delete descriptionOf(bar);
    new ValueDescription(bar, std::move(shown));
}

void refreshValueDescription(QScrollBar& bar) {
    if (ValueDescription* d = descriptionOf(bar)) d->refresh();
}
