#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>

#include "canvas/axis_steps.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/presentation_scale.h"
#include "test_support.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
const QColor kWhite(255, 255, 255);
const QColor kBlue(0, 0, 255);

// A white 550 × 550 canvas at five pixels per unit, x and y from −10 to 100, y up.
void setUpGraph(Canvas& c) {
    c.resize(550, 550);
    c.setBackColor(kWhite);
    c.scale(-10, 100, 100, -10);
}

// Whether anything is drawn within the device rectangle around (x, y) user units.
bool inkNear(const Canvas& c, double x, double y, int dx, int dy, int w, int h) {
    const QPointF p = c.toDevice(x, y);
    const QRect r = QRect(static_cast<int>(p.x()) + dx, static_cast<int>(p.y()) + dy, w, h) & c.image().rect();
    for (int py = r.top(); py <= r.bottom(); ++py)
        for (int px = r.left(); px <= r.right(); ++px)
            if (c.image().pixelColor(px, py) != kWhite) return true;
    return false;
}

}  // namespace

class TestGraphAxes : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void stepsCrossingsFormatsAndTicks() {
        struct Case {
            double lo, hi, step, crossing;
        };
        const Case cases[] = {{-5, 110, 10, 0},  {10, 90, 10, 10},      {-90, -10, 10, -90}, {-0.2, 1.2, 0.1, 0},
                              {0, 1000, 100, 0}, {0, 0.001, 0.0001, 0}, {0, 3.0e6, 2.0e5, 0}};
        for (const Case& k : cases) {
            const double derived = derivedAxisStep(k.lo, k.hi);
            QVERIFY2(std::fabs(derived - k.step) <= 1e-12 * k.step, qPrintable(QString::number(derived, 'g', 17)));
            QCOMPARE(axisCrossing(k.lo, k.hi), k.crossing);  // 0 when inside the range, else the lower end
        }
        using F = AxisLabelFormat;
        const std::pair<double, F> formats[] = {{10, F::Whole},         {0.5, F::OneDecimal},   {0.3, F::OneDecimal},
                                                {0.25, F::TwoDecimals}, {0.07, F::TwoDecimals}, {0.001, F::Scientific},
                                                {0.125, F::Scientific}, {5e6, F::Scientific}};
        for (auto [step, format] : formats) QCOMPARE(axisLabelFormatFor(step), format);

