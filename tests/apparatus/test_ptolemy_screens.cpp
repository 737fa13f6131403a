// Ptolemy's instrument with its sight view, and Ptolemy's data fitting, as
// the pupil uses them.
#include <QtTest>

#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolemy_fitting.h"
#include "apparatus/ptolkam_screen.h"
#include "ui/forms.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
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

}  // namespace

class TestPtolemyScreens : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() { module1().pi = 4.0 * std::atan(1.0); }

    void openingShowsTheInstrumentTheViewAndTheirLabels() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        QVERIFY(p.isVisible() && form<Emfanisi>().isVisible());
        QCOMPARE(p.windowTitle(), QStringLiteral("PTOLEMY'S METHOD"));
        QCOMPARE(p.Label1->text(), QStringLiteral("ANGLE IN WATER γωνία στο νερό = 30"));
        QCOMPARE(p.Label2->text(), QStringLiteral("POSITION IN AIR θέση στον αέρα = 50"));
        QCOMPARE(p.Label3->text(), QStringLiteral("ANGLE OF TARGET Γωνία στόχου =0.5°"));
        QCOMPARE(p.Command1->text(), QStringLiteral("HIDE"));
        // The keyboard goes from the angle to HIDE, then to the other bars.
        QCOMPARE(p.goniaprosptosis->nextInFocusChain(), static_cast<QWidget*>(p.Command1));
        QCOMPARE(p.Command1->nextInFocusChain(), static_cast<QWidget*>(p.metatopisipar));
        QCOMPARE(p.metatopisipar->nextInFocusChain(), static_cast<QWidget*>(p.dgonia));
        for (QScrollBar* bar : {p.goniaprosptosis, p.metatopisipar, p.dgonia}) QVERIFY(!bar->accessibleName().isEmpty());
        // Opening again keeps what the pupil set.
        p.metatopisipar->setValue(120);
        openPtolemyInstrument();
        QCOMPARE(p.metatopisipar->value(), 120);
    }

    // 88° is past the critical angle: the drawing comes down to the first
    // angle whose lines of sight all leave the water, and the bar shows it.
    void theGuardBringsTheBarDownToTheAngleDrawn() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        p.goniaprosptosis->setValue(88);
        QCOMPARE(p.goniaprosptosis->value(), 47);
        QCOMPARE(p.Label1->text(), QStringLiteral("ANGLE IN WATER γωνία μέσα στο νερό = 47"));
        QVERIFY(p.lastExpectedAngle() > 70 && p.lastExpectedAngle() < 90);
        QCOMPARE(p.canvas->skippedOperations(), 0);
        p.goniaprosptosis->setValue(1);
        QVERIFY(std::fabs(p.lastExpectedAngle() - 1.33) < 0.005);
    }

    // The position bar moves the body in air by value/100 degrees from where
    // the law puts it: at 0 the bands meet, at the ends it stands 2° short
    // and 3° beyond, whatever the angle in water.
    void aligningTheBodiesCoversTheTarget() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        Canvas& view = *form<Emfanisi>().canvas;
        p.dgonia->setValue(6);  // 3° bodies
        p.metatopisipar->setValue(120);  // 1.2° beyond 41.7°
        QVERIFY(!p.lastCovered());
        QVERIFY(p.Label2->text().startsWith(QStringLiteral("BODY'S POSITION IN AIR θέση σώματος στον αέρα=41.38°-44.38°")));
        QVERIFY(p.Label2->text().endsWith(QStringLiteral("EXPECTED αναμενόμενη =41.7°")));
        QVERIFY(pixelsOf(view, QColor(255, 0, 255)) > 0);  // the target's band shows apart

        p.metatopisipar->setValue(0);
        QVERIFY(p.lastCovered());
        QCOMPARE(p.Label2->text(),
                 QStringLiteral("BODY'S POSITION IN  AIR θέση σώματος στον αέρα=40.2°-43.2°αναμενόμενη =41.7°MEAN μέσος =41.7°"));
        QCOMPARE(pixelsOf(view, QColor(255, 0, 255)), 0);  // hidden behind the body in air
        QCOMPARE(p.Label3->text(), QStringLiteral("ANGLE OF TARGET Γωνία στόχου =3.0°"));

        p.dgonia->setValue(1);  // 0.5° bodies
        for (int water : {1, 30, 47}) {
            p.goniaprosptosis->setValue(water);
            p.metatopisipar->setValue(-200);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() + 2.0) < 1e-9);
            QVERIFY(!p.lastCovered());
            p.metatopisipar->setValue(300);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() - 3.0) < 1e-9);
        }
        p.goniaprosptosis->setValue(30);
        p.metatopisipar->setValue(-200);
        QVERIFY(p.Label2->text().startsWith(QStringLiteral("BODY'S POSITION IN AIR θέση σώματος στον αέρα=39.43°-39.93°")));
    }

    // Just under the critical angle the line past the far edge of the
    // central body is turned back while the one through the centre leaves:
    // the drawing says so in a message and comes down a degree.
    void anEdgeLineTurnedBackIsReported() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        QVERIFY(scope.dialogs().messages.isEmpty());
        p.goniaprosptosis->setValue(48);
        QCOMPARE(p.goniaprosptosis->value(), 47);
        QCOMPARE(scope.dialogs().messages,
                 QStringList(QStringLiteral(
                     "ANGLE OF INCIDENCE 2 IN WATER γωνία πρόσπτωσης 2 στο νερό = 48.8  SIN ημιτονο = 1.0")));
        p.goniaprosptosis->setValue(40);
        QCOMPARE(scope.dialogs().messages.size(), 1);  // nothing turned back below
    }

    void everyBarAtBothEndsDrawsAFinitePicture() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        for (QScrollBar* bar : {p.goniaprosptosis, p.metatopisipar, p.dgonia}) {
            for (int value : {bar->minimum(), bar->maximum(), bar->minimum()}) {
                bar->setValue(value);
                QCOMPARE(p.canvas->skippedOperations(), 0);
                QCOMPARE(form<Emfanisi>().canvas->skippedOperations(), 0);
                QVERIFY(noBadNumbers({p.Label1->text(), p.Label2->text(), p.Label3->text()}));
            }
        }
        // Dragged through every angle: each one drawn is below the critical angle.
        for (int value = p.goniaprosptosis->minimum(); value <= p.goniaprosptosis->maximum(); ++value) {
            p.goniaprosptosis->setValue(value);
            QVERIFY(p.goniaprosptosis->value() <= 47);
        }
        QCOMPARE(form<Emfanisi>().canvas->skippedOperations(), 0);
        p.dgonia->setValue(20);
        QCOMPARE(p.Label3->text(), QStringLiteral("TARGET'S ANGLE Γωνία στόχου =10.0°"));
        p.dgonia->setValue(1);
        QCOMPARE(p.Label3->text(), QStringLiteral("TARGET'S ANGLE Γωνία στόχου =0.5°"));
    }

    void hideExplainsTheInstrumentOnTheGraphScreens() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        p.Command1->click();
        QVERIFY(!p.isVisible() && !form<Emfanisi>().isVisible());
        Analysis& notes = form<Analysis>();
        QVERIFY(notes.isVisible() && notes.textShown());
        const QString text = notes.text();
        QVERIFY(text.startsWith(QStringLiteral("O ΠΤΟΛΕΜΑΙΟΣ (Κλαύδιος), είναι οδιάσημος αρχαίος αστρονόμος, ο πρώτος")));
        QVERIFY(text.contains(QStringLiteral(" Τότε μετρά τη γωνία διάθλασης GEH.")));
        QVERIFY(text.indexOf(QStringLiteral("GEH.")) < text.indexOf(QStringLiteral("PTOLEMY, was the famous")));
        QVERIFY(text.endsWith(QStringLiteral("Then  the  refraction angle HEG is measured")));
        Incref& graph = form<Incref>();
        QCOMPARE(graph.title(), QStringLiteral("PTOLEMY'S APPARATUS Η συσκευή του Πτολεμαίου"));
        const QStringList letters = graph.canvas()->printedTexts();
        for (const char* letter : {"A", "B", "G", "D", "E", "Z", "H"}) QVERIFY(letters.contains(QString::fromLatin1(letter)));
        QVERIFY(pixelsOf(*graph.canvas(), QColor(200, 200, 0)) > 0);
    }

    void fittingOpensOnTheWaterSetWithItsThreeCurves() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        QVERIFY(k.isVisible());
        QCOMPARE(k.windowTitle(), QStringLiteral("PTOLEMY'S DATA MANIPULATION"));
        QVERIFY(k.Option2->isChecked());
        QCOMPARE(k.Option2->text(), QStringLiteral("INDEX Δείκτης=1,333"));
        QCOMPARE(k.Option1->text(), QStringLiteral("INDEX Δείκτης =1,5"));
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
        const QStringList texts = k.canvas->printedTexts();
        QVERIFY(texts.contains(QStringLiteral("  PTOLEMY'S MANIPULATION Προσαρμογή Πτολεμαίου")));
        QVERIFY(texts.contains(QStringLiteral("ANALOGY Σχέση αναλογίας")));
        QVERIFY(texts.contains(QStringLiteral("EXPECTED VALUES Πραγματικές τιμές")));
        QVERIFY(k.explanation->toPlainText().contains(
            QStringLiteral("Press the LEFT BUTTON For n =2 we start  with the difference of  20° and 30°.")));
        k.Option1->click();
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
        // Chosen without a click (a screen reader toggles it): drawn all the same.
        k.Option2->setChecked(true);
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
        QVERIFY(k.canvas->printedTexts().contains(QStringLiteral("EXPECTED VALUES Πραγματικές τιμές")));
        k.kripse->click();
        QVERIFY(!k.isVisible());
    }

    // Every refused answer leaves the picture as it was.
    void badStartingPairsAreRefusedAndChangeNothing() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        const QStringList before = k.canvas->printedTexts();
        const struct {
            const char* typed;
            bool message;
            bool exact;
        } cases[] = {{"", false, false},   {"abc", true, false}, {"0", true, true},    {"8", true, true},
                     {"1,5", true, false}, {"1e9", true, true},  {"1.5", true, false}, {"-1", true, true}};
        for (const auto& c : cases) {
            scope.dialogs().messages.clear();
            scope.dialogs().answers = {QString::fromLatin1(c.typed)};
            k.Enallagi->click();
            QCOMPARE(scope.dialogs().prompts.last(),
                     QStringLiteral("number of first member  of pair ΑΡΙΘΜΟΣ ΠΡΩΤΟΥ ΜΕΛΟΥΣ ΖΕΥΓΟΥΣ"));
            QCOMPARE(scope.dialogs().messages.size(), c.message ? 1 : 0);
            if (c.exact) QCOMPARE(scope.dialogs().messages.first(), QStringLiteral("CHOOSE A NUMBER BETWEEN 1 &7"));
            if (c.message && !c.exact) {
                QVERIFY(scope.dialogs().messages.first().startsWith(QStringLiteral("CHOOSE A NUMBER BETWEEN 1 &7  ")));
            }
            QCOMPARE(k.canvas->printedTexts(), before);
            QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
        }
        // Pair 7 of the glass table has no pair after it.
        k.Option1->click();
        scope.dialogs().answers = {QStringLiteral("7")};
        k.Enallagi->click();
        QVERIFY(scope.dialogs().messages.last().contains(QStringLiteral("between 1 and 6")));
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
    }

    void anotherStartRebuildsTheTableWithItsLegend() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        scope.dialogs().answers = {QStringLiteral("2")};
        k.Enallagi->click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        QCOMPARE(k.shownValues(), ptolemy_fit::adjustFromPair(ptolemy_fit::waterSet(), 2));
        const QStringList texts = k.canvas->printedTexts();
        for (const char* t : {"INCIDENCE Πρόσπτωσης ", "REFRACTION Διάθλασης", "DIFFERENCE Διαφορά",
                              " ANALOGY Σχέση αναλογίας", "    PTOLEMY'S MANIPULATION Προσαρμογή Πτολεμαίου",
                              "  EXPECTGED  VALUES Πραγματικές τιμές", "10°   ", "8.0°", "0.0°", "4.5°"})
            QVERIFY2(texts.contains(QString::fromUtf8(t)), t);
        QVERIFY(noBadNumbers(texts));
    }
};

QTEST_MAIN(TestPtolemyScreens)
#include "test_ptolemy_screens.moc"
