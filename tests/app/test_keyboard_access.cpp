#include <QtTest>

#include <QMenuBar>
#include <QScrollBar>

#include "app/forms.h"
#include "app/main_menu.h"
#include "app/menu_keys.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "test_support.h"

class TestKeyboardAccess : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void lettersAreFirstFreeLatinLetters() {
        const QList<QChar> letters = menuLetters(
            {"MODELS", "HISTORICAL DATA", "HISTORY NOTES", "FILE  Αρχείο", "INSTRUMENTS  Όργανα", "Ωμέγα", "M"});
        QCOMPARE(letters, (QList<QChar>{'M', 'H', 'I', 'F', 'N', QChar('\0'), QChar('\0')}));
    }

    // The arrow keys move every scroll bar the way it points.
    void arrowKeysFollowTheBars() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command1_Click();
        openPtolemyInstrument();
        int bars = 0;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!top->isVisible()) continue;
            for (QScrollBar* bar : top->findChildren<QScrollBar*>()) {
                if (bar->parentWidget() && bar->parentWidget()->inherits("QAbstractScrollArea")) continue;
                if (bar->objectName().startsWith(QLatin1String("qt_"))) continue;
                bar->setValue((bar->minimum() + bar->maximum()) / 2);
                const int before = bar->value();
                QTest::keyClick(bar, bar->orientation() == Qt::Horizontal ? Qt::Key_Right : Qt::Key_Down);
                QVERIFY2(bar->value() > before, qPrintable(bar->objectName()));
                ++bars;
            }
        }
        QVERIFY(bars >= 6);
    }

    // Alt and the letter opens the menu on the data screen; captions stay
    // as written.
    void altLetterOpensTheMenu() {
        ScreenTestScope scope;
        installMenuKeysEverywhere(*QCoreApplication::instance());
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QCOMPARE(d.Histoire->title(), QStringLiteral("HISTORICAL DATA"));
        QVERIFY(d.Histoire->menuAction()->toolTip().contains("Alt+H"));
        QTest::keyClick(&d, Qt::Key_H, Qt::AltModifier);
        QCOMPARE(d.menuBar()->activeAction(), d.Histoire->menuAction());
        QTest::keyClick(d.menuBar()->activeAction()->menu(), Qt::Key_Escape);
        QTest::keyClick(&d, Qt::Key_I, Qt::AltModifier);
        QCOMPARE(d.menuBar()->activeAction(), d.History_notes->menuAction());
    }
};

QTEST_MAIN(TestKeyboardAccess)
#include "test_keyboard_access.moc"
