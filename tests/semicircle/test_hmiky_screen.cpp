#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <QtTest>

#include <algorithm>
#include <cmath>

#include "analysis/errors_screen.h"
#include "app/main_menu.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/forms.h"
#include "ui/presentation_size.h"

namespace {

const QColor kBlockFill(205, 235, 255);
const QColor kWhite(Qt::white);

bool near(double a, double b) { return std::fabs(a - b) <= 1e-9; }

BenchState& state() { return sharedState<BenchState>(); }

// The bench as the pupil gets it: opened from the main menu, at a size
// where the drawing is big enough to probe pixels.
Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    Hmiky& bench = form<Hmiky>();
    bench.resize(1000, 900);
    QCoreApplication::processEvents();
    return bench;
}

QScrollBar* bar(const Hmiky& bench, const char* name) { return bench.findChild<QScrollBar*>(name); }

void setBars(const Hmiky& bench, std::initializer_list<std::pair<const char*, int>> values) {
    for (auto [name, value] : values) bar(bench, name)->setValue(value);
}

}  // namespace

class TestHmikyScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // Each opening starts the index and the tilt afresh; the block's place
    // and the ray stay where the pupil left them.
    void openingAgainAndTheBars() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        const BenchState& s = state();
        QVERIFY(bench.isVisible() && bench.drawing().width() == bench.drawing().height());
        // No direction yet: nothing is traced and the pupil is told what to do.
        QVERIFY(bench.drawing().printedTexts().join('\n').contains("CHOOSE DIRECTION OF SEMICIRCLE"));

        setBars(bench,
                {{"xcoor", 10}, {"ycoor", -5}, {"hvalue", 30}, {"angle", 150}, {"Indexn", 20}, {"HScroll1", 80}});
        bench.Command3_Click();
        form<Diathlasimeleti>().Command1_Click();
        QVERIFY(s.indexN() == 1.5 && s.angleWithY() == 0.0 && bar(bench, "Indexn")->value() == 15 &&
                bar(bench, "angle")->value() == 0);
        QVERIFY(s.xc() == 2.0 && s.yc() == -1.0 && s.rayHeight() == 3.0 && s.semicircleRadius() == 80.0);
        QCOMPARE(bench.findChild<QLabel*>("Label3")->text(), QStringLiteral("xc=2.00"));

        // The bars write the shared values (in their own units) and the block
        // moves; values set from elsewhere move the bars and the displays, and
        // only a real change is announced.
        const Canvas& canvas = bench.drawing();
        bench.moredens_Click();  // curved face to the left
        setBars(bench, {{"HScroll1", 100}, {"xcoor", 125}});
        QCOMPARE(state().xc(), 25.0);                                           // fifths of a unit
        QVERIFY(canvas.printedTexts().contains(QStringLiteral("xc = 25.00")));  // the new value, not the old
        QVERIFY(canvas.pixelAt(-50, 40) == kBlockFill && canvas.pixelAt(50, 40) == kWhite);
        bench.Raref_Click();  // the block turns round
        QVERIFY(state().semicircleDirection() == 2 && bench.findChild<QAction*>("Raref")->isChecked());
        QVERIFY(canvas.pixelAt(50, 40) == kBlockFill && canvas.pixelAt(-50, 40) == kWhite);

        setBars(bench, {{"ycoor", -7}, {"hvalue", -35}, {"angle", -125}, {"Indexn", 22}, {"HScroll1", 57}});
        QVERIFY(s.yc() == -1.4 && s.rayHeight() == -3.5 && s.angleWithY() == -12.5 && s.indexN() == 2.2 &&
                s.semicircleRadius() == 57.0);

        QSignalSpy changes(&state(), &BenchState::changed);
        state().setXc(-3.0);
        state().setIndexN(1.8);
        QVERIFY(bar(bench, "xcoor")->value() == -15 && bar(bench, "Indexn")->value() == 18);
        QVERIFY(canvas.printedTexts().contains(QStringLiteral(" n= 1.80")));  // the bar's handler redrew
        QCOMPARE(bench.findChild<QLabel*>("Indexnt")->text(), QStringLiteral("Δείκτης  n = 1.80"));
        const qsizetype announced = changes.size();
        state().setXc(-3.0);
        bar(bench, "Indexn")->setValue(18);
        QCOMPARE(changes.size(), announced);

        // Every bar at both ends: the picture never receives a non-finite number.
        for (const char* name : {"HScroll1", "xcoor", "ycoor", "angle", "hvalue", "Indexn"})
            setBars(bench, {{name, bar(bench, name)->minimum()}, {name, bar(bench, name)->maximum()}});
        QCOMPARE(canvas.skippedOperations(), 0);
    }

    // A typed incidence angle is measured; Cancel (an empty answer) is
    // silent, any other refused answer is told in both languages, and none
    // of them touches the values or the picture.
    void givenIncidenceAngles() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        // Flat face first, centred ray: the bench measures the block's index.
        bench.moredens_Click();
        scope.dialogs().answers = {"30", "45", "20"};
        bench.Command1_Click();
        QVERIFY(scope.dialogs().messages.isEmpty() && state().incidenceAngle() == 30.0);
        QVERIFY(near(state().measuredIndex(), 1.5) && near(state().exitRayAngle(), std::asin(0.5 / 1.5)));
        bar(bench, "Indexn")->setValue(20);  // tenths
        bench.Command1_Click();
        QVERIFY(near(state().measuredIndex(), 2.0));
        // Curved face first the quotient of the sines is the other way round.
        bench.Raref_Click();
        bar(bench, "Indexn")->setValue(15);
        bench.Command1_Click();
        QVERIFY(near(state().measuredIndex(), 1.0 / 1.5));
        QCOMPARE(bench.drawing().skippedOperations(), 0);

        const double measured = state().measuredIndex();
        const QImage picture = bench.drawing().image();
        const QStringList& messages = scope.dialogs().messages;
        for (const QString answer : {"", "   ", "abc", "1e999", "nan", "120", "-90.5"}) {
            const qsizetype told = messages.size();
            scope.dialogs().answers = {answer};
            bench.Command1_Click();
            QVERIFY2(state().incidenceAngle() == 20.0 && state().measuredIndex() == measured, qPrintable(answer));
            QVERIFY(bench.drawing().image() == picture);
            QCOMPARE(messages.size(), told + (answer.trimmed().isEmpty() ? 0 : 1));
            QVERIFY(answer.trimmed().isEmpty() ||
                    (messages.last().contains("incidence angle") && bilingual(messages.last())));
        }
        const Canvas& canvas = bench.drawing();
        bench.moredens_Click();  // a mark drawn with the mouse
        bench.Form_MouseDown(-150, 80);
        bench.Form_MouseUp(-120, 40);
        // The right edge of the red end circle, a thin line wherever the
        // canvas's size puts it.
        bool red = false;
        for (double x = -116.0; x <= -114.0; x += 0.25) {
            const QColor end = canvas.pixelAt(x, 40);
            red = red || (end.red() > 180 && end.green() < 120 && end.blue() < 120);
        }
        QVERIFY(red);
        QCOMPARE(canvas.skippedOperations(), 0);

        bench.findChild<QAction*>("readouts")->trigger();  // the angles off: the block's fill is seen
        bench.Command4_Click();
        const QStringList texts = canvas.printedTexts();
        bench.resize(760, 700);  // the picture is drawn again at the new size
        QCoreApplication::processEvents();
        QCOMPARE(canvas.width(), canvas.height());
        QCOMPARE(canvas.printedTexts(), texts);
        QCOMPARE(canvas.pixelAt(-50, 40), kBlockFill);

        bench.findChild<QAction*>("readouts")->trigger();
        bench.Optimize_Click();
        QVERIFY(form<Errors>().isVisible());
        bench.Command3_Click();
        QVERIFY(!bench.isVisible() && !form<Errors>().isVisible() && form<Diathlasimeleti>().isVisible());
        QVERIFY(scope.endStatuses.empty());
        bench.findChild<QPushButton*>("cmdend")->click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    // The angles beside the rays are the trace's own, one decimal, at the
    // flat face (and wherever the light is turned back), and no text of the
    // picture covers another, at the bench's size at 1366×768 and at the
    // smallest. The menu takes them away and brings them back.
    void anglesBesideTheRays() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.resize(1300, 640);  // the window at 1366×768
        QCoreApplication::processEvents();
        const Canvas& canvas = bench.drawing();
        auto readouts = [&canvas] {
            return canvas.printedTexts().filter(QRegularExpression("^(i|r|i') = |TOTAL REFLECTION"));
        };
        auto apart = [&canvas] {
            const auto texts = canvas.drawnTexts();
            for (std::size_t a = 0; a < texts.size(); ++a)
                for (std::size_t b = a + 1; b < texts.size(); ++b)
                    if (texts[a].box.adjusted(1, 1, -1, -1).intersects(texts[b].box.adjusted(1, 1, -1, -1)))
                        return false;
            return !texts.empty();
        };
        struct SetUp {
            int direction, xcoor, hvalue, angle;
            const char* incidence;
        };
        // Both directions, tilted, off-centre, past the critical angle.
        for (const SetUp& u : {SetUp{1, 0, 0, 0, "30"}, SetUp{2, 0, 0, 0, "30"}, SetUp{1, 0, 0, 150, "40"},
                               SetUp{1, 50, 150, 0, "50"}, SetUp{2, -20, 40, -100, "25"}, SetUp{2, 0, 0, 0, "60"}}) {
            u.direction == 1 ? bench.moredens_Click() : bench.Raref_Click();
            setBars(bench, {{"xcoor", u.xcoor}, {"hvalue", u.hvalue}, {"angle", u.angle}});
            scope.dialogs().answers = {u.incidence};
            bench.Command1_Click();
            const RayTrace trace = traceRay(state().block(), state().rayHeight(), state().incidenceAngle());
            QStringList expected;
            for (const Readout& r : readoutsOf(trace)) expected += r.lines;
            QVERIFY(!expected.isEmpty());
            QCOMPARE(readouts(), expected);
            const FaceHit& flat =
                *std::find_if(trace.hits.begin(), trace.hits.end(), [](auto& h) { return h.flatFace; });
            QCOMPARE(expected[0], "i = " + fmt(flat.incidenceDegrees, "0.0") + "°");
            QVERIFY(canvas.summary().contains(expected[0]) && apart());
        }
        // Past the critical angle: i = 60°, turned back at the same angle.
        QCOMPARE(readouts(), (QStringList{"i = 60.0°", "i' = 60.0°", "TOTAL REFLECTION  ΟΛΙΚΗ ΑΝΑΚΛΑΣΗ"}));
        bench.moredens_Click();
        setBars(bench, {{"xcoor", 0}, {"hvalue", 0}, {"angle", 0}});
        scope.dialogs().answers = {"30"};
        bench.Command1_Click();
        QCOMPARE(readouts(), (QStringList{"i = 30.0°", "r = 19.5°"}));                 // sin r = sin 30° / 1.5
        QVERIFY(QString::fromUtf8(figureSvg(canvas, "bench")).contains("r = 19.5°"));  // the figure as a file

        // Nine rays at once, at 1366×768, in the smallest window, and at
        // 1366×768 shown at 200 %, where every box is placed as large as shown
        // (and one with no room left is not written).
        for (const auto& [size, percent] :
             {std::pair{QSize(1300, 640), 100}, std::pair{QSize(300, 300), 100}, std::pair{QSize(1300, 640), 200}}) {
            setPresentationSize(percent);
            bench.resize(size);
            QCoreApplication::processEvents();
            bench.Command4_Click();
            QVERIFY(apart());
            if (size.width() > 1000 && percent == 100) QCOMPARE(readouts().size(), 18);  // all nine fit
        }
        // Saved or printed, the bench is as at 100 %, wherever the larger
        // screen put its readouts.
        auto& held = *named<Canvas>(bench, "bench");
        held.setFixedSize(held.size());
        const QImage shownAt200 = figureImage(canvas, 1.0);
        setPresentationSize(100);
        QCoreApplication::processEvents();
        QCOMPARE(figureImage(canvas, 1.0), shownAt200);
        held.setMinimumSize(0, 0);
        held.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        setPresentationSize(100);
        bench.findChild<QAction*>("readouts")->trigger();
        QVERIFY(readouts().isEmpty() && !canvas.summary().contains("i = "));
        QVERIFY(!Hmiky().findChild<QAction*>("readouts")->isChecked());  // kept for the next start
        bench.findChild<QAction*>("readouts")->trigger();
        QCOMPARE(readouts().size() > 0, true);

        // The ray's height is written as h= on the drawing.
        setBars(bench, {{"hvalue", 30}});
        QVERIFY(canvas.printedTexts().contains(QStringLiteral("h=3.00")));
    }

    // The protractor lies on the flat face's centre, 0° along the normal,
    // a mark every degree; the keys, the mouse and the wheel move and turn it.
    void protractor() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.resize(1300, 640);
        QCoreApplication::processEvents();
        bench.moredens_Click();
        setBars(bench, {{"xcoor", 50}, {"angle", 200}});  // centre (10, 0), tilted 20°
        bench.findChild<QAction*>("protractor")->trigger();
        const Protractor p = *bench.protractorShown();
        QVERIFY(p.centre.x == 10.0 && p.centre.y == 0.0 && std::fabs(p.zeroDegrees - 20.0) < 1e-9);
        Canvas& canvas = *bench.findChild<Canvas*>("bench");
        const QPointF centre = canvas.toLogical(p.centre.x, p.centre.y);
        std::vector<int> marks;
        for (const auto& line : canvas.drawnLines()) {
            if (line.colour != QColor(120, 60, 0)) continue;
            const QLineF l(line.from, line.to);
            const double far = std::max(QLineF(centre, l.p1()).length(), QLineF(centre, l.p2()).length());
            const double near = std::min(QLineF(centre, l.p1()).length(), QLineF(centre, l.p2()).length());
            if (near < 0.8 * far || l.length() > 40.0) continue;  // the edge and the 0° line
            const QPointF tip = QLineF(centre, l.p1()).length() > QLineF(centre, l.p2()).length() ? l.p1() : l.p2();
            // Screen y grows downwards.
            const double bearing = std::atan2(centre.y() - tip.y(), tip.x() - centre.x()) * 180.0 / M_PI;
            const double fromZero = std::remainder(bearing - 20.0, 360.0);
            QVERIFY(std::fabs(fromZero - std::round(fromZero)) < 0.05);
            marks.push_back(static_cast<int>(std::lround(fromZero)));
        }
        std::sort(marks.begin(), marks.end());
        QVERIFY(marks.size() == 181 && marks.front() == -90 && marks.back() == 90);
        // Half a degree is readable at 1366×768: the degree marks stand
        // well over a pixel apart at the rim.
        const Mark m0 = markAt(p, 0), m1 = markAt(p, 1);
        QVERIFY(QLineF(canvas.toLogical(m0.outer.x, m0.outer.y), canvas.toLogical(m1.outer.x, m1.outer.y)).length() >
                3.0);
        QVERIFY(canvas.printedTexts().contains("80") && canvas.summary().contains("Protractor"));

        canvas.setFocus();
        QTest::keyClick(&canvas, Qt::Key_Right);
        QTest::keyClick(&canvas, Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(&canvas, Qt::Key_PageDown);
        QTest::keyClick(&canvas, Qt::Key_PageDown);
        QVERIFY(bench.protractorShown()->centre.x == 11.0 &&
                std::fabs(bench.protractorShown()->zeroDegrees - 19.5) < 1e-9);
        // Dragged by its body it moves; by its rim it turns.
        const QPoint inside = canvas.toLogical(40, 0).toPoint();
        QTest::mousePress(&canvas, Qt::LeftButton, {}, inside);
        QTest::mouseMove(&canvas, inside + QPoint(20, 0));
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, inside + QPoint(20, 0));
        QVERIFY(bench.protractorShown()->centre.x > 11.0);
        const Protractor moved = *bench.protractorShown();
        const QPointF rim = canvas.toLogical(moved.centre.x + moved.radius * std::cos(moved.zeroDegrees * M_PI / 180),
                                             moved.centre.y + moved.radius * std::sin(moved.zeroDegrees * M_PI / 180));
        QTest::mousePress(&canvas, Qt::LeftButton, {}, rim.toPoint());
        QTest::mouseMove(&canvas, rim.toPoint() + QPoint(0, -30));
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, rim.toPoint() + QPoint(0, -30));
        QVERIFY(bench.protractorShown()->zeroDegrees > moved.zeroDegrees + 1.0 &&
                bench.protractorShown()->centre.x == moved.centre.x);
        const double turned = bench.protractorShown()->zeroDegrees;
        QWheelEvent wheel(QPointF(inside), canvas.mapToGlobal(QPointF(inside)), {}, {0, 240}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&canvas, &wheel);  // two notches, half a degree each
        QVERIFY(std::fabs(bench.protractorShown()->zeroDegrees - turned - 1.0) < 1e-9);
        bench.findChild<QAction*>("protractor")->trigger();
        QVERIFY(!bench.protractorShown() && !canvas.printedTexts().contains("80"));
    }

    void experimentsOnTheBench() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        const Canvas& canvas = bench.drawing();
        const QImage before = canvas.image();
        bench.kritikal_Click();  // no direction chosen: nothing at all
        QVERIFY(scope.dialogs().messages.isEmpty() && canvas.image() == before);
        bench.moredens_Click();
        bench.kritikal_Click();
        bench.Raref_Click();
        bench.kritikal_Click();
        setBars(bench, {{"Indexn", 10}});  // n = 1.0 still has a critical angle
        bench.kritikal_Click();
        setBars(bench, {{"Indexn", 9}});
        bench.kritikal_Click();
        QCOMPARE(scope.dialogs().messages, (QStringList{"`Change Direction of Semicircle", "critical=41.81",
                                                        "critical=90.00", "Try with index>1"}));

        setBars(bench, {{"Indexn", 15}});
        bench.moredens_Click();

        // The measurement file goes into the current folder; the message says where, in full.
        QTemporaryDir dir;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        bench.fylaxe_Click();
        QDir::setCurrent(previous);
        const QString written = QStringLiteral(" number of records =81\nWritten to  Γράφτηκε στο: ");
        QCOMPARE(scope.dialogs().messages.last(), written + QDir(dir.path()).absoluteFilePath("fylaxi"));
        bench.Command4_Click();
        QVERIFY(canvas.printedTexts().contains(QStringLiteral("1.5000")));  // the mean index
        // The comparison with Snell's law agrees for the centred block and
        // parts from it once the block is moved off the ray.
        auto row30 = [&] {
            bench.sygr_Click();
            for (const QString& row : canvas.printedTexts())
                if (row.trimmed().startsWith("30.0")) return row.split(' ', Qt::SkipEmptyParts);
            return QStringList();
        };
        QCOMPARE(row30(), (QStringList{"30.0", "19.47", "19.47", "1.500"}));  // i, measured, Snell, n
        bar(bench, "xcoor")->setValue(60);
        const QStringList moved = row30();
        QVERIFY(moved.size() == 4 && moved[1] != moved[2]);

        // All random: a small set-up near the centre, the tilt bar given the draw in radians; the radius
        // and the index stay.
        setBars(bench, {{"HScroll1", 90}, {"Indexn", 18}});
        const BenchState& s = state();
        bench.allrandom_Click();
        QVERIFY(std::fabs(s.rayHeight()) <= 1.0 && std::fabs(s.xc()) <= 1.0 && std::fabs(s.yc()) <= 1.0);
        QVERIFY(std::fabs(s.angleWithY()) <= 0.1 + 1e-12 && s.semicircleRadius() == 90.0 && s.indexN() == 1.8);
        const QString prefix = QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= ");
        const QStringList mean = canvas.printedTexts().filter(prefix);
        QVERIFY(mean.size() == 1 && mean[0].mid(prefix.size()).toDouble() > 1.0);

        // Erase zeroes the block's place, its tilt and the ray, keeps the radius and the index, wipes the bench.
        setBars(bench, {{"xcoor", 20}, {"ycoor", 20}, {"angle", 20}, {"hvalue", 20}});
        bench.Command2_Click();
        for (const char* name : {"xcoor", "ycoor", "angle", "hvalue"}) QCOMPARE(bar(bench, name)->value(), 0);
        QVERIFY(s.xc() == 0.0 && s.yc() == 0.0 && s.angleWithY() == 0.0 && s.rayHeight() == 0.0);
        QVERIFY(s.semicircleRadius() == 90.0 && s.indexN() == 1.8 && bar(bench, "HScroll1")->value() == 90);
        QVERIFY(canvas.pixelAt(-30, 20) == kWhite && canvas.pixelAt(0, 100) == kWhite);
    }
};

QTEST_MAIN(TestHmikyScreen)
#include "test_hmiky_screen.moc"
