#include "semicircle/list_of_data_screen.h"

#include <QFile>
#include <QGridLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "core/outside_files.h"
#include "semicircle/bench_routes.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

namespace {

const QString kTitle = QStringLiteral("LIST OF DATA  Λίστα δεδομένων");
const QString kTotalReflection = QStringLiteral("total reflection  ολική ανάκλαση");
const QString kNoMeasurement = QStringLiteral("no measurement  καμία μέτρηση");
const QString kMissed = QStringLiteral("misses the block  εκτός ημικυκλίου");

const BenchState& bench() { return sharedState<BenchState>(); }

QString readingText(const SeriesReading& r) {
    switch (r.reading) {
    case RayReading::Measured: return r.refractionDegrees ? fmt(*r.refractionDegrees, "0.00") : kNoMeasurement;
    case RayReading::TotalReflection: return kTotalReflection;
    case RayReading::Missed: return kMissed;
    case RayReading::NoMeasurement: break;
    }
    return kNoMeasurement;
}

QString sourceText(RaySource source) {
    switch (source) {
    case RaySource::Typed: return QStringLiteral("typed  δοσμένη");
    case RaySource::Mouse: return QStringLiteral("mouse  ποντίκι");
    case RaySource::Sweep: return QStringLiteral("RAYS 0-90°");
    case RaySource::AllRandom: return QStringLiteral("ALL RANDOM");
    case RaySource::Comparison: return QStringLiteral("COMPARISONS");
    }
    return {};
}

// A value that gives the block's index away, or "?" for the mystery block.
QString indexText(double value, const char* format) {
    return bench().mysteryOn() ? QStringLiteral("?") : fmt(value, format);
}

QString countText(const std::vector<SeriesReading>& readings, std::size_t measured) {
    if (readings.empty())
        return QStringLiteral(
            "No measurements yet: on the bench press RAYS FOR incidence = 0° to 90° "
            "or GIVE INCIDENCE ANGLE.\n"
            "Καμία μέτρηση ακόμη: στον πάγκο πάτησε Ακτίνες για γωνίες πρόσπτωσης 0-90° "
            "ή Δώσε γωνία πρόσπτωσης.");
    return QStringLiteral("%1 rays, %2 measured  %1 ακτίνες, %2 μετρήσεις").arg(readings.size()).arg(measured);
}

// The block the series was measured with. The data screen fits
// n = sin i / sin r, so with the curved face towards the light (glass into
// air at the flat face) the pupil finds 1/n, as the bench itself measures.
QString blockText(const std::vector<SeriesReading>& readings) {
    if (readings.empty()) return {};
    const SeriesReading& first = readings.front();
    const bool same = std::all_of(readings.begin(), readings.end(), [&](const SeriesReading& r) {
        return r.index == first.index && r.direction == first.direction;
    });
    if (!same)
        return QStringLiteral(
            "The index or the direction changed during the series: "
            "each expected angle is for the block its ray met.\n"
            "Ο δείκτης ή η κατεύθυνση άλλαξε: κάθε αναμενόμενη γωνία είναι για το δικό της ημικύκλιο.");
    const QString n = QStringLiteral("n = ") + indexText(first.index, "0.00");
    if (first.direction == 2)
        return n + QStringLiteral(", light from glass into air: the analysis gives 1/n = ") +
               indexText(1.0 / first.index, "0.0000") + QStringLiteral("\nφως από γυαλί σε αέρα: η ανάλυση δίνει 1/n");
    return n + QStringLiteral(", light from air into glass  φως από αέρα σε γυαλί");
}

}  // namespace

