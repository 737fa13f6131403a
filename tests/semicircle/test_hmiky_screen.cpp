#include <QtTest>

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>

#include <cmath>

#include "analysis/errors_screen.h"
#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"

namespace {

const QColor kBlockFill(205, 235, 255);
const QColor kWhite(Qt::white);

bool near(double a, double b) { return std::fabs(a - b) <= 1e-9; }

bool hasGreek(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x0370 && c.unicode() <= 0x03FF; });
}

// The shared values that a refused answer or a failed write must not touch.
std::vector<double> snapshot() {
    const SharedState& s = module1();
    return {s.incidenceAngle, s.measuredIndex, s.exitRayAngle, s.xc, s.yc, s.rayHeight, s.angleWithY,
            s.semicircleRadius, s.indexN};
}

void setBars(std::initializer_list<std::pair<QScrollBar*, int>> values) {
    for (auto [bar, value] : values) bar->setValue(value);
}

// The bench as the pupil gets it: opened from the main menu, at a size
// where the drawing is big enough to probe pixels.
Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    Hmiky& bench = form<Hmiky>();
    bench.resize(1000, 900);
    QCoreApplication::processEvents();
    return bench;
}

// Runs a menu command with the current directory in a fresh folder.
template <typename Command>
void inFolder(const QString& folder, Command command) {
    const QString previous = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder));
    command();
    QDir::setCurrent(previous);
}

}  // namespace

class TestHmikyScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() {
        module1() = SharedState{};
        module1().pi = 4.0 * std::atan(1.0);
    }

    // Each opening starts the index and the tilt afresh; the block's place
    // and the ray stay where the pupil left them.
    void openingTwiceResetsIndexAndTiltOnly() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        QVERIFY(bench.isVisible() && bench.canvas->width() == bench.canvas->height());
        QVERIFY(module1().semicircleRadius == 100.0 && module1().indexN == 1.5 && module1().angleWithY == 0.0);
        // No direction yet: nothing is traced and the pupil is told what to do.
        QVERIFY(bench.canvas->printedTexts().join('\n').contains("CHOOSE DIRECTION OF SEMICIRCLE"));

        setBars({{bench.xcoor, 10}, {bench.ycoor, -5}, {bench.hvalue, 30}, {bench.angle, 150}, {bench.Indexn, 20},
                 {bench.HScroll1, 80}});
        bench.Command3_Click();
        QVERIFY(!bench.isVisible());
        form<Diathlasimeleti>().Command1_Click();
        const SharedState& s = module1();
        QVERIFY(s.indexN == 1.5 && s.angleWithY == 0.0 && bench.Indexn->value() == 15 && bench.angle->value() == 0);
        QVERIFY(s.xc == 2.0 && s.yc == -1.0 && s.rayHeight == 3.0 && s.semicircleRadius == 80.0);
        QCOMPARE(bench.Label3->text(), QStringLiteral("xc=2.00"));
        QCOMPARE(bench.frameGeometry().height(), QGuiApplication::primaryScreen()->availableGeometry().height() * 9 / 10);
    }

    void controlsSetTheSharedValuesAndMoveTheBlock() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();  // curved face to the left
        bench.xcoor->setValue(125);
        QCOMPARE(module1().xc, 25.0);  // fifths of a unit
        QVERIFY(bench.canvas->printedTexts().contains(QStringLiteral("xc = 25.00")));  // the new value, not the old
        QVERIFY(bench.canvas->pixelAt(-50, 40) == kBlockFill && bench.canvas->pixelAt(50, 40) == kWhite);
        bench.Raref_Click();  // the block turns round
        QCOMPARE(module1().semicircleDirection, std::int16_t{2});
        QVERIFY(bench.canvas->pixelAt(50, 40) == kBlockFill && bench.canvas->pixelAt(-50, 40) == kWhite);

        setBars({{bench.ycoor, -7}, {bench.hvalue, -35}, {bench.angle, -125}, {bench.Indexn, 22},
                 {bench.HScroll1, 57}});
        const SharedState& s = module1();
        QVERIFY(s.yc == -1.4 && s.rayHeight == -3.5 && s.angleWithY == -12.5 && s.indexN == 2.2 &&
                s.semicircleRadius == 57.0);
        // Every bar at both ends: the picture never receives a non-finite number.
        for (QScrollBar* bar : {bench.HScroll1, bench.xcoor, bench.ycoor, bench.angle, bench.hvalue, bench.Indexn})
            setBars({{bar, bar->minimum()}, {bar, bar->maximum()}});
        QCOMPARE(bench.canvas->skippedOperations(), 0);
    }

    void criticalAngleCases() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        const QImage before = bench.canvas->image();
        bench.kritikal_Click();  // no direction chosen: nothing at all
        QVERIFY(scope.dialogs().messages.isEmpty() && bench.canvas->image() == before);
        bench.moredens_Click();
        bench.kritikal_Click();
        bench.Raref_Click();
        bench.kritikal_Click();
        bench.Indexn->setValue(10);  // n = 1.0 still has a critical angle
        bench.kritikal_Click();
        bench.Indexn->setValue(9);
        bench.kritikal_Click();
        QCOMPARE(scope.dialogs().messages, (QStringList{"`Change Direction of Semicircle", "critical=41.81",
                                                        "critical=90.00", "Try with index>1"}));
    }

    // Cancel (an empty answer) is silent; any other refused answer is told in
    // both languages. None of them touches the values or the picture.
    void refusedIncidenceAnswersChangeNothing() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.Raref_Click();
        scope.dialogs().answers = {"25"};
        bench.Command1_Click();  // a ray is on the bench
        const std::vector<double> values = snapshot();
        const QImage picture = bench.canvas->image();
        const QStringList texts = bench.canvas->printedTexts();
        for (const QString answer : {"", "   ", "abc", "1e999", "nan", "1,,5", "120", "-90.5"}) {
            const QStringList& messages = scope.dialogs().messages;
            const qsizetype told = messages.size();
            scope.dialogs().answers = {answer};
            bench.Command1_Click();
            QVERIFY2(snapshot() == values && bench.canvas->image() == picture, qPrintable(answer));
            QCOMPARE(bench.canvas->printedTexts(), texts);
            QCOMPARE(messages.size(), told + (answer.trimmed().isEmpty() ? 0 : 1));
            if (!answer.trimmed().isEmpty())
                QVERIFY(messages.last().contains("incidence angle") && hasGreek(messages.last()));
        }
    }

    void givenIncidenceIsMeasured() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        // Flat face first, centred ray: the bench measures the block's index.
        bench.moredens_Click();
        scope.dialogs().answers = {"30", "45", "20"};
        bench.Command1_Click();
        QVERIFY(scope.dialogs().messages.isEmpty());
        QCOMPARE(module1().incidenceAngle, 30.0);
        QVERIFY(near(module1().measuredIndex, 1.5) && near(module1().exitRayAngle, std::asin(0.5 / 1.5)));
        bench.Indexn->setValue(20);  // tenths
        bench.Command1_Click();
        QVERIFY(near(module1().measuredIndex, 2.0));
        // Curved face first the quotient of the sines is the other way round.
        bench.Raref_Click();
        bench.Indexn->setValue(15);
        bench.Command1_Click();
        QVERIFY(near(module1().measuredIndex, 1.0 / 1.5));
        QCOMPARE(bench.canvas->skippedOperations(), 0);
    }

    void experimentsOnTheBench() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Command4_Click();
        QVERIFY(bench.canvas->printedTexts().contains(QStringLiteral("1.5000")));  // the mean index
        // The comparison with Snell's law agrees for the centred block and
        // parts from it once the block is moved off the ray.
        auto row30 = [&] {
            bench.sygr_Click();
            for (const QString& row : bench.canvas->printedTexts())
                if (row.trimmed().startsWith("30.0")) return row.split(' ', Qt::SkipEmptyParts);
            return QStringList();
        };
        QCOMPARE(row30(), (QStringList{"30.0", "19.47", "19.47", "1.500"}));  // i, measured, Snell, n
        bench.xcoor->setValue(60);
        const QStringList moved = row30();
        QVERIFY(moved.size() == 4 && moved[1] != moved[2]);

        setBars({{bench.HScroll1, 90}, {bench.Indexn, 18}});
        const SharedState& s = module1();
        for (int run = 0; run < 20; ++run) {
            bench.allrandom_Click();
            QVERIFY(std::fabs(s.rayHeight) <= 1.0 && std::fabs(s.xc) <= 1.0 && std::fabs(s.yc) <= 1.0);
            QVERIFY(std::fabs(s.angleWithY) <= 0.1 + 1e-12);  // the tilt bar gets the draw in radians
            // The bars show what is used; the radius and the index stay.
            QVERIFY(s.xc == bench.xcoor->value() / 5.0 && s.rayHeight == bench.hvalue->value() / 10.0);
            QVERIFY(s.semicircleRadius == 90.0 && s.indexN == 1.8);
            const QString prefix = QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= ");
            const QStringList mean = bench.canvas->printedTexts().filter(prefix);
            QVERIFY(mean.size() == 1 && mean[0].mid(prefix.size()).toDouble() > 1.0);
        }

        // Erase zeroes the block's place, its tilt and the ray, keeps the radius and the index, wipes the bench.
        setBars({{bench.xcoor, 20}, {bench.ycoor, 20}, {bench.angle, 20}, {bench.hvalue, 20}});
        bench.Command2_Click();
        for (QScrollBar* bar : {bench.xcoor, bench.ycoor, bench.angle, bench.hvalue}) QCOMPARE(bar->value(), 0);
        QVERIFY(s.xc == 0.0 && s.yc == 0.0 && s.angleWithY == 0.0 && s.rayHeight == 0.0);
        QVERIFY(s.semicircleRadius == 90.0 && s.indexN == 1.8 && bench.HScroll1->value() == 90 &&
                bench.Indexn->value() == 18);
        QVERIFY(bench.canvas->pixelAt(-30, 20) == kWhite && bench.canvas->pixelAt(0, 100) == kWhite);
    }

    void measurementFileInTheCurrentDirectory() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        QTemporaryDir dir;
        inFolder(dir.path(), [&] { bench.fylaxe_Click(); });
        const QString prefix = QStringLiteral(" number of records =");
        QVERIFY(scope.dialogs().messages.size() == 1 && scope.dialogs().messages[0].startsWith(prefix));
        const QStringList lines = scope.dialogs().messages[0].split('\n');
        const int count = lines[0].mid(prefix.size()).toInt();
        QVERIFY(count > 0);
        // The message says where the file went, in full.
        QCOMPARE(lines.value(1), QStringLiteral("Written to  Γράφτηκε στο: ") + QDir(dir.path()).absoluteFilePath("fylaxi"));
        QCOMPARE(QFileInfo(dir.filePath("fylaxi")).size(), qint64(count - 1) * 128 + 48);

        // A folder of that name stands in the way: told, and nothing changes.
        QTemporaryDir blocked;
        QVERIFY(QDir(blocked.path()).mkdir("fylaxi"));
        const std::vector<double> values = snapshot();
        const QImage picture = bench.canvas->image();
        inFolder(blocked.path(), [&] { bench.fylaxe_Click(); });
        QCOMPARE(scope.dialogs().messages.size(), 2);
        QVERIFY(!scope.dialogs().messages[1].contains("number of records") && hasGreek(scope.dialogs().messages[1]));
        QVERIFY(QFileInfo(blocked.filePath("fylaxi")).isDir());
        QVERIFY(snapshot() == values && bench.canvas->image() == picture);
    }

    void mouseResizeBackAndEnd() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Form_MouseDown(-150, 80);
        QVERIFY(bench.markStartX == -150.0f && bench.markStartY == 80.0f);
        bench.Form_MouseUp(-120, 40);
        // The right edge of the red end circle, a thin line wherever the
        // canvas's size puts it.
        bool red = false;
        for (double x = -116.0; x <= -114.0; x += 0.25) {
            const QColor end = bench.canvas->pixelAt(x, 40);
            red = red || (end.red() > 180 && end.green() < 120 && end.blue() < 120);
        }
        QVERIFY(red);
        QCOMPARE(bench.canvas->skippedOperations(), 0);

        bench.Command4_Click();
        const QStringList texts = bench.canvas->printedTexts();
        bench.resize(760, 700);  // the picture is drawn again at the new size
        QCoreApplication::processEvents();
        QCOMPARE(bench.canvas->width(), bench.canvas->height());
        QCOMPARE(bench.canvas->printedTexts(), texts);
        QCOMPARE(bench.canvas->pixelAt(-50, 40), kBlockFill);

        bench.Optimize_Click();
        QVERIFY(form<Errors>().isVisible());
        bench.Command3_Click();
        QVERIFY(!bench.isVisible() && !form<Errors>().isVisible() && form<Diathlasimeleti>().isVisible());
        QVERIFY(scope.endStatuses.empty());
        bench.cmdend->click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }
};

QTEST_MAIN(TestHmikyScreen)
#include "test_hmiky_screen.moc"
