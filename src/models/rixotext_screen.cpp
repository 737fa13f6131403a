#include "models/rixotext_screen.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "models/corpuscles.h"
#include "models/model_texts.h"
#include "models/rixo_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"
#include "ui/presentation_size.h"
#include "ui/scroll_bars.h"

namespace {

QScrollBar* makeBar(int minimum, int maximum, int value, int page, const char* name, const QString& accessible) {
    QScrollBar* bar = createScrollBar({.orientation = Qt::Horizontal,
                                       .minimum = minimum,
                                       .maximum = maximum,
                                       .value = value,
                                       .smallChange = 1,
                                       .largeChange = page,
                                       .objectName = name,
                                       .accessibleName = accessible});
    bar->setMinimumWidth(160);
    return bar;
}

QLabel* makeLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

}  // namespace

Rixotext::Rixotext() : state_(sharedState<InterpretationState>()) {
    setObjectName(QStringLiteral("rixotext"));
    setWindowTitle(QStringLiteral("REFLECTED AND REFRACTED ANAKLOMENOI KAI DIATHALOMENOI"));
    setFont(roleFont(FontRole::Caption, 9.0));
    createControls();
    createLabels();
    layOut();
    Timer1 = new FormTimer(
        this, [this] { Timer1_Timer(); }, 10);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    connectControls();
    resize(1000, 260);
    Form_Load();
}

