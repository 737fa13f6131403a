#include "ui/worksheet.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <algorithm>

#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"

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

constexpr double kWidthMm = 180.0;   // A4 less 15 mm each side
constexpr double kHeightMm = 267.0;  // A4 less 15 mm top and bottom
constexpr double kRowMm = 6.0;
constexpr double kBodyPt = 10.0;
constexpr int kCellFlags = Qt::AlignCenter | Qt::TextWordWrap;

// Lays the sheet out top to bottom in millimetres. A measuring pass paints
// nothing and only counts the height, so that the room left on the page
// can go to the answers.
class SheetPen {
public:
    SheetPen(QPainter* painter, QPagedPaintDevice* device, double dpi) : p_(painter), device_(device), dpi_(dpi) {}
    double mm(double v) const { return v * dpi_ / 25.4; }
    double used() const { return total_; }

    void text(const QString& text, double points, bool bold = false, double indentMm = 0.0,
              const QColor& colour = Qt::black) {
        QFont font = designedRoleFont(FontRole::Caption, points, bold);
        const QRectF area(mm(indentMm), 0, mm(kWidthMm - indentMm), mm(kHeightMm));
        const double height =
            QFontMetricsF(font, device_).boundingRect(area, Qt::TextWordWrap, text).height() * 25.4 / dpi_;
        room(height);
        if (p_) {
            p_->setFont(font);
            p_->setPen(colour);
            p_->drawText(area.translated(0, mm(y_)), Qt::TextWordWrap, text);
        }
        advance(height + 0.8);
    }
    void gap(double heightMm) { advance(std::min(heightMm, kHeightMm - y_)); }
    // Ruled lines to write on.
    void lines(int count) {
        for (int k = 0; k < count; ++k) {
            room(kRowMm);
            advance(kRowMm);
            if (p_) {
                p_->setPen(QPen(palette::worksheet::rule, mm(0.2)));
                p_->drawLine(QPointF(mm(6.0), mm(y_)), QPointF(mm(kWidthMm), mm(y_)));
            }
        }
        advance(2.0);
    }
    void blanks(const QStringList& labels) {
        room(kRowMm + 2.0);
        const double width = kWidthMm / labels.size();
        for (int k = 0; k < labels.size(); ++k) {
            if (!p_) continue;
            p_->setFont(designedRoleFont(FontRole::Caption, kBodyPt));
            p_->setPen(Qt::black);
            const QRectF cell(mm(k * width), mm(y_), mm(width - 4.0), mm(kRowMm));
            const QRectF label = p_->boundingRect(cell, Qt::AlignLeft | Qt::AlignBottom, labels[k]);
            p_->drawText(cell, Qt::AlignLeft | Qt::AlignBottom, labels[k]);
            p_->drawLine(QPointF(label.right() + mm(2.0), cell.bottom()), QPointF(cell.right(), cell.bottom()));
        }
        advance(kRowMm + 3.0);
    }
    // A grid with the heads in bold; a row is as tall as its longest cell
    // wrapped, and never shorter than a line to write on.
    void table(const QStringList& heads, const QList<QStringList>& rows) {
        if (heads.isEmpty()) return;
        const double column = kWidthMm / heads.size();
        for (int r = -1; r < rows.size(); ++r) {
            const QFont font = designedRoleFont(FontRole::Caption, kBodyPt, r < 0);
            const QStringList& cells = r < 0 ? heads : rows[r];
            double height = kRowMm;
            for (const QString& text : cells) {
                const QRectF box(0, 0, mm(column - 2.0), mm(kHeightMm));
                height = std::max(
                    height,
                    QFontMetricsF(font, device_).boundingRect(box, kCellFlags, text).height() * 25.4 / dpi_ + 2.0);
            }
            room(height);
            if (p_) {
                p_->setFont(font);
                p_->setPen(QPen(Qt::black, mm(0.25)));
                for (int c = 0; c < heads.size(); ++c) {
                    const QRectF cell(mm(c * column), mm(y_), mm(column), mm(height));
                    p_->drawRect(cell);
                    if (c < cells.size()) p_->drawText(cell.adjusted(mm(1.0), 0, -mm(1.0), 0), kCellFlags, cells[c]);
                }
            }
            advance(height);
        }
        advance(2.0);
    }

private:
    // Starts a new page when what comes does not fit on this one.
    void room(double heightMm) {
        if (y_ + heightMm <= kHeightMm || y_ == 0.0) return;
        if (p_) device_->newPage();
        total_ += kHeightMm - y_;
        y_ = 0.0;
    }
    void advance(double heightMm) {
        y_ += heightMm;
        total_ += heightMm;
    }

    QPainter* p_;
    QPagedPaintDevice* device_;
    double dpi_;
    double y_ = 0.0;
    double total_ = 0.0;
};

void layOut(SheetPen& pen, const Worksheet& sheet, int answerLines) {
    pen.text(QStringLiteral("Refraction  Διάθλαση — worksheet  φύλλο εργασίας"), kBodyPt, false, 0.0, Qt::darkGray);
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
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                                     QPageLayout::Millimeter));
    const double dpi = device.logicalDpiY();
    // The room left on one page goes to the answers: two ruled lines each
    // at least, five at most.
    SheetPen measure(nullptr, &device, dpi);
    layOut(measure, sheet, 0);
    const auto questions = std::max<qsizetype>(1, sheet.questions.size());
    const int answerLines = std::clamp(static_cast<int>((kHeightMm - measure.used()) / questions / kRowMm) - 1, 2, 5);

    QPainter painter;
    if (!painter.begin(&device)) return false;
    SheetPen pen(&painter, &device, dpi);
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
