#include <QAction>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QScreen>
#include <QtTest>

#include "app/history_pages.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "test_support.h"

namespace {

// Page 1 or 2 of the screen.
QWidget* page(const Storiopt& screen, int number) {
    return screen.findChild<QWidget*>(QStringLiteral("Picture%1").arg(number));
}

void choose(const Storiopt& screen, const char* command) {
    screen.findChild<QAction*>(QLatin1String(command))->trigger();
}

// The page is shown, the other hidden, and the shown one fills the area below the menu bar.
bool onlyPageShown(Storiopt& screen, const QWidget* page) {
    const QWidget* other = page == ::page(screen, 1) ? ::page(screen, 2) : ::page(screen, 1);
    const QRect area = screen.centralWidget()->rect();
    return !page->isHidden() && other->isHidden() && !area.isEmpty() && page->geometry() == area;
}

QStringList labelTexts(const QWidget* page) {
    QStringList texts;
    for (const QLabel* label : page->findChildren<QLabel*>()) texts << label->text();
    return texts;
}

}  // namespace

class TestHistoryScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void firstPageFromTheMainMenuOthersByTheMenu() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        QVERIFY(onlyPageShown(screen, page(screen, 1)));
        // The main menu sizes the hidden screen to the display and only then shows it.
        screen.defteromeros_Click();
        form<Diathlasimeleti>().Command4_Click();
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        QCOMPARE(screen.frameGeometry().size(), QGuiApplication::primaryScreen()->availableGeometry().size());
        QVERIFY(onlyPageShown(screen, page(screen, 1)));

        // The menu switches pages.
        choose(screen, "defteromeros");
        choose(screen, "defteromeros");
        QVERIFY(onlyPageShown(screen, page(screen, 2)));
        // The visible page follows the window; the hidden one is fitted when chosen.
        screen.resize(700, 500);
        QTRY_VERIFY(onlyPageShown(screen, page(screen, 2)));
        QTest::keyClick(&screen, Qt::Key_1, Qt::AltModifier);
        QVERIFY(onlyPageShown(screen, page(screen, 1)));
        choose(screen, "klisimo");
        QVERIFY(!screen.isVisible());
    }

    void pagesShowEveryBlockAndTheTable() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        // Every block of each page is shown, in its order.
        for (int number : {1, 2}) {
            QStringList wanted;
            for (const auto& block : (number == 1 ? history::firstPage() : history::secondPage()).blocks)
                if (!block.text.empty()) wanted << QString::fromStdString(block.text);
            QStringList shown = labelTexts(page(screen, number));
            shown.removeIf([](const QString& text) { return text.startsWith(QLatin1Char('<')); });  // the table
            QCOMPARE(shown, wanted);
        }
        const auto* table = page(screen, 2)->findChild<QLabel*>(QStringLiteral("ptolemyTable"));
        QVERIFY(table && table->text().contains(QStringLiteral("15,5°")));
    }

    void differenceTable() {
        const auto rows = history::differenceTable(history::ptolemyWaterIncidence(), history::ptolemyWaterRefraction());
        QCOMPARE(rows.size(), std::size_t(8));
        QVERIFY(!rows[0].firstDifference && !rows[0].secondDifference && !rows[1].secondDifference);
        const double expectedFirst[] = {7.5, 7, 6.5, 6, 5.5, 5, 4.5};
        for (std::size_t k = 1; k < rows.size(); ++k) {
            QCOMPARE(*rows[k].firstDifference, expectedFirst[k - 1]);
            if (k >= 2) QCOMPARE(*rows[k].secondDifference, 0.5);
        }
        // Growing steps give negative second differences; unequal lists are cut to the shorter.
        const std::vector<double> in{10, 20, 30, 40};
        const std::vector<double> out{0, 10, 30};
        const auto growing = history::differenceTable(in, out);
        QCOMPARE(growing.size(), std::size_t(3));
        QVERIFY(*growing[2].firstDifference == 20.0 && *growing[2].secondDifference == -10.0);
        QVERIFY(history::differenceTable({}, out).empty());
        for (auto [value, text] : {std::pair{15.5, "15,5°"}, {8.0, "8°"}, {-0.5, "-0,5°"}, {7.0 - 6.5, "0,5°"}})
            QCOMPARE(QString::fromStdString(history::formatDegrees(value)), QString::fromUtf8(text));
    }

    // Every label shows its whole text in a Greek-capable face and is named
    // for screen readers, in a small window as well as a full screen.
    void labelsAreReadableAndWhole() {
        for (QSize size : {QSize(640, 480), QSize(1920, 1080)}) {
            ScreenTestScope scope;
            Storiopt& screen = form<Storiopt>();
            screen.resize(size);
            showScreen(screen);
            QVERIFY(QTest::qWaitForWindowExposed(&screen));
            for (QWidget* shown : {page(screen, 1), page(screen, 2)}) {
                shown == page(screen, 1) ? screen.protomeros_Click() : screen.defteromeros_Click();
                QTRY_VERIFY(onlyPageShown(screen, shown));
                QCoreApplication::processEvents();
                for (const QLabel* label : shown->findChildren<QLabel*>()) {
                    QVERIFY(!label->accessibleName().isEmpty());
                    const QString family = QFontInfo(label->font()).family();
                    QVERIFY2(QFontDatabase::writingSystems(family).contains(QFontDatabase::Greek), qPrintable(family));
                    const int needed =
                        label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
                    QVERIFY2(label->height() >= needed, qPrintable(label->text().left(40)));
                }
            }
        }
    }
};

QTEST_MAIN(TestHistoryScreen)
#include "test_history_screen.moc"
