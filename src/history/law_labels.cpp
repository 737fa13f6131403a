#include "history/law_labels.h"

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"

namespace {

// Pixels of ground around a label's text, and the step a crowded label
// moves by while looking for room.
constexpr double kGroundPixels = 2.0;
constexpr double kStepPixels = 3.0;

QRectF pixelRect(const Canvas& c, double x1, double y1, double x2, double y2) {
    return QRectF(c.toLogical(x1, y1), c.toLogical(x2, y2)).normalized();
}

struct Placed {
    QRectF text;    // widget pixels
    QRectF ground;  // widget pixels
    QRectF shown;   // the ground as the screen shows it, grown with its texts
};

// The label's text and ground in widget pixels at its own place; the
// canvas's font is left at the label's.
Placed measure(Canvas& c, const LawLabel& label) {
    c.setFontBold(true);
    c.setFontSize(label.points);
    double width = 0.0;
    for (const QString& line : label.lines) width = std::max(width, c.textWidth(line));
    const double down = c.userPerPixelY() < 0 ? -1.0 : 1.0;
    const double height = static_cast<double>(label.lines.size()) * c.textHeight();
    Placed p;
    p.text = pixelRect(c, label.x, label.top, label.x + width, label.top + down * height);
    p.ground = p.text.adjusted(-kGroundPixels, -kGroundPixels, kGroundPixels, kGroundPixels);
    // Given in user coordinates, where y may run upwards.
    if (const QRectF g = label.groundAtLeast.normalized(); !g.isEmpty())
        p.ground |= pixelRect(c, g.left(), g.top(), g.right(), g.bottom());
    p.shown = QRectF(p.ground.topLeft(), shownBoxSize(p.ground.size(), p.text.size()));
    return p;
}

bool clearOf(const QRectF& ground, const std::vector<QRectF>& taken) {
    return std::none_of(taken.begin(), taken.end(), [&](const QRectF& t) { return ground.intersects(t); });
}

// How far to move the label, in pixels, to the nearest place where its
// ground, as shown, stays on the canvas and clear of the texts taken:
// straight down or up where there is one, anywhere on the canvas otherwise
// (a long label at a large presentation size). Where no place is clear, the
// one that hides the fewest of them, the nearest among those.
QPointF freeShift(const Canvas& c, const Placed& own, const std::vector<QRectF>& taken) {
    const QRectF area(0.0, 0.0, c.width(), c.height());
    auto hidden = [&](QPointF shift) {
        const QRectF ground = own.shown.translated(shift);
        return std::count_if(taken.begin(), taken.end(), [&](const QRectF& t) { return ground.intersects(t); });
    };
    for (double shift = 0.0; shift <= c.height(); shift += kStepPixels)
        for (double s : {shift, -shift})
            if (const QRectF g = own.shown.translated(0.0, s); area.contains(g) && clearOf(g, taken)) return {0.0, s};
    QPointF best;
    auto fewest = hidden(best);
    double nearest = 0.0;
    // A coarser search on a large canvas, so that a redraw stays quick.
    const double step = std::max(2.0 * kStepPixels, std::max(area.width(), area.height()) / 80.0);
    for (double x = area.left() - own.shown.left(); x <= area.right() - own.shown.right(); x += step)
        for (double y = area.top() - own.shown.top(); y <= area.bottom() - own.shown.bottom(); y += step) {
            const auto n = hidden({x, y});
            const double d = std::hypot(x, y);
            if (n < fewest || (n == fewest && d < nearest)) {
                best = {x, y};
                fewest = n;
                nearest = d;
            }
        }
    return best;
}

// What a label's ground must leave in sight on the graph drawn so far: its
// printed figures, its data points and its axes with their ticks (drawn in
// black). Grid lines, the fitted curve and the laws' own lines may run under
// a label: it stands over them on purpose.
std::vector<QRectF> takenOnGraph(const Canvas& c) {
    std::vector<QRectF> taken;
    for (const auto& t : c.drawnTexts())
        if (!t.text.trimmed().isEmpty()) taken.push_back(t.box);
    for (const auto& d : c.drawnDiscs()) taken.push_back(d.box);
    for (const auto& l : c.drawnLines())
        if (l.colour == Qt::black) taken.push_back(QRectF(l.from, l.to).normalized().adjusted(-1.0, -1.0, 1.0, 1.0));
    return taken;
}

// The legend's rows and their box, in widget pixels.
struct Legend {
    QSizeF size;
    double rowHeight = 0.0;
};
constexpr double kSwatchPixels = 22.0;
constexpr double kLegendPadding = 4.0;

Legend measureLegend(Canvas& c, const std::vector<LawFigure>& laws) {
    c.setFontBold(false);
    c.setFontSize(std::clamp(9.0 * c.width() / 900.0, 8.0, 12.0));
    const double pixelsPerUserX = 1.0 / std::fabs(c.userPerPixelX());
    double widest = 0.0;
    for (const LawFigure& law : laws) widest = std::max(widest, c.textWidth(law.legend) * pixelsPerUserX);
    Legend legend;
    legend.rowHeight = c.textHeight() / std::fabs(c.userPerPixelY());
    legend.size = QSizeF(widest + kSwatchPixels + 3.0 * kLegendPadding,
                         legend.rowHeight * static_cast<double>(laws.size()) + 2.0 * kLegendPadding);
    return legend;
}

// The first free place, column by column from the top left (on a graph of
// refraction against incidence, the upper left of the data area), for a box of the
// size: clear of everything in `avoid`; else clear of `taken` only; else
// the top left corner.
QPointF legendPlace(const Canvas& c, QSizeF size, const std::vector<QRectF>& taken, const std::vector<QRectF>& avoid) {
    const QRectF area(0.0, 0.0, c.width(), c.height());
    for (const auto* keepClear : {&avoid, &taken})
        for (double x = kLegendPadding; x + size.width() <= area.right(); x += kStepPixels)
            for (double y = kLegendPadding; y + size.height() <= area.bottom(); y += kStepPixels) {
                const QRectF box(QPointF(x, y), size);
                if (clearOf(box.adjusted(-kGroundPixels, -kGroundPixels, kGroundPixels, kGroundPixels), *keepClear))
                    return box.topLeft();
            }
    return {kLegendPadding, kLegendPadding};
}

void drawLegend(Canvas& c, const std::vector<LawFigure>& laws, const std::vector<QRectF>& taken) {
    std::vector<QRectF> avoid = taken;
    // The laws' own lines as well, where there is room: a legend over a
    // curve hides the curve.
    for (const auto& l : c.drawnLines())
        if (l.colour != palette::graph::grid)
            avoid.push_back(QRectF(l.from, l.to).normalized().adjusted(-1.0, -1.0, 1.0, 1.0));
    const Legend legend = measureLegend(c, laws);
    const QSizeF texts(legend.size.width() - kSwatchPixels - 3.0 * kLegendPadding,
                       legend.size.height() - 2.0 * kLegendPadding);
    const QPointF at = legendPlace(c, shownBoxSize(legend.size, texts), taken, avoid);
    const QRectF box(at, legend.size);
    const QPointF from = c.toUser(box.topLeft()), to = c.toUser(box.bottomRight());
    c.setDrawWidth(1);
    c.filledBox(from.x(), from.y(), to.x(), to.y(), palette::white);
    c.box(from.x(), from.y(), to.x(), to.y(), palette::law::legendFrame);
    QStringList rows;
    for (std::size_t k = 0; k < laws.size(); ++k) {
        const double top = box.top() + kLegendPadding + legend.rowHeight * static_cast<double>(k);
        const QPointF swatchFrom = c.toUser({box.left() + kLegendPadding, top + legend.rowHeight / 2.0});
        const QPointF swatchTo = c.toUser({box.left() + kLegendPadding + kSwatchPixels, top + legend.rowHeight / 2.0});
        c.setDrawWidth(2);
        c.line(swatchFrom.x(), swatchFrom.y(), swatchTo.x(), swatchTo.y(), laws[k].colour);
        c.setDrawWidth(1);
        const QPointF text = c.toUser({box.left() + 2.0 * kLegendPadding + kSwatchPixels, top});
        c.setForeColor(Qt::black);
        c.setCurrentX(text.x());
        c.setCurrentY(text.y());
        c.print(laws[k].legend);
        rows << laws[k].legend;
    }
    c.addToSummary(QStringLiteral("Legend: ") + rows.join(QStringLiteral("; ")) + QLatin1Char('.'));
}

}  // namespace