ListOfData::ListOfData() {
    setObjectName(QStringLiteral("List_of_Data"));
    setWindowTitle(kTitle);
    setFont(roleFont(FontRole::Caption, 10.0));

    Label1 = new QLabel;
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setFont(roleFont(FontRole::Caption, 10.0, true));
    Label1->setWordWrap(true);
    Label2 = new QLabel;
    Label2->setObjectName(QStringLiteral("Label2"));
    Label2->setWordWrap(true);
    createTable();
    createButtons();

    // Two rows of buttons keep the list narrow enough for a small screen.
    auto* buttons = new QGridLayout;
    int place = 0;
    for (CaptionButton* b : {Command1, Command2, Command3, saveCsv, clear}) {
        buttons->addWidget(b, place / 3, place % 3);
        ++place;
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(Label2);
    layout->addWidget(List1, 1);
    layout->addLayout(buttons);

    QWidget* order[] = {List1, Command1, Command2, saveCsv, clear, Command3};
    for (std::size_t k = 0; k + 1 < std::size(order); ++k) setTabOrder(order[k], order[k + 1]);

    connect(Command1, &QPushButton::clicked, this, &ListOfData::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &ListOfData::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &ListOfData::Command3_Click);
    connect(saveCsv, &QPushButton::clicked, this, &ListOfData::saveCsv_Click);
    connect(clear, &QPushButton::clicked, this, &ListOfData::clear_Click);
    // The list shows the bench's rows as they come, and "?" for a mystery block.
    connect(&sharedState<BenchState>(), &BenchState::seriesChanged, this, &ListOfData::fillTable);
    connect(&sharedState<BenchState>(), &BenchState::changed, this, &ListOfData::fillTable);

    resize(760, 520);
    fillTable();
}

void ListOfData::createTable() {
    List1 = new QTableWidget(0, ColumnCount);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(
        QStringLiteral("Incidence and refraction angles of the bench  Γωνίες πρόσπτωσης και διάθλασης του πάγκου"));
    List1->setHorizontalHeaderLabels({QStringLiteral("i°  INCIDENCE\nΠρόσπτωση"),
                                      QStringLiteral("r°  REFRACTION (measured)\nΔιάθλαση (μέτρηση)"),
                                      QStringLiteral("n = sin i / sin r\nδείκτης"), QStringLiteral("MADE BY\nΤρόπος"),
                                      QStringLiteral("r°  EXPECTED (Snell)\nΑναμενόμενη (Snell)")});
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List1->setSelectionBehavior(QAbstractItemView::SelectRows);
    List1->setTabKeyNavigation(false);  // Tab leaves the table for the buttons
    List1->verticalHeader()->setVisible(false);
    List1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // "total reflection  ολική ανάκλαση" is read whole.
    List1->horizontalHeader()->setSectionResizeMode(RefractionColumn, QHeaderView::ResizeToContents);
    List1->setColumnHidden(ExpectedColumn, true);
}

void ListOfData::createButtons() {
    const QFont buttonFont = roleFont(FontRole::Caption, 10.0, true);
    auto button = [&](const QString& caption, const char* name) {
        auto* b = new CaptionButton(caption);
        b->setObjectName(QString::fromLatin1(name));
        b->setFont(buttonFont);
        return b;
    };
    Command1 = button(QStringLiteral("EXPECTED Αναμενόμενες τιμές"), "Command1");
    Command2 = button(QStringLiteral("TRANSFER OF DATA  METAΦOPA ΔEΔOMENΩN"), "Command2");
    Command3 = button(QStringLiteral("BACK ΠΙΣΩ"), "Command3");
    saveCsv = button(QStringLiteral("SAVE AS CSV  Αποθήκευση CSV"), "saveCsv");
    clear = button(QStringLiteral("CLEAR  Καθάρισμα"), "clear");
}

std::optional<double> ListOfData::fittedIndex() const {
    return ::fittedIndex(roundedForTable(bench().series().measuredPairs()));
}

void ListOfData::fillTable() {
    const std::vector<SeriesReading>& readings = bench().series().readings();
    const std::size_t measured = bench().series().measuredPairs().size();
    Label1->setText(countText(readings, measured));
    QString block = blockText(readings);
    if (const std::optional<double> n = fittedIndex())
        block += QStringLiteral(
                     "\nIndex from the measured pairs, fitted as on the data screen: n = %1\n"
                     "Δείκτης από τα μετρημένα ζεύγη, όπως στην οθόνη δεδομένων: n = %1")
                     .arg(indexText(*n, "0.0000"));
    Label2->setText(block);
    Label2->setVisible(!readings.empty());
    for (QLabel* label : {Label1, Label2}) label->setAccessibleName(label->text());

    List1->setRowCount(static_cast<int>(readings.size()));
    for (std::size_t k = 0; k < readings.size(); ++k) {
        const SeriesReading& r = readings[k];
        const std::optional<double> expected = expectedRefractionDegrees(r);
        const std::optional<double> n = r.pairIndex();
        const QString cells[] = {fmt(r.incidenceDegrees, "0.0"), readingText(r),
                                 n ? indexText(*n, "0.0000") : QStringLiteral("-"), sourceText(r.source),
                                 expected ? fmt(*expected, "0.00") : kTotalReflection};
        for (int column = 0; column < ColumnCount; ++column) {
            QTableWidgetItem* item = List1->item(static_cast<int>(k), column);
            if (!item) {
                item = new QTableWidgetItem;
                item->setTextAlignment(Qt::AlignCenter);
                List1->setItem(static_cast<int>(k), column, item);
            }
            item->setText(cells[column]);
        }
    }
    // The expected angles would give a mystery block's index away.
    List1->setColumnHidden(ExpectedColumn, !expectedShown_ || bench().mysteryOn());
}

void ListOfData::Command1_Click() {
    expectedShown_ = true;
    fillTable();
}

void ListOfData::Command2_Click() {
    const std::vector<MeasuredPair> pairs = bench().series().measuredPairs();
    if (pairs.empty()) {
        messageBox(QStringLiteral("There is no measured pair to transfer: rays that were totally reflected or "
                                  "left no ray give no refraction angle.\n"
                                  "Δεν υπάρχει μετρημένο ζεύγος για μεταφορά."),
                   kTitle);
        return;
    }

    benchRoutes().transferPairs(roundedForTable(pairs));
}

void ListOfData::Command3_Click() {
    hide();
    if (Forms::instance().exists<Hmiky>() && form<Hmiky>().isVisible()) showScreen(form<Hmiky>());
}

void ListOfData::clear_Click() { sharedState<BenchState>().clearSeries(); }

void ListOfData::saveCsv_Click() {
    const QString path =
        saveFileDialog(QStringLiteral("Save table  Αποθήκευση πίνακα"),
                       QStringLiteral("CSV table (*.csv);;All files (*)"), QStringLiteral("bench.csv"));
    if (!path.isEmpty()) saveCsvFile(path);
}

bool ListOfData::saveCsvFile(const QString& path) {
    const std::vector<MeasuredPair> pairs = bench().series().measuredPairs();
    if (pairs.empty()) {
        messageBox(QStringLiteral("There is no measured pair to save.\nΔεν υπάρχει μετρημένο ζεύγος για αποθήκευση."),
                   kTitle);
        return false;
    }
    const FileWriteResult written = replaceFile(std::filesystem::path(QFile::encodeName(path).toStdString()),
                                                dataScreenCsv(roundedForTable(pairs)));
    if (!written.ok) {
        messageBox(QStringLiteral("The table could not be saved (%1); nothing was changed.\n"
                                  "Ο πίνακας δεν αποθηκεύτηκε· δεν άλλαξε τίποτα.")
                       .arg(QString::fromStdString(written.reason)),
                   kTitle);
        return false;
    }
    return true;
}
