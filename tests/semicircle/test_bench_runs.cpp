#include <QtTest>

#include <cmath>
#include <numbers>
#include <set>

#include "semicircle/bench_experiments.h"
#include "semicircle/bench_random.h"
#include "semicircle/bench_series.h"

namespace {
constexpr double kDegree = std::numbers::pi / 180.0;
}  // namespace

class TestBenchRuns : public QObject {
    Q_OBJECT
private slots:
    // Every draw reseeds from the timer: the same timer gives the same draws,
    // draws within one tick still differ, a new time changes the very next
    // draw, and each draw covers its whole interval.
    void randomDrawsAndSeries() {
        double clockA = 43200.25, clockB = 43200.25;
        BenchRandom a([&clockA] { return clockA; });
        BenchRandom b([&clockB] { return clockB; });
        std::set<double> seen;
        for (int i = 0; i < 100; ++i) {  // all in one tick of the timer
            const double u = a.uniform();
            QVERIFY(u == b.uniform());
            seen.insert(u);
        }
        QVERIFY(seen.size() > 90);
        clockB = 51234.75;
        QVERIFY(a.uniform() != b.uniform());
        double lowestTilt = 6.0, highestTilt = -5.0;
        for (int i = 0; i < 5000; ++i) {
            clockA = i * 0.37;
            const double u = a.uniform();
            QVERIFY(u >= 0.0 && u < 1.0);
            for (double v : {a.rayHeightValue(), a.centreXValue(), a.centreYValue()}) QVERIFY(v >= -1.0 && v < 1.0);
            const double t = a.tiltValue();
            QVERIFY(t >= -5.0 && t < 6.0);
            lowestTilt = std::min(lowestTilt, t);
            highestTilt = std::max(highestTilt, t);
        }
        QVERIFY(lowestTilt < -4.9 && highestTilt > 5.9);  // 11u − 5: the whole interval, not bunched
        // A centred block is the ideal bench: every reading is what Snell's law
        // expects, each pair gives back the index the bench measured, and only
        // rays with a reading are paired, their mean the index; a ray that
        // misses reads nothing.
        const RaysSeries none = runIncidenceSeries(Block{}, 0.0);  // no direction chosen: nothing traced
        QVERIFY(none.rays.size() == 9 && none.rays[0].trace.segments.empty() && !none.meanIndex);
        for (int direction : {1, 2}) {
            Block block;
            block.direction = direction;
            const RaysSeries rays = runIncidenceSeries(block, 0.0);  // the mean of the measured rays: n, or 1/n
            QVERIFY(std::fabs(*rays.meanIndex - (direction == 1 ? 1.5 : 1.0 / 1.5)) < 1e-12);
            BenchSeries series;
            series.recordSweep(block, rays);
            QCOMPARE(series.readings().size(), rays.rays.size());
            for (std::size_t k = 0; k < rays.rays.size(); ++k) {
                const SeriesReading& r = series.readings()[k];
                const std::optional<double> expected = expectedRefractionDegrees(r);
                if (!expected) {  // glass into air beyond the critical angle
                    QVERIFY(direction == 2 && r.incidenceDegrees > 41.8);
                    QVERIFY(r.reading == RayReading::TotalReflection && !r.refractionDegrees);
                    continue;
                }
                QVERIFY(r.reading == RayReading::Measured && std::fabs(*r.refractionDegrees - *expected) < 1e-9);
                const double n = std::sin(r.incidenceDegrees * kDegree) / std::sin(*r.refractionDegrees * kDegree);
                QVERIFY(std::fabs(n - *rays.rays[k].trace.measuredIndex) < 1e-12);
            }
            QCOMPARE(series.measuredPairs().size(), direction == 1 ? std::size_t{9} : std::size_t{5});
        }
        // A block less dense than air, flat face first, turns the light back.
        QVERIFY(!expectedRefractionDegrees(60.0, 0.8, 1) && expectedRefractionDegrees(60.0, 0.8, 2));
        Block small{0.0, 0.0, 10.0, 0.0, 1, 1.5};
        const SeriesReading missed = readRay(small, 30.0, traceRay(small, 150.0, 30.0));
        QVERIFY(missed.reading == RayReading::Missed && !missed.refractionDegrees);
    }
};

QTEST_APPLESS_MAIN(TestBenchRuns)
#include "test_bench_runs.moc"
