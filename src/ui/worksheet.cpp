#include "ui/worksheet.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <algorithm>

#include "canvas/page_pen.h"
#include "canvas/palette.h"

namespace {

// ------------------------------------------------------------- reading ---

enum class Section { Other, Steps, Table, Questions };

Section sectionOf(const QString& heading) {
    for (const auto& [start, section] : {std::pair{"Steps", Section::Steps},
                                         {"Βήματα", Section::Steps},
                                         {"Table", Section::Table},
                                         {"Questions", Section::Questions},
                                         {"Ερωτήσεις", Section::Questions}})
        if (heading.startsWith(QString::fromUtf8(start))) return section;
    return Section::Other;
}

// A list item or table cell as the pupil reads it: no link targets, no
// emphasis marks, no "show me" links.
QString plain(QString text) {
    static const QRegularExpression showMe(QStringLiteral(R"(\[[^\]]*\]\(show:[^)]*\))"));
    static const QRegularExpression link(QStringLiteral(R"(\[([^\]]*)\]\([^)]*\))"));
    text.remove(showMe);  // a click on paper shows nothing
    text.replace(link, QStringLiteral("\\1"));
    text.remove(QStringLiteral("**"));
    text.remove(QLatin1Char('`'));
    return text.simplified();
}

struct Lists {
    QStringList english;
    QStringList greek;
    // Each English item with its Greek twin under it.
    QStringList paired() const {
        QStringList both;
        for (qsizetype k = 0; k < english.size(); ++k)
            both << (k < greek.size() ? english[k] + QLatin1Char('\n') + greek[k] : english[k]);
        return both;
    }
};

}  // namespace

std::optional<Worksheet> worksheetOf(const QString& markdown) {
    static const QRegularExpression item(QStringLiteral(R"(^(\d+\.|[-*])\s+(.*)$)"));
    Worksheet sheet;
    Lists steps, questions;
    Section section = Section::Other;
    QStringList* items = nullptr;
    bool greek = false;
    for (const QString& line : markdown.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("# ")) && sheet.title.isEmpty()) sheet.title = plain(line.mid(2));
        if (line.startsWith(QLatin1String("## "))) {
            const QString heading = line.mid(3).trimmed();
            section = sectionOf(heading);
            greek =
                heading.startsWith(QString::fromUtf8("Βήματα")) || heading.startsWith(QString::fromUtf8("Ερωτήσεις"));
            Lists* lists = section == Section::Steps ? &steps : section == Section::Questions ? &questions : nullptr;
            items = lists ? (greek ? &lists->greek : &lists->english) : nullptr;
            continue;
        }
        if (section == Section::Table && line.startsWith(QLatin1Char('|'))) {
            QStringList cells = line.trimmed().split(QLatin1Char('|'));
            cells = cells.mid(1, cells.size() - 2);
            for (QString& c : cells) c = plain(c);
            if (std::all_of(cells.begin(), cells.end(),
                            [](const QString& c) { return c.startsWith(QLatin1Char('-')); }))
                continue;
            (sheet.tableHeads.isEmpty() ? sheet.tableHeads : sheet.tableRows.emplace_back()) = cells;
            continue;
        }
        if (!items) continue;
        const QRegularExpressionMatch m = item.match(line);
        if (m.hasMatch())
            items->append(plain(m.captured(2)));
        else if (!items->isEmpty() && line.startsWith(QLatin1Char(' ')) && !line.trimmed().isEmpty())
            items->last() = plain(items->last() + QLatin1Char(' ') + line);
    }
    if (steps.english.isEmpty()) return std::nullopt;
    sheet.steps = steps.paired();
    sheet.questions = questions.paired();
    return sheet;
}

namespace {

// ------------------------------------------------------------ painting ---

constexpr double kHeightMm = PagePen::kHeightMm;
constexpr double kRowMm = PagePen::kRowMm;
constexpr double kBodyPt = PagePen::kBodyPoints;

void layOut(PagePen& pen, const Worksheet& sheet, int answerLines) {
    pen.text(QStringLiteral("Refraction  Διάθλαση — worksheet  φύλλο εργασίας"), kBodyPt, false, 0.0,
             palette::worksheet::heading);
    pen.text(sheet.title, 14.0, true);
    pen.gap(1.0);
    pen.blanks({QStringLiteral("Name  Όνομα"), QStringLiteral("Class  Τμήμα"), QStringLiteral("Date  Ημερομηνία")});
    pen.text(QStringLiteral("Steps  Βήματα"), 12.0, true);
    for (int k = 0; k < sheet.steps.size(); ++k)
        pen.text(QStringLiteral("%1. ").arg(k + 1) + sheet.steps[k], kBodyPt, false, 2.0);
    if (!sheet.tableHeads.isEmpty()) {
        pen.gap(1.0);
        pen.text(QStringLiteral("Table  Πίνακας"), 12.0, true);
        pen.table(sheet.tableHeads, sheet.tableRows);
    }
    pen.text(QStringLiteral("Questions  Ερωτήσεις"), 12.0, true);
    for (int k = 0; k < sheet.questions.size(); ++k) {
        pen.text(QStringLiteral("%1. ").arg(k + 1) + sheet.questions[k], kBodyPt, false, 2.0);
        pen.lines(answerLines);
    }
}

}  // namespace

bool paintWorksheet(QPagedPaintDevice& device, const Worksheet& sheet) {
    setA4Page(device);
    // The room left on one page goes to the answers: two ruled lines each
    // at least, five at most.
    PagePen measure(nullptr, &device);
    layOut(measure, sheet, 0);
    const auto questions = std::max<qsizetype>(1, sheet.questions.size());
    const int answerLines = std::clamp(static_cast<int>((kHeightMm - measure.used()) / questions / kRowMm) - 1, 2, 5);

    QPainter painter;
    if (!painter.begin(&device)) return false;
    PagePen pen(&painter, &device);
    layOut(pen, sheet, answerLines);
    return painter.end();
}

QByteArray worksheetPdf(const Worksheet& sheet) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) return {};
    QPdfWriter writer(&buffer);
    writer.setResolution(300);
    writer.setTitle(sheet.title);
    writer.setCreator(QStringLiteral("Refraction  Διάθλαση"));
    if (!paintWorksheet(writer, sheet)) return {};
    buffer.close();
    return bytes;
}
