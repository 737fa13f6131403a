// The interpretation windows agree: one index and one angle shown alike by
// the wave screen, the panel with its scroll bars, the corpuscle screen and
// the index-and-velocities screen, whatever command changed them; and the
// Fermat demonstration keeps showing what its last command chose through
// the resizes that showing and hiding its controls cause.
#include <QAction>
#include <QScrollBar>
#include <QtTest>

#include <algorithm>
#include <functional>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "interpretation_screens_support.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "test_support.h"

namespace {

// Empty when every window shows index n and angle a; else what disagrees.
QString disagreement(const Screens& s, double n, int a) {
    QStringList wrong;
    const kymatiko::Refraction r = kymatiko::refract(kymatiko::radians(a), n);
    const QString refraction =
        r.totalReflection ? texts::totalReflectionNote() : fmt(kymatiko::degrees(r.refraction), "0.00");
    const kymatiko::Shares shares = kymatiko::shares(kymatiko::fresnel(r, n));
    // The panel: its bars where the values are, and its figures.
    const auto& ratioBar = child<QScrollBar>(s.panel, "n1overn2");
    const int hundredths = std::clamp(qRound(n * 100.0), ratioBar.minimum(), ratioBar.maximum());
    if (ratioBar.value() != hundredths || ratioBar.accessibleDescription() != "n2/n1 = " + fmt(n, "0.00"))
        wrong << "ratio bar: " + QString::number(ratioBar.value()) + ", " + ratioBar.accessibleDescription();
    if (child<QScrollBar>(s.panel, "prosptosi").value() != a) wrong << "angle bar";
    if (!text(s.panel, "Label2").endsWith(fmt(n, "0.00"))) wrong << "panel ratio: " + text(s.panel, "Label2");
    const QString angles = text(s.panel, "Label1");
    if (!angles.contains(QStringLiteral("= ") + fmt(a, "0")) || !angles.contains(refraction))
        wrong << "panel angles: " + angles;
    if (!text(s.panel, "Label5").endsWith(fmt(shares.reflected, "0.00")))
        wrong << "panel reflected: " + text(s.panel, "Label5");
    if (!text(s.panel, "Label4").endsWith(fmt(shares.refracted, "0.00")))
        wrong << "panel refracted: " + text(s.panel, "Label4");
    // The energy lines, on the panel and on the wave picture, which also
    // prints the index and the angles it was drawn with.
    const QStringList energy = texts::energyLines(r, n);
    const QStringList printed = s.rixo.drawing().printedTexts();
    if (QStringList{text(s.panel, "energyS"), text(s.panel, "energyP"), text(s.panel, "brewster")} != energy)
        wrong << "panel energy: " + text(s.panel, "energyS");
    for (const QString& e : energy)
        if (!printed.contains(e)) wrong << "wave picture energy: " + e;
    if (!printed.contains(texts::speedsLine(n))) wrong << "wave picture: " + printed.join(" | ");
    if (!printed.join(' ').contains(refraction)) wrong << "wave picture angle: " + printed.join(" | ");
    // The corpuscles leave along the same refraction angle and say the index.
    if (s.somata.track().totalReflection != r.totalReflection ||
        !s.somata.drawing().summary().contains("n2/n1 = " + fmt(n, "0.00")))
        wrong << "corpuscles: " + s.somata.drawing().summary();
    const QString summary = text(form<Epiloges>(), "summary");
    if (!summary.startsWith("n = " + fmt(n, "0.00"))) wrong << "index and velocities: " + summary;
    return wrong.join("; ");
}

}  // namespace

