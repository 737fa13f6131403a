// The pupil's road: from the data screen into each simulation and back.
#include <QtTest>

#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "ui/forms.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "history/data_screen_opener.h"
#include "history/inpdat_screen.h"
#include "test_support.h"

class TestFromDataScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() { module1().pi = 4.0 * std::atan(1.0); }

    void eachSimulationOpensFromTheDataScreenAndComesBack() {
        ScreenTestScope scope;
        openDataScreen();
        Inpdat& data = form<Inpdat>();
        QVERIFY(data.isVisible());

        named<QAction>(data, "ptolemaios")->trigger();
        Ptolemaios& ptolemy = form<Ptolemaios>();
        QVERIFY(ptolemy.isVisible() && form<Emfanisi>().isVisible());
        ptolemy.metatopisipar->setValue(0);  // where the law puts the body
        QVERIFY(ptolemy.lastCovered());
        ptolemy.Command1->click();
        QVERIFY(data.isVisible() && !ptolemy.isVisible());

        named<QAction>(data, "xaithamos")->trigger();
        Xaithamos& instrument = form<Xaithamos>();
        QVERIFY(instrument.isVisible());
        instrument.svise->click();
        Alhazencheck& check = form<Alhazencheck>();
        QVERIFY(check.isVisible());
        check.timidikti->setValue(200);
        QVERIFY(check.flags().rule5Shown);
        check.Command1->click();
        QVERIFY(data.isVisible() && !check.isVisible());

        named<QAction>(data, "ptolemeosprosarmogidedo")->trigger();
        Ptolkam& fitting = form<Ptolkam>();
        QVERIFY(fitting.isVisible());
        scope.dialogs().answers = {QStringLiteral("3")};
        fitting.Enallagi->click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        fitting.kripse->click();
        QVERIFY(data.isVisible() && !fitting.isVisible());
        QVERIFY(scope.endStatuses.empty());
    }

    // Closing Ptolemy's window takes the sight view with it; leaving for the
    // main menu hides whatever simulation is still open.
    void closingAndLeavingHideTheSimulations() {
        ScreenTestScope scope;
        openDataScreen();
        openPtolemyInstrument();
        QVERIFY(form<Emfanisi>().isVisible());
        form<Ptolemaios>().close();
        QVERIFY(!form<Emfanisi>().isVisible());

        openPtolemyInstrument();
        openAlHaythamInstrument();
        form<Xaithamos>().svise->click();
        openPtolemyDataFitting();
        hideApparatusScreens();
        for (QWidget* w : std::initializer_list<QWidget*>{&form<Ptolemaios>(), &form<Emfanisi>(), &form<Xaithamos>(),
                                                         &form<Alhazencheck>(), &form<Ptolkam>()})
            QVERIFY(!w->isVisible());
    }
};

QTEST_MAIN(TestFromDataScreen)
#include "test_from_data_screen.moc"
