#pragma once
#include <QAction>
#include <QActionGroup>
#include <QMainWindow>

#include <vector>

#include "canvas/canvas.h"
#include "models/interpretation_state.h"
#include "models/kymatiko.h"
#include "models/model_widgets.h"

// "rixo", the wave screen: a boundary between two media with the incident,
// reflected and refracted rays, and the wave fronts moving along them while
// its animation runs. The control panel and the index-and-velocities
// screen ask it for its pictures and start and stop its animation; the
// index and the angle are the interpretation's shared ones.
//
// The field is 1500 units shared between width and height as the window is
// shaped, y upwards, the boundary across the middle; the upper medium light
// yellow, the lower white. The still picture is drawn on the canvas; what
// moves (the fronts, the pulse along the rays) lies on a layer above it.
class Rixo : public QMainWindow {
    Q_OBJECT
public:
    Rixo();

    // What the screen draws, for tests and summaries.
    const Canvas& drawing() const { return *canvas; }

    // --- the set-up -------------------------------------------------------
    // The angle and the index are the interpretation's shared ones; the
    // menus here change them there.
    double incidenceDegrees() const;
    double index() const;
    kymatiko::Refraction refraction() const;
    kymatiko::Field field() const;
    // Where BACK returns to: the data screen or the main menu.
    void setCameFromData(bool fromData) { cameFromData_ = fromData; }

    // --- pictures -----------------------------------------------------------
    // The rays at the boundary, with the critical angle and the shares in
    // the panel's labels; the pulse starts again from the top.
    void DrawRaysAtBoundary();
    // RAY: the rays with every figure printed on the picture.
    void drawRayPicture();
    // The ray through the point of incidence, straight on, not bent.
    void drawStraightRay();
    // The current picture again (after a resize or a change of values).
    void redraw();
    // One step of the pulse along the rays; false once it has left the field.
    bool pulseStep();
    // The wave fronts move while the animation is on (and the screen on view).
    void startAnimation();
    void stopAnimation();
    // Where the notes printed on the picture and the picture itself stand
    // on the screen, which a window opened beside this one keeps clear of.
    std::vector<QRect> notesOnScreen() const;
    QRect drawingOnScreen() const;

    // --- handlers ---------------------------------------------------------
    void Form_Load();
    void okitis1_Click();
    void okitis2_Click();
    void okitismiso_Click();
    void TIMERSTART_Click();
    void aktina_Click();
    void deiktis_Click();
    void epiloges_Click();
    void Timer1_Timer();
    void Endof_Click();
    void Telos_Click();

    // Stops the animations of the interpretation screens.
    static void stopInterpretationTimers();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Picture { Rays, RayPicture, StraightRay };
    void createDrawing();
    void createMenus();
    void connectMenus();
    void speedMenu(double c);
    void applyField();
    void drawMedia();
    void drawRays(const kymatiko::Refraction& r);
    // Prints the notes in the bottom left corner; returns where they stand
    // (widget coordinates), which the moving fronts keep clear of.
    QRect printNotes(const QStringList& notes);
    // Brewster's direction in the upper medium, a short dashed line from the
    // point of incidence with its mark; returns where the mark stands.
    QRect drawBrewsterMark();
    // The figure in words for screen readers, after each picture.
    void summarise(const kymatiko::Refraction& r);
    void writePanelFigures();
    void updateFronts();
    void updatePulse();
    QPointF toWidget(kymatiko::Point p) const;
    // The widget rectangle between two field points that the moving fronts
    // keep off.
    QRect keptClear(kymatiko::Point corner, kymatiko::Point opposite) const;
    bool reflectedWaveWanted() const;

    Canvas* canvas;
    MovingLayer* moving;
    ShapeWidget* Shape1;  // marks the point of incidence
    FormTimer* Timer1;    // the wave fronts

    QAction* Endof;       // BACK
    QAction* TIMERSTART;  // WAVE
    QAction* okitis1;     // c=1
    QAction* okitis2;     // c=2
    QAction* okitismiso;  // c=0,5
    QAction* aktina;      // RAY
    QAction* deiktis;     // asks for the index
    QAction* epiloges;    // opens the index-and-velocities screen
    QAction* telos;       // END

    InterpretationState& state_;
    Picture picture_ = Picture::Rays;
    double phase_ = 0.0;
    int pulse_ = 0;
    kymatiko::RayPaths paths_;
    bool cameFromData_ = false;
    QActionGroup* speedGroup_;
};
