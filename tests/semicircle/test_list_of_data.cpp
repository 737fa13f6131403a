#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/list_of_data_screen.h"
#include "test_support.h"
#include "ui/forms.h"

namespace {

Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    return form<Hmiky>();
}

ListOfData& openList(Hmiky& bench) {
    bench.findChild<QPushButton*>("listOfData")->click();
    return form<ListOfData>();
}

const QTableWidget& table(const ListOfData& list) { return *list.findChild<QTableWidget*>("List1"); }
QString label(const ListOfData& list) { return list.findChild<QLabel*>("Label1")->text(); }

QStringList column(const ListOfData& list, int c) {
    QStringList cells;
    for (int row = 0; row < table(list).rowCount(); ++row) cells << table(list).item(row, c)->text();
    return cells;
}

}  // namespace

class TestListOfData : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // Every ray the bench traces into the block is a row, whatever made it,
    // until the list is cleared; erase and the bench's other redraws leave
    // it. Back and the main menu hide it.
    void listsEveryRayOfTheBench() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();  // flat face towards the light
        bench.Command4_Click();
        ListOfData& list = openList(bench);
        QVERIFY(list.isVisible() && label(list).startsWith("9 rays, 9 measured"));
        QCOMPARE(column(list, ListOfData::IncidenceColumn),
                 (QStringList{"0.6", "10.0", "20.0", "30.0", "40.0", "50.0", "60.0", "70.0", "80.0"}));
        QVERIFY(column(list, ListOfData::RefractionColumn)[3] == "19.47" &&
                column(list, ListOfData::IndexColumn)[3] == "1.5000");
        // The expected angles only when asked for; a centred block agrees.
        QVERIFY(table(list).isColumnHidden(ListOfData::ExpectedColumn));
        list.Command1_Click();
        QVERIFY(!table(list).isColumnHidden(ListOfData::ExpectedColumn));
        QCOMPARE(column(list, ListOfData::ExpectedColumn), column(list, ListOfData::RefractionColumn));

        // Typed angles, a ray aimed with the mouse, the random and the
        // comparison experiments each add their rows, and say how they were made.
        bench.findChild<QScrollBar*>("Indexn")->setValue(20);
        scope.dialogs().answers = {"30", "-45"};
        bench.Command1_Click();
        bench.Command1_Click();
        QCOMPARE(column(list, ListOfData::RefractionColumn).mid(9), (QStringList{"14.48", "20.70"}));
        bench.Command2_Click();  // erase: the drawing goes, the rows stay
        bench.Form_MouseDown(120, 90);
        bench.Form_MouseUp(120, 90);
        bench.allrandom_Click();
        bench.sygr_Click();
        const QStringList made = column(list, ListOfData::SourceColumn);
        QVERIFY(made.size() == 9 + 2 + 1 + 9 + 9 && made[10].startsWith("typed") && made[11].startsWith("mouse") &&
                made[12] == "ALL RANDOM" && made.last() == "COMPARISONS");
        QCOMPARE(column(list, ListOfData::IncidenceColumn)[11], QStringLiteral("36.9"));  // atan(90/120)
        // A ray that passes the block by is listed as such.
        bench.findChild<QScrollBar*>("hvalue")->setValue(-250);
        bench.findChild<QScrollBar*>("HScroll1")->setValue(10);
        scope.dialogs().answers = {"10"};
        bench.Command1_Click();
        QVERIFY(column(list, ListOfData::RefractionColumn).last().startsWith("misses the block") &&
                column(list, ListOfData::IndexColumn).last() == "-");

        list.clear_Click();
        QVERIFY(table(list).rowCount() == 0 && label(list).startsWith("No measurements yet"));
        bench.Command3_Click();
        QVERIFY(!list.isVisible() && form<Diathlasimeleti>().isVisible());
        openList(openBench());
        form<Diathlasimeleti>().Command2_Click();  // to the data screen
        QVERIFY(!list.isVisible());
    }

    // The list's CSV is the data screen's own table: opened there and
    // analysed it gives the index the list shows. Nothing to save is told.
    void savesTheDataScreensTable() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        ListOfData& list = openList(bench);
        list.clear_Click();
        QTemporaryDir dir;
        const QString path = dir.filePath("bench.csv");
        QVERIFY(!list.saveCsvFile(path) && !QFile::exists(path) && scope.dialogs().messages.size() == 1);
        bench.Raref_Click();  // glass into air: the rays beyond the critical angle are left out
        bench.findChild<QScrollBar*>("xcoor")->setValue(15);  // off-centre: the pairs scatter
        bench.Command4_Click();
        bench.moredens_Click();
        bench.allrandom_Click();
        bench.Command4_Click();
        const std::optional<double> listed = list.fittedIndex();
        QVERIFY(listed && list.saveCsvFile(path));
        QVERIFY(list.findChild<QLabel*>("Label2")->text().contains(fmt(*listed, "0.0000")));
        // More pairs than the grid's rows: the file holds them all, and the
        // data screen opens them into its lists and analyses them at once.
        Inpdat& data = form<Inpdat>();
        const std::size_t measured = sharedState<BenchState>().series().measuredPairs().size();
        QVERIFY(measured > std::size_t(Inpdat::kRows) && data.openTableFile(path));
        QCOMPARE(named<QListWidget>(data, "List1")->count(), int(measured) + 1);  // after its heading
        QVERIFY(std::fabs(sharedState<DataState>().dataIndex() - *listed) < 1e-4);
        sharedState<DataState>().setDataIndex(0.0);
        data.Command1_Click();  // Data Analysis takes the lists while they show the set
        QVERIFY(std::fabs(sharedState<DataState>().dataIndex() - *listed) < 1e-4);
        QCOMPARE(scope.dialogs().messages.size(), 1);
    }

    // The mystery block hides its index everywhere the bench or the list
    // would show it, while the angles still work; CHECK MY n tells the true
    // index and the difference, the lab report states it, and leaving the
    // mystery block brings back the index that was set.
    void mysteryBlock() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.findChild<QScrollBar*>("Indexn")->setValue(17);
        ListOfData& list = openList(bench);
        bench.findChild<QAction*>("mystery")->trigger();
        const double hidden = sharedState<BenchState>().block().index;
        QVERIFY(hidden >= 1.3 && hidden <= 2.0 && std::fabs(hidden * 100 - std::round(hidden * 100)) < 1e-9);
        QVERIFY(!bench.findChild<QScrollBar*>("Indexn")->isEnabled());
        bench.Command4_Click();
        list.Command1_Click();  // the expected angles would tell it too
        bench.sygr_Click();     // and so would Snell's angles in the comparison
        QStringList shown = bench.drawing().printedTexts();
        scope.dialogs().answers = {"30"};
        bench.Command1_Click();
        shown << bench.drawing().printedTexts();
        shown << bench.drawing().description() << bench.drawing().printNote()
              << bench.findChild<QLabel*>("Indexnt")->text()
              << bench.findChild<QScrollBar*>("Indexn")->accessibleDescription() << label(list)
              << list.findChild<QLabel*>("Label2")->text() << column(list, ListOfData::IndexColumn)
              << column(list, ListOfData::ExpectedColumn);
        const QString all = shown.join('\n');
        for (double n : {hidden, 1.0 / hidden, *sharedState<BenchState>().series().readings()[3].pairIndex()})
            for (const char* format : {"0.00", "0.000", "0.0000"}) {
                const QRegularExpression digits("(?<![0-9.])" + QRegularExpression::escape(fmt(n, format)) +
                                                "(?![0-9])");
                QVERIFY2(!all.contains(digits), qPrintable(fmt(n, format)));
            }
        QVERIFY(all.contains("n = ?") && shown.contains("i = 30.0°") &&
                table(list).isColumnHidden(ListOfData::ExpectedColumn));
        bench.fylaxe_Click();  // the file would hold the index
        QVERIFY(scope.dialogs().messages.last().contains("mystery"));

        scope.dialogs().answers = {"abc", QString::number(hidden * 1.02, 'f', 6)};
        bench.checkN_Click();
        bench.checkN_Click();
        QVERIFY(bilingual(scope.dialogs().messages[scope.dialogs().messages.size() - 2]));
        QCOMPARE(scope.dialogs().messages.last().section('\n', 0, 0), "The true index is " + fmt(hidden, "0.00") +
                                                                          ". Yours, " + fmt(hidden * 1.02, "0.000") +
                                                                          ", differs from it by +2.0 %.");

        if (!QStandardPaths::findExecutable("pdftotext").isEmpty()) {
            list.Command2_Click();
            Inpdat& data = form<Inpdat>();
            data.Command1_Click();
            QTemporaryDir dir;
            QVERIFY(data.writeLabReport(dir.filePath("report.pdf")));
            QProcess text;
            text.start("pdftotext", {dir.filePath("report.pdf"), "-"});
            QVERIFY(text.waitForFinished(20000));
            QVERIFY(QString::fromUtf8(text.readAllStandardOutput())
                        .simplified()
                        .contains("true πραγματικός " + fmt(hidden, "0.00") + ", difference διαφορά +2.0 %"));
        }
        bench.findChild<QAction*>("mystery")->trigger();
        QVERIFY(sharedState<BenchState>().block().index == 1.7 && bench.findChild<QScrollBar*>("Indexn")->isEnabled());
        QCOMPARE(bench.findChild<QLabel*>("Indexnt")->text(), QStringLiteral("Δείκτης  n = 1.70"));
    }

    // The transfer makes the bench's pairs the pupil's typed data, and the
    // data screen's analysis finds the index the bench measured. No pair at
    // all: told, the grid left alone. More pairs than rows: the first
    // fourteen, and the pupil is told.
    void transferFillsTheGridForTheAnalysis() {
        ScreenTestScope scope;
        Inpdat& data = form<Inpdat>();
        named<QLineEdit>(data, "Text1_12")->setText("77");
        data.Ptolemy_Click();  // a historical table is on the screen
        data.hide();
        Hmiky& bench = openBench();
        bench.Raref_Click();
        scope.dialogs().answers = {"60", "75"};  // beyond the critical angle of n = 1.5
        bench.Command1_Click();
        bench.Command1_Click();
        ListOfData& list = openList(bench);
        list.Command2_Click();
        QVERIFY(scope.dialogs().messages.size() == 1 && data.typedRows()[12].incidence == "77" && !data.isVisible());

        bench.moredens_Click();
        for (int k = 1; k <= 16; ++k) scope.dialogs().answers.push_back(QString::number(k * 5));
        for (int k = 1; k <= 16; ++k) bench.Command1_Click();
        QCOMPARE(table(list).rowCount(), 18);  // the two reflected rays stay listed
        list.Command2_Click();  // sixteen pairs: more than the grid holds, so all go to the lists
        const QListWidget* incidences = named<QListWidget>(data, "List1");
        QVERIFY(data.isVisible() && data.historicalDataFlag && !incidences->isHidden() &&
                !named<QAction>(data, "Ptolemy")->isChecked());
        QVERIFY(incidences->count() == 17 && incidences->item(1)->text() == "5.0" &&
                incidences->item(16)->text() == "80.0" && data.typedRows()[0].incidence.empty());
        QVERIFY(named<QLabel>(data, "Label3")->text().contains("16 rays"));
        QVERIFY(std::fabs(sharedState<DataState>().dataIndex() - 1.5) < 1e-3);  // analysed at once
        QCOMPARE(scope.dialogs().messages.size(), 1);

        bench.Raref_Click();  // curved face first: glass into air at the flat face
        list.clear_Click();
        bench.Command4_Click();
        const double benchIndex = sharedState<BenchState>().measuredIndex();
        QCOMPARE(column(list, ListOfData::RefractionColumn).count("total reflection  ολική ανάκλαση"), 4);
        list.Command2_Click();
        const auto rows = data.typedRows();
        QVERIFY(rows[0].incidence == "0.6" && rows[4].incidence == "40.0" && rows[3].refraction == "48.59");
        QVERIFY(incidences->isHidden() && !data.historicalDataFlag);  // the grid again, the lists gone
        for (int k = 5; k < Inpdat::kRows; ++k)
            QVERIFY(rows[k].incidence.empty() && rows[k].refraction.empty());
        data.Command1_Click();
        QCOMPARE(scope.dialogs().messages.size(), 1);
        QVERIFY(std::fabs(benchIndex - 1.0 / 1.5) < 1e-9 &&
                std::fabs(sharedState<DataState>().dataIndex() - benchIndex) < 2e-3);
    }
};

QTEST_MAIN(TestListOfData)
#include "test_list_of_data.moc"
