// The canvas at two device pixels per logical pixel: a program of its own,
// because the factor is fixed when the application starts.
#include <QtTest>

#include "canvas/canvas.h"

class TestCanvasHighDpi : public QObject {
    Q_OBJECT
private slots:
    void drawsAtDeviceResolution() {
        const QColor red(255, 0, 0), white(255, 255, 255);
        Canvas c;
        c.resize(200, 100);
        c.setBackColor(white);
        c.scale(0, 100, 200, 0);  // one unit per logical pixel, y upwards
        c.show();
        QVERIFY(QTest::qWaitForWindowExposed(&c));
        QCOMPARE(c.image().size(), QSize(400, 200));
        // A box edge half a logical pixel in shows, which a magnified
        // logical-size image could not; a thin line is two full device rows.
        c.filledBox(10.5, 90, 20, 80, red);
        c.line(0, 50, 200, 50, red);
        QCOMPARE(c.image().pixelColor(21, 30), red);
        QCOMPARE(c.image().pixelColor(20, 30), white);
        QList<QColor> across;
        for (int y = 90; y < 110; ++y) across << c.image().pixelColor(200, y);
        QCOMPARE(across.count(red), 2);
        QCOMPARE(across.count(white), 18);
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
