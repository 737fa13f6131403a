#include "history/note_figures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/canvas.h"
#include "canvas/graph_axes.h"
#include "history/data_plots.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
const QColor kRay(220, 30, 30);
const QColor kSecondPath(40, 40, 160);
const QColor kWater(205, 230, 250);
const QColor kLayer(255, 240, 170);
const QColor kGrey(110, 110, 110);
constexpr double kCaptionLeft = 63.0;
constexpr double kLetterPoints = 11.0;
constexpr double kCaptionPoints = 10.0;

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

struct Frame {
    double right;  // the scale's right edge
    double top;
};

// x from 0, y from 0 up, square units, at least 125 across and 57 up.
Frame squareScale(Canvas& c) {
    const double w = std::max(1, c.width());
    const double h = std::max(1, c.height());
    double right = 125.0;
    double top = right * h / w;
    if (top < 57.0) {
        top = 57.0;
        right = top * w / h;
    }
    c.scale(0, top, right, 0);
    return {right, top};
}

void letter(Canvas& c, double x, double y, const QString& name) {
    c.setFontSize(kLetterPoints);
    c.setFontBold(true);
    c.setForeColor(Qt::black);
    c.setCurrentX(x);
    c.setCurrentY(y);
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
        const double end = printFitted(c, kCaptionLeft, y, fromUtf8(line), f.right - kCaptionLeft - 1.0, kCaptionPoints);
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
    c.filledBox(2, boundary, 58, 6, kWater);
    c.line(2, boundary, 58, boundary, kGrey);
    const double zx = 8.0, zy = 48.0, ex = 25.0;
    const double sinI = (ex - zx) / std::hypot(ex - zx, zy - boundary);
    const double r = std::asin(sinI / speedRatio);
    const double hx = ex + std::tan(r) * 20.0, hy = boundary - 20.0;
    const double gx = 45.0;
    dashedLine(c, ex, zy, ex, hy, kGrey, DrawStyle::Dot);  // the normal OEM
    c.setDrawWidth(2);
    c.line(zx, zy, ex, boundary, kRay);
    c.line(ex, boundary, hx, hy, kRay);
    c.setDrawWidth(1);
    dashedLine(c, zx, zy, gx, boundary, kSecondPath);
    dashedLine(c, gx, boundary, hx, hy, kSecondPath);
    letter(c, zx - 4, zy + 4, QStringLiteral("Z"));
    letter(c, hx + 1, hy + 1, QStringLiteral("H"));
    letter(c, ex - 4, boundary + 4.5, QStringLiteral("E"));
    letter(c, gx + 1, boundary + 4.5, QStringLiteral("G"));
    letter(c, ex + 1, zy + 4, QStringLiteral("O"));
    letter(c, ex + 1, hy + 1, QStringLiteral("M"));
    letter(c, 50, 50, QStringLiteral("1"));
    letter(c, 50, 14, QStringLiteral("2"));
    const auto lines = history::figureCaptions(history::NoteFigure::Fermat);
    captions(c, f, {lines.begin(), lines.end() - 1}, f.top - 3);
    c.setForeColor(Qt::black);
    printFitted(c, 2, 4.5, fromUtf8(lines.back()), f.right - 4, kCaptionPoints);
}

void hero(Canvas& c, const Frame& f) {
    const double mirror = 22.0;
    c.filledBox(2, mirror, 58, mirror - 1.5, kGrey);
    const double zx = 10.0, zy = 50.0, hx = 50.0, hy = 42.0;
    const double hpy = 2 * mirror - hy;  // H', the image of H
    const double ex = zx + (hx - zx) * (zy - mirror) / (zy - hpy);
    const double gx = 42.0;
    c.setDrawWidth(2);
    c.line(zx, zy, ex, mirror, kRay);
    c.line(ex, mirror, hx, hy, kRay);
    c.setDrawWidth(1);
    dashedLine(c, zx, zy, gx, mirror, kSecondPath);
    dashedLine(c, gx, mirror, hx, hy, kSecondPath);
    dashedLine(c, ex, mirror, hx, hpy, kRay, DrawStyle::Dot);
    dashedLine(c, gx, mirror, hx, hpy, kSecondPath, DrawStyle::Dot);
    dashedLine(c, hx, hy, hx, hpy, kGrey, DrawStyle::Dot);
    letter(c, zx - 4, zy + 4, QStringLiteral("Z"));
    letter(c, hx + 1, hy + 4, QStringLiteral("H"));
    letter(c, hx + 1, hpy + 4, QStringLiteral("H'"));
    letter(c, ex - 2, mirror + 5.5, QStringLiteral("E"));
    letter(c, gx - 1, mirror + 5.5, QStringLiteral("G"));
    captions(c, f, history::figureCaptions(history::NoteFigure::Hero), f.top - 3);
}

