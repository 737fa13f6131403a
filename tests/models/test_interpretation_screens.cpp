// The interpretation screens as the pupil uses them: opened from the main
// menu and the data screen, the animations and their timers, the Fermat
// demonstration and what typed indices do.
#include <QtTest>

#include <cmath>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "history/inpdat_screen.h"
#include "models/epiloges_screen.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "test_support.h"
#include "interpretation_screens_support.h"

namespace {

bool anyTimerEnabled(const Screens& s) {
    return s.rixo.Timer1->isEnabled() || s.panel.Timer1->isEnabled() || s.somata.Timer1->isEnabled() ||
           s.somata.Timer2->isEnabled();
}

bool noNaN(const QStringList& texts) {
    return std::none_of(texts.begin(), texts.end(), [](const QString& t) {
        return t.contains(QLatin1String("nan"), Qt::CaseInsensitive) || t.contains(QLatin1String("inf"));
    });
}

QStringList panelTexts(const Rixotext& p) {
    QStringList t;
    for (const QLabel* l : {p.Label1, p.Label2, p.Label4, p.Label5, p.Label6, p.Label7}) t << l->text();
    return t;
}

}  // namespace

class TestInterpretationScreens : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void mainMenuAndDataScreenOpenTheThreeScreens() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QVERIFY(s.rixo.isVisible() && s.panel.isVisible() && s.somata.isVisible());
        QVERIFY(s.rixo.Timer1->isRunning());  // the waves move from the start
        QCOMPARE(s.rixo.windowTitle(), QStringLiteral("WAVES"));
        QCOMPARE(s.panel.windowTitle(), QStringLiteral("REFLECTED AND REFRACTED ANAKLOMENOI KAI DIATHALOMENOI"));
        QCOMPARE(s.somata.windowTitle(), QStringLiteral("CORPUSCULAR AND FERMAT ΣΩMATIΔIA KAI FERMAT"));
        // BACK goes back to where the pupil came from.
        s.rixo.Endof_Click();
        QVERIFY(!s.rixo.isVisible() && !s.panel.isVisible() && !s.somata.isVisible());
        QVERIFY(form<Diathlasimeleti>().isVisible());

        form<Inpdat>().Command4_Click();  // "INTERPRETATION  OF lAW"
        QVERIFY(!form<Inpdat>().isVisible());
        QVERIFY(s.rixo.isVisible() && s.rixo.Timer1->isRunning());
        s.rixo.Endof_Click();
        QVERIFY(form<Inpdat>().isVisible());
    }

    void backStopsAllFourTimersAndHiddenScreensRunNone() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.panel.Command1_Click();  // waves, the pulse and Newton's corpuscles together
        QVERIFY(s.rixo.Timer1->isRunning() && s.panel.Timer1->isRunning() && s.somata.Timer1->isRunning());
        QCOMPARE(s.somata.Timer1->interval(), 10);
        s.somata.Timer2->setEnabled(true);
        // Hiding a screen stops its timers; showing it again resumes them.
        s.somata.hide();
        QVERIFY(!s.somata.Timer1->isRunning() && s.somata.Timer1->isEnabled());
        s.rixo.hide();
        QVERIFY(!s.panel.Timer1->isRunning());  // the pulse is drawn on the wave screen
        s.rixo.show();
        s.somata.show();
        QVERIFY(s.somata.Timer1->isRunning() && s.panel.Timer1->isRunning());
        // Minimised counts as out of view: the animations pause, and take
        // up again where they were when the window comes back.
        const long ticks = s.rixo.Timer1->ticks();
        s.rixo.showMinimized();
        QVERIFY(!s.rixo.Timer1->isRunning() && !s.panel.Timer1->isRunning() && s.rixo.Timer1->isEnabled());
        QTest::qWait(60);
        QCOMPARE(s.rixo.Timer1->ticks(), ticks);
        s.somata.showMinimized();
        QVERIFY(!s.somata.Timer1->isRunning());
        s.rixo.showNormal();
        s.somata.showNormal();
        QVERIFY(s.rixo.Timer1->isRunning() && s.panel.Timer1->isRunning() && s.somata.Timer1->isRunning());
        QTRY_VERIFY(s.rixo.Timer1->ticks() > ticks);
        s.rixo.Endof_Click();
        QVERIFY(!anyTimerEnabled(s));
        // Descartes' timer runs at 50 ms; STOP stops both.
        openFromMenu();
        s.somata.xekina_Click();
        QCOMPARE(s.somata.Timer2->interval(), 50);
        QVERIFY(s.somata.Timer2->isRunning() && !s.somata.Timer1->isEnabled());
        QCOMPARE(s.panel.Text1->text(), QStringLiteral("nrefra= 1.50"));
        s.somata.STAMATHMA_Click();
        QVERIFY(!s.somata.Timer1->isEnabled() && !s.somata.Timer2->isEnabled());
    }

    void panelTextsKeepTheirOwnWording() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QCOMPARE(s.panel.Label2->text(), QStringLiteral("n2 του κάτω διά n1 του πάνω: n2/n1 = 1.50"));
        s.panel.n1overn2->setValue(120);
        QCOMPARE(s.panel.Label2->text(), QStringLiteral("n2 του κάτω δια του n1 του πάνω: n2/n1 = 1.20"));
        QCOMPARE(s.panel.Label6->text(), QStringLiteral("Κρίσιμη γωνία= 56.44"));
        s.panel.n1overn2->setValue(150);
        s.panel.prosptosi->setValue(31);
        s.panel.prosptosi->setValue(30);
        QCOMPARE(s.panel.Label1->text(), QStringLiteral("INCIDENCE Πρόσπτωσης= 30  REFRACTION διάθλασης =19.47°"));
        s.panel.Command1_Click();
        QCOMPARE(s.panel.Label1->text(), QStringLiteral("INCIDENCE Πρόσπτωσης= 30 REFRACTION διάθλασης =19.47°"));
        QCOMPARE(s.panel.Label5->text(), QStringLiteral("REFLECTED Ανακλώμενο= 24.04"));
        QCOMPARE(s.panel.Label4->text(), QStringLiteral("REFRACTED Διαθλώμενο= 75.96"));
        QCOMPARE(s.panel.Label7->text(), QStringLiteral("Πάχος στρώματος = 50.00"));
        // The pulse's first tick writes the shares with "%".
        s.panel.Timer1_Timer();
        QCOMPARE(s.panel.Label5->text(), QStringLiteral("REFLECTED Ανακλώμενο % = 24.04"));
        // Normal incidence: 0/0 in the Fresnel quotients gives the limits.
        s.panel.prosptosi->setValue(0);
        QCOMPARE(s.panel.Label5->text(), QStringLiteral("REFLECTED Ανακλώμενο = 20.00"));
        QCOMPARE(s.panel.Label4->text(), QStringLiteral("REFRACTED Διαθλώμενο = 80.00"));
        // Into a less dense medium beyond the critical angle: total reflection.
        s.panel.n1overn2->setValue(70);
        s.panel.prosptosi->setValue(60);
        QVERIFY(s.panel.Label1->text().endsWith(QStringLiteral("TOTAL REFLECTION  ΟΛΙΚΗ ΑΝΑΚΛΑΣΗ")));
        QCOMPARE(s.panel.Label4->text(), QStringLiteral("REFRACTED Διαθλώμενο = 0.00"));
        s.somata.Timer1_Timer();  // the running stream takes the change at its next tick
        QVERIFY(s.somata.track().totalReflection);
        QVERIFY(noNaN(panelTexts(s.panel)));
    }

    void waveScreenMenusAndRayPicture() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.okitis2_Click();
        QCOMPARE(module1().speedRatio, 2.0);
        QCOMPARE(s.rixo.index(), 2.0);
        s.rixo.okitismiso_Click();
        QCOMPARE(s.rixo.index(), 0.5);
        s.rixo.okitis1_Click();
        s.panel.n1overn2->setValue(150);
        s.rixo.aktina_Click();
        QVERIFY(!s.rixo.Timer1->isEnabled());
        const QStringList printed = s.rixo.canvas->printedTexts();
        QVERIFY(printed.contains(QStringLiteral("n =1.50    c2/c1= 0.67    c1/c2= 1.50")));
        QVERIFY(printed.contains(QStringLiteral("Incidence πρόσπτωσης =30    Refraction= 19.47°")));
        QVERIFY(printed.contains(QStringLiteral("criticalγωνία =41.81")));
        QVERIFY(printed.contains(QStringLiteral("REFLECTED Ανακλώμενο= 24.04")));
        s.rixo.TIMERSTART_Click();
        QVERIFY(s.rixo.Timer1->isRunning());
        QVERIFY(!s.panel.newtongtimi->isVisible());
        s.rixo.Telos_Click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    void typedIndexIsCheckedBeforeUse() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.epiloges_Click();
        Epiloges& e = form<Epiloges>();
        QVERIFY(e.isVisible());
        const double before = s.rixo.index();
        // Numbers outside the range are told the range, as are indices so
        // small that 1/n would print as infinity.
        for (const char* bad : {"0", "-2", "1e7", "1e-320", "1e999"}) {
            scope.dialogs().answers.push_back(QString::fromLatin1(bad));
            e.deiktisdia_Click();
        }
        for (const char* bad : {"abc", "1,,5", "1,5.0", "nan"}) {
            scope.dialogs().answers.push_back(QString::fromLatin1(bad));
            e.deiktisdia_Click();
        }
        QCOMPARE(scope.dialogs().messages.size(), 9);
        for (int k = 0; k < 9; ++k) {
            const QString& m = scope.dialogs().messages[k];
            QCOMPARE(m.contains("between 0.01 and 100") && m.contains("από 0.01 έως 100"), k < 4);
            QVERIFY(m.contains("1.5") && m.contains("δείκτη"));
        }
        QCOMPARE(s.rixo.index(), before);
        e.deiktisdia_Click();  // Cancel: nothing said, nothing changed
        QCOMPARE(scope.dialogs().messages.size(), 9);
        QCOMPARE(scope.dialogs().prompts.last(), QStringLiteral("GIVE INDEX Δώσε δείκτη"));
        // Below sin 29°: a picture of total reflection, no NaN anywhere.
        scope.dialogs().answers.push_back(QStringLiteral("0.3"));
        e.deiktisdia_Click();
        QCOMPARE(s.rixo.incidenceDegrees(), 29.0);
        QVERIFY(s.rixo.refraction().totalReflection);
        QVERIFY(s.rixo.Timer1->isRunning());
        QCOMPARE(s.rixo.canvas->skippedOperations(), 0);
        // Index 1 through IDIA V: straight on.
        scope.dialogs().answers.push_back(QStringLiteral("1.33"));
        e.deiktisdia_Click();
        e.samev_Click();
        QVERIFY(!s.rixo.Timer1->isEnabled());
        QCOMPARE(s.rixo.refraction().refraction, s.rixo.refraction().incidence);
        e.changev_Click();
        QCOMPARE(s.rixo.index(), 1.33);
        // The same checks on the wave screen's own question; a Greek decimal
        // comma is a decimal point.
        scope.dialogs().answers = {QStringLiteral("-1"), QStringLiteral("1e-320")};
        s.rixo.deiktis_Click();
        s.rixo.deiktis_Click();
        QCOMPARE(s.rixo.index(), 1.33);
        QVERIFY(scope.dialogs().messages.last().contains("between 0.01 and 100"));
        scope.dialogs().answers = {QStringLiteral("2,4")};
        s.rixo.deiktis_Click();
        QCOMPARE(s.rixo.index(), 2.4);
        // END OFF: back to the data screen.
        e.Endof_Click();
        QVERIFY(!s.rixo.isVisible() && !e.isVisible() && form<Inpdat>().isVisible());
    }

    void fermatLabelsLetterForLetter() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.somata.fermat_Click();
        QVERIFY(s.somata.fermat1->isVisible() && s.somata.fermatscr->isVisible());
        QCOMPARE(s.somata.Label1->text(),
                 QStringLiteral("Time of movement from magenta body through blue to  green. TO MOVE THE magenta body "
                                "press Shift, to MOVE THE  GREEN PRESS Control, TO MOVE BLUE PRESS Shift & Control"));
        const kymatiko::Field f = s.somata.field();
        const double yb = f.boundary();
        // Mirror images above the boundary, blue half-way: Hero's law.
        s.somata.setBodyCentre(Somata::Magenta, {0.25 * f.width, yb + 200});
        s.somata.setBodyCentre(Somata::Green, {0.75 * f.width, yb + 200});
        s.somata.fermatscr->setValue(499);
        s.somata.fermatscr->setValue(500);
        const double d = 2.0 * std::hypot(0.25 * f.width, 200.0);
        QCOMPARE(s.somata.Label1->text(),
                 QStringLiteral("Time of movement from  magenta through blue to  GREEN") + fmt(d / 100.0, "0.00") +
                     QStringLiteral("            total distance = ") + fmt(d, "0.00") +
                     QStringLiteral("      Νόμος Ήρωνος"));
        // Off the law: the plain text.
        s.somata.fermatscr->setValue(300);
        QVERIFY(s.somata.Label1->text().startsWith(QStringLiteral("Time of movement from  magenta through blue to GREEN ")));
        // Across the boundary, FIND MINIMUM, then the bar on the found point: Fermat's example.
        s.somata.setBodyCentre(Somata::Green, {0.75 * f.width, yb - 250});
        s.somata.evresielaxistoy_Click();
        QVERIFY(s.somata.Label1->text().startsWith(QStringLiteral("LEAST TIMEΟ ΕΛΑΧΙΣΤΟΣ ΧΡΟΝΟΣ: ")));
        QVERIFY(!s.somata.fermatscr->isVisible());
        s.somata.fermatscr->show();
        s.somata.fermatscr_GotFocus();
        s.somata.fermatscr_Change();
        QVERIFY(s.somata.Label1->text().endsWith(QStringLiteral("      Παράδειγμα αρχής Fermat")));
        QVERIFY(s.somata.Label1->text().contains(QStringLiteral("GREEN")));
        QVERIFY(s.somata.Label1->text().contains(QStringLiteral("             total distance = ")));
        // Descartes' speeds: the same path is no example of the law.
        s.somata.descartes_Click();
        QVERIFY(!s.somata.fermatscr->isVisible() && !s.somata.Label1->isVisible());
        s.somata.fermat_Click();
        s.somata.fermatscr_Change();
        QVERIFY(s.somata.Label1->text().startsWith(QStringLiteral("Time of movement from  magenta through blue to GREEN ")));
    }

    void fermatBodiesFollowTheMouseAndSurviveCoincidence() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.somata.fermat_Click();
        Canvas* c = s.somata.canvas;
        const QPoint at(c->width() / 3, c->height() / 4);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ShiftModifier, at);
        const QPointF user = c->toUser(at);
        QVERIFY(std::fabs(s.somata.bodyCentre(Somata::Magenta).x - user.x()) < 1e-6);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ControlModifier, at);  // green onto magenta
        QCOMPARE(s.somata.bodyCentre(Somata::Green).x, s.somata.bodyCentre(Somata::Magenta).x);
        QTest::mouseClick(c, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, at);  // and blue too
        QCOMPARE(s.somata.bodyCentre(Somata::Blue).y, s.somata.bodyCentre(Somata::Magenta).y);
        QVERIFY(noNaN({s.somata.Label1->text()}));
        QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));  // no key: nothing moves
        QCOMPARE(s.somata.bodyCentre(Somata::Magenta).x, user.x());
        // Same x: every candidate is the same point; the first one is reported.
        s.somata.evresielaxistoy_Click();
        QCOMPARE(s.somata.bodyCentre(Somata::Blue).x, user.x());
        QVERIFY(noNaN({s.somata.Label1->text()}));
        QCOMPARE(c->skippedOperations(), 0);
    }

    void picturesFollowTheWindowTheControlsAndTheKeyboard() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        // A wide window: a wide field, the bodies where they were in it.
        s.somata.fermat_Click();
        const kymatiko::Point before = s.somata.bodyCentre(Somata::Green);
        const kymatiko::Field small = s.somata.field();
        s.somata.resize(1000, 400);
        QCoreApplication::processEvents();
        const kymatiko::Field wide = s.somata.field();
        QVERIFY(std::fabs(wide.width / wide.height - double(s.somata.canvas->width()) / s.somata.canvas->height()) < 1e-9);
        const kymatiko::Point after = s.somata.bodyCentre(Somata::Green);
        QVERIFY(std::fabs(after.x / wide.width - before.x / small.width) < 1e-9);
        QVERIFY(QLineF(s.somata.fermat3->centre(), s.somata.canvas->toLogical(after.x, after.y)).length() <= 1.0);
        // The arrow keys move the blue body along the boundary.
        s.somata.fermatscr->setFocus();
        s.somata.fermatscr->setValue(500);
        const double blue = s.somata.bodyCentre(Somata::Blue).x;
        QTest::keyClick(s.somata.fermatscr, Qt::Key_Right);
        QVERIFY(s.somata.bodyCentre(Somata::Blue).x > blue);
        // The corpuscles ride on their track.
        s.somata.SOMATIDIA_Click();
        for (int t = 0; t < 200; ++t) s.somata.Timer1_Timer();
        const auto& track = s.somata.track().points;
        const QPointF first = s.somata.soma[1]->centre();  // the middle stream, unshifted
        QVERIFY(s.somata.soma[1]->isVisible());
        const bool onTrack = std::any_of(track.begin(), track.end(), [&](const kymatiko::Point& p) {
            return QLineF(s.somata.canvas->toLogical(p.x, p.y), first).length() < 3.0;
        });
        QVERIFY(onTrack);
        // Without the reflected wave no reflected fronts move.
        s.rixo.Timer1_Timer();
        QVERIFY(!s.rixo.moving->layer(0)[1].lines.empty());
        s.panel.reflected->setChecked(false);
        s.rixo.Timer1_Timer();
        QVERIFY(s.rixo.moving->layer(0)[1].lines.empty());
        QVERIFY(!s.rixo.moving->layer(0)[2].lines.empty());
    }

    void longAnimationsStayBoundedAndSurviveASliver() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.panel.Command1_Click();
        const int rixoOps = s.rixo.canvas->recordedOperations();
        const int somataOps = s.somata.canvas->recordedOperations();
        int mostLines = 0;
        for (int t = 0; t < 20000; ++t) {  // over three minutes of 10 ms ticks
            s.rixo.Timer1_Timer();
            s.somata.Timer1_Timer();
            if (s.panel.Timer1->isEnabled()) s.panel.Timer1_Timer();
            mostLines = std::max(mostLines, s.rixo.moving->lineCount());
        }
        QVERIFY(!s.panel.Timer1->isEnabled());  // the pulse left the field and stopped itself
        QCOMPARE(s.rixo.canvas->recordedOperations(), rixoOps);
        QCOMPARE(s.somata.canvas->recordedOperations(), somataOps);
        QVERIFY(mostLines > 10 && mostLines < 500);
        QVERIFY(s.somata.tick() < 20000);  // the stream starts again rather than counting on
        // The corpuscles move: some are on view, spread along the track.
        const auto visible = std::count_if(s.somata.soma.begin(), s.somata.soma.end(),
                                           [](const ShapeWidget* w) { return w->isVisible(); });
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
        QCOMPARE(s.rixo.canvas->skippedOperations(), 0);
        QCOMPARE(s.somata.canvas->skippedOperations(), 0);
        QVERIFY(scope.dialogs().messages.isEmpty());  // the layers' self-check never complained
    }
};

QTEST_MAIN(TestInterpretationScreens)
#include "test_interpretation_screens.moc"
