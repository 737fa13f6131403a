#include "models/rixo_screen.h"

#include <QEvent>
#include <QMenu>
#include <QMenuBar>

#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"
#include "ui/index_prompt.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"

Rixo::Rixo() : state_(sharedState<InterpretationState>()) {
    setObjectName(QStringLiteral("rixo"));
    setWindowTitle(QStringLiteral("WAVES"));
    setFont(roleFont(FontRole::Caption, 9.0));
    createDrawing();
    createMenus();
    Timer1 = new FormTimer(
        this, [this] { Timer1_Timer(); }, 10);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    connectMenus();
    canvas->installEventFilter(this);
    // A new index or angle, whichever window gave it: the picture follows.
    connect(&state_, &InterpretationState::indexChanged, this, &Rixo::redraw);
    connect(&state_, &InterpretationState::incidenceChanged, this, &Rixo::redraw);

    resize(640, 520);
    Form_Load();
}

void Rixo::createDrawing() {
    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("waveField"));
    canvas->setAccessibleName(QStringLiteral("Waves at the boundary of two media  Κύματα στο όριο δύο μέσων"));
    canvas->setFontRole(FontRole::Caption);
    canvas->setFontSize(9.0);
    canvas->setMinimumSize(1, 1);
    setCentralWidget(canvas);
    moving = new MovingLayer(canvas);
    moving->setObjectName(QStringLiteral("waveFronts"));
    moving->setAccessibleName(QStringLiteral("Moving wave fronts  Κινούμενα μέτωπα κύματος"));
    Shape1 = new ShapeWidget(canvas, palette::black, 10, true);
    Shape1->setObjectName(QStringLiteral("Shape1"));
    Shape1->setAccessibleName(QStringLiteral("Point of the wave front  Σημείο του μετώπου κύματος"));
}

void Rixo::createMenus() {
    QMenuBar* bar = menuBar();
    auto action = [&](const QString& caption, const char* name) {
        QAction* a = bar->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    Endof = action(QStringLiteral("BACK"), "Endof");
    TIMERSTART = action(QStringLiteral("WAVE"), "TIMERSTART");
    okitis1 = action(QStringLiteral("c=1"), "okitis1");
    okitis2 = action(QStringLiteral("c=2"), "okitis2");
    okitismiso = action(QStringLiteral("c=0,5"), "okitismiso");
    aktina = action(QStringLiteral("RAY"), "aktina");
    // The index typed by the pupil and the index-and-velocities screen
    // share one menu, so that the bar fits a narrow window.
    QMenu* indexMenu = bar->addMenu(QStringLiteral("INDEX  Δείκτης"));
    indexMenu->setObjectName(QStringLiteral("indexMenu"));
    deiktis = indexMenu->addAction(QStringLiteral("GIVE INDEX Δώσε δείκτη"));
    deiktis->setObjectName(QStringLiteral("deiktis"));
    epiloges = indexMenu->addAction(QStringLiteral("INDEX AND VELOCITIES  Δείκτης και ταχύτητες"));
    epiloges->setObjectName(QStringLiteral("epiloges"));
    telos = action(QStringLiteral("END"), "telos");
    speedGroup_ = new QActionGroup(this);
    for (QAction* a : {okitis1, okitis2, okitismiso}) {
        a->setCheckable(true);
        speedGroup_->addAction(a);
    }
}

void Rixo::connectMenus() {
    connect(Endof, &QAction::triggered, this, &Rixo::Endof_Click);
    connect(TIMERSTART, &QAction::triggered, this, &Rixo::TIMERSTART_Click);
    connect(okitis1, &QAction::triggered, this, &Rixo::okitis1_Click);
    connect(okitis2, &QAction::triggered, this, &Rixo::okitis2_Click);
    connect(okitismiso, &QAction::triggered, this, &Rixo::okitismiso_Click);
    connect(aktina, &QAction::triggered, this, &Rixo::aktina_Click);
    connect(deiktis, &QAction::triggered, this, &Rixo::deiktis_Click);
    connect(epiloges, &QAction::triggered, this, &Rixo::epiloges_Click);
    connect(telos, &QAction::triggered, this, &Rixo::Telos_Click);
}

// ---------------------------------------------------------------- set-up ---

double Rixo::incidenceDegrees() const { return state_.incidence(); }
double Rixo::index() const { return state_.index(); }

kymatiko::Refraction Rixo::refraction() const {
    return kymatiko::refract(kymatiko::radians(incidenceDegrees()), index());
}

kymatiko::Field Rixo::field() const { return kymatiko::fieldFor(canvas->width(), canvas->height()); }

bool Rixo::reflectedWaveWanted() const {
    return !Forms::instance().exists<Rixotext>() || form<Rixotext>().reflectedWaveWanted();
}

void Rixo::startAnimation() {
    Timer1->setInterval(10);
    Timer1->setEnabled(true);
}

void Rixo::stopAnimation() { Timer1->setEnabled(false); }

// ------------------------------------------------------------ handlers ---

void Rixo::Form_Load() {
    startAnimation();
    DrawRaysAtBoundary();
}

void Rixo::speedMenu(double c) {
    state_.setSpeedRatio(c);
    // c = c1 / c2 is the index of the lower medium relative to the upper:
    // every picture and figure follows it.
    state_.setIndex(c);
}

void Rixo::okitis1_Click() { speedMenu(1.0); }
void Rixo::okitis2_Click() { speedMenu(2.0); }
void Rixo::okitismiso_Click() { speedMenu(0.5); }

void Rixo::TIMERSTART_Click() {
    Rixotext& panel = form<Rixotext>();
    panel.showNewtonControls(false);
    startAnimation();
    DrawRaysAtBoundary();
    panel.showFigures({panel.figureWording().critical, texts::ShareWording::Plain, true});
}

void Rixo::aktina_Click() {
    stopAnimation();
    form<Rixotext>().showNewtonControls(false);
    drawRayPicture();
}

void Rixo::deiktis_Click() {
    // Cancel or a refused answer: the picture stays as it was.
    const std::optional<double> n = askTypedIndex(QStringLiteral("GIVE INDEX Δώσε δείκτη"));
    if (!n) return;
    state_.setIndex(*n);
    Rixotext& panel = form<Rixotext>();
    FigureWording wording = panel.figureWording();
    wording.shares = texts::ShareWording::Plain;
    panel.showFigures(wording);
}

void Rixo::epiloges_Click() { form<Epiloges>().showBesideWaves(); }

void Rixo::stopInterpretationTimers() {
    Forms& forms = Forms::instance();
    if (forms.exists<Rixo>()) form<Rixo>().stopAnimation();
    if (forms.exists<Rixotext>()) form<Rixotext>().stopAnimation();
    if (forms.exists<Somata>()) form<Somata>().stopAnimation();
}

void Rixo::Endof_Click() {
    stopInterpretationTimers();
    moving->clearAll();
    // The three screens came up together and go together.
    hide();
    hideIfCreated<Rixotext>();
    hideIfCreated<Somata>();
    hideIfCreated<Epiloges>();
    showPlace(cameFromData_ ? Place::DataScreen : Place::MainMenu);
}

void Rixo::Telos_Click() { endProgram(0); }

bool Rixo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize) redraw();
    return QMainWindow::eventFilter(watched, event);
}
