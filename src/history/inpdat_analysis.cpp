// The data screen's analysis: reading the pairs, fitting them and plotting
// them on the two graph screens; loading the historical tables.
#include <cmath>

#include "analysis/graph_screens.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/number_input.h"
#include "history/data_plots.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

using history::AnglePair;
using history::TableId;

namespace {

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

QString typedRowMessage(const history::TypedRowError& e) {
    const QString typed = fromUtf8(e.text);
    const QString columnEn = e.inRefraction ? QStringLiteral("refraction") : QStringLiteral("incidence");
    const QString columnEl = e.inRefraction ? QStringLiteral("διάθλαση") : QStringLiteral("πρόσπτωση");
    if (e.kind == history::TypedRowError::Kind::NotANumber)
        return QStringLiteral(
                   "Row %1, %2: \"%3\" is not a number (write e.g. 30, 19.5 or 19,5).  "
                   "Γραμμή %1, %4: το \"%3\" δεν είναι αριθμός (γράψε π.χ. 30, 19.5 ή 19,5).")
            .arg(e.row)
            .arg(columnEn, typed, columnEl);
    return QStringLiteral(
               "Row %1, %2: %3 is not an angle between -180 and 180 degrees.  "
               "Γραμμή %1, %4: το %3 δεν είναι γωνία μεταξύ -180 και 180 μοιρών.")
        .arg(e.row)
        .arg(columnEn, typed, columnEl);
}

const QString kNoPairs = QStringLiteral(
    "There are no angle pairs to analyse: type incidence and refraction angles, or choose HISTORICAL DATA.  "
    "Δεν υπάρχουν ζεύγη γωνιών για ανάλυση: γράψε γωνίες πρόσπτωσης και διάθλασης ή διάλεξε HISTORICAL DATA.");
const QString kNoFit = QStringLiteral(
    "At least two pairs with different incidence angles are needed to fit a line.  "
    "Χρειάζονται τουλάχιστον δύο ζεύγη με διαφορετικές γωνίες πρόσπτωσης για να βρεθεί ευθεία.");
const QString kFlatFit = QStringLiteral(
    "The fitted line is flat (slope 0), so no index of refraction follows from these pairs.  "
    "Η ευθεία που βρέθηκε είναι οριζόντια (κλίση 0), άρα δεν προκύπτει δείκτης διάθλασης από αυτά τα ζεύγη.");

}  // namespace

// What differs between the analysis of a table and that of typed data.
struct Inpdat::AnalysisTexts {
    PlotStyle style;
    QString indexPrefix;
    const char* indexFormat;
    QString sinIncidenceTitle;
    QString sinRefractionTitle;
    QString refractionTitle;
    QString incidenceTitle;
};

QAction* Inpdat::dataItem(TableId id) const {
    switch (id) {
    case TableId::Ptolemy: return Ptolemy;
    case TableId::ptolemy2: return ptolemy2;
    case TableId::Alhazen: return Alhazen;
    case TableId::Alhazen2: return Alhazen2;
    case TableId::Newt: return Newt;
    case TableId::newt2: return newt2;
    case TableId::Vitello_Glass: return Vitello_Glass;
    case TableId::Vitello_water: return Vitello_water;
    }
    return nullptr;
}

std::optional<std::vector<AnglePair>> Inpdat::currentPairs(bool typedOnly) {
    if (historicalDataFlag && !typedOnly) {
        // Item 0 of each list is its heading.
        std::vector<double> incidence, refraction;
        for (int k = 1; k < List1->count(); ++k)
            incidence.push_back(parseTypedNumber(List1->item(k)->text().toStdString()).value_or(0.0));
        for (int k = 1; k < List2->count(); ++k)
            refraction.push_back(parseTypedNumber(List2->item(k)->text().toStdString()).value_or(0.0));
        return history::pairsFromLists(incidence, refraction);
    }
    const history::TypedReading reading = history::readTypedPairs(typedRows());
    if (reading.error) {
        messageBox(typedRowMessage(*reading.error));
        return std::nullopt;
    }
    return reading.pairs;
}

bool Inpdat::analyse(const std::vector<AnglePair>& pairs, const AnalysisTexts& texts) {
    if (pairs.empty()) {
        messageBox(kNoPairs);
        return false;
    }
    const history::SineFit fit = history::fitSines(pairs, witeloChecked());
    if (!fit.line) {
        messageBox(kNoFit);
        return false;
    }
    if (!fit.index) {
        messageBox(kFlatFit);
        return false;
    }
    intercept = fit.line->intercept;
    slope = fit.line->slope;
    // Held first, so that the graphs are drawn from the values every other
    // screen reads.
    DataState& state = sharedState<DataState>();
    state.setPairs(pairs);
    state.setDataIndex(*fit.index);

    PlotStyle style = texts.style;
    style.indexNote = QStringLiteral("n = ") + fmt(state.dataIndex(), texts.indexFormat);
    Incref& incref = form<Incref>();
    Analysis& analysis = form<Analysis>();
    analysis.hideText();
    // Shown before drawing, so that texts and ticks are measured at the
    // size the pupil sees.
    showGraphScreens();
    drawAngleGraph(*incref.canvas(), state.pairs(), style, texts.refractionTitle, texts.incidenceTitle);
    const SineGraphTexts sineTexts{texts.indexPrefix + fmt(state.dataIndex(), texts.indexFormat),
                                   fitQualityText(fit, texts.indexFormat), texts.sinIncidenceTitle,
                                   texts.sinRefractionTitle};
    drawSineGraph(*analysis.canvas(), fit, style, sineTexts, residualsItem->isChecked());
    incref.setPicture(Picture::AngleGraph);
    analysis.setPicture(Picture::SineGraph);
    const QString source = historicalDataFlag && !Label3->text().isEmpty()
                               ? Label3->text()
                               : QStringLiteral("Typed by the pupil  Μετρήσεις του μαθητή");
    lastAnalysis_ =
        Analysed{fit, style, sineTexts, texts.indexFormat, source, {}, texts.refractionTitle, texts.incidenceTitle, {}};
    return true;
}

