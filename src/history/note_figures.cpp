#include "history/note_figures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/canvas.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "core/physics.h"
#include "history/data_plots.h"

namespace {

using physics::kDegree;
constexpr double kCaptionLeft = 63.0;
constexpr double kLetterPoints = 11.0;
constexpr double kCaptionPoints = 10.0;

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

struct Frame {
    double right;  // the scale's right edge
    double top;
};

// Pixels kept free above and below the figure, for the letters at its ends.
constexpr double kMarginPixels = 20.0;

// x from 0, y from 0 up, square units, at least 125 across and 57 up, with
// a margin above and below for the letters at the figure's top and bottom.
Frame squareScale(Canvas& c) {
    const double w = std::max(1, c.width());
    const double h = std::max(1, c.height());
    const double margin = std::min(kMarginPixels, h / 6.0);
    const double perUnit = std::min(w / 125.0, (h - 2.0 * margin) / 57.0);  // pixels
    const double right = w / perUnit;
    const double bottom = -margin / perUnit;
    const double top = bottom + h / perUnit;
    c.scale(0, top, right, bottom);
    return {right, top};
}

// Writes the name of a point of the figure beside it, a couple of pixels
// away on the side given (dx, dy: −1, 0 or 1; dy = 1 is above), so that
// it stays off the lines that meet there whatever the size of the window.
void letter(Canvas& c, double x, double y, const QString& name, int dx, int dy) {
    c.setFontSize(kLetterPoints);
    c.setFontBold(true);
    c.setForeColor(Qt::black);
    const double gapX = 2.0 * std::fabs(c.userPerPixelX());
    const double gapY = 2.0 * std::fabs(c.userPerPixelY());
    const double w = c.textWidth(name);
    const double h = c.textHeight(name);
    const double left = dx < 0 ? x - gapX - w : dx > 0 ? x + gapX : x - w / 2.0;
    const double top = dy > 0 ? y + gapY + h : dy < 0 ? y - gapY : y + h / 2.0;
    c.setCurrentX(left);
    c.setCurrentY(top);
    c.print(name);
    c.setFontBold(false);
}

// Prints the captions one under another from top down; returns where a
// further caption would start, so that a second block never runs into the
// first however many lines a narrow window wraps them onto.
double captions(Canvas& c, const Frame& f, const std::vector<std::string>& lines, double top) {
    c.setForeColor(Qt::black);
    double y = top;
    for (const std::string& line : lines) {
        const double end =
            printFitted(c, kCaptionLeft, y, fromUtf8(line), f.right - kCaptionLeft - 1.0, kCaptionPoints);
        y = std::min(y - 4.5, end - c.textHeight() * 0.4);
    }
    return y;
}

void dashedLine(Canvas& c, double x1, double y1, double x2, double y2, const QColor& colour,
                DrawStyle style = DrawStyle::Dash) {
    c.setDrawStyle(style);
    c.line(x1, y1, x2, y2, colour);
    c.setDrawStyle(DrawStyle::Solid);
}

void fermat(Canvas& c, const Frame& f) {
    const double boundary = 28.0;
    const double speedRatio = 1.5;  // speed in 1 over speed in 2
    c.filledBox(2, boundary, 58, 6, palette::notes::water);
    c.line(2, boundary, 58, boundary, palette::notes::construction);
    const double zx = 8.0, zy = 48.0, ex = 25.0;
    const double sinI = (ex - zx) / std::hypot(ex - zx, zy - boundary);
    const double r = std::asin(sinI / speedRatio);
    const double hx = ex + std::tan(r) * 20.0, hy = boundary - 20.0;
    const double gx = 45.0;
    dashedLine(c, ex, zy, ex, hy, palette::notes::construction, DrawStyle::Dot);  // the normal OEM
    c.setDrawWidth(2);
    c.line(zx, zy, ex, boundary, palette::notes::ray);
    c.line(ex, boundary, hx, hy, palette::notes::ray);
    c.setDrawWidth(1);
    dashedLine(c, zx, zy, gx, boundary, palette::notes::secondPath);
    dashedLine(c, gx, boundary, hx, hy, palette::notes::secondPath);
    letter(c, zx, zy, QStringLiteral("Z"), -1, 1);
    letter(c, hx, hy, QStringLiteral("H"), 0, -1);
    letter(c, ex, boundary, QStringLiteral("E"), -1, -1);
    letter(c, gx, boundary, QStringLiteral("G"), 1, 1);
    letter(c, ex, zy, QStringLiteral("O"), 1, 1);
    letter(c, ex, hy, QStringLiteral("M"), -1, 0);
    letter(c, 50, 48, QStringLiteral("1"), 0, 0);
    letter(c, 50, 14, QStringLiteral("2"), 0, 0);
    captions(c, f, history::figureCaptions(history::NoteFigure::Fermat), f.top - 3);
}

void hero(Canvas& c, const Frame& f) {
    const double mirror = 22.0;
    c.filledBox(2, mirror, 58, mirror - 1.5, palette::notes::construction);
    const double zx = 10.0, zy = 50.0, hx = 50.0, hy = 42.0;
    const double hpy = 2 * mirror - hy;  // H', the image of H
    const double ex = zx + (hx - zx) * (zy - mirror) / (zy - hpy);
    // Beyond H, so that the letter G has a side free of the four paths
    // that meet there.
    const double gx = 56.0;
    c.setDrawWidth(2);
    c.line(zx, zy, ex, mirror, palette::notes::ray);
    c.line(ex, mirror, hx, hy, palette::notes::ray);
    c.setDrawWidth(1);
    dashedLine(c, zx, zy, gx, mirror, palette::notes::secondPath);
    dashedLine(c, gx, mirror, hx, hy, palette::notes::secondPath);
    dashedLine(c, ex, mirror, hx, hpy, palette::notes::ray, DrawStyle::Dot);
    dashedLine(c, gx, mirror, hx, hpy, palette::notes::secondPath, DrawStyle::Dot);
    dashedLine(c, hx, hy, hx, hpy, palette::notes::construction, DrawStyle::Dot);
    letter(c, zx, zy, QStringLiteral("Z"), -1, 1);
    letter(c, hx, hy, QStringLiteral("H"), 1, 0);
    letter(c, hx, hpy, QStringLiteral("H'"), 1, 0);
    letter(c, ex, mirror - 1.5, QStringLiteral("E"), -1, -1);
    letter(c, gx, mirror, QStringLiteral("G"), 1, 1);
    captions(c, f, history::figureCaptions(history::NoteFigure::Hero), f.top - 3);
}

void newton(Canvas& c, const Frame& f) {
    const double layerTop = 30.0, layerBottom = 26.0;
    const double n = 1.5;  // speed in glass over speed in air, for Newton
    c.filledBox(2, layerBottom, 58, 4, palette::notes::water);
    c.filledBox(2, layerTop, 58, layerBottom, palette::notes::layer);
    c.line(2, layerTop, 58, layerTop, palette::notes::construction);
    for (const double incidence : {20.0, 45.0, 65.0}) {
        const double sinI = std::sin(incidence * kDegree);
        const double vx = sinI;                             // kept across the layer
        const double vy1 = std::cos(incidence * kDegree);   // downwards, in air
        const double vy2 = std::sqrt(n * n - sinI * sinI);  // downwards, in glass
        const double px = 22.0;                             // where every ray meets the layer
        const double rise = std::min(24.0, (px - 2.0) / std::tan(incidence * kDegree));
        c.setDrawWidth(2);
        c.line(px - rise * std::tan(incidence * kDegree), layerTop + rise, px, layerTop, palette::notes::ray);
        // Through the layer the downward speed grows evenly with depth
        // squared: a parabola, tangent to both straight parts.
        const double d = layerTop - layerBottom;
        const double a = (vy2 * vy2 - vy1 * vy1) / (2.0 * d);
        const double time = (vy2 - vy1) / a;
        double x = px, y = layerTop;
        for (int step = 1; step <= 12; ++step) {
            const double t = time * step / 12.0;
            const double nx = px + vx * t;
            const double ny = layerTop - (vy1 * t + 0.5 * a * t * t);
            c.line(x, y, nx, ny, palette::notes::ray);
            x = nx;
            y = ny;
        }
        const double depth = y - 5.0;
        c.line(x, y, x + depth * vx / vy2, 5.0, palette::notes::ray);
        c.setDrawWidth(1);
    }
    dashedLine(c, 22, 55, 22, 5, palette::notes::construction, DrawStyle::Dot);
    c.setForeColor(Qt::black);
    printFitted(c, 40, 50, QStringLiteral("AIR  Αέρας"), 17, kCaptionPoints);
    printFitted(c, 44, 12, QStringLiteral("GLASS  Γυαλί"), 14, kCaptionPoints);
    const double next = captions(c, f, history::figureCaptions(history::NoteFigure::Newton), f.top - 3);
    captions(c, f, {"The thin layer: the glass attracts the corpuscle", "Λεπτό στρώμα: το γυαλί έλκει το σωματίδιο"},
             std::min(f.top - 12, next));
}

void ptolemy(Canvas& c, const Frame& f) {
    const double ex = 30.0, ey = 28.0, outer = 23.0, inner = 21.0;
    const double n = 4.0 / 3.0;  // water
    c.filledBox(4, ey, 56, 3, palette::notes::water);
    auto ring = [&](double radius) {
        for (int a = 0; a < 360; a += 5) {
            const double a1 = a * kDegree, a2 = (a + 5) * kDegree;
            c.line(ex + radius * std::cos(a1), ey + radius * std::sin(a1), ex + radius * std::cos(a2),
                   ey + radius * std::sin(a2), palette::notes::angleArc);
        }
    };
    ring(outer);
    ring(inner);
    for (int a = 0; a < 360; a += 10) {
        const double t = a * kDegree;
        c.line(ex + inner * std::cos(t), ey + inner * std::sin(t), ex + outer * std::cos(t), ey + outer * std::sin(t),
               palette::notes::angleArc);
    }
    c.line(ex - outer - 3, ey, ex + outer + 3, ey, palette::notes::construction);
    c.line(ex, ey - outer - 3, ex, ey + outer + 3, palette::notes::construction);
    const double incidence = 45.0 * kDegree;
    const double refraction = std::asin(std::sin(incidence) / n);
    const double zx = ex - inner * std::sin(incidence), zy = ey + inner * std::cos(incidence);
    const double hx = ex + inner * std::sin(refraction), hy = ey - inner * std::cos(refraction);
    c.setDrawWidth(2);
    c.line(zx, zy, ex, ey, palette::notes::ray);
    c.line(ex, ey, hx, hy, palette::notes::ray);
    c.setDrawWidth(1);
    c.filledCircle(zx, zy, 1.0, Qt::black);
    c.filledCircle(hx, hy, 1.0, Qt::black);
    c.filledCircle(ex, ey, 0.8, Qt::black);
    // The ends of the cross take their letters beyond them, Z and H beyond
    // the rim on their side of the disc.
    const double end = outer + 3.0;
    letter(c, ex, ey + end, QStringLiteral("A"), 0, 1);
    letter(c, ex + end, ey, QStringLiteral("B"), 0, 1);
    letter(c, ex, ey - end, QStringLiteral("G"), 0, -1);
    letter(c, ex - end, ey, QStringLiteral("D"), 0, 1);
    letter(c, ex, ey, QStringLiteral("E"), 1, 1);
    letter(c, ex - outer * std::sin(incidence), ey + outer * std::cos(incidence), QStringLiteral("Z"), -1, 1);
    letter(c, ex + outer * std::sin(refraction), ey - outer * std::cos(refraction), QStringLiteral("H"), 1, -1);
    const double next = captions(c, f, history::figureCaptions(history::NoteFigure::Ptolemy), f.top - 3);
    captions(c, f, {"AIR above, WATER below  Αέρας επάνω, νερό κάτω"}, std::min(f.top - 12, next));
}

}  // namespace

void drawNoteFigure(Canvas& canvas, history::NoteFigure figure) {
    if (figure == history::NoteFigure::None) return;
    canvas.cls();
    const Frame frame = squareScale(canvas);
    canvas.setForeColor(Qt::black);
    canvas.setDrawWidth(1);
    canvas.setDrawStyle(DrawStyle::Solid);
    switch (figure) {
    case history::NoteFigure::Fermat: fermat(canvas, frame); break;
    case history::NoteFigure::Hero: hero(canvas, frame); break;
    case history::NoteFigure::Newton: newton(canvas, frame); break;
    case history::NoteFigure::Ptolemy: ptolemy(canvas, frame); break;
    case history::NoteFigure::None: break;
    }
    canvas.setFontBold(false);
    canvas.setForeColor(Qt::black);
    redrawWhenResized(canvas, [&canvas, figure] { drawNoteFigure(canvas, figure); });
}
