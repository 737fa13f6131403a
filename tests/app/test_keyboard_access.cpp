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

namespace {

// Whether the title is drawn in the highlight colour over a good part of it.
bool highlighted(QMenuBar& bar, QAction* title) {
    const QImage image = bar.grab().toImage();
    const QRect box = bar.actionGeometry(title);
    const QRgb fill = bar.palette().color(QPalette::Highlight).rgb();
    int hits = 0;
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x) hits += image.pixel(x, y) == fill ? 1 : 0;
    return hits > box.width() * box.height() / 4;
}

}  // namespace

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

    // The key after Alt+letter acts in the open menu, as after a mnemonic:
    // Alt+F, Down, Enter runs the second item of FILE; Alt+N, Enter the
    // first of INSTRUMENTS.
    void keyAfterAltLetterGoesToTheMenu() {
        ScreenTestScope scope;
        installMenuKeysEverywhere(*QCoreApplication::instance());
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QSignalSpy fit(d.empiricalFitItem, &QAction::triggered);
        QSignalSpy recall(d.recallItem, &QAction::triggered);
        QTest::keyClick(&d, Qt::Key_F, Qt::AltModifier);
        QWidget* popup = QApplication::activePopupWidget();
        QVERIFY(popup);
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QCOMPARE(recall.count(), 1);
        QCOMPARE(fit.count(), 0);

        QVERIFY(QTest::qWaitForWindowActive(&d));
        QSignalSpy ptolemy(d.ptolemaiosItem, &QAction::triggered);
        QTest::keyClick(&d, Qt::Key_N, Qt::AltModifier);
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
        QCOMPARE(ptolemy.count(), 1);
    }

    // Alt alone highlights the first title of the menu bar without opening
    // it, visibly; the arrows then move along the titles.
    void altAloneHighlightsTheMenuBar() {
        ScreenTestScope scope;
        installMenuKeysEverywhere(*QCoreApplication::instance());
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyPress(&d, Qt::Key_Alt, Qt::AltModifier);
        QTest::keyRelease(&d, Qt::Key_Alt, Qt::AltModifier);
        QCOMPARE(d.menuBar()->activeAction(), d.Models->menuAction());
        QVERIFY(!QApplication::activePopupWidget());
        QVERIFY(highlighted(*d.menuBar(), d.Models->menuAction()));
        QTest::keyClick(d.menuBar(), Qt::Key_Right);
        QCOMPARE(d.menuBar()->activeAction(), d.Histoire->menuAction());
        QVERIFY(highlighted(*d.menuBar(), d.Histoire->menuAction()) && !highlighted(*d.menuBar(), d.Models->menuAction()));
        QTest::keyClick(d.menuBar(), Qt::Key_Escape);
        QVERIFY(!d.menuBar()->activeAction());
        QVERIFY(!highlighted(*d.menuBar(), d.Histoire->menuAction()));
    }
};

QTEST_MAIN(TestKeyboardAccess)
#include "test_keyboard_access.moc"
