#include <QtTest>

#include <QPushButton>
#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <numbers>

#include "canvas/canvas.h"
#include "canvas/fonts.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kPi = std::numbers::pi;

const QColor kRed(255, 0, 0);
const QColor kBlue(0, 0, 255);
const QColor kWhite(255, 255, 255);

// A white 400 × 400 canvas with the bench's convention: origin in the middle,
// x and y from −200 to 200, y upwards. One user unit is one pixel.
void setUpBench(Canvas& c) {
    c.resize(400, 400);
    c.setBackColor(kWhite);
    c.scale(-200, 200, 200, -200);
}

bool isBackground(const QColor& colour) { return colour == kWhite; }

// Close to the wanted colour: for slanted edges that antialiasing softens.
bool near(const QColor& colour, const QColor& wanted) {
    return std::abs(colour.red() - wanted.red()) < 40 && std::abs(colour.green() - wanted.green()) < 40 &&
           std::abs(colour.blue() - wanted.blue()) < 40;
}

// Device pixels of the image that are not white, within a device rectangle.
int inkedPixels(const QImage& image, const QRect& area) {
    int count = 0;
    const QRect r = area.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (image.pixelColor(x, y) != kWhite) ++count;
    return count;
}

// The bounding rectangle of every non-white device pixel.
QRect inkBounds(const QImage& image) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != kWhite) bounds |= QRect(x, y, 1, 1);
    return bounds;
}

// Rows of one device column that are inked, as first and last row.
std::pair<int, int> inkedRowsInColumn(const QImage& image, int column) {
    int first = -1, last = -1;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(column, y) != kWhite) {
            if (first < 0) first = y;
            last = y;
        }
    }
    return {first, last};
}

std::pair<int, int> inkedColumnsInRow(const QImage& image, int row) {
    int first = -1, last = -1;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, row) != kWhite) {
            if (first < 0) first = x;
            last = x;
        }
    }
    return {first, last};
}

}  // namespace

