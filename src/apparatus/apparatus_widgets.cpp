#include "apparatus/apparatus_widgets.h"

#include <QPushButton>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "ui/scroll_bars.h"

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

}  // namespace apparatus

namespace apparatus {

void fitCaptionHeight(QPushButton* button, int width) {
    const QRect text =
        QFontMetrics(button->font())
            .boundingRect(QRect(0, 0, width - 14, 2000), Qt::AlignCenter | Qt::TextWordWrap, button->text());
    button->setMinimumHeight(text.height() + 20);
}
}  // namespace apparatus
