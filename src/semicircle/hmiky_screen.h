#pragma once
#include <QAction>
#include <QActionGroup>
#include <QColor>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>
#include <QStringList>

#include <functional>
#include <vector>

#include "canvas/canvas.h"
#include "semicircle/bench_experiments.h"
#include "semicircle/bench_protractor.h"
#include "semicircle/bench_random.h"
#include "semicircle/bench_readouts.h"
#include "semicircle/bench_series.h"
#include "semicircle/bench_state.h"
#include "ui/caption_button.h"
// The list of data belongs with the bench: whatever hides the bench can
// hide the list too.
#include "semicircle/list_of_data_screen.h"

// "hmiky": the simulated laboratory bench. A semicircular glass block on a
// square drawing area (x and y from −200 to 200, y up, origin in the middle),
// a ray of light from the radius-150 circle around the origin, and the
// refracted, reflected and emerging rays. Scroll bars move and turn the
// block and set the ray's height and the index, all held in BenchState; the
// menus run whole experiments. Every change redraws the whole picture.
class Hmiky : public QMainWindow {
    Q_OBJECT
public:
    Hmiky();

    // What the main menu's SEMICIRCLE asks: the index back to 1.5 and the
    // tilt to 0 (the block's place and the ray stay as the pupil left them)
    // and the starting figure drawn afresh.
    void openExperiment();

    // The bench's drawing, to read.
    const Canvas& drawing() const { return *canvas; }

    // Where the mouse button last went down on the bench.
    float markStartX = 0.0f;
    float markStartY = 0.0f;

    // --- public procedures ------------------------------------------------
    // Draws the block (filled, closed by its diameter) from the shared values.
    void drawsemicircle();
    // The starting figure: radius-150 circle, axes, block and the ray.
    void initialDrawing();
    // Writes the shared values into the displays beside the scroll bars.
    void showValues();

    // --- handlers ---------------------------------------------------------
    void Form_Load();
    void HScroll1_Change();
    void xcoor_Change();
    void ycoor_Change();
    void angle_Change();
    void hvalue_Change();
    void Indexn_Change();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void cmdend_Click();
    void listOfData_Click();
    void moredens_Click();
    void Raref_Click();
    void Paral_Click();
    void rightpar_Click();
    void leftpar_Click();
    void kritikal_Click();
    void allrandom_Click();
    void sygr_Click();
    void Optimize_Click();
    void fylaxe_Click();
    // The lab menu: the angles beside the rays on and off, the mystery
    // block and the check of the index found for it.
    void readouts_Click();
    // Lays the protractor on the flat face's centre, or takes it away.
    void protractor_Click();
    // The protractor where it lies now; none when it is not laid.
    const std::optional<Protractor>& protractorShown() const { return protractor_; }
    void mystery_Click();
    void checkN_Click();
    void Form_MouseDown(double x, double y);
    void Form_MouseUp(double x, double y);
    // The keyboard's way to press the mouse on the focused bench: the
    // arrows move the pressed point (Shift: further) and aim the ray from
    // it as a press there does; Enter or Space lets go there. False when
    // the key is not one of these.
    bool benchKey(int key, Qt::KeyboardModifiers modifiers);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // --- building (hmiky_screen.cpp) ------------------------------------------
    void createCanvas();
    void createButtons();
    void createScrollBars();
    void createDisplays();
    QWidget* createControlsPanel();
    QWidget* createButtonPanel();
    void createMenus();
    void connectHandlers();
    void createLabMenu();  // hmiky_lab.cpp

    // --- the shared values (hmiky_drawing.cpp) ----------------------------------
    static BenchState& state();
    // The bars in their own units (see BenchControls).
    BenchControls controls() const;
    // Moves every bar, the direction's tick and the displays to the shared
    // values (a bar that moves runs its handler).
    void followState();
    // What every change of a control does after it has written its value:
    // the displays, and the whole redraw with the handler's notes,
    // formatted from the new values.
    void controlChanged(const std::function<QStringList()>& notes);
    // Keeps what a traced ray measured, as the last measurement.
    static void keepMeasurement(const RayTrace& trace);
    // A value that gives the block's index away, or "?" for the mystery
    // block.
    static QString indexText(double value, const char* format);
    // The mean-error graph and the measurement file give the index away:
    // with the mystery block on they are refused, with a message.
    static bool refusedForMystery(const QString& title);

