#include "apparatus/ptolkam_screen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include <cmath>

#include "apparatus/apparatus_summaries.h"
#include "apparatus/apparatus_widgets.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "ui/caption_button.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/window_placement.h"

using namespace ptolemy_fit;

namespace {

constexpr double kLeft = -30.0, kTop = 75.0, kRight = 140.0, kBottom = -45.0;
constexpr double kLegendX = 75.0;
constexpr double kLegendY = -6.0;
constexpr double kTableX = -28.0;
constexpr double kTableY = -12.0;

const QString kChooseMessage = QStringLiteral("CHOOSE A NUMBER BETWEEN 1 &7");

QString refusal(StartPair answer, const DataSet& set) {
    switch (answer.answer) {
    case StartPairAnswer::OutOfRange: return kChooseMessage;
    case StartPairAnswer::NotANumber:
        return kChooseMessage + QStringLiteral("  Γράψε έναν αριθμό από 1 έως 7, με ψηφία, για παράδειγμα 2.");
    case StartPairAnswer::NotWhole:
        return kChooseMessage + QStringLiteral("  Ο αριθμός του ζεύγους είναι ακέραιος, από 1 έως 7.");
    case StartPairAnswer::BeyondTheSet:
        return QStringLiteral("This table has no pair after pair ") + QString::number(answer.k) +
               QStringLiteral(": choose a number between 1 and ") + QString::number(set.refraction.size() - 2) +
               QStringLiteral(".  Ο πίνακας δεν έχει ζεύγος μετά το ") + QString::number(answer.k) +
               QStringLiteral(": διάλεξε αριθμό από 1 έως ") + QString::number(set.refraction.size() - 2) +
               QStringLiteral(".");
    case StartPairAnswer::Cancelled:
    case StartPairAnswer::Valid: break;
    }
    return {};
}
}  // namespace

QStringList ptolemyFittingExplanation() {
    return {
        QStringLiteral("Ο Πτολεμαίος προσάρμοσε τις πειραματικές τιμές έτσι που οι δεύτερες διαφορές των γωνιών "
                       "διάθλασης"),
        QStringLiteral(" να είναι 30'. Έτσι πλησίασε πολύ τα πειραματικά αποτελέσματα. Οι τιμές του βρίσκονται σε "
                       "μια παραβολή."),
        QStringLiteral(" Στη μέθοδο του Πτολεμαίου, η διαφορά ανάμεσα στην ΠΡΩΤΗ και στη ΔΕΥΤΕΡΗ ΠΕΙΡΑΜΑΤΙΚΗ ΤΙΜΗ "
                       "(7,5° από αέρα σε νερό) θεωρείται σημείο εκκίνησης: η 3η από τη 2η πρέπει να είναι 30' "
                       "μικρότερη κ.ο.κ."),
        QStringLiteral(" ΜΠΟΡΟΥΜΕ ΝΑ ΔΙΑΛΕΞΟΥΜΕ άλλο σημείο εκκίνησης με το ΑΡΙΣΤΕΡΟ ΚΟΥΜΠΙ. Για n = 2 ξεκινάμε με "
                       "τη διαφορά των 20° και 30°."),
        QStringLiteral("       Ptolemy had manipulated  the experimental values  so that  the second differences of "
                       "refraction angles, to be  30'"),
        QStringLiteral(" In this way he was very near the experimental results. His values are on a parabola."),
        QStringLiteral("  In Ptolemy's method, the difference between THE FIRST EXPERIMENTAL VALUE and the SECOND "
                       "EXPERIMENTAL VALUE (which is 7,5° from air to water)"),
        QStringLiteral(" is considered as a starting point: The 3rd from 2nd should be  30' less and so on. WE CAN "
                       "CHOOSE another  starting point. Press the LEFT BUTTON For n =2 we start  with the difference "
                       "of  20° and 30°."),
    };
}

Ptolkam::Ptolkam() {
    setObjectName(QStringLiteral("ptolkam"));
    setWindowTitle(QStringLiteral("PTOLEMY'S DATA MANIPULATION"));
    setFont(roleFont(FontRole::Caption, 9.0));
    createControls();
    createExplanation();
    layOut();
    connectControls();
    setMinimumSize(640, 520);
    resize(1000, 760);
}

