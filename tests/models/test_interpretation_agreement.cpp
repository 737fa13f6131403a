// The interpretation windows agree: one index and one angle shown alike by
// the wave screen, the panel, the corpuscle screen and the index-and-
// velocities screen, whatever command changed them; and the Fermat
// demonstration keeps showing what its last command chose through the
// resizes that showing and hiding its controls cause.
#include <QtTest>

#include <cmath>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "test_support.h"
#include "interpretation_screens_support.h"

namespace {

// Empty when every window shows index n and angle a; else what disagrees.
QString disagreement(const Screens& s, double n, int a) {
    QStringList wrong;
    const kymatiko::Refraction r = kymatiko::refract(kymatiko::radians(a), n);
    const QString refraction = r.totalReflection ? texts::totalReflectionNote() : fmt(kymatiko::degrees(r.refraction), "0.00");
    const kymatiko::Shares shares = kymatiko::shares(kymatiko::fresnel(r, n));
    if (s.rixo.index() != n || s.rixo.incidenceDegrees() != a) wrong << "wave screen's values";
    if (s.panel.ratio() != n || s.panel.incidenceDegrees() != a) wrong << "panel's values";
    if (!s.panel.Label2->text().endsWith(fmt(n, "0.00"))) wrong << "panel ratio: " + s.panel.Label2->text();
    if (!s.panel.Label1->text().contains(QStringLiteral("= ") + fmt(a, "0")) ||
        !s.panel.Label1->text().contains(refraction))
        wrong << "panel angles: " + s.panel.Label1->text();
    if (!s.panel.Label5->text().endsWith(fmt(shares.reflected, "0.00")))
        wrong << "panel reflected: " + s.panel.Label5->text();
    if (!s.panel.Label4->text().endsWith(fmt(shares.refracted, "0.00")))
        wrong << "panel refracted: " + s.panel.Label4->text();
    // The energy lines beside them, on the panel and on the wave picture.
    const QStringList energy = texts::energyLines(r, n);
    const QStringList printed = s.rixo.canvas->printedTexts();
    if (energy.size() != 3 || s.panel.energyS->text() != energy[0] || s.panel.energyP->text() != energy[1] ||
        s.panel.brewster->text() != energy[2])
        wrong << "panel energy: " + s.panel.energyS->text();
    for (const QString& e : energy)
        if (!printed.contains(e)) wrong << "wave picture energy: " + e;
    // The wave picture prints the index and the angles it was drawn with.
    if (!printed.contains(texts::speedsLine(n))) wrong << "wave picture: " + printed.join(" | ");
    if (!printed.join(' ').contains(refraction)) wrong << "wave picture angle: " + printed.join(" | ");
    // The corpuscles leave along the same refraction angle.
    if (s.somata.track().totalReflection != r.totalReflection) wrong << "corpuscles";
    if (Forms::instance().exists<Epiloges>() && !form<Epiloges>().summary->text().startsWith("n = " + fmt(n, "0.00")))
        wrong << "index and velocities: " + form<Epiloges>().summary->text();
    return wrong.join("; ");
}

}  // namespace

