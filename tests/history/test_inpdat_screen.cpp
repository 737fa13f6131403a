#include <QtTest>

#include <QDir>
#include <QTemporaryDir>

#include <cmath>

#include "analysis/graph_screens.h"
#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "history/history_notes.h"
#include "history/inpdat_screen.h"
#include "semicircle/measurement_file.h"
#include "test_support.h"

namespace {

Inpdat& openData() {
    form<Diathlasimeleti>().Command2_Click();
    Inpdat& data = form<Inpdat>();
    form<Incref>().resize(900, 560);
    form<Analysis>().resize(900, 560);
    return data;
}

void typeRows(Inpdat& data, const std::vector<std::pair<QString, QString>>& rows) {
    for (std::size_t k = 0; k < rows.size(); ++k) {
        data.Text1[k]->setText(rows[k].first);
        data.Refr[k]->setText(rows[k].second);
    }
}

QString joined(const Canvas& c) { return c.printedTexts().join('\n'); }

// Everything a refused action must leave as it was.
struct Pictures {
    QImage incref, analysis;
    QStringList increfTexts, analysisTexts;
    double dataIndex;
    bool operator==(const Pictures&) const = default;
};
Pictures pictures() {
    return {form<Incref>().canvas()->image(), form<Analysis>().canvas()->image(), form<Incref>().canvas()->printedTexts(),
            form<Analysis>().canvas()->printedTexts(), module1().dataIndex};
}

QStringList checkedItems(const Inpdat& d) {
    QStringList names;
    for (QAction* a : d.Histoire->actions())
        if (a->isChecked()) names << a->objectName();
    return names;
}

}  // namespace

class TestInpdatScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() {
        module1() = SharedState{};
        module1().pi = 4.0 * std::atan(1.0);
    }

    void controlsAndMenus() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        QVERIFY(d.isVisible() && d.Text1[13] && d.Refr[13]);
        QCOMPARE(d.Command4->text(), QStringLiteral("INTERPRETATION  OF lAW Ερμηνεία του νόμου"));
        QCOMPARE(d.svinograf->text(), QStringLiteral("ERASE Σβήσε γρα φικές"));
        QStringList histoire;
        for (QAction* a : d.Histoire->actions()) histoire << a->objectName();
        QCOMPARE(histoire, QStringList({"newt2", "Newt", "Alhazen2", "Alhazen", "ptolemy2", "ptolemeosprosarmogidedo",
                                        "Ptolemy", "Vitello_water", "Vitello_Glass", "klinoistoria"}));
        QStringList models;
        for (QAction* a : d.Models->actions())
            if (!a->isSeparator()) models << a->text();
        QCOMPARE(models, QStringList({"Kepler'S", "Snell law", "EMPIRICAL", "REFRACTION ANGLE=3/2 INCIDENCE ANGLE",
                                      "REFRACTION ANGLE=2/3 INCIDENCE ANGLE", "EXPECTED",
                                      "RESIDUALS ON THE SINE GRAPH  Υπόλοιπα στο γράφημα ημιτόνων"}));
        QCOMPARE(d.History_notes->actions().size(), 10);
        for (QLineEdit* box : d.Text1) QVERIFY(box->accessibleName().contains("Γωνία πρόσπτωσης"));
        // INITIAL hides the screen and its graphs; END ends the program.
        d.Command1_Click();  // nothing typed: a message, no graphs
        QCOMPARE(scope.dialogs().messages.size(), 1);
        d.Command2_Click();
        QVERIFY(!d.isVisible() && !form<Incref>().isVisible() && form<Diathlasimeleti>().isVisible());
        d.Command3_Click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    void keyMovesInTheGrid() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Ptolemy_Click();
        d.Vitello_Glass->setChecked(true);  // Home leaves Witelo's items alone
        auto key = [](QWidget* w, Qt::Key k) { QTest::keyClick(w, k); };
        key(d.Text1[13], Qt::Key_Down);
        QCOMPARE(d.focusWidget(), d.Text1[0]);
        key(d.Text1[0], Qt::Key_Up);
        QCOMPARE(d.focusWidget(), d.Text1[13]);
        key(d.Text1[4], Qt::Key_Return);
        QCOMPARE(d.focusWidget(), d.Text1[5]);
        key(d.Text1[5], Qt::Key_Right);
        QCOMPARE(d.focusWidget(), d.Refr[5]);
        QVERIFY(d.Ptolemy->isChecked());  // Right alone does not unload the table
        key(d.Text1[7], Qt::Key_Home);
        QCOMPARE(d.focusWidget(), d.Text1[0]);
        QVERIFY(!d.Ptolemy->isChecked() && d.Vitello_Glass->isChecked());

        d.Ptolemy_Click();
        QVERIFY(d.List1->isVisible());
        key(d.Refr[0], Qt::Key_Up);  // any key in the refraction column hides the table
        QCOMPARE(d.focusWidget(), d.Refr[13]);
        QVERIFY(!d.List1->isVisible() && !d.Label3->isVisible() && !d.Ptolemy->isChecked());
        key(d.Refr[13], Qt::Key_Enter);
        QCOMPARE(d.focusWidget(), d.Refr[0]);
        key(d.Refr[6], Qt::Key_Left);
        QCOMPARE(d.focusWidget(), d.Text1[6]);
        key(d.Refr[6], Qt::Key_Home);
        QCOMPARE(d.focusWidget(), d.Refr[0]);
        // Left and Right move the caret inside a box and cross to the other
        // column only from the box's inner edge.
        d.Text1[3]->setFocus();
        QTest::keyClicks(d.Text1[3], "135");
        key(d.Text1[3], Qt::Key_Left);
        key(d.Text1[3], Qt::Key_Left);
        QTest::keyClicks(d.Text1[3], ".");
        QCOMPARE(d.Text1[3]->text(), QStringLiteral("1.35"));
        key(d.Text1[3], Qt::Key_Right);  // caret before the 5: stays in the box
        QCOMPARE(d.Text1[3]->cursorPosition(), 3);
        key(d.Text1[3], Qt::Key_Right);
        key(d.Text1[3], Qt::Key_Right);  // at the end: on to the refraction
        QCOMPARE(d.focusWidget(), d.Refr[3]);
        QTest::keyClicks(d.Refr[3], "205");
        key(d.Refr[3], Qt::Key_Left);
        key(d.Refr[3], Qt::Key_Left);
        QTest::keyClicks(d.Refr[3], ".");
        key(d.Refr[3], Qt::Key_Right);
        QCOMPARE(d.Refr[3]->text(), QStringLiteral("2.05"));
        QCOMPARE(d.focusWidget(), d.Refr[3]);
        d.Refr[3]->setCursorPosition(0);
        key(d.Refr[3], Qt::Key_Left);  // at the start: back to the incidence
        QCOMPARE(d.focusWidget(), d.Text1[3]);
        d.Text1[3]->clear();
        d.Refr[3]->clear();
        // Typed keys still type; typing marks the row and hides a table.
        d.Ptolemy_Click();
        QTest::keyClicks(d.Text1[2], "35");
        QCOMPARE(d.Text1[2]->text(), QStringLiteral("35"));
        QCOMPARE(d.Text1[2]->palette().color(QPalette::Base), QColor(255, 205, 205));
        QVERIFY(!d.List1->isVisible());
    }

    // One table end to end: lists, caption, the one checked item, both
    // graphs with the set's label and the index in three decimals.
    void loadingATable() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Ptolemy_Click();
        QVERIFY(d.historicalDataFlag && d.List1->isVisible() && d.Label3->isVisible());
        QCOMPARE(d.List1->count(), 9);
        QCOMPARE(d.List1->item(0)->text(), QStringLiteral("INCIDENCE Πρόσπτωση "));
        QCOMPARE(d.List2->item(2)->text(), QStringLiteral("13.5"));
        QCOMPARE(d.Label3->text(), QStringLiteral("PTOLEMY'S DATA FOR GLASS Δεδομένα Πτολεμαίου Γυαλιού"));
        QCOMPARE(checkedItems(d), QStringList{"Ptolemy"});
        QCOMPARE(form<Analysis>().title(), QStringLiteral("SIN(REFRACTION) VS SIN(INCIDENCE)"));
        QVERIFY(form<Incref>().isVisible() && form<Analysis>().isVisible());
        QVERIFY(joined(*form<Incref>().canvas()).contains("PTOLEMY Πτολεμαίος"));
        QVERIFY(joined(*form<Analysis>().canvas()).contains("REFRACTION INDEX Δείκτης Διάθλασης= 1.519"));
        QVERIFY(std::fabs(module1().dataIndex - 1.5195) < 1e-3);
        // A point of the table is drawn in Ptolemy's colour at (30°, 19.5°).
        QCOMPARE(form<Incref>().canvas()->pixelAt(30, 19.5), QColor(100, 0, 255));
        QCOMPARE(form<Incref>().canvas()->skippedOperations(), 0);

        const Pictures ptolemy = pictures();
        const QStringList lists = {d.List1->item(3)->text(), d.List2->item(3)->text()};
        d.Alhazen_Click();
        QCOMPARE(checkedItems(d), QStringList{"Alhazen"});
        QCOMPARE(module1().dataIndex, ptolemy.dataIndex);
        QCOMPARE(QStringList({d.List1->item(3)->text(), d.List2->item(3)->text()}), lists);
        QVERIFY(joined(*form<Incref>().canvas()).contains("Al Haytham"));
        d.Alhazen_Click();  // twice: the same lists, not doubled
        QCOMPARE(d.List1->count(), 9);

        // Witelo: plotted to 118° on a taller graph, fitted on six pairs,
        // drawn in black with no name.
        d.Vitello_Glass_Click();
        QVERIFY(std::fabs(module1().dataIndex - 0.873) < 1e-3);
        QCOMPARE(form<Incref>().canvas()->pixelAt(80, 118), QColor(Qt::black));
        d.klinoistoria_Click();
        QVERIFY(!d.historicalDataFlag && !d.List1->isVisible() && checkedItems(d).isEmpty());
    }

    void typedAnalysisAndBadInput() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        typeRows(d, {{"10", "6.6"}, {"20", "13.2"}, {"30", ""}, {"40", "25.4"}});
        d.Command1_Click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        QVERIFY(joined(*form<Analysis>().canvas()).contains(QRegularExpression("INDEX OF REFRACTION Δείκτης Διάθλασης= 1\\.\\d{4}$",
                                                                            QRegularExpression::MultilineOption)));
        const Pictures good = pictures();

        // Each refused: a bilingual message, pictures and index untouched.
        const std::string digits(400, '7');
        for (const QString& bad : {QStringLiteral("abc"), QStringLiteral("1,5.2"), QStringLiteral("1,,5"), QStringLiteral("1e999"),
                                   QStringLiteral("nan"), QString::fromStdString(digits)}) {
            d.Refr[1]->setText(bad);
            scope.dialogs().messages.clear();
            d.Command1_Click();
            QCOMPARE(scope.dialogs().messages.size(), 1);
            QVERIFY(scope.dialogs().messages[0].contains("Row 2") && scope.dialogs().messages[0].contains("Γραμμή 2"));
            QVERIFY(pictures() == good);
        }
        for (QLineEdit* box : d.Text1) box->clear();
        typeRows(d, {{"30", "20"}});  // one pair: no line through it
        scope.dialogs().messages.clear();
        d.Command1_Click();
        d.analysisdata();
        QCOMPARE(scope.dialogs().messages.size(), 2);
        QVERIFY(pictures() == good);

        // Decimal commas, as Greek pupils write them, give the same analysis
        // as points.
        typeRows(d, {{"10", "6.6"}, {"20", "13.2"}, {"40", "25.4"}});
        d.Command1_Click();
        const QStringList withPoints = form<Analysis>().canvas()->printedTexts();
        typeRows(d, {{"10", "6,6"}, {"20", "13,2"}, {"40", "25,4"}});
        scope.dialogs().messages.clear();
        d.Command1_Click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        QCOMPARE(form<Analysis>().canvas()->printedTexts(), withPoints);
    }

    // Under the index: its standard uncertainty and r², each table's own
    // (the figures themselves are checked against an independent fit in
    // test_fit_statistics); two pairs say that no uncertainty can be given.
    // The residual bars come and go with their menu item.
    void fitQualityAndResiduals() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        Canvas& sine = *form<Analysis>().canvas();
        for (QAction* table : {d.Ptolemy, d.newt2, d.Vitello_water}) {
            table->trigger();
            const history::SineFit& fit = d.lastAnalysis()->fit;
            const QString expected = QStringLiteral("n = %1 ± %2, r² = %3")
                                         .arg(*fit.index, 0, 'f', 3)
                                         .arg(*fit.statistics.indexError, 0, 'f', 3)
                                         .arg(*fit.statistics.rSquared, 0, 'f', 4);
            QVERIFY2(sine.printedTexts().contains(expected), qPrintable(expected));
        }
        d.Ptolemy->trigger();
        QVERIFY(sine.printedTexts().contains(QStringLiteral("n = 1.519 ± 0.026, r² = 0.9982")));

        // The pair farthest from the line: its bar, ten times as long as its
        // distance, stands on the line.
        const history::SineFit& fit = d.lastAnalysis()->fit;
        const double a = static_cast<double>(fit.line->slope), b = static_cast<double>(fit.line->intercept);
        std::size_t far = 0;
        for (std::size_t k = 0; k < fit.sinIncidence.size(); ++k)
            if (std::fabs(fit.sinRefraction[k] - a * fit.sinIncidence[k] - b) >
                std::fabs(fit.sinRefraction[far] - a * fit.sinIncidence[far] - b))
                far = k;
        const double x = fit.sinIncidence[far];
        const double onLine = a * x + b;
        const double residual = fit.sinRefraction[far] - onLine;
        QVERIFY(std::fabs(residual) > 0.003);
        const QColor bar(220, 0, 0);
        QVERIFY(sine.pixelAt(x, onLine + 5.0 * residual) != bar);
        d.residualsItem->trigger();
        QCOMPARE(sine.pixelAt(x, onLine + 5.0 * residual), bar);
        QVERIFY(sine.printedTexts().contains(QStringLiteral("residuals ×10  υπόλοιπα ×10")));
        d.Newt->trigger();  // kept for the next analysis
        QVERIFY(sine.printedTexts().contains(QStringLiteral("residuals ×10  υπόλοιπα ×10")));
        d.residualsItem->trigger();
        QVERIFY(!sine.printedTexts().contains(QStringLiteral("residuals ×10  υπόλοιπα ×10")));

        typeRows(d, {{"20", "13"}, {"40", "25"}});
        d.Command1_Click();
        QVERIFY(joined(sine).contains("two points, no uncertainty can be given") &&
                joined(sine).contains("δεν ορίζεται αβεβαιότητα"));
        QVERIFY(!joined(sine).contains("±"));
    }

    // A law chosen over a single typed pair: the pupil is told that two
    // pairs are needed, and no empty graph screen opens.
    void lawOverOnePair() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        typeRows(d, {{"30", "20"}});
        scope.dialogs().answers = {"1.5"};
        d.Snell_2_Click();
        d.toentrito1_Click();
        d.pyknoareo_Click();
        QCOMPARE(scope.dialogs().messages.size(), 3);
        for (const QString& m : scope.dialogs().messages)
            QVERIFY(m.contains("two pairs") && m.contains("δύο ζεύγη"));
        QVERIFY(!form<Analysis>().isVisible() && !form<Incref>().isVisible());
    }

    void lawsOverTheData() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Kepler_Click();  // nothing to fit yet
        QCOMPARE(scope.dialogs().messages.size(), 1);
        d.Ptolemy_Click();
        Canvas& inc = *form<Incref>().canvas();
        d.Kepler_Click();
        QCOMPARE(form<Incref>().title(), QStringLiteral("REFRACTION ANGLE VS INCIDENCE  ANGLE "));
        QVERIFY(joined(inc).contains("Kepler's Model for Refraction Μοντέλο Kepler για διάθλαση= 0.60Πρόσπτωση"));
        QCOMPARE(inc.pixelAt(60, 9.5), QColor(255, 255, 0));  // the label's ground

        // Snell with a typed index: bad answers are refused, Cancel is silent.
        const Pictures before = pictures();
        scope.dialogs().messages.clear();
        scope.dialogs().answers = {"0", "-1.5", "abc", "1,5.0", "", "1e999", "1e7"};
        for (int k = 0; k < 7; ++k) d.Snell_2_Click();
        QCOMPARE(scope.dialogs().messages.size(), 6);
        QVERIFY(scope.dialogs().messages.last().contains("between 0.01 and 100"));
        QCOMPARE(scope.dialogs().prompts.front(), QStringLiteral("INDEX OF REFRACTION δείκτης διάθλασης?"));
        QVERIFY(pictures() == before);
        scope.dialogs().answers = {"1,5"};
        d.Snell_2_Click();
        QVERIFY(joined(inc).contains("n=1.50"));
        // The curve at 60° lies at r = 35.26°.
        QCOMPARE(inc.pixelAt(60, 35.26), QColor(155, 39, 110));
        // Without ERASE the picture is drawn again with both laws on it.
        QVERIFY(joined(inc).contains("Kepler's Model for Refraction"));
        QCOMPARE(d.lastAnalysis()->laws.size(), 2);
        QCOMPARE(d.lastAnalysis()->figures.size(), std::size_t{2});

        // ERASE: the data are drawn again before the next law.
        d.svinograf->setChecked(true);
        d.toentrito1_Click();
        QVERIFY(!joined(inc).contains("n=1.50") && joined(inc).contains("REFRACTION = 2/3 INCIDENCE"));
        QCOMPARE(d.lastAnalysis()->laws, QStringList{"REFRACTION = 2/3 INCIDENCE Διάθλασης=2/3Πρόσπτωσης"});
        d.pyknoareo_Click();
        QCOMPARE(form<Incref>().title(), QStringLiteral("REFRACTION  ANGLE VS INCIDENCE ANGLE"));
        // Too long for the room beside the line in the smallest type: the
        // Greek goes onto a line of its own.
        QVERIFY(joined(inc).contains("REFRACTION = 3/2 INCIDENCE\nδιάθλασης=3/2πρόσπτωσης"));

        // Witelo: Snell from the data stops at the critical angle.
        d.Vitello_Glass_Click();
        d.Snell_1_Click();
        const double n = 1.0 / module1().dataIndex;
        const double critical = std::asin(1.0 / n) * 180.0 / M_PI;
        QVERIFY(joined(inc).contains("n=" + QString::number(n, 'f', 2)));
        QCOMPARE(inc.skippedOperations(), 0);
        QVERIFY(critical > 55.0 && critical < 65.0);
    }

    void expectedFillsTheGrid() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        typeRows(d, {{"5", "3"}});
        d.Text1[13]->setText("77");
        d.theoretikes_Click();  // Cancel: the grid stays
        QCOMPARE(d.Text1[0]->text(), QStringLiteral("5"));
        scope.dialogs().answers = {"1.5"};
        d.theoretikes_Click();
        QCOMPARE(scope.dialogs().prompts.last(), QStringLiteral("index of refraction Δώσε δείκτη διάθλασης"));
        QCOMPARE(d.Text1[2]->text(), QStringLiteral("30"));
        QCOMPARE(d.Refr[2]->text(), QStringLiteral("19.471221"));
        QVERIFY(d.Text1[9]->text().isEmpty() && d.Text1[13]->text() == QStringLiteral("77"));
        d.Command1_Click();
        QVERIFY(joined(*form<Analysis>().canvas()).contains("= 1.5000"));
    }

    void historyNotes() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        for (int k = 0; k < 10; ++k) {
            d.noteItems[k]->trigger();
            QVERIFY(form<Analysis>().textShown() && form<Analysis>().isVisible());
        }
        QCOMPARE(form<Analysis>().title(), QStringLiteral("WITELO"));
        QVERIFY(form<Analysis>().text().startsWith("Ο WITELO"));
        d.noteItems[4]->trigger();  // Hero, with its figure
        QCOMPARE(form<Analysis>().title(), QStringLiteral("HERO OF ALEXANDRIA"));
        QVERIFY(joined(*form<Analysis>().canvas()).contains("with least possible length με το ελάχιστο δυνατό μήκος"));
        QCOMPARE(form<Analysis>().canvas()->skippedOperations(), 0);
        // Every note without a figure, shown after one with a figure, leaves
        // the drawing empty instead of under the new title.
        const auto& notes = history::historyNotes();
        int withoutFigure = 0;
        for (std::size_t k = 0; k < notes.size(); ++k) {
            if (notes[k].figure != history::NoteFigure::None) continue;
            ++withoutFigure;
            d.noteItems[4]->trigger();
            QVERIFY(form<Analysis>().canvas()->recordedOperations() > 0);
            d.noteItems[k]->trigger();
            QVERIFY2(form<Analysis>().canvas()->recordedOperations() == 0, notes[k].title.c_str());
            QVERIFY(form<Analysis>().canvas()->printedTexts().isEmpty());
        }
        QVERIFY(withoutFigure >= 5);
        d.empirikos_Click();
        QVERIFY(!form<Analysis>().textShown());
    }

    // The bench's file read back here: the last set-up, one by position,
    // and every refusal with a message and the shared values untouched.
    void measurementFile() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        Inpdat& d = openData();
        auto& said = scope.dialogs().messages;

        d.readStoredSetups();
        d.recallSetup();
        QCOMPARE(said.size(), 2);
        QVERIFY(said[0].contains("fylaxi") && said[0].contains("αρχείο"));

        // Something there that cannot be read is not "missing": the reason
        // is told, and RECALL does not ask for a position first.
        QVERIFY(QDir().mkdir(kMeasurementFileName));
        said.clear();
        const qsizetype prompts = scope.dialogs().prompts.size();
        d.readStoredSetups();
        d.recallSetup();
        QCOMPARE(said.size(), 2);
        QCOMPARE(scope.dialogs().prompts.size(), prompts);
        for (const QString& message : said)
            QVERIFY2(message.contains("cannot be read") && message.contains("Is a directory") &&
                         !message.contains("There is no"),
                     qPrintable(message));
        QVERIFY(QDir().rmdir(kMeasurementFileName));

        std::vector<MeasurementRecord> records(3);
        for (int k = 0; k < 3; ++k) records[k] = {10.0 + k, 1.0 + k, -2.0 - k, 5.0 * k, 1.5, 0.0f, 0.6667f};
        QVERIFY(writeMeasurementFile(kMeasurementFileName, records).ok);
        typeRows(d, {{"10", "6.6"}, {"20", "13.2"}, {"40", "25.4"}});
        said.clear();
        d.empiricalFit();
        QCOMPARE(said.size(), 2);
        QVERIFY(said[0].startsWith("alfa=0.") && said[1].startsWith("vita="));
        QVERIFY(joined(*d.fileView).contains("h = 12.00"));  // the last record
        QVERIFY(joined(*d.fileView).contains("Position=3") && joined(*d.fileView).contains("Angle  = 10.00"));

        scope.dialogs().answers = {"1"};
        d.recallSetup();
        QVERIFY(joined(*d.fileView).contains("xc = 1.00"));
        QCOMPARE(scope.dialogs().prompts.last(), QStringLiteral("GIVE POSITION NUMBERΔώσε αριθμό θέσης"));
        said.clear();
        scope.dialogs().answers = {"0", "99", "1.5", "abc", ""};
        for (int k = 0; k < 5; ++k) d.recallSetup();
        QCOMPARE(said.size(), 4);
        QVERIFY(joined(*d.fileView).contains("xc = 1.00"));

        // A damaged record: a message, never a NaN on the screen.
        records[2].h = std::nan("");
        QVERIFY(writeMeasurementFile(kMeasurementFileName, records).ok);
        said.clear();
        d.readStoredSetups();
        QCOMPARE(said.size(), 1);
        QVERIFY(!joined(*d.fileView).contains("NaN") && joined(*d.fileView).contains("h = 10.00"));  // as position 1 left it
        QDir::setCurrent(previous);
    }
};

QTEST_MAIN(TestInpdatScreen)
#include "test_inpdat_screen.moc"
