#include <QDir>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

#include <functional>

#include "analysis/errors_screen.h"
#include "analysis/graph_screens.h"
#include "app/command_line.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/fonts.h"
#include "core/version.h"
#include "history/data_screen_opener.h"
#include "history/inpdat_screen.h"
#include "models/epiloges_screen.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/list_of_data_screen.h"
#include "test_support.h"
#include "ui/forms.h"
#include "ui/help_pages.h"
#include "ui/help_window.h"

namespace {

template <class Screen>
QWidget& screen() {
    return form<Screen>();
}

// Every screen of the program, opened the way a pupil reaches it (nothing to
// do: an earlier step opened it too).
const std::vector<std::pair<std::function<void()>, QWidget& (*)()>>& screenOpeners() {
    static const std::vector<std::pair<std::function<void()>, QWidget& (*)()>> openers{
        {[] { Main(); }, screen<Diathlasimeleti>},
        {[] { form<Diathlasimeleti>().Command1_Click(); }, screen<Hmiky>},
        {[] { form<Hmiky>().listOfData_Click(); }, screen<ListOfData>},
        {[] { form<Hmiky>().findChild<QAction*>("Optimize")->trigger(); }, screen<Errors>},
        {openDataScreen, screen<Inpdat>},
        {[] { form<Inpdat>().Ptolemy_Click(); }, screen<Incref>},
        {[] {}, screen<Analysis>},
        {openPtolemyInstrument, screen<Ptolemaios>},
        {[] {}, screen<Emfanisi>},
        {openPtolemyDataFitting, screen<Ptolkam>},
        {openAlHaythamInstrument, screen<Xaithamos>},
        {[] { form<Xaithamos>().svise_Click(); }, screen<Alhazencheck>},
        {showInterpretationScreens, screen<Rixo>},
        {[] {}, screen<Rixotext>},
        {[] {}, screen<Somata>},
        {[] { form<Rixo>().epiloges_Click(); }, screen<Epiloges>},
        {[] { form<Diathlasimeleti>().Command4_Click(); }, screen<Storiopt>},
    };
    return openers;
}

QString pageText(const QString& page) {
    QFile file(QStringLiteral(":/help/") + page);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList allPages() { return QDir(QStringLiteral(":/help")).entryList({QStringLiteral("*.md")}, QDir::Files); }

}  // namespace

class TestHelp : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        installFontSubstitutions();
        installHelpEverywhere(*QCoreApplication::instance());
    }

    // F1 on each screen opens a page written for that screen: the page
    // quotes the window's own title, and no two screens share a page.
    void f1OpensEachScreensOwnPage() {
        ScreenTestScope scope;
        QSet<QString> seen;
        // Screens whose title is set by whoever draws on them.
        const QStringList retitled{QStringLiteral("incref"), QStringLiteral("analysis")};
        for (const auto& [open, opened] : screenOpeners()) {
            open();
            QWidget& screen = opened();
            screen.show();
            QVERIFY(QTest::qWaitForWindowExposed(&screen));
            QApplication::setActiveWindow(&screen);
            QTest::keyClick(&screen, Qt::Key_F1);
            HelpWindow& help = form<HelpWindow>();
            const QString page = help.currentPage();
            QVERIFY2(help.isVisible() && page != helpContentsPage(), qPrintable(screen.objectName() + " has no page"));
            QVERIFY2(!seen.contains(page), qPrintable(page + " serves two screens"));
            seen.insert(page);
            QVERIFY2(!help.browser()->toPlainText().isEmpty(), qPrintable(page));
            if (!retitled.contains(screen.objectName()))
                QVERIFY2(pageText(page).contains(QStringLiteral("“") + screen.windowTitle() + QStringLiteral("”")),
                         qPrintable(page + " does not name " + screen.windowTitle()));
            help.hide();
        }
        // Every window the program opened on the way has a page of its own.
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->windowType() == Qt::Window && w != &form<HelpWindow>() && !w->objectName().isEmpty())
                QVERIFY2(helpPageFor(w) != helpContentsPage(), qPrintable(w->objectName() + " has no page"));
    }

    // Each link of each page, as the help window reads it, leads to a page
    // that exists; and every page is reachable from the contents.
    void linksResolve() {
        ScreenTestScope scope;
        HelpWindow& help = form<HelpWindow>();
        QSet<QString> linkedFromContents;
        for (const QString& page : allPages()) {
            help.showPage(page);
            QTextDocument* doc = help.browser()->document();
            int links = 0;
            for (QTextBlock block = doc->begin(); block.isValid(); block = block.next())
                for (auto it = block.begin(); !it.atEnd(); ++it) {
                    const QString href = it.fragment().charFormat().anchorHref();
                    if (href.isEmpty()) continue;
                    const QUrl target = help.browser()->source().resolved(QUrl(href));
                    if (target.scheme() == QLatin1String("https")) continue;
                    ++links;
                    QVERIFY2(QFile::exists(QStringLiteral(":") + target.path()),
                             qPrintable(page + " links to missing " + href));
                    if (page == helpContentsPage()) linkedFromContents.insert(target.fileName());
                }
            QVERIFY2(links > 0, qPrintable(page + " leads nowhere"));
        }
        for (const QString& page : allPages())
            if (page != helpContentsPage())
                QVERIFY2(linkedFromContents.contains(page), qPrintable(page + " is not in the contents"));
        // Following a link and coming back.
        help.showPage(QStringLiteral("bench.md"));
        help.browser()->setSource(QUrl(QStringLiteral("mean_error.md")));
        QCOMPARE(help.currentPage(), QStringLiteral("mean_error.md"));
        help.browser()->backward();
        QCOMPARE(help.currentPage(), QStringLiteral("bench.md"));
    }

    // Each screen's page tells what the screen shows, how to use it and
    // what to try, in that order, in English and then in Greek.
    void pagesHaveBothLanguagesInOrder() {
        const QStringList headings{"## What it shows", "## How to use it",       "## What to try",
                                   "## Τι δείχνει",    "## Πώς χρησιμοποιείται", "## Τι να δοκιμάσετε"};
        for (const HelpPage& p : helpPages()) {
            const QString text = pageText(QString::fromLatin1(p.page));
            qsizetype at = 0;
            for (const QString& h : headings)
                QVERIFY2((at = text.indexOf(h, at)) >= 0, qPrintable(QString::fromLatin1(p.page) + ": " + h));
        }
    }

    // The main menu's "?" opens the contents, its context menu also the
    // About box, which names the version, the licence and the fonts.
    void mainMenuReachesContentsAndAbout() {
        ScreenTestScope scope;
        Main();
        Diathlasimeleti& menu = form<Diathlasimeleti>();
        menu.show();
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        auto* question = menu.findChild<QToolButton*>(QStringLiteral("helpButton"));
        menu.resize(700, 500);  // it keeps to the corner
        QVERIFY(question && question->isVisible() && question->geometry().right() == menu.width() - 5);
        question->click();
        QCOMPARE(form<HelpWindow>().currentPage(), helpContentsPage());

        QAction* about = menu.findChild<QAction*>(QStringLiteral("aboutAction"));
        QVERIFY(about && menu.contextMenuPolicy() == Qt::ActionsContextMenu);
        about->trigger();
        QCOMPARE(scope.dialogs().messages.size(), 1);
        const QString text = scope.dialogs().messages.front();
        QVERIFY(text.contains(QStringLiteral("Διάθλαση")));
        QVERIFY(text.contains(QStringLiteral(REFRACTION_VERSION)));
        QVERIFY(text.contains(QStringLiteral("GPL-3.0-or-later")));
        QVERIFY(text.contains(roleFamily(FontRole::Caption)));
    }

    // --version and --help answer in one line; the toolkit's own options start the program.
    void commandLine() {
        const char* version[] = {"refraction", "--version"};
        const char* help[] = {"refraction", "-platform", "offscreen", "--help"};
        const char* toolkit[] = {"refraction", "-platform", "offscreen"};
        const auto v = answerCommandLine(2, version), h = answerCommandLine(4, help);
        QVERIFY(v && v->line == "refraction " REFRACTION_VERSION);
        QVERIFY(h && !QString::fromStdString(h->line).contains(QLatin1Char('\n')));
        QVERIFY(!answerCommandLine(3, toolkit));
    }
};

QTEST_MAIN(TestHelp)
#include "test_help.moc"
