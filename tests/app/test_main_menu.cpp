#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include "app/history_screen.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "models/interpretation_state.h"
#include "semicircle/bench_state.h"
#include "test_support.h"
#include "ui/forms.h"

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

    void startUpSetsSharedValues() {
        ScreenTestScope scope;
        const BenchState& bench = sharedState<BenchState>();
        sharedState<BenchState>().setXc(7);
        sharedState<InterpretationState>().setSpeedRatio(3);
        Main();
        QCOMPARE(sharedState<InterpretationState>().speedRatio(), 1.0);
        QVERIFY(bench.angleWithY() == 0.0 && bench.xc() == 0.0 && bench.yc() == 0.0 && bench.rayHeight() == 0.0);
        QCOMPARE(bench.indexN(), 1.5);
    }

    void startUpLayoutAndCaptions() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(menu.isVisible());
        QCOMPARE(menu.windowTitle(), QStringLiteral("MELETH DIAULASHS"));
        QCOMPARE(menu.frameGeometry().width(), screen.width() * 49 / 50);
        QCOMPARE(menu.frameGeometry().height(), screen.height() * 49 / 50);

        // The three buttons share one row half-way down the screen, with
        // the captions start-up gives them.
        const int rowTop = screen.height() * 4 / 8;
        QPushButton* row[] = {button(menu, "Command1"), button(menu, "Command2"), button(menu, "Command3")};
        QCOMPARE(row[0]->x(), 0);
        for (int k = 0; k < 3; ++k) {
            QCOMPARE(row[k]->y(), rowTop);
            if (k > 0) QVERIFY(row[k - 1]->geometry().right() < row[k]->x());
        }
        QVERIFY(row[2]->geometry().right() <= menu.width());
        QCOMPARE(row[0]->text(), QStringLiteral("SEMICIRCLE ΗΜΙΚΥΚΛΙΟ"));
        QCOMPARE(row[2]->text(), QStringLiteral("END Τέλος"));

        // Screen readers hear the captions.
        for (const char* name : {"Command1", "Command2", "Command3", "Command4", "Command5"})
            QCOMPARE(button(menu, name)->accessibleName(), button(menu, name)->text());
    }

    void rowStaysVisibleInAShortWindow() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        menu.resize(500, 300);
        QVERIFY(button(menu, "Command1")->geometry().bottom() < menu.height());
        QCOMPARE(button(menu, "Command2")->y(), button(menu, "Command1")->y());
        QCOMPARE(button(menu, "Command3")->y(), button(menu, "Command1")->y());
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

    void endEndsAtOnceWithStatusZero() {
        ScreenTestScope scope;
        Main();
        QTest::mouseClick(button(form<Diathlasimeleti>(), "Command3"), Qt::LeftButton);
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    void closingTheMenuEndsTheProgram() {
        ScreenTestScope scope;
        Main();
        form<Diathlasimeleti>().close();
        QCOMPARE(scope.endStatuses, std::vector<int>{0});
    }

    void historyOpensSizedToTheScreenAndComesBackAsLeft() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        QVERIFY(!Forms::instance().exists<Storiopt>());
        button(menu, "Command4")->click();
        QVERIFY(Forms::instance().exists<Storiopt>());
        auto& history = form<Storiopt>();
        QVERIFY(history.isVisible());
        QCOMPARE(history.frameGeometry().size(), QGuiApplication::primaryScreen()->availableGeometry().size());
        QWidget* first = history.findChild<QWidget*>(QStringLiteral("Picture1"));
        QVERIFY(first->isVisible() && !history.findChild<QWidget*>(QStringLiteral("Picture2"))->isVisible());

        history.defteromeros_Click();
        history.klisimo_Click();
        QVERIFY(!history.isVisible());
        button(menu, "Command4")->click();
        QCOMPARE(&form<Storiopt>(), &history);  // the same screen, not a new one
        QVERIFY(history.isVisible());
        QVERIFY(first->isVisible());  // always opens on the first page
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

    void keyboardReachesTheButtonsInRowOrder() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        QVERIFY(button(menu, "Command1")->focusPolicy() & Qt::TabFocus);
        const char* order[] = {"Command1", "Command2", "Command3", "Command4"};
        for (int k = 0; k < 3; ++k)
            QCOMPARE(button(menu, order[k])->nextInFocusChain(), static_cast<QWidget*>(button(menu, order[k + 1])));
    }
};

QTEST_MAIN(TestMainMenu)
#include "test_main_menu.moc"
