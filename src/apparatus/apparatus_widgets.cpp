#include "apparatus/apparatus_widgets.h"

#include <QGuiApplication>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>

#include <algorithm>
#include <cmath>

#include "app/scroll_bars.h"
#include "canvas/canvas.h"

namespace apparatus {

AspectHost::AspectHost(Canvas* canvas, double widthOverHeight, QWidget* parent)
    : QWidget(parent), canvas_(canvas), ratio_(widthOverHeight > 0.0 ? widthOverHeight : 1.0) {
    canvas_->setParent(this);
    setMinimumSize(160, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize AspectHost::sizeHint() const { return {static_cast<int>(std::lround(500 * ratio_)), 500}; }

void AspectHost::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    int w = width();
    int h = static_cast<int>(std::lround(w / ratio_));
    if (h > height()) {
        h = height();
        w = static_cast<int>(std::lround(h * ratio_));
    }
    canvas_->setGeometry((width() - w) / 2, (height() - h) / 2, std::max(w, 1), std::max(h, 1));
}

QScrollBar* makeScrollBar(Qt::Orientation orientation, int minimum, int maximum, int largeChange, int value,
                          const char* objectName, const QString& accessibleName) {
    return createScrollBar({.orientation = orientation,
                            .minimum = minimum,
                            .maximum = maximum,
                            .value = value,
                            .smallChange = 1,
                            .largeChange = largeChange,
                            .objectName = objectName,
                            .accessibleName = accessibleName});
}

QLabel* makeLabel(const char* objectName) {
    auto* label = new QLabel;
    label->setObjectName(QString::fromLatin1(objectName));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void setLabel(QLabel* label, const QString& text) {
    label->setText(text);
    label->setAccessibleName(text);
}

QRect placeBeside(const QRect& beside, QSize size) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
    const int w = std::min(size.width(), area.width());
    const int h = std::min(size.height(), area.height());
    int left = beside.right() + 1;
    if (left + w > area.right() + 1) left = beside.left() - w;
    left = std::clamp(left, area.left(), std::max(area.left(), area.right() + 1 - w));
    const int top = std::clamp(beside.top(), area.top(), std::max(area.top(), area.bottom() + 1 - h));
    return {left, top, w, h};
}

}  // namespace apparatus

namespace apparatus {

void fitCaptionHeight(QPushButton* button, int width) {
    const QRect text = QFontMetrics(button->font()).boundingRect(QRect(0, 0, width - 14, 2000),
                                                                 Qt::AlignCenter | Qt::TextWordWrap, button->text());
    button->setMinimumHeight(text.height() + 20);
}
}  // namespace apparatus
