#include <QtTest>

#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/physics.h"

class TestLeastSquares : public QObject {
    Q_OBJECT
private slots:
    void knownLine() {
        // y = 2x − 1 exactly, element 0 ignored.
        const std::vector<double> x{99.0, 0.0, 1.0, 2.0, 3.0};
        const std::vector<double> y{-99.0, -1.0, 1.0, 3.0, 5.0};
        const auto line = leastSquaresLine(x, y, 4);
        QVERIFY(line);
        QCOMPARE(line->slope, 2.0f);
        QCOMPARE(line->intercept, -1.0f);
        // Only the first `count` points take part.
        const std::vector<double> y2{0.0, -1.0, 1.0, 3.0, 100.0};
        QCOMPARE(leastSquaresLine(x, y2, 3)->slope, 2.0f);
    }

    void scatteredPoints() {
        // (0,1), (1,2), (2,2): slope 1/2, intercept 7/6.
        const auto line = leastSquaresLine({0, 0, 1, 2}, {0, 1, 2, 2}, 3);
        QVERIFY(line);
        QCOMPARE(line->slope, 0.5f);
        QCOMPARE(line->intercept, static_cast<float>(7.0 / 6.0));
    }

    void resultIsRoundedToSingle() {
        // slope 1/3 is not a float: the result is the float nearest to it.
        const auto line = leastSquaresLine({0, 0, 3}, {0, 0, 1}, 2);
        QVERIFY(line);
        QCOMPARE(line->slope, static_cast<float>(1.0 / 3.0));
        QVERIFY(static_cast<double>(line->slope) != 1.0 / 3.0);
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
        QVERIFY(!physics::arcSine(-1.0));
        QVERIFY(!physics::arcSine(1.0000001));
        QVERIFY(!physics::arcSine(std::nan("")));
    }
};

QTEST_APPLESS_MAIN(TestLeastSquares)
#include "test_least_squares.moc"
