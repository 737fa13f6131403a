#include "ui/caption_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace {
constexpr int kPadding = 6;
constexpr int kTextFlags = Qt::AlignCenter | Qt::TextWordWrap;
constexpr double kSmallestPoints = 8.0;
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
