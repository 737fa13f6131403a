#include <QtTest>

#include <cmath>
#include <limits>

#include "canvas/axis_steps.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

const QColor kWhite(255, 255, 255);
const QColor kBlack(0, 0, 0);
const QColor kBlue(0, 0, 255);

bool isWholeMultiple(double value, double step) {
    const double k = value / step;
    return std::fabs(k - std::round(k)) < 1e-9 * std::max(1.0, std::fabs(k));
}

bool inkIn(const QImage& image, const QRect& area) {
    const QRect r = area.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (image.pixelColor(x, y) != kWhite) return true;
    return false;
}

QStringList labels(std::initializer_list<int> values) {
    QStringList out;
    for (int v : values) out << QString::number(v);
    return out;
}

// The refraction-versus-incidence graph: x −5 … 110, y 110 … −30, at five
// pixels per degree both ways so that every whole degree is a pixel edge.
void setUpIncidenceGraph(Canvas& c) {
    c.resize(575, 700);
    c.setBackColor(kWhite);
    c.scale(-5, 110, 110, -30);
}

}  // namespace

class TestGraphAxes : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // ------------------------------------------------------ arithmetic ---

    void derivedStepsFollowTheOrderOfMagnitude_data() {
        QTest::addColumn<double>("lo");
        QTest::addColumn<double>("hi");
        QTest::addColumn<double>("step");
        QTest::newRow("incidence x") << -5.0 << 110.0 << 10.0;
        QTest::newRow("incidence y") << -30.0 << 110.0 << 10.0;
        QTest::newRow("above zero") << 10.0 << 90.0 << 10.0;
        QTest::newRow("sine x") << -0.3 << 1.5 << 0.2;
        QTest::newRow("sine y") << -0.2 << 1.2 << 0.1;
        QTest::newRow("exact power") << 0.0 << 1000.0 << 100.0;
        QTest::newRow("tiny") << 0.0 << 0.001 << 0.0001;
        QTest::newRow("large") << 0.0 << 3.0e6 << 2.0e5;
        QTest::newRow("radius 14 to 146") << 14.0 << 146.0 << 10.0;
    }
    void derivedStepsFollowTheOrderOfMagnitude() {
        QFETCH(double, lo);
        QFETCH(double, hi);
        QFETCH(double, step);
        const double derived = derivedAxisStep(lo, hi);
        QVERIFY2(std::fabs(derived - step) <= 1e-12 * step, qPrintable(QString::number(derived, 'g', 17)));
        const double intervals = (hi - lo) / derived;
        QVERIFY(intervals >= 5 && intervals <= 15);
    }

    void labelFormatsFollowTheStep() {
        QCOMPARE(axisLabelFormatFor(10), AxisLabelFormat::Whole);
        QCOMPARE(axisLabelFormatFor(1), AxisLabelFormat::Whole);
        QCOMPARE(axisLabelFormatFor(0.5), AxisLabelFormat::OneDecimal);
        QCOMPARE(axisLabelFormatFor(2.5), AxisLabelFormat::OneDecimal);
        QCOMPARE(axisLabelFormatFor(0.1), AxisLabelFormat::OneDecimal);
        QCOMPARE(axisLabelFormatFor(0.3), AxisLabelFormat::OneDecimal);  // 0.3 × 10 is not exactly 3
        QCOMPARE(axisLabelFormatFor(0.25), AxisLabelFormat::TwoDecimals);
        QCOMPARE(axisLabelFormatFor(0.07), AxisLabelFormat::TwoDecimals);
        QCOMPARE(axisLabelFormatFor(0.001), AxisLabelFormat::Scientific);
        QCOMPARE(axisLabelFormatFor(0.125), AxisLabelFormat::Scientific);
        QCOMPARE(axisLabelFormatFor(5e6), AxisLabelFormat::Scientific);
        QCOMPARE(QString(axisLabelPattern(AxisLabelFormat::Whole)), QStringLiteral("0"));
        QCOMPARE(QString(axisLabelPattern(AxisLabelFormat::OneDecimal)), QStringLiteral("0.0"));
        QCOMPARE(QString(axisLabelPattern(AxisLabelFormat::TwoDecimals)), QStringLiteral("0.00"));
        QCOMPARE(QString(axisLabelPattern(AxisLabelFormat::Scientific)), QStringLiteral("0.00e+00"));
    }

    void ticksAreWholeMultiplesWithinTheRange() {
        const AxisTicks x = axisTicks(-5, 110, 10.0);
        QCOMPARE(x.values, std::vector<double>({0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110}));
        const AxisTicks y = axisTicks(-30, 110, std::nullopt);
        QCOMPARE(y.values.front(), -30.0);
        QCOMPARE(y.values.back(), 110.0);
        QCOMPARE(y.values.size(), std::size_t{15});

        // Tenths come out as the decimal values, not as sums of 0.1.
        const AxisTicks sine = axisTicks(-0.2, 1.2, 0.1);
        QCOMPARE(sine.values.size(), std::size_t{15});
        QCOMPARE(sine.values[5], 0.3);
        QCOMPARE(sine.values.back(), 1.2);
        QCOMPARE(sine.format, AxisLabelFormat::OneDecimal);

        // An odd given step: multiples of it, not of a round number.
        const AxisTicks odd = axisTicks(0, 100, 7.5);
        QCOMPARE(odd.values.size(), std::size_t{14});
        for (double v : odd.values) QVERIFY(isWholeMultiple(v, 7.5));

        // A step that is not positive or not finite is replaced by a derived one.
        for (double bad : {0.0, -10.0, kNaN, kInf}) QCOMPARE(axisTicks(-5, 110, bad).step, 10.0);
    }

    void tooManyTicksCoarsenTheStep() {
        const AxisTicks fine = axisTicks(0, 110, 0.001);
        QVERIFY(fine.values.size() <= kMaxAxisTicks);
        QVERIFY(fine.values.size() >= 100);
        QCOMPARE(fine.step, 1.0);
        for (double v : fine.values) QVERIFY(isWholeMultiple(v, 0.001));

        const AxisTicks absurd = axisTicks(-1e300, 1e300, 1e-300);
        QVERIFY(absurd.values.size() <= kMaxAxisTicks);
        QCOMPARE(axisTicks(0, 10, 1.0, 5).values.size(), std::size_t{2});  // 0 and 10: the step became 10
    }

    void degenerateRangesGiveNothingQuickly() {
        QElapsedTimer timer;
        timer.start();
        const std::pair<double, double> bad[] = {{5, 5}, {10, -10}, {kNaN, 1}, {0, kNaN}, {0, kInf},
                                                 {-kInf, kInf}, {-1e308, 1e308}, {1e20, 1e20 + 1e4}};
        for (const auto& [lo, hi] : bad) {
            QVERIFY(!usableAxisRange(lo, hi));
            QCOMPARE(derivedAxisStep(lo, hi), 0.0);
            QVERIFY(axisTicks(lo, hi, std::nullopt).values.empty());
            QVERIFY(axisTicks(lo, hi, 1.0).values.size() <= 1);
        }
        // Extreme but usable ranges still end promptly with few ticks.
        QVERIFY(axisTicks(0, 1e-300, std::nullopt).values.size() <= 16);
        QVERIFY(axisTicks(1e300, 1.5e300, std::nullopt).values.size() <= 16);
        QVERIFY(timer.elapsed() < 1000);
    }

    void axesCrossAtZeroOrRunAlongTheLowerEdge() {
        QCOMPARE(axisCrossing(-5, 110), 0.0);
        QCOMPARE(axisCrossing(-30, 110), 0.0);
        QCOMPARE(axisCrossing(0, 90), 0.0);
        QCOMPARE(axisCrossing(10, 90), 10.0);
        QCOMPARE(axisCrossing(-90, -10), -90.0);
    }

    // --------------------------------------------------------- drawing ---

    void incidenceGraphAxesCrossAtTheOrigin() {
        Canvas c;
        setUpIncidenceGraph(c);
        const QColor ink(200, 0, 0);
        c.setForeColor(ink);
        drawGraphAxes(c, 110, -5, 110, -30, std::nullopt, std::nullopt, 10.0, 10.0);

        // Both axes through (0, 0), in ForeColor, the whole length of the ranges.
        QCOMPARE(c.pixelAt(-4, 0), ink);
        QCOMPARE(c.pixelAt(55, 0), ink);  // the grid does not paint over the axis
        QCOMPARE(c.pixelAt(109, 0), ink);
        QCOMPARE(c.pixelAt(0, -29), ink);
        QCOMPARE(c.pixelAt(0, 105), ink);

        // Blue grid lines from x = 0 to xMax at every ten degrees, none left of the y axis.
        for (int y : {-20, -10, 10, 50, 100}) {
            QCOMPARE(c.pixelAt(55, y), kBlue);
            QCOMPARE(c.pixelAt(108, y), kBlue);
            QCOMPARE(c.pixelAt(-1, y), kWhite);  // between the tick and its label
        }
        QCOMPARE(c.pixelAt(55, 5), kWhite);   // between grid lines
        QCOMPARE(c.pixelAt(55, 110), kWhite);  // none at yMax itself

        // Ticks cross the x axis at the multiples of 10 only.
        const QPointF tick = c.toDevice(20, 0);
        QVERIFY(c.image().pixelColor(static_cast<int>(tick.x()), static_cast<int>(tick.y()) + 2) != kWhite);
        const QPointF between = c.toDevice(25, 0);
        QCOMPARE(c.image().pixelColor(static_cast<int>(between.x()), static_cast<int>(between.y()) + 2), kWhite);

        // No label runs into the x axis: just above it there is nothing but ticks.
        const int axisRow = static_cast<int>(c.toDevice(0, 0).y());
        for (int x = static_cast<int>(c.toDevice(1, 0).x()); x < static_cast<int>(c.toDevice(109, 0).x()); ++x)
            QCOMPARE(c.image().pixelColor(x, axisRow - 4), kWhite);

        // One label per tick; the origin labelled once.
        QStringList expected = labels({0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110});
        expected << labels({110, 100, 90, 80, 70, 60, 50, 40, 30, 20, 10, -10, -20, -30});
        QCOMPARE(c.printedTexts(), expected);
    }

    void rangeAboveZeroPutsTheAxesOnTheLowerAndLeftEdges() {
        Canvas c;
        c.resize(550, 550);
        c.setBackColor(kWhite);
        c.scale(-10, 100, 100, -10);  // 5 px per unit
        drawGraphAxes(c, 90, 10, 90, 10, std::nullopt, std::nullopt, 10.0, 10.0);
        QCOMPARE(c.pixelAt(50, 10), kBlack);  // x axis along y = yMin
        QCOMPARE(c.pixelAt(10, 50), kBlack);  // y axis along x = xMin
        QCOMPARE(c.pixelAt(50, 0), kWhite);   // nothing at y = 0 …
        QCOMPARE(c.pixelAt(0, 50), kWhite);   // … or at x = 0
        QCOMPARE(c.pixelAt(50, 50), kBlue);   // grid from the y axis
        QCOMPARE(c.pixelAt(5, 50), kWhite);
        QVERIFY(c.printedTexts().contains(QStringLiteral("10")));
        QVERIFY(c.printedTexts().contains(QStringLiteral("90")));
        QVERIFY(!c.printedTexts().contains(QStringLiteral("0")));

        // The labels sit below the x axis and left of the y axis, not across them.
        const QPointF axes = c.toDevice(10, 10);
        const QPointF fifty = c.toDevice(50, 50);
        const int textPixels = static_cast<int>(c.textHeight() * 5.0);
        QVERIFY(inkIn(c.image(), QRect(static_cast<int>(fifty.x()) - 8, static_cast<int>(axes.y()) + 4, 16, textPixels)));
        QVERIFY(!inkIn(c.image(), QRect(static_cast<int>(fifty.x()) - 8, static_cast<int>(axes.y()) - 15, 16, 12)));
        QVERIFY(inkIn(c.image(), QRect(static_cast<int>(axes.x()) - 30, static_cast<int>(fifty.y()) - 4, 24, 8)));
        QVERIFY(!inkIn(c.image(), QRect(static_cast<int>(axes.x()) + 4, static_cast<int>(fifty.y()) - 4, 24, 3)));
    }

    void labelsFollowTheScreenOnAYDownScale() {
        // y growing downwards: "below the x axis" is still lower on the screen.
        Canvas c;
        c.resize(550, 550);
        c.setBackColor(kWhite);
        c.scale(-10, -10, 100, 100);
        drawGraphAxes(c, 90, -10, 90, -10, std::nullopt, std::nullopt, 10.0, 10.0);
        const QPointF origin = c.toDevice(0, 0);
        const QPointF fifty = c.toDevice(50, 50);
        QCOMPARE(c.pixelAt(50, 0), kBlack);
        // Nothing just above the axis on the screen; the labels are below it.
        QVERIFY(!inkIn(c.image(), QRect(static_cast<int>(fifty.x()) - 8, static_cast<int>(origin.y()) - 20, 16, 14)));
        QVERIFY(inkIn(c.image(), QRect(static_cast<int>(fifty.x()) - 8, static_cast<int>(origin.y()) + 5, 16, 12)));
        QVERIFY(inkIn(c.image(), QRect(static_cast<int>(origin.x()) - 30, static_cast<int>(fifty.y()) - 4, 24, 8)));
    }

    void labelLimitsEndTicksAndLabels() {
        // The check of Al Haytham's rules: steps 10, labels up to 90 on axes reaching 100.
        Canvas c;
        c.resize(550, 550);
        c.setBackColor(kWhite);
        c.scale(-10, 100, 100, -10);
        drawGraphAxes(c, 100, -10, 100, -10, 90.0, 90.0, 10.0, 10.0);
        QVERIFY(c.printedTexts().contains(QStringLiteral("90")));
        QVERIFY(!c.printedTexts().contains(QStringLiteral("100")));
        QCOMPARE(c.printedTexts().count(QStringLiteral("-10")), 2);

        // Ptolemy's fit: incidence labelled to 80, refraction to 70.
        c.cls();
        drawGraphAxes(c, 100, -10, 100, -10, 80.0, 70.0, 10.0, 10.0);
        QCOMPARE(c.printedTexts().count(QStringLiteral("80")), 1);
        QCOMPARE(c.printedTexts().count(QStringLiteral("70")), 2);
        QCOMPARE(c.pixelAt(55, 90), kBlue);  // the grid still covers the range
    }

    void labelsUseTheFormatOfTheStep() {
        Canvas c;
        c.resize(500, 400);
        c.setBackColor(kWhite);
        c.scale(-0.3, 1.2, 1.5, -0.2);
        drawGraphAxes(c, 1.5, -0.3, 1.2, -0.2);
        QVERIFY(c.printedTexts().contains(QStringLiteral("0.4")));
        QVERIFY(c.printedTexts().contains(QStringLiteral("1.4")));
        QVERIFY(c.printedTexts().contains(QStringLiteral("-0.2")));

        c.cls();
        drawGraphAxes(c, 1.5, -0.3, 1.2, -0.2, std::nullopt, std::nullopt, 0.25, 0.25);
        QVERIFY(c.printedTexts().contains(QStringLiteral("0.75")));
        QVERIFY(c.printedTexts().contains(QStringLiteral("1.00")));

        c.cls();
        c.scale(-0.0003, 0.0012, 0.0015, -0.0002);
        drawGraphAxes(c, 0.0015, -0.0003, 0.0012, -0.0002);
        QVERIFY(c.printedTexts().contains(QStringLiteral("1.00e-03")));
    }

    void degenerateRangesDrawNothing() {
        Canvas c;
        setUpIncidenceGraph(c);
        const QImage blank = c.image().copy();
        QElapsedTimer timer;
        timer.start();
        drawGraphAxes(c, 5, 5, 110, -30);
        drawGraphAxes(c, 110, -5, -30, -30);
        drawGraphAxes(c, -5, 110, 110, -30);  // ends swapped
        drawGraphAxes(c, kNaN, -5, 110, -30);
        drawGraphAxes(c, 110, -5, kInf, -30);
        drawGraphAxes(c, 110, -kInf, 110, -30);
        QCOMPARE(c.image(), blank);
        QVERIFY(c.printedTexts().isEmpty());

        // Usable ranges with absurd steps or limits end promptly too.
        drawGraphAxes(c, 110, -5, 110, -30, kNaN, kInf, 1e-12, 1e-12);
        QVERIFY(c.printedTexts().size() <= 2 * static_cast<int>(kMaxAxisTicks));
        c.cls();
        drawGraphAxes(c, 1e300, -1e300, 1e300, -1e300);
        drawGraphAxes(c, 110, -5, 110, -30, -100.0, -100.0);  // limits below the ranges: no labels
        QVERIFY(timer.elapsed() < 3000);
    }
};

QTEST_MAIN(TestGraphAxes)
#include "test_graph_axes.moc"
