#include <QtTest>

#include <cmath>

#include "analysis/errors_screen.h"
#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"

namespace {

Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    return form<Hmiky>();
}

bool dark(const QColor& c) { return c.red() < 110 && c.green() < 110 && c.blue() < 110; }

}  // namespace

class TestErrorsScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() {
        module1() = SharedState{};
        module1().pi = 4.0 * std::atan(1.0);
    }

    void graphOfTheBenchSetUp() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.xcoor->setValue(20);   // xc = 4
        bench.ycoor->setValue(-5);   // yc = −1
        bench.hvalue->setValue(30);  // h = 3
        bench.angle->setValue(50);   // 5°
        bench.Optimize_Click();
        Errors& errors = form<Errors>();
        QVERIFY(errors.isVisible());
        QCOMPARE(errors.windowTitle(), QStringLiteral("Mean Error  Μέσο σφάλμα"));

        const SharedState& s = module1();
        QCOMPARE(s.rayHeight, 3.0);
        QCOMPARE(s.xc, 4.0);
        QCOMPARE(s.yc, -1.0);
        QVERIFY(std::fabs(s.angleWithY - 5.0 * s.pi / 180.0) < 1e-12);  // left in radians
        QCOMPARE(s.semicircleRadius, 148.0);

        QCOMPARE(errors.curve().points.size(), std::size_t{67});
        QCOMPARE(errors.curve().points.front().radius, 14.0);
        QCOMPARE(errors.curve().points.back().radius, 146.0);
        QCOMPARE(errors.segmentsDrawn(), 66);

        const QStringList texts = errors.canvas->printedTexts();
        for (const char* label : {"Radius of Semicircle", "Mean Error%", "n= 1.50", "h= 3.00", "xc= 4.00", "yc= -1.00",
                                  "Angle= 5.00"})
            QVERIFY2(texts.contains(QString::fromUtf8(label)), label);

        // The curve is really on the graph: at every drawn point in range.
        int probed = 0;
        for (const MeanErrorPoint& p : errors.curve().points) {
            if (p.errorPercent < 2.0 || p.errorPercent > 100.0) continue;
            QVERIFY2(dark(errors.canvas->pixelAt(p.radius, p.errorPercent)), qPrintable(QString::number(p.radius)));
            ++probed;
        }
        QVERIFY(probed > 30);
        QCOMPARE(errors.canvas->skippedOperations(), 0);
    }

    void perfectSetUpIsFlat() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();  // centred block, ray through the centre
        bench.Optimize_Click();
        Errors& errors = form<Errors>();
        for (const MeanErrorPoint& p : errors.curve().points) QVERIFY(std::fabs(p.errorPercent) < 1e-9);
        // Nothing above the axis where an error would show.
        for (double r = 20; r <= 140; r += 10) QCOMPARE(errors.canvas->pixelAt(r, 6), QColor(Qt::white));
        QVERIFY(dark(errors.canvas->pixelAt(80, 0)));
    }

    void clickDrawsAgainFromTheBench() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Optimize_Click();
        Errors& errors = form<Errors>();
        QCoreApplication::processEvents();
        QVERIFY(errors.canvas->printedTexts().contains(QStringLiteral("xc= 0.00")));

        bench.xcoor->setValue(10);
        bench.Indexn->setValue(20);
        QCOMPARE(module1().angleWithY, 0.0);  // the bench works in degrees again
        QTest::mouseClick(errors.canvas, Qt::LeftButton, {}, QPoint(40, 40));
        const QStringList texts = errors.canvas->printedTexts();
        QVERIFY(texts.contains(QStringLiteral("xc= 2.00")));
        QVERIFY(texts.contains(QStringLiteral("n= 2.00")));
        QVERIFY(errors.curve().points.back().errorPercent > 0.0);

        // Opening it again from the bench also draws the bench as it is now.
        bench.xcoor->setValue(0);
        bench.Optimize_Click();
        QVERIFY(errors.canvas->printedTexts().contains(QStringLiteral("xc= 0.00")));
    }

    void resizingKeepsTheGraph() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.xcoor->setValue(20);
        bench.Optimize_Click();
        Errors& errors = form<Errors>();
        const QStringList texts = errors.canvas->printedTexts();
        const SharedState before = module1();
        errors.resize(700, 540);
        QCoreApplication::processEvents();
        QCOMPARE(errors.canvas->printedTexts(), texts);
        QCOMPARE(errors.segmentsDrawn(), 66);
        // A resize draws, it does not measure again.
        QCOMPARE(module1().semicircleRadius, before.semicircleRadius);
        QCOMPARE(module1().measuredIndex, before.measuredIndex);
    }
};

QTEST_MAIN(TestErrorsScreen)
#include "test_errors_screen.moc"
