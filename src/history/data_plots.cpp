#include "history/data_plots.h"

#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "canvas/canvas.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"

namespace {

constexpr double kAngleLeft = kAngleGraphScale.left, kAngleRight = kAngleGraphScale.right;
constexpr double kAngleBottom = kAngleGraphScale.bottom, kAngleTop = kAngleGraphScale.top;
constexpr double kDotRadius = 1.0;  // a data point, in degrees of incidence
constexpr double kLabelPoints = 8.0;
constexpr double kTitlePoints = 10.0;

void printAt(Canvas& c, double x, double y, const QString& text) {
    c.setCurrentX(x);
    c.setCurrentY(y);
    c.print(text);
}

// A label beside a mark, which keeps beside it when shown larger.
void printLabel(Canvas& c, double x, double y, const QString& text, canvas_ops::TextAnchor anchor) {
    c.setTextAnchor(anchor);
    printAt(c, x, y, text);
    c.setTextAnchor({});
}

}  // namespace

namespace {

// The English part and the Greek part of a bilingual caption, split at the
// blank before the first Greek word (the whole text when there is none).
QStringList languageParts(const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].script() != QChar::Script_Greek) continue;
        const qsizetype blank = text.lastIndexOf(QLatin1Char(' '), i);
        if (blank <= 0) break;
        return {text.left(blank), text.mid(blank + 1)};
    }
    return {text};
}

}  // namespace

QStringList wrapToWidth(const Canvas& canvas, const QString& text, double maxWidth) {
    QStringList lines;
    for (const QString& part : languageParts(text)) {
        if (canvas.textWidth(part) <= maxWidth) {
            lines << part.trimmed();
            continue;
        }
        lines << wrapWords(canvas, part, maxWidth);
    }
    return lines;
}

QStringList wrapWords(const Canvas& canvas, const QString& text, double maxWidth) {
    QStringList lines;
    QString line;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
        if (!line.isEmpty() && canvas.textWidth(longer) > maxWidth) {
            lines << line;
            line = word;
        } else {
            line = longer;
        }
    }
    if (!line.isEmpty()) lines << line;
    return lines;
}

FittedText fitText(Canvas& canvas, const QString& text, double maxWidth, double points) {
    canvas.setFontSize(std::max(points, kSmallestPoints));
    while (canvas.fontSize() > kSmallestPoints && canvas.textWidth(text) > maxWidth)
        canvas.setFontSize(std::max(kSmallestPoints, canvas.fontSize() - 0.5));
    // Smaller type could not be read from the back of a classroom: the text
    // goes onto more lines instead.
    if (canvas.textWidth(text) <= maxWidth) return {canvas.fontSize(), {text}};
    return {canvas.fontSize(), wrapToWidth(canvas, text, maxWidth)};
}

double fittedHeightPixels(Canvas& canvas, const QString& text, double maxWidth, double points) {
    const FittedText fitted = fitText(canvas, text, maxWidth, points);
    return static_cast<double>(fitted.lines.size()) * canvas.textHeight() / std::fabs(canvas.userPerPixelY());
}

double printFitted(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points) {
    const FittedText fitted = fitText(canvas, text, maxWidth, points);
    const double lineDown = canvas.textHeight() * (canvas.userPerPixelY() < 0 ? -1.0 : 1.0);
    for (qsizetype k = 0; k < fitted.lines.size(); ++k)
        printAt(canvas, x, y + static_cast<double>(k) * lineDown, fitted.lines[k]);
    return y + static_cast<double>(fitted.lines.size()) * lineDown;
}

double printFittedOnGround(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points) {
    const FittedText fitted = fitText(canvas, text, maxWidth, points);
    double width = 0.0;
    for (const QString& line : fitted.lines) width = std::max(width, canvas.textWidth(line));
    const double height = static_cast<double>(fitted.lines.size()) * canvas.textHeight();
    canvas.groundForTexts(x, y, x + width, y + height * (canvas.userPerPixelY() < 0 ? -1.0 : 1.0));
    return printFitted(canvas, x, y, text, maxWidth, points);
}

double angleGraphTop(const std::vector<history::AnglePair>& pairs) {
    double highest = 0.0;
    for (const auto& p : pairs)
        if (std::isfinite(p.refraction)) highest = std::max(highest, static_cast<double>(p.refraction));
    if (highest <= kAngleTop - 5.0) return kAngleTop;
    return std::min(200.0, std::ceil((highest + 10.0) / 10.0) * 10.0);
}

