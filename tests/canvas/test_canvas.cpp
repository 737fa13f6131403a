#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "canvas/presentation_scale.h"
#include "canvas/text_runs.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kPi = std::numbers::pi;
const QColor kRed(255, 0, 0);
const QColor kBlue(0, 0, 255);
const QColor kWhite(255, 255, 255);

// The non-white device pixels within area (default: all): their bounds and count.
struct Ink {
    QRect bounds;
    int count = 0;
};
Ink ink(const QImage& image, QRect area = QRect()) {
    Ink found;
    const QRect r = area.isNull() ? image.rect() : area.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (image.pixelColor(x, y) != kWhite) {
                found.bounds |= QRect(x, y, 1, 1);
                ++found.count;
            }
    return found;
}

}  // namespace

class TestCanvas : public QObject {
    Q_OBJECT
    std::unique_ptr<Canvas> bench;

private slots:
    void initTestCase() { installFontSubstitutions(); }
    // Each test gets the bench's convention: 400 × 400 white, origin in the
    // middle, y upwards, one user unit per pixel.
    void init() {
        bench = std::make_unique<Canvas>();
        bench->resize(400, 400);
        bench->setBackColor(kWhite);
        bench->scale(-200, 200, 200, -200);
    }
    void cleanup() { bench.reset(); }

    void userScaleLinesAndBoxes() {
        Canvas& c = *bench;
        QCOMPARE(c.toLogical(100, 150), QPointF(300, 50));
        QCOMPARE(c.toUser(QPointF(300, 50)), QPointF(100, 150));
        c.scale(5, 5, 5, 10);  // no extent: refused, the old scale stays
        c.setForeColor(kRed);
        c.line(-200, 100, 200, 100);  // y = 100: one crisp row, 100 from the top
        QCOMPARE(ink(c.image()).bounds, QRect(0, 100, 400, 1));
        QCOMPARE(c.pixelAt(-150, 100), kRed);
        QCOMPARE(QPointF(c.currentX(), c.currentY()), QPointF(200, 100));

        c.cls();
        c.filledBox(-100, 50, 100, -50, kBlue);  // solid, edge to edge, no soft rim
        QCOMPARE(ink(c.image()).bounds, QRect(100, 150, 200, 100));
        QCOMPARE(c.pixelAt(-100, 50), kBlue);
        c.box(120, 150, 180, 110, kRed);  // an outline: the inside stays clear
        QCOMPARE(c.pixelAt(150, 150), kRed);
        QCOMPARE(c.pixelAt(120, 130), kRed);
        QCOMPARE(c.pixelAt(150, 130), kWhite);

        Canvas p;  // until a scale is set the units are pixels, following the size
        p.resize(240, 160);
        QCOMPARE(p.toLogical(200, 150), QPointF(200, 150));
    }

    void arcsWithNegativeAnglesDrawRadii_data() {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::addColumn<QPolygonF>("inked");
        QTest::addColumn<QPolygonF>("blank");
        QTest::newRow("arc alone") << 0.001 << kPi << QPolygonF{{0, 100}} << QPolygonF{{0, -100}, {50, 0}, {-50, 0}};
        QTest::newRow("closed at -0.001")
            << -0.001 << -kPi << QPolygonF{{0, 100}, {50, 0}, {95, 0}, {-50, 0}} << QPolygonF{{0, -100}, {0, 50}};
        QTest::newRow("radius at start") << -kPi / 2 << kPi << QPolygonF{{0, 50}, {-71, 71}}
                                         << QPolygonF{{-50, 0}, {71, 71}};
        QTest::newRow("radius at end") << kPi / 2 << -kPi << QPolygonF{{-50, 0}} << QPolygonF{{0, 50}};
        QTest::newRow("end below start") << -kPi << -kPi / 2 << QPolygonF{{100, 0}, {0, -100}, {-50, 0}, {0, 50}}
                                         << QPolygonF{{-71, 71}};  // still counter-clockwise: three quarters
    }
    void arcsWithNegativeAnglesDrawRadii() {
        QFETCH(double, start);
        QFETCH(double, end);
        QFETCH(QPolygonF, inked);
        QFETCH(QPolygonF, blank);
        Canvas& c = *bench;
        c.circle(0, 0, 100, kRed, start, end);
        for (const QPointF& p : inked) QVERIFY2(c.pixelAt(p.x(), p.y()) != kWhite, qPrintable(QString::number(p.x())));
        for (const QPointF& p : blank) QVERIFY2(c.pixelAt(p.x(), p.y()) == kWhite, qPrintable(QString::number(p.x())));
        QCOMPARE(QPointF(c.currentX(), c.currentY()), QPointF(0, 0));
    }