void Ptolkam::createControls() {
    fittingGraph_ = new Canvas;
    fittingGraph_->setObjectName(QStringLiteral("fittingGraph"));
    fittingGraph_->setAccessibleName(QStringLiteral(
        "Refraction against incidence: Ptolemy's values and two laws  Διάθλαση ως προς πρόσπτωση: οι τιμές του "
        "Πτολεμαίου και δύο νόμοι"));
    fittingGraph_->scale(kLeft, kTop, kRight, kBottom);
    fittingGraph_->setFontRole(FontRole::Caption);
    fittingGraph_->setFontSize(8.0);

    Option1 = new QRadioButton(QStringLiteral("INDEX Δείκτης =1,5"));
    Option1->setObjectName(QStringLiteral("Option1"));
    Option2 = new QRadioButton(QStringLiteral("INDEX Δείκτης=1,333"));
    Option2->setObjectName(QStringLiteral("Option2"));
    Option2->setChecked(true);
    Label1 = apparatus::makeLabel("Label1");
    Enallagi = new CaptionButton(QStringLiteral("Refer to other n Εναλλακτική προσαρμογή"));
    Enallagi->setObjectName(QStringLiteral("Enallagi"));
    kripse = new CaptionButton(QStringLiteral("CLOSE Κλείσιμο"));
    kripse->setObjectName(QStringLiteral("kripse"));
    apparatus::fitCaptionHeight(Enallagi, 170);
    apparatus::fitCaptionHeight(kripse, 170);
}

void Ptolkam::createExplanation() {
    explanation_ = new QTextEdit;
    explanation_->setObjectName(QStringLiteral("explanation"));
    explanation_->setReadOnly(true);
    explanation_->setAcceptRichText(false);
    explanation_->setFont(roleFont(FontRole::Caption, 9.0));
    explanation_->setAccessibleName(QStringLiteral("Ptolemy's rule  Ο κανόνας του Πτολεμαίου"));
    explanation_->setPlainText(ptolemyFittingExplanation().join(QStringLiteral("\n")));
    explanation_->setMaximumHeight(150);
}

void Ptolkam::layOut() {
    auto* side = new QVBoxLayout;
    side->addWidget(Option2);
    side->addWidget(Option1);
    side->addWidget(Label1);
    side->addSpacing(10);
    side->addWidget(Enallagi);
    side->addStretch(1);
    side->addWidget(kripse);
    auto* sidePanel = new QWidget;
    sidePanel->setLayout(side);
    sidePanel->setFixedWidth(190);

    auto* top = new QHBoxLayout;
    top->addWidget(sidePanel);
    top->addWidget(fittingGraph_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(top, 1);
    layout->addWidget(explanation_);
}

void Ptolkam::connectControls() {
    setTabOrder(Option2, Option1);
    setTabOrder(Option1, Enallagi);
    setTabOrder(Enallagi, kripse);
    setTabOrder(kripse, explanation_);

    // Toggled, not clicked: a key or a screen reader's action chooses an
    // option too, and the picture must follow whichever way it was chosen.
    connect(Option1, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Option1_Click();
    });
    connect(Option2, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Option2_Click();
    });
    connect(Enallagi, &QPushButton::clicked, this, &Ptolkam::Enallagi_Click);
    connect(kripse, &QPushButton::clicked, this, &Ptolkam::kripse_Click);
}

const DataSet& Ptolkam::chosenSet() const { return Option1->isChecked() ? glassSet() : waterSet(); }

void Ptolkam::Form_Load() {
    const QRect area = availableArea(this);
    QRect frame = outerRect(*this);
    frame.setSize({std::max(minimumWidth(), area.width() * 3 / 4), std::max(minimumHeight(), area.height() * 4 / 5)});
    placeWindow(*this, frame);
    showScreen(*this);  // the legend is spaced by the height of its text as seen
    standardAdjustment();
}

void Ptolkam::Option1_Click() {
    Option1->setChecked(true);
    fittingGraph_->cls();
    standardAdjustment();
}

void Ptolkam::Option2_Click() {
    Option2->setChecked(true);
    fittingGraph_->cls();
    standardAdjustment();
}

void Ptolkam::Enallagi_Click() { alternativeAdjustment(); }

void Ptolkam::kripse_Click() {
    hide();
    showPlace(Place::DataScreen);
}

void Ptolkam::standardAdjustment() {
    const DataSet& set = chosenSet();
    apparatus::setLabel(Label1, QStringLiteral("n = ") + fmt(set.index, "0.0000"));
    drawCurves(
        set, set.refraction,
        {QStringLiteral("ANALOGY Σχέση αναλογίας"), QStringLiteral("  PTOLEMY'S MANIPULATION Προσαρμογή Πτολεμαίου"),
         QStringLiteral("EXPECTED VALUES Πραγματικές τιμές")});
    fittingGraph_->setSummary(apparatus::ptolemyFittingSummary(set, set.refraction, std::nullopt));
}