void Rixotext::createControls() {
    Command1 = new CaptionButton(QStringLiteral("WAVES AND PARTICLES KYMATA KAI ΣΩMATIΔIA"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setFont(roleFont(FontRole::Reading, 10.0, true));
    Command1->setMinimumHeight(44);

    const int pull = static_cast<int>(std::lround(state_.newtonValue() / kymatiko::kNewtonValueScale));
    newtongtimi = makeBar(5, 100, pull, 5, "newtongtimi", QStringLiteral("Newton's value  Σταθερά του Newton"));
    n1overn2 =
        makeBar(50, 250, 150, 10, "n1overn2", QStringLiteral("Ratio of the indices n2/n1  Λόγος των δεικτών n2/n1"));
    prosptosi = makeBar(InterpretationState::kMinIncidence, InterpretationState::kMaxIncidence, state_.incidence(), 5,
                        "prosptosi", QStringLiteral("Angle of incidence  Γωνία πρόσπτωσης"));
    followIndex(state_.index());
    describeValue(*n1overn2, [this](int) { return QStringLiteral("n2/n1 = ") + fmt(state_.index(), "0.00"); });
    describeValue(*prosptosi, [this](int) { return QStringLiteral("i = ") + fmt(state_.incidence(), "0") + "°"; });
    describeValue(*newtongtimi,
                  [this](int) { return QStringLiteral("Newton's value = ") + fmt(state_.newtonValue(), "0.00"); });

    Text1 = new QLineEdit;
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setAccessibleName(QStringLiteral("Notes  Σημειώσεις"));
    reflected = new QCheckBox(QStringLiteral("REFLECTED WAVE"));
    reflected->setObjectName(QStringLiteral("reflected"));
    reflected->setChecked(true);
    reflected->setAccessibleName(reflected->text());
}

void Rixotext::createLabels() {
    Label7 = makeLabel("Label7");
    Label6 = makeLabel("Label6");
    Label5 = makeLabel("Label5");
    Label4 = makeLabel("Label4");
    Label1 = makeLabel("Label1");
    Label2 = makeLabel("Label2");
    Label3 = makeLabel("Label3");
    Label3->setText(QStringLiteral("REFLECTED WAVE ANAKΛΩMENO KYMA"));
    Label3->setWordWrap(false);
    Label3->setBuddy(reflected);
    newtonText = makeLabel("newtonText");
    energyS = makeLabel("energyS");
    energyP = makeLabel("energyP");
    brewster = makeLabel("brewster");
}

void Rixotext::layOut() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    std::vector<QLabel*> captions;
    auto caption = [&captions](const QString& text, QWidget* buddy) {
        auto* l = new QLabel(text);
        l->setBuddy(buddy);
        l->setFont(roleFont(FontRole::Caption, 9.0, true));
        captions.push_back(l);
        return l;
    };
    newtonCaption = caption(QStringLiteral("Newton's value  Σταθερά Newton"), newtongtimi);
    grid->addWidget(caption(QStringLiteral("Ratio n2/n1  Λόγος n2/n1"), n1overn2), 0, 0);
    grid->addWidget(n1overn2, 1, 0);
    grid->addWidget(Label2, 2, 0);
    grid->addWidget(caption(QStringLiteral("Angle of incidence  Γωνία πρόσπτωσης"), prosptosi), 0, 1);
    grid->addWidget(prosptosi, 1, 1);
    grid->addWidget(Label1, 2, 1);
    grid->addWidget(newtonCaption, 0, 2);
    grid->addWidget(newtongtimi, 1, 2);
    grid->addWidget(newtonText, 2, 2);
    for (int c = 0; c < 3; ++c) grid->setColumnStretch(c, 1);
    wrapWhenShownLarger(this, captions);

    auto* figures = new QGridLayout;
    figures->addWidget(Label6, 0, 0);
    figures->addWidget(Label7, 0, 1);
    figures->addWidget(Label5, 1, 0);
    figures->addWidget(Label4, 1, 1);
    figures->addWidget(energyS, 2, 0);
    figures->addWidget(energyP, 2, 1);
    figures->addWidget(brewster, 3, 0, 1, 2);
    auto* waveRow = new QHBoxLayout;
    waveRow->addWidget(reflected);
    waveRow->addWidget(Label3);
    waveRow->addStretch(1);
    waveRow->addWidget(Text1, 1);

    auto* top = new QHBoxLayout;
    top->addWidget(Command1);
    top->addLayout(grid, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(figures);
    layout->addLayout(waveRow);
    layout->addStretch(1);

    setTabOrder(Command1, n1overn2);
    setTabOrder(n1overn2, prosptosi);
    setTabOrder(prosptosi, newtongtimi);
    setTabOrder(newtongtimi, reflected);
    setTabOrder(reflected, Text1);
}

void Rixotext::connectControls() {
    connect(Command1, &QPushButton::clicked, this, &Rixotext::Command1_Click);
    connect(n1overn2, &QScrollBar::valueChanged, this, &Rixotext::n1overn2_Change);
    connect(newtongtimi, &QScrollBar::valueChanged, this, &Rixotext::newtongtimi_Change);
    connect(prosptosi, &QScrollBar::valueChanged, this, &Rixotext::prosptosi_Change);
    connect(reflected, &QCheckBox::toggled, this, [] {
        if (Forms::instance().exists<Rixo>()) form<Rixo>().redraw();
    });
    connect(&state_, &InterpretationState::indexChanged, this, &Rixotext::followIndex);
    connect(&state_, &InterpretationState::incidenceChanged, this, &Rixotext::followIncidence);
    connect(&state_, &InterpretationState::newtonValueChanged, this, [this](double pull) {
        setLabel(newtonText, texts::newtonValue(pull));
        refreshValueDescription(*newtongtimi);
    });
    connect(&state_, &InterpretationState::figuresDue, this, [this] {
        const FigureWording wording = pendingWording_.value_or(wording_);
        pendingWording_.reset();
        showFigures(wording);
    });
}

bool Rixotext::reflectedWaveWanted() const { return reflected->isChecked(); }

void Rixotext::setLabel(QLabel* label, const QString& text) {
    if (label->text() != text) {
        label->setText(text);
        label->setAccessibleName(text);
    }
    label->setVisible(!text.isEmpty());
}

void Rixotext::showNote(Note note, const QString& text) {
    if (note == Note::Text) {
        Text1->setText(text);
        return;
    }
    QLabel* label = note == Note::LayerThickness ? Label7 : Label6;
    if (text.isEmpty())
        label->hide();  // the last text stays for when it is shown again
    else
        setLabel(label, text);
}

void Rixotext::showNewtonControls(bool visible) {
    for (QWidget* w : {static_cast<QWidget*>(newtongtimi), static_cast<QWidget*>(newtonText),
                       static_cast<QWidget*>(newtonCaption), static_cast<QWidget*>(Label7)})
        w->setVisible(visible);
}

void Rixotext::stopAnimation() { Timer1->setEnabled(false); }

// Nothing here reaches for another screen: a screen made while this one is
// being made could ask for a second panel.
void Rixotext::Form_Load() {
    showNewtonControls(false);
    Label6->hide();
    setLabel(Label2, texts::ratioOnLoad(state_.index()));
    setLabel(newtonText, texts::newtonValue(state_.newtonValue()));
    newtonText->hide();
}

void Rixotext::followIndex(double n) {
    {
        // The bar stands as near the index as it can without running its
        // handler, which would round the index to its hundredths.
        const QSignalBlocker quiet(n1overn2);
        const double hundredths = std::clamp(std::round(n * 100.0), static_cast<double>(n1overn2->minimum()),
                                             static_cast<double>(n1overn2->maximum()));
        n1overn2->setValue(static_cast<int>(hundredths));
    }
    refreshValueDescription(*n1overn2);
}

void Rixotext::followIncidence(int degrees) {
    {
        const QSignalBlocker quiet(prosptosi);
        prosptosi->setValue(degrees);
    }
    refreshValueDescription(*prosptosi);
    // A new angle, from here or from another window, is written in the
    // panel's own wording.
    pendingWording_ = FigureWording{texts::CriticalWording::Panel, texts::ShareWording::Spaced, false};
}

void Rixotext::showFigures(const FigureWording& wording) {
    wording_ = wording;
    const double n = state_.index();
    const double incidence = state_.incidence();
    const kymatiko::Refraction r = kymatiko::refract(kymatiko::radians(incidence), n);
    const kymatiko::Shares s = kymatiko::shares(kymatiko::fresnel(r, n));
    // The text of the load stands while it still gives the index.
    if (Label2->text() != texts::ratioOnLoad(n)) setLabel(Label2, texts::ratioOnChange(n));
    // The panel's own handlers give the critical angle of the pair of media
    // whichever way the light goes; the pictures' texts only when the light
    // passes into the less dense medium, where it can be totally reflected.
    const std::optional<double> c = kymatiko::criticalAngleDegrees(n);
    if (c && (wording.critical == texts::CriticalWording::Panel || kymatiko::intoLessDense(n)))
        setLabel(Label6, texts::criticalAngle(wording.critical, *c));
    else
        Label6->hide();
    setLabel(Label5, texts::reflectedShare(wording.shares, s.reflected));
    setLabel(Label4, texts::refractedShare(wording.shares, s.refracted));
    setLabel(Label1,
             wording.oneBlankBeforeRefraction ? texts::anglesWaves(incidence, r) : texts::anglesPanel(incidence, r));
    const QStringList energy = texts::energyLines(r, n);
    setLabel(energyS, energy.value(0));
    setLabel(energyP, energy.value(1));
    setLabel(brewster, energy.value(2));
    // A screen reader hears the figures in the order they stand.
    QStringList summary;
    for (const QLabel* l : {Label2, Label1, Label6, Label5, Label4, energyS, energyP, brewster})
        if (!l->isHidden()) summary << l->text();
    setAccessibleDescription(summary.join(QLatin1Char('\n')));
}

void Rixotext::n1overn2_Change() {
    FigureWording wording = wording_;
    wording.critical = texts::CriticalWording::Panel;
    pendingWording_ = wording;
    state_.setIndex(n1overn2->value() / 100.0);
    pendingWording_.reset();
}

void Rixotext::newtongtimi_Change() { state_.setNewtonValue(newtongtimi->value() * kymatiko::kNewtonValueScale); }

void Rixotext::prosptosi_Change() { state_.setIncidence(prosptosi->value()); }

void Rixotext::Command1_Click() {
    Rixo& rixo = form<Rixo>();
    Somata& somata = form<Somata>();
    rixo.stopAnimation();
    state_.setSpeedRatio(0.25);
    // Both pictures must be on view for their timers to run.
    if (!rixo.isVisible()) showScreen(rixo);
    if (!somata.isVisible()) showScreen(somata);
    rixo.DrawRaysAtBoundary();
    somata.SOMATIDIA_Click();
    showFigures({wording_.critical, texts::ShareWording::Plain, true});
    Timer1->bindTo(&rixo);
    Timer1->setInterval(10);
    Timer1->setEnabled(true);
    rixo.startAnimation();
}

void Rixotext::Timer1_Timer() {
    if (!form<Rixo>().pulseStep()) {
        Timer1->setEnabled(false);  // the pulse has left the field
        return;
    }
    showFigures({texts::CriticalWording::PanelTimer, texts::ShareWording::Percent, wording_.oneBlankBeforeRefraction});
}

void Rixotext::closeEvent(QCloseEvent* event) {
    Timer1->setEnabled(false);
    if (Forms::instance().exists<Somata>()) form<Somata>().resetFirstCorpuscle();
    QWidget::closeEvent(event);
}
