#pragma once
#include <QLabel>
#include <QRect>
#include <QScrollBar>
#include <QWidget>

class Canvas;
class QPushButton;

namespace apparatus {

// Keeps a drawing at the width/height ratio of its user scale, centred in
// the space it is given: a disc drawn on a stretched area would turn into an
// ellipse and the straight sight lines would miss it.
class AspectHost : public QWidget {
public:
    AspectHost(Canvas* canvas, double widthOverHeight, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Canvas* canvas_;
    double ratio_;
};

// A scroll bar with a small change of 1, made and set up as every scroll
// bar of the program is; its accessible name says what it stands for, in
// English and Greek.
QScrollBar* makeScrollBar(Qt::Orientation orientation, int minimum, int maximum, int largeChange, int value,
                          const char* objectName, const QString& accessibleName);

// A label whose text wraps; its accessible name follows its text.
QLabel* makeLabel(const char* objectName);
void setLabel(QLabel* label, const QString& text);

// Makes a button tall enough for its caption wrapped to the given width.
void fitCaptionHeight(QPushButton* button, int width);

}  // namespace apparatus
