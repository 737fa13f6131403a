#include <QtTest>

#include <cmath>

#include "analysis/mean_error.h"

namespace {

Block upright(double index) {
    Block b;
    b.direction = 1;
    b.index = index;
    return b;
}

}  // namespace

class TestMeanError : public QObject {
    Q_OBJECT
private slots:
    void sixtySevenRadii() {
        const MeanErrorCurve curve = computeMeanErrorCurve(upright(1.5), 0.0, 1.5);
        QCOMPARE(curve.points.size(), std::size_t{67});
        QCOMPARE(curve.points.front().radius, 14.0);
        QCOMPARE(curve.points[1].radius, 16.0);
        QCOMPARE(curve.points.back().radius, 146.0);
    }

    void perfectSetUpHasNoError() {
        // Through the centre of an upright block every ray measures n.
        for (double n : {1.2, 1.5, 2.0}) {
            const MeanErrorCurve curve = computeMeanErrorCurve(upright(n), 0.0, 1.0);
            for (const MeanErrorPoint& p : curve.points) QVERIFY2(p.errorPercent < 1e-9, qPrintable(QString::number(p.errorPercent)));
            QVERIFY(std::fabs(curve.lastMeasuredIndex - n) < 1e-12);
        }
        // Whatever way the bench's block is turned, the flat face meets the light.
        for (int direction : {0, 2}) {
            Block turned = upright(1.5);
            turned.direction = direction;
            QVERIFY(computeMeanErrorCurve(turned, 0.0, 1.5).points[30].errorPercent < 1e-9);
        }
    }

    void offCentreErrorFallsWithTheRadius() {
        // The flat face one unit to the right of the ray's crossing: the ray
        // misses the centre by a fixed distance, which matters less and less
        // as the block grows.
        Block b = upright(1.5);
        b.xc = 1.0;
        const MeanErrorCurve curve = computeMeanErrorCurve(b, 0.0, 1.5);
        const double small = curve.points.front().errorPercent;
        const double large = curve.points.back().errorPercent;
        QVERIFY2(large < small / 5.0, qPrintable(QString("%1 %2").arg(small).arg(large)));
        QVERIFY(large > 0.0);
        for (std::size_t k = 1; k < curve.points.size(); ++k)
            QVERIFY(curve.points[k].errorPercent < curve.points[k - 1].errorPercent);
    }

    void missingMeasurementsKeepTheLastValue() {
        // A ray that never meets the block leaves the starting value in force.
        const MeanErrorCurve missed = computeMeanErrorCurve(upright(1.5), 190.0, 1.8);
        QCOMPARE(missed.lastMeasuredIndex, 1.8);
        const double e = 100.0 * std::fabs(1.8 - 1.5) / 1.5;
        for (const MeanErrorPoint& p : missed.points) QVERIFY(std::fabs(p.errorPercent - e) < 1e-9);
    }

    void noTrueIndexGivesZero() {
        const MeanErrorCurve curve = computeMeanErrorCurve(upright(0.0), 0.0, 1.5);
        QCOMPARE(curve.points.size(), std::size_t{67});
        for (const MeanErrorPoint& p : curve.points) QCOMPARE(p.errorPercent, 0.0);
    }
};

QTEST_APPLESS_MAIN(TestMeanError)
#include "test_mean_error.moc"
