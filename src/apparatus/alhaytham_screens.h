#pragma once
#include <QWidget>

#include "apparatus/alhaytham_rules.h"

class Canvas;
class CaptionButton;
class QBoxLayout;
class QLabel;
class QRadioButton;
class QScrollBar;

// "xaithamos": Al Haytham's instrument. A beam of light enters water on a
// graduated disc; a ruler laid along the refracted beam carries a stylus
// that marks its path.
class Xaithamos : public QWidget {
    Q_OBJECT
public:
    Xaithamos();

    void Form_Load();
    void strefo_Change();
    void timiepi_Change();
    void Option1_Click();
    void Option2_Click();
    void svise_Click();

    void DrawAlHaythamApparatus();
    const Canvas& drawing() const { return *instrument_; }

    // The least the window can be: with the options under the drawing.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void createControls();
    void layOut();
    void fitOptions();
    void arrangeOptions();
    void connectControls();
    void drawWaterAndDisc();
    void drawRulerAndStylus(double refraction);
    void showStylusPosition();

    Canvas* instrument_;
    QScrollBar* strefo;     // angle of incidence, whole degrees
    QScrollBar* timiepi;    // stylus along the ruler, tenths of the radius
    QRadioButton* Option1;  // ruler hidden
    QRadioButton* Option2;  // ruler shown
    CaptionButton* svise;   // on to the rules and their check
    QLabel* Label1;
    QLabel* Label2;
    QWidget* sidePanel_ = nullptr;
    QBoxLayout* top_ = nullptr;  // the drawing, and beside or under it the options
};

// "alhazencheck": Al Haytham's rules against the law of refraction for the
// index the pupil chooses: refraction, deviation, half the incidence and half
// the sum of incidence and deviation against the incidence. A rule that the
// index breaks changes the style of the curves and its colour in the rules.
class Alhazencheck : public QWidget {
    Q_OBJECT
public:
    Alhazencheck();

    void Form_Load();
    void timidikti_Change();
    void Command1_Click();
    void Command2_Click();

    // Draws the check graph for the index n and reprints the rules on the
    // graph screen when a rule's state has changed since they were printed.
    void CheckAlHaythamRules(double n);
    // The same for the index the pupil has chosen.
    void checkChosenIndex();

    const alhaytham::RuleFlags& flags() const { return flags_; }
    int rulePrintings() const { return rulePrintings_; }
    int segmentsDrawn() const { return segments_; }
    const Canvas& drawing() const { return *checkGraph_; }

private:
    void createControls();
    void layOut();
    void prepareAxes();
    void drawLegend(double n);
    void reprintRules();

    Canvas* checkGraph_;
    QScrollBar* timidikti;  // index n in hundredths
    QLabel* Label1;
    CaptionButton* Command1;  // BACK TO HISTORICAL DATA
    CaptionButton* Command2;  // END

    alhaytham::RuleFlags flags_;
    int rulePrintings_ = 0;
    int segments_ = 0;
};

// The rules on the graph screen, from a clean page.
void showAlHaythamRules(bool rule5Violated, bool rule6Violated);
// The rules coloured as the last check left them (all black before any
// check), without opening the check screen.
void showAlHaythamRulesAsLastChecked();
