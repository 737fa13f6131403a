#pragma once
#include <QLabel>
#include <QWidget>

#include "ui/caption_button.h"

class Canvas;

// The main menu "diathlasimeleti": the title and five buttons that open the
// experiment, the data screen, the history and the interpretation screens,
// and end the program. It stays open under the screens it opens.
class Diathlasimeleti : public QWidget {
    Q_OBJECT
public:
    Diathlasimeleti();

    QLabel* Label1;
    CaptionButton* Command1;  // the semicircle experiment
    CaptionButton* Command2;  // data input, historical data
    CaptionButton* Command3;  // END
    CaptionButton* Command4;  // the short history
    CaptionButton* Command5;  // interpretation of refraction

    // Puts Command1..3 in one row whose top is `rowTop` pixels down the
    // window (start-up passes half the screen's height).
    void placeButtonRow(int rowTop);
    int buttonRowTop() const { return rowTop_; }

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    void drawIllustration();
    Canvas* illustration_;  // a ray refracting into glass, below the buttons
    int rowTop_ = -1;
};