void Ptolkam::alternativeAdjustment() {
    const DataSet& set = chosenSet();
    const QString typed = inputBox(QStringLiteral("number of first member  of pair ΑΡΙΘΜΟΣ ΠΡΩΤΟΥ ΜΕΛΟΥΣ ΖΕΥΓΟΥΣ"));
    const StartPair answer = readStartPair(typed.toStdString(), set);
    if (answer.answer == StartPairAnswer::Cancelled) return;
    if (answer.answer != StartPairAnswer::Valid) {
        messageBox(refusal(answer, set));
        return;
    }
    const std::vector<double> adjusted = adjustFromPair(set, answer.k);
    apparatus::setLabel(Label1, QStringLiteral("n = ") + fmt(set.index, "0.0000") + QStringLiteral("   k = ") +
                                    QString::number(answer.k));
    drawCurves(
        set, adjusted,
        {QStringLiteral(" ANALOGY Σχέση αναλογίας"), QStringLiteral("    PTOLEMY'S MANIPULATION Προσαρμογή Πτολεμαίου"),
         QStringLiteral("  EXPECTGED  VALUES Πραγματικές τιμές")});
    printTable(set, adjusted);
    fittingGraph_->setSummary(apparatus::ptolemyFittingSummary(set, adjusted, answer.k));
}

void Ptolkam::drawCurves(const DataSet& set, const std::vector<double>& values, const Legend& legend) {
    shown_ = values;
    Canvas& c = *fittingGraph_;
    c.cls();
    // The legend's longest line ends on the canvas however narrow the window.
    c.setFontRole(FontRole::Caption);
    c.setFontSize(8.0);
    c.scale(kLeft, kTop, kRight, kBottom);
    makeRoomForTextsFrom(c, kLegendX, {legend.analogy, legend.ptolemy, legend.expected});
    c.setForeColor(palette::black);
    c.setDrawWidth(1);
    c.line(-15, 0, 100, 0);
    c.line(0, -5, 0, 100);  // not down through the table
    drawGraphAxes(c, 90, 0, 70, 0, 80, 70, 10, 10);
    c.setCurrentX(2);
    c.setCurrentY(kTop - 1);
    c.print(QStringLiteral("REFRACTION Διάθλασης"));
    c.setCurrentX(82);
    c.setCurrentY(5);
    c.print(QStringLiteral("INCIDENCE Πρόσπτωσης"));

    c.setDrawWidth(2);
    // The proportional law through the origin.
    const double ratio = proportionalRatio(set);
    c.line(0, 0, 80, 80 * ratio, palette::ptolemy::analogyCurve);
    // The law of refraction, point to point.
    const std::vector<std::optional<double>> snell = snellRefraction(set);
    for (std::size_t k = 1; k < snell.size(); ++k)
        if (snell[k - 1] && snell[k])
            c.line(set.incidence[k - 1], *snell[k - 1], set.incidence[k], *snell[k], palette::ptolemy::snellCurve);
    // Ptolemy's values, marked and joined.
    for (std::size_t k = 0; k < values.size() && k < set.incidence.size(); ++k) {
        if (k > 0)
            c.line(set.incidence[k - 1], values[k - 1], set.incidence[k], values[k], palette::ptolemy::ptolemyCurve);
        c.filledCircle(set.incidence[k], values[k], 0.8, palette::ptolemy::ptolemyCurve);
    }
    c.setDrawWidth(1);

    // The legend, a line of text for each curve.
    const double step = c.textHeight() * 1.1;
    const std::pair<const QString*, QColor> rows[] = {{&legend.analogy, palette::ptolemy::analogyCurve},
                                                      {&legend.ptolemy, palette::ptolemy::ptolemyCurve},
                                                      {&legend.expected, palette::ptolemy::snellCurve}};
    double y = kLegendY;
    for (const auto& [text, colour] : rows) {
        c.setDrawWidth(2);
        c.line(kLegendX - 9, y - step / 2, kLegendX - 2, y - step / 2, colour);
        c.setDrawWidth(1);
        c.setCurrentX(kLegendX);
        c.setCurrentY(y);
        c.print(*text);
        y -= step;
    }
}

void Ptolkam::printTable(const DataSet& set, const std::vector<double>& values) {
    Canvas& c = *fittingGraph_;
    c.setFontRole(FontRole::Table);
    const double column = c.textWidth(QStringLiteral("REFRACTION Διάθλασης  "));
    auto cell = [&](int col, double y, const QString& text) {
        c.setCurrentX(kTableX + col * column);
        c.setCurrentY(y);
        c.print(text);
    };
    double y = kTableY;
    const double step = c.textHeight();
    cell(0, y, QStringLiteral("INCIDENCE Πρόσπτωσης "));
    cell(1, y, QStringLiteral("REFRACTION Διάθλασης"));
    cell(2, y, QStringLiteral("DIFFERENCE Διαφορά"));
    for (std::size_t k = 0; k < values.size() && k < set.incidence.size(); ++k) {
        y -= step;
        cell(0, y, fmt(set.incidence[k], "0") + QStringLiteral("°   "));
        cell(1, y, fmt(values[k], "0.0") + QStringLiteral("°"));
        if (k > 0) cell(2, y, fmt(values[k] - values[k - 1], "0.0") + QStringLiteral("°"));
    }
    c.setFontRole(FontRole::Caption);
}
