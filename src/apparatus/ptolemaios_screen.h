#pragma once
#include <QWidget>

#include <optional>

#include "apparatus/ptolemy_geometry.h"

class Canvas;
class CaptionButton;
class QLabel;
class QScrollBar;

// "EMFANISI": what the observer of Ptolemy's instrument sees along the line
// of sight, magnified: each body as a horizontal band. It has no controls;
// the instrument screen tells it what to show.
class Emfanisi : public QWidget {
    Q_OBJECT
public:
    Emfanisi();

    // Draws the bands of the target, the central body and the body in air,
    // or an empty view when the target cannot be seen from the air.
    void showSight(const std::optional<ptolemy::SightView>& sight);
    const Canvas& drawing() const { return *sightView_; }

private:
    Canvas* sightView_;
};

// "ptolemaios": Ptolemy's instrument. The angle of the target under water,
// the place of the body in air and the size of the target are set with
// three scroll bars; every change draws the whole instrument and the sight
// view again.
class Ptolemaios : public QWidget {
    Q_OBJECT
public:
    Ptolemaios();

    void Form_Load();
    void goniaprosptosis_Change();
    void metatopisipar_Change();
    void dgonia_Change();
    void Command1_Click();

    // Draws the instrument and the sight view from the three scroll bars,
    // lowering the angle in water below the critical angle when it must.
    void DrawPtolemyApparatus();

    // What the last drawing found (tests and benchmarks).
    double lastAirBodyAngle() const { return airAngle_; }
    double lastExpectedAngle() const { return expected_; }
    bool lastCovered() const { return covered_; }
    const Canvas& drawing() const { return *instrument_; }

protected:
    // Closing the window is hiding it: the sight view goes with it.
    void hideEvent(QHideEvent* event) override;

private:
    void createControls();
    void layOut();
    void describeBars();
    void connectControls();
    void showBesideTheSightView();
    void drawWaterAndDisc(double targetAngle);
    void drawDisc();
    void drawSightLinesAndBodies(int waterAngle, double expected, double air, double targetAngle);
    void showBodyPosition(double air, double expected, double targetAngle);

    Canvas* instrument_;
    QScrollBar* goniaprosptosis;  // angle of the target in water, degrees
    QScrollBar* metatopisipar;    // place of the body in air, hundredths
    QScrollBar* dgonia;           // size of the target, half-degrees
    CaptionButton* Command1;      // HIDE
    QLabel* Label1;               // angle in water
    QLabel* Label2;               // place in air, expected and mean
    QLabel* Label3;               // size of the target

    double airAngle_ = 0.0;
    double expected_ = 0.0;
    bool covered_ = false;
};

// The explanation of the instrument ("HIDE"): Greek first, then English.
QString ptolemyApparatusExplanation();
// The labelled diagram of the instrument on the graph screen.
void drawPtolemyDiagram(Canvas& canvas);