namespace {

// Pixels between a band's texts and what they stand next to.
constexpr double kBandGapPixels = 4.0;

// One pixel down the screen, in user units (negative on a y-up scale).
double pixelDown(const Canvas& c) { return c.userPerPixelY(); }

// The height of a text line in pixels in the canvas's present font.
double linePixels(const Canvas& c) { return c.textHeight() / std::fabs(c.userPerPixelY()); }

constexpr double kRefractionTitleWidth = 60.0, kIncidenceTitleWidth = 75.0;
constexpr double kTitleLeft = 1.5, kIncidenceTitleLeft = 30.0;

// The height in pixels of the band over the angle graph: the refraction
// title and the set's name under it.
double angleBandAbove(Canvas& c, const PlotStyle& style, const QString& refractionTitle) {
    c.setFontSize(kLabelPoints);
    c.setFontBold(false);
    // Half of the top y label stands above the graph's top line.
    double above = linePixels(c) / 2.0 + 2.0 * kBandGapPixels;
    c.setFontBold(true);
    above += fittedHeightPixels(c, refractionTitle, kRefractionTitleWidth, kTitlePoints);
    if (!style.setLabel.isEmpty())
        above += kBandGapPixels + fittedHeightPixels(c, style.setLabel, kRefractionTitleWidth, kTitlePoints + 2.0);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    return above;
}

double incidenceTitlePixels(Canvas& c, const QString& incidenceTitle) {
    c.setFontBold(true);
    const double h = fittedHeightPixels(c, incidenceTitle, kIncidenceTitleWidth, kTitlePoints);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    return h;
}

// Where the incidence title starts: under the x labels between two of the
// blue grid lines below the axis, the first gap it fits in, or else under
// the lowest grid line (the graph's bottom), where room is made for it.
double incidenceTitleTop(Canvas& c, double titlePixels) {
    c.setFontSize(kLabelPoints);
    c.setFontBold(false);
    const double unit = std::fabs(pixelDown(c));  // user units per pixel
    const double height = titlePixels * unit;
    const double gap = kBandGapPixels * unit;
    double start = -(3.0 + 2.0 * kBandGapPixels + linePixels(c)) * unit;  // under the x labels
    while (start > kAngleBottom) {
        const double lineBelow = 10.0 * std::floor(start / 10.0);
        if (start - height >= lineBelow + gap) return start;
        start = lineBelow - gap;
    }
    return kAngleBottom - gap;
}

// The angle graph in words, for a screen reader.
QString angleSummary(const std::vector<history::AnglePair>& pairs, const PlotStyle& style,
                     const QString& refractionTitle, const QString& incidenceTitle, double top) {
    QStringList points;
    for (const auto& p : pairs)
        if (std::isfinite(p.incidence) && std::isfinite(p.refraction))
            points << QStringLiteral("(%1°, %2°)").arg(fmt(p.incidence, "0.0"), fmt(p.refraction, "0.0"));
    return QStringLiteral("Graph: %1 across (%2° to %3°) against %4 up (%5° to %6°). %7 points%8: %9.")
        .arg(incidenceTitle, fmt(kAngleLeft, "0"), fmt(kAngleRight, "0"), refractionTitle, fmt(kAngleBottom, "0"),
             fmt(top, "0"))
        .arg(points.size())
        .arg(style.setLabel.isEmpty() ? QString() : QStringLiteral(" of ") + style.setLabel.trimmed(),
             points.join(QLatin1String(", ")));
}

}  // namespace

