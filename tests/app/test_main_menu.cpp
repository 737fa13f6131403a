#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include "app/main_menu.h"
#include "app/module1.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "models/interpretation_state.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/presentation_size.h"
#include "ui/window_placement.h"

namespace {
// The main menu's button of that name ("Command1" … "Command5").
QPushButton* button(const Diathlasimeleti& menu, const char* name) {
    return menu.findChild<QPushButton*>(QLatin1String(name));
}

// A screen with some state of its own, to see that hiding keeps it.
class NoteScreen : public QWidget {
public:
    static int constructed;
    NoteScreen() : edit(new QLineEdit(this)) { ++constructed; }
    QLineEdit* edit;
};
int NoteScreen::constructed = 0;
}  // namespace

class TestMainMenu : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // Start-up resets the shared values and lays the menu out on the screen.
    void startUp() {
        ScreenTestScope scope;
        const BenchState& bench = sharedState<BenchState>();
        sharedState<BenchState>().setXc(7);
        sharedState<InterpretationState>().setSpeedRatio(3);
        Main();
        QCOMPARE(sharedState<InterpretationState>().speedRatio(), 1.0);
        QVERIFY(bench.angleWithY() == 0.0 && bench.xc() == 0.0 && bench.yc() == 0.0 && bench.rayHeight() == 0.0);
        QCOMPARE(bench.indexN(), 1.5);
        auto& menu = form<Diathlasimeleti>();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(menu.isVisible());
        QCOMPARE(menu.frameGeometry().width(), screen.width() * 49 / 50);
        QCOMPARE(menu.frameGeometry().height(), screen.height() * 49 / 50);

        // The three buttons share one row half-way down the screen.
        const int rowTop = screen.height() * 4 / 8;
        QPushButton* row[] = {button(menu, "Command1"), button(menu, "Command2"), button(menu, "Command3")};
        QCOMPARE(row[0]->x(), 0);
        for (int k = 0; k < 3; ++k) {
            QCOMPARE(row[k]->y(), rowTop);
            if (k > 0) QVERIFY(row[k - 1]->geometry().right() < row[k]->x());
        }
        QVERIFY(row[2]->geometry().right() <= menu.width());
        // The keyboard reaches the buttons in row order, then HISTORY.
        QVERIFY(row[0]->focusPolicy() & Qt::TabFocus);
        QVERIFY(row[0]->nextInFocusChain() == row[1] && row[1]->nextInFocusChain() == row[2]);
        QCOMPARE(row[2]->nextInFocusChain(), static_cast<QWidget*>(button(menu, "Command4")));

        // The row stays visible in a short window.
        menu.resize(500, 300);
        QVERIFY(row[0]->geometry().bottom() < menu.height());
        QVERIFY(row[1]->y() == row[0]->y() && row[2]->y() == row[0]->y());
    }

    // The picture under the buttons keeps its texts apart at every width:
    // on an 800-pixel screen the law ran into "GLASS  ΓΥΑΛΙ".
    void illustrationTextsStayApart() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        const Canvas& picture = *menu.findChild<Canvas*>(QStringLiteral("illustration"));
        for (const int width : {560, 800, 1024, 1600}) {
            menu.resize(width, 600);
            QTest::qWait(10);
            const auto texts = picture.drawnTexts();
            QVERIFY(texts.size() >= 3);
            const QRectF area(0, 0, picture.width(), picture.height());
            QString law;
            for (std::size_t i = 0; i < texts.size(); ++i) {
                QVERIFY2(area.contains(texts[i].box),
                         qPrintable(QStringLiteral("%1 px: %2").arg(width).arg(texts[i].text)));
                if (texts[i].text.contains(QStringLiteral("sin"))) law += texts[i].text;
                if (texts[i].text.contains(QStringLiteral("ημ"))) law += texts[i].text;
                for (std::size_t j = i + 1; j < texts.size(); ++j)
                    QVERIFY2(!texts[i].box.adjusted(1, 1, -1, -1).intersects(texts[j].box.adjusted(1, 1, -1, -1)),
                             qPrintable(QStringLiteral("%1 px: %2 / %3").arg(width).arg(texts[i].text, texts[j].text)));
            }
            // Both languages of the law are there, whether on one line or two.
            QVERIFY2(
                law.contains(QStringLiteral("sin i = n · sin r")) && law.contains(QStringLiteral("ημ i = n · ημ r")),
                qPrintable(law));
        }
    }

    // END, or closing the menu, ends the program at once with status 0.
    void endAndClosingEndTheProgram() {
        for (bool close : {false, true}) {
            ScreenTestScope scope;
            Main();
            close ? void(form<Diathlasimeleti>().close())
                  : QTest::mouseClick(button(form<Diathlasimeleti>(), "Command3"), Qt::LeftButton);
            QCOMPARE(scope.endStatuses, std::vector<int>{0});
        }
    }

    // Each window keeps the place the pupil gives it, maximised or not, also
    // at the next start; "Reset windows" puts it back where the program puts
    // it; a place kept from a screen unplugged since comes back on the screen.
    // The presentation size, set on the menu, is kept for the next start too.
    void windowsAndSizeAreKept() {
        programSettings()->clear();
        QRect asked;
        {
            ScreenTestScope scope;
            Main();
            auto& menu = form<Diathlasimeleti>();
            menu.Command1_Click();
            auto& bench = form<Hmiky>();
            QVERIFY(QTest::qWaitForWindowExposed(&bench));
            asked = bench.geometry();
            QTest::qWait(1600);  // past the moments when a window manager frames it
            const QRect moved(asked.topLeft() + QPoint(0, 30), asked.size() - QSize(0, 80));
            bench.windowHandle()->setGeometry(moved);  // as a drag does
            QTRY_COMPARE(bench.geometry(), moved);
            bench.Command3_Click();
            menu.Command1_Click();  // the opener asks for the program's place
            QCOMPARE(bench.geometry(), moved);
            bench.showMaximized();
            QTRY_VERIFY(bench.isMaximized());
            auto* size = named<QComboBox>(menu, "presentationSize");
            size->setCurrentIndex(size->findData(150));
            emit size->activated(size->currentIndex());
            QCOMPARE(presentationSize(), 150);
            QCOMPARE(named<QPushButton>(menu, "Command1")->font().pointSizeF(), 11.0 * 1.5);
        }
        setPresentationSize(100);
        programSettings()->setValue(QStringLiteral("presentation/size"), 175);  // as a last run left it
        restorePresentationSize();
        QCOMPARE(presentationSize(), 175);
        QCOMPARE(roleFont(FontRole::Caption, 10.0).pointSizeF(), 17.5);
        setPresentationSize(100);
        {
            ScreenTestScope scope;
            Main();
            auto& menu = form<Diathlasimeleti>();
            menu.Command1_Click();
            auto& bench = form<Hmiky>();
            QTRY_VERIFY(bench.isMaximized());
            named<QPushButton>(menu, "resetWindows")->click();
            QTRY_VERIFY(!bench.isMaximized());
            QTRY_COMPARE(bench.geometry(), asked);
        }
        QWidget far;  // a place on a screen far right of this one
        far.setGeometry(5000, 3000, 500, 400);
        programSettings()->setValue(QStringLiteral("windows/hmiky"), far.saveGeometry());
        {
            ScreenTestScope scope;
            Main();
            form<Diathlasimeleti>().Command1_Click();
            auto& bench = form<Hmiky>();
            QVERIFY(QTest::qWaitForWindowExposed(&bench));
            QVERIFY2(availableArea(&bench).contains(outerRect(bench)),
                     qPrintable(QStringLiteral("%1,%2").arg(bench.x()).arg(bench.y())));
        }
        programSettings()->clear();
    }

    void screensAreSingleAndKeepTheirState() {
        ScreenTestScope scope;
        NoteScreen::constructed = 0;
        QVERIFY(!Forms::instance().exists<NoteScreen>());
        hideIfCreated<NoteScreen>();  // hiding a screen never opened does not create it
        QCOMPARE(NoteScreen::constructed, 0);

        auto& first = form<NoteScreen>();
        first.edit->setText(QStringLiteral("n = 1.33"));
        showScreen(first);
        first.hide();
        auto& again = form<NoteScreen>();
        QCOMPARE(&again, &first);
        QCOMPARE(NoteScreen::constructed, 1);
        showScreen(again);
        QVERIFY(again.isVisible());
        QCOMPARE(again.edit->text(), QStringLiteral("n = 1.33"));
    }
};

QTEST_MAIN(TestMainMenu)
#include "test_main_menu.moc"