    void fillAspectWidthAndStyles() {
        Canvas& c = *bench;
        const QColor glass(205, 255, 255);
        c.setFillColor(glass);
        c.circle(-100, 0, 50, kRed);  // transparent by default
        QCOMPARE(c.pixelAt(-100, 0), kWhite);
        c.setFillStyle(FillStyle::Solid);
        c.circle(100, 0, 50, kRed);
        QCOMPARE(c.pixelAt(100, 40), glass);
        QCOMPARE(c.pixelAt(100, 60), kWhite);
        QVERIFY(c.pixelAt(150, 0) != glass);  // the outline keeps the pen colour
        c.cls();
        c.circle(0, 0, 100, kRed, -0.001, -kPi);  // a closed semicircle fills
        QCOMPARE(c.pixelAt(0, 50), glass);
        QCOMPARE(c.pixelAt(0, -50), kWhite);

        for (auto [aspect, size] : {std::pair{0.5, QSize(201, 101)}, std::pair{2.0, QSize(101, 201)}}) {
            c.cls();
            c.circle(0, 0, 100, kRed, std::nullopt, std::nullopt, aspect);
            const QSize got = ink(c.image()).bounds.size();
            QVERIFY(std::abs(got.width() - size.width()) <= 2 && std::abs(got.height() - size.height()) <= 2);
        }

        c.cls();
        c.setDrawWidth(5);
        c.line(-150, 0, 150, 0, kRed);
        QCOMPARE(ink(c.image()).bounds.height(), 5);
        c.setDrawWidth(1);
        for (DrawStyle style : {DrawStyle::Solid, DrawStyle::Dash}) {
            c.cls();
            c.setDrawStyle(style);
            c.line(-150, 100, 150, 100, kRed);
            const int n = ink(c.image(), QRect(60, 100, 280, 1)).count;
            if (style == DrawStyle::Solid)
                QCOMPARE(n, 280);
            else
                QVERIFY2(n > 40 && n < 260, qPrintable(QString::number(n)));  // visibly broken
        }
    }

    void printMovesThePenAndIsListed() {
        Canvas& c = *bench;
        c.setFontSize(12);
        c.setCurrentX(-100);
        c.setCurrentY(100);
        const double line = c.textHeight();
        const QString text = QStringLiteral("Δείκτης Ag");
        const QRect box(100, 100, static_cast<int>(std::ceil(c.textWidth(text))), static_cast<int>(std::ceil(line)));
        c.print(text);
        // y grows upwards: the next line has a smaller y, at ScaleLeft.
        QCOMPARE(QPointF(c.currentX(), c.currentY()), QPointF(-200, 100 - line));
        // The ink fills most of the box one text width across and one line down from the pen.
        const QRect written = ink(c.image()).bounds;
        QVERIFY(box.adjusted(-1, -1, 1, 1).contains(written));
        QVERIFY(written.width() > box.width() * 3 / 4 && written.height() > box.height() / 2);

        c.print(QStringLiteral("one\ntwo"));  // two lines down
        QVERIFY(std::abs(c.currentY() - (100 - 3 * line)) < 1e-9);
        const QStringList all{text, QStringLiteral("one\ntwo")};
        QCOMPARE(c.printedTexts(), all);
        QCOMPARE(c.description(), all.join(QLatin1Char('\n')));

        const QColor back(10, 20, 30);
        auto allBack = [&c, &back] {
            QImage expected(c.image().size(), c.image().format());
            expected.fill(back);
            return c.image() == expected;
        };
        c.setBackColor(back);  // clears as well
        QVERIFY(allBack());
        QCOMPARE(QPointF(c.currentX(), c.currentY()), QPointF(-200, 200));
        QVERIFY(c.printedTexts().isEmpty() && c.description().isEmpty());
        c.resize(200, 200);  // nothing of the old drawing comes back
        QVERIFY(allBack());
    }

