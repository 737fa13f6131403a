#include "history/lab_report.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/page_pen.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"
#include "history/data_plots.h"

namespace {

// The report's two columns on the page, in millimetres.
constexpr double kGapMm = 6.0;
constexpr double kTableMm = 56.0;
constexpr int kResolution = 300;

void setFont(QPainter& p, double points, bool bold) { p.setFont(designedRoleFont(FontRole::Caption, points, bold)); }

// A graph replayed into a box of the page, keeping the canvas's proportions.
double drawGraph(PagePen& page, const Canvas& canvas, const QString& caption, double leftMm, double topMm,
                 double widthMm) {
    const QSizeF size = QSizeF(canvas.size()).expandedTo(QSizeF(1, 1));
    const double heightMm = widthMm * size.height() / size.width();
    QPainter& p = *page.painter();
    p.save();
    p.translate(page.mm(leftMm), page.mm(topMm));
    const double scale = page.mm(widthMm) / size.width();
    p.scale(scale, scale);
    renderAsDesigned(canvas, p);
    p.restore();
    p.setPen(palette::data::reportRule);
    p.drawRect(QRectF(page.mm(leftMm), page.mm(topMm), page.mm(widthMm), page.mm(heightMm)));
    setFont(p, 8.0, false);
    p.setPen(Qt::black);
    p.drawText(QRectF(page.mm(leftMm), page.mm(topMm + heightMm + 1.0), page.mm(widthMm), page.mm(8.0)),
               Qt::AlignHCenter | Qt::TextWordWrap, caption);
    return heightMm + 9.0;
}

// An angle as the pupil or the table gave it: the shortest text that reads
// back as the same single-precision number.
QString angleText(float value) {
    char buffer[32];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return ec == std::errc() ? QString::fromLatin1(buffer, end - buffer) : QString();
}

QString resultLine(const LabReport& r) {
    const QByteArray formatBytes = r.indexFormat.isEmpty() ? QByteArray("0.000") : r.indexFormat.toLatin1();
    if (!r.fit.index) return QStringLiteral("No index could be fitted.  Δεν προέκυψε δείκτης διάθλασης.");
    const QString quality = fitQualityText(r.fit, formatBytes.constData());
    return QStringLiteral("Index of refraction  Δείκτης διάθλασης:  ") + quality +
           QStringLiteral("   (%1 pairs fitted  ζεύγη στην προσαρμογή: %1)").arg(r.fit.fittedPairs);
}

// The table in a column of the page: row, both angles and their sines;
// a pair left out of the fit (Witelo's beyond 90°) is starred.
void drawTable(PagePen& page, const LabReport& r, double leftMm, double topMm) {
    QPainter& p = *page.painter();
    constexpr double kRowMm = 4.6;
    const double columns[] = {0.0, 6.0, 17.0, 30.0, 43.0};
    const QStringList heads = {QStringLiteral("#"), QStringLiteral("i (°)"), QStringLiteral("r (°)"),
                               QStringLiteral("sin i"), QStringLiteral("sin r")};
    auto cell = [&](int column, double y, const QString& text) {
        p.drawText(QRectF(page.mm(leftMm + columns[column]), page.mm(y), page.mm(14.0), page.mm(kRowMm)),
                   Qt::AlignLeft | Qt::AlignVCenter, text);
    };
    setFont(p, 8.0, true);
    p.setPen(Qt::black);
    for (int c = 0; c < heads.size(); ++c) cell(c, topMm, heads[c]);
    p.drawLine(QPointF(page.mm(leftMm), page.mm(topMm + kRowMm + 0.5)),
               QPointF(page.mm(leftMm + 56.0), page.mm(topMm + kRowMm + 0.5)));
    setFont(p, 8.0, false);
    bool anyLeftOut = false;
    double y = topMm + kRowMm + 1.0;
    for (std::size_t k = 0; k < r.pairs.size(); ++k, y += kRowMm) {
        const bool fitted = static_cast<int>(k) < r.fit.fittedPairs;
        anyLeftOut = anyLeftOut || !fitted;
        cell(0, y, QString::number(k + 1) + (fitted ? QString() : QStringLiteral("*")));
        cell(1, y, angleText(r.pairs[k].incidence));
        cell(2, y, angleText(r.pairs[k].refraction));
        if (k < r.fit.sinIncidence.size()) cell(3, y, fmt(r.fit.sinIncidence[k], "0.0000"));
        if (k < r.fit.sinRefraction.size()) cell(4, y, fmt(r.fit.sinRefraction[k], "0.0000"));
    }
    QString legend = QStringLiteral("i incidence πρόσπτωση, r refraction διάθλαση, in degrees σε μοίρες.");
    if (anyLeftOut) legend += QStringLiteral("\n* left out of the fit  εκτός προσαρμογής.");
    setFont(p, 7.5, false);
    p.drawText(QRectF(page.mm(leftMm), page.mm(y + 1.5), page.mm(56.0), page.mm(20.0)), Qt::TextWordWrap, legend);
}

void paintReport(QPdfWriter& writer, const LabReport& r) {
    QPainter painter(&writer);
    PagePen page(&painter, &writer);
    page.text(QStringLiteral("Lab report: the law of refraction"), 16.0, true);
    page.text(QStringLiteral("Αναφορά εργαστηρίου: ο νόμος της διάθλασης"), 14.0, true);
    page.text(QStringLiteral("Date  Ημερομηνία:  ") + r.date, 10.0);
    page.text(QStringLiteral("Data  Δεδομένα:  ") + r.source, 10.0);
    page.text(resultLine(r), 11.0, true);
    if (!r.mysteryResult.isEmpty()) page.text(r.mysteryResult, 10.0);
    if (!r.laws.isEmpty())
        page.text(QStringLiteral("Laws over the data  Νόμοι πάνω στα δεδομένα:  ") + r.laws.join(QStringLiteral("; ")),
                  10.0);

    // The two graphs one above the other on the left, as wide as lets both
    // fit on the page; the table in the column beside them.
    const double top = page.y() + 3.0;
    double graphWidth = PagePen::kWidthMm - kGapMm - kTableMm;
    const double room = (PagePen::kHeightMm - top) / 2.0 - 10.0;
    for (const Canvas* c : {r.angleGraph, r.sineGraph}) {
        if (!c) continue;
        const QSizeF size = QSizeF(c->size()).expandedTo(QSizeF(1, 1));
        graphWidth = std::min(graphWidth, room * size.width() / size.height());
    }
    double y = top;
    if (r.angleGraph) y += drawGraph(page, *r.angleGraph, r.angleGraphTitle, 0.0, y, graphWidth) + 1.0;
    if (r.sineGraph) drawGraph(page, *r.sineGraph, r.sineGraphTitle, 0.0, y, graphWidth);
    drawTable(page, r, PagePen::kWidthMm - kTableMm, top);
}

void configure(QPdfWriter& writer) {
    writer.setResolution(kResolution);
    setA4Page(writer);
    writer.setTitle(QStringLiteral("Lab report: the law of refraction  Αναφορά εργαστηρίου"));
    writer.setCreator(QStringLiteral("Refraction"));
}

}  // namespace

QByteArray labReportPdf(const LabReport& report) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) return {};
    {
        QPdfWriter writer(&buffer);
        configure(writer);
        paintReport(writer, report);
    }
    buffer.close();
    return bytes;
}