    // --- drawing (hmiky_drawing.cpp) -------------------------------------------
    // Draws a picture and keeps it, so that a resized bench draws it again
    // with its texts measured for the new size. Pictures draw only from
    // what they captured, never from the shared values.
    void paint(std::function<void()> picture);
    // Draws the kept picture, then the angles of its rays beside them,
    // placed last so that they keep clear of every text of the picture.
    void drawPicture();
    // The redraw of every change: the bench and the ray for the current
    // incidence angle, with the handler's notes in the top-left corner.
    void redraw(const QStringList& notes);
    void drawBlock(const Block& block);
    // cls, the radius-150 circle, the axes and the block.
    void drawBench(const Block& block, bool withSourceCircle = true);
    void describeTrace(const Block& block, const RayTrace& trace);
    void drawTrace(const Block& block, const RayTrace& trace, std::optional<QColor> incidentColour = std::nullopt,
                   std::optional<QColor> otherColour = std::nullopt);
    // Texts from the top-left corner down.
    void printNotes(const QStringList& notes);
    // Asks, on the bench, for a direction of the block.
    void drawDirectionHint();
    // Without a chosen direction an experiment cannot run: draws the bench
    // with the hint instead and says so.
    bool showHintIfNoDirection(const Block& block);
    static bool hasDirection(const Block& block) { return block.direction == 1 || block.direction == 2; }

    // Lists a ray the bench traced into the block on LIST OF DATA.
    static void listRay(const Block& block, double incidence, const RayTrace& trace, RaySource source);

    // --- experiments (hmiky_experiments.cpp) -----------------------------------
    void chooseDirection(int direction);
    void parallelBeam(bool fromTheRight);
    // The comparison's picture: the traced rays, Snell's rays dashed and
    // the table in the upper left corner.
    void drawComparison(const Block& block, const std::vector<RayTrace>& traces,
                        const std::vector<Segment>& expectedRays, const QStringList& table);

    // --- widgets, by the names of the experiment's design ------------------------
    Canvas* canvas;  // the bench

    CaptionButton* Command1;    // GIVE INCIDENCE ANGLE
    CaptionButton* Command2;    // erase
    CaptionButton* Command3;    // BACK
    CaptionButton* Command4;    // RAYS FOR incidence = 0° to 90°
    CaptionButton* cmdend;      // END
    CaptionButton* listOfData;  // LIST OF DATA: opens List_of_Data

    // Control units: HScroll1 in bench units, xcoor/ycoor in fifths of a
    // unit, angle in tenths of a degree, hvalue and Indexn in tenths.
    QScrollBar* HScroll1;  // radius of the block
    QScrollBar* xcoor;     // x of the centre of the flat face
    QScrollBar* ycoor;     // y of the centre
    QScrollBar* angle;     // tilt of the diameter from the Y axis
    QScrollBar* hvalue;    // height of the ray, its y at x = 0
    QScrollBar* Indexn;    // refractive index

    QLineEdit* aktis;  // the radius
    QLineEdit* gon;    // the tilt
    QLabel* Indexnt;   // the index
    QLabel* Label2;    // yc
    QLabel* Label3;    // xc
    QLabel* Label4;    // the ray's height

    QMenu* exper;         // "EXPERIMENT"
    QAction* allrandom;   // "ALL RANDOM"
    QAction* Paral;       // "PARALLEL"
    QAction* rightpar;    // "FROM THE RIGHT"
    QAction* leftpar;     // "FROM LEFT"
    QMenu* moreless;      // "CHOOSE DIRECTION OF SEMICIRCLE"
    QAction* Raref;       // "TO THE RIGHT"
    QAction* moredens;    // "TO THE LEFT"
    QAction* kritikal;    // "CRITICAL ANGLE"
    QAction* sygr;        // "COMPARISONS"
    QAction* Optimize;    // "BEST SEMICIRCLE"
    QAction* fylaxe;      // create the measurement file
    QMenu* lab;           // "LAB": the lab bench's aids
    QAction* readouts;    // the angles beside the rays
    QAction* protractor;  // the protractor
    QAction* mystery;     // the mystery block
    QAction* checkN;      // the check of the pupil's index

    QActionGroup* directionGroup_;
    std::function<void()> picture_;
    BenchRandom random_;
    // What the picture being drawn writes beside its rays, and the rays
    // the texts keep off.
    std::vector<Readout> pendingReadouts_;
    std::vector<Segment> pendingRays_;
    // The ray aimed with the mouse, listed when the button is let go.
    struct AimedRay {
        Block block;
        double incidence;
        RayTrace trace;
    };
    std::optional<AimedRay> aimed_;
    // The protractor, and how the mouse holds it while a button is down.
    std::optional<Protractor> protractor_;
    ProtractorGrip grip_ = ProtractorGrip::None;
    Point gripPoint_;
    // The mouse and the keys on a laid protractor (hmiky_lab.cpp); true
    // when the event was the protractor's.
    bool protractorEvent(QEvent* event);
    bool protractorKey(int key, Qt::KeyboardModifiers modifiers);
    void moveProtractor(double dx, double dy, double turnDegrees);
};
