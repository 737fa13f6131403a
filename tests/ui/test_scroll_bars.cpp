// Every scroll bar of the program answers the keys and the wheel alike,
// whichever way it lies.
#include <QWheelEvent>
#include <QtTest>

#include "app/main_menu.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "models/interpretation_openers.h"
#include "test_support.h"
#include "ui/forms.h"
#include "ui/scroll_bars.h"

class TestScrollBars : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void bothOrientationsFollowTheirArrows() {
        for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
            const ScrollBarSettings set{.orientation = o,
                                        .minimum = 10,
                                        .maximum = 200,
                                        .value = 133,
                                        .smallChange = 1,
                                        .largeChange = 20,
                                        .objectName = "bar",
                                        .accessibleName = QString()};
            std::unique_ptr<QScrollBar> bar(createScrollBar(set));
            const bool horizontal = o == Qt::Horizontal;
            bar->resize(horizontal ? QSize(200, 18) : QSize(18, 200));
            QCOMPARE(bar->focusPolicy(), Qt::StrongFocus);
            const Qt::Key raise = horizontal ? Qt::Key_Right : Qt::Key_Down;
            const Qt::Key lower = horizontal ? Qt::Key_Left : Qt::Key_Up;
            const std::pair<Qt::Key, int> steps[] = {
                {raise, 134},          {raise, 135},       {lower, 134},      {Qt::Key_PageDown, 154},
                {Qt::Key_PageUp, 134}, {Qt::Key_End, 200}, {Qt::Key_Home, 10}};
            for (const auto& [key, value] : steps) {
                QTest::keyClick(bar.get(), key);
                QCOMPARE(bar->value(), value);
            }
            // One notch of the wheel turned towards the pupil moves both kinds the same way.
            bar->setValue(100);
            const QPointF centre(bar->width() / 2.0, bar->height() / 2.0);
            QWheelEvent wheel(centre, bar->mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(bar.get(), &wheel);
            QVERIFY2(bar->value() > 100, horizontal ? "horizontal" : "vertical");
        }
    }

    // The instruments' vertical bars (the stylus, the index of the rule
    // check) went down with Down before all bars were made in one place.
    void everyScreenBarRaisesWithRightAndDown() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command1_Click();  // the bench
        openPtolemyInstrument();
        openAlHaythamInstrument();
        showScreen(form<Alhazencheck>());
        showInterpretationScreens();
        QStringList checked;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!top->isVisible()) continue;
            for (QScrollBar* bar : top->findChildren<QScrollBar*>()) {
                if (bar->parentWidget() && bar->parentWidget()->inherits("QAbstractScrollArea")) continue;
                if (bar->objectName().startsWith(QLatin1String("qt_"))) continue;
                bar->setValue((bar->minimum() + bar->maximum()) / 2);
                const int before = bar->value();
                const bool horizontal = bar->orientation() == Qt::Horizontal;
                QTest::keyClick(bar, horizontal ? Qt::Key_Right : Qt::Key_Down);
                QVERIFY2(bar->value() == before + bar->singleStep(), qPrintable(bar->objectName()));
                QTest::keyClick(bar, horizontal ? Qt::Key_Left : Qt::Key_Up);
                QVERIFY2(bar->value() == before, qPrintable(bar->objectName()));
                checked << bar->objectName();
            }
        }
        for (const char* name : {"HScroll1", "angle", "goniaprosptosis", "metatopisipar", "strefo", "timiepi",
                                 "timidikti", "n1overn2", "prosptosi", "fermatscr"})
            QVERIFY2(checked.contains(QLatin1String(name)), name);
    }
};

QTEST_MAIN(TestScrollBars)
#include "test_scroll_bars.moc"
