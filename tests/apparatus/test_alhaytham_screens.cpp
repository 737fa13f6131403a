// Al Haytham's instrument, his rules on the graph screen and their check.
#include <QtTest>

#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/alhaytham_texts.h"
#include "apparatus/apparatus_openers.h"
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

const QColor kRed(255, 0, 0);
const QColor kMagenta(255, 0, 255);

Alhazencheck& openCheck() {
    openAlHaythamInstrument();
    form<Xaithamos>().svise->click();
    return form<Alhazencheck>();
}

}  // namespace

class TestAlHaythamScreens : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() { module1().pi = 4.0 * std::atan(1.0); }

    void theRulesArePrintedLetterForLetter() {
        ScreenTestScope scope;
        openAlHaythamInstrument();
        const QStringList printed = form<Incref>().canvas()->printedTexts();
        QCOMPARE(printed.size(), 13);
        QCOMPARE(printed[0], QStringLiteral(" AL HAYTHAM'S RULES  FOR REFRACTION–Κανόνες του Al Haytham για τη διάθλαση"));
        QCOMPARE(printed[5], printed[6]);  // rule (2), twice
        QCOMPARE(printed[5],
                 QStringLiteral("(2)d2 - d1 < i2-i1                                               απ2 - απ1 < πρ2 - πρ1 ."));
        QCOMPARE(printed[9], QStringLiteral("(5) for refraction form rare to dens d < r/2                     για διάθλαση "
                                            "από αραιό σε πυκνό απ < πρ/2"));
        QCOMPARE(printed[12], QStringLiteral("(8) In a rarer medium the  light diverges from the perpendicular     `Eνα "
                                             "αραιότερο μέσο απομακρύνει το φως από την κάθετο."));
        const auto& lines = alHaythamRuleLines();
        for (std::size_t k = 0; k < lines.size(); ++k) QCOMPARE(lines[k].first, 110.0 - 5.0 * static_cast<double>(k));
        QCOMPARE(pixelsOf(*form<Incref>().canvas(), kRed), 0);
    }

    void theInstrumentFollowsItsControls() {
        ScreenTestScope scope;
        openAlHaythamInstrument();
        Xaithamos& x = form<Xaithamos>();
        x.resize(760, 700);
        QCoreApplication::processEvents();
        QVERIFY(x.isVisible());
        QCOMPARE(x.windowTitle(), QStringLiteral("Πείραμα του Αλ Χαϊθάμ"));
        QCOMPARE(x.Label1->text(), QStringLiteral("INCIDENCE  ANGLE Γωνία πρόσπτωσης = 30°"));
        QCOMPARE(x.Option1->text(), QStringLiteral("RULER IVISIBLEΚΑΝΟΝΑΣ ΑΟΡΑΤΟΣ"));
        QVERIFY(x.Option1->isChecked() && x.timiepi->isHidden());
        QCOMPARE(pixelsOf(*x.canvas, QColor(200, 200, 0)), 0);

        x.strefo->setValue(80);
        QCOMPARE(x.Label1->text(), QStringLiteral("INCIDENCE ANGLE Γωνία πρόσπτωσης = 80°"));
        x.Option2->click();
        QVERIFY(!x.timiepi->isHidden());
        QVERIFY(pixelsOf(*x.canvas, QColor(200, 200, 0)) > 0);  // the ruler
        x.timiepi->setValue(10);
        QCOMPARE(x.Label2->text(), QStringLiteral("POSITION OF STYLUSθέση στυλού = 1.0 RAY ακτίνα"));
        x.strefo->setValue(0);
        x.timiepi->setValue(0);
        QCOMPARE(x.canvas->skippedOperations(), 0);
        x.Option1->click();
        QVERIFY(x.timiepi->isHidden());
        QCOMPARE(pixelsOf(*x.canvas, QColor(200, 200, 0)), 0);
    }

    void hideMovesOnToTheCheckAndTheExplanation() {
        ScreenTestScope scope;
        Alhazencheck& check = openCheck();
        QVERIFY(!form<Xaithamos>().isVisible());
        QVERIFY(check.isVisible());
        QCOMPARE(check.windowTitle(), QStringLiteral("CHECK AL HAYTHAM'S RULES "));
        QCOMPARE(check.Label1->text(), QStringLiteral("n =1.33"));
        const QString text = form<Analysis>().text();
        QVERIFY(text.startsWith(QStringLiteral(
            "Ο `Aραβας AL HAYTHAM που είναι γνωστός και ως Al Hazen πρότεινε διάφορους νόμους διάθλασης.")));
        // Each Greek sentence is said once: the comparison with a moving body opens the text only.
        QCOMPARE(text.count(QStringLiteral("Συνέκρινε τη διάθλαση προς την κίνηση ενός σώματος.")), 1);
        QVERIFY(text.endsWith(QStringLiteral("YOU CAN CHECK IF A RULE IS VIOLATED IF A GRAPH CHANGES COLOR. ALSO THE "
                                             "RULE CHANGES COLOR")));
        const QStringList legend = check.canvas->printedTexts();
        for (const char* t : {"REFRACTION διάθλασης", "DEVIATION απόκλισης", "INCIDENCE/2 πρόσπτωσης/2",
                              "(INCIDENCE + DEVIATION πρόσπτωσης+απόκλισης)/2"})
            QVERIFY2(legend.contains(QString::fromUtf8(t)), t);
        // The legend keeps its own colours for deviation and half incidence.
        QVERIFY(pixelsOf(*check.canvas, QColor(0, 255, 0)) > 0);
        QVERIFY(pixelsOf(*check.canvas, QColor(0, 255, 255)) > 0);
    }

    // n = 2.00 breaks rule (5) at once: it turns red on the graph screen;
    // n = 0.50 breaks rule (6) instead and ends its curves at 30°.
    void brokenRulesTurnTheirColourAndAreReprintedOnlyOnAChange() {
        ScreenTestScope scope;
        Alhazencheck& check = openCheck();
        Canvas& rules = *form<Incref>().canvas();
        check.timidikti->setValue(100);
        QVERIFY(!check.flags().rule5Shown && !check.flags().rule6Shown);
        QCOMPARE(check.segmentsDrawn(), 88);
        QCOMPARE(pixelsOf(rules, kRed), 0);

        check.timidikti->setValue(200);
        QCOMPARE(check.Label1->text(), QStringLiteral("n =2.00"));
        QVERIFY(check.flags().rule5Shown && !check.flags().rule6Shown);
        QVERIFY(pixelsOf(rules, kRed) > 0);
        QCOMPARE(pixelsOf(rules, kMagenta), 0);
        const int printings = check.rulePrintings();
        check.CheckAlHaythamRules(2.0);  // still broken all along: the rules stay as printed
        QCOMPARE(check.rulePrintings(), printings);
        // At 1.99 rule (5) holds up to about 11.5° and breaks after: two changes.
        check.timidikti->setValue(199);
        QCOMPARE(check.rulePrintings(), printings + 2);
        QVERIFY(check.flags().rule5Shown);

        check.timidikti->setValue(50);
        QVERIFY(!check.flags().rule5Shown && check.flags().rule6Shown);
        QCOMPARE(check.rulePrintings(), printings + 4);
        QCOMPARE(pixelsOf(rules, kRed), 0);
        QVERIFY(pixelsOf(rules, kMagenta) > 0);
        QCOMPARE(check.segmentsDrawn(), 29);  // 1° … 29°: from 30° on no refracted ray

        // Dragged from end to end: every index draws a finite picture.
        for (int value = check.timidikti->minimum(); value <= check.timidikti->maximum(); value += 7) {
            check.timidikti->setValue(value);
            QCOMPARE(check.canvas->skippedOperations(), 0);
        }
    }

    void backReturnsAndEndEndsTheProgram() {
        ScreenTestScope scope;
        Alhazencheck& check = openCheck();
        QCOMPARE(check.Command1->text(), QStringLiteral("BACK TO HISTORICAL DATA"));
        check.Command1->click();
        QVERIFY(!check.isVisible());
        QVERIFY(scope.endStatuses.empty());
        check.Command2->click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }
};

QTEST_MAIN(TestAlHaythamScreens)
#include "test_alhaytham_screens.moc"