class TestInterpretationAgreement : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // Every command that changes the index or the angle, in turn; after
    // each, every window shows the values. IDIA V (the same speed in both
    // media) holds until a command gives the media different speeds, and
    // METAVOLH V brings back the index the speeds had last; the screen's
    // own typed index waits under IDIA V.
    void everyCommandShowsTheOneIndexEverywhere() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.epiloges_Click();
        Epiloges& e = form<Epiloges>();
        auto answer = [&](const char* typed) { scope.dialogs().answers.push_back(QString::fromLatin1(typed)); };
        auto ratioBar = [&](int value) { child<QScrollBar>(s.panel, "n1overn2").setValue(value); };
        auto& angleBar = child<QScrollBar>(s.panel, "prosptosi");
        struct Step {
            const char* command;
            std::function<void()> act;
            double n;
            int angle;
            bool same;
        };
        // One statement a lambda (commas between the clicks) keeps the table a table.
        const std::vector<Step> steps{
            {"start", [] {}, 1.5, 30, false},
            {"c=2", [&] { s.rixo.okitis2_Click(); }, 2.0, 30, false},
            {"c=0,5", [&] { s.rixo.okitismiso_Click(); }, 0.5, 30, false},
            {"RAY, c=1", [&] { s.rixo.aktina_Click(), s.rixo.okitis1_Click(); }, 1.0, 30, false},
            {"GIVE INDEX", [&] { answer("1.33"), s.rixo.deiktis_Click(); }, 1.33, 30, false},
            {"ratio bar", [&] { ratioBar(120); }, 1.2, 30, false},
            {"angle bar, c=0,5", [&] { angleBar.setValue(60), s.rixo.okitismiso_Click(); }, 0.5, 60, false},
            {"WAVE, DEIKTHS", [&] { s.rixo.TIMERSTART_Click(), answer("1.2"), e.deiktisdia_Click(); }, 1.2, 29, false},
            {"IDIA V", [&] { e.samev_Click(); }, 1.0, 29, true},
            {"c=2", [&] { s.rixo.okitis2_Click(); }, 2.0, 29, false},
            {"IDIA V, METAVOLH V", [&] { e.samev_Click(), e.changev_Click(); }, 2.0, 29, false},
            {"IDIA V, c=1, DEIKTHS",
             [&] { e.samev_Click(), s.rixo.okitis1_Click(), answer("1.33"), e.deiktisdia_Click(); }, 1.0, 29, true},
            {"METAVOLH V", [&] { e.changev_Click(); }, 1.33, 29, false},
            {"IDIA V, ratio bar", [&] { e.samev_Click(), ratioBar(120); }, 1.2, 29, false},
            {"IDIA V, GIVE INDEX", [&] { e.samev_Click(), answer("1,6"), s.rixo.deiktis_Click(); }, 1.6, 29, false},
        };
        for (const Step& step : steps) {
            step.act();
            const QString wrong = disagreement(s, step.n, step.angle);
            QVERIFY2(wrong.isEmpty(), qPrintable(QString::fromLatin1(step.command) + ": " + wrong));
            const bool checked = child<QAction>(e, step.same ? "samev" : "changev").isChecked() &&
                                 !child<QAction>(e, step.same ? "changev" : "samev").isChecked();
            QVERIFY2(checked && text(e, "summary").contains(step.same ? "IDIA V" : "METAVOLH V"), step.command);
        }
        QCOMPARE(s.state.speedRatio(), 1.0);  // the last menu was c=1
    }

    // FERMAT'S PRINCIPLE shows its instruction, and FIND MINIMUM its least
    // time, through the resizes that showing and hiding the bar and the
    // label bring; once the pupil moves a body the time replaces the
    // instruction, and stays.
    void fermatKeepsItsViewThroughResizes() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        auto& bar = child<QScrollBar>(s.somata, "fermatscr");
        auto resized = [&](int width, int height) {
            QCoreApplication::processEvents();
            s.somata.resize(width, height);
            QCoreApplication::processEvents();
            return text(s.somata, "Label1");
        };
        s.somata.fermat_Click();
        QCOMPARE(resized(760, 600), texts::fermatInstruction());
        QVERIFY(bar.isVisible());
        bar.setValue(300);
        QVERIFY(resized(700, 560).startsWith(QStringLiteral("Time of movement from  magenta")));
        // Straight from the corpuscles, and back.
        s.somata.SOMATIDIA_Click();
        s.somata.evresielaxistoy_Click();
        QVERIFY(resized(760, 600).startsWith(QStringLiteral("LEAST TIMEΟ ΕΛΑΧΙΣΤΟΣ ΧΡΟΝΟΣ: ")));
        QVERIFY(!bar.isVisible());
        s.somata.SOMATIDIA_Click();
        s.somata.fermat_Click();
        QCOMPARE(resized(720, 560), texts::fermatInstruction());
    }
};

QTEST_MAIN(TestInterpretationAgreement)
#include "test_interpretation_agreement.moc"
