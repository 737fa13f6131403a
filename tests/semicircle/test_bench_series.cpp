#include <QtTest>

#include <cmath>
#include <numbers>

#include "semicircle/bench_series.h"

class TestBenchSeries : public QObject {
    Q_OBJECT
private slots:
    // A centred block is the ideal bench: every reading is what Snell's law
    // expects, each pair gives back the index the bench measured, and only
    // rays with a reading are paired.
    void centredBlockReadsAsSnellExpects() {
        constexpr double degree = std::numbers::pi / 180.0;
        for (int direction : {1, 2}) {
            Block block;
            block.direction = direction;
            const RaysSeries rays = runIncidenceSeries(block, 0.0);
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
                QCOMPARE(r.reading, RayReading::Measured);
                QVERIFY(std::fabs(*r.refractionDegrees - *expected) < 1e-9);
                const double n = std::sin(r.incidenceDegrees * degree) / std::sin(*r.refractionDegrees * degree);
                QVERIFY(std::fabs(n - *rays.rays[k].trace.measuredIndex) < 1e-12);
            }
            QCOMPARE(series.measuredPairs().size(), direction == 1 ? std::size_t{9} : std::size_t{5});
        }
        // A block less dense than air, flat face first, turns the light back.
        QVERIFY(!expectedRefractionDegrees(60.0, 0.8, 1) && expectedRefractionDegrees(60.0, 0.8, 2));
    }

    // A ray that misses the block has nothing to read.
    void missedBlock() {
        Block small;
        small.direction = 1;
        small.radius = 10.0;
        const SeriesReading missed = readRay(small, 30.0, traceRay(small, 150.0, 30.0));
        QVERIFY(missed.reading == RayReading::NoMeasurement && !missed.refractionDegrees);
    }
};

QTEST_MAIN(TestBenchSeries)
#include "test_bench_series.moc"
