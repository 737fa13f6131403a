#include <QtTest>

#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/physics.h"

class TestLeastSquares : public QObject {
    Q_OBJECT
private slots:
    void fitsTheLine() {
        // y = 2x − 1 exactly, element 0 ignored; only the first `count` points take part.
        const std::vector<double> x{99.0, 0.0, 1.0, 2.0, 3.0};
        const FittedLine line = leastSquaresLine(x, {-99.0, -1.0, 1.0, 3.0, 5.0}, 4).value();
        QCOMPARE(line.slope, 2.0f);
        QCOMPARE(line.intercept, -1.0f);
        QCOMPARE(leastSquaresLine(x, {0.0, -1.0, 1.0, 3.0, 100.0}, 3).value().slope, 2.0f);
        // (0,1), (1,2), (2,2): slope 1/2, intercept 7/6.
        const FittedLine scattered = leastSquaresLine({0, 0, 1, 2}, {0, 1, 2, 2}, 3).value();
        QCOMPARE(scattered.slope, 0.5f);
        QCOMPARE(scattered.intercept, static_cast<float>(7.0 / 6.0));
        // A slope of 1/3 is not a float: the result is the float nearest to it.
        QCOMPARE(leastSquaresLine({0, 0, 3}, {0, 0, 1}, 2).value().slope, static_cast<float>(1.0 / 3.0));
    }

    void noLineWithoutTwoDistinctX() {
        QVERIFY(!leastSquaresLine({0, 1}, {0, 2}, 1));                    // one point
        QVERIFY(!leastSquaresLine({0, 0.7, 0.7, 0.7}, {0, 1, 2, 3}, 3));  // all x equal; the rounded sums leave 9e-16
        QVERIFY(!leastSquaresLine({0, 5, 5}, {0, 1, 2}, 2));
        QVERIFY(!leastSquaresLine({0, 1, 2}, {0, 1, 2}, 0));
        QVERIFY(!leastSquaresLine({0, 1, 2}, {0, 1, 2}, 3));         // arrays too short
        QVERIFY(!leastSquaresLine({0, 0, 1e-30}, {0, 0, 1e30}, 2));  // slope beyond a float
    }

    void arcSineThroughTheArctangent() {
        QCOMPARE(*physics::arcSine(1.0), std::numbers::pi / 2.0);
        QCOMPARE(*physics::arcSine(0.0), 0.0);
        QVERIFY(std::fabs(*physics::arcSine(0.5) - std::numbers::pi / 6.0) < 1e-15);
        QVERIFY(std::fabs(*physics::arcSine(-0.5) + std::numbers::pi / 6.0) < 1e-15);
        for (const double outside : {-1.0, 1.0000001, std::nan("")}) QVERIFY(!physics::arcSine(outside));
    }
};

QTEST_APPLESS_MAIN(TestLeastSquares)
#include "test_least_squares.moc"
