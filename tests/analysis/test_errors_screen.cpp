#include <QtTest>

#include <cmath>

#include "analysis/errors_screen.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/forms.h"

namespace {

bool dark(const QColor& c) { return c.red() < 110 && c.green() < 110 && c.blue() < 110; }

void setBars(const Hmiky& bench, std::initializer_list<std::pair<const char*, int>> values) {
    for (auto [name, value] : values) named<QScrollBar>(bench, name)->setValue(value);
}

}  // namespace

class TestErrorsScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // The graph of the bench's set-up: 67 radii, 66 segments, the set-up's
    // values beside it, the curve really on the graph; the bench's values
    // are left as the bench shows them.
    void graphOfTheBenchSetUp() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command1_Click();
        BenchState& bench = sharedState<BenchState>();
        Hmiky& screen = form<Hmiky>();
        screen.moredens_Click();
        setBars(screen, {{"xcoor", 20}, {"ycoor", -5}, {"hvalue", 30}, {"angle", 50}});
        screen.Optimize_Click();
        const Errors& errors = form<Errors>();
        const Canvas& graph = errors.drawing();
        QVERIFY(errors.isVisible());
        QVERIFY(bench.angleWithY() == 5.0 && bench.semicircleRadius() == 100.0);
        QVERIFY(errors.curve().points.size() == 67 && errors.segmentsDrawn() == 66);
        for (const char* label :
             {"Radius of Semicircle", "Mean Error%", "n= 1.50", "h= 3.00", "xc= 4.00", "yc= -1.00", "Angle= 5.00"})
            QVERIFY2(graph.printedTexts().contains(QString::fromUtf8(label)), label);
        int probed = 0;
        for (const MeanErrorPoint& p : errors.curve().points) {
            if (p.errorPercent < 2.0 || p.errorPercent > 100.0) continue;
            QVERIFY2(dark(graph.pixelAt(p.radius, p.errorPercent)), qPrintable(QString::number(p.radius)));
            ++probed;
        }
        QVERIFY(probed > 30 && graph.skippedOperations() == 0);

        // A resize draws again, it does not measure again.
        const QStringList texts = graph.printedTexts();
        bench.setMeasuredIndex(7.0);
        form<Errors>().resize(700, 540);
        QCoreApplication::processEvents();
        QVERIFY(graph.printedTexts() == texts && errors.segmentsDrawn() == 66 && bench.measuredIndex() == 7.0);

        // A perfect set-up is flat; a click, and opening it again from the
        // bench, draw anew from the bench as it is now.
        setBars(screen, {{"xcoor", 0}, {"ycoor", 0}, {"hvalue", 0}, {"angle", 0}});
        screen.Optimize_Click();
        for (const MeanErrorPoint& p : errors.curve().points) QVERIFY(std::fabs(p.errorPercent) < 1e-9);
        for (double r = 20; r <= 140; r += 10) QCOMPARE(graph.pixelAt(r, 6), QColor(Qt::white));
        QVERIFY(dark(graph.pixelAt(80, 0)));
        setBars(screen, {{"xcoor", 10}, {"Indexn", 20}});
        QTest::mouseClick(errors.findChild<Canvas*>("meanErrorGraph"), Qt::LeftButton, {}, QPoint(40, 40));
        QVERIFY(graph.printedTexts().contains("xc= 2.00") && graph.printedTexts().contains("n= 2.00"));
        QVERIFY(errors.curve().points.back().errorPercent > 0.0);
        setBars(screen, {{"xcoor", 0}});
        screen.Optimize_Click();
        QVERIFY(graph.printedTexts().contains(QStringLiteral("xc= 0.00")));
    }
};

QTEST_MAIN(TestErrorsScreen)
#include "test_errors_screen.moc"
