#include <QtTest>

#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>

#include <cmath>

#include "ui/forms.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "core/shared_state.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "models/interpretation_state.h"
#include "test_support.h"

namespace {
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
        module1() = SharedState{};
        module1().xc = 7;
        sharedState<InterpretationState>().setSpeedRatio(3);
        Main();
        QCOMPARE(module1().pi, 4.0 * std::atan(1.0));
        QCOMPARE(sharedState<InterpretationState>().speedRatio(), 1.0);
        QCOMPARE(module1().angleWithY, 0.0);
        QCOMPARE(module1().xc, 0.0);
        QCOMPARE(module1().yc, 0.0);
        QCOMPARE(module1().rayHeight, 0.0);
        QCOMPARE(module1().indexN, 1.5);
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

        // The three buttons share one row half-way down the screen.
        const int rowTop = screen.height() * 4 / 8;
        QCOMPARE(menu.Command1->y(), rowTop);
        QCOMPARE(menu.Command2->y(), rowTop);
        QCOMPARE(menu.Command3->y(), rowTop);
        QCOMPARE(menu.Command1->x(), 0);
        QVERIFY(menu.Command1->geometry().right() < menu.Command2->x());
        QVERIFY(menu.Command2->geometry().right() < menu.Command3->x());
        QVERIFY(menu.Command3->geometry().right() <= menu.width());

        QCOMPARE(menu.Command1->text(), QStringLiteral("SEMICIRCLE ΗΜΙΚΥΚΛΙΟ"));
        QCOMPARE(menu.Command2->text(),
                 QStringLiteral("ANALYSIS OF DATA, SOME HISTORICAL ELEMENTS  Μελέτη των δεδομένων,ιστορικά στοιχεία"));
        QCOMPARE(menu.Command3->text(), QStringLiteral("END Τέλος"));
        QCOMPARE(menu.Label1->text(), QStringLiteral("STUDY OF THE  LAW OF REFRACTION Ο ΝΟΜΟΣ ΤΗΣ ΔΙΑΘΛΑΣΗΣ"));
        QVERIFY(menu.Command4->text().startsWith(QStringLiteral("A SHORT HISTORY OF THE LAW OF REFACTION    (in Greek)")));
        QVERIFY(menu.Command4->text().endsWith(QStringLiteral("Σύντομη ιστορία του νόμου της Διάθλασης")));
        QCOMPARE(menu.Command5->text(), QStringLiteral("INTERPRETATION OF REFRACTION       ΕΡΜΗΝΕΙΑ ΤΗΣ ΔΙΑΘΛΑΣΗΣ"));

        // Screen readers hear the captions.
        for (auto* button : {menu.Command1, menu.Command2, menu.Command3, menu.Command4, menu.Command5})
            QCOMPARE(button->accessibleName(), button->text());
    }

    void rowStaysVisibleInAShortWindow() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        menu.resize(500, 300);
        QVERIFY(menu.Command1->geometry().bottom() < menu.height());
        QCOMPARE(menu.Command2->y(), menu.Command1->y());
        QCOMPARE(menu.Command3->y(), menu.Command1->y());
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
                QVERIFY2(area.contains(texts[i].box), qPrintable(QStringLiteral("%1 px: %2").arg(width).arg(texts[i].text)));
                if (texts[i].text.contains(QStringLiteral("sin"))) law += texts[i].text;
                if (texts[i].text.contains(QStringLiteral("ημ"))) law += texts[i].text;
                for (std::size_t j = i + 1; j < texts.size(); ++j)
                    QVERIFY2(!texts[i].box.adjusted(1, 1, -1, -1).intersects(texts[j].box.adjusted(1, 1, -1, -1)),
                             qPrintable(QStringLiteral("%1 px: %2 / %3").arg(width).arg(texts[i].text, texts[j].text)));
            }
            // Both languages of the law are there, whether on one line or two.
            QVERIFY2(law.contains(QStringLiteral("sin i = n · sin r")) && law.contains(QStringLiteral("ημ i = n · ημ r")),
                     qPrintable(law));
        }
    }

    void endEndsAtOnceWithStatusZero() {
        ScreenTestScope scope;
        Main();
        QTest::mouseClick(form<Diathlasimeleti>().Command3, Qt::LeftButton);
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
        menu.Command4->click();
        QVERIFY(Forms::instance().exists<Storiopt>());
        auto& history = form<Storiopt>();
        QVERIFY(history.isVisible());
        QCOMPARE(history.frameGeometry().size(), QGuiApplication::primaryScreen()->availableGeometry().size());
        QVERIFY(history.Picture1->isVisible());
        QVERIFY(!history.Picture2->isVisible());

        history.defteromeros_Click();
        history.klisimo_Click();
        QVERIFY(!history.isVisible());
        menu.Command4->click();
        QCOMPARE(&form<Storiopt>(), &history);  // the same screen, not a new one
        QVERIFY(history.isVisible());
        QVERIFY(history.Picture1->isVisible());  // always opens on the first page
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
        QVERIFY(menu.Command1->focusPolicy() & Qt::TabFocus);
        QCOMPARE(menu.Command1->nextInFocusChain(), static_cast<QWidget*>(menu.Command2));
        QCOMPARE(menu.Command2->nextInFocusChain(), static_cast<QWidget*>(menu.Command3));
        QCOMPARE(menu.Command3->nextInFocusChain(), static_cast<QWidget*>(menu.Command4));
    }
};

QTEST_MAIN(TestMainMenu)
#include "test_main_menu.moc"
