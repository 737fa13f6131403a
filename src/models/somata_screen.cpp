#include "models/somata_screen.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "models/rixotext_screen.h"
#include "ui/forms.h"
#include "ui/scroll_bars.h"

namespace {}  // namespace

Somata::Somata() : state_(sharedState<InterpretationState>()) {
    setObjectName(QStringLiteral("somata"));
    setWindowTitle(QStringLiteral("CORPUSCULAR AND FERMAT ΣΩMATIΔIA KAI FERMAT"));
    setFont(roleFont(FontRole::Caption, 9.0));
    createDrawing();
    createBodies();
    createMenus();
    Timer1 = new FormTimer(
        this, [this] { Timer1_Timer(); }, 10);
    Timer2 = new FormTimer(
        this, [this] { Timer2_Timer(); }, 50);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer2->setObjectName(QStringLiteral("Timer2"));
    connectMenus();
    canvas->installEventFilter(this);
    fermatscr->installEventFilter(this);
    connect(&state_, &InterpretationState::indexChanged, this, &Somata::valuesChanged);
    connect(&state_, &InterpretationState::incidenceChanged, this, &Somata::valuesChanged);
    connect(&state_, &InterpretationState::newtonValueChanged, this, &Somata::valuesChanged);

    resize(720, 560);
    Form_Load();
}

void Somata::createDrawing() {
    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("corpuscleField"));
    canvas->setAccessibleName(QStringLiteral("Corpuscles and Fermat's principle  Σωμάτια και αρχή του Fermat"));
    canvas->setFontRole(FontRole::Caption);
    canvas->setMinimumSize(1, 1);
    fermatscr = createScrollBar({.orientation = Qt::Horizontal,
                                 .minimum = 0,
                                 .maximum = 1000,
                                 .value = 500,
                                 .smallChange = 1,
                                 .largeChange = 20,
                                 .objectName = "fermatscr",
                                 .accessibleName = QStringLiteral(
                                     "Blue body along the boundary  Το μπλε σώμα πάνω στη διαχωριστική επιφάνεια")});
    describeValue(*fermatscr, [this](int value) {
        return QStringLiteral("blue body at x = ") +
               QString::number(qRound(field().width * value / fermatscr->maximum())) + QStringLiteral(" of ") +
               QString::number(qRound(field().width));
    });
    Label1 = new QLabel;
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setWordWrap(true);
    Label1->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(canvas, 1);
    layout->addWidget(fermatscr);
    layout->addWidget(Label1);
    setCentralWidget(central);
}

void Somata::createBodies() {
    fermat1 = new ShapeWidget(canvas, palette::corpuscles::fermatFirst, 16);
    fermat2 = new ShapeWidget(canvas, palette::corpuscles::fermatSecond, 16);
    fermat3 = new ShapeWidget(canvas, palette::corpuscles::fermatThird, 16);
    fermat1->setObjectName(QStringLiteral("fermat1"));
    fermat2->setObjectName(QStringLiteral("fermat2"));
    fermat3->setObjectName(QStringLiteral("fermat3"));
    fermat1->setAccessibleName(QStringLiteral("Magenta body, the start  Ματζέντα σώμα, η αρχή"));
    fermat2->setAccessibleName(QStringLiteral("Blue body, on the boundary  Μπλε σώμα, στη διαχωριστική επιφάνεια"));
    fermat3->setAccessibleName(QStringLiteral("Green body, the end  Πράσινο σώμα, το τέλος"));
    for (int k = 0; k < kCorpuscles; ++k) {
        ShapeWidget* corpuscle = new ShapeWidget(canvas, palette::corpuscles::corpuscle, 9);
        corpuscle->setAccessibleName(QStringLiteral("Corpuscle %1  Σωματίδιο %1").arg(k + 1));
        corpuscle->setObjectName(QStringLiteral("soma"));
        corpuscle->hide();
        soma[static_cast<std::size_t>(k)] = corpuscle;
    }
}

