#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/alhaytham_texts.h"
#include "apparatus/apparatus_summaries.h"
#include "apparatus/apparatus_widgets.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/physics.h"
#include "ui/caption_button.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"
#include "ui/scroll_bars.h"

namespace {

double deg(double radians) { return physics::degrees(radians); }

void printAt(Canvas& canvas, double x, double y, const QString& text) {
    canvas.setCurrentX(x);
    canvas.setCurrentY(y);
    canvas.print(text);
}
}  // namespace

void showAlHaythamRules(bool rule5Violated, bool rule6Violated) {
    Incref& graph = form<Incref>();
    graph.setTitle(QStringLiteral("AL HAYTHAM'S RULES Κανόνες του Al Haytham"));
    graph.graphScale();
    Canvas& page = *graph.canvas();
    page.cls();
    graph.setPicture(Picture::Diagram);
    // The long lines need a small type to fit the graph screen's width.
    const double size = page.fontSize();
    page.setFontSize(8.0);
    PrintAlHaythamRules(page, rule5Violated, rule6Violated);
    page.setFontSize(size);
    auto state = [](bool broken, const char* colour) {
        return broken ? QStringLiteral("broken by the index on the check screen, printed in ") + QLatin1String(colour)
                      : QStringLiteral("kept, printed in black");
    };
    page.setSummary(
        QStringLiteral("Al Haytham's eight rules of refraction, one a line (rule (2) printed twice). Rule (5): "
                       "%1. Rule (6): %2.")
            .arg(state(rule5Violated, "red"), state(rule6Violated, "magenta")));
}

void showAlHaythamRulesAsLastChecked() {
    const bool checked = Forms::instance().exists<Alhazencheck>();
    const bool rule5 = checked && form<Alhazencheck>().flags().rule5Shown;
    const bool rule6 = checked && form<Alhazencheck>().flags().rule6Shown;
    showAlHaythamRules(rule5, rule6);
}

Alhazencheck::Alhazencheck() {
    setObjectName(QStringLiteral("alhazencheck"));
    setWindowTitle(QStringLiteral("CHECK AL HAYTHAM'S RULES "));
    setFont(roleFont(FontRole::Caption, 9.0));
    createControls();
    layOut();

    describeValue(*timidikti, [](int value) { return QStringLiteral("n = ") + fmt(value / 100.0, "0.00"); });
    setTabOrder(timidikti, Command1);
    setTabOrder(Command1, Command2);
    connect(timidikti, &QScrollBar::valueChanged, this, &Alhazencheck::timidikti_Change);
    connect(Command1, &QPushButton::clicked, this, &Alhazencheck::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Alhazencheck::Command2_Click);

    setMinimumSize(520, 380);
    resize(820, 600);
    Form_Load();
}

