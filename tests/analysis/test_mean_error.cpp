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
    // Through the centre of an upright block every ray measures n: no error
    // at any of the 67 radii, whichever way the bench's block is turned (the
    // flat face always meets the light). With no true index the error is 0.
    void perfectSetUpHasNoError() {
        for (double n : {1.2, 1.5, 2.0}) {
            const MeanErrorCurve curve = computeMeanErrorCurve(upright(n), 0.0, 1.0);
            QVERIFY(curve.points.size() == 67 && curve.points.front().radius == 14.0 &&
                    curve.points[1].radius == 16.0 && curve.points.back().radius == 146.0);
            for (const MeanErrorPoint& p : curve.points) QVERIFY(p.errorPercent < 1e-9);
            QVERIFY(std::fabs(curve.lastMeasuredIndex - n) < 1e-12);
        }
        for (int direction : {0, 2}) {
            Block turned = upright(1.5);
            turned.direction = direction;
            QVERIFY(computeMeanErrorCurve(turned, 0.0, 1.5).points[30].errorPercent < 1e-9);
        }
        for (const MeanErrorPoint& p : computeMeanErrorCurve(upright(0.0), 0.0, 1.5).points)
            QCOMPARE(p.errorPercent, 0.0);
        // The flat face one unit to the right of the ray's crossing: the ray
        // misses the centre by a fixed distance, which matters less and less
        // as the block grows.
        Block b = upright(1.5);
        b.xc = 1.0;
        const MeanErrorCurve curve = computeMeanErrorCurve(b, 0.0, 1.5);
        const double small = curve.points.front().errorPercent;
        const double large = curve.points.back().errorPercent;
        QVERIFY2(large > 0.0 && large < small / 5.0, qPrintable(QString("%1 %2").arg(small).arg(large)));
        for (std::size_t k = 1; k < curve.points.size(); ++k)
            QVERIFY(curve.points[k].errorPercent < curve.points[k - 1].errorPercent);
        // A ray that never meets the block leaves the starting value in force.
        const MeanErrorCurve missed = computeMeanErrorCurve(upright(1.5), 190.0, 1.8);
        QCOMPARE(missed.lastMeasuredIndex, 1.8);
        const double e = 100.0 * std::fabs(1.8 - 1.5) / 1.5;
        for (const MeanErrorPoint& p : missed.points) QVERIFY(std::fabs(p.errorPercent - e) < 1e-9);
    }
};

QTEST_APPLESS_MAIN(TestMeanError)
#include "test_mean_error.moc"