void drawAngleGraph(Canvas& c, const std::vector<history::AnglePair>& pairs, const PlotStyle& style,
                    const QString& refractionTitle, const QString& incidenceTitle) {
    const double top = angleGraphTop(pairs);
    const double graphTop = top - 10.0;  // the y axis and the highest grid line end there
    c.cls();
    c.setPrintNote(style.indexNote);
    c.scale(kAngleLeft, top, kAngleRight, kAngleBottom);
    c.setForeColor(Qt::black);
    c.setDrawWidth(1);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    // The titles stand above the graph's top line, the incidence title
    // under the x labels, where no grid line runs: the scale grows to make
    // room for them and for the axis labels, and each change of scale may
    // ask for a little more of the other.
    for (int round = 0; round < 3; ++round) {
        makeRoomForAxisLabels(c, kAngleRight, kAngleLeft, top, kAngleBottom, 100.0, graphTop, 10.0, 10.0, kDotRadius);
        makeRoomAtTop(c, graphTop, angleBandAbove(c, style, refractionTitle));
        const double title = incidenceTitlePixels(c, incidenceTitle);
        if (incidenceTitleTop(c, title) < kAngleBottom) makeRoomAtBottom(c, kAngleBottom, title + 2.0 * kBandGapPixels);
    }

    c.line(-5, 0, 100, 0);
    c.line(0, -5, 0, graphTop);
    drawGraphAxes(c, kAngleRight, kAngleLeft, top, kAngleBottom, 100.0, graphTop, 10.0, 10.0, kDotRadius);

    for (const auto& p : pairs) {
        if (!std::isfinite(p.incidence) || !std::isfinite(p.refraction)) continue;
        c.filledCircle(p.incidence, p.refraction, kDotRadius, style.colour);
    }

    const double down = pixelDown(c);
    const double incidenceTop = incidenceTitleTop(c, incidenceTitlePixels(c, incidenceTitle));
    c.setFontBold(true);
    c.setForeColor(Qt::black);
    const double below = printFitted(c, kTitleLeft, c.scaleTop() + kBandGapPixels * down, refractionTitle,
                                     kRefractionTitleWidth, kTitlePoints);
    printFittedOnGround(c, kIncidenceTitleLeft, incidenceTop, incidenceTitle, kIncidenceTitleWidth, kTitlePoints);
    if (!style.setLabel.isEmpty()) {
        c.setForeColor(style.colour);
        printFittedOnGround(c, kTitleLeft, below + kBandGapPixels * down, style.setLabel, kRefractionTitleWidth,
                            kTitlePoints + 2.0);
    }
    c.setFontBold(false);
    c.setForeColor(Qt::black);
    c.setFontSize(kLabelPoints);
    c.setSummary(angleSummary(pairs, style, refractionTitle, incidenceTitle, top));
    redrawWhenResized(c, [&c, pairs, style, refractionTitle, incidenceTitle] {
        drawAngleGraph(c, pairs, style, refractionTitle, incidenceTitle);
    });
}

QString fitQualityText(const history::SineFit& fit, const char* indexFormat) {
    if (!fit.index) return {};
    const history::FitStatistics& s = fit.statistics;
    if (s.indexError && s.rSquared)
        return QStringLiteral("n = ") + fmt(*fit.index, indexFormat) + QStringLiteral(" ± ") +
               fmt(*s.indexError, indexFormat) + QStringLiteral(", r² = ") + fmt(*s.rSquared, "0.0000");
    if (s.points == 2)
        return QStringLiteral("n = ") + fmt(*fit.index, indexFormat) +
               QStringLiteral(
                   ": two points, no uncertainty can be given  "
                   "δύο σημεία, δεν ορίζεται αβεβαιότητα");
    return {};
}

