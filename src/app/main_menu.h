#pragma once
#include <QWidget>

class CaptionButton;
class Canvas;
class QLabel;

// The main menu "diathlasimeleti": the title and five buttons that open the
// experiment, the data screen, the history and the interpretation screens,
// and end the program. It stays open under the screens it opens.
class Diathlasimeleti : public QWidget {
    Q_OBJECT
public:
    Diathlasimeleti();

    // Puts Command1..3 in one row whose top is `rowTop` pixels down the
    // window (start-up passes half the screen's height).
    void placeButtonRow(int rowTop);
    int buttonRowTop() const { return rowTop_; }
    // Start-up replaces the design captions of Command1..3 with the
    // bilingual ones the pupil sees.
    void showStartUpCaptions();

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void createTitle();
    void createButtons();
    void createIllustration();
    void createWindowControls();
    void layOut();
    void drawIllustration();

    QLabel* Label1;
    CaptionButton* Command1;  // the semicircle experiment
    CaptionButton* Command2;  // data input, historical data
    CaptionButton* Command3;  // END
    CaptionButton* Command4;  // the short history
    CaptionButton* Command5;  // interpretation of refraction
    Canvas* illustration_;    // a ray refracting into glass, below the buttons
    int rowTop_ = -1;
};