    // Measures, texts and lines in a row follow every change of size,
    // weight, role and colour between them, however the canvas keeps them.
    void textsAndPensFollowEachChange() {
        Canvas& c = *bench;
        const QString text = QStringLiteral("Ag 1.50");
        const double small = c.textWidth(text);
        c.setFontSize(20);
        QVERIFY(std::abs(c.textWidth(text) / small - 2.0) < 0.1);
        c.setFontBold(true);
        const double bold = c.textWidth(text);
        c.setFontRole(FontRole::Table);
        QVERIFY(c.textWidth(text) != bold);
        c.setFontRole(FontRole::Caption);
        c.setFontBold(false);
        std::vector<int> heights;
        for (const double points : {10.0, 20.0}) {
            c.setFontSize(points);
            c.setCurrentX(-200);
            c.setCurrentY(points * 10 - 100);
            c.print(text, PrintEnd::SameLine);
            QCOMPARE(c.currentX(), -200 + c.textWidth(text));
            heights.push_back(ink(c.image(), QRect(0, 300 - static_cast<int>(points) * 10, 400, 40)).bounds.height());
        }
        QVERIFY(std::abs(heights[1] / double(heights[0]) - 2.0) < 0.25);
        c.setFontSize(10);
        QCOMPARE(c.textWidth(text), small);
        c.line(-200, -150, 200, -150, kRed);
        c.line(-200, -160, 200, -160, kBlue);
        QCOMPARE(c.pixelAt(0, -150), kRed);
        QCOMPARE(c.pixelAt(0, -160), kBlue);
        // Texts painted from kept glyphs land on drawText()'s pixels, at any
        // place and pixel ratio.
        for (const qreal dpr : {1.0, 1.5, 2.0}) {
            QImage kept(400, 120, QImage::Format_ARGB32_Premultiplied), direct = kept;
            for (QImage* image : {&kept, &direct}) {
                image->setDevicePixelRatio(dpr);
                image->fill(kWhite);
                QPainter p(image);
                p.setFont(designedRoleFont(FontRole::Reading, 13.0));
                for (const QPointF at : {QPointF(3.37, 17.71), QPointF(-0.61, 40.5), QPointF(101.999, 77.013)})
                    image == &kept ? paintTextLine(p, at, QStringLiteral("Δείκτης n = 1.50"))
                                   : p.drawText(at, QStringLiteral("Δείκτης n = 1.50"));
            }
            QCOMPARE(kept, direct);
        }
    }

