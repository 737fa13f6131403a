#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

#include <functional>
#include <map>

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
#include "canvas/canvas.h"
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
#include "ui/help_search.h"
#include "ui/help_window.h"
#include "ui/lesson_links.h"
#include "ui/worksheet.h"

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

// Everything a window shows in words: its drawings' summaries and printed
// texts, its labels, lists and tables.
QString shownText(const QWidget& window) {
    QStringList texts;
    for (const Canvas* c : window.findChildren<Canvas*>()) texts << c->summary() << c->printedTexts();
    for (const QLabel* l : window.findChildren<QLabel*>()) texts << l->text();
    for (const QListWidget* l : window.findChildren<QListWidget*>())
        for (int k = 0; k < l->count(); ++k) texts << l->item(k)->text();
    for (const QTableWidget* t : window.findChildren<QTableWidget*>())
        for (int r = 0; r < t->rowCount(); ++r)
            for (int c = 0; c < t->columnCount(); ++c)
                if (const QTableWidgetItem* item = t->item(r, c)) texts << item->text();
    return texts.join(QLatin1Char('\n'));
}

QString pdfText(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    return p.waitForFinished(30000) ? QString::fromUtf8(p.readAllStandardOutput()) : QString();
}

// The lessons' pages, and the "show me" steps each one links.
QStringList lessonPages() { return searchablePages().filter(QStringLiteral("../lessons/")); }
QStringList showMeLinks(const QString& page) {
    static const QRegularExpression link(QStringLiteral(R"(\(show:([a-z0-9-]+)\))"));
    QStringList names;
    for (auto it = link.globalMatch(helpPageSource(page)); it.hasNext();) names << it.next().captured(1);
    return names;
}

