// The interpretation screens as the pupil uses them: the animations and
// their timers, the panel's wordings, the Fermat demonstration and what
// typed indices do.
#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QtTest>

#include <cmath>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "history/inpdat_screen.h"
#include "interpretation_screens_support.h"
#include "models/epiloges_screen.h"
#include "test_support.h"

namespace {

bool anyTimerEnabled(const Screens& s) {
    return s.waves.isEnabled() || s.pulse.isEnabled() || s.newton.isEnabled() || s.descartes.isEnabled();
}

bool noNaN(const QStringList& texts) {
    return std::none_of(texts.begin(), texts.end(), [](const QString& t) {
        return t.contains(QLatin1String("nan"), Qt::CaseInsensitive) || t.contains(QLatin1String("inf"));
    });
}

}  // namespace

class TestInterpretationScreens : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void backStopsAllFourTimersAndHiddenScreensRunNone() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QVERIFY(s.waves.isRunning());  // the waves move from the start
        s.panel.Command1_Click();      // waves, the pulse and Newton's corpuscles together
        QVERIFY(s.waves.isRunning() && s.pulse.isRunning() && s.newton.isRunning());
        s.descartes.setEnabled(true);
        // Hiding a screen stops its timers; showing it again resumes them.
        s.somata.hide();
        QVERIFY(!s.newton.isRunning() && s.newton.isEnabled());
        s.rixo.hide();
        QVERIFY(!s.pulse.isRunning());  // the pulse is drawn on the wave screen
        s.rixo.show();
        s.somata.show();
        QVERIFY(s.newton.isRunning() && s.pulse.isRunning());
        // Minimised counts as out of view: the animations pause, and take
        // up again where they were when the window comes back.
        const long ticks = s.waves.ticks();
        s.rixo.showMinimized();
        QVERIFY(!s.waves.isRunning() && !s.pulse.isRunning() && s.waves.isEnabled());
        QTest::qWait(60);
        QCOMPARE(s.waves.ticks(), ticks);
        s.rixo.showNormal();
        QVERIFY(s.waves.isRunning() && s.pulse.isRunning());
        QTRY_VERIFY(s.waves.ticks() > ticks);
        s.rixo.Endof_Click();
        QVERIFY(!anyTimerEnabled(s));
        // Descartes' timer runs at 50 ms; STOP stops both.
        openFromMenu();
        s.somata.xekina_Click();
        QVERIFY(s.descartes.isRunning() && !s.newton.isEnabled());
        QCOMPARE(child<QLineEdit>(s.panel, "Text1").text(), QStringLiteral("nrefra= 1.50"));
        s.somata.STAMATHMA_Click();
        QVERIFY(!s.newton.isEnabled() && !s.descartes.isEnabled());
    }

    // The panel's own wordings, which differ with the control that wrote
    // them (its figures are checked against the values elsewhere).
    void panelTextsKeepTheirOwnWording() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        auto& ratio = child<QScrollBar>(s.panel, "n1overn2");
        auto& angle = child<QScrollBar>(s.panel, "prosptosi");
        QCOMPARE(text(s.panel, "Label2"), QStringLiteral("n2 του κάτω διά n1 του πάνω: n2/n1 = 1.50"));
        ratio.setValue(120);
        QCOMPARE(text(s.panel, "Label2"), QStringLiteral("n2 του κάτω δια του n1 του πάνω: n2/n1 = 1.20"));
        ratio.setValue(150);
        angle.setValue(31);
        angle.setValue(30);
        QCOMPARE(text(s.panel, "Label1"), QStringLiteral("INCIDENCE Πρόσπτωσης= 30  REFRACTION διάθλασης =19.47°"));
        s.panel.Command1_Click();
        QCOMPARE(text(s.panel, "Label1"), QStringLiteral("INCIDENCE Πρόσπτωσης= 30 REFRACTION διάθλασης =19.47°"));
        // The pulse's first tick writes the shares with "%".
        s.panel.Timer1_Timer();
        QCOMPARE(text(s.panel, "Label5"), QStringLiteral("REFLECTED Ανακλώμενο % = 24.04"));
        // The angle bar's own wording; at normal incidence, the limits.
        angle.setValue(0);
        QCOMPARE(text(s.panel, "Label5"), QStringLiteral("REFLECTED Ανακλώμενο = 20.00"));
    }

    // The ray picture stops the waves and prints what the wave picture does
    // not. A refused or cancelled answer changes nothing; an index below
    // sin i gives a picture of total reflection, with no NaN anywhere.
    void rayPictureAndTypedIndex() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.aktina_Click();
        QVERIFY(!s.waves.isEnabled());
        const QStringList printed = s.rixo.drawing().printedTexts();
        QVERIFY(printed.contains(QStringLiteral("criticalγωνία =41.81")));
        QVERIFY(printed.contains(QStringLiteral("REFLECTED Ανακλώμενο= 24.04")));
        s.rixo.TIMERSTART_Click();
        QVERIFY(s.waves.isRunning() && !child<QScrollBar>(s.panel, "newtongtimi").isVisible());
        s.rixo.epiloges_Click();
        Epiloges& e = form<Epiloges>();
        scope.dialogs().answers = {QStringLiteral("1e-320"), QStringLiteral("1,,5"), QStringLiteral("-1")};
        e.deiktisdia_Click();
        e.deiktisdia_Click();
        s.rixo.deiktis_Click();
        e.deiktisdia_Click();  // Cancel: nothing said
        QCOMPARE(scope.dialogs().messages.size(), 3);
        QCOMPARE(scope.dialogs().prompts.last(), QStringLiteral("GIVE INDEX Δώσε δείκτη"));
        QCOMPARE(s.rixo.index(), 1.5);
        QCOMPARE(s.rixo.incidenceDegrees(), 30.0);
        scope.dialogs().answers.push_back(QStringLiteral("0.3"));
        e.deiktisdia_Click();
        QVERIFY(s.rixo.refraction().totalReflection);
        QVERIFY(s.waves.isRunning());
        QCOMPARE(s.rixo.drawing().skippedOperations(), 0);
        // END OFF: back to the data screen.
        e.Endof_Click();
        QVERIFY(!s.rixo.isVisible() && !e.isVisible() && form<Inpdat>().isVisible());
    }

    void fermatLabelsAndBodies() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        auto& bar = child<QScrollBar>(s.somata, "fermatscr");
        const auto& label = child<QLabel>(s.somata, "Label1");
        s.somata.fermat_Click();
        QVERIFY(child<ShapeWidget>(s.somata, "fermat1").isVisible() && bar.isVisible());
        const kymatiko::Field f = s.somata.field();
        const double yb = f.boundary();
        // Mirror images above the boundary, blue half-way: Hero's law.
        s.somata.setBodyCentre(Somata::Magenta, {0.25 * f.width, yb + 200});
        s.somata.setBodyCentre(Somata::Green, {0.75 * f.width, yb + 200});
        bar.setValue(499);
        bar.setValue(500);
        const double d = 2.0 * std::hypot(0.25 * f.width, 200.0);
        QCOMPARE(label.text(), QStringLiteral("Time of movement from  magenta through blue to  GREEN") +
                                   fmt(d / 100.0, "0.00") + QStringLiteral("            total distance = ") +
                                   fmt(d, "0.00") + QStringLiteral("      Νόμος Ήρωνος"));
        // Off the law: the plain text.
        bar.setValue(300);
        QVERIFY(label.text().startsWith(QStringLiteral("Time of movement from  magenta through blue to GREEN ")));
        // Across the boundary, FIND MINIMUM, then the bar on the found point: Fermat's example.
        s.somata.setBodyCentre(Somata::Green, {0.75 * f.width, yb - 250});
        s.somata.evresielaxistoy_Click();
        QVERIFY(label.text().startsWith(QStringLiteral("LEAST TIMEΟ ΕΛΑΧΙΣΤΟΣ ΧΡΟΝΟΣ: ")) && !bar.isVisible());
        bar.show();
        s.somata.fermatscr_GotFocus();
        s.somata.fermatscr_Change();
        QVERIFY(label.text().endsWith(QStringLiteral("      Παράδειγμα αρχής Fermat")) &&
                label.text().contains(QStringLiteral("GREEN")) &&
                label.text().contains(QStringLiteral("             total distance = ")));
        // Descartes' speeds: the same path is no example of the law.
        s.somata.descartes_Click();
        QVERIFY(!bar.isVisible() && !label.isVisible());
        s.somata.fermat_Click();
        s.somata.fermatscr_Change();
        QVERIFY(label.text().startsWith(QStringLiteral("Time of movement from  magenta through blue to GREEN ")));
        // The bodies follow the mouse and survive being put on one another.
        Canvas* c = &child<Canvas>(s.somata, "corpuscleField");
        const QPoint at(c->width() / 3, c->height() / 4);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ShiftModifier, at);
        const QPointF user = c->toUser(at);
        QVERIFY(std::fabs(s.somata.bodyCentre(Somata::Magenta).x - user.x()) < 1e-6);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ControlModifier, at);  // green onto magenta
        QCOMPARE(s.somata.bodyCentre(Somata::Green).x, s.somata.bodyCentre(Somata::Magenta).x);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, at);  // and blue too
        QCOMPARE(s.somata.bodyCentre(Somata::Blue).y, s.somata.bodyCentre(Somata::Magenta).y);
        QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));  // no key: nothing moves
        QCOMPARE(s.somata.bodyCentre(Somata::Magenta).x, user.x());
        // Same x: every candidate is the same point; the first one is reported.
        s.somata.evresielaxistoy_Click();
        QCOMPARE(s.somata.bodyCentre(Somata::Blue).x, user.x());
        QVERIFY(noNaN({label.text()}) && c->skippedOperations() == 0);
    }

    void picturesFollowTheWindowTheControlsAndTheKeyboard() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        Canvas& canvas = child<Canvas>(s.somata, "corpuscleField");
        const QList<ShapeWidget*> corpuscles = s.somata.findChildren<ShapeWidget*>("soma");
        // A wide window: a wide field, the bodies where they were in it.
        s.somata.fermat_Click();
        const kymatiko::Point before = s.somata.bodyCentre(Somata::Green);
        const kymatiko::Field small = s.somata.field();
        s.somata.resize(1000, 400);
        QCoreApplication::processEvents();
        const kymatiko::Field wide = s.somata.field();
        QVERIFY(std::fabs(wide.width / wide.height - double(canvas.width()) / canvas.height()) < 1e-9);
        const kymatiko::Point after = s.somata.bodyCentre(Somata::Green);
        QVERIFY(std::fabs(after.x / wide.width - before.x / small.width) < 1e-9);
        QVERIFY(QLineF(child<ShapeWidget>(s.somata, "fermat3").centre(), canvas.toLogical(after.x, after.y)).length() <=
                1.0);
        // The corpuscles ride on their track.
        s.somata.SOMATIDIA_Click();
        for (int t = 0; t < 200; ++t) s.somata.Timer1_Timer();
        const auto& track = s.somata.track().points;
        const QPointF first = corpuscles[1]->centre();  // the middle stream, unshifted
        QVERIFY(corpuscles[1]->isVisible());
        const bool onTrack = std::any_of(track.begin(), track.end(), [&](const kymatiko::Point& p) {
            return QLineF(canvas.toLogical(p.x, p.y), first).length() < 3.0;
        });
        QVERIFY(onTrack);
        // Without the reflected wave no reflected fronts move.
        s.rixo.Timer1_Timer();
        QVERIFY(!s.fronts.layer(0)[1].lines.empty());
        child<QCheckBox>(s.panel, "reflected").setChecked(false);
        s.rixo.Timer1_Timer();
        QVERIFY(s.fronts.layer(0)[1].lines.empty());
        QVERIFY(!s.fronts.layer(0)[2].lines.empty());
    }

    void longAnimationsStayBoundedAndSurviveASliver() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        const QList<ShapeWidget*> corpuscles = s.somata.findChildren<ShapeWidget*>("soma");
        s.panel.Command1_Click();
        const int rixoOps = s.rixo.drawing().recordedOperations();
        const int somataOps = s.somata.drawing().recordedOperations();
        int mostLines = 0;
        for (int t = 0; t < 20000; ++t) {  // over three minutes of 10 ms ticks
            s.rixo.Timer1_Timer();
            s.somata.Timer1_Timer();
            if (s.pulse.isEnabled()) s.panel.Timer1_Timer();
            mostLines = std::max(mostLines, s.fronts.lineCount());
        }
        QVERIFY(!s.pulse.isEnabled());  // the pulse left the field and stopped itself
        QCOMPARE(s.rixo.drawing().recordedOperations(), rixoOps);
        QCOMPARE(s.somata.drawing().recordedOperations(), somataOps);
        QVERIFY(mostLines > 10 && mostLines < 500);
        QVERIFY(s.somata.tick() < 20000);  // the stream starts again rather than counting on
        // The corpuscles move: some are on view, spread along the track.
        const auto visible =
            std::count_if(corpuscles.begin(), corpuscles.end(), [](const ShapeWidget* w) { return w->isVisible(); });
        QVERIFY(visible > 0);
        // A sliver of a window in the middle of it all.
        s.rixo.resize(3, 2);
        s.somata.resize(2, 3);
        s.somata.xekina_Click();
        for (int t = 0; t < 50; ++t) {
            s.rixo.Timer1_Timer();
            s.somata.Timer2_Timer();
        }
        s.somata.fermat_Click();
        s.somata.evresielaxistoy_Click();
        QCOMPARE(s.rixo.drawing().skippedOperations(), 0);
        QCOMPARE(s.somata.drawing().skippedOperations(), 0);
        QVERIFY(scope.dialogs().messages.isEmpty());  // the layers' self-check never complained
    }
};

QTEST_MAIN(TestInterpretationScreens)
#include "test_interpretation_screens.moc"
