#include <QMenuBar>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QtTest>

#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "models/interpretation_openers.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/focus_frame.h"
#include "ui/menu_keys.h"
#include "ui/presentation_size.h"
#include "ui/window_keys.h"

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

// The widgets that Tab visits, starting from the focus.
QSet<QWidget*> tabThrough() {
    QSet<QWidget*> seen;
    for (int k = 0; k < 200 && QApplication::focusWidget(); ++k) {
        seen.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    return seen;
}

QWidget* active(QWidget& window) {
    showScreen(window);
    return QTest::qWaitForWindowActive(&window) ? &window : nullptr;
}

}  // namespace

class TestKeyboardAccess : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        installFontSubstitutions();
        installMenuKeysEverywhere(*QCoreApplication::instance());
        installWindowKeysEverywhere(*QCoreApplication::instance());
        installFocusFrameEverywhere(*QCoreApplication::instance());
    }

    // The focused control wears a 2-pixel black frame with a white line
    // inside, whatever kind of control it is; the others do not.
    void benchByKeys() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command1_Click();
        Hmiky& bench = form<Hmiky>();
        QVERIFY(active(bench));
        Canvas* canvas = bench.findChild<Canvas*>("bench");
        QList<QWidget*> controls{canvas};
        controls << bench.findChildren<QScrollBar*>().first() << bench.findChildren<QAbstractButton*>().first();
        for (QWidget* w : controls) {
            const auto framed = [w] {
                const QImage image = w->grab().toImage();
                const int x = image.width() / 2, y = image.height() / 2;
                const qreal r = image.devicePixelRatio();
                auto at = [&](double px, double py) { return image.pixelColor(int(px * r), int(py * r)); };
                return at(x, 0) == QColor(Qt::black) && at(x, 1) == QColor(Qt::black) &&
                       at(0, y) == QColor(Qt::black) && at(x, 2) == QColor(Qt::white);
            };
            w->clearFocus();
            QVERIFY2(!framed(), qPrintable(w->objectName()));
            w->setFocus();
            QVERIFY2(framed(), qPrintable(w->objectName()));
        }

        // The bench's mouse by keys: the arrows move the pressed point and aim
        // the ray from it, as a press there does; Enter lets go there.
        bench.moredens_Click();  // a direction, so that a pressed point aims a ray
        canvas->setFocus();
        const double x0 = bench.markStartX, y0 = bench.markStartY;
        for (int k = 0; k < 6; ++k) QTest::keyClick(canvas, Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(canvas, Qt::Key_Up);
        QCOMPARE(QPointF(bench.markStartX, bench.markStartY), QPointF(x0 - 150, y0 + 5));
        const QString byKeys = canvas->summary();
        QVERIFY2(byKeys.contains(QLatin1String("Ray 1: incidence")), qPrintable(byKeys));
        bench.Form_MouseDown(x0 - 150, y0 + 5);
        QCOMPARE(canvas->summary(), byKeys);  // the same picture as a press there

        const int drawn = canvas->recordedOperations();
        QTest::keyClick(canvas, Qt::Key_Return);
        QVERIFY(canvas->recordedOperations() > drawn);  // the marks of the release
        QCOMPARE(canvas->summary(), byKeys);
        // The point stays on the bench however long the key is held.
        for (int k = 0; k < 40; ++k) QTest::keyClick(canvas, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(double(bench.markStartX), canvas->scaleLeft() + canvas->scaleWidth());
        // Other keys go on to the window (Ctrl+arrows, letters).
        QVERIFY(!bench.benchKey(Qt::Key_Left, Qt::ControlModifier) && !bench.benchKey(Qt::Key_A, Qt::NoModifier));

        // Tab reaches every drawing of the windows a pupil opens.
        form<Diathlasimeleti>().Command2_Click();
        form<Inpdat>().Ptolemy_Click();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window->findChildren<Canvas*>().isEmpty()) continue;
            QVERIFY(active(*window));
            const QSet<QWidget*> reached = tabThrough();
            for (Canvas* c : window->findChildren<Canvas*>())
                if (c->isVisible()) QVERIFY2(reached.contains(c), qPrintable(c->objectName()));
        }
    }

    // From the main menu to a historical table and its graphs with keys
    // alone; the graph window saves its figure with Ctrl+S whatever has the
    // focus, Escape brings back the data screen, F6 walks the windows.
    void dataScreenAndGraphsByKeys() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        Diathlasimeleti& menu = form<Diathlasimeleti>();
        QVERIFY(active(menu));
        auto* dataButton = menu.findChild<QPushButton*>(QStringLiteral("Command2"));
        dataButton->setFocus();
        QTest::keyClick(dataButton, Qt::Key_Return);  // Enter presses a button as Space does
        Inpdat& d = form<Inpdat>();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QVERIFY(d.focusWidget());  // something has the focus as the window comes up
        QTest::keyClick(&d, Qt::Key_H, Qt::AltModifier);
        QMenu* tables = d.menuBar()->activeAction()->menu();
        QTest::keyClick(tables, Qt::Key_Down);
        QTest::keyClick(tables, Qt::Key_Return);
        Analysis& sine = form<Analysis>();
        QVERIFY(sine.isVisible() && !sine.canvas()->printedTexts().isEmpty());

        QVERIFY(active(sine));
        QCOMPARE(QApplication::focusWidget(), sine.canvas());  // a graph window gives its drawing the focus
        scope.dialogs().saveFiles = {dir.filePath("sine.svg")};
        QTest::keyClick(&sine, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(QFileInfo(dir.filePath("sine.svg")).size() > 1000);
        QVERIFY2(scope.dialogs().messages.last().contains(dir.filePath("sine.svg")), "tells where the file went");

        QTest::keyClick(&sine, Qt::Key_Menu);  // the drawing's menu, from the keyboard
        auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(popup && popup->actions().size() == 2);
        popup->close();

        QTest::keyClick(&sine, Qt::Key_Escape);
        QVERIFY(QTest::qWaitForWindowActive(&d));

        // F6 goes round the open windows and comes back.
        QSet<QWidget*> visited;
        for (int k = 0; k < 6; ++k) {
            QWidget* before = QApplication::activeWindow();
            visited.insert(before);
            QTest::keyClick(before, Qt::Key_F6);
            QTRY_VERIFY(QApplication::activeWindow() != before);
        }
        QVERIFY(visited.contains(&d) && visited.contains(&sine) && visited.contains(&menu));
        QWidget* now = QApplication::activeWindow();
        QTest::keyClick(now, Qt::Key_F6);
        QTRY_VERIFY(QApplication::activeWindow() != now);
        QTest::keyClick(QApplication::activeWindow(), Qt::Key_F6, Qt::ShiftModifier);
        QTRY_COMPARE(QApplication::activeWindow(), now);

        // The presentation size from any window: Ctrl++ (or Ctrl+=) grows
        // it a step, Ctrl+− shrinks it, Ctrl+0 goes back to 100 %.
        QTest::keyClick(&sine, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(presentationSize(), 125);
        QTest::keyClick(&d, Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(presentationSize(), 150);
        QTest::keyClick(&d, Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(presentationSize(), 125);
        QTest::keyClick(&sine, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(presentationSize(), 100);
    }

    // Fermat's experiment by keys: Shift, Ctrl and Shift+Ctrl with an arrow
    // move the magenta, green and blue bodies, and the time follows.
    void fermatByKeys() {
        ScreenTestScope scope;
        showInterpretationScreens();
        Somata& s = form<Somata>();
        QVERIFY(active(s));
        s.fermat_Click();
        Canvas* canvas = s.findChild<Canvas*>("corpuscleField");
        const QLabel* label = s.findChild<QLabel*>("Label1");
        canvas->setFocus();
        using Move = std::tuple<Qt::KeyboardModifiers, Somata::Body, Qt::Key>;
        for (const auto& [keys, body, arrow] :
             {Move{Qt::ShiftModifier, Somata::Magenta, Qt::Key_Right},
              Move{Qt::ControlModifier, Somata::Green, Qt::Key_Up},
              Move{Qt::ShiftModifier | Qt::ControlModifier, Somata::Blue, Qt::Key_Left}}) {
            const auto before = s.bodyCentre(body);
            const QString time = label->text();
            QTest::keyClick(canvas, arrow, keys);
            const auto after = s.bodyCentre(body);
            QVERIFY2(before.x != after.x || before.y != after.y, qPrintable(QString::number(body)));
            QVERIFY(label->text() != time && label->text().startsWith(QLatin1String("Time of movement")));
        }
        // The green body moved up: towards the top of the drawing.
        const QPointF green = canvas->toLogical(s.bodyCentre(Somata::Green).x, s.bodyCentre(Somata::Green).y);
        QTest::keyClick(canvas, Qt::Key_Up, Qt::ControlModifier);
        QVERIFY(canvas->toLogical(s.bodyCentre(Somata::Green).x, s.bodyCentre(Somata::Green).y).y() < green.y());
    }

    void lettersAreFirstFreeLatinLetters() {
        const QList<QChar> letters = menuLetters(
            {"MODELS", "HISTORICAL DATA", "HISTORY NOTES", "FILE  Αρχείο", "INSTRUMENTS  Όργανα", "Ωμέγα", "M"});
        QCOMPARE(letters, (QList<QChar>{'M', 'H', 'I', 'F', 'N', QChar('\0'), QChar('\0')}));
    }

    // The menus of the data screen by keys. Alt and a letter opens a menu
    // (the tooltip tells which); the key after it acts in the open menu, as
    // after a mnemonic: Alt+F, Down, Enter runs the second item of FILE,
    // Alt+N, Enter the first of INSTRUMENTS. Alt alone highlights the first
    // title without opening it, visibly; the arrows then move along the titles.
    void dataScreenByKeys() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        QMenuBar* bar = d.menuBar();
        QAction* models = named<QMenu>(d, "Models")->menuAction();
        QAction* tables = named<QMenu>(d, "Histoire")->menuAction();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QVERIFY(tables->toolTip().contains("Alt+H"));
        QTest::keyClick(&d, Qt::Key_I, Qt::AltModifier);
        QCOMPARE(bar->activeAction(), named<QMenu>(d, "History_notes")->menuAction());
        QTest::keyClick(bar->activeAction()->menu(), Qt::Key_Escape);

        QSignalSpy fit(named<QAction>(d, "empiricalFit"), &QAction::triggered);
        QSignalSpy recall(named<QAction>(d, "recall"), &QAction::triggered);
        QTest::keyClick(&d, Qt::Key_F, Qt::AltModifier);
        QWidget* popup = QApplication::activePopupWidget();
        QVERIFY(popup);
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QVERIFY(recall.count() == 1 && fit.count() == 0);
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QSignalSpy ptolemy(named<QAction>(d, "ptolemaios"), &QAction::triggered);
        QTest::keyClick(&d, Qt::Key_N, Qt::AltModifier);
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
        QCOMPARE(ptolemy.count(), 1);

        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyPress(&d, Qt::Key_Alt, Qt::AltModifier);
        QTest::keyRelease(&d, Qt::Key_Alt, Qt::AltModifier);
        QCOMPARE(bar->activeAction(), models);
        QVERIFY(!QApplication::activePopupWidget() && highlighted(*bar, models));
        QTest::keyClick(bar, Qt::Key_Right);
        QCOMPARE(bar->activeAction(), tables);
        QVERIFY(highlighted(*bar, tables) && !highlighted(*bar, models));
        QTest::keyClick(bar, Qt::Key_Escape);
        QVERIFY(!bar->activeAction() && !highlighted(*bar, tables));

        // A message box gives the focus back to the button that opened it.
        setDialogs(std::make_unique<WidgetDialogs>());
        QVERIFY(active(d));
        named(d, "Command1")->setFocus();
        bool boxShown = false;
        QTimer::singleShot(50, [&boxShown] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                boxShown = true;
                box->accept();
            }
        });
        QTest::keyClick(named(d, "Command1"), Qt::Key_Space);  // Data Analysis with no pairs: a message
        QVERIFY(boxShown);
        QTRY_COMPARE(QApplication::focusWidget(), named(d, "Command1"));
    }
};

QTEST_MAIN(TestKeyboardAccess)
#include "test_keyboard_access.moc"