void Alhazencheck::createControls() {
    checkGraph_ = new Canvas;
    checkGraph_->setObjectName(QStringLiteral("checkGraph"));
    checkGraph_->setAccessibleName(QStringLiteral(
        "Refraction, deviation and Al Haytham's bounds against incidence  Διάθλαση, απόκλιση και τα όρια του Al "
        "Haytham ως προς την πρόσπτωση"));
    checkGraph_->setFontRole(FontRole::Caption);
    checkGraph_->setFontSize(8.0);
    timidikti = apparatus::makeScrollBar(Qt::Vertical, 10, 200, 20, 133, "timidikti",
                                         QStringLiteral("Index of refraction n  Δείκτης διάθλασης n"));
    Label1 = apparatus::makeLabel("Label1");
    Command1 = new CaptionButton(QStringLiteral("BACK TO HISTORICAL DATA"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command2 = new CaptionButton(QStringLiteral("END"));
    Command2->setObjectName(QStringLiteral("Command2"));
    apparatus::fitCaptionHeight(Command1, 130);
}

void Alhazencheck::layOut() {
    auto* side = new QVBoxLayout;
    side->addWidget(Label1);
    side->addWidget(timidikti, 1, Qt::AlignHCenter);
    side->addWidget(Command1);
    side->addWidget(Command2);
    auto* sidePanel = new QWidget;
    sidePanel->setLayout(side);
    sidePanel->setFixedWidth(140);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(checkGraph_, 1);
    layout->addWidget(sidePanel);
}

void Alhazencheck::Form_Load() {
    apparatus::setLabel(Label1, QStringLiteral("n =") + fmt(timidikti->value() / 100.0, "0.00"));
}

void Alhazencheck::timidikti_Change() {
    const double n = timidikti->value() / 100.0;
    apparatus::setLabel(Label1, QStringLiteral("n =") + fmt(n, "0.00"));
    CheckAlHaythamRules(n);
}

void Alhazencheck::checkChosenIndex() { CheckAlHaythamRules(timidikti->value() / 100.0); }

void Alhazencheck::Command1_Click() {
    hide();
    showPlace(Place::DataScreen);
}

void Alhazencheck::Command2_Click() { endProgram(0); }

void Alhazencheck::reprintRules() {
    ++rulePrintings_;
    showAlHaythamRules(flags_.rule5Violated, flags_.rule6Violated);
}

void Alhazencheck::prepareAxes() {
    Canvas& c = *checkGraph_;
    c.cls();
    c.scale(-15, 100, 150, -10);  // room at the right for the legend's texts
    c.setForeColor(palette::black);
    c.setDrawWidth(1);
    c.setDrawStyle(DrawStyle::Solid);
    makeRoomForTextsFrom(c, 71, {QStringLiteral("(INCIDENCE + DEVIATION πρόσπτωσης+απόκλισης)/2")});
    makeRoomForTextsFrom(c, 88, {QStringLiteral("INCIDENCE/2 πρόσπτωσης/2")});
    makeRoomForAxisLabels(c, 90, 0, 90, 0, 90, 90, 10, 10);
    c.line(-10, 0, 90, 0);
    c.line(0, 0, 0, 90);
    drawGraphAxes(c, 90, 0, 90, 0, 90, 90, 10, 10);
    c.setDrawStyle(DrawStyle::Dot);
    for (int x = 10; x <= 90; x += 10) c.line(x, 0, x, 90, palette::blue);
    c.setDrawStyle(DrawStyle::Solid);
}

// The legend at the right. Its deviation and half-incidence lines keep their
// own colours (green, cyan), not those of the curves.
void Alhazencheck::drawLegend(double n) {
    Canvas& c = *checkGraph_;
    c.setDrawWidth(2);
    c.line(90, 30, 100, 30, palette::red);
    printAt(c, 88, 34, QStringLiteral("REFRACTION διάθλασης"));
    c.line(90, 23, 100, 23, palette::green);
    printAt(c, 88, 27, QStringLiteral("DEVIATION απόκλισης"));
    c.line(90, 16, 100, 16, palette::cyan);
    printAt(c, 88, 20, QStringLiteral("INCIDENCE/2 πρόσπτωσης/2"));
    c.line(90, 9, 100, 9, palette::magenta);
    printAt(c, 71, 13, QStringLiteral("(INCIDENCE + DEVIATION πρόσπτωσης+απόκλισης)/2"));
    c.setDrawWidth(1);
    printAt(c, 2, 97, QStringLiteral("n =") + fmt(n, "0.00"));
}

void Alhazencheck::CheckAlHaythamRules(double n) {
    flags_.startDrawing();
    segments_ = 0;
    prepareAxes();

    // While a rule is broken the curves are drawn dotted, so that the
    // pupil sees where along the incidence it happens.
    Canvas& c = *checkGraph_;
    c.setDrawWidth(2);
    const std::vector<alhaytham::CheckStep> steps = alhaytham::checkSteps(n);
    for (const alhaytham::CheckStep& s : steps) {
        c.line(deg(s.i1), deg(s.r1), deg(s.i2), deg(s.r2), palette::red);
        const int reprints = flags_.take(s);
        for (int k = 0; k < reprints; ++k) reprintRules();
        c.setDrawStyle(flags_.rule5Violated || flags_.rule6Violated ? DrawStyle::Dot : DrawStyle::Solid);
        c.line(deg(s.i1), deg(s.d1), deg(s.i2), deg(s.d2), palette::black);
        c.line(deg(s.i1), deg(s.i1) / 2.0, deg(s.i2), deg(s.i2) / 2.0, palette::blue);
        c.line(deg(s.i1), (deg(s.i1) + deg(s.d1)) / 2.0, deg(s.i2), (deg(s.i2) + deg(s.d2)) / 2.0, palette::magenta);
        ++segments_;
    }
    c.setDrawStyle(DrawStyle::Solid);
    drawLegend(n);
    c.setSummary(apparatus::alHaythamCheckSummary(n, steps));
}
