#include <QAccessible>
#include <QAccessibleWidget>
#include <QMetaObject>

#include <algorithm>

#include "canvas/canvas.h"

// What a drawing tells a screen reader: the screen's summary of what the
// figure shows, then the newest texts printed on it. A screen reader asks
// for it when it needs it; the text is put together only then.

namespace {

// The printed texts kept for inspection, and how many of the newest of them
// the accessible description reads out.
constexpr qsizetype kMaxPrintedTexts = 5000;
constexpr qsizetype kDescribedTexts = 200;

class CanvasAccessible : public QAccessibleWidget {
public:
    explicit CanvasAccessible(Canvas* canvas) : QAccessibleWidget(canvas, QAccessible::Canvas) {}

    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Description) {
            const auto* canvas = static_cast<const Canvas*>(widget());
            // A reader is told that a blank drawing is blank, rather than nothing.
            const QString said = canvas->description();
            return said.isEmpty() && canvas->recordedOperations() == 0 ? QStringLiteral("Empty  Κενό") : said;
        }
        return QAccessibleWidget::text(t);
    }
};

QAccessibleInterface* canvasAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("Canvas"))
        if (auto* canvas = qobject_cast<Canvas*>(object)) return new CanvasAccessible(canvas);
    return nullptr;
}

}  // namespace

void Canvas::installAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(canvasAccessible);
        return true;
    }();
    Q_UNUSED(installed);
}

void Canvas::setSummary(const QString& summary) {
    if (summary == summary_) return;
    summary_ = summary;
    descriptionChanged();
}

void Canvas::addToSummary(const QString& sentence) {
    if (sentence.isEmpty()) return;
    setSummary(summary_.isEmpty() ? sentence : summary_ + QLatin1Char('\n') + sentence);
}

QString Canvas::description() const {
    QStringList parts;
    if (!summary_.isEmpty()) parts << summary_;
    const qsizetype first = std::max<qsizetype>(0, printed_.size() - kDescribedTexts);
    parts << printed_.mid(first);
    return parts.join(QLatin1Char('\n'));
}

void Canvas::notePrinted(const QString& text) {
    printed_.append(text);
    if (printed_.size() > kMaxPrintedTexts) printed_.remove(0, printed_.size() - kMaxPrintedTexts);
    descriptionChanged();
}

void Canvas::forgetDescription() {
    printed_.clear();
    summary_.clear();
    printNote_.clear();
    descriptionChanged();
}

void Canvas::descriptionChanged() {
    // A figure is drawn in hundreds of steps; the reader hears of the change
    // once, when the drawing is done and the program is back in its loop.
    if (descriptionChangePending_ || !QAccessible::isActive()) return;
    descriptionChangePending_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            descriptionChangePending_ = false;
            QAccessibleEvent event(this, QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&event);
        },
        Qt::QueuedConnection);
}
