#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <sys/stat.h>
#include <unistd.h>

#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "apparatus/alhaytham_screens.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "history/data_state.h"
#include "history/history_notes.h"
#include "history/inpdat_screen.h"
#include "semicircle/measurement_file.h"
#include "test_support.h"
#include "ui/forms.h"

namespace {

Inpdat& openData() {
    form<Diathlasimeleti>().Command2_Click();
    form<Incref>().resize(900, 560);
    form<Analysis>().resize(900, 560);
    return form<Inpdat>();
}

QLineEdit* cell(const Inpdat& d, const char* column, int row) {
    return named<QLineEdit>(d, QStringLiteral("%1_%2").arg(QLatin1String(column)).arg(row));
}
QAction* item(const Inpdat& d, const char* name) { return named<QAction>(d, name); }
bool shown(const Inpdat& d, const char* name) { return named(d, name)->isVisible(); }

QString joined(const Canvas& c) { return c.printedTexts().join('\n'); }

// Everything a refused action must leave as it was.
struct Pictures {
    QImage incref, analysis;
    QStringList increfTexts, analysisTexts;
    double dataIndex;
    bool operator==(const Pictures&) const = default;
};
Pictures pictures() {
    return {form<Incref>().canvas()->image(), form<Analysis>().canvas()->image(),
            form<Incref>().canvas()->printedTexts(), form<Analysis>().canvas()->printedTexts(),
            sharedState<DataState>().dataIndex()};
}

QStringList checkedItems(const Inpdat& d) {
    QStringList names;
    for (QAction* a : named<QMenu>(d, "Histoire")->actions())
        if (a->isChecked()) names << a->objectName();
    return names;
}

QStringList grid(const Inpdat& d) {
    QStringList cells;
    for (const history::TypedRow& row : d.typedRows())
        cells << QString::fromStdString(row.incidence) << QString::fromStdString(row.refraction);
    return cells;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

}  // namespace

class TestInpdatScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void keyMovesInTheGrid() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Ptolemy_Click();
        item(d, "Vitello_Glass")->setChecked(true);                // Home leaves Witelo's items alone
        auto key = [&d](const char* column, int row, Qt::Key k) {  // where the focus goes
            QTest::keyClick(cell(d, column, row), k);
            return d.focusWidget();
        };
        QCOMPARE(key("Text1", 13, Qt::Key_Down), cell(d, "Text1", 0));
        QCOMPARE(key("Text1", 0, Qt::Key_Up), cell(d, "Text1", 13));
        QCOMPARE(key("Text1", 4, Qt::Key_Return), cell(d, "Text1", 5));
        QVERIFY(key("Text1", 5, Qt::Key_Right) == cell(d, "Refr", 5) && item(d, "Ptolemy")->isChecked());
        QCOMPARE(key("Text1", 7, Qt::Key_Home), cell(d, "Text1", 0));
        QVERIFY(!item(d, "Ptolemy")->isChecked() && item(d, "Vitello_Glass")->isChecked());

