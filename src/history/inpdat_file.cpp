// The data screen's side of the bench's measurement file, and the history
// notes.
#include <QLayout>

#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/number_input.h"
#include "history/data_plots.h"
#include "history/inpdat_screen.h"
#include "history/note_figures.h"
#include "semicircle/measurement_file.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/window_placement.h"

namespace {

// Set-ups of the bench lie within a few hundred units and degrees; numbers
// far beyond that come from a damaged or foreign file.
constexpr double kLargestStoredValue = 1e6;

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

const QString kNoFile = QStringLiteral(
    "There is no measurement file \"fylaxi\" here yet: on the bench (SEMICIRCLE) create it first.  "
    "Δεν υπάρχει ακόμη αρχείο μετρήσεων \"fylaxi\": δημιούργησέ το πρώτα στον πάγκο (SEMICIRCLE).");
const QString kUnreadable = QStringLiteral(
    "The measurement file \"fylaxi\" cannot be read: %1.  "
    "Το αρχείο μετρήσεων \"fylaxi\" δεν μπορεί να διαβαστεί.");
const QString kDamaged = QStringLiteral(
    "The measurement file holds a damaged record at position %1; nothing was changed.  "
    "Το αρχείο μετρήσεων έχει κατεστραμμένη εγγραφή στη θέση %1· δεν άλλαξε τίποτα.");

bool plausible(const MeasurementRecord& r) {
    for (double v : {r.h, r.xc, r.yc, r.angle})
        if (!std::isfinite(v) || std::fabs(v) > kLargestStoredValue) return false;
    return true;
}

QStringList setupLines(const MeasurementRecord& r) {
    return {QStringLiteral("h = ") + fmt(r.h, "0.00"), QStringLiteral("Angle  = ") + fmt(r.angle, "0.00"),
            QStringLiteral("xc = ") + fmt(r.xc, "0.00"), QStringLiteral("yc  = ") + fmt(r.yc, "0.00")};
}

}  // namespace

void Inpdat::printFileLines(const QStringList& lines, const std::vector<QColor>& colours) {
    Canvas& c = *fileView;
    c.cls();
    c.scale(0, 0, 100, 100);
    c.setFontRole(FontRole::Caption);
    c.setFontBold(true);
    c.setFontSize(10);
    c.setCurrentX(2);
    c.setCurrentY(4);
    for (int k = 0; k < lines.size(); ++k) {
        c.setForeColor(k < static_cast<int>(colours.size()) ? colours[static_cast<std::size_t>(k)] : Qt::black);
        c.setCurrentX(2);
        c.print(lines[k]);
    }
    c.setFontBold(false);
    c.setForeColor(Qt::black);
}

// Says why the file cannot be read, if it cannot: missing is one thing,
// present but unreadable (a folder, a pipe, no permission) another.
bool Inpdat::measurementFileReadable() {
    const MeasurementFileState state = measurementFileState(kMeasurementFileName);
    if (state.readable) return true;
    messageBox(state.missing ? kNoFile : kUnreadable.arg(fromUtf8(state.reason)));
    return false;
}

void Inpdat::readStoredSetups() {
    if (!measurementFileReadable()) return;
    const auto last = readLastMeasurementRecord(kMeasurementFileName);
    if (!last) {
        messageBox(kNoFile);  // emptied or removed since
        return;
    }
    if (!plausible(last->record)) {
        messageBox(kDamaged.arg(last->position));
        return;
    }
    QStringList lines{QStringLiteral("Position=") + fmt(static_cast<double>(last->position), "0")};
    lines += setupLines(last->record);
    printFileLines(lines, {palette::data::fileSetup, palette::data::fileSetup, palette::data::fileAngles,
                           palette::data::fileSetup, palette::data::fileSetup});
}

void Inpdat::recallSetup() {
    if (!measurementFileReadable()) return;
    const long long positions = recallPositionCount(kMeasurementFileName);
    if (positions == 0) {
        messageBox(kNoFile);
        return;
    }
    const QString answer = inputBox(QStringLiteral("GIVE POSITION NUMBERΔώσε αριθμό θέσης"));
    if (answer.trimmed().isEmpty()) return;  // Cancel
    const auto value = parseTypedNumber(answer.toStdString());
    if (!value || *value != std::floor(*value) || *value < 1.0 || *value > static_cast<double>(positions)) {
        messageBox(
            QStringLiteral("Give a whole position number from 1 to %1.  Δώσε έναν ακέραιο αριθμό θέσης από 1 έως %1.")
                .arg(positions));
        return;
    }
    const auto position = static_cast<long long>(*value);
    const auto record = recallMeasurementRecord(kMeasurementFileName, position);
    if (!record) {
        messageBox(kNoFile);
        return;
    }
    if (!plausible(*record)) {
        messageBox(kDamaged.arg(position));
        return;
    }
    printFileLines(setupLines(*record), {Qt::black, Qt::black, Qt::black, Qt::black});
}

void Inpdat::empiricalFit() {
    const history::TypedReading reading = history::readTypedPairs(typedRows());
    if (reading.error) {
        // The same message as the analysis gives for the row.
        currentPairs(true);
        return;
    }
    const history::SineFit fit = history::fitSines(reading.pairs, false);
    if (fit.line) {
        messageBox(QStringLiteral("alfa=") + fmt(fit.line->slope, "0.00"));
        messageBox(QStringLiteral("vita=") + fmt(fit.line->intercept, "0.00"));
    } else {
        messageBox(QStringLiteral(
            "At least two typed pairs with different incidence angles are needed for the fit.  "
            "Χρειάζονται τουλάχιστον δύο ζεύγη στον πίνακα με διαφορετικές γωνίες πρόσπτωσης για την προσαρμογή."));
    }
    readStoredSetups();
}

void Inpdat::showNote(int noteIndex) {
    const auto& notes = history::historyNotes();
    if (noteIndex < 0 || noteIndex >= static_cast<int>(notes.size())) return;
    const history::HistoryNote& note = notes[static_cast<std::size_t>(noteIndex)];
    Analysis& analysis = form<Analysis>();
    analysis.setTitle(fromUtf8(note.title));
    analysis.showText(fromUtf8(history::noteText(note)), 13.0);
    placeGraphScreensBeside(*this);
    showOnScreen(analysis, false);
    analysis.raise();
    // The figure is drawn at the size the canvas has beside the text. A
    // note without one leaves the drawing empty: whatever was there belongs
    // to another title.
    if (note.figure != history::NoteFigure::None) {
        if (analysis.layout()) analysis.layout()->activate();
        drawNoteFigure(*analysis.canvas(), note.figure);
        analysis.setPicture(Picture::NoteFigure);
    } else {
        analysis.canvas()->cls();
        analysis.setPicture(Picture::Nothing);
    }
}