    void badCoordinatesAreSkippedOrClipped() {
        Canvas& c = *bench;
        c.line(-100, 0, 100, 0, kRed);
        c.setCurrentX(5);
        c.setCurrentY(6);
        const QImage before = c.image().copy();
        c.line(kNaN, 0, 100, -kInf, kRed);
        c.box(0, 0, kNaN, 1);
        c.filledBox(0, 0, 50, kNaN);
        c.circle(0, 0, kNaN);
        c.circle(0, 0, 50, kRed, kNaN, 1.0);
        c.circle(0, 0, 50, kRed, 1.0, -kInf);
        c.circle(kInf, 0, 50, kRed, std::nullopt, std::nullopt, kNaN);
        QCOMPARE(c.image(), before);
        QCOMPARE(QPointF(c.currentX(), c.currentY()), QPointF(5, 6));
        c.setCurrentX(kNaN);
        c.print(QStringLiteral("lost"));
        QCOMPARE(c.image(), before);
        QVERIFY(c.printedTexts().isEmpty());

        // Far outside but finite: the visible part is drawn, quickly.
        c.cls();
        c.line(-1e12, 50, 1e12, 50, kRed);
        QCOMPARE(ink(c.image()).bounds, QRect(0, 150, 400, 1));
        const double steep = std::tan(kPi / 2);  // a ray at 90° as the bench computes it
        c.line(-200, -200 * steep, 200, 200 * steep, kBlue);
        QVERIFY(c.pixelAt(0, 150) != kWhite && c.pixelAt(3, 150) == kWhite);
        c.filledBox(-1e200, -1e200, 1e200, -150, kBlue);
        QCOMPARE(ink(c.image(), QRect(0, 300, 150, 100)).bounds, QRect(0, 350, 150, 50));
        c.line(-1e308, 1e308, 1e308, -1e308, kBlue);
        c.circle(0, 0, 1e15, kRed);
        c.resize(300, 300);  // the replay copes as well
    }

