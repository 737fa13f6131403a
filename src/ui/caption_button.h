#pragma once
#include <QPushButton>

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
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool inLayout() const;
};