namespace {

constexpr double kIndexWidth = 1.4, kSineTitleWidth = 0.9, kSetLabelWidth = 0.37;
constexpr double kTitleX = 0.05, kSineTitleX = 0.02, kIncidenceTitleX = 0.55, kRightColumn = 1.12;

// The highest point of anything drawn in the sine graph: the axes and
// ticks end at 1.1, the fitted line and the residual bars may reach higher
// (Witelo's glass, n < 1). Kept within reason for wild data.
double sineGraphTop(const history::SineFit& fit, bool residualBars) {
    double top = 1.1;
    const std::size_t n = std::min(fit.sinIncidence.size(), fit.sinRefraction.size());
    for (std::size_t k = 0; k < n; ++k)
        if (std::isfinite(fit.sinRefraction[k])) top = std::max(top, fit.sinRefraction[k]);
    if (fit.line) {
        const double a = fit.line->slope, b = fit.line->intercept;
        for (double end : {b, a + b})
            if (std::isfinite(end)) top = std::max(top, end);
        if (residualBars) {
            const std::size_t fitted = std::min(n, static_cast<std::size_t>(std::max(fit.fittedPairs, 0)));
            const auto e = history::residuals(fit.sinIncidence, fit.sinRefraction, static_cast<int>(fitted), a, b);
            for (std::size_t k = 0; k < e.size(); ++k) {
                const double bar = a * fit.sinIncidence[k] + b + kResidualMagnification * e[k];
                if (std::isfinite(bar)) top = std::max(top, bar);
            }
        }
    }
    return std::min(top, 3.0);
}

// The height in pixels of the band over the sine graph: the index, the
// fit's quality and the sine title.
double sineBandAbove(Canvas& c, const SineGraphTexts& texts) {
    c.setFontBold(true);
    double above = 3.0 * kBandGapPixels + fittedHeightPixels(c, texts.index, kIndexWidth, kTitlePoints + 1.0);
    above += fittedHeightPixels(c, texts.sinRefractionTitle, kSineTitleWidth, kTitlePoints);
    if (!texts.fitQuality.isEmpty()) {
        c.setFontBold(false);
        above += fittedHeightPixels(c, texts.fitQuality, kIndexWidth, kTitlePoints);
    }
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    return above;
}

// The height in pixels of the band under the x axis: its labels and the
// incidence title.
double sineBandBelow(Canvas& c, const SineGraphTexts& texts) {
    const double labels = 3.0 + 2.0 * kBandGapPixels + linePixels(c);
    c.setFontBold(true);
    const double title = fittedHeightPixels(c, texts.sinIncidenceTitle, kSineTitleWidth, kTitlePoints);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    return labels + title + kBandGapPixels;
}

// The axes to 1.1 with blue ticks, labelled every 0.2, and the green
// dashed line sin r = sin i.
void drawSineAxes(Canvas& c) {
    const double down = pixelDown(c);
    c.line(-0.05, 0, 1.1, 0);
    c.line(0, -0.05, 0, 1.1);
    const double tickX = 0.012 * (kSineGraphScale.right - kSineGraphScale.left);
    const double tickY = 0.012 * (kSineGraphScale.top - kSineGraphScale.bottom);
    for (int k = 1; k <= 11; ++k) {
        const double v = k / 10.0;
        c.line(v, 0, v, tickY, palette::graph::ticks);
        c.line(0, v, tickX, v, palette::graph::ticks);
        if (k % 2 == 0) {
            const QString label = fmt(v, "0.0");
            printLabel(c, v - c.textWidth(label) / 2.0, 3.0 * down, label, canvas_ops::kUnderMark);
            printLabel(c, -0.015 - c.textWidth(label), v + c.textHeight() / 2.0, label, canvas_ops::kLeftOfMark);
        }
    }
    c.setDrawStyle(DrawStyle::Dash);
    c.line(0, 0, 1.0, 1.0, palette::graph::equalSines);
    c.setDrawStyle(DrawStyle::Solid);
    c.setForeColor(palette::graph::equalSines);
    printAt(c, 1.02, 1.03, QStringLiteral("n = 1"));
}

// The fitted line, the points, and with residualBars each fitted point's
// distance from the line as a bar standing on it.
void drawSineFit(Canvas& c, const history::SineFit& fit, const PlotStyle& style, bool residualBars) {
    if (fit.line) {
        const double a = fit.line->slope;
        const double b = fit.line->intercept;
        c.setDrawWidth(2);
        c.line(0, b, 1.0, a + b, Qt::black);
        c.setDrawWidth(1);
    }
    const std::size_t n = std::min(fit.sinIncidence.size(), fit.sinRefraction.size());
    for (std::size_t k = 0; k < n; ++k) {
        const double x = fit.sinIncidence[k];
        const double y = fit.sinRefraction[k];
        if (!std::isfinite(x) || !std::isfinite(y)) continue;
        c.filledCircle(x, y, 0.012, style.colour);
    }
    if (!residualBars || !fit.line) return;
    const double a = fit.line->slope;
    const double b = fit.line->intercept;
    const std::size_t fitted = std::min(n, static_cast<std::size_t>(std::max(fit.fittedPairs, 0)));
    const auto e = history::residuals(fit.sinIncidence, fit.sinRefraction, static_cast<int>(fitted), a, b);
    c.setDrawWidth(3);
    for (std::size_t k = 0; k < e.size(); ++k) {
        const double x = fit.sinIncidence[k];
        if (!std::isfinite(x) || !std::isfinite(e[k])) continue;
        c.line(x, a * x + b, x, a * x + b + kResidualMagnification * e[k], palette::graph::residual);
    }
    c.setDrawWidth(1);
}

// The index and the fit's quality over the graph, the two axis titles,
// and right of the graph the set's name with, under it, what the red bars
// are.
void printSineTexts(Canvas& c, const SineGraphTexts& texts, const PlotStyle& style, bool barsDrawn) {
    const double down = pixelDown(c);
    c.setFontBold(true);
    c.setForeColor(Qt::black);
    double next =
        printFitted(c, kTitleX, c.scaleTop() + kBandGapPixels * down, texts.index, kIndexWidth, kTitlePoints + 1.0);
    if (!texts.fitQuality.isEmpty()) {
        c.setFontBold(false);
        next = printFitted(c, kTitleX, next, texts.fitQuality, kIndexWidth, kTitlePoints);
        c.setFontBold(true);
    }
    printFittedOnGround(c, kSineTitleX, next + kBandGapPixels * down, texts.sinRefractionTitle, kSineTitleWidth,
                        kTitlePoints);
    c.setFontSize(kLabelPoints);
    c.setFontBold(false);
    // Under the x labels as the screen shows them.
    const double incidenceTop = (3.0 + 2.0 * kBandGapPixels + linePixels(c) * presentationScale()) * down;
    c.setFontBold(true);
    printFitted(c, kIncidenceTitleX, incidenceTop, texts.sinIncidenceTitle, kSineTitleWidth, kTitlePoints);
    // The column right of the graph is as wide as designed on the screen
    // too: shown larger, its texts take more lines rather than running
    // back over the data.
    const double columnWidth = kSetLabelWidth / presentationScale();
    double rightColumn = 0.6;
    if (!style.setLabel.isEmpty()) {
        c.setForeColor(style.colour);
        rightColumn = printFitted(c, kRightColumn, 0.6, style.setLabel, columnWidth, kTitlePoints + 1.0);
    }
    if (barsDrawn) {
        c.setFontBold(false);
        c.setForeColor(palette::graph::residual);
        printFitted(c, kRightColumn, std::min(0.45, rightColumn + kBandGapPixels * down),
                    QStringLiteral("residuals ×10  υπόλοιπα ×10"), columnWidth, kLabelPoints);
    }
    c.setFontBold(false);
    c.setForeColor(Qt::black);
    c.setFontSize(kLabelPoints);
}

// The graph in words, for a screen reader.
QString sineSummary(const history::SineFit& fit, const PlotStyle& style, const SineGraphTexts& texts) {
    const std::size_t n = std::min(fit.sinIncidence.size(), fit.sinRefraction.size());
    QString summary =
        QStringLiteral("Graph: %1 across against %2 up, both 0 to 1.1. %3 points%4. Dashed line n = 1.")
            .arg(texts.sinIncidenceTitle, texts.sinRefractionTitle)
            .arg(n)
            .arg(style.setLabel.isEmpty() ? QString() : QStringLiteral(" of ") + style.setLabel.trimmed());
    if (fit.line)
        summary +=
            QStringLiteral(" Fitted line: sin r = %1 sin i %2 %3. %4")
                .arg(fmt(fit.line->slope, "0.000"), fit.line->intercept < 0 ? QStringLiteral("-") : QStringLiteral("+"),
                     fmt(std::fabs(fit.line->intercept), "0.000"), texts.index.trimmed());
    return summary;
}

}  // namespace

void drawSineGraph(Canvas& c, const history::SineFit& fit, const PlotStyle& style, const SineGraphTexts& texts,
                   bool residualBars) {
    c.cls();
    c.setPrintNote(style.indexNote);
    c.scale(kSineGraphScale.left, kSineGraphScale.top, kSineGraphScale.right, kSineGraphScale.bottom);
    c.setForeColor(Qt::black);
    c.setDrawWidth(1);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    // The index, the fit's quality and the sine title stand in a band over
    // everything the graph draws, the incidence title under the x labels:
    // the scale grows to make room for them on a small window.
    const double graphTop = sineGraphTop(fit, residualBars);
    for (int round = 0; round < 3; ++round) {
        makeRoomAtTop(c, graphTop, sineBandAbove(c, texts));
        makeRoomAtBottom(c, 0.0, sineBandBelow(c, texts));
    }
    drawSineAxes(c);
    drawSineFit(c, fit, style, residualBars);
    printSineTexts(c, texts, style, residualBars && fit.line);
    c.setSummary(sineSummary(fit, style, texts));
    redrawWhenResized(c, [&c, fit, style, texts, residualBars] { drawSineGraph(c, fit, style, texts, residualBars); });
}