    void resizeReplaysTheDrawingSharply() {
        Canvas& c = *bench;
        // Screens draw while still hidden, at the size they were given.
        c.line(-200, 100, 200, 100, kRed);
        c.filledCircle(150, 30, 20, kBlue);
        c.setCurrentX(-190);
        c.setCurrentY(80);
        c.print(QStringLiteral("Γωνία\nπρόσπτωσης"));
        const QRect text = ink(c.image(), QRect(0, 105, 150, 95)).bounds;
        QCOMPARE(c.image().pixelColor(0, 100), kRed);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));

        c.resize(800, 600);
        QCoreApplication::processEvents();
        QCOMPARE(c.image().size(), QSize(800, 600));
        QCOMPARE(ink(c.image(), QRect(0, 0, 800, 170)).bounds, QRect(0, 150, 800, 1));  // replayed, not stretched
        QVERIFY(std::abs(ink(c.image(), QRect(600, 200, 200, 150)).bounds.width() - 81) <= 2);  // radius counts across
        QCOMPARE(ink(c.image(), QRect(0, 155, 290, 200)).bounds.width(), text.width());         // text keeps its size
        c.pset(-100, -100, kRed);  // new drawing lands at the new size
        QCOMPARE(c.image().pixelColor(200, 450), kRed);
        c.resize(200, 200);  // text shrinks with the area, but not below 8 pt (it was printed in 10)
        const int shrunk = ink(c.image(), QRect(0, 52, 70, 70)).bounds.height();
        QVERIFY2(shrunk < text.height() && shrunk > text.height() / 2 + 2,
                 qPrintable(QStringLiteral("%1 of %2").arg(shrunk).arg(text.height())));
        for (const auto& t : c.drawnTexts()) QCOMPARE(t.points, 8.0);
        c.setFontSize(6);  // printed small on purpose: kept, not enlarged
        c.print(QStringLiteral("tiny"));
        c.resize(100, 100);
        QCOMPARE(c.drawnTexts().back().points, 6.0);
        c.resize(900, 600);  // larger than printed: the size as printed
        QCOMPARE(c.drawnTexts().front().points, 10.0);
    }

    // The presentation size grows texts, pens and points where the screen
    // paints them, about the places the figure gives them; the layout in
    // user units, the summary and the exported figure stay as they were.
    // Texts that belong together stay apart: the lines of a print, a print
    // where the last left the pen, a continuation on its line, a line
    // stacked by hand under a row with a text elsewhere between; the box
    // filled under a readout grows with it; a text at the right edge stays
    // inside; the next band of a title block follows it.
    void presentationSizeGrowsOnlyTheScreen() {
        Canvas& c = *bench;
        c.setDrawWidth(2);
        c.line(-200, 100, 200, 100, kRed);
        c.setDrawWidth(1);
        c.setCurrentX(-190);
        c.setCurrentY(-100);
        c.print(QStringLiteral("n = 1.50"));
        c.setCurrentX(0);
        c.setCurrentY(190);
        c.print(QStringLiteral("first\nsecond"));
        c.setCurrentX(0);
        c.print(QStringLiteral("third"), PrintEnd::SameLine);
        c.print(QStringLiteral(" and on"));
        const double under = c.currentY();
        c.setCurrentX(-190);
        c.setCurrentY(40);
        c.print(QStringLiteral("elsewhere"));
        c.setCurrentX(0);
        c.setCurrentY(under);
        c.print(QStringLiteral("fourth"));
        c.setCurrentY(-180);
        for (const QString& line : {QStringLiteral("low"), QStringLiteral("lower")}) {
            c.setCurrentX(100);  // a block at the bottom rises to be seen whole
            c.print(line);
        }
        const QString readout = QStringLiteral("i = 40.0°\nr = 74.6°");
        c.filledBox(40, 60, 46 + c.textWidth(readout), 54 - c.textHeight(readout), kBlue);
        c.setCurrentY(57);
        for (const QString& line : readout.split(QLatin1Char('\n'))) {
            c.setCurrentX(43);
            c.print(line);
        }
        c.setCurrentX(200 - c.textWidth(QStringLiteral("at the edge")));  // grown, it stays inside
        c.setCurrentY(-20);
        c.print(QStringLiteral("at the edge"));
        c.setCurrentX(120);
        c.setCurrentY(-60);
        c.print(QStringLiteral("b1"));
        c.setCurrentX(130);  // the next band: a little under the pen, at another left
        c.setCurrentY(c.currentY() - 3);
        c.print(QStringLiteral("b2"));
        const double advance = c.textWidth(QStringLiteral("n = 1.50"));
        c.setSummary(QStringLiteral("A red line."));
        const QImage exported = figureImage(c, 1.0);
        const int pen = ink(c.image(), QRect(100, 90, 1, 20)).count;
        const QRect text = ink(c.image(), QRect(0, 290, 280, 110)).bounds;
        for (const double scale : {1.5, 2.0}) {
            setPresentationScale(scale);
            QCOMPARE(ink(c.image(), QRect(100, 90, 1, 20)).count, static_cast<int>(pen * scale));
            const QRect grown = ink(c.image(), QRect(0, 290, 280, 110)).bounds;
            QVERIFY(std::abs(grown.height() - text.height() * scale) <= 2);
            QVERIFY(std::abs(grown.left() - text.left()) <= 1);  // grown about its place
            const auto texts = c.drawnTexts();
            const auto designed = [&c] {
                const DesignedScale asDesigned;
                return c.drawnTexts();
            }();
            QCOMPARE(texts.front().points, 10.0 * scale);
            QCOMPARE(texts[1].box.topLeft(), designed[1].box.topLeft());  // a block grows from its first line
            for (std::size_t i = 1; i <= 5; ++i)
                for (std::size_t j = i + 1; j <= 5; ++j)
                    QVERIFY2(!texts[i].box.intersects(texts[j].box), qPrintable(texts[i].text + " / " + texts[j].text));
            QVERIFY(std::abs(texts[4].box.left() - texts[3].box.right()) < 0.01);  // " and on" after "third"
            QCOMPARE(texts[6].box.left(), designed[6].box.left());  // "fourth" under the block, at its left
            QVERIFY(texts[6].box.top() >= texts[4].box.bottom());
            QVERIFY(texts[8].box.bottom() <= 400 && texts[7].box.bottom() <= texts[8].box.top());
            for (const std::size_t k : {9, 10}) {  // the readout's ground reaches past its lines
                const QPointF past = texts[k].box.topRight() + QPointF(1, texts[k].box.height() / 2);
                QCOMPARE(c.image().pixelColor((past * c.image().devicePixelRatio()).toPoint()), kBlue);
            }
            QVERIFY(texts[11].box.right() <= c.width() + 0.5 && texts[11].box.left() < designed[11].box.left());
            QVERIFY(texts[13].box.top() >= texts[12].box.bottom());
            QCOMPARE(c.textWidth(QStringLiteral("n = 1.50")), advance);
            QCOMPARE(c.summary(), QStringLiteral("A red line."));
            QCOMPARE(figureImage(c, 1.0), exported);
            QCOMPARE(roleFont(FontRole::Caption, 10.0).pointSizeF(), 10.0 * scale);
        }
        setPresentationScale(1.0);
        QCOMPARE(ink(c.image(), QRect(100, 90, 1, 20)).count, pen);
    }

    void patchRepaintsControlsAndMouse() {
        Canvas& c = *bench;
        c.filledBox(-200, 200, 0, 0, kRed);  // top-left quarter
        c.filledCircle(100, -100, 30, kBlue);
        auto* button = new QPushButton(QStringLiteral("OK"));  // clear of the pixels compared below
        c.placeControl(button, -100, 100, 50, 20);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        // A repaint of one patch (what an animation over the drawing asks
        // for) shows the image's pixels of that patch, not of its corner.
        for (const QRect patch : {QRect(150, 150, 100, 100), QRect(270, 270, 60, 60), QRect(0, 0, 400, 400)}) {
            const QImage shown = c.grab(patch).toImage();
            for (const QPoint p : {QPoint(0, 0), QPoint(patch.width() / 2, patch.height() / 2),
                                   QPoint(patch.width() - 1, patch.height() - 1)})
                QCOMPARE(shown.pixelColor(p), c.image().pixelColor(patch.topLeft() + p));
        }

        // Controls and the mouse work in user units.
        QCOMPARE(button->geometry(), QRect(100, 100, 50, 20));
        QVERIFY(button->isVisible());

        c.resize(800, 600);
        QCoreApplication::processEvents();
        QCOMPARE(button->geometry(), QRect(200, 150, 100, 30));

        QSignalSpy clicked(&c, &Canvas::clicked);
        QTest::mouseClick(&c, Qt::LeftButton, Qt::NoModifier, QPoint(600, 150));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(QPointF(clicked.at(0).at(0).toDouble(), clicked.at(0).at(1).toDouble()), QPointF(100, 100));

        c.scale(0, 0, 100, 100);  // a new scale moves nothing already placed
        c.resize(400, 300);
        QCoreApplication::processEvents();
        QCOMPARE(button->geometry(), QRect(100, 75, 50, 15));
    }

    // A window far larger than any screen: its image stops at the largest
    // screen's size (or a common desktop's, on a smaller screen) instead of
    // taking a quarter of a gigabyte, the whole figure is still in it, new
    // drawing lands where it should. Back at a small size the image is
    // sharp again.
    void imageStopsAtTheLargestScreen() {
        Canvas& c = *bench;
        c.scale(0, 0, 100, 100);
        c.filledBox(90, 90, 100, 100, kRed);  // the far corner
        c.resize(8000, 8000);
        QSize largest(1920, 1200);
        for (const QScreen* screen : QGuiApplication::screens())
            largest = largest.expandedTo((QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize());
        const QSize image = c.image().size();
        QVERIFY2(image.width() <= largest.width() && image.height() <= largest.height() && image.width() < 8000,
                 qPrintable(QStringLiteral("%1 x %2").arg(image.width()).arg(image.height())));
        QCOMPARE(image.width(), image.height());  // proportions kept
        QCOMPARE(c.pixelAt(95, 95), kRed);
        QCOMPARE(c.pixelAt(85, 95), kWhite);
        c.filledBox(0, 90, 10, 100, kBlue);
        QCOMPARE(c.pixelAt(5, 95), kBlue);
        QCOMPARE(c.pixelAt(5, 85), kWhite);

        c.resize(400, 400);
        QCOMPARE(c.image().size(), QSize(400, 400));
        QCOMPARE(ink(c.image()).bounds, QRect(0, 360, 400, 40));
        QCOMPARE(ink(c.image(), QRect(0, 360, 400, 40)).count, 2 * 40 * 40);
    }
};

QTEST_MAIN(TestCanvas)
#include "test_canvas.moc"
