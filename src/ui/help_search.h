#pragma once
#include <QList>
#include <QString>
#include <QStringList>

// Searching the help: every page of the help window (the screens' pages,
// the lessons and the model) by words, in English and in Greek. Case and
// accents do not count, nor Greek final sigma: "κρίσιμη" finds "ΚΡΙΣΙΜΗ".

// A page is named as the help window names it: a path relative to the
// screens' pages ("bench.md", "../lessons/critical_angle.md").
struct HelpMatch {
    QString page;
    QString title;  // the page's first heading
    QString line;   // the line of the page that holds the most of the words, as plain text
};

// Lower case without accents or diacritics, final sigma as σ.
QString foldedForSearch(const QString& text);

// Every page the help window shows, in the order of the contents.
QStringList searchablePages();

// The pages that hold every word of the query (in any order, anywhere on
// the page), in the order of the contents; nothing for an empty query.
QList<HelpMatch> searchHelp(const QString& query);

// A page's Markdown source (empty if there is no such page).
QString helpPageSource(const QString& page);

// A Markdown line as a reader sees it: no heading marks, emphasis, list
// marks or link targets.
QString plainMarkdownLine(const QString& line);