// The pages a search for the words finds.
QStringList found(const QString& words) {
    QStringList pages;
    for (const HelpMatch& m : searchHelp(words)) pages << m.page;
    return pages;
}

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
        for (const QString& page : searchablePages()) {
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
                    if (target.scheme() == QLatin1String("show")) {
                        QVERIFY2(showMeNames().contains(target.path()), qPrintable(page + " shows unknown " + href));
                        continue;
                    }
                    QVERIFY2(QFile::exists(QStringLiteral(":") + target.path()),
                             qPrintable(page + " links to missing " + href));
                    if (page == helpContentsPage()) linkedFromContents.insert(helpPageOf(target));
                }
            QVERIFY2(links > 0, qPrintable(page + " leads nowhere"));
        }
        for (const QString& page : searchablePages())
            if (page != helpContentsPage())
                QVERIFY2(linkedFromContents.contains(page), qPrintable(page + " is not in the contents"));
        // Following a link and coming back.
        help.showPage(QStringLiteral("bench.md"));
        help.browser()->setSource(QUrl(QStringLiteral("mean_error.md")));
        QCOMPARE(help.currentPage(), QStringLiteral("mean_error.md"));
        help.browser()->backward();
        QCOMPARE(help.currentPage(), QStringLiteral("bench.md"));
    }

    // Words in English and Greek, in any case, with or without accents, find
    // the pages about them; each match names the line it was found in.
    void searchFindsPagesByWords() {
        const QString bench = QStringLiteral("bench.md"), panel = QStringLiteral("wave_panel.md"),
                      tir = QStringLiteral("../lessons/critical_angle.md");
        for (const QString& words :
             {QStringLiteral("critical"), QStringLiteral("CRITICAL angle"), QStringLiteral("κρίσιμη"),
              QStringLiteral("ΚΡΙΣΙΜΗ ΓΩΝΙΑ"), QStringLiteral("κρισιμη")}) {
            const QStringList pages = found(words);
            QVERIFY2(pages.contains(bench) && pages.contains(panel) && pages.contains(tir), qPrintable(words));
        }
        QVERIFY(found(QStringLiteral("Πτολεμαίος")).contains(QStringLiteral("../lessons/ptolemy_to_snell.md")));
        QVERIFY(found(QStringLiteral("PROTRACTOR")).contains(QStringLiteral("../model.md")));
        QVERIFY(found(QStringLiteral("fermat ελάχιστου")).contains(QStringLiteral("../lessons/why_light_bends.md")));
        QVERIFY(found(QStringLiteral("   ")).isEmpty());
        QVERIFY(found(QStringLiteral("critical zzzz")).isEmpty());
        const HelpMatch first = searchHelp(QStringLiteral("ολική ανάκλαση")).front();
        QVERIFY2(foldedForSearch(first.line).contains(QStringLiteral("ολικη ανακλαση")), qPrintable(first.line));
        QVERIFY(!first.line.contains(QLatin1String("**")) && !first.title.isEmpty());

        // In the window: the list shows each page with its line; Enter opens the first.
        ScreenTestScope scope;
        HelpWindow& help = form<HelpWindow>();
        help.showPage(helpContentsPage());
        named<QLineEdit>(help, "helpSearch")->setText(QStringLiteral("κρίσιμη"));
        auto* results = named<QListWidget>(help, "helpResults");
        QVERIFY(!results->isHidden() && results->count() == searchHelp(QStringLiteral("κρίσιμη")).size());
        QVERIFY(results->item(0)->text().contains(QStringLiteral("ρίσιμ")));
        QTest::keyClick(named<QLineEdit>(help, "helpSearch"), Qt::Key_Return);
        QCOMPARE(help.currentPage(), searchHelp(QStringLiteral("κρίσιμη")).front().page);
        help.activateWindow();
        named<QLineEdit>(help, "helpSearch")->setFocus();
        QTest::keyClick(named<QLineEdit>(help, "helpSearch"), Qt::Key_Down);
        QTest::keyClick(results, Qt::Key_Down);
        QTest::keyClick(results, Qt::Key_Return);
        QCOMPARE(help.currentPage(), searchHelp(QStringLiteral("κρίσιμη"))[1].page);
        help.search(QString());
        QVERIFY(results->isHidden());
    }

    // Each "show me" link of a lesson, followed as a teacher clicks it, opens
    // the screen its step names showing what the lesson says it will.
    void showMeLinksOpenWhatTheLessonSays() {
        const QString kShowMe = QStringLiteral("Show me  Δείξε μου");
        ScreenTestScope scope;
        Main();
        using Expect = std::pair<QWidget& (*)(), QStringList>;
        const std::map<QString, Expect> expected{
            {"bench-30", {screen<Hmiky>, {"in the block 19.47°"}}},
            {"bench-mystery", {screen<Hmiky>, {"n = ?"}}},
            {"bench-rays",
             {screen<ListOfData>, {"6.65", "13.18", "19.47", "25.37", "30.71", "35.26", "38.79", "41.04"}}},
            {"bench-inside-30", {screen<Hmiky>, {"leaves at 48.59°"}}},
            {"bench-inside-60", {screen<Hmiky>, {"incidence 60", "total reflection"}}},
            {"bench-right-rays",
             {screen<ListOfData>, {"15.10", "30.87", "48.59", "74.62", "total reflection", "0.6667"}}},
            {"bench-critical", {screen<Hmiky>, {"critical=41.81"}}},
            {"data-from-bench", {screen<Analysis>, {"n = 1.5000 ± 0.0001, r² = 1.0000"}}},
            {"data-typed", {screen<Analysis>, {"n = 1.4885 ± 0.0068, r² = 0.9999"}}},
            {"data-ptolemy-proportional", {screen<Incref>, {"PTOLEMY", "refraction = 2/3 incidence"}}},
            {"data-ptolemy-kepler", {screen<Incref>, {"PTOLEMY", "Kepler's model, k = 0.60"}}},
            {"data-ptolemy-snell", {screen<Incref>, {"PTOLEMY", "Snell's law, n = 1.519"}}},
            {"ptolemy-fitting", {screen<Ptolkam>, {"r = 0.75", "80° → 47.6°"}}},
            {"waves-glass-40",
             {screen<Rixo>,
              {"refraction 25.37°", "= 27.78", "= 72.22", "R = 7.72 %   T = 92.28 %", "R = 1.43 %", "θB = 56.31°"}}},
            {"waves-past-critical", {screen<Rixo>, {"criticalγωνία =30.00", "TOTAL REFLECTION"}}},
            {"corpuscles-newton", {screen<Somata>, {"Newton's model with one layer", "n2/n1 = 1.50, incidence 40°"}}},
            {"fermat-minimum",
             {screen<Somata>, {"Fermat's law, 100.00 above the boundary and 66.67 below", "Least time"}}},
            {"fermat-descartes", {screen<Somata>, {"Descartes's law, 100.00 above the boundary and 150.00 below"}}},
        };
        HelpWindow& help = form<HelpWindow>();
        QSet<QString> followed;
        for (const QString& page : lessonPages())
            for (const QString& name : showMeLinks(page)) {
                help.showPage(page);
                help.followLink(QUrl(QStringLiteral("show:") + name));
                // A screen may answer with a message of its own; the link's
                // own message would mean it could not be followed.
                QVERIFY2(!scope.dialogs().messageTitles.contains(kShowMe), qPrintable(name));
                QVERIFY2(expected.count(name), qPrintable(name));
                QWidget& shown = expected.at(name).first();
                const QString words = shownText(shown) + scope.dialogs().messages.join(QLatin1Char('\n'));
                scope.dialogs().messages.clear();
                scope.dialogs().messageTitles.clear();
                if (qEnvironmentVariableIsSet("LESSON_DUMP")) qDebug().noquote() << name << words;
                QVERIFY2(shown.isVisible(), qPrintable(name));
                // What the screen shows, and its figures are the lesson's.
                static const QRegularExpression decimal(QStringLiteral(R"(\d+\.\d+)"));
                for (const QString& w : expected.at(name).second) {
                    QVERIFY2(words.contains(w), qPrintable(name + " does not show " + w + ":\n" + words));
                    for (auto it = decimal.globalMatch(w); it.hasNext();)
                        QVERIFY2(helpPageSource(page).contains(it.next().captured()), qPrintable(page + ": " + w));
                }
                followed.insert(name);
            }
        for (const QString& name : showMeNames())
            QVERIFY2(followed.contains(name), qPrintable(name + " is in no lesson"));
        // A link that cannot be followed says so, in both languages.
        QVERIFY(!followShowMe(QStringLiteral("nowhere")));
        QCOMPARE(scope.dialogs().messageTitles.last(), kShowMe);
        named<QAction>(form<Hmiky>(), "kritikal")->setEnabled(false);
        QVERIFY(!followShowMe(QStringLiteral("bench-critical")));
        QCOMPARE(scope.dialogs().messages.size(), 2);
        QVERIFY(bilingual(scope.dialogs().messages.back()) && scope.dialogs().messages.back().contains("kritikal"));
    }

    // Each lesson's worksheet is one A4 page with the program's name, the
    // title, the blanks, the table, every step and question, and no answer.
    void worksheetsHoldAllButTheAnswers() {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is needed to read the worksheets back");
        ScreenTestScope scope;
        QTemporaryDir dir;
        HelpWindow& help = form<HelpWindow>();
        auto* button = named<QPushButton>(help, "helpWorksheet");
        for (const QString& page : lessonPages()) {
            help.showPage(page);
            const QString source = helpPageSource(page);
            const std::optional<Worksheet> sheet = worksheetOf(source);
            QCOMPARE(button->isEnabled(), sheet.has_value());
            if (!sheet) continue;
            QVERIFY(sheet->steps.size() >= 3 && sheet->questions.size() >= 3 && sheet->tableRows.size() >= 3);
            const QString pdf = dir.filePath(QFileInfo(page).baseName() + ".pdf");
            scope.dialogs().saveFiles.push_back(pdf);
            named<QAction>(help, "worksheetPdf")->trigger();
            const QString text = pdfText(pdf);
            if (qEnvironmentVariableIsSet("LESSON_DUMP")) QFile::copy(pdf, "/tmp/" + QFileInfo(pdf).fileName());
            QCOMPARE(text.count(QLatin1Char('\f')), 1);  // one page
            const QString words = text.simplified();
            QStringList wanted{sheet->title, "Refraction  Διάθλαση", "Name  Όνομα", "Class  Τμήμα", "Date  Ημερομηνία"};
            wanted << sheet->tableHeads << sheet->steps << sheet->questions;
            for (const QString& w : wanted)
                for (const QString& word : w.simplified().split(QLatin1Char(' ')))
                    QVERIFY2(words.contains(word), qPrintable(page + " lacks " + word));
            // The teacher's part: its answers' opening words appear nowhere.
            const QString teacher =
                source.section(QStringLiteral("## For the teacher"), 1).section(QStringLiteral("---"), 0, 0);
            static const QRegularExpression answer(QStringLiteral(R"(\n\d\. ([^\n]+))"));
            int answers = 0;
            for (auto it = answer.globalMatch(teacher); it.hasNext(); ++answers) {
                const QStringList opening = it.next().captured(1).split(QLatin1Char(' ')).mid(0, 3);
                if (opening.size() == 3)
                    QVERIFY2(!words.contains(opening.join(' ')), qPrintable(page + " shows an answer"));
            }
            QVERIFY(answers >= 3);
            static const QRegularExpression figure(QStringLiteral(R"(\d+\.\d\d+)"));
            for (auto it = figure.globalMatch(teacher.section(QStringLiteral("**Answers.**"), 1)); it.hasNext();)
                QVERIFY2(!words.contains(it.next().captured()), qPrintable(page + " gives away an answer"));
        }
        // Printing paints the same sheet; a file that cannot be written is
        // left unmade, with a message.
        help.showPage(lessonPages().last());
        QVERIFY(!help.saveWorksheet(dir.filePath(QStringLiteral("missing/sheet.pdf"))));
        QVERIFY(bilingual(scope.dialogs().messages.last()) && !QFile::exists(dir.filePath("missing")));
        scope.dialogs().printToPdf = dir.filePath(QStringLiteral("printed.pdf"));
        named<QAction>(help, "worksheetPrint")->trigger();
        QCOMPARE(pdfText(scope.dialogs().printToPdf).count(QLatin1Char('\f')), 1);
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
        named<QAction>(menu, "helpLessonsAction")->trigger();
        QCOMPARE(form<HelpWindow>().currentPage(), QStringLiteral("../lessons/index.md"));

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
