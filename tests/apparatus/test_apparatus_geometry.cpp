// Plain geometry and physics of the three historical simulations.
#include <QtTest>

#include <cmath>

#include "apparatus/alhaytham_rules.h"
#include "apparatus/ptolemy_fitting.h"
#include "apparatus/ptolemy_geometry.h"

using namespace ptolemy;

class TestApparatusGeometry : public QObject {
    Q_OBJECT
private slots:
    // From every start the guard ends on an angle whose lines of sight all
    // leave the water and lowers only as far as it must: 48° still lets the
    // ray through the centre out, but the line past the far edge of the
    // central body is totally reflected there, so 47° is drawn.
    void ptolemysSightLinesAlHaythamsRulesAndTheFitting() {
        for (int start = kMinWaterAngle; start <= kMaxWaterAngle; ++start) {
            const GuardResult g = guardWaterAngle(start);
            QVERIFY2(allSightLinesLeave(g.angle), qPrintable(QString::number(start)));
            QCOMPARE(g.angle, std::min(start, 47));
            QCOMPARE(g.restarts, start - g.angle);
            // Only a start at 48° or above passes 48°, where the centre line
            // leaves and the far edge's line is turned back.
            QCOMPARE(bool(g.edgeTurnedBack), start >= 48);
            if (g.edgeTurnedBack) {
                QVERIFY(g.edgeTurnedBack->incidenceDegrees > 48.0 && g.edgeTurnedBack->incidenceDegrees < 49.0);
                QVERIFY(g.edgeTurnedBack->sineTimesIndex >= 1.0);
                QCOMPARE(g.edgeTurnedBack->sineTimesIndex,
                         kWaterIndex * std::sin(radians(g.edgeTurnedBack->incidenceDegrees)));
            }
        }
        QVERIFY(PtolemySightLine(48, 0) && !PtolemySightLine(49, 0));
        QVERIFY(!PtolemySightLine(48, -kBodySize));
        // Out-of-range requests and an index where nothing leaves still end.
        QCOMPARE(guardWaterAngle(1000).angle, 47);
        QCOMPARE(guardWaterAngle(-5).angle, kMinWaterAngle);
        QCOMPARE(guardWaterAngle(88, 100.0).angle, kMinWaterAngle);
        QVERIFY(std::fabs(expectedAirAngle(1).value_or(0) - 1.33) < 0.005);
        const std::optional<SightLine> centre = PtolemySightLine(30, 0);
        QVERIFY(centre && std::fabs(centre->incidenceDegrees - 30.0) < 1e-9);
        QVERIFY(std::fabs(std::sin(radians(centre->airDegrees)) - 1.33 * 0.5) < 1e-12);
        // Both edge lines end on the rim, on the far side from the target.
        for (double edge : {kBodySize, -kBodySize}) {
            const std::optional<SightLine> s = PtolemySightLine(30, edge);
            QVERIFY(s && std::fabs(std::hypot(s->endX, s->endY) - kDiscRadius) < 1e-9 && s->endX < 0 && s->endY > 0);
        }
        // The edge nearer the target is seen at a smaller angle.
        QVERIFY(PtolemySightLine(30, kBodySize)->airDegrees < PtolemySightLine(30, -kBodySize)->airDegrees);
        QVERIFY(!PtolemySightLine(60, 0) && !PtolemySightLine(std::nan(""), 0));
        QVERIFY(!PtolemySightLine(30, std::numeric_limits<double>::infinity()));
        // The target's band lies exactly on the air body's where the law
        // predicts, and apart from it elsewhere, by the offset magnified.
        for (int w : {1, 10, 30, 48}) {
            for (double target : {0.5, 3.0, 10.0}) {
                const double a = *expectedAirAngle(w);
                const SightView at = *sightView(w, a, target);
                QVERIFY(at.covered && std::fabs(at.target.top - at.airBody.top) < 1e-9 &&
                        std::fabs(at.target.bottom - at.airBody.bottom) < 1e-9);
                const SightView off = *sightView(w, a - 2.0 - target, target);
                QVERIFY(!off.covered && off.target.bottom > off.airBody.top);  // seen above, no overlap
            }
        }
        const SightView far = *sightView(30, -60, 1.0);
        QVERIFY(far.target.top <= 60 && far.target.bottom <= 60);  // kept near the view
        QVERIFY(!sightView(60, 10, 1.0));
        // The position bar's value / 100 is the body's displacement in degrees
        // from where the law puts it: the ends are −2° and +3° at every angle in
        // water, 0 covers the target, and the body stays on the air arc.
        for (int w = kMinWaterAngle; w <= 47; ++w) {
            const double predicted = *expectedAirAngle(w);
            QVERIFY(std::fabs(airBodyAngle(w, -200, 1.0) - (predicted - 2.0)) < 1e-12);
            QVERIFY(std::fabs(airBodyAngle(w, 300, 1.0) - (predicted + 3.0)) < 1e-12);
            QCOMPARE(airBodyAngle(w, 0, 1.0), predicted);
            QVERIFY(sightView(w, airBodyAngle(w, 0, 0.5), 0.5)->covered);
            QVERIFY(!sightView(w, airBodyAngle(w, 50, 0.5), 0.5)->covered);  // half a degree off shows
        }
        using namespace alhaytham;
        const std::vector<CheckStep> equal = checkSteps(1.0);
        QCOMPARE(equal.size(), std::size_t(88));  // sin 90° / 1 = 1 ends the curve at 89°
        for (const CheckStep& s : equal) { QVERIFY(std::fabs(s.d1) < 1e-12 && !s.rule5Violated && !s.rule6Violated); }
        const std::vector<CheckStep> dense = checkSteps(2.0), rare = checkSteps(0.5);
        QVERIFY(!dense.empty() && dense.front().incidenceDegrees == 1);
        QVERIFY(dense.front().rule5Violated && !dense.front().rule6Violated);
        QVERIFY(!rare.empty() && rare.back().incidenceDegrees < 30);
        QVERIFY(rare.front().rule6Violated && !rare.front().rule5Violated);
        // No segment where either end has sin i / n ≥ 1.
        for (double n : {0.1, 0.5, 0.75, 0.99})
            for (const CheckStep& s : checkSteps(n))
                QVERIFY(std::sin(s.i1) / n < 1.0 && std::sin(s.i2) / n < 1.0 && std::isfinite(s.r1 + s.r2));
        QVERIFY(checkSteps(0.0).empty() && checkSteps(std::nan("")).empty());
        // Every valid start gives a constant second difference of −0.5° and
        // keeps its own pair.
        using namespace ptolemy_fit;
        for (const DataSet* set : {&waterSet(), &glassSet()}) {
            for (int k = 0; k + 1 < static_cast<int>(set->refraction.size()); ++k) {
                const std::vector<double> r = adjustFromPair(*set, k);
                QVERIFY(r.size() == set->refraction.size() && r[k] == set->refraction[k]);
                QCOMPARE(r[k + 1], set->refraction[k + 1]);
                for (std::size_t j = 2; j < r.size(); ++j)
                    QVERIFY(std::fabs((r[j] - r[j - 1]) - (r[j - 1] - r[j - 2]) - kSecondDifference) < 1e-9);
                for (std::size_t j = 0; set == &glassSet() && j < r.size(); ++j)
                    QVERIFY(std::fabs(r[j] - set->refraction[j]) < 1e-9);
            }
            QVERIFY(adjustFromPair(*set, -1).empty() &&
                    adjustFromPair(*set, static_cast<int>(set->refraction.size()) - 1).empty());
        }
        // From 20° and 30° the water set starts again at (0, 0) and 8° at 10°.
        const std::vector<double> water = adjustFromPair(waterSet(), 2);
        QVERIFY(std::fabs(water[0]) < 1e-9 && std::fabs(water[1] - 8.0) < 1e-9 && std::fabs(water[8] - 50.0) < 1e-9);
        QCOMPARE(proportionalRatio(waterSet()), 0.75);
        QCOMPARE(proportionalRatio(glassSet()), 0.675);
        const auto snell = snellRefraction(waterSet());
        QVERIFY(snell.size() == 9 && snell[0] && std::fabs(*snell[0]) < 1e-12 && std::fabs(*snell[3] - 22.02) < 0.01);
        QVERIFY(std::fabs(*snellRefraction(glassSet())[7] - 40.38) < 0.01);
        using namespace ptolemy_fit;
        using enum StartPairAnswer;
        const std::pair<const char*, StartPairAnswer> cases[] = {
            {"", Cancelled},    {"   ", Cancelled}, {"abc", NotANumber}, {"1,5.0", NotANumber}, {"nan", NotANumber},
            {"1,5", NotWhole},  {"1.5", NotWhole},  {"0", OutOfRange},   {"8", OutOfRange},     {"1e9", OutOfRange},
            {"-3", OutOfRange}, {"2,0", Valid},     {"1", Valid},        {" 6 ", Valid}};
        for (const auto& [typed, answer] : cases)
            QVERIFY2(
                readStartPair(typed, waterSet()).answer == answer && readStartPair(typed, glassSet()).answer == answer,
                typed);
        // The glass set has one pair fewer: 7 starts no pair there.
        QVERIFY(readStartPair("7", waterSet()).answer == Valid &&
                readStartPair("7", glassSet()).answer == BeyondTheSet);
        QCOMPARE(readStartPair("2", waterSet()).k, 2);
    }
};

QTEST_APPLESS_MAIN(TestApparatusGeometry)
#include "test_apparatus_geometry.moc"
