#include <QAccessible>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QtTest>

#include <span>
#include <vector>

#include "app/history_pages.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "test_support.h"

namespace {

QStringList labelTexts(const QWidget* page) {
    QStringList texts;
    for (const QLabel* label : page->findChildren<QLabel*>()) texts << label->text();
    return texts;
}

bool fillsClientArea(Storiopt& screen, const QWidget* page) {
    const QRect area = screen.centralWidget()->rect();
    return !page->isHidden() && !area.isEmpty() && page->geometry() == area;
}

}  // namespace

class TestHistoryScreen : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void opensOnTheFirstPageFittedToTheWindow() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        QCOMPARE(screen.windowTitle(), QStringLiteral("Σύντομη Ιστορία"));
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());

        QStringList captions;
        for (const QAction* action : screen.menuBar()->actions()) captions << action->text();
        QCOMPARE(captions, (QStringList{"PROTO", "DEFTERO", "KLISIMO"}));
        QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(screen.menuBar());
        QVERIFY(bar && bar->childCount() == 3);
        for (int k = 0; k < 3; ++k) QCOMPARE(bar->child(k)->text(QAccessible::Name), captions[k]);

        showScreen(screen);
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());
    }

    // The main menu sizes the hidden screen to the whole screen, chooses the
    // first page and only then shows it.
    void pageFitsASizeSetWhileHidden() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        screen.defteromeros_Click();
        screen.setGeometry(QRect(0, 0, 1280, 800));
        screen.protomeros_Click();
        QCOMPARE(screen.Picture1->size(), screen.clientArea().size());
        QVERIFY(screen.Picture1->width() == 1280 && screen.Picture1->height() > 700);
        QVERIFY(screen.Picture2->isHidden());
        showScreen(screen);
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        QVERIFY(fillsClientArea(screen, screen.Picture1));
    }

    void mainMenuOpensTheFirstPageFullScreen() {
        ScreenTestScope scope;
        form<Storiopt>().defteromeros_Click();
        form<Diathlasimeleti>().Command4_Click();
        Storiopt& screen = form<Storiopt>();
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        QCOMPARE(screen.size(), QGuiApplication::primaryScreen()->availableGeometry().size());
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());
    }

    void menuSwitchesPagesAndFollowsResizes() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        showScreen(screen);
        QVERIFY(QTest::qWaitForWindowExposed(&screen));

        screen.defteromeros->trigger();
        screen.defteromeros->trigger();
        QVERIFY(fillsClientArea(screen, screen.Picture2));
        QVERIFY(screen.Picture1->isHidden());

        // The visible page follows the window; the hidden one is fitted when chosen.
        screen.resize(700, 500);
        QTRY_VERIFY(fillsClientArea(screen, screen.Picture2));
        QVERIFY(screen.Picture1->size() != screen.centralWidget()->size());
        screen.protomeros->trigger();
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());

        screen.resize(1300, 900);
        QTRY_VERIFY(fillsClientArea(screen, screen.Picture1));
        screen.defteromeros_Click();
        QVERIFY(fillsClientArea(screen, screen.Picture2));

        screen.klisimo->trigger();
        QVERIFY(!screen.isVisible());
        // Opened again, it starts on the first page.
        screen.protomeros_Click();
        showScreen(screen);
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());
    }

    void keyboardChoosesPagesAndCloses() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        showScreen(screen);
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        QTest::keyClick(&screen, Qt::Key_2, Qt::AltModifier);
        QVERIFY(fillsClientArea(screen, screen.Picture2));
        QVERIFY(screen.Picture1->isHidden());
        QTest::keyClick(&screen, Qt::Key_1, Qt::AltModifier);
        QVERIFY(fillsClientArea(screen, screen.Picture1));
        QVERIFY(screen.Picture2->isHidden());
        QTest::keyClick(&screen, Qt::Key_Escape);
        QVERIFY(!screen.isVisible());
    }

    void pagesCarryTheirHeadingsAndQuotations() {
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        const QStringList first = labelTexts(screen.Picture1);
        for (const char* heading :
             {"Η ιστορία του νόμου της Διάθλασης", "Ο νόμος της διάθλασης στην Αρχαιότητα και τον Μεσαίωνα.",
              " Νόμος του Κέπλερ.", "Νόμος του Snell", "Ερμηνείες του νόμου του Snell"})
            QVERIFY2(first.contains(QString::fromUtf8(heading)), heading);
        const QString firstText = first.join(QLatin1Char('\n'));
        for (const char* piece : {"ελάχιστου δρόμου", "γωνία διάθλασης = 2/3 *γωνία πρόσπτωσης.",
                                  "διάθλασης = 3/2 γωνία πρόσπτωσης.", "ημθ₁ = n·ημθ₂"})
            QVERIFY2(firstText.contains(QString::fromUtf8(piece)), piece);
        QString withoutSubscripts = firstText;
        withoutSubscripts.remove(QChar(0x2081)).remove(QChar(0x2082));
        QVERIFY(withoutSubscripts.contains(QStringLiteral("όπου: θ η γωνία πρόσπτωσης, θ η γωνία διάθλασης και n")));

        const QStringList second = labelTexts(screen.Picture2);
        QVERIFY(second.contains(
            QStringLiteral("Για τη διάθλαση από αέρα σε νερό ο Πτολεμαίος βρήκε τα ακόλουθα αποτελέσματα:")));
        const auto* table = screen.Picture2->findChild<QLabel*>(QStringLiteral("ptolemyTable"));
        QVERIFY(table);
        QVERIFY(table->text().contains(QStringLiteral("Δεύτερης<br>διαφοράς")));
        QVERIFY(table->text().contains(QStringLiteral("15,5°")));
    }

    void differencesOfPtolemysTable() {
        const auto rows =
            history::differenceTable(history::ptolemyWaterIncidence(), history::ptolemyWaterRefraction());
        QCOMPARE(rows.size(), std::size_t(8));
        QCOMPARE(rows.front().incidence, 10.0);
        QCOMPARE(rows.back().refraction, 50.0);
        QVERIFY(!rows[0].firstDifference && !rows[0].secondDifference);
        QVERIFY(rows[1].firstDifference && !rows[1].secondDifference);
        const double expectedFirst[] = {7.5, 7, 6.5, 6, 5.5, 5, 4.5};
        for (std::size_t k = 1; k < rows.size(); ++k) {
            QCOMPARE(*rows[k].firstDifference, expectedFirst[k - 1]);
            if (k >= 2) QCOMPARE(*rows[k].secondDifference, 0.5);
        }

        // Growing steps give negative second differences; lists of unequal
        // length are cut to the shorter; short lists give what they can.
        const std::vector<double> in{10, 20, 30, 40};
        const std::vector<double> out{0, 10, 30};
        const auto growing = history::differenceTable(in, out);
        QCOMPARE(growing.size(), std::size_t(3));
        QCOMPARE(*growing[2].firstDifference, 20.0);
        QCOMPARE(*growing[2].secondDifference, -10.0);
        QVERIFY(history::differenceTable(std::span(in).first(1), out).size() == 1);
        QVERIFY(history::differenceTable({}, out).empty());

        const auto& headings = history::differenceTableHeadings();
        QCOMPARE(headings.size(), std::size_t(4));
        QCOMPARE(QString::fromStdString(headings[3].top), QStringLiteral("Δεύτερης"));
        QCOMPARE(QString::fromStdString(headings[3].bottom), QStringLiteral("διαφοράς"));
    }

    void degreesAreWrittenTheGreekWay() {
        QCOMPARE(QString::fromStdString(history::formatDegrees(15.5)), QStringLiteral("15,5°"));
        QCOMPARE(QString::fromStdString(history::formatDegrees(8)), QStringLiteral("8°"));
        QCOMPARE(QString::fromStdString(history::formatDegrees(0.5)), QStringLiteral("0,5°"));
        QCOMPARE(QString::fromStdString(history::formatDegrees(-0.5)), QStringLiteral("-0,5°"));
        QCOMPARE(QString::fromStdString(history::formatDegrees(7.0 - 6.5)), QStringLiteral("0,5°"));
    }

    // Every label shows its whole text in a Greek-capable face, is named for
    // screen readers, and is given the height its wrapped text needs, in a
    // small window as well as a full screen.
    void labelsAreReadableAndWhole_data() {
        QTest::addColumn<QSize>("size");
        QTest::newRow("small") << QSize(640, 480);
        QTest::newRow("1024x768") << QSize(1024, 768);
        QTest::newRow("full screen") << QSize(1920, 1080);
    }
    void labelsAreReadableAndWhole() {
        QFETCH(QSize, size);
        ScreenTestScope scope;
        Storiopt& screen = form<Storiopt>();
        screen.resize(size);
        showScreen(screen);
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        for (int page = 0; page < 2; ++page) {
            page == 0 ? screen.protomeros_Click() : screen.defteromeros_Click();
            QWidget* shown = page == 0 ? screen.Picture1 : screen.Picture2;
            QTRY_VERIFY(fillsClientArea(screen, shown));
            QCoreApplication::processEvents();
            const auto labels = shown->findChildren<QLabel*>();
            QVERIFY(labels.size() > 5);
            for (const QLabel* label : labels) {
                QVERIFY(!label->accessibleName().isEmpty());
                if (label->textFormat() == Qt::PlainText) QCOMPARE(label->accessibleName(), label->text());
                const QString family = QFontInfo(label->font()).family();
                QVERIFY2(QFontDatabase::writingSystems(family).contains(QFontDatabase::Greek), qPrintable(family));
                const int needed = label->wordWrap() ? label->heightForWidth(label->width())
                                                     : label->sizeHint().height();
                QVERIFY2(label->height() >= needed, qPrintable(label->text().left(40)));
                QVERIFY2(label->width() >= label->minimumSizeHint().width(), qPrintable(label->text().left(40)));
            }
        }
    }
};

QTEST_MAIN(TestHistoryScreen)
#include "test_history_screen.moc"