void layLawsOver(Canvas& c, const std::vector<LawFigure>& laws) {
    std::vector<QRectF> taken = takenOnGraph(c);
    for (const LawFigure& law : laws) law.drawLine(c);
    const QColor foreColour = c.foreColor();
    for (const LawFigure& law : laws) {
        const LawLabel label = law.label(c);
        const Placed own = measure(c, label);
        const QPointF shift = freeShift(c, own, taken);
        const QRectF ground = own.ground.translated(shift);
        const QPointF from = c.toUser(ground.topLeft()), to = c.toUser(ground.bottomRight());
        c.setDrawWidth(1);
        c.filledBox(from.x(), from.y(), to.x(), to.y(), label.ground);
        c.setForeColor(label.colour);
        const double lineDown = c.textHeight() * (c.userPerPixelY() < 0 ? -1.0 : 1.0);
        const double left = label.x + shift.x() * c.userPerPixelX();
        const double top = label.top + shift.y() * c.userPerPixelY();
        for (qsizetype k = 0; k < label.lines.size(); ++k) {
            c.setCurrentX(left);
            c.setCurrentY(top + static_cast<double>(k) * lineDown);
            c.print(label.lines[k]);
        }
        taken.push_back(own.shown.translated(shift));
    }
    for (const LawFigure& law : laws) c.addToSummary(QStringLiteral("Laid over the data: ") + law.spoken);
    if (!laws.empty()) drawLegend(c, laws, taken);
    c.setFontBold(false);
    c.setForeColor(foreColour);
}
