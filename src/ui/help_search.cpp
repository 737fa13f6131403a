#include "ui/help_search.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

#include "ui/help_pages.h"

namespace {

QStringList pagesIn(const QString& folder, const QString& prefix, const QStringList& first) {
    QStringList pages;
    for (const QString& name : first)
        if (QFile::exists(QStringLiteral(":/") + folder + QLatin1Char('/') + name)) pages << prefix + name;
    const QStringList all =
        QDir(QStringLiteral(":/") + folder).entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name);
    for (const QString& name : all)
        if (!first.contains(name)) pages << prefix + name;
    return pages;
}

QString titleOf(const QString& source) {
    for (const QString& line : source.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("# "))) return line.mid(2).trimmed();
    return {};
}

}  // namespace

QString foldedForSearch(const QString& text) {
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString folded;
    folded.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() == QChar::Mark_NonSpacing) continue;
        folded += c == QChar(0x03C2) ? QChar(0x03C3) : c.toLower();  // ς as σ
    }
    return folded;
}

QStringList searchablePages() {
    QStringList first{helpContentsPage()};
    for (const HelpPage& p : helpPages()) first << QString::fromLatin1(p.page);
    QStringList pages = pagesIn(QStringLiteral("help"), QString(), first);
    pages << pagesIn(QStringLiteral("lessons"), QStringLiteral("../lessons/"), {QStringLiteral("index.md")});
    pages << QStringLiteral("../model.md");
    return pages;
}

QString helpPageSource(const QString& page) {
    QFile file(QStringLiteral(":") + QUrl(helpUrl(page)).path());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString plainMarkdownLine(const QString& line) {
    static const QRegularExpression link(QStringLiteral(R"(\[([^\]]*)\]\([^)]*\))"));
    static const QRegularExpression lead(QStringLiteral(R"(^\s*(#+|[-*]|\d+\.|\|)\s*)"));
    QString plain = line;
    plain.replace(link, QStringLiteral("\\1"));
    plain.remove(lead);
    plain.remove(QStringLiteral("**"));
    plain.remove(QLatin1Char('`'));
    plain.replace(QLatin1Char('|'), QStringLiteral("  "));
    return plain.simplified();
}

QList<HelpMatch> searchHelp(const QString& query) {
    const QStringList words =
        foldedForSearch(query).split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    QList<HelpMatch> matches;
    if (words.isEmpty()) return matches;
    for (const QString& page : searchablePages()) {
        const QString source = helpPageSource(page);
        const QString folded = foldedForSearch(source);
        if (!std::all_of(words.begin(), words.end(), [&](const QString& w) { return folded.contains(w); })) continue;
        // The line with the most of the words; the first of equals.
        QString best;
        int bestCount = 0;
        for (const QString& line : source.split(QLatin1Char('\n'))) {
            const QString l = foldedForSearch(line);
            const auto count = static_cast<int>(
                std::count_if(words.begin(), words.end(), [&](const QString& w) { return l.contains(w); }));
            if (count > bestCount) {
                bestCount = count;
                best = line;
            }
        }
        matches.append({page, titleOf(source), plainMarkdownLine(best)});
    }
    return matches;
}
