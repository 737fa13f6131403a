// Ptolemy's instrument with its sight view, Al Haytham's instrument with his
// rules and their check, and Ptolemy's data fitting, as the pupil uses them
// from the data screen.
#include <QLabel>
#include <QRadioButton>
#include <QScrollBar>
#include <QTextEdit>
#include <QtTest>

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolemy_fitting.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "history/data_screen_opener.h"
#include "history/inpdat_screen.h"
#include "test_support.h"

namespace {

int pixelsOf(const Canvas& canvas, const QColor& colour) {
    const QImage& image = canvas.image();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).rgb() == colour.rgb()) ++count;
    return count;
}

template <class Control = QScrollBar>
Control& child(const QWidget& screen, const char* name) {
    return *screen.findChild<Control*>(QString::fromLatin1(name));
}
QString text(const QWidget& screen, const char* label) { return child<QLabel>(screen, label).text(); }

bool noBadNumbers(const QStringList& texts) {
    for (const QString& t : texts)
        if (t.contains("NaN") || t.contains("∞")) return false;
    return true;
}

Ptolemaios& openInstrument() {
    openPtolemyInstrument();
    Ptolemaios& p = form<Ptolemaios>();
    p.resize(560, 760);
    QCoreApplication::processEvents();
    return p;
}

Alhazencheck& openCheck() {
    openAlHaythamInstrument();
    child<CaptionButton>(form<Xaithamos>(), "svise").click();
    return form<Alhazencheck>();
}

const QColor kRed(255, 0, 0);
const QColor kMagenta(255, 0, 255);
const QColor kYellow(200, 200, 0);  // the ruler, and the water of the diagram

}  // namespace

