#pragma once
#include <QPushButton>

#include <functional>

// A push button whose caption wraps onto several lines when the button is
// narrower than the text: the program's bilingual captions are long.
// The caption stays the button's text and accessible name.
class CaptionButton : public QPushButton {
    Q_OBJECT
public:
    explicit CaptionButton(const QString& caption = QString(), QWidget* parent = nullptr);
    void setCaption(const QString& caption);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Window layouts do not ask a widget in them how tall its wrapped text is.
// A widget in a layout whose text wraps onto more lines than it got room for
// (a larger presentation size) asks for the height neededHeight(width) gives;
// a new size of type starts again from the layout's own choice. A widget
// placed by hand keeps its size.
void keepWrappedLines(QWidget& widget, std::function<int(int)> neededHeight);