void Somata::createMenus() {
    QMenuBar* bar = menuBar();
    auto named = [](QAction* a, const char* name) {
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    xekina = named(bar->addAction(QStringLiteral("Descarte's")), "xekina");
    fermat = named(bar->addAction(QStringLiteral("FERMAT'S PRINCIPLE")), "fermat");
    lawMenu = bar->addMenu(QStringLiteral("LAW  Νόμος"));
    lawMenu->setObjectName(QStringLiteral("lawMenu"));
    descartes = named(lawMenu->addAction(QStringLiteral("Νόμος διάθλασης Descartes")), "descartes");
    fermalaw = named(lawMenu->addAction(QStringLiteral("Νόμος διάθλασης Fermat")), "fermalaw");
    evresielaxistoy = named(bar->addAction(QStringLiteral("FIND MINIMUM")), "evresielaxistoy");
    GENERAL = bar->addMenu(QStringLiteral("NEWTON"));
    GENERAL->setObjectName(QStringLiteral("GENERAL"));
    neftonas = named(GENERAL->addAction(QStringLiteral("NEWTON  ONE LAYER")), "neftonas");
    NEWTON2STROMATA = named(GENERAL->addAction(QStringLiteral("NEWTON: PARALLEL")), "NEWTON2STROMATA");
    GENERAL->addSeparator();
    SOMATIDIA = named(GENERAL->addAction(QStringLiteral("PARTICLES")), "SOMATIDIA");
    STAMATHMA = named(bar->addAction(QStringLiteral("STOP")), "STAMATHMA");
    lawGroup_ = new QActionGroup(this);
    newtonGroup_ = new QActionGroup(this);
    for (QAction* a : {descartes, fermalaw}) {
        a->setCheckable(true);
        lawGroup_->addAction(a);
    }
    for (QAction* a : {neftonas, NEWTON2STROMATA}) {
        a->setCheckable(true);
        newtonGroup_->addAction(a);
    }
    fermalaw->setChecked(true);
    neftonas->setChecked(true);
}

void Somata::connectMenus() {
    connect(xekina, &QAction::triggered, this, &Somata::xekina_Click);
    connect(fermat, &QAction::triggered, this, &Somata::fermat_Click);
    connect(descartes, &QAction::triggered, this, &Somata::descartes_Click);
    connect(fermalaw, &QAction::triggered, this, &Somata::fermalaw_Click);
    connect(evresielaxistoy, &QAction::triggered, this, &Somata::evresielaxistoy_Click);
    connect(neftonas, &QAction::triggered, this, &Somata::neftonas_Click);
    connect(NEWTON2STROMATA, &QAction::triggered, this, &Somata::NEWTON2STROMATA_Click);
    connect(SOMATIDIA, &QAction::triggered, this, &Somata::SOMATIDIA_Click);
    connect(STAMATHMA, &QAction::triggered, this, &Somata::STAMATHMA_Click);
    connect(fermatscr, &QScrollBar::valueChanged, this, &Somata::fermatscr_Change);
}

kymatiko::Field Somata::field() const { return kymatiko::fieldFor(canvas->width(), canvas->height()); }

void Somata::applyField() {
    const kymatiko::Field f = field();
    canvas->scale(0.0, f.height, f.width, 0.0);
}

QPointF Somata::toWidget(kymatiko::Point p) const { return canvas->toLogical(p.x, p.y); }

void Somata::drawMedium() {
    const kymatiko::Field f = field();
    canvas->cls();
    canvas->filledBox(0.0, 0.0, f.width, f.boundary(), palette::corpuscles::secondMedium);
    canvas->setDrawWidth(1);
    canvas->line(0.0, f.boundary(), f.width, f.boundary(), palette::black);
}

void Somata::Form_Load() {
    showBodies(false);
    Label1->hide();
    applyField();
    buildTrack(newtonModel());
    showCriticalAngle(false);
    drawTrackPicture();
}

void Somata::neftonas_Click() {
    neftonas->setChecked(true);
    showBodies(false);
    Label1->hide();
    form<Rixotext>().showNewtonControls(true);
    DrawNewtonOneLayer();
}

void Somata::NEWTON2STROMATA_Click() {
    NEWTON2STROMATA->setChecked(true);
    showBodies(false);
    Label1->hide();
    form<Rixotext>().showNewtonControls(true);
    DrawNewtonParallelLayers();
}

void Somata::descartes_Click() {
    descartes->setChecked(true);
    lawChanged();
}

void Somata::fermalaw_Click() {
    fermalaw->setChecked(true);
    lawChanged();
}

void Somata::lawChanged() {
    if (state_.mode() == Mode::Fermat) fermatView_ = FermatView::PictureOnly;
    fermatscr->hide();
    Label1->hide();
    if (state_.mode() == Mode::Fermat) showFermat();  // the path with the new speeds
}

void Somata::valuesChanged() {
    if (state_.mode() == Mode::Fermat) {
        redrawFermat();
        return;
    }
    // A running animation picks the change up at its next tick.
    if (Timer1->isRunning() || Timer2->isRunning()) {
        trackStale_ = true;
        return;
    }
    buildTrack(state_.mode() == Mode::Descartes ? kymatiko::CorpuscleModel::Descartes : newtonModel());
    showCriticalAngle(false);
    drawTrackPicture();
}

bool Somata::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize) {
        applyField();
        if (state_.mode() == Mode::Fermat) {
            redrawFermat();
        } else {
            buildTrack(model_);  // the field changed: the same path in the new field
            drawTrackPicture();
            if (Timer1->isEnabled() || Timer2->isEnabled()) moveCorpuscles(Timer2->isEnabled() ? 50 : 10);
        }
    } else if (watched == canvas && event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPointF u = canvas->toUser(mouse->position());
        Form_MouseDown(mouse->button(), mouse->modifiers(), u.x(), u.y());
    } else if (watched == canvas && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (fermatKey(key->key(), key->modifiers() & ~Qt::KeypadModifier)) return true;
    } else if (watched == fermatscr && event->type() == QEvent::FocusIn) {
        fermatscr_GotFocus();
    }
    return QMainWindow::eventFilter(watched, event);
}
