#include <QtTest>

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>

#include <cmath>

#include "analysis/errors_screen.h"
#include "app/forms.h"
#include "app/main_menu.h"
#include "app/shared_state.h"
#include "canvas/fonts.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"

namespace {

const QColor kBlockFill(205, 235, 255);

bool near(double a, double b, double tolerance = 1e-9) { return std::fabs(a - b) <= tolerance; }

bool hasGreek(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x0370 && c.unicode() <= 0x03FF; });
}

// The parts of the shared state that a refused answer must not touch.
struct Snapshot {
    double incidence, measured, exitAngle, xc, yc, h, tilt, radius, index;
    static Snapshot take() {
        const SharedState& s = module1();
        return {s.incidenceAngle, s.measuredIndex, s.exitRayAngle, s.xc, s.yc, s.rayHeight, s.angleWithY,
                s.semicircleRadius, s.indexN};
    }
    bool operator==(const Snapshot&) const = default;
};

// The bench as the pupil gets it: opened from the main menu, at a size
// where the drawing is big enough to probe pixels.
Hmiky& openBench() {
    form<Diathlasimeleti>().Command1_Click();
    Hmiky& bench = form<Hmiky>();
    bench.resize(1000, 900);
    QCoreApplication::processEvents();
    return bench;
}

bool bluish(const QColor& c) { return c.blue() > 180 && c.red() < 100; }
bool reddish(const QColor& c) { return c.red() > 180 && c.green() < 120 && c.blue() < 120; }

}  // namespace

class TestHmikyScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }
    void init() {
        module1() = SharedState{};
        module1().pi = 4.0 * std::atan(1.0);
    }

    void openingFromTheMainMenu() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        QVERIFY(bench.isVisible());
        QCOMPARE(bench.windowTitle(), QStringLiteral("SIMULATION EΞOMOIΩΣH TOY ΠEIΠAMATOΣ"));
        QCOMPARE(module1().semicircleRadius, 100.0);
        QCOMPARE(module1().indexN, 1.5);
        QCOMPARE(module1().angleWithY, 0.0);
        QCOMPARE(bench.Indexnt->text(), QStringLiteral("Δείκτης  n = 1.50"));
        QCOMPARE(bench.gon->text(), QStringLiteral("Angle with Y Γωνία με άξοναY=0.00"));
        QCOMPARE(bench.Label3->text(), QStringLiteral("xc=0.00"));
        QCOMPARE(bench.Label4->text(), QStringLiteral("h(Ray's y(0)=0.00"));
        QCOMPARE(bench.canvas->scaleLeft(), -200.0);
        QCOMPARE(bench.canvas->scaleTop(), 200.0);
        QCOMPARE(bench.canvas->width(), bench.canvas->height());
        // No direction yet: nothing is traced and the pupil is told what to do.
        QVERIFY(bench.canvas->printedTexts().join('\n').contains("CHOOSE DIRECTION OF SEMICIRCLE"));

        // The pupil moves everything, leaves and opens again: the index and
        // the tilt start afresh, the block's place and the ray do not.
        bench.xcoor->setValue(10);
        bench.ycoor->setValue(-5);
        bench.hvalue->setValue(30);
        bench.angle->setValue(150);
        bench.Indexn->setValue(20);
        bench.HScroll1->setValue(80);
        QCOMPARE(module1().angleWithY, 15.0);
        QCOMPARE(module1().indexN, 2.0);
        bench.Command3_Click();
        QVERIFY(!bench.isVisible());
        form<Diathlasimeleti>().Command1_Click();
        QCOMPARE(module1().indexN, 1.5);
        QCOMPARE(module1().angleWithY, 0.0);
        QCOMPARE(bench.Indexn->value(), 15);
        QCOMPARE(bench.angle->value(), 0);
        QCOMPARE(module1().xc, 2.0);
        QCOMPARE(module1().yc, -1.0);
        QCOMPARE(module1().rayHeight, 3.0);
        QCOMPARE(module1().semicircleRadius, 80.0);
        QCOMPARE(bench.Label3->text(), QStringLiteral("xc=2.00"));

        // The window is as tall as most of the screen; the bench is square.
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(bench.height(), screen.height() * 9 / 10);
    }

    void controlsMoveTheBlockAndWriteTheirValues() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();  // curved face to the left
        bench.xcoor->setValue(125);
        QCOMPARE(module1().xc, 25.0);
        QCOMPARE(bench.Label3->text(), QStringLiteral("xc=25.00"));
        QVERIFY(bench.canvas->printedTexts().contains(QStringLiteral("xc = 25.00")));
        // The block follows its centre: filled left of x = 25, open right of it.
        QCOMPARE(bench.canvas->pixelAt(-50, 40), kBlockFill);
        QCOMPARE(bench.canvas->pixelAt(50, 40), QColor(Qt::white));

        bench.Raref_Click();  // the block turns round
        QVERIFY(bench.Raref->isChecked() && !bench.moredens->isChecked());
        QCOMPARE(module1().semicircleDirection, std::int16_t{2});
        QCOMPARE(bench.canvas->pixelAt(50, 40), kBlockFill);
        QCOMPARE(bench.canvas->pixelAt(-50, 40), QColor(Qt::white));

        bench.ycoor->setValue(-7);
        QCOMPARE(module1().yc, -1.4);
        QCOMPARE(bench.Label2->text(), QStringLiteral("yc=-1.40"));
        bench.hvalue->setValue(-35);
        QCOMPARE(module1().rayHeight, -3.5);
        QCOMPARE(bench.Label4->text(), QStringLiteral("h(Ray's y(0)=-3.50"));
        bench.angle->setValue(-125);
        QCOMPARE(module1().angleWithY, -12.5);
        QCOMPARE(bench.gon->text(), QStringLiteral("Angle with Y Γωνία με άξοναY=-12.50"));
        QVERIFY(bench.canvas->printedTexts().contains(QStringLiteral("ANGLE  Γωνία= -12.50")));
        bench.Indexn->setValue(22);
        QCOMPARE(module1().indexN, 2.2);
        QCOMPARE(bench.Indexnt->text(), QStringLiteral("Δείκτης  n = 2.20"));
        bench.HScroll1->setValue(57);
        QCOMPARE(module1().semicircleRadius, 57.0);
        QCOMPARE(bench.aktis->text(), QStringLiteral("Semicircle's Radius= 57"));

        // Every bar at both ends: the picture never receives a non-finite number.
        for (QScrollBar* bar : {bench.HScroll1, bench.xcoor, bench.ycoor, bench.angle, bench.hvalue, bench.Indexn}) {
            bar->setValue(bar->minimum());
            bar->setValue(bar->maximum());
        }
        QCOMPARE(bench.canvas->skippedOperations(), 0);
    }

    void criticalAngleCases() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        ScriptedDialogs& dialogs = scope.dialogs();

        // No direction chosen: nothing at all.
        const QImage before = bench.canvas->image();
        bench.kritikal_Click();
        QVERIFY(dialogs.messages.isEmpty());
        QVERIFY(bench.canvas->image() == before);

        bench.moredens_Click();
        bench.kritikal_Click();
        QCOMPARE(dialogs.messages, QStringList{"`Change Direction of Semicircle"});

        bench.Raref_Click();
        bench.kritikal_Click();
        QCOMPARE(dialogs.messages.last(), QStringLiteral("critical=41.81"));
        QCOMPARE(dialogs.messageTitles.last(), QStringLiteral("Critical Angle"));

        bench.Indexn->setValue(10);  // n = 1.0 still passes
        bench.kritikal_Click();
        QCOMPARE(dialogs.messages.last(), QStringLiteral("critical=90.00"));

        bench.Indexn->setValue(9);
        const qsizetype count = dialogs.messages.size();
        bench.kritikal_Click();
        QCOMPARE(dialogs.messages.size(), count + 1);
        QCOMPARE(dialogs.messages.last(), QStringLiteral("Try with index>1"));
    }

    void eraseKeepsRadiusAndIndex() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.HScroll1->setValue(70);
        bench.Indexn->setValue(18);
        bench.xcoor->setValue(20);
        bench.ycoor->setValue(15);
        bench.angle->setValue(300);
        bench.hvalue->setValue(40);
        bench.Command2_Click();
        for (QScrollBar* bar : {bench.xcoor, bench.ycoor, bench.angle, bench.hvalue}) QCOMPARE(bar->value(), 0);
        const SharedState& s = module1();
        QCOMPARE(s.xc, 0.0);
        QCOMPARE(s.yc, 0.0);
        QCOMPARE(s.angleWithY, 0.0);
        QCOMPARE(s.rayHeight, 0.0);
        QCOMPARE(s.semicircleRadius, 70.0);
        QCOMPARE(s.indexN, 1.8);
        QCOMPARE(bench.HScroll1->value(), 70);
        QCOMPARE(bench.Indexn->value(), 18);
        QCOMPARE(bench.Label3->text(), QStringLiteral("xc=0.00"));
        // The bench is wiped clean.
        QCOMPARE(bench.canvas->pixelAt(-30, 20), QColor(Qt::white));
        QCOMPARE(bench.canvas->pixelAt(0, 100), QColor(Qt::white));
    }

    void refusedIncidenceAnswersChangeNothing_data() {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("told");
        QTest::newRow("empty") << "" << false;
        QTest::newRow("blanks") << "   " << false;
        QTest::newRow("letters") << "abc" << true;
        QTest::newRow("overflow") << "1e999" << true;
        QTest::newRow("nan") << "nan" << true;
        QTest::newRow("decimal comma") << "1,5" << true;
        QTest::newRow("beyond 90") << "120" << true;
        QTest::newRow("below -90") << "-90.5" << true;
    }
    void refusedIncidenceAnswersChangeNothing() {
        QFETCH(QString, answer);
        QFETCH(bool, told);
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.Raref_Click();
        scope.dialogs().answers = {"25"};
        bench.Command1_Click();  // a ray is on the bench
        scope.dialogs().messages.clear();

        const Snapshot values = Snapshot::take();
        const QImage picture = bench.canvas->image();
        const QStringList texts = bench.canvas->printedTexts();
        scope.dialogs().answers = {answer};
        bench.Command1_Click();
        QCOMPARE(scope.dialogs().prompts.last(),
                 QStringLiteral("WHAT IS THE INCIDENCE ANGLE Πόση είναι η γωνία πρόσπτωσης ως προς το ημικύκλιο?"));
        QVERIFY(Snapshot::take() == values);
        QVERIFY(bench.canvas->image() == picture);
        QCOMPARE(bench.canvas->printedTexts(), texts);
        QCOMPARE(scope.dialogs().messages.size(), told ? 1 : 0);
        if (told) {
            const QString message = scope.dialogs().messages.first();
            QVERIFY(message.contains("incidence angle") && hasGreek(message));
        }
    }

    void givenIncidenceIsMeasured() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        const double pi = module1().pi;

        // Flat face first, centred ray: the bench measures the block's index.
        bench.moredens_Click();
        scope.dialogs().answers = {"30"};
        bench.Command1_Click();
        QCOMPARE(scope.dialogs().messageTitles.size(), 0);
        QCOMPARE(module1().incidenceAngle, 30.0);
        QVERIFY(near(module1().measuredIndex, 1.5));
        QVERIFY(near(module1().exitRayAngle, std::asin(0.5 / 1.5)));
        QVERIFY(bench.canvas->printedTexts().contains(QStringLiteral("angle φ=30.00")));
        // The incident ray is blue, from the source on the circle towards (0, 0).
        QVERIFY(bluish(bench.canvas->pixelAt(75 * std::cos(pi / 6), 75 * std::sin(pi / 6))));

        // The index bar is in tenths.
        bench.Indexn->setValue(20);
        scope.dialogs().answers = {"45"};
        bench.Command1_Click();
        QVERIFY(near(module1().measuredIndex, 2.0));

        // Curved face first: the light leaves through the flat face, and the
        // quotient of the sines is the other way round.
        bench.Raref_Click();
        bench.Indexn->setValue(15);
        scope.dialogs().answers = {"20"};
        bench.Command1_Click();
        QVERIFY(near(module1().measuredIndex, 1.0 / 1.5));
        QCOMPARE(bench.canvas->skippedOperations(), 0);
    }

    void raysForAllIncidences() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Command4_Click();
        const QStringList texts = bench.canvas->printedTexts();
        QVERIFY(texts.contains(QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη διάθλασης")));
        QVERIFY(texts.contains(QStringLiteral("1.5000")));
        QVERIFY(texts.contains(QStringLiteral("h= 0.00")));
        QVERIFY(texts.contains(QStringLiteral("xc = 0.00")));
    }

    void allRandomStaysInRange() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.HScroll1->setValue(90);
        for (int run = 0; run < 20; ++run) {
            bench.allrandom_Click();
            const SharedState& s = module1();
            QVERIFY(s.rayHeight >= -1.0 && s.rayHeight <= 1.0);
            QVERIFY(s.xc >= -1.0 && s.xc <= 1.0);
            QVERIFY(s.yc >= -1.0 && s.yc <= 1.0);
            QVERIFY(std::fabs(s.angleWithY) <= 0.1 + 1e-12);
            // The bars show what is used.
            QCOMPARE(s.xc, bench.xcoor->value() / 5.0);
            QCOMPARE(s.rayHeight, bench.hvalue->value() / 10.0);
            QCOMPARE(s.semicircleRadius, 90.0);
            QCOMPARE(s.indexN, 1.5);
            const QStringList texts = bench.canvas->printedTexts();
            const auto mean = std::find_if(texts.begin(), texts.end(), [](const QString& t) {
                return t.startsWith(QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= "));
            });
            QVERIFY(mean != texts.end());
            bool ok = false;
            const double value = mean->mid(mean->indexOf("= ") + 2).toDouble(&ok);
            QVERIFY2(ok && value > 0.0, qPrintable(*mean));
        }
    }

    void comparisonTableAgreesForACentredBlock() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.sygr_Click();
        const QStringList rows = bench.canvas->printedTexts();
        const auto row30 = std::find_if(rows.begin(), rows.end(),
                                        [](const QString& r) { return r.trimmed().startsWith("30.0"); });
        QVERIFY(row30 != rows.end());
        const QStringList cells = row30->split(' ', Qt::SkipEmptyParts);
        QCOMPARE(cells.size(), 4);
        QCOMPARE(cells[1], QStringLiteral("19.47"));  // measured
        QCOMPARE(cells[2], QStringLiteral("19.47"));  // Snell's law
        QCOMPARE(cells[3], QStringLiteral("1.500"));

        // Moved off the ray, the measurement parts from the law.
        bench.xcoor->setValue(60);
        bench.sygr_Click();
        const QStringList moved = bench.canvas->printedTexts();
        const auto shifted = std::find_if(moved.begin(), moved.end(),
                                          [](const QString& r) { return r.trimmed().startsWith("30.0"); });
        QVERIFY(shifted != moved.end());
        const QStringList parts = shifted->split(' ', Qt::SkipEmptyParts);
        QVERIFY(parts[1] != parts[2]);
    }

    void measurementFileInTheCurrentDirectory() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        bench.fylaxe_Click();
        QDir::setCurrent(previous);

        QCOMPARE(scope.dialogs().messages.size(), 1);
        const QString message = scope.dialogs().messages.first();
        QVERIFY(message.startsWith(QStringLiteral(" number of records =")));
        bool ok = false;
        const int count = message.mid(QStringLiteral(" number of records =").size()).toInt(&ok);
        QVERIFY(ok && count > 0);
        const QFileInfo file(dir.filePath(QStringLiteral("fylaxi")));
        QVERIFY(file.exists());
        QCOMPARE(file.size(), qint64(count - 1) * 128 + 48);
    }

    void unwritableMeasurementFileIsReported() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("fylaxi")));  // a folder stands in the way
        const Snapshot values = Snapshot::take();
        const QImage picture = bench.canvas->image();
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        bench.fylaxe_Click();
        QDir::setCurrent(previous);
        QCOMPARE(scope.dialogs().messages.size(), 1);
        QVERIFY(!scope.dialogs().messages.first().contains(QStringLiteral("number of records")));
        QVERIFY(hasGreek(scope.dialogs().messages.first()));
        QVERIFY(QFileInfo(dir.filePath(QStringLiteral("fylaxi"))).isDir());
        QVERIFY(Snapshot::take() == values);
        QVERIFY(bench.canvas->image() == picture);
    }

    void mouseMarksStartAndEnd() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Form_MouseDown(-150, 80);
        QCOMPARE(bench.markStartX, -150.0f);
        QCOMPARE(bench.markStartY, 80.0f);
        bench.Form_MouseUp(-120, 40);
        QVERIFY(reddish(bench.canvas->pixelAt(-115, 40)));   // right edge of the red circle
        QVERIFY(!reddish(bench.canvas->pixelAt(-145, 80)));  // the start circle is not red
        QCOMPARE(bench.canvas->skippedOperations(), 0);
    }

    void resizingKeepsThePicture() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.moredens_Click();
        bench.Command4_Click();
        const QStringList texts = bench.canvas->printedTexts();
        bench.resize(760, 700);
        QCoreApplication::processEvents();
        QCOMPARE(bench.canvas->width(), bench.canvas->height());
        QCOMPARE(bench.canvas->printedTexts(), texts);
        QCOMPARE(bench.canvas->pixelAt(-50, 40), kBlockFill);
    }

    void backAndEnd() {
        ScreenTestScope scope;
        Hmiky& bench = openBench();
        bench.Optimize_Click();
        QVERIFY(form<Errors>().isVisible());
        bench.Command3_Click();
        QVERIFY(!bench.isVisible());
        QVERIFY(!form<Errors>().isVisible());
        QVERIFY(form<Diathlasimeleti>().isVisible());
        QVERIFY(scope.endStatuses.empty());
        bench.cmdend->click();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }
};

QTEST_MAIN(TestHmikyScreen)
#include "test_hmiky_screen.moc"
