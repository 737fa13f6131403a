#include "ui/caption_button.h"

#include <QEvent>
#include <QLayout>
#include <QStyleOptionButton>
#include <QStylePainter>

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

}  // namespace

CaptionButton::CaptionButton(const QString& caption, QWidget* parent) : QPushButton(parent) { setCaption(caption); }

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

void CaptionButton::changeEvent(QEvent* event) {
    // A new size of type starts again from the layout's own choice.
    if (event->type() == QEvent::FontChange && inLayout()) setMinimumHeight(0);
    QPushButton::changeEvent(event);
}

void CaptionButton::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    // Window layouts do not ask a button how tall its wrapped caption is, so
    // a button in a layout whose caption wraps onto more lines than it has
    // room for asks for that room itself (a larger presentation size).
    if (!inLayout()) return;
    const QRect area = rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
    const int needed = QFontMetrics(font()).boundingRect(area, kTextFlags, text()).height() + 2 * kPadding;
    if (needed > height()) setMinimumHeight(needed);
}

bool CaptionButton::inLayout() const {
    const QWidget* parent = parentWidget();
    return parent && parent->layout() && holds(*parent->layout(), this);
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