class TestCanvas : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // ------------------------------------------------------------ scale ---

    void userScaleWithYUpwards() {
        Canvas c;
        setUpBench(c);
        QCOMPARE(c.scaleLeft(), -200.0);
        QCOMPARE(c.scaleTop(), 200.0);
        QCOMPARE(c.scaleWidth(), 400.0);
        QCOMPARE(c.scaleHeight(), -400.0);
        QCOMPARE(c.toLogical(-200, 200), QPointF(0, 0));
        QCOMPARE(c.toLogical(0, 0), QPointF(200, 200));
        QCOMPARE(c.toLogical(100, 150), QPointF(300, 50));
        QCOMPARE(c.toUser(QPointF(300, 50)), QPointF(100, 150));

        // The properties one by one give the same mapping.
        Canvas d;
        d.resize(400, 400);
        d.setScaleLeft(-200);
        d.setScaleTop(200);
        d.setScaleWidth(400);
        d.setScaleHeight(-400);
        QCOMPARE(d.toLogical(100, 150), QPointF(300, 50));

        // A scale without extent is refused and the old one kept.
        c.scale(5, 5, 5, 10);
        c.setScaleWidth(0);
        c.scale(kNaN, 0, 1, 1);
        c.scale(-1e308, -1e308, 1e308, 1e308);  // extent overflows
        QCOMPARE(c.userScale().left, -200.0);
        QCOMPARE(c.scaleWidth(), 400.0);
        QCOMPARE(c.scaleHeight(), -400.0);
    }

    void redLineAcrossYUpScaleLightsItsRow() {
        Canvas c;
        setUpBench(c);
        c.line(-200, 100, 200, 100, kRed);
        const QImage& img = c.image();
        QCOMPARE(img.size(), QSize(400, 400));
        // y = 100 is 100 pixels below the top edge; the line is one pixel
        // thick and pure red along its length.
        for (int x : {0, 57, 200, 399}) QCOMPARE(img.pixelColor(x, 100), kRed);
        QCOMPARE(img.pixelColor(200, 99), kWhite);
        QCOMPARE(img.pixelColor(200, 101), kWhite);
        QCOMPARE(inkedPixels(img, QRect(0, 102, 400, 298)), 0);  // nothing below
        QCOMPARE(c.currentX(), 200.0);
        QCOMPARE(c.currentY(), 100.0);
        QCOMPARE(c.pixelAt(-150, 100), kRed);

        // Without a colour the line takes ForeColor; lineTo starts at the pen.
        c.setForeColor(kBlue);
        c.setCurrentX(-50);
        c.setCurrentY(-50);
        c.lineTo(-50, 50);
        QCOMPARE(c.pixelAt(-50, 0), kBlue);
        QCOMPARE(c.pixelAt(-50, -40), kBlue);
        QCOMPARE(c.pixelAt(-49, 0), kWhite);
        QCOMPARE(c.currentY(), 50.0);

        // A rising diagonal in y-up units rises on the screen too.
        c.line(50, -150, 150, -50, kRed);
        QVERIFY(!isBackground(c.pixelAt(100, -100)));
        QCOMPARE(inkedPixels(img, QRect(340, 340, 20, 20)), 0);  // the (150, −150) corner stays clean
    }

    void boxesAndPoints() {
        Canvas c;
        setUpBench(c);
        c.filledBox(-100, 50, 100, -50, kBlue);
        QCOMPARE(c.pixelAt(0, 0), kBlue);
        QCOMPARE(c.pixelAt(-99, 49), kBlue);
        QCOMPARE(c.pixelAt(99, -49), kBlue);
        QCOMPARE(c.pixelAt(0, 60), kWhite);
        QCOMPARE(c.pixelAt(-110, 0), kWhite);
        QCOMPARE(inkedPixels(c.image(), QRect(100, 150, 200, 100)), 200 * 100);  // solid, no soft edge
        QCOMPARE(c.currentX(), 100.0);
        QCOMPARE(c.currentY(), -50.0);

        // The outline leaves the inside alone.
        c.box(120, 150, 180, 110, kRed);
        QCOMPARE(c.pixelAt(150, 150), kRed);
        QCOMPARE(c.pixelAt(120, 130), kRed);
        QCOMPARE(c.pixelAt(150, 130), kWhite);

        // A point is one pixel; a wide pen makes a dot of that width.
        c.pset(-150, -150, kRed);
        QCOMPARE(c.pixelAt(-150, -150), kRed);
        QCOMPARE(inkedPixels(c.image(), QRect(48, 348, 5, 5)), 1);
        QCOMPARE(c.currentX(), -150.0);
        c.setDrawWidth(6);
        c.pset(-150, 150, kRed);
        QCOMPARE(c.pixelAt(-150, 150), kRed);
        QVERIFY(inkedPixels(c.image(), QRect(40, 40, 20, 20)) >= 20);
    }

    void clsRestoresBackColorAndPen() {
        Canvas c;
        setUpBench(c);
        c.setDrawWidth(5);
        c.line(-200, -200, 200, 200, kRed);
        c.filledBox(0, 0, 50, 50, kBlue);
        c.setCurrentX(10);
        c.print(QStringLiteral("text"));
        c.setBackColor(QColor(10, 20, 30));  // also clears
        c.cls();
        const QImage& img = c.image();
        bool allBack = true;
        for (int y = 0; y < img.height() && allBack; ++y)
            for (int x = 0; x < img.width() && allBack; ++x) allBack = img.pixelColor(x, y) == QColor(10, 20, 30);
        QVERIFY(allBack);
        QCOMPARE(c.currentX(), -200.0);
        QCOMPARE(c.currentY(), 200.0);
        QVERIFY(c.printedTexts().isEmpty());
        QVERIFY(c.accessibleDescription().isEmpty());
        QCOMPARE(c.recordedOperations(), 0);
    }

    // ----------------------------------------------------------- circles ---

    void circleArcsAndRadii() {
        Canvas c;
        setUpBench(c);
        // An upper semicircle: positive angles draw the arc alone.
        c.circle(0, 0, 100, kRed, 0.001, kPi);
        QVERIFY(!isBackground(c.pixelAt(0, 100)));
        QCOMPARE(c.pixelAt(0, -100), kWhite);
        QCOMPARE(c.pixelAt(50, 0), kWhite);
        QCOMPARE(c.pixelAt(-50, 0), kWhite);

        // Negative angles add the radii to both ends: the diameter closes it,
        // even with the start nudged to −0.001 to stand for angle 0.
        c.cls();
        c.circle(0, 0, 100, kRed, -0.001, -kPi);
        QVERIFY(!isBackground(c.pixelAt(0, 100)));
        QCOMPARE(c.pixelAt(0, -100), kWhite);
        QVERIFY(near(c.pixelAt(50, 0), kRed));
        QVERIFY(near(c.pixelAt(95, 0), kRed));
        QCOMPARE(c.pixelAt(-50, 0), kRed);
        QCOMPARE(c.pixelAt(-99, 0), kRed);

        // Only the start negative: the radius to the start (angle π/2, the
        // top), not to the end (angle π, the left).
        c.cls();
        c.circle(0, 0, 100, kRed, -kPi / 2, kPi);
        QCOMPARE(c.pixelAt(0, 50), kRed);
        QCOMPARE(c.pixelAt(-50, 0), kWhite);
        QVERIFY(!isBackground(c.pixelAt(-71, 71)));
        QCOMPARE(c.pixelAt(71, 71), kWhite);
        c.cls();
        c.circle(0, 0, 100, kRed, kPi / 2, -kPi);
        QCOMPARE(c.pixelAt(0, 50), kWhite);
        QCOMPARE(c.pixelAt(-50, 0), kRed);

        // The block's angles: from π/2 to 3π/2 through π, the left half,
        // closed by its vertical diameter; when the end's magnitude is the
        // smaller one the arc still runs counter-clockwise (the right half).
        c.cls();
        c.circle(0, 0, 100, kRed, -kPi / 2, -3 * kPi / 2);
        QCOMPARE(c.pixelAt(0, 50), kRed);
        QVERIFY(!isBackground(c.pixelAt(-100, 0)));
        QCOMPARE(c.pixelAt(99, 0), kWhite);
        c.cls();
        c.circle(0, 0, 100, kRed, -3 * kPi / 2, -kPi / 2);
        QVERIFY(!isBackground(c.pixelAt(100, 0)));
        QCOMPARE(c.pixelAt(-100, 0), kWhite);

        // The pen stays at the centre, as after every figure.
        QCOMPARE(c.currentX(), 0.0);
        QCOMPARE(c.currentY(), 0.0);
    }

    void circleFillFollowsFillStyle() {
        Canvas c;
        setUpBench(c);
        const QColor glass(205, 255, 255);
        c.setFillColor(glass);
        c.circle(-100, 0, 50, kRed);  // transparent fill by default
        QCOMPARE(c.pixelAt(-100, 0), kWhite);
        c.setFillStyle(FillStyle::Solid);
        c.circle(100, 0, 50, kRed);
        QCOMPARE(c.pixelAt(100, 0), glass);
        QCOMPARE(c.pixelAt(100, 40), glass);
        QCOMPARE(c.pixelAt(100, 60), kWhite);
        QVERIFY(!isBackground(c.pixelAt(150, 0)));  // outline
        QVERIFY(c.pixelAt(150, 0) != glass);

        // A closed semicircle (pie) fills; the other half stays empty.
        c.cls();
        c.circle(0, 0, 100, kRed, -0.001, -kPi);
        QCOMPARE(c.pixelAt(0, 50), glass);
        QCOMPARE(c.pixelAt(0, -50), kWhite);

        // filledCircle ignores FillStyle.
        c.cls();
        c.setFillStyle(FillStyle::Transparent);
        c.filledCircle(0, 0, 30, kBlue);
        QCOMPARE(c.pixelAt(0, 0), kBlue);
        QCOMPARE(c.pixelAt(0, 25), kBlue);
        QCOMPARE(c.pixelAt(0, 40), kWhite);
    }

    void aspectMakesEllipses() {
        Canvas c;
        setUpBench(c);
        c.circle(0, 0, 100, kRed, std::nullopt, std::nullopt, 0.5);
        const QRect flat = inkBounds(c.image());
        QVERIFY2(std::abs(flat.width() - 201) <= 2, qPrintable(QString::number(flat.width())));
        QVERIFY2(std::abs(flat.height() - 101) <= 2, qPrintable(QString::number(flat.height())));
        QVERIFY(std::abs(flat.center().y() - 200) <= 1);

        // Above 1 the radius is the height and the width shrinks.
        c.cls();
        c.circle(0, 0, 100, kRed, std::nullopt, std::nullopt, 2.0);
        const QRect tall = inkBounds(c.image());
        QVERIFY(std::abs(tall.width() - 101) <= 2);
        QVERIFY(std::abs(tall.height() - 201) <= 2);

        // The radius counts in x units: on a stretched scale a circle stays round.
        Canvas s;
        s.resize(400, 200);
        s.setBackColor(kWhite);
        s.scale(0, 10, 100, 0);  // 4 px per unit across, 20 px per unit down
        s.circle(50, 5, 10, kRed);
        const QRect round = inkBounds(s.image());
        QVERIFY(std::abs(round.width() - round.height()) <= 1);
        QVERIFY(std::abs(round.width() - 81) <= 2);
    }

    // ------------------------------------------------------ pen styles ---

    void drawWidthAndStyles() {
        Canvas c;
        setUpBench(c);
        c.setDrawWidth(5);
        c.line(-150, 0, 150, 0, kRed);
        const auto [top, bottom] = inkedRowsInColumn(c.image(), 200);
        QCOMPARE(bottom - top + 1, 5);
        QVERIFY(top <= 200 && bottom >= 200);

        c.cls();
        c.setDrawWidth(1);
        c.setDrawStyle(DrawStyle::Dash);
        c.line(-150, 50, 150, 50, kRed);
        c.setDrawStyle(DrawStyle::Dot);
        c.line(-150, -50, 150, -50, kRed);
        const QImage& img = c.image();
        for (int row : {150, 250}) {
            int inked = 0;
            for (int x = 60; x < 340; ++x)
                if (img.pixelColor(x, row) != kWhite) ++inked;
            QVERIFY2(inked > 40 && inked < 260, qPrintable(QString::number(inked)));
        }

        c.cls();
        c.setDrawStyle(DrawStyle::Transparent);
        c.line(-150, 0, 150, 0, kRed);
        c.circle(0, 0, 50, kRed);
        QCOMPARE(inkBounds(c.image()), QRect());
        QCOMPARE(c.currentX(), 0.0);  // the pen still moves
    }

    // ------------------------------------------------------------- text ---

    void printWritesBelowThePenAndMovesDownOneLine() {
        Canvas c;
        setUpBench(c);
        c.setFontName(QStringLiteral("Arial"));
        c.setFontSize(12);
        c.setForeColor(Qt::black);
        c.setCurrentX(-100);
        c.setCurrentY(100);
        const double lineHeight = c.textHeight();
        const double width = c.textWidth(QStringLiteral("Δείκτης Ag"));
        QVERIFY(lineHeight > 10 && lineHeight < 30);
        c.print(QStringLiteral("Δείκτης Ag"));
        // y grows upwards here, so the next line is lower: a smaller y.
        QCOMPARE(c.currentY(), 100.0 - lineHeight);
        QCOMPARE(c.currentX(), -200.0);

        // The ink lies in the box from the pen position one text extent
        // across and one line down, and fills a good part of it.
        const QRect ink = inkBounds(c.image());
        const QRect box(QPoint(100, 100), QSize(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(lineHeight))));
        QVERIFY2(box.adjusted(-1, -1, 1, 1).contains(ink),
                 qPrintable(QStringLiteral("ink %1,%2 %3x%4").arg(ink.x()).arg(ink.y()).arg(ink.width()).arg(ink.height())));
        QVERIFY(ink.width() > box.width() * 3 / 4);
        QVERIFY(ink.height() > box.height() / 2);

        c.print(QStringLiteral("second"));
        QCOMPARE(c.printedTexts(), QStringList({QStringLiteral("Δείκτης Ag"), QStringLiteral("second")}));
        QVERIFY(c.accessibleDescription().contains(QStringLiteral("Δείκτης Ag")));
        QVERIFY(c.accessibleDescription().contains(QStringLiteral("second")));
        QVERIFY(inkedPixels(c.image(), QRect(0, 100 + box.height(), 200, box.height())) > 0);  // second line

        // Two lines in one text move the pen down two lines.
        c.setCurrentY(0);
        c.print(QStringLiteral("one\ntwo"));
        QVERIFY(std::abs(c.currentY() - (0.0 - 2 * lineHeight)) < 1e-9);

        // Staying on the line: the pen moves across by the text's width.
        c.setCurrentX(-100);
        c.setCurrentY(-100);
        c.print(QStringLiteral("x = "), PrintEnd::SameLine);
        QVERIFY(std::abs(c.currentX() - (-100 + c.textWidth(QStringLiteral("x = ")))) < 1e-9);
        QCOMPARE(c.currentY(), -100.0);

        c.cls();
        QVERIFY(c.printedTexts().isEmpty());
        QVERIFY(c.accessibleDescription().isEmpty());
    }

    // ------------------------------------------------------- bad input ---

    void nonFiniteInputIsSkipped() {
        Canvas c;
        setUpBench(c);
        c.line(-100, 0, 100, 0, kRed);
        c.setCurrentX(5);
        c.setCurrentY(6);
        const QImage before = c.image().copy();
        const int skippedBefore = c.skippedOperations();

        c.line(kNaN, 0, 100, 100, kRed);
        c.line(0, 0, kInf, 100);
        c.lineTo(0, -kInf);
        c.box(0, 0, kNaN, 1);
        c.filledBox(0, 0, 50, kNaN);
        c.circle(0, 0, kNaN);
        c.circle(0, 0, 50, kRed, kNaN, 1.0);
        c.circle(0, 0, 50, kRed, 0.0, kInf);
        c.circle(kInf, 0, 50);
        c.circle(0, 0, 50, kRed, std::nullopt, std::nullopt, kNaN);
        c.filledCircle(0, kNaN, 10, kRed);
        c.pset(kNaN, kNaN);
        QCOMPARE(c.image(), before);
        QCOMPARE(c.currentX(), 5.0);
        QCOMPARE(c.currentY(), 6.0);
        QCOMPARE(c.skippedOperations(), skippedBefore + 12);

        // A pen put at NaN cannot print; the text is not listed as shown.
        c.setCurrentX(kNaN);
        c.print(QStringLiteral("lost"));
        QCOMPARE(c.image(), before);
        QVERIFY(!c.printedTexts().contains(QStringLiteral("lost")));

        // A resize replays only what was drawn.
        c.resize(200, 200);
        QCOMPARE(c.pixelAt(0, 0), kRed);
        QCOMPARE(inkBounds(c.image()).height(), 1);
    }

    void hugeCoordinatesAreClippedNotLost() {
        Canvas c;
        setUpBench(c);
        QElapsedTimer timer;
        timer.start();
        c.line(-1e12, 0, 1e12, 0, kRed);
        QCOMPARE(c.pixelAt(-199, 0), kRed);
        QCOMPARE(c.pixelAt(0, 0), kRed);
        QCOMPARE(c.pixelAt(199, 0), kRed);
        // A ray of slope tan 90° as the bench computes it: the visible part
        // is the vertical through the origin.
        const double steep = std::tan(kPi / 2);
        c.line(-200, -200 * steep, 200, 200 * steep, kBlue);
        QVERIFY(near(c.pixelAt(0, 150), kBlue));
        QVERIFY(near(c.pixelAt(0, -150), kBlue));
        QCOMPARE(c.pixelAt(3, 150), kWhite);
        c.line(-1e300, -1e300, 1e300, 1e300, kBlue);  // ill-conditioned: anything sane, quickly
        c.line(-1e308, 1e308, 1e308, -1e308, kBlue);
        c.line(1e300, 1e300, 1e300, 2e300);  // wholly outside
        c.circle(0, 0, 1e15, kRed);
        c.circle(1e20, 0, 5, kRed);
        c.circle(0, 0, 50, kRed, 1e300, -1e300);
        c.pset(1e200, 3);
        c.filledBox(-1e200, -1e200, 1e200, -150, kBlue);
        QCOMPARE(c.pixelAt(50, -170), kBlue);
        QCOMPARE(c.pixelAt(50, -140), kWhite);
        c.setCurrentX(1e250);
        c.print(QStringLiteral("far"));
        c.setDrawWidth(1000000);
        c.line(-10, -10, 10, 10);
        c.setFontSize(1e9);
        c.setCurrentX(0);
        c.setCurrentY(0);
        c.print(QStringLiteral("big"));
        QVERIFY(c.textHeight() < 1e5);
        c.resize(300, 300);  // the replay copes as well
        QVERIFY2(timer.elapsed() < 5000, "drawing far away must not take long");
    }

    // ---------------------------------------------------- resize, DPI ---

    void resizeRedrawsSharplyAtTheNewSize() {
        Canvas c;
        setUpBench(c);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        c.line(-200, 100, 200, 100, kRed);
        c.filledBox(-50, -50, 50, -150, kBlue);
        c.setFillStyle(FillStyle::Solid);
        c.setFillColor(kBlue);
        c.circle(150, 30, 20, kRed);
        const int ops = c.recordedOperations();

        c.resize(800, 600);
        QCoreApplication::processEvents();
        QCOMPARE(c.image().size(), QSize(800, 600) * c.devicePixelRatio());
        QCOMPARE(c.recordedOperations(), ops);
        QCOMPARE(c.toLogical(0, 100), QPointF(400, 150));
        // Still a one-pixel line (replayed, not stretched), now at row 150.
        QCOMPARE(c.pixelAt(0, 100), kRed);
        const auto [top, bottom] = inkedRowsInColumn(c.image(), 20);
        QCOMPARE(top, 150);
        QCOMPARE(bottom, 150);
        QCOMPARE(c.pixelAt(0, -100), kBlue);
        QCOMPARE(c.pixelAt(150, 30), kBlue);
        // The circle keeps its radius in x units: 20 × 2 pixels.
        const auto [left, right] = inkedColumnsInRow(c.image(), static_cast<int>(c.toDevice(150, 30).y()));
        QVERIFY(std::abs((right - left + 1) - 81) <= 2);

        // Drawing after the resize lands at the new size as well.
        c.pset(-100, 0, kRed);
        QCOMPARE(c.image().pixelColor(200, 300), kRed);
    }

    void textKeepsItsSizeWhenTheAreaGrowsAndShrinksWithIt() {
        Canvas c;
        setUpBench(c);
        c.setFontSize(12);
        c.setCurrentX(-180);
        c.setCurrentY(180);
        c.print(QStringLiteral("Γωνία πρόσπτωσης"));
        const QRect one = inkBounds(c.image());
        c.resize(800, 800);
        const QRect grown = inkBounds(c.image());
        QVERIFY(std::abs(grown.height() - one.height()) <= 1);
        QVERIFY(std::abs(grown.width() - one.width()) <= 2);

        // Lines printed one under another stay apart when the area shrinks.
        c.resize(400, 400);
        c.print(QStringLiteral("second line"));
        c.print(QStringLiteral("third line"));
        const QRect three = inkBounds(c.image());
        c.resize(200, 200);
        const QRect shrunk = inkBounds(c.image());
        QVERIFY2(shrunk.height() <= three.height() / 2 + 3, qPrintable(QString::number(shrunk.height())));
        QVERIFY(shrunk.width() <= three.width() / 2 + 3);
    }

    void drawingBeforeTheFirstShowUsesTheSetSize() {
        // Screens draw while they are still hidden; Qt delivers the resize
        // only when they are shown.
        Canvas c;
        setUpBench(c);
        c.resize(300, 150);
        c.line(-200, 0, 200, 0, kRed);
        QCOMPARE(c.image().size(), QSize(300, 150));
        QCOMPARE(c.image().pixelColor(150, 75), kRed);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        QCOMPARE(c.image().size(), QSize(300, 150) * c.devicePixelRatio());
        QCOMPARE(c.pixelAt(0, 0), kRed);
    }

    void pixelScaleFollowsTheSizeUntilAScaleIsSet() {
        QWidget host;
        auto* c = new Canvas(&host);
        c->setGeometry(0, 0, 120, 80);
        QCOMPARE(c->scaleWidth(), 120.0);
        QCOMPARE(c->scaleHeight(), 80.0);
        c->scale(0, 0, 1, 1);
        c->resize(240, 160);
        QCOMPARE(c->scaleWidth(), 1.0);
    }

    void controlsStayAtTheirUserPosition() {
        Canvas c;
        setUpBench(c);
        auto* button = new QPushButton(QStringLiteral("OK"));
        c.placeControl(button, -100, 100, 50, 20);
        QCOMPARE(button->parentWidget(), &c);
        QCOMPARE(button->geometry(), QRect(100, 100, 50, 20));
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        QVERIFY(button->isVisible());

        c.resize(800, 600);
        QCoreApplication::processEvents();
        QCOMPARE(button->geometry(), QRect(200, 150, 100, 30));

        // A control that keeps its own size only moves.
        auto* other = new QPushButton(QStringLiteral("Other"), &c);
        other->resize(70, 25);
        c.placeControl(other, 0, 0);
        QCOMPARE(other->geometry(), QRect(400, 300, 70, 25));

        // A control placed on a visible canvas shows; one hidden on purpose stays hidden.
        QVERIFY(other->isVisible());
        auto* hidden = new QPushButton(QStringLiteral("Hidden"));
        hidden->hide();
        c.placeControl(hidden, 10, 10);
        QVERIFY(hidden->isHidden());

        // A new scale does not move the controls already standing.
        c.scale(0, 0, 100, 100);
        QCOMPARE(button->geometry(), QRect(200, 150, 100, 30));
        c.resize(400, 300);
        QCoreApplication::processEvents();
        QCOMPARE(button->geometry(), QRect(100, 75, 50, 15));

        // A control that is deleted is forgotten.
        delete other;
        c.resize(500, 300);
        QCoreApplication::processEvents();
    }

    void mouseReportsUserCoordinates() {
        Canvas c;
        setUpBench(c);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        QSignalSpy pressed(&c, &Canvas::mousePressed);
        QSignalSpy clicked(&c, &Canvas::clicked);
        QTest::mouseClick(&c, Qt::LeftButton, Qt::NoModifier, QPoint(300, 50));
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(pressed.at(0).at(0).toDouble(), 100.0);
        QCOMPARE(pressed.at(0).at(1).toDouble(), 150.0);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toDouble(), 100.0);
    }
};

QTEST_MAIN(TestCanvas)
#include "test_canvas.moc"