void Inpdat::analysisdata() { analyseCurrentPairs(); }

bool Inpdat::analyseCurrentPairs() {
    const auto pairs = currentPairs(false);
    if (!pairs) return false;
    AnalysisTexts texts{{},
                        QStringLiteral("REFRACTION INDEX Δείκτης Διάθλασης= "),
                        "0.000",
                        QStringLiteral("Sin(INCIDENCE Πρόσπτωσης)"),
                        QStringLiteral("Sin(REFRACTIONΔιάθλασης)"),
                        QStringLiteral("REFRACTION ANGLE Γωνία Διάθλασης"),
                        QStringLiteral("INCIDENCE ANGLE Γωνία Πρόσπτωσης")};
    // The set's colour and name, for the tables of Ptolemy, Al Haytham and
    // Newton; the pupil's data and Witelo's stay black.
    if (historicalDataFlag) {
        if (Ptolemy->isChecked() || ptolemy2->isChecked())
            texts.style = {palette::law::ptolemyTable, QStringLiteral("PTOLEMY Πτολεμαίος"), {}};
        else if (Alhazen->isChecked() || Alhazen2->isChecked())
            texts.style = {palette::law::alHaythamTable, QStringLiteral("Al Haytham"), {}};
        else if (Newt->isChecked() || newt2->isChecked())
            texts.style = {palette::law::newtonTable, QStringLiteral("Newton"), {}};
    }
    texts.style.colour = historicalDataFlag ? texts.style.colour : drawingColour_;
    return analyse(*pairs, texts);
}

void Inpdat::Command1_Click() {
    const auto pairs = currentPairs(!measuredSetInLists());
    if (!pairs) return;
    const AnalysisTexts texts{{drawingColour_, QString(), {}},
                              QStringLiteral("INDEX OF REFRACTION Δείκτης Διάθλασης= "),
                              "0.0000",
                              QStringLiteral("Sin(INCIDENCE Πρόσπτωσης)"),
                              QStringLiteral("Sin(REFRACTION Διάθλασης)"),
                              QStringLiteral("REFRACTION ANGLE Διάθλασης"),
                              QStringLiteral("INCIDENCE ANGLE Πρόσπτωσης")};
    if (analyse(*pairs, texts)) {
        form<Incref>().setTitle(QStringLiteral("REFRACTION ANGLE VS INCIDENCE ANGLE"));
        form<Analysis>().setTitle(QStringLiteral("SIN(REFRACTION) VS SIN(INCIDENCE)"));
    }
}

void Inpdat::residuals_Toggled() {
    // Redrawn at once when the sine graph shows the last analysis; otherwise
    // the choice waits for the next one.
    Analysis& analysis = form<Analysis>();
    if (!lastAnalysis_ || analysis.picture() != Picture::SineGraph || !analysis.isVisible()) return;
    drawSineGraph(*analysis.canvas(), lastAnalysis_->fit, lastAnalysis_->style, lastAnalysis_->sineTexts,
                  residualsItem->isChecked());
}

void Inpdat::loadTable(TableId id) {
    const history::HistoricalTable& table = history::historicalTable(id);
    historicalDataFlag = true;
    measuredSetShown_ = false;
    Analysis& analysis = form<Analysis>();
    Incref& incref = form<Incref>();
    analysis.setTitle(fromUtf8(table.analysisTitle));
    incref.setTitle(fromUtf8(table.increfTitle));
    analysis.hideText();
    for (QAction* item : {Newt, newt2, Alhazen, Alhazen2, Ptolemy, ptolemy2, Vitello_water, Vitello_Glass})
        item->setChecked(false);
    dataItem(id)->setChecked(true);
    analysis.canvas()->cls();
    analysis.setPicture(Picture::Nothing);

    std::vector<history::TypedRow> rows;
    for (std::size_t k = 0; k < table.incidence.size(); ++k)
        rows.push_back({history::shortestDecimal(table.incidence[k]), history::shortestDecimal(table.refraction[k])});
    showTable(fromUtf8(table.incidenceHeading), fromUtf8(table.refractionHeading), rows, fromUtf8(table.caption));
    showScreen(*this);
}

void Inpdat::showTable(const QString& incidenceHeading, const QString& refractionHeading,
                       const std::vector<history::TypedRow>& rows, const QString& caption) {
    List1->clear();
    List2->clear();
    List1->addItem(incidenceHeading);
    List2->addItem(refractionHeading);
    for (const history::TypedRow& row : rows) {
        List1->addItem(fromUtf8(row.incidence));
        List2->addItem(fromUtf8(row.refraction));
    }
    List1->show();
    List2->show();
    Label3->setText(caption);
    Label3->setAccessibleName(caption);
    Label3->show();
    analysisdata();
}

void Inpdat::Ptolemy_Click() { loadTable(TableId::Ptolemy); }
void Inpdat::ptolemy2_Click() { loadTable(TableId::ptolemy2); }
void Inpdat::Alhazen_Click() { loadTable(TableId::Alhazen); }
void Inpdat::Alhazen2_Click() { loadTable(TableId::Alhazen2); }
void Inpdat::Newt_Click() { loadTable(TableId::Newt); }
void Inpdat::newt2_Click() { loadTable(TableId::newt2); }
void Inpdat::Vitello_Glass_Click() { loadTable(TableId::Vitello_Glass); }
void Inpdat::Vitello_water_Click() { loadTable(TableId::Vitello_water); }
