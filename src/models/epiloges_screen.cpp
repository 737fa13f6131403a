#include "models/epiloges_screen.h"

#include <QMenuBar>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "models/interpretation_openers.h"
#include "models/interpretation_state.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/index_prompt.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"
#include "ui/window_placement.h"

Epiloges::Epiloges() {
    setObjectName(QStringLiteral("epiloges"));
    setWindowTitle(QStringLiteral("Σχέση του δείκτη της διάθλασης και των ταχύτητων σε διάφορα μέσα"));
    setFont(roleFont(FontRole::Panel, 9.0));
    createMenus();

    summary = new QLabel;
    summary->setObjectName(QStringLiteral("summary"));
    summary->setWordWrap(true);
    summary->setMargin(8);
    setCentralWidget(summary);

    connect(deiktisdia, &QAction::triggered, this, &Epiloges::deiktisdia_Click);
    connect(changev, &QAction::triggered, this, &Epiloges::changev_Click);
    connect(samev, &QAction::triggered, this, &Epiloges::samev_Click);
    connect(aktina, &QAction::triggered, this, &Epiloges::aktina_Click);
    connect(Endof, &QAction::triggered, this, &Epiloges::Endof_Click);
    connect(Telos, &QAction::triggered, this, &Epiloges::Telos_Click);

    InterpretationState& state = sharedState<InterpretationState>();
    connect(&state, &InterpretationState::indexChanged, this, &Epiloges::writeSummary);
    connect(&state, &InterpretationState::incidenceChanged, this, &Epiloges::writeSummary);
    connect(&state, &InterpretationState::sameSpeedsChanged, this, &Epiloges::writeSummary);

    resize(520, 140);
    Form_Load();
}

void Epiloges::createMenus() {
    QMenuBar* bar = menuBar();
    repetition = bar->addMenu(QStringLiteral("EPANALHPSH"));
    repetition->setObjectName(QStringLiteral("repetition"));
    auto item = [this](const QString& caption, const char* name) {
        QAction* a = repetition->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    deiktisdia = item(QStringLiteral("DEIKTHS"), "deiktisdia");
    changev = item(QStringLiteral("METAVOLH V"), "changev");
    samev = item(QStringLiteral("IDIA V"), "samev");
    aktina = item(QStringLiteral("AKTINA"), "aktina");
    repetition->addSeparator();
    Endof = item(QStringLiteral("END OFF"), "Endof");
    Telos = item(QStringLiteral("TELOS"), "Telos");
    speedGroup_ = new QActionGroup(this);
    for (QAction* a : {changev, samev}) {
        a->setCheckable(true);
        speedGroup_->addAction(a);
    }
    changev->setChecked(true);
}

double Epiloges::index() const { return sharedState<InterpretationState>().index(); }
double Epiloges::incidenceDegrees() const { return sharedState<InterpretationState>().incidence(); }

void Epiloges::writeSummary() {
    (sharedState<InterpretationState>().sameSpeeds() ? samev : changev)->setChecked(true);
    summary->setText(QStringLiteral("n = ") + fmt(index(), "0.00") + QStringLiteral("    c2/c1 = 1/n = ") +
                     fmt(secondSpeed(), "0.00") + QStringLiteral("    Incidence πρόσπτωση = ") +
                     fmt(incidenceDegrees(), "0") + QStringLiteral("°\n") +
                     (samev->isChecked() ? QStringLiteral("IDIA V: the same speed in both media  Ίδια ταχύτητα")
                                         : QStringLiteral("METAVOLH V: the speed changes  Μεταβολή της ταχύτητας")));
    summary->setAccessibleName(summary->text());
}

std::vector<QRect> Epiloges::areasToKeepClear() {
    // First what must stay in reach, then what is read, then the rest of
    // the windows: the earlier an area, the more covering it costs.
    std::vector<QRect> areas;
    Forms& forms = Forms::instance();
    auto onScreen = [](const QWidget* w, const QRect& local) {
        return QRect(w->mapToGlobal(local.topLeft()), local.size());
    };
    const bool waves = forms.exists<Rixo>() && form<Rixo>().isVisible();
    const bool panelUp = forms.exists<Rixotext>() && form<Rixotext>().isVisible();
    const bool corpuscles = forms.exists<Somata>() && form<Somata>().isVisible();
    if (waves) {
        const Rixo& rixo = form<Rixo>();
        areas.push_back(titleBarAndMenus(rixo));
        const std::vector<QRect> notes = rixo.notesOnScreen();
        areas.insert(areas.end(), notes.begin(), notes.end());
    }
    if (panelUp) {
        const Rixotext& panel = form<Rixotext>();
        QRect figures;
        for (const QLabel* l : panel.findChildren<QLabel*>())
            if (l->isVisibleTo(&panel) && !l->text().isEmpty()) figures |= onScreen(l, l->rect());
        if (!figures.isEmpty()) areas.push_back(figures);
    }
    if (waves) areas.push_back(form<Rixo>().drawingOnScreen());
    if (panelUp) areas.push_back(outerRect(form<Rixotext>()));
    if (corpuscles) {
        areas.push_back(titleBarAndMenus(form<Somata>()));
        areas.push_back(outerRect(form<Somata>()));
    }
    return areas;
}

void Epiloges::showBesideWaves() {
    placeWindow(*this, leastCoveringPlace(outerRect(*this).size(), availableArea(&form<Rixo>()), areasToKeepClear()));
    showScreen(*this);
}

void Epiloges::Form_Load() { writeSummary(); }

void Epiloges::drawOnWaveScreen() {
    Rixo& rixo = form<Rixo>();
    if (!rixo.isVisible()) showScreen(rixo);
    rixo.DrawRaysAtBoundary();
}

void Epiloges::deiktisdia_Click() {
    // Cancel or a refused answer: nothing changes.
    const std::optional<double> n = askTypedIndex(QStringLiteral("GIVE INDEX Δώσε δείκτη"));
    if (!n) return;
    InterpretationState& state = sharedState<InterpretationState>();
    state.setIncidence(kStartAngle - 1);
    // With IDIA V ticked the ray still goes straight on; METAVOLH V then bends it by this index.
    state.setBendingIndex(*n);
    Rixo& rixo = form<Rixo>();
    drawOnWaveScreen();
    rixo.startAnimation();
    rixo.DrawRaysAtBoundary();  // with the animation on, the fronts are drawn at once
}

void Epiloges::changev_Click() {
    form<Rixo>().stopAnimation();
    sharedState<InterpretationState>().setSameSpeeds(false);
    drawOnWaveScreen();
}

void Epiloges::samev_Click() {
    form<Rixo>().stopAnimation();
    sharedState<InterpretationState>().setSameSpeeds(true);
    drawOnWaveScreen();
}

void Epiloges::aktina_Click() {
    Rixo& rixo = form<Rixo>();
    rixo.stopAnimation();
    if (!rixo.isVisible()) showScreen(rixo);
    rixo.drawStraightRay();
}

void Epiloges::Endof_Click() {
    Rixo& rixo = form<Rixo>();
    rixo.stopAnimation();
    rixo.hide();
    hide();
    showPlace(Place::DataScreen);
    stepAsideForData();
}

void Epiloges::Telos_Click() { endProgram(0); }
