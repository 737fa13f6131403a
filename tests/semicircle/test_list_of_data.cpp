#include <QtTest>

#include <cmath>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/list_of_data_screen.h"
#include "test_support.h"

namespace {

Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    return form<Hmiky>();
}

ListOfData& openList(Hmiky& bench) {
    bench.listOfData->click();
    return form<ListOfData>();
}

QStringList column(const ListOfData& list, int c) {
    QStringList cells;
    for (int row = 0; row < list.List1->rowCount(); ++row) cells << list.List1->item(row, c)->text();
    return cells;
}

}  // namespace

class TestListOfData : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() {
        module1() = SharedState{};
        module1().pi = 4.0 * std::atan(1.0);
    }

    // The list follows the bench: a sweep, then the typed angles since the
    // last erase, then nothing after an erase.
    void listsTheBenchsLastSeries() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();  // flat face towards the light
        bench.Command4_Click();
        ListOfData& list = openList(bench);
        QVERIFY(list.isVisible());
        QCOMPARE(column(list, ListOfData::IncidenceColumn),
                 (QStringList{"0.6", "10.0", "20.0", "30.0", "40.0", "50.0", "60.0", "70.0", "80.0"}));
        QCOMPARE(column(list, ListOfData::RefractionColumn)[3], QStringLiteral("19.47"));
        QVERIFY(list.Label1->text().startsWith("RAYS FOR incidence"));
        // The expected angles only when asked for; a centred block agrees.
        QVERIFY(list.List1->isColumnHidden(ListOfData::ExpectedColumn));
        list.Command1->click();
        QVERIFY(!list.List1->isColumnHidden(ListOfData::ExpectedColumn));
        QCOMPARE(column(list, ListOfData::ExpectedColumn), column(list, ListOfData::RefractionColumn));

        // Typed angles replace the sweep in the open list, one by one.
        bench.Indexn->setValue(20);
        scope.dialogs().answers = {"30", "-45"};
        bench.Command1_Click();
        bench.Command1_Click();
        QCOMPARE(column(list, ListOfData::IncidenceColumn), (QStringList{"30.0", "45.0"}));
        QCOMPARE(column(list, ListOfData::RefractionColumn), (QStringList{"14.48", "20.70"}));
        QVERIFY(list.Label1->text().startsWith("GIVEN INCIDENCE ANGLES") && list.Label2->text().startsWith("n = 2.00"));

        bench.Command2_Click();  // erase
        QCOMPARE(list.List1->rowCount(), 0);
        QVERIFY(list.Label1->text().startsWith("No measurements yet"));
    }

    // The transfer makes the bench's pairs the pupil's typed data, and the
    // data screen's analysis finds the index the bench measured.
    void transferFillsTheGridForTheAnalysis() {
        ScreenTestScope scope;
        Inpdat& data = form<Inpdat>();
        named<QLineEdit>(data, "Text1_12")->setText("77");
        named<QLineEdit>(data, "Refr_12")->setText("33");
        data.Ptolemy_Click();  // a historical table is on the screen
        data.hide();

        Hmiky& bench = openBench();
        bench.Raref_Click();  // curved face first: glass into air at the flat face
        bench.Command4_Click();
        const double benchIndex = module1().measuredIndex;
        ListOfData& list = openList(bench);
        QCOMPARE(column(list, ListOfData::RefractionColumn).count("total reflection  ολική ανάκλαση"), 4);
        list.Command2->click();

        QVERIFY(data.isVisible() && !data.historicalDataFlag && named<QListWidget>(data, "List1")->isHidden() &&
                !named<QAction>(data, "Ptolemy")->isChecked());
        const auto rows = data.typedRows();
        QVERIFY(rows[0].incidence == "0.6" && rows[4].incidence == "40.0" && rows[3].refraction == "48.59");
        for (int k = 5; k < Inpdat::kRows; ++k)  // row 12 held a pair before
            QVERIFY(rows[k].incidence.empty() && rows[k].refraction.empty());
        data.Command1_Click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        QVERIFY(std::fabs(benchIndex - 1.0 / 1.5) < 1e-9 &&
                std::fabs(sharedState<DataState>().dataIndex() - benchIndex) < 2e-3);
    }

    // More pairs than rows: the first fourteen, and the pupil is told. No
    // pair at all: told, and the grid is left alone.
    void transferLimits() {
        ScreenTestScope scope;
        Inpdat& data = form<Inpdat>();
        named<QLineEdit>(data, "Text1_0")->setText("5");
        named<QLineEdit>(data, "Refr_0")->setText("3");
        Hmiky& bench = openBench();
        bench.Raref_Click();
        scope.dialogs().answers = {"60", "75"};  // beyond the critical angle of n = 1.5
        bench.Command1_Click();
        bench.Command1_Click();
        ListOfData& list = openList(bench);
        list.Command2->click();
        QCOMPARE(scope.dialogs().messages.size(), 1);
        QVERIFY(data.typedRows()[0].incidence == "5" && data.typedRows()[0].refraction == "3" && !data.isVisible());

        bench.moredens_Click();
        for (int k = 1; k <= 16; ++k) scope.dialogs().answers.push_back(QString::number(k * 5));
        for (int k = 1; k <= 16; ++k) bench.Command1_Click();
        QCOMPARE(list.List1->rowCount(), 18);  // the two reflected rays stay listed
        list.Command2->click();
        QVERIFY(data.typedRows()[0].incidence == "5.0" && data.typedRows()[13].incidence == "70.0");
        QCOMPARE(scope.dialogs().messages.size(), 2);
        QVERIFY(scope.dialogs().messages.last().contains("14") && scope.dialogs().messages.last().contains("2 were"));
    }

    void backAndTheMainMenuHideTheList() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        ListOfData& list = openList(bench);
        QVERIFY(list.isVisible());
        bench.Command3_Click();
        QVERIFY(!list.isVisible() && form<Diathlasimeleti>().isVisible());

        openList(openBench());
        form<Diathlasimeleti>().Command2_Click();  // to the data screen
        QVERIFY(!list.isVisible());
    }
};

QTEST_MAIN(TestListOfData)
#include "test_list_of_data.moc"