class TestInterpretationAgreement : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void everyWindowShowsTheOneIndexAndAngle() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QCOMPARE(disagreement(s, 1.5, 30), QString());
        s.rixo.okitis2_Click();  // c=2
        QCOMPARE(disagreement(s, 2.0, 30), QString());
        QCOMPARE(s.panel.n1overn2->value(), 200);
        s.rixo.epiloges_Click();
        scope.dialogs().answers.push_back(QStringLiteral("1.33"));
        s.rixo.deiktis_Click();  // GIVE INDEX on the wave screen
        QCOMPARE(disagreement(s, 1.33, 30), QString());
        QCOMPARE(s.panel.Label5->text(), QStringLiteral("REFLECTED Ανακλώμενο= ") +
                                             fmt(kymatiko::shares(kymatiko::fresnel(s.panel.refraction(), 1.33)).reflected, "0.00"));
        // The ray picture, then the speed menus: figures follow the picture.
        s.rixo.okitismiso_Click();
        s.rixo.aktina_Click();
        s.rixo.okitis1_Click();
        QCOMPARE(disagreement(s, 1.0, 30), QString());
        QVERIFY(s.rixo.canvas->printedTexts().contains(QStringLiteral("REFLECTED Ανακλώμενο= 0.00")));
        // Beyond the critical angle after the panel's own bar moved.
        s.panel.prosptosi->setValue(60);
        s.rixo.okitismiso_Click();
        QCOMPARE(disagreement(s, 0.5, 60), QString());
        // The index-and-velocities screen's typed index and its angle.
        Epiloges& e = form<Epiloges>();
        scope.dialogs().answers.push_back(QStringLiteral("1.2"));
        e.deiktisdia_Click();
        QCOMPARE(disagreement(s, 1.2, 29), QString());
        QCOMPARE(s.panel.prosptosi->value(), 29);
        e.samev_Click();  // the same speed in both media
        QCOMPARE(disagreement(s, 1.0, 29), QString());
        e.changev_Click();  // and the typed index again
        QCOMPARE(disagreement(s, 1.2, 29), QString());
        // The panel's bar drives the others.
        s.rixo.TIMERSTART_Click();
        s.panel.n1overn2->setValue(133);
        QCOMPARE(disagreement(s, 1.33, 29), QString());
    }

    // IDIA V (the same speed in both media) and the other windows never
    // contradict each other: a c= menu, the wave screen's typed index or the
    // panel's bar gives the media different speeds, so the check moves to
    // METAVOLH V with the ray they bend; METAVOLH V brings back the index
    // the speeds had last. The screen's own typed index waits under IDIA V.
    void sameSpeedsHoldUntilTheSpeedsChange() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.epiloges_Click();
        Epiloges& e = form<Epiloges>();
        auto checkedSame = [&e](bool same) {
            return e.samev->isChecked() == same && e.changev->isChecked() == !same &&
                   e.summary->text().contains(same ? QStringLiteral("IDIA V") : QStringLiteral("METAVOLH V"));
        };
        e.samev_Click();
        QCOMPARE(disagreement(s, 1.0, 30), QString());
        QVERIFY(checkedSame(true));
        s.rixo.okitis2_Click();  // c=2
        QCOMPARE(disagreement(s, 2.0, 30), QString());
        QVERIFY(checkedSame(false));
        e.samev_Click();
        e.changev_Click();  // the speeds of c=2 again, not those before IDIA V
        QCOMPARE(disagreement(s, 2.0, 30), QString());
        // c=1 is the same speed: IDIA V stands, and METAVOLH V still knows c=2.
        e.samev_Click();
        s.rixo.okitis1_Click();
        QVERIFY(checkedSame(true));
        scope.dialogs().answers.push_back(QStringLiteral("1.33"));
        e.deiktisdia_Click();
        QCOMPARE(disagreement(s, 1.0, 29), QString());
        QVERIFY(checkedSame(true));
        e.changev_Click();
        QCOMPARE(disagreement(s, 1.33, 29), QString());
        QVERIFY(checkedSame(false));
        // The panel's bar and the wave screen's own question end IDIA V alike.
        e.samev_Click();
        s.panel.n1overn2->setValue(120);
        QCOMPARE(disagreement(s, 1.2, 29), QString());
        QVERIFY(checkedSame(false));
        e.samev_Click();
        scope.dialogs().answers.push_back(QStringLiteral("1,6"));
        s.rixo.deiktis_Click();
        QCOMPARE(disagreement(s, 1.6, 29), QString());
        QVERIFY(checkedSame(false));
    }

    // FERMAT'S PRINCIPLE shows its instruction and keeps it through the
    // resizes that showing its bar and label bring.
    void fermatShowsItsInstructionThroughResizes() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.somata.fermat_Click();
        QCoreApplication::processEvents();
        s.somata.resize(760, 600);
        QCoreApplication::processEvents();
        QCOMPARE(s.somata.Label1->text(), texts::fermatInstruction());
        QVERIFY(s.somata.fermatscr->isVisible());
        // Once the pupil moves a body the time replaces it, and stays.
        s.somata.fermatscr->setValue(300);
        const QString time = s.somata.Label1->text();
        QVERIFY(time.startsWith(QStringLiteral("Time of movement from  magenta")));
        s.somata.resize(700, 560);
        QCoreApplication::processEvents();
        QVERIFY(s.somata.Label1->text().startsWith(QStringLiteral("Time of movement from  magenta")));
    }

    // FIND MINIMUM straight from the corpuscles shows the least time; after
    // the corpuscles again, FERMAT'S PRINCIPLE starts afresh.
    void leastTimeFromTheCorpusclesAndBack() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.somata.SOMATIDIA_Click();
        s.somata.evresielaxistoy_Click();
        QCoreApplication::processEvents();
        s.somata.resize(760, 600);
        QCoreApplication::processEvents();
        QVERIFY2(s.somata.Label1->text().startsWith(QStringLiteral("LEAST TIMEΟ ΕΛΑΧΙΣΤΟΣ ΧΡΟΝΟΣ: ")),
                 qPrintable(s.somata.Label1->text()));
        QVERIFY(!s.somata.fermatscr->isVisible());
        s.somata.SOMATIDIA_Click();
        s.somata.fermat_Click();
        QCoreApplication::processEvents();
        s.somata.resize(720, 560);
        QCoreApplication::processEvents();
        QCOMPARE(s.somata.Label1->text(), texts::fermatInstruction());
        QVERIFY(s.somata.fermatscr->isVisible());
    }
};

QTEST_MAIN(TestInterpretationAgreement)
#include "test_interpretation_agreement.moc"
