// Ptolemy's instrument with its sight view, Al Haytham's instrument with his
// rules and their check, and Ptolemy's data fitting, as the pupil uses them
// from the data screen.
#include <QLabel>
#include <QRadioButton>
#include <QScrollBar>
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

    // Ptolemy's instrument: keyboard order, the pupil's settings kept on
    // reopening, and 88° or 48° (past the critical angle for some line of
    // sight) brought down to 47° on the bar, the edge line turned back at 48°
    // reported once.
    void ptolemyKeepsItsSettingsAndGuardsTheAngle() {
        ScreenTestScope scope;
        Ptolemaios& p = openInstrument();
        QVERIFY(p.isVisible() && form<Emfanisi>().isVisible());
        QScrollBar& inAir = child(p, "metatopisipar");
        QScrollBar& inWater = child(p, "goniaprosptosis");
        QWidget* order[] = {&inWater, &child<CaptionButton>(p, "Command1"), &inAir, &child(p, "dgonia")};
        for (int k = 0; k < 3; ++k) QCOMPARE(order[k]->nextInFocusChain(), order[k + 1]);
        inAir.setValue(120);
        openPtolemyInstrument();
        QCOMPARE(inAir.value(), 120);

        inWater.setValue(88);
        QCOMPARE(inWater.value(), 47);
        QVERIFY(text(p, "Label1").endsWith(" = 47") && p.lastExpectedAngle() > 70 && p.lastExpectedAngle() < 90);
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

        // Every bar at both ends: a finite picture and no bad number shown.
        for (const char* name : {"goniaprosptosis", "metatopisipar", "dgonia"}) {
            QScrollBar& bar = child(p, name);
            for (int value : {bar.minimum(), bar.maximum(), bar.minimum()}) {
                bar.setValue(value);
                QVERIFY(p.drawing().skippedOperations() == 0 && form<Emfanisi>().drawing().skippedOperations() == 0);
                QVERIFY(noBadNumbers({text(p, "Label1"), text(p, "Label2"), text(p, "Label3")}));
            }
        }
        // The position bar moves the body in air by value/100 degrees from where
        // the law puts it: at 0 the bands meet, at the ends it stands 2° short
        // and 3° beyond, whatever the angle in water.
        const Canvas& view = form<Emfanisi>().drawing();
        inWater.setValue(30);
        child(p, "dgonia").setValue(6);  // 3° bodies
        inAir.setValue(120);             // 1.2° beyond 41.7°
        QVERIFY(!p.lastCovered());
        QVERIFY(text(p, "Label2").contains(QStringLiteral("=41.38°-44.38°")));
        QVERIFY(text(p, "Label2").endsWith(QStringLiteral("=41.7°")));
        QVERIFY(pixelsOf(view, kMagenta) > 0);  // the target's band shows apart

        inAir.setValue(0);
        QVERIFY(p.lastCovered() &&
                text(p, "Label2").endsWith(QStringLiteral("=40.2°-43.2°αναμενόμενη =41.7°MEAN μέσος =41.7°")));
        QCOMPARE(pixelsOf(view, kMagenta), 0);  // hidden behind the body in air
        QVERIFY(text(p, "Label3").endsWith(QStringLiteral("=3.0°")));

        child(p, "dgonia").setValue(1);  // 0.5° bodies
        for (int water : {1, 30, 47}) {
            inWater.setValue(water);
            inAir.setValue(-200);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() + 2.0) < 1e-9 && !p.lastCovered());
            inAir.setValue(300);
            QVERIFY(std::fabs(p.lastAirBodyAngle() - p.lastExpectedAngle() - 3.0) < 1e-9);
        }
        // Hide explains the instrument on the graph screens, its letters
        // on the diagram, the Greek story first.
        child<CaptionButton>(p, "Command1").click();
        QVERIFY(!p.isVisible() && !form<Emfanisi>().isVisible());
        Analysis& notes = form<Analysis>();
        QVERIFY(notes.isVisible() && notes.textShown());
        QVERIFY(notes.text().indexOf(QStringLiteral("GEH.")) < notes.text().indexOf(QStringLiteral("PTOLEMY, was")));
        const Canvas& graph = *form<Incref>().canvas();
        for (const char* letter : {"A", "B", "G", "D", "E", "Z", "H"})
            QVERIFY(graph.printedTexts().contains(QString::fromLatin1(letter)));
        QVERIFY(pixelsOf(graph, kYellow) > 0);
    }

    // Al Haytham's instrument: his rules printed (rule 2 twice, none red),
    // the angle bar and the stylus that shows only with its option; then
    // the check of his rules.
    void alHaythamsInstrumentAndTheCheckOfItsRules() {
        ScreenTestScope scope;
        openAlHaythamInstrument();
        const QStringList printed = form<Incref>().canvas()->printedTexts();
        QVERIFY(printed.size() == 13 && printed[5] == printed[6]);
        QCOMPARE(pixelsOf(*form<Incref>().canvas(), kRed), 0);
        Xaithamos& x = form<Xaithamos>();
        x.resize(760, 700);
        QCoreApplication::processEvents();
        QScrollBar& stylus = child(x, "timiepi");
        QVERIFY(child<QRadioButton>(x, "Option1").isChecked() && stylus.isHidden());
        QCOMPARE(pixelsOf(x.drawing(), kYellow), 0);

        child(x, "strefo").setValue(80);
        QVERIFY(text(x, "Label1").endsWith(QStringLiteral("= 80°")));
        child<QRadioButton>(x, "Option2").click();
        QVERIFY(!stylus.isHidden() && pixelsOf(x.drawing(), kYellow) > 0);
        stylus.setValue(10);
        QVERIFY(text(x, "Label2").contains(QStringLiteral("= 1.0 RAY")));
        child(x, "strefo").setValue(0);
        stylus.setValue(0);
        QCOMPARE(x.drawing().skippedOperations(), 0);
        child<QRadioButton>(x, "Option1").click();
        QVERIFY(stylus.isHidden() && pixelsOf(x.drawing(), kYellow) == 0);

        // Hide moves on to the check and its explanation. n = 2.00 breaks
        // rule (5) at once: it turns red on the graph screen; n = 0.50 breaks
        // rule (6) instead and ends its curves at 30°. The rules are printed
        // again only on a change.
        child<CaptionButton>(x, "svise").click();
        Alhazencheck& check = form<Alhazencheck>();
        QVERIFY(!form<Xaithamos>().isVisible() && check.isVisible());
        const QString explanation = form<Analysis>().text();
        // Each Greek sentence is said once: the comparison with a moving body opens the text only.
        QCOMPARE(explanation.count(QStringLiteral("Συνέκρινε τη διάθλαση προς την κίνηση ενός σώματος.")), 1);
        // The legend keeps its own colours for deviation and half incidence.
        QVERIFY(pixelsOf(check.drawing(), QColor(0, 255, 0)) > 0 && pixelsOf(check.drawing(), QColor(0, 255, 255)) > 0);
        Canvas& rules = *form<Incref>().canvas();
        QScrollBar& index = child(check, "timidikti");
        index.setValue(100);
        QVERIFY(!check.flags().rule5Shown && !check.flags().rule6Shown);
        QCOMPARE(check.segmentsDrawn(), 88);
        QCOMPARE(pixelsOf(rules, kRed), 0);

        index.setValue(200);
        QCOMPARE(text(check, "Label1"), QStringLiteral("n =2.00"));
        QVERIFY(check.flags().rule5Shown && !check.flags().rule6Shown);
        QVERIFY(pixelsOf(rules, kRed) > 0 && pixelsOf(rules, kMagenta) == 0);
        const int printings = check.rulePrintings();
        check.CheckAlHaythamRules(2.0);  // still broken all along: the rules stay as printed
        QCOMPARE(check.rulePrintings(), printings);
        // At 1.99 rule (5) holds up to about 11.5° and breaks after: two changes.
        index.setValue(199);
        QCOMPARE(check.rulePrintings(), printings + 2);

        index.setValue(50);
        QVERIFY(!check.flags().rule5Shown && check.flags().rule6Shown);
        QCOMPARE(check.rulePrintings(), printings + 4);
        QVERIFY(pixelsOf(rules, kRed) == 0 && pixelsOf(rules, kMagenta) > 0);
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

    // The fitting draws either set, however its option is chosen. Every
    // refused starting pair leaves the picture as it was; a good one
    // rebuilds the values from the pair with their table.
    void fittingDrawsEitherSetAndRebuildsFromAPair() {
        ScreenTestScope scope;
        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        QVERIFY(k.isVisible() && child<QRadioButton>(k, "Option2").isChecked());
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);
        child<QRadioButton>(k, "Option1").click();
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
        // Chosen without a click (a screen reader toggles it): drawn all the same.
        child<QRadioButton>(k, "Option2").setChecked(true);
        QCOMPARE(k.shownValues(), ptolemy_fit::waterSet().refraction);

        CaptionButton& other = child<CaptionButton>(k, "Enallagi");
        const QStringList before = k.drawing().printedTexts();
        for (const char* typed : {"", "abc", "0", "8", "1.5"}) {
            scope.dialogs().messages.clear();
            scope.dialogs().answers = {QString::fromLatin1(typed)};
            other.click();
            QCOMPARE(scope.dialogs().messages.size(), *typed ? 1 : 0);
            QCOMPARE(k.drawing().printedTexts(), before);
        }
        scope.dialogs().answers = {QStringLiteral("2")};
        other.click();
        QCOMPARE(k.shownValues(), ptolemy_fit::adjustFromPair(ptolemy_fit::waterSet(), 2));
        const QStringList texts = k.drawing().printedTexts();
        for (const char* t : {"10°   ", "8.0°", "4.5°"}) QVERIFY2(texts.contains(QString::fromUtf8(t)), t);
        QVERIFY(noBadNumbers(texts));

        // Pair 7 of the glass table has no pair after it.
        child<QRadioButton>(k, "Option1").click();
        scope.dialogs().answers = {QStringLiteral("7")};
        other.click();
        QVERIFY(scope.dialogs().messages.last().contains(QStringLiteral("between 1 and 6")));
        QCOMPARE(k.shownValues(), ptolemy_fit::glassSet().refraction);
    }

    // Each simulation opens from the data screen and its hide comes back
    // to it; closing Ptolemy's window takes the sight view with it; leaving
    // for the main menu hides whatever simulation is still open.
    void simulationsOpenFromTheDataScreenAndHide() {
        ScreenTestScope scope;
        openDataScreen();
        Inpdat& data = form<Inpdat>();
        auto hides = [&data](QWidget& screen, const char* button) {  // shown, then hidden, the data screen back
            const bool shown = screen.isVisible();
            child<CaptionButton>(screen, button).click();
            return shown && data.isVisible() && !screen.isVisible();
        };
        child<QAction>(data, "ptolemaios").trigger();
        QVERIFY(form<Emfanisi>().isVisible() && hides(form<Ptolemaios>(), "Command1"));
        child<QAction>(data, "xaithamos").trigger();
        QVERIFY(form<Xaithamos>().isVisible());
        child<CaptionButton>(form<Xaithamos>(), "svise").click();
        QVERIFY(hides(form<Alhazencheck>(), "Command1"));
        child<QAction>(data, "ptolemeosprosarmogidedo").trigger();
        QVERIFY(hides(form<Ptolkam>(), "kripse"));
        QVERIFY(scope.endStatuses.empty());

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