        d.Ptolemy_Click();
        QCOMPARE(key("Refr", 0, Qt::Key_Up), cell(d, "Refr", 13));  // any key in the refraction column hides the table
        QVERIFY(!shown(d, "List1") && !shown(d, "Label3") && !item(d, "Ptolemy")->isChecked());
        QCOMPARE(key("Refr", 13, Qt::Key_Enter), cell(d, "Refr", 0));
        QCOMPARE(key("Refr", 6, Qt::Key_Left), cell(d, "Text1", 6));
        // Left and Right move the caret inside a box and cross to the other
        // column only from the box's inner edge.
        QLineEdit* incidence = cell(d, "Text1", 3);
        incidence->setFocus();
        QTest::keyClicks(incidence, "135");
        key("Text1", 3, Qt::Key_Left);
        key("Text1", 3, Qt::Key_Left);
        QTest::keyClicks(incidence, ".");
        key("Text1", 3, Qt::Key_Right);  // caret before the 5: stays in the box
        QVERIFY(incidence->text() == "1.35" && incidence->cursorPosition() == 3);
        key("Text1", 3, Qt::Key_Right);
        QCOMPARE(key("Text1", 3, Qt::Key_Right), cell(d, "Refr", 3));  // at the end: on to the refraction
        QTest::keyClicks(cell(d, "Refr", 3), "205");
        key("Refr", 3, Qt::Key_Left);
        QCOMPARE(key("Refr", 3, Qt::Key_Right), cell(d, "Refr", 3));
        cell(d, "Refr", 3)->setCursorPosition(0);
        QCOMPARE(key("Refr", 3, Qt::Key_Left), incidence);  // at the start: back to the incidence
        // Typing marks the row and hides a table.
        d.Ptolemy_Click();
        QTest::keyClicks(cell(d, "Text1", 2), "35");
        QCOMPARE(cell(d, "Text1", 2)->palette().color(QPalette::Base), QColor(255, 205, 205));
        QVERIFY(!shown(d, "List1"));
    }

    // One table end to end: lists, caption, the one checked item, both
    // graphs with the set's label and the index in three decimals.
    void loadingATable() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Ptolemy_Click();
        auto* list1 = named<QListWidget>(d, "List1");
        auto* list2 = named<QListWidget>(d, "List2");
        QVERIFY(d.historicalDataFlag && list1->isVisible() && shown(d, "Label3"));
        QVERIFY(list1->count() == 9 && list2->item(2)->text() == "13.5");
        QCOMPARE(checkedItems(d), QStringList{"Ptolemy"});
        QVERIFY(form<Incref>().isVisible() && form<Analysis>().isVisible());
        QVERIFY(joined(*form<Incref>().canvas()).contains("PTOLEMY Πτολεμαίος"));
        QVERIFY(joined(*form<Analysis>().canvas()).contains("REFRACTION INDEX Δείκτης Διάθλασης= 1.519"));
        QVERIFY(std::fabs(sharedState<DataState>().dataIndex() - 1.5195) < 1e-3);
        QCOMPARE(sharedState<DataState>().pairs().size(), std::size_t{8});
        QCOMPARE(form<Incref>().canvas()->pixelAt(30, 19.5), QColor(100, 0, 255));
        QCOMPARE(form<Incref>().canvas()->skippedOperations(), 0);

        const Pictures ptolemy = pictures();
        d.Alhazen_Click();
        QCOMPARE(checkedItems(d), QStringList{"Alhazen"});
        QCOMPARE(sharedState<DataState>().dataIndex(), ptolemy.dataIndex);
        QVERIFY(joined(*form<Incref>().canvas()).contains("Al Haytham"));
        d.Alhazen_Click();  // twice: the same lists, not doubled
        QCOMPARE(list1->count(), 9);

        // Witelo: plotted to 118° on a taller graph, fitted on six pairs,
        // drawn in black with no name.
        d.Vitello_Glass_Click();
        QVERIFY(std::fabs(sharedState<DataState>().dataIndex() - 0.873) < 1e-3);
        QCOMPARE(form<Incref>().canvas()->pixelAt(80, 118), QColor(Qt::black));
        d.klinoistoria_Click();
        QVERIFY(!d.historicalDataFlag && !list1->isVisible() && checkedItems(d).isEmpty());
    }

    // Nothing typed, or one pair, is refused; a law over one pair tells the
    // pupil two pairs are needed and opens no empty graph screen. A bad cell
    // is refused with a bilingual message naming the row, pictures and index
    // untouched. INITIAL hides the screen and its graphs; END ends.
    void typedAnalysisAndBadInput() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        QStringList& said = scope.dialogs().messages;
        d.Command1_Click();  // nothing typed
        d.showPairs({{"30", "20"}});
        scope.dialogs().answers = {"1.5"};
        d.Snell_2_Click();
        d.toentrito1_Click();
        d.pyknoareo_Click();
        QCOMPARE(said.size(), 4);
        for (int k = 1; k < 4; ++k) QVERIFY(said[k].contains("two pairs") && said[k].contains("δύο ζεύγη"));
        QVERIFY(!form<Analysis>().isVisible() && !form<Incref>().isVisible());

        d.showPairs({{"10", "6.6"}, {"20", "13.2"}, {"30", ""}, {"40", "25.4"}});
        d.Command1_Click();
        QVERIFY(joined(*form<Analysis>().canvas())
                    .contains(QRegularExpression("INDEX OF REFRACTION Δείκτης Διάθλασης= 1\\.\\d{4}$",
                                                 QRegularExpression::MultilineOption)));
        const Pictures good = pictures();
        for (const QString& bad : {QStringLiteral("abc"), QStringLiteral("1e999")}) {
            cell(d, "Refr", 1)->setText(bad);
            said.clear();
            d.Command1_Click();
            QVERIFY(said.size() == 1 && said[0].contains("Row 2") && said[0].contains("Γραμμή 2"));
            QVERIFY(pictures() == good);
        }
        d.showPairs({{"30", "20"}});  // one pair: no line through it
        d.Command1_Click();
        d.analysisdata();
        QVERIFY(said.size() == 3 && pictures() == good);
        d.Command2_Click();
        QVERIFY(!d.isVisible() && !form<Incref>().isVisible() && form<Diathlasimeleti>().isVisible());
        d.Command3_Click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    // Under the index: its standard uncertainty and r²; two pairs say that
    // no uncertainty can be given. The residual bars come and go with their
    // menu item, and only over the sine graph.
    void fitQualityAndResiduals() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        Canvas& sine = *form<Analysis>().canvas();
        d.Ptolemy_Click();
        QVERIFY(sine.printedTexts().contains(QStringLiteral("n = 1.519 ± 0.026, r² = 0.9982")));
        // The pair farthest from the line: its bar, ten times as long as its
        // distance, stands on the line.
        const history::SineFit& fit = d.lastAnalysis()->fit;
        const double a = fit.line->slope, b = fit.line->intercept;
        auto distance = [&](std::size_t k) { return std::fabs(fit.sinRefraction[k] - a * fit.sinIncidence[k] - b); };
        std::size_t far = 0;
        for (std::size_t k = 0; k < fit.sinIncidence.size(); ++k)
            if (distance(k) > distance(far)) far = k;
        const double x = fit.sinIncidence[far], onLine = a * x + b, residual = fit.sinRefraction[far] - onLine;
        QVERIFY(std::fabs(residual) > 0.003 && sine.pixelAt(x, onLine + 5.0 * residual) != QColor(220, 0, 0));
        item(d, "residuals")->trigger();
        QCOMPARE(sine.pixelAt(x, onLine + 5.0 * residual), QColor(220, 0, 0));
        const QString barsNote = QStringLiteral("residuals ×10  υπόλοιπα ×10");
        d.Newt_Click();  // kept for the next analysis
        QVERIFY(sine.printedTexts().contains(barsNote));
        item(d, "residuals")->trigger();
        QVERIFY(!sine.printedTexts().contains(barsNote));
        // Over a note's drawing they wait for the next analysis.
        d.showNote(0);
        item(d, "residuals")->trigger();
        QVERIFY(!sine.printedTexts().contains(barsNote));

        d.showPairs({{"20", "13"}, {"40", "25"}});
        d.Command1_Click();
        QVERIFY(joined(sine).contains("two points, no uncertainty can be given") && !joined(sine).contains("±"));

        // Every note shows its text; one without a figure, shown after one
        // with a figure, leaves the drawing empty instead of under the new
        // title.
        const auto& notes = history::historyNotes();
        Analysis& analysis = form<Analysis>();
        for (std::size_t k = 0; k < notes.size(); ++k) {
            item(d, notes[k].itemName.c_str())->trigger();
            QVERIFY(analysis.textShown() && analysis.isVisible() && analysis.title() == notes[k].title.c_str());
            if (notes[k].figure == history::NoteFigure::None) {
                QVERIFY2(analysis.canvas()->recordedOperations() == 0, notes[k].title.c_str());
                d.showNote(4);  // Hero, with its figure, before the next
                QVERIFY(joined(*analysis.canvas()).contains("with least possible length με το ελάχιστο δυνατό μήκος"));
                QCOMPARE(analysis.canvas()->skippedOperations(), 0);
            }
        }
        d.empirikos_Click();
        QVERIFY(!analysis.textShown());
    }

    // Laws over the data; after the instruments' rules page, without ERASE,
    // the data are drawn first.
    void lawsOverTheData() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Kepler_Click();  // nothing to fit yet
        QCOMPARE(scope.dialogs().messages.size(), 1);
        d.Ptolemy_Click();
        Canvas& inc = *form<Incref>().canvas();
        showAlHaythamRules(false, false);
        QCOMPARE(form<Incref>().picture(), Picture::Diagram);
        d.Kepler_Click();
        QVERIFY(form<Incref>().picture() == Picture::AngleGraph && joined(inc).contains("PTOLEMY Πτολεμαίος"));
        QVERIFY(joined(inc).contains("Kepler's Model for Refraction Μοντέλο Kepler για διάθλαση= 0.60Πρόσπτωση"));
        QCOMPARE(inc.pixelAt(60, 9.5), QColor(255, 255, 0));  // the label's ground

        // Snell with a typed index: a bad answer is refused, Cancel is silent.
        const Pictures before = pictures();
        scope.dialogs().messages.clear();
        scope.dialogs().answers = {"0", ""};
        d.Snell_2_Click();
        d.Snell_2_Click();
        QVERIFY(scope.dialogs().messages.size() == 1 && pictures() == before);
        scope.dialogs().answers = {"1,5"};
        d.Snell_2_Click();
        QCOMPARE(inc.pixelAt(60, 35.26), QColor(155, 39, 110));  // the curve at 60°
        // Without ERASE the picture is drawn again with both laws on it.
        QVERIFY(joined(inc).contains("n=1.50") && joined(inc).contains("Kepler's Model for Refraction"));
        QCOMPARE(d.lastAnalysis()->laws.size(), 2);
        // The legend names both laws, covers no data point, label or axis
        // text, and the printout states the fitted index.
        QVERIFY(inc.summary().contains(QStringLiteral("Legend: Kepler k = 0.60; Snell n = 1.50.")));
        const auto drawn = inc.drawnTexts();
        for (const char* row : {"Kepler k = 0.60", "Snell n = 1.50"}) {
            const auto legend = std::find_if(drawn.begin(), drawn.end(), [&](const auto& t) { return t.text == row; });
            QVERIFY(legend != drawn.end());
            for (const auto& t : drawn) QVERIFY(&t == &*legend || !t.box.intersects(legend->box));
            for (const auto& disc : inc.drawnDiscs()) QVERIFY(!disc.box.intersects(legend->box));
        }
        QCOMPARE(inc.printNote(), QStringLiteral("n = ") + fmt(sharedState<DataState>().dataIndex(), "0.000"));

        // ERASE: the data are drawn again before the next law.
        named<QCheckBox>(d, "svinograf")->setChecked(true);
        d.toentrito1_Click();
        QVERIFY(!joined(inc).contains("n=1.50") && joined(inc).contains("REFRACTION = 2/3 INCIDENCE"));
        QCOMPARE(d.lastAnalysis()->laws, QStringList{"REFRACTION = 2/3 INCIDENCE Διάθλασης=2/3Πρόσπτωσης"});
        d.pyknoareo_Click();
        // Too long for the room beside the line in the smallest type: the
        // Greek goes onto a line of its own.
        QVERIFY(joined(inc).contains("REFRACTION = 3/2 INCIDENCE\nδιάθλασης=3/2πρόσπτωσης"));

        // Witelo: Snell from the data, with the denser medium's own index.
        d.Vitello_Glass_Click();
        d.Snell_1_Click();
        QVERIFY(joined(inc).contains("n=" + QString::number(1.0 / sharedState<DataState>().dataIndex(), 'f', 2)));
        QCOMPARE(inc.skippedOperations(), 0);
    }

    // The expected values fill the grid's first rows. The pupil's table as
    // a file: a saved grid opens back exactly; a loaded table saves as its
    // pairs; a bad file and a FIFO change nothing.
    void expectedValuesAndTableFiles() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        Inpdat& d = openData();
        d.showPairs({{"5", "3"}});
        cell(d, "Text1", 13)->setText("77");
        d.theoretikes_Click();  // Cancel: the grid stays
        QCOMPARE(cell(d, "Text1", 0)->text(), QStringLiteral("5"));
        scope.dialogs().answers = {"1.5"};
        d.theoretikes_Click();
        QVERIFY(cell(d, "Text1", 2)->text() == "30" && cell(d, "Refr", 2)->text() == "19.471221");
        QVERIFY(cell(d, "Text1", 9)->text().isEmpty() && cell(d, "Text1", 13)->text() == "77");
        d.Command1_Click();
        QVERIFY(joined(*form<Analysis>().canvas()).contains("= 1.5000"));

        d.showPairs({{"10", "6.6"}, {"20", "13.25"}, {"30", ""}, {"45.5", "28.125"}});
        const QStringList before = grid(d);
        const QString path = dir.filePath("mine.csv");
        scope.dialogs().saveFiles = {path};
        d.saveTable();
        QCOMPARE(readAll(path), QByteArray("incidence,refraction\n10,6.6\n20,13.25\n30,\n45.5,28.125\n"));
        d.showPairs({});
        scope.dialogs().openFiles = {path};
        d.openTable();
        QVERIFY(grid(d) == before && scope.dialogs().messages.isEmpty());
        d.Newt_Click();
        QVERIFY(d.saveTableFile(dir.filePath("newton.csv")));
        QVERIFY(readAll(dir.filePath("newton.csv")).startsWith("incidence,refraction\n10,6.433\n"));

        QFile bad(dir.filePath("bad.csv"));
        QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("i;r\n10;7\n20;x\n") == 14);
        bad.close();
        const QStringList held = grid(d);
        QVERIFY(!d.openTableFile(dir.filePath("bad.csv")));
        QVERIFY(scope.dialogs().messages.last().contains("line 3") &&
                scope.dialogs().messages.last().contains("γραμμή 3"));
        const QString pipe = dir.filePath("pipe.csv");  // would wait for a writer for ever
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        ::alarm(20);  // a hang ends the test instead of the test run
        QVERIFY(!d.openTableFile(pipe));
        ::alarm(0);
        QVERIFY(scope.dialogs().messages.last().contains("pipe") && grid(d) == held);

        // The bench's file read back here: the last set-up, one by position,
        // and every refusal with a message and the shared values untouched.
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        auto& said = scope.dialogs().messages;
        said.clear();
        scope.dialogs().prompts.clear();
        d.readStoredSetups();
        QVERIFY(said.size() == 1 && said[0].contains("fylaxi") && said[0].contains("αρχείο"));
        // Something there that cannot be read is not "missing": the reason
        // is told, and RECALL does not ask for a position first.
        QVERIFY(QDir().mkdir(kMeasurementFileName));
        said.clear();
        d.recallSetup();
        QVERIFY(said.size() == 1 && said[0].contains("Is a directory") && scope.dialogs().prompts.isEmpty());
        QVERIFY(QDir().rmdir(kMeasurementFileName));

        std::vector<MeasurementRecord> records(3);
        for (int k = 0; k < 3; ++k) records[k] = {10.0 + k, 1.0 + k, -2.0 - k, 5.0 * k, 1.5, 0.0f, 0.6667f};
        QVERIFY(writeMeasurementFile(kMeasurementFileName, records).ok);
        d.showPairs({{"10", "6.6"}, {"20", "13.2"}, {"40", "25.4"}});
        said.clear();
        d.empiricalFit();
        const Canvas& fileView = *named<Canvas>(d, "fileView");
        QCOMPARE(said.size(), 2);
        QVERIFY(said[0].startsWith("alfa=0.") && said[1].startsWith("vita="));
        QVERIFY(joined(fileView).contains("h = 12.00"));  // the last record
        QVERIFY(joined(fileView).contains("Position=3") && joined(fileView).contains("Angle  = 10.00"));

        scope.dialogs().answers = {"1"};
        d.recallSetup();
        QVERIFY(joined(fileView).contains("xc = 1.00"));
        said.clear();
        scope.dialogs().answers = {"0", "99", "1.5", "abc", ""};
        for (int k = 0; k < 5; ++k) d.recallSetup();
        QCOMPARE(said.size(), 4);
        QVERIFY(joined(fileView).contains("xc = 1.00"));

        // A damaged record: a message, never a NaN on the screen.
        records[2].h = std::nan("");
        QVERIFY(writeMeasurementFile(kMeasurementFileName, records).ok);
        said.clear();
        d.readStoredSetups();
        QCOMPARE(said.size(), 1);
        QVERIFY(!joined(fileView).contains("NaN") && joined(fileView).contains("h = 10.00"));  // as position 1 left it
        QDir::setCurrent(previous);
    }
};

QTEST_MAIN(TestInpdatScreen)
#include "test_inpdat_screen.moc"
