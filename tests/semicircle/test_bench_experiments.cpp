#include <QtTest>

#include <cmath>
#include <numbers>
#include <set>

#include "semicircle/bench_experiments.h"
#include "semicircle/bench_random.h"

namespace {

BenchRandom fixedClock(double seconds) {
    return BenchRandom([seconds] { return seconds; });
}

}  // namespace

class TestBenchExperiments : public QObject {
    Q_OBJECT
private slots:
    void drawsStayInTheirRanges() {
        double now = 0.0;
        BenchRandom random([&now] { return now; });
        double lowest = 1.0;
        double highest = 0.0;
        for (int i = 0; i < 5000; ++i) {
            now = i * 0.37;
            const double u = random.uniform();
            QVERIFY(u >= 0.0 && u < 1.0);
            lowest = std::min(lowest, u);
            highest = std::max(highest, u);
            const double h = random.rayHeightValue();
            QVERIFY(h >= -1.0 && h < 1.0);
            const double x = random.centreXValue();
            QVERIFY(x >= -1.0 && x < 1.0);
            const double y = random.centreYValue();
            QVERIFY(y >= -1.0 && y < 1.0);
            const double t = random.tiltValue();
            QVERIFY(t >= -5.0 && t < 6.0);
        }
        // The draws cover the interval rather than bunching.
        QVERIFY(lowest < 0.01 && highest > 0.99);
    }

    void sameTimerSameDraws() {
        BenchRandom a = fixedClock(43200.25);
        BenchRandom b = fixedClock(43200.25);
        for (int i = 0; i < 20; ++i) QCOMPARE(a.uniform(), b.uniform());
        // A different time gives a different series.
        BenchRandom c = fixedClock(43201.75);
        BenchRandom d = fixedClock(43200.25);
        QVERIFY(c.uniform() != d.uniform());
    }

    void drawsInOneTickDiffer() {
        BenchRandom random = fixedClock(1000.0);
        std::set<double> seen;
        double previous = random.uniform();
        seen.insert(previous);
        for (int i = 0; i < 100; ++i) {
            const double next = random.uniform();
            QVERIFY(next != previous);
            previous = next;
            seen.insert(next);
        }
        QVERIFY(seen.size() > 90);
    }

    void randomSetupSetsRoundedControls() {
        BenchControls current;
        current.radius = 77;
        current.indexn = 17;
        BenchRandom random = fixedClock(12345.5);
        BenchRandom replay = fixedClock(12345.5);
        const RandomSetup s = drawRandomSetup(random, current);
        // The values are the four draws in order, the tilt turned into radians.
        QCOMPARE(s.rayHeight, replay.rayHeightValue());
        QCOMPARE(s.xc, replay.centreXValue());
        QCOMPARE(s.yc, replay.centreYValue());
        QCOMPARE(s.tiltRadians, std::numbers::pi * replay.tiltValue() / 180.0);
        QCOMPARE(s.controls.hvalue, static_cast<int>(std::lround(s.rayHeight * 10.0)));
        QCOMPARE(s.controls.xcoor, static_cast<int>(std::lround(s.xc * 5.0)));
        QCOMPARE(s.controls.ycoor, static_cast<int>(std::lround(s.yc * 5.0)));
        // The tilt bar gets the radian value: ±6° is about ±0.1 rad, so ±1 at most.
        QCOMPARE(s.controls.angle, static_cast<int>(std::lround(s.tiltRadians * 10.0)));
        QCOMPARE(s.controls.radius, 77);
        QCOMPARE(s.controls.indexn, 17);
    }

    void incidenceSeries() {
        QCOMPARE(measurementIncidences(), (std::vector<double>{0.6, 10, 20, 30, 40, 50, 60, 70, 80}));
        Block b;
        b.direction = 1;
        b.index = 1.5;
        RaysSeries s = runIncidenceSeries(b, 0.0);
        QCOMPARE(s.rays.size(), std::size_t{9});
        QCOMPARE(s.rays[3].incidenceDegrees, 30.0);
        QVERIFY(s.meanIndex);
        QVERIFY(std::fabs(*s.meanIndex - 1.5) < 1e-12);
        // Turned right, only the five rays below the critical angle measure 1/n.
        b.direction = 2;
        s = runIncidenceSeries(b, 0.0);
        QVERIFY(std::fabs(*s.meanIndex - 1.0 / 1.5) < 1e-12);
        // No direction chosen: nothing traced, nothing measured.
        b.direction = 0;
        s = runIncidenceSeries(b, 0.0);
        QCOMPARE(s.rays.size(), std::size_t{9});
        QVERIFY(s.rays[0].trace.segments.empty());
        QVERIFY(!s.meanIndex);
    }
};

QTEST_APPLESS_MAIN(TestBenchExperiments)
#include "test_bench_experiments.moc"
