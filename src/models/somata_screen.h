#pragma once
#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>

#include <array>

#include "canvas/canvas.h"
#include "models/corpuscles.h"
#include "models/fermat.h"
#include "models/interpretation_state.h"
#include "models/model_widgets.h"

// "somata": light as corpuscles (Newton's model with one layer or with
// parallel layers, Descartes' model) and Fermat's principle of least time
// with three movable bodies. The ratio of the indices, the angle and
// Newton's value are the interpretation's shared ones, which the control
// panel's scroll bars set; the figures go on the panel as its notes.
//
// The field is 1500 units shared between width and height as the window is
// shaped, y upwards; the lower half is the second medium. The corpuscles
// and the bodies are small shapes over the drawing, so moving them leaves
// the drawing as it is.
class Somata : public QMainWindow {
    Q_OBJECT
public:
    static constexpr int kCorpuscles = 54;
    static constexpr int kStreams = 3;              // parallel tracks of the beam
    static constexpr double kCorpuscleSpacing = 3;  // table steps between corpuscles of a stream

    Somata();

    // What the screen draws, for tests and summaries.
    const Canvas& drawing() const { return *canvas; }

    using Mode = InterpretationState::Mode;
    kymatiko::Field field() const;
    const kymatiko::Track& track() const { return track_; }
    long tick() const { return tick_; }

    // --- the Fermat bodies, in field units ----------------------------------
    enum Body { Magenta = 0, Blue = 1, Green = 2 };
    kymatiko::Point bodyCentre(Body body) const;
    void setBodyCentre(Body body, kymatiko::Point p);
    kymatiko::Speeds speeds() const;
    kymatiko::SpeedLaw lawOfSpeeds() const;  // the law item checked

    // --- asked by the other interpretation screens -----------------------------
    void resetFirstCorpuscle();
    // Stops both corpuscle animations.
    void stopAnimation();

    // --- public procedures ------------------------------------------------------
    void DrawNewtonOneLayer();
    void DrawNewtonParallelLayers();
    // The Newton construction that the menu's check marks choose.
    void drawNewtonConstruction();

    // --- handlers -----------------------------------------------------------------
    void Form_Load();
    void descartes_Click();
    void fermalaw_Click();
    void fermat_Click();
    void Form_MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, double x, double y);
    // The keyboard's way to move a body: with the drawing focused, Shift,
    // Ctrl or Shift+Ctrl and an arrow move the body that the same modifiers
    // move with the mouse. False when the key is not one of these.
    bool fermatKey(int key, Qt::KeyboardModifiers modifiers);
    void fermatscr_Change();
    void fermatscr_GotFocus();
    void evresielaxistoy_Click();
    void neftonas_Click();
    void NEWTON2STROMATA_Click();
    void SOMATIDIA_Click();
    void xekina_Click();
    void STAMATHMA_Click();
    void Timer1_Timer();
    void Timer2_Timer();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createDrawing();
    void createBodies();
    void createMenus();
    void connectMenus();
    // The shared index, angle or Newton's value changed: the picture follows.
    void valuesChanged();
    void applyField();
    void drawMedium();
    QPointF toWidget(kymatiko::Point p) const;

    // Corpuscles (somata_corpuscles.cpp).
    kymatiko::CorpuscleModel newtonModel() const;
    void buildTrack(kymatiko::CorpuscleModel model);
    void drawTrackPicture();
    void showCriticalAngle(bool tickWording);
    void moveCorpuscles(int intervalMs);
    void hideCorpuscles();
    void corpuscleTick(int intervalMs);
    void startCorpuscles(Mode mode);
    double streamOffset(int stream) const;

    // Fermat (somata_fermat.cpp).
    void showBodies(bool visible);
    void placeBodies();
    // What the demonstration shows under its picture. Each command says so
    // before it shows anything, and a resize or a change on the panel draws
    // the same view again rather than choosing anew.
    enum class FermatView {
        Instruction,  // how to move the bodies
        TravelTime,   // the time along the path drawn
        LeastTime,    // the result of the search
        PictureOnly,  // the path, no text
    };
    void setMode(Mode mode);
    void lawChanged();  // a law item chosen: the scroll bar and the time go
    void showFermat();  // picture and label of fermatView_
    void setFermatLabel(const QString& text);
    void showTravelTime();
    void drawFermatPicture(kymatiko::Point blue, const QColor& pathColour);
    void redrawFermat();

    Canvas* canvas;
    QScrollBar* fermatscr;  // the blue body along the boundary, 0 … Max over the field's width
    QLabel* Label1;         // times and instructions of the Fermat demonstration
    FormTimer* Timer1;      // Newton's corpuscles, 10 ms
    FormTimer* Timer2;      // Descartes' corpuscles, 50 ms
    ShapeWidget* fermat1;   // magenta: start
    ShapeWidget* fermat2;   // blue: on the boundary
    ShapeWidget* fermat3;   // green: end
    std::array<ShapeWidget*, kCorpuscles> soma{};

    QAction* xekina;  // Descarte's
    QAction* fermat;  // FERMAT'S PRINCIPLE
    QMenu* lawMenu;
    QAction* descartes;        // Νόμος διάθλασης Descartes
    QAction* fermalaw;         // Νόμος διάθλασης Fermat
    QAction* evresielaxistoy;  // FIND MINIMUM
    QMenu* GENERAL;            // NEWTON
    QAction* neftonas;         // NEWTON  ONE LAYER
    QAction* NEWTON2STROMATA;  // NEWTON: PARALLEL
    QAction* SOMATIDIA;        // PARTICLES
    QAction* STAMATHMA;        // STOP

    InterpretationState& state_;
    kymatiko::CorpuscleModel model_ = kymatiko::CorpuscleModel::NewtonOneLayer;
    kymatiko::Track track_;
    bool trackStale_ = false;  // the values changed while the corpuscles ran
    long tick_ = 0;
    bool warnedMismatch_ = false;
    // Bodies as fractions of the field, so a resized window keeps them in place.
    std::array<kymatiko::Point, 3> bodies_{{{0.2, 0.8}, {0.5, 0.5}, {0.75, 0.15}}};
    FermatView fermatView_ = FermatView::Instruction;
    QActionGroup* lawGroup_;
    QActionGroup* newtonGroup_;
};
