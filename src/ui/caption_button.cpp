#include "ui/caption_button.h"

#include <QEvent>
#include <QLayout>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <utility>

namespace {
constexpr int kPadding = 6;
constexpr int kTextFlags = Qt::AlignCenter | Qt::TextWordWrap;
constexpr double kSmallestPoints = 8.0;

bool holds(const QLayout& layout, const QWidget* widget) {
    for (int k = 0; k < layout.count(); ++k) {
        QLayoutItem* item = layout.itemAt(k);
        if (item->widget() == widget || (item->layout() && holds(*item->layout(), widget))) return true;
    }
    return false;
}

// Watches one widget's size and type for keepWrappedLines().
class WrappedLines : public QObject {
public:
    WrappedLines(QWidget& widget, std::function<int(int)> neededHeight)
        : QObject(&widget), widget_(widget), neededHeight_(std::move(neededHeight)) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        const auto type = event->type();
        if (type != QEvent::FontChange && type != QEvent::Resize) return false;
        const QWidget* parent = widget_.parentWidget();
        if (!parent || !parent->layout() || !holds(*parent->layout(), &widget_)) return false;  // placed by hand
        if (type == QEvent::FontChange) {
            widget_.setMinimumHeight(0);  // a new size of type starts from the layout's own choice
        } else if (const int needed = neededHeight_(widget_.width()); needed > widget_.height()) {
            widget_.setMinimumHeight(needed);
        }
        return false;
    }

private:
    QWidget& widget_;
    std::function<int(int)> neededHeight_;
};

}  // namespace

void keepWrappedLines(QWidget& widget, std::function<int(int)> neededHeight) {
    new WrappedLines(widget, std::move(neededHeight));
}

CaptionButton::CaptionButton(const QString& caption, QWidget* parent) : QPushButton(parent) {
    setCaption(caption);
    keepWrappedLines(*this, [this](int width) {
        const QRect area(0, 0, width - 2 * kPadding, height() - 2 * kPadding);
        return QFontMetrics(font()).boundingRect(area, kTextFlags, text()).height() + 2 * kPadding;
    });
}

void CaptionButton::setCaption(const QString& caption) {
    setText(caption);
    setAccessibleName(caption);
    updateGeometry();
    update();
}

QSize CaptionButton::sizeHint() const {
    const QFontMetrics metrics(font());
    const QRect one = metrics.boundingRect(QRect(0, 0, 2000, 1000), kTextFlags, text());
    return {one.width() + 4 * kPadding, one.height() + 3 * kPadding};
}

QSize CaptionButton::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 8, metrics.height() + 2 * kPadding};
}

void CaptionButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();  // the bevel only; the caption is drawn wrapped below
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const QRect area = rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
    // A button placed by hand keeps its size when the presentation size
    // grows its type: a caption that no longer fits is drawn smaller rather
    // than cut, never below a readable size.
    QFont type = font();
    const auto fits = [&] {
        const QRect needed = QFontMetrics(type).boundingRect(area, kTextFlags, text());
        return needed.height() <= area.height() && needed.width() <= area.width();
    };
    while (type.pointSizeF() > kSmallestPoints && !fits()) type.setPointSizeF(type.pointSizeF() - 0.5);
    painter.setFont(type);
    painter.drawText(area, kTextFlags, text());
}
