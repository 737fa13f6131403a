// The canvas on a screen with two device pixels per logical pixel: the
// backing image has the device's resolution and the drawing is painted at
// it, not magnified from a logical-size image.
#include <QtTest>

#include <cmath>

#include "canvas/canvas.h"
#include "canvas/fonts.h"

namespace {
const QColor kRed(255, 0, 0);
const QColor kWhite(255, 255, 255);
}  // namespace

class TestCanvasHighDpi : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        installFontSubstitutions();
        QCOMPARE(qApp->devicePixelRatio(), 2.0);
    }

    void drawsAtDeviceResolution() {
        Canvas c;
        c.resize(200, 100);
        c.setBackColor(kWhite);
        c.scale(0, 100, 200, 0);  // one unit per logical pixel, y upwards
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        QCOMPARE(c.image().size(), QSize(400, 200));
        QCOMPARE(c.image().devicePixelRatio(), 2.0);

        // A one-pixel pen is one logical pixel: two device rows, both full.
        c.line(0, 50, 200, 50, kRed);
        const QImage& img = c.image();
        QCOMPARE(c.toDevice(100, 50), QPointF(200, 100));
        int redRows = 0;
        for (int y = 95; y < 105; ++y)
            if (img.pixelColor(200, y) == kRed) ++redRows;
            else QCOMPARE(img.pixelColor(200, y), kWhite);
        QCOMPARE(redRows, 2);
        QCOMPARE(c.pixelAt(100, 50), kRed);

        // A slanted line is drawn with device-pixel detail: a half-logical-
        // pixel step shows, which a magnified logical image could not show.
        c.cls();
        c.filledBox(10.5, 90, 20, 80, kRed);
        QCOMPARE(img.pixelColor(21, 30), kRed);
        QCOMPARE(img.pixelColor(20, 30), kWhite);

        // Text: the pen moves by the height of a line as painted.
        c.cls();
        c.setFontSize(12);
        c.setCurrentX(10);
        c.setCurrentY(90);
        c.print(QStringLiteral("Γωνία Ag"));
        const double line = 90 - c.currentY();
        QVERIFY(line > 10 && line < 30);
        int lowest = -1;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                if (img.pixelColor(x, y) != kWhite) lowest = y;
        QVERIFY(lowest > 20 + static_cast<int>(line));             // fills its line at device size
        QVERIFY(lowest <= 20 + static_cast<int>(std::ceil(2 * line)));  // and stays within it
    }

    void resizeKeepsDeviceResolution() {
        Canvas c;
        c.resize(100, 100);
        c.setBackColor(kWhite);
        c.scale(0, 0, 10, 10);
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        c.line(0, 5, 10, 5, kRed);
        c.resize(300, 200);
        QCoreApplication::processEvents();
        QCOMPARE(c.image().size(), QSize(600, 400));
        QCOMPARE(c.pixelAt(5, 5), kRed);
        QCOMPARE(c.image().pixelColor(300, 197), kWhite);  // still thin: two device rows
        QCOMPARE(c.image().pixelColor(300, 203), kWhite);
    }
};

int main(int argc, char** argv) {
    qputenv("QT_SCALE_FACTOR", "2");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    TestCanvasHighDpi test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_canvas_hidpi.moc"
