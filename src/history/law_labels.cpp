#include "history/law_labels.h"

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"

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
    return p;
}

bool clearOf(const QRectF& ground, const std::vector<QRectF>& taken) {
    return std::none_of(taken.begin(), taken.end(), [&](const QRectF& t) { return ground.intersects(t); });
}

// Pixels to move the label down (positive) or up to the nearest place where
// its ground stays on the canvas and clear of the texts taken; none (0)
// when there is no such place.
double freeShift(const Canvas& c, const Placed& own, const std::vector<QRectF>& taken) {
    const QRectF area(0.0, 0.0, c.width(), c.height());
    for (double shift = 0.0; shift <= c.height(); shift += kStepPixels)
        for (double s : {shift, -shift}) {
            const QRectF ground = own.ground.translated(0.0, s);
            if (area.contains(ground) && clearOf(ground, taken)) return s;
        }
    return 0.0;
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

}  // namespace

void layLawsOver(Canvas& c, const std::vector<LawFigure>& laws) {
    std::vector<QRectF> taken = takenOnGraph(c);
    for (const LawFigure& law : laws) law.drawLine(c);
    const QColor foreColour = c.foreColor();
    for (const LawFigure& law : laws) {
        const LawLabel label = law.label(c);
        const Placed own = measure(c, label);
        const double shift = freeShift(c, own, taken);
        const QRectF ground = own.ground.translated(0.0, shift);
        const QPointF from = c.toUser(ground.topLeft()), to = c.toUser(ground.bottomRight());
        c.setDrawWidth(1);
        c.filledBox(from.x(), from.y(), to.x(), to.y(), label.ground);
        c.setForeColor(label.colour);
        const double lineDown = c.textHeight() * (c.userPerPixelY() < 0 ? -1.0 : 1.0);
        const double top = label.top + shift * c.userPerPixelY();
        for (qsizetype k = 0; k < label.lines.size(); ++k) {
            c.setCurrentX(label.x);
            c.setCurrentY(top + static_cast<double>(k) * lineDown);
            c.print(label.lines[k]);
        }
        taken.push_back(ground);
    }
    c.setFontBold(false);
    c.setForeColor(foreColour);
    for (const LawFigure& law : laws) c.addToSummary(QStringLiteral("Laid over the data: ") + law.spoken);
}
