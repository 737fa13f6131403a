#include <QtTest>

#include <cmath>
#include <numbers>
#include <set>

#include "semicircle/bench_experiments.h"
#include "semicircle/bench_random.h"

class TestBenchExperiments : public QObject {
    Q_OBJECT
private slots:
    void drawsStayInTheirRangesAndCoverThem() {
        double now = 0.0;
        BenchRandom random([&now] { return now; });
        double lowestTilt = 6.0, highestTilt = -5.0;
        for (int i = 0; i < 5000; ++i) {
            now = i * 0.37;
            const double u = random.uniform();
            QVERIFY(u >= 0.0 && u < 1.0);
            for (double v : {random.rayHeightValue(), random.centreXValue(), random.centreYValue()})
                QVERIFY(v >= -1.0 && v < 1.0);
            const double t = random.tiltValue();
            QVERIFY(t >= -5.0 && t < 6.0);
            lowestTilt = std::min(lowestTilt, t);
            highestTilt = std::max(highestTilt, t);
        }
        QVERIFY(lowestTilt < -4.9 && highestTilt > 5.9);  // 11u − 5: the whole interval, not bunched
    }

    // Every draw reseeds from the timer: the same timer gives the same draws,
    // draws within one tick still differ, and a new time changes the very next draw.
    void everyDrawReseedsFromTheTimer() {
        double clockA = 43200.25;
        double clockB = 43200.25;
        BenchRandom a([&clockA] { return clockA; });
        BenchRandom b([&clockB] { return clockB; });
        std::set<double> seen;
        for (int i = 0; i < 100; ++i) {
            const double u = a.uniform();
            QCOMPARE(u, b.uniform());
            seen.insert(u);
        }
        QVERIFY(seen.size() > 90);
        clockB = 51234.75;
        QVERIFY(a.uniform() != b.uniform());
    }

    void randomSetupRoundsTheControls() {
        BenchControls current;
        current.radius = 77;
        current.indexn = 17;
        for (double seconds : {12345.5, 100.0, 86399.9, 7.25}) {
            BenchRandom random([seconds] { return seconds; });
            BenchRandom replay([seconds] { return seconds; });
            const RandomSetup s = drawRandomSetup(random, current);
            // The four draws in order, the tilt turned into radians; the tilt bar gets the radian value.
            QCOMPARE(s.rayHeight, replay.rayHeightValue());
            QCOMPARE(s.xc, replay.centreXValue());
            QCOMPARE(s.yc, replay.centreYValue());
            QCOMPARE(s.tiltRadians, std::numbers::pi * replay.tiltValue() / 180.0);
            QVERIFY(s.controls.hvalue == std::lround(s.rayHeight * 10.0));
            QVERIFY(s.controls.xcoor == std::lround(s.xc * 5.0) && s.controls.ycoor == std::lround(s.yc * 5.0));
            QVERIFY(s.controls.angle == std::lround(s.tiltRadians * 10.0));
            QVERIFY(s.controls.radius == 77 && s.controls.indexn == 17);  // the other controls as they were
        }
    }

    void incidenceSeriesAveragesTheMeasuredRays() {
        QCOMPARE(measurementIncidences(), (std::vector<double>{0.6, 10, 20, 30, 40, 50, 60, 70, 80}));
        Block b{0.0, 0.0, 100.0, 0.0, 1, 1.5};
        QVERIFY(std::fabs(*runIncidenceSeries(b, 0.0).meanIndex - 1.5) < 1e-12);
        b.direction = 2;  // only the rays below the critical angle count, each measuring 1/n
        QVERIFY(std::fabs(*runIncidenceSeries(b, 0.0).meanIndex - 1.0 / 1.5) < 1e-12);
        b.direction = 0;
        const RaysSeries none = runIncidenceSeries(b, 0.0);
        QVERIFY(none.rays.size() == 9 && none.rays[0].trace.segments.empty() && !none.meanIndex);
    }
};

QTEST_APPLESS_MAIN(TestBenchExperiments)
#include "test_bench_experiments.moc"