void newton(Canvas& c, const Frame& f) {
    const double layerTop = 30.0, layerBottom = 26.0;
    const double n = 1.5;  // speed in glass over speed in air, for Newton
    c.filledBox(2, layerBottom, 58, 4, kWater);
    c.filledBox(2, layerTop, 58, layerBottom, kLayer);
    c.line(2, layerTop, 58, layerTop, kGrey);
    for (const double incidence : {20.0, 45.0, 65.0}) {
        const double sinI = std::sin(incidence * kDegree);
        const double vx = sinI;                          // kept across the layer
        const double vy1 = std::cos(incidence * kDegree);  // downwards, in air
        const double vy2 = std::sqrt(n * n - sinI * sinI);  // downwards, in glass
        const double px = 22.0;  // where every ray meets the layer
        const double rise = std::min(24.0, (px - 2.0) / std::tan(incidence * kDegree));
        c.setDrawWidth(2);
        c.line(px - rise * std::tan(incidence * kDegree), layerTop + rise, px, layerTop, kRay);
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
            c.line(x, y, nx, ny, kRay);
            x = nx;
            y = ny;
        }
        const double depth = y - 5.0;
        c.line(x, y, x + depth * vx / vy2, 5.0, kRay);
        c.setDrawWidth(1);
    }
    dashedLine(c, 22, 55, 22, 5, kGrey, DrawStyle::Dot);
    c.setForeColor(Qt::black);
    printFitted(c, 40, 50, QStringLiteral("AIR  Αέρας"), 17, kCaptionPoints);
    printFitted(c, 40, 12, QStringLiteral("GLASS  Γυαλί"), 17, kCaptionPoints);
    const double next = captions(c, f, history::figureCaptions(history::NoteFigure::Newton), f.top - 3);
    captions(c, f,
             {"The thin layer: the glass attracts the corpuscle",
              "Λεπτό στρώμα: το γυαλί έλκει το σωματίδιο"},
             std::min(f.top - 12, next));
}

void ptolemy(Canvas& c, const Frame& f) {
    const double ex = 30.0, ey = 28.0, outer = 23.0, inner = 21.0;
    const double n = 4.0 / 3.0;  // water
    c.filledBox(4, ey, 56, 3, kWater);
    auto ring = [&](double radius) {
        for (int a = 0; a < 360; a += 5) {
            const double a1 = a * kDegree, a2 = (a + 5) * kDegree;
            c.line(ex + radius * std::cos(a1), ey + radius * std::sin(a1), ex + radius * std::cos(a2),
                   ey + radius * std::sin(a2), QColor(150, 90, 30));
        }
    };
    ring(outer);
    ring(inner);
    for (int a = 0; a < 360; a += 10) {
        const double t = a * kDegree;
        c.line(ex + inner * std::cos(t), ey + inner * std::sin(t), ex + outer * std::cos(t), ey + outer * std::sin(t),
               QColor(150, 90, 30));
    }
    c.line(ex - outer - 3, ey, ex + outer + 3, ey, kGrey);
    c.line(ex, ey - outer - 3, ex, ey + outer + 3, kGrey);
    const double incidence = 45.0 * kDegree;
    const double refraction = std::asin(std::sin(incidence) / n);
    const double zx = ex - inner * std::sin(incidence), zy = ey + inner * std::cos(incidence);
    const double hx = ex + inner * std::sin(refraction), hy = ey - inner * std::cos(refraction);
    c.setDrawWidth(2);
    c.line(zx, zy, ex, ey, kRay);
    c.line(ex, ey, hx, hy, kRay);
    c.setDrawWidth(1);
    c.filledCircle(zx, zy, 1.0, Qt::black);
    c.filledCircle(hx, hy, 1.0, Qt::black);
    c.filledCircle(ex, ey, 0.8, Qt::black);
    letter(c, ex - 1.5, ey + outer + 7.5, QStringLiteral("A"));
    letter(c, ex + outer + 3.5, ey + 2, QStringLiteral("B"));
    letter(c, ex - 1.5, ey - outer - 2.5, QStringLiteral("G"));
    letter(c, ex - outer - 7, ey + 2, QStringLiteral("D"));
    letter(c, ex + 1, ey + 4.5, QStringLiteral("E"));
    letter(c, zx - 4.5, zy + 4, QStringLiteral("Z"));
    letter(c, hx + 1.5, hy, QStringLiteral("H"));
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
