#include "semicircle/list_of_data_screen.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "semicircle/bench_routes.h"
#include "semicircle/hmiky_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

namespace {

const QString kTitle = QStringLiteral("LIST OF DATA  Λίστα δεδομένων");
const QString kTotalReflection = QStringLiteral("total reflection  ολική ανάκλαση");
const QString kNoMeasurement = QStringLiteral("no measurement  καμία μέτρηση");

QString readingText(const SeriesReading& r) {
    switch (r.reading) {
    case RayReading::Measured: return r.refractionDegrees ? fmt(*r.refractionDegrees, "0.00") : kNoMeasurement;
    case RayReading::TotalReflection: return kTotalReflection;
    case RayReading::NoMeasurement: break;
    }
    return kNoMeasurement;
}

QString seriesName(BenchSeries::Kind kind) {
    switch (kind) {
    case BenchSeries::Kind::IncidenceSweep:
        return QStringLiteral("RAYS FOR incidence = 0° to 90°  Ακτίνες για γωνίες πρόσπτωσης 0-90°");
    case BenchSeries::Kind::GivenAngles: return QStringLiteral("GIVEN INCIDENCE ANGLES  Δοσμένες γωνίες πρόσπτωσης");
    case BenchSeries::Kind::None: break;
    }
    return QStringLiteral(
        "No measurements yet: on the bench press RAYS FOR incidence = 0° to 90° "
        "or GIVE INCIDENCE ANGLE.\n"
        "Καμία μέτρηση ακόμη: στον πάγκο πάτησε Ακτίνες για γωνίες πρόσπτωσης 0-90° "
        "ή Δώσε γωνία πρόσπτωσης.");
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
    const QString n = QStringLiteral("n = ") + fmt(first.index, "0.00");
    if (first.direction == 2)
        return n + QStringLiteral(", light from glass into air: the analysis gives 1/n = ") +
               fmt(1.0 / first.index, "0.0000") + QStringLiteral("\nφως από γυαλί σε αέρα: η ανάλυση δίνει 1/n");
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

    auto* buttons = new QHBoxLayout;
    for (CaptionButton* b : {Command1, Command2, Command3}) buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(Label2);
    layout->addWidget(List1, 1);
    layout->addLayout(buttons);

    setTabOrder(List1, Command1);
    setTabOrder(Command1, Command2);
    setTabOrder(Command2, Command3);

    connect(Command1, &QPushButton::clicked, this, &ListOfData::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &ListOfData::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &ListOfData::Command3_Click);

    resize(620, 520);
    fillTable();
}

void ListOfData::createTable() {
    List1 = new QTableWidget(0, 3);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(
        QStringLiteral("Incidence and refraction angles of the bench  Γωνίες πρόσπτωσης και διάθλασης του πάγκου"));
    List1->setHorizontalHeaderLabels({QStringLiteral("i°  INCIDENCE\nΠρόσπτωση"),
                                      QStringLiteral("r°  REFRACTION (measured)\nΔιάθλαση (μέτρηση)"),
                                      QStringLiteral("r°  EXPECTED (Snell)\nΑναμενόμενη (Snell)")});
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List1->setSelectionBehavior(QAbstractItemView::SelectRows);
    List1->setTabKeyNavigation(false);  // Tab leaves the table for the buttons
    List1->verticalHeader()->setVisible(false);
    List1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
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
}

void ListOfData::showSeries(const BenchSeries& series) {
    series_ = series;
    fillTable();
}

void ListOfData::fillTable() {
    const std::vector<SeriesReading>& readings = series_.readings();
    Label1->setText(seriesName(series_.kind()));
    Label2->setText(blockText(readings));
    Label2->setVisible(!readings.empty());
    for (QLabel* label : {Label1, Label2}) label->setAccessibleName(label->text());

    List1->setRowCount(static_cast<int>(readings.size()));
    for (std::size_t k = 0; k < readings.size(); ++k) {
        const SeriesReading& r = readings[k];
        const std::optional<double> expected = expectedRefractionDegrees(r);
        const QString cells[] = {fmt(r.incidenceDegrees, "0.0"), readingText(r),
                                 expected ? fmt(*expected, "0.00") : kTotalReflection};
        for (int column = 0; column < 3; ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setTextAlignment(Qt::AlignCenter);
            List1->setItem(static_cast<int>(k), column, item);
        }
    }
    List1->setColumnHidden(ExpectedColumn, !expectedShown_);
}

void ListOfData::Command1_Click() {
    expectedShown_ = true;
    fillTable();
}

void ListOfData::Command2_Click() {
    const std::vector<MeasuredPair> pairs = series_.measuredPairs();
    if (pairs.empty()) {
        messageBox(QStringLiteral("There is no measured pair to transfer: rays that were totally reflected or "
                                  "left no ray give no refraction angle.\n"
                                  "Δεν υπάρχει μετρημένο ζεύγος για μεταφορά."),
                   kTitle);
        return;
    }

    const std::size_t count = benchRoutes().transferPairs(pairs);
    if (pairs.size() > count)
        messageBox(QStringLiteral("The data table has %1 rows: the first %1 measured pairs were transferred, "
                                  "%2 were left out.\n"
                                  "Ο πίνακας έχει %1 γραμμές: μεταφέρθηκαν τα πρώτα %1 ζεύγη, %2 έμειναν έξω.")
                       .arg(count)
                       .arg(pairs.size() - count),
                   kTitle);
}

void ListOfData::Command3_Click() {
    hide();
    if (Forms::instance().exists<Hmiky>() && form<Hmiky>().isVisible()) showScreen(form<Hmiky>());
}