        const std::vector<double> tens{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110};
        QCOMPARE(axisTicks(-5, 110, 10.0).values, tens);
        const AxisTicks tenths = axisTicks(-0.2, 1.2, 0.1);  // the decimal values, not sums of 0.1
        QCOMPARE(tenths.values.size(), std::size_t{15});
        QVERIFY(tenths.values[5] == 0.3);  // exactly: QCOMPARE would let 3 × 0.1 pass
        for (double v : axisTicks(0, 100, 7.5).values) QVERIFY(std::fabs(v / 7.5 - std::round(v / 7.5)) < 1e-9);
        for (double bad : {0.0, -10.0, kNaN, kInf}) QCOMPARE(axisTicks(-5, 110, bad).step, 10.0);
        // Too many ticks: the step grows tenfold until they fit.
        QCOMPARE(axisTicks(0, 110, 0.001).step, 1.0);
        QCOMPARE(axisTicks(0, 10, 1.0, 5).values, std::vector<double>({0, 10}));
        QVERIFY(axisTicks(-1e300, 1e300, 1e-300).values.size() <= kMaxAxisTicks);
    }

    void degenerateRangesGiveNothing() {
        const std::pair<double, double> bad[] = {{5, 5},    {10, -10},       {kNaN, 1},
                                                 {0, kInf}, {-1e308, 1e308}, {1e20, 1e20 + 1e4}};
        for (const auto& [lo, hi] : bad) {
            QVERIFY(!usableAxisRange(lo, hi));
            QCOMPARE(derivedAxisStep(lo, hi), 0.0);
            QVERIFY(axisTicks(lo, hi, std::nullopt).values.empty());
            QVERIFY(axisTicks(lo, hi, 1.0).values.size() <= 1);
        }
        Canvas c;
        setUpGraph(c);
        const QImage blank = c.image().copy();
        drawGraphAxes(c, 5, 5, 90, -10);
        drawGraphAxes(c, -5, 90, 90, -10);  // ends swapped
        drawGraphAxes(c, 90, -5, kInf, -10);
        QCOMPARE(c.image(), blank);
    }

    void axesCrossAtTheOriginWithABlueGrid() {
        Canvas c;
        setUpGraph(c);
        const QColor ink(200, 0, 0);
        c.setForeColor(ink);
        drawGraphAxes(c, 100, -5, 90, -10, std::nullopt, std::nullopt, 10.0, 10.0);
        for (QPointF p : {QPointF(-4, 0), QPointF(55, 0), QPointF(99, 0), QPointF(0, -9), QPointF(0, 85)})
            QCOMPARE(c.pixelAt(p.x(), p.y()), ink);
        for (int y : {10, 50, 80}) {  // from the y axis to xMax, not along the axis or at yMax
            QCOMPARE(c.pixelAt(55, y), kBlue);
            QCOMPARE(c.pixelAt(-1, y), kWhite);
        }
        QCOMPARE(c.pixelAt(55, 5), kWhite);
        QCOMPARE(c.pixelAt(55, 90), kWhite);
        QVERIFY(inkNear(c, 20, 0, 0, 2, 1, 1));  // ticks at the multiples of the step only
        QVERIFY(!inkNear(c, 25, 0, 0, 2, 1, 1));
        QVERIFY(!inkNear(c, 1, 0, 0, -4, 5 * 97, 1));  // no label runs into the axis from above
        // The row under the x axis, then the corner's one "0", then the y labels.
        QStringList expected{"10", "20", "30", "40", "50", "60", "70", "80", "90", "100", "0"};
        expected << QStringList{"90", "80", "70", "60", "50", "40", "30", "20", "10", "-10"};
        QCOMPARE(c.printedTexts(), expected);

        // Shown larger, the row of x labels hides a close grid line along its
        // whole length: seen between "40" and "50" it would read as a minus.
        Canvas close;
        setUpGraph(close);
        drawGraphAxes(close, 100, -5, 90, -4, std::nullopt, -1.0, 10.0, 2.0);
        QCOMPARE(close.pixelAt(45, -2), kBlue);
        setPresentationScale(2.0);
        QCOMPARE(close.pixelAt(45, -2), kWhite);
        QCOMPARE(close.pixelAt(45, 2), kBlue);
        setPresentationScale(1.0);
    }

    void axesAlongTheEdgesWithLabelsOutside_data() {
        QTest::addColumn<bool>("yUp");
        QTest::newRow("y up") << true;
        QTest::newRow("y down") << false;
    }
    void axesAlongTheEdgesWithLabelsOutside() {
        QFETCH(bool, yUp);
        Canvas c;
        setUpGraph(c);
        if (!yUp) c.scale(-10, -10, 100, 100);
        drawGraphAxes(c, 90, 10, 90, 10, std::nullopt, 70.0, 10.0, 10.0);
        QCOMPARE(c.pixelAt(50, 10), QColor(Qt::black));  // x axis along y = yMin
        QCOMPARE(c.pixelAt(10, 50), QColor(Qt::black));  // y axis along x = xMin
        QCOMPARE(c.pixelAt(50, 0), kWhite);
        QCOMPARE(c.pixelAt(0, 50), kWhite);
        QCOMPARE(c.pixelAt(50, 50), kBlue);
        QCOMPARE(c.pixelAt(50, 80), kBlue);  // the grid goes past the label limit
        QCOMPARE(c.printedTexts().count(QStringLiteral("80")), 1);
        QVERIFY(!c.printedTexts().contains(QStringLiteral("0")));
        // Labels below the x axis and left of the y axis on the screen, not across them.
        QVERIFY(inkNear(c, 50, 10, -8, 5, 16, 12));
        QVERIFY(!inkNear(c, 50, 10, -8, -15, 16, 12));
        QVERIFY(inkNear(c, 10, 50, -30, -4, 24, 8));
        QVERIFY(!inkNear(c, 10, 50, 4, -4, 24, 3));
    }

    void labelsUseTheFormatOfTheStep() {
        Canvas c;  // the labels are listed whether or not they fall inside the area
        setUpGraph(c);
        drawGraphAxes(c, 1.5, -0.3, 1.2, -0.2);  // derived steps 0.2 and 0.1
        drawGraphAxes(c, 1.5, -0.3, 1.2, -0.2, std::nullopt, std::nullopt, 0.25, 0.25);
        drawGraphAxes(c, 0.0015, -0.0003, 0.0012, -0.0002);
        for (const char* label : {"1.4", "-0.2", "0.75", "1.00", "1.00e-03"})
            QVERIFY2(c.printedTexts().contains(QLatin1String(label)), label);
    }

    // On a projector's small graph window the angle graph's y labels used to
    // lose their first digit at the left edge ("100" read "00").
    void labelsKeepTheirRoomOnASmallCanvas() {
        Canvas c;
        c.resize(260, 180);
        c.scale(-5, 110, 110, -30);
        c.setFontSize(8);
        auto leftOfHundred = [&c] {
            // Where "100" starts: left of the y axis by the tick, the gap and itself.
            return c.toLogical(-7.0 * c.userPerPixelX() - c.textWidth(QStringLiteral("100")), 100).x();
        };
        QVERIFY(leftOfHundred() < 0.0);  // the scale as given leaves too little room
        makeRoomForAxisLabels(c, 110, -5, 110, -30, 100.0, 100.0, 10.0, 10.0);
        QVERIFY(leftOfHundred() >= 0.0);
        QVERIFY(c.scaleLeft() < -5.0 && c.scaleLeft() > -40.0);  // widened, but only as needed
        // Below, "-30" and the x labels under the axis stay on the canvas.
        const double bottom = c.toLogical(0, -30).y() + c.textHeight() / std::fabs(c.userPerPixelY()) / 2.0;
        QVERIFY(bottom <= c.height());

        // A label the scale leaves no room for is moved in whole, never cut.
        Canvas tight;
        tight.resize(260, 180);
        tight.setBackColor(Qt::white);
        tight.scale(-1, 110, 110, -30);
        tight.setFontSize(8);
        drawGraphAxes(tight, 110, -1, 110, -30, 100.0, 100.0, 10.0, 10.0);
        // The black ink at the height of "100" near the left edge is as wide
        // as the whole label (the axis and its tick alone are a few pixels).
        const QImage image = tight.image();
        const double dpr = image.devicePixelRatio();
        const int axis = static_cast<int>(30 * dpr);
        const int middle = static_cast<int>(tight.toDevice(0, 100).y());
        const int half = static_cast<int>(tight.textHeight() / std::fabs(tight.userPerPixelY()) * dpr / 2);
        int first = axis, last = -1;
        for (int y = middle - half; y <= middle + half; ++y)
            for (int x = 0; x < axis; ++x)
                if (const QColor ink = image.pixelColor(x, y); ink.red() < 100 && ink.blue() < 100) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
        const double wanted = tight.textWidth(QStringLiteral("100")) / std::fabs(tight.userPerPixelX()) * dpr;
        QVERIFY2(last - first + 1 >= 0.8 * wanted,
                 qPrintable(QStringLiteral("%1 of %2").arg(last - first + 1).arg(wanted)));
    }

    // On a wide graph a data point at (0, 0) is many pixels across: the
    // crossing's "0" in the corner used to stand half under it.
    void cornerLabelClearsAMarkAtTheCrossing() {
        for (const double mark : {0.0, 1.0, 1.5}) {
            Canvas c;
            c.resize(1200, 500);
            c.scale(-5, 110, 110, -30);  // about ten pixels per degree across
            c.setFontSize(10);
            drawGraphAxes(c, 110, -5, 110, -30, 100.0, 100.0, 10.0, 10.0, mark);
            const auto texts = c.drawnTexts();
            const QPointF crossing = c.toLogical(0, 0);
            const auto zero = std::find_if(texts.begin(), texts.end(), [&](const Canvas::DrawnText& t) {
                return t.text == QStringLiteral("0") && t.box.right() <= crossing.x();
            });
            QVERIFY(zero != texts.end());
            const double off = distanceToRect(crossing, zero->box);
            const double markPixels = mark / std::fabs(c.userPerPixelX());
            QVERIFY2(off >= markPixels,
                     qPrintable(QStringLiteral("mark %1: %2 px off, mark %3 px").arg(mark).arg(off).arg(markPixels)));
            // No mark leaves the label where it always stood, close by.
            if (mark == 0.0) QVERIFY(off < 6.0);
        }
    }

    void roomForTitlesAboveAndBelow() {
        Canvas c;
        c.resize(300, 200);
        c.scale(0, 10, 10, 0);
        const auto pixelsAbove = [&c](double y) { return c.toLogical(0, y).y(); };
        makeRoomAtTop(c, 9.0, 10.0);  // 20 pixels there already
        QCOMPARE(c.scaleTop(), 10.0);
        makeRoomAtTop(c, 9.0, 50.0);
        QVERIFY(std::fabs(pixelsAbove(9.0) - 50.0) < 1e-6);
        QCOMPARE(c.scaleTop() + c.scaleHeight(), 0.0);  // the bottom stays
        makeRoomAtBottom(c, 1.0, 40.0);
        QVERIFY(std::fabs(c.height() - c.toLogical(0, 1.0).y() - 40.0) < 1e-6);
        // A band never takes more than half the canvas, whatever is asked.
        makeRoomAtTop(c, 9.0, 1.0e6);
        QVERIFY(std::fabs(pixelsAbove(9.0) - 100.0) < 1e-6);
        for (double bad : {kNaN, kInf}) {
            const double top = c.scaleTop();
            makeRoomAtTop(c, bad, 30.0);
            makeRoomAtTop(c, 5.0, bad);
            QCOMPARE(c.scaleTop(), top);
        }
    }

    void picturesAreDrawnAgainAtANewSize() {
        // A child of a shown window, as a graph is: its resizes arrive at once.
        QWidget window;
        window.resize(500, 400);
        auto& c = *new Canvas(&window);
        c.resize(400, 300);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        int drawn = 0;
        std::function<void()> draw = [&] {
            ++drawn;
            c.cls();
            c.setCurrentX(0);
            c.setCurrentY(0);
            c.print(QStringLiteral("%1 wide").arg(c.width()));
            redrawWhenResized(c, draw);
        };
        draw();
        c.resize(300, 200);
        QCOMPARE(drawn, 2);
        QCOMPARE(c.printedTexts(), QStringList{QStringLiteral("300 wide")});
        c.resize(300, 200);  // the same size: nothing to do
        QCOMPARE(drawn, 2);
        // Something else drawn over the picture: a resize leaves both alone.
        c.line(0, 0, 10, 10);
        c.resize(350, 250);
        QCOMPARE(drawn, 2);
        draw();
        c.cls();
        c.resize(300, 200);
        QCOMPARE(drawn, 3);
    }
};

QTEST_MAIN(TestGraphAxes)
#include "test_graph_axes.moc"