class TestApparatusScreens : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void ptolemyOpensWithItsViewLabelsAndKeyboardOrder() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        QVERIFY(p.isVisible() && form<Emfanisi>().isVisible());
        // Opening says "στο νερό"; a change of the bar says "μέσα στο νερό".
        QCOMPARE(text(p, "Label1"), QStringLiteral("ANGLE IN WATER γωνία στο νερό = 30"));
        QCOMPARE(text(p, "Label2"), QStringLiteral("POSITION IN AIR θέση στον αέρα = 50"));
        QCOMPARE(text(p, "Label3"), QStringLiteral("ANGLE OF TARGET Γωνία στόχου =0.5°"));
        QScrollBar& inAir = child(p, "metatopisipar");
        QWidget* order[] = {&child(p, "goniaprosptosis"), &child<CaptionButton>(p, "Command1"), &inAir,
                            &child(p, "dgonia")};
        for (int k = 0; k < 3; ++k) QCOMPARE(order[k]->nextInFocusChain(), order[k + 1]);
        // Opening again keeps what the pupil set.
        inAir.setValue(120);
        openPtolemyInstrument();
        QCOMPARE(inAir.value(), 120);
    }

    // 88° and 48° are past the critical angle for some line of sight: the
    // drawing comes down to 47°, the bar shows it, and at 48° the edge line
    // turned back is reported once.
    void theGuardBringsTheBarDownToTheAngleDrawn() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        QScrollBar& inWater = child(p, "goniaprosptosis");
        inWater.setValue(88);
        QCOMPARE(inWater.value(), 47);
        QCOMPARE(text(p, "Label1"), QStringLiteral("ANGLE IN WATER γωνία μέσα στο νερό = 47"));
        QVERIFY(p.lastExpectedAngle() > 70 && p.lastExpectedAngle() < 90);
        QCOMPARE(p.drawing().skippedOperations(), 0);
        inWater.setValue(1);
        QVERIFY(std::fabs(p.lastExpectedAngle() - 1.33) < 0.005);
        scope.dialogs().messages.clear();
        inWater.setValue(48);
        QCOMPARE(inWater.value(), 47);
        QCOMPARE(scope.dialogs().messages,
                 QStringList(QStringLiteral(
                     "ANGLE OF INCIDENCE 2 IN WATER γωνία πρόσπτωσης 2 στο νερό = 48.8  SIN ημιτονο = 1.0")));
        inWater.setValue(40);
        QCOMPARE(scope.dialogs().messages.size(), 1);  // nothing turned back below
    }

    // The position bar moves the body in air by value/100 degrees from where
    // the law puts it: at 0 the bands meet, at the ends it stands 2° short
    // and 3° beyond, whatever the angle in water.
    void aligningTheBodiesCoversTheTarget() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        const Canvas& view = form<Emfanisi>().drawing();
        QScrollBar& inWater = child(p, "goniaprosptosis");
        QScrollBar& inAir = child(p, "metatopisipar");
        child(p, "dgonia").setValue(6);  // 3° bodies
        inAir.setValue(120);             // 1.2° beyond 41.7°
        QVERIFY(!p.lastCovered());
        QVERIFY(text(p, "Label2")
                    .startsWith(QStringLiteral("BODY'S POSITION IN AIR θέση σώματος στον αέρα=41.38°-44.38°")));
        QVERIFY(text(p, "Label2").endsWith(QStringLiteral("EXPECTED αναμενόμενη =41.7°")));
        QVERIFY(pixelsOf(view, kMagenta) > 0);  // the target's band shows apart

        inAir.setValue(0);
        QVERIFY(p.lastCovered());
        QCOMPARE(text(p, "Label2"),
                 QStringLiteral(
                     "BODY'S POSITION IN  AIR θέση σώματος στον αέρα=40.2°-43.2°αναμενόμενη =41.7°MEAN μέσος =41.7°"));
        QCOMPARE(pixelsOf(view, kMagenta), 0);  // hidden behind the body in air
        QCOMPARE(text(p, "Label3"), QStringLiteral("ANGLE OF TARGET Γωνία στόχου =3.0°"));

        child(p, "dgonia").setValue(1);  // 0.5° bodies
        for (int water : {1, 30, 47}) {
            inWater.setValue(water);
            inAir.setValue(-200);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() + 2.0) < 1e-9);
            QVERIFY(!p.lastCovered());
            inAir.setValue(300);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() - 3.0) < 1e-9);
        }
    }

    void everyBarAtBothEndsDrawsAFinitePicture() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        for (const char* name : {"goniaprosptosis", "metatopisipar", "dgonia"}) {
            QScrollBar& bar = child(p, name);
            for (int value : {bar.minimum(), bar.maximum(), bar.minimum()}) {
                bar.setValue(value);
                QCOMPARE(p.drawing().skippedOperations(), 0);
                QCOMPARE(form<Emfanisi>().drawing().skippedOperations(), 0);
                QVERIFY(noBadNumbers({text(p, "Label1"), text(p, "Label2"), text(p, "Label3")}));
            }
        }
        child(p, "dgonia").setValue(20);
        QCOMPARE(text(p, "Label3"), QStringLiteral("TARGET'S ANGLE Γωνία στόχου =10.0°"));
    }

    void hideExplainsTheInstrumentOnTheGraphScreens() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        child<CaptionButton>(p, "Command1").click();
        QVERIFY(!p.isVisible() && !form<Emfanisi>().isVisible());
        Analysis& notes = form<Analysis>();
        QVERIFY(notes.isVisible() && notes.textShown());
        const QString explanation = notes.text();
        QVERIFY(explanation.indexOf(QStringLiteral("GEH.")) <
                explanation.indexOf(QStringLiteral("PTOLEMY, was the famous")));
        QVERIFY(explanation.endsWith(QStringLiteral("Then  the  refraction angle HEG is measured")));
        Incref& graph = form<Incref>();
        QCOMPARE(graph.title(), QStringLiteral("PTOLEMY'S APPARATUS Η συσκευή του Πτολεμαίου"));
        const QStringList letters = graph.canvas()->printedTexts();
        for (const char* letter : {"A", "B", "G", "D", "E", "Z", "H"})
            QVERIFY(letters.contains(QString::fromLatin1(letter)));
        QVERIFY(pixelsOf(*graph.canvas(), kYellow) > 0);
    }

    void theRulesArePrintedLetterForLetter() {
        ScreenTestScope scope;
        openAlHaythamInstrument();
        const QStringList printed = form<Incref>().canvas()->printedTexts();
        QCOMPARE(printed.size(), 13);
        QCOMPARE(printed[5], printed[6]);  // rule (2), twice
        QCOMPARE(printed[9],
                 QStringLiteral("(5) for refraction form rare to dens d < r/2                     για διάθλαση "
                                "από αραιό σε πυκνό απ < πρ/2"));
        QCOMPARE(pixelsOf(*form<Incref>().canvas(), kRed), 0);
    }

    void alHaythamsInstrumentFollowsItsControls() {
        ScreenTestScope scope;
        openAlHaythamInstrument();
        Xaithamos& x = form<Xaithamos>();
        x.resize(760, 700);
        QCoreApplication::processEvents();
        QScrollBar& stylus = child(x, "timiepi");
        QCOMPARE(text(x, "Label1"), QStringLiteral("INCIDENCE  ANGLE Γωνία πρόσπτωσης = 30°"));
        QVERIFY(child<QRadioButton>(x, "Option1").isChecked() && stylus.isHidden());
        QCOMPARE(pixelsOf(x.drawing(), kYellow), 0);

        child(x, "strefo").setValue(80);
        QCOMPARE(text(x, "Label1"), QStringLiteral("INCIDENCE ANGLE Γωνία πρόσπτωσης = 80°"));
        child<QRadioButton>(x, "Option2").click();
        QVERIFY(!stylus.isHidden());
        QVERIFY(pixelsOf(x.drawing(), kYellow) > 0);
        stylus.setValue(10);
        QCOMPARE(text(x, "Label2"), QStringLiteral("POSITION OF STYLUSθέση στυλού = 1.0 RAY ακτίνα"));
        child(x, "strefo").setValue(0);
        stylus.setValue(0);
        QCOMPARE(x.drawing().skippedOperations(), 0);
        child<QRadioButton>(x, "Option1").click();
        QVERIFY(stylus.isHidden());
        QCOMPARE(pixelsOf(x.drawing(), kYellow), 0);
    }

    void hideMovesOnToTheCheckAndTheExplanation() {
        ScreenTestScope scope;
        Alhazencheck& check = openCheck();
        QVERIFY(!form<Xaithamos>().isVisible() && check.isVisible());
        QCOMPARE(text(check, "Label1"), QStringLiteral("n =1.33"));
        const QString explanation = form<Analysis>().text();
        // Each Greek sentence is said once: the comparison with a moving body opens the text only.
        QCOMPARE(explanation.count(QStringLiteral("Συνέκρινε τη διάθλαση προς την κίνηση ενός σώματος.")), 1);
        QVERIFY(explanation.endsWith(QStringLiteral("ALSO THE RULE CHANGES COLOR")));
        // The legend keeps its own colours for deviation and half incidence.
        QVERIFY(pixelsOf(check.drawing(), QColor(0, 255, 0)) > 0);
        QVERIFY(pixelsOf(check.drawing(), QColor(0, 255, 255)) > 0);
        QVERIFY(
            check.drawing().printedTexts().contains(QStringLiteral("(INCIDENCE + DEVIATION πρόσπτωσης+απόκλισης)/2")));
    }

    // n = 2.00 breaks rule (5) at once: it turns red on the graph screen;
    // n = 0.50 breaks rule (6) instead and ends its curves at 30°.
    void brokenRulesTurnTheirColourAndAreReprintedOnlyOnAChange() {
        ScreenTestScope scope;
        Alhazencheck& check = openCheck();
        Canvas& rules = *form<Incref>().canvas();
        QScrollBar& index = child(check, "timidikti");
        index.setValue(100);
        QVERIFY(!check.flags().rule5Shown && !check.flags().rule6Shown);
        QCOMPARE(check.segmentsDrawn(), 88);
        QCOMPARE(pixelsOf(rules, kRed), 0);

        index.setValue(200);
        QCOMPARE(text(check, "Label1"), QStringLiteral("n =2.00"));
        QVERIFY(check.flags().rule5Shown && !check.flags().rule6Shown);
        QVERIFY(pixelsOf(rules, kRed) > 0);
        QCOMPARE(pixelsOf(rules, kMagenta), 0);
        const int printings = check.rulePrintings();
        check.CheckAlHaythamRules(2.0);  // still broken all along: the rules stay as printed
        QCOMPARE(check.rulePrintings(), printings);
        // At 1.99 rule (5) holds up to about 11.5° and breaks after: two changes.
        index.setValue(199);
        QCOMPARE(check.rulePrintings(), printings + 2);

        index.setValue(50);
        QVERIFY(!check.flags().rule5Shown && check.flags().rule6Shown);
        QCOMPARE(check.rulePrintings(), printings + 4);
        QCOMPARE(pixelsOf(rules, kRed), 0);
        QVERIFY(pixelsOf(rules, kMagenta) > 0);
        QCOMPARE(check.segmentsDrawn(), 29);  // 1° … 29°: from 30° on no refracted ray
        // The instrument opened again prints the rules as the check left them.
        openAlHaythamInstrument();
        QVERIFY(pixelsOf(rules, kMagenta) > 0);

        for (int value = index.minimum(); value <= index.maximum(); value += 7) {
            index.setValue(value);
            QCOMPARE(check.drawing().skippedOperations(), 0);
        }
        child<CaptionButton>(check, "Command2").click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    void fittingDrawsEitherSetWithItsThreeCurves() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        QVERIFY(k.isVisible() && child<QRadioButton>(k, "Option2").isChecked());
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
        const QStringList texts = k.drawing().printedTexts();
        QVERIFY(texts.contains(QStringLiteral("  PTOLEMY'S MANIPULATION Προσαρμογή Πτολεμαίου")));
        QVERIFY(texts.contains(QStringLiteral("EXPECTED VALUES Πραγματικές τιμές")));
        QVERIFY(child<QTextEdit>(k, "explanation")
                    .toPlainText()
                    .contains(QStringLiteral(
                        "Press the LEFT BUTTON For n =2 we start  with the difference of  20° and 30°.")));
        child<QRadioButton>(k, "Option1").click();
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
        // Chosen without a click (a screen reader toggles it): drawn all the same.
        child<QRadioButton>(k, "Option2").setChecked(true);
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
    }

    // Every refused answer leaves the picture as it was; a good one rebuilds
    // the values from the pair with their table and the other legend.
    void startingPairsAreRefusedOrRebuildTheTable() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        CaptionButton& other = child<CaptionButton>(k, "Enallagi");
        const QStringList before = k.drawing().printedTexts();
        for (const char* typed : {"", "abc", "0", "8", "1.5"}) {
            scope.dialogs().messages.clear();
            scope.dialogs().answers = {QString::fromLatin1(typed)};
            other.click();
            QCOMPARE(scope.dialogs().messages.size(), *typed ? 1 : 0);
            if (*typed)
                QVERIFY(scope.dialogs().messages.first().startsWith(QStringLiteral("CHOOSE A NUMBER BETWEEN 1 &7")));
            QCOMPARE(k.drawing().printedTexts(), before);
        }
        QCOMPARE(scope.dialogs().prompts.last(),
                 QStringLiteral("number of first member  of pair ΑΡΙΘΜΟΣ ΠΡΩΤΟΥ ΜΕΛΟΥΣ ΖΕΥΓΟΥΣ"));

        scope.dialogs().answers = {QStringLiteral("2")};
        other.click();
        QCOMPARE(k.shownValues(), ptolemy_fit::adjustFromPair(ptolemy_fit::waterSet(), 2));
        const QStringList texts = k.drawing().printedTexts();
        for (const char* t : {"INCIDENCE Πρόσπτωσης ", "DIFFERENCE Διαφορά", "  EXPECTGED  VALUES Πραγματικές τιμές",
                              "10°   ", "8.0°", "4.5°"})
            QVERIFY2(texts.contains(QString::fromUtf8(t)), t);
        QVERIFY(noBadNumbers(texts));

        // Pair 7 of the glass table has no pair after it.
        child<QRadioButton>(k, "Option1").click();
        scope.dialogs().answers = {QStringLiteral("7")};
        other.click();
        QVERIFY(scope.dialogs().messages.last().contains(QStringLiteral("between 1 and 6")));
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
    }

    void eachSimulationOpensFromTheDataScreenAndComesBack() {
        ScreenTestScope scope;
        openDataScreen();
        Inpdat& data = form<Inpdat>();
        child<QAction>(data, "ptolemaios").trigger();
        Ptolemaios& ptolemy = form<Ptolemaios>();
        QVERIFY(ptolemy.isVisible() && form<Emfanisi>().isVisible());
        child<CaptionButton>(ptolemy, "Command1").click();
        QVERIFY(data.isVisible() && !ptolemy.isVisible());

        child<QAction>(data, "xaithamos").trigger();
        QVERIFY(form<Xaithamos>().isVisible());
        child<CaptionButton>(form<Xaithamos>(), "svise").click();
        Alhazencheck& check = form<Alhazencheck>();
        QVERIFY(check.isVisible());
        child<CaptionButton>(check, "Command1").click();
        QVERIFY(data.isVisible() && !check.isVisible());

        child<QAction>(data, "ptolemeosprosarmogidedo").trigger();
        Ptolkam& fitting = form<Ptolkam>();
        QVERIFY(fitting.isVisible());
        child<CaptionButton>(fitting, "kripse").click();
        QVERIFY(data.isVisible() && !fitting.isVisible());
        QVERIFY(scope.endStatuses.empty());
    }

    // Closing Ptolemy's window takes the sight view with it; leaving for the
    // main menu hides whatever simulation is still open.
    void closingAndLeavingHideTheSimulations() {
        ScreenTestScope scope;
        openDataScreen();
        openPtolemyInstrument();
        form<Ptolemaios>().close();
        QVERIFY(!form<Emfanisi>().isVisible());

        openPtolemyInstrument();
        openCheck();
        openPtolemyDataFitting();
        hideApparatusScreens();
        for (QWidget* w : std::initializer_list<QWidget*>{&form<Ptolemaios>(), &form<Emfanisi>(), &form<Xaithamos>(),
                                                          &form<Alhazencheck>(), &form<Ptolkam>()})
            QVERIFY(!w->isVisible());
    }
};

QTEST_MAIN(TestApparatusScreens)
#include "test_apparatus_screens.moc"
