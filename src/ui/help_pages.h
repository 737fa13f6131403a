#pragma once
#include <QString>
#include <QStringList>

class QUrl;
class QWidget;

// One help page for each screen, kept as Markdown in the program's
// resources under qrc:/help/. A screen is known by its object name, so a
// new screen only needs a line in the table and a page.
struct HelpPage {
    const char* screen;  // the window's object name
    const char* page;    // file under qrc:/help/
};

// Every screen's page, in the order of the contents page.
const QList<HelpPage>& helpPages();

// The contents page, reached from the main menu and from every page.
QString helpContentsPage();

// The page of the screen that holds the widget (its window, or the window
// that opened a dialog); the contents page for windows with no page.
QString helpPageFor(const QWidget* widget);

// The resource URL of a page, named by its path from the screens' pages
// ("bench.md" → qrc:/help/bench.md, "../lessons/index.md" →
// qrc:/lessons/index.md), and back: the lessons and the model page stand
// beside the screens' pages as they do among the installed documents.
QString helpUrl(const QString& page);
QString helpPageOf(const QUrl& url);
