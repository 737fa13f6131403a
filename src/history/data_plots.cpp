#include "history/data_plots.h"

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/graph_axes.h"
#include "canvas/qt_format.h"

namespace {

constexpr double kAngleLeft = -5.0, kAngleRight = 110.0, kAngleBottom = -30.0, kAngleTop = 110.0;
constexpr double kSineLeft = -0.3, kSineTop = 1.2, kSineRight = 1.5, kSineBottom = -0.2;
const QColor kBlue(0, 0, 255);
const QColor kGreen(0, 160, 0);
constexpr double kLabelPoints = 8.0;
constexpr double kTitlePoints = 10.0;

void printAt(Canvas& c, double x, double y, const QString& text) {
    c.setCurrentX(x);
    c.setCurrentY(y);
    c.print(text);
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

void printFitted(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points) {
    canvas.setFontSize(points);
    while (canvas.fontSize() > kSmallestPoints && canvas.textWidth(text) > maxWidth)
        canvas.setFontSize(std::max(kSmallestPoints, canvas.fontSize() - 0.5));
    // Smaller type could not be read from the back of a classroom: the text
    // goes onto more lines instead.
    if (canvas.textWidth(text) <= maxWidth) {
        printAt(canvas, x, y, text);
        return;
    }
    const double lineDown = canvas.textHeight() * (canvas.userPerPixelY() < 0 ? -1.0 : 1.0);
    const QStringList lines = wrapToWidth(canvas, text, maxWidth);
    for (qsizetype k = 0; k < lines.size(); ++k) printAt(canvas, x, y + static_cast<double>(k) * lineDown, lines[k]);
}

double angleGraphTop(const std::vector<history::AnglePair>& pairs) {
    double highest = 0.0;
    for (const auto& p : pairs)
        if (std::isfinite(p.refraction)) highest = std::max(highest, static_cast<double>(p.refraction));
    if (highest <= kAngleTop - 5.0) return kAngleTop;
    return std::min(200.0, std::ceil((highest + 10.0) / 10.0) * 10.0);
}

void drawAngleGraph(Canvas& c, const std::vector<history::AnglePair>& pairs, const PlotStyle& style,
                    const QString& refractionTitle, const QString& incidenceTitle) {
    const double top = angleGraphTop(pairs);
    c.cls();
    c.scale(kAngleLeft, top, kAngleRight, kAngleBottom);
    c.setForeColor(Qt::black);
    c.setDrawWidth(1);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    makeRoomForAxisLabels(c, kAngleRight, kAngleLeft, top, kAngleBottom, 100.0, top - 10.0, 10.0, 10.0);
    c.line(-5, 0, 100, 0);
    c.line(0, -5, 0, top - 10.0);
    drawGraphAxes(c, kAngleRight, kAngleLeft, top, kAngleBottom, 100.0, top - 10.0, 10.0, 10.0);

    for (const auto& p : pairs) {
        if (!std::isfinite(p.incidence) || !std::isfinite(p.refraction)) continue;
        c.filledCircle(p.incidence, p.refraction, 1.0, style.colour);
    }

    c.setFontBold(true);
    c.setForeColor(Qt::black);
    printFitted(c, 1.5, top - 1.0, refractionTitle, 60.0, kTitlePoints);
    printFitted(c, 30.0, -15.0, incidenceTitle, 75.0, kTitlePoints);
    if (!style.setLabel.isEmpty()) {
        c.setForeColor(style.colour);
        printFitted(c, 1.5, top - 8.0, style.setLabel, 60.0, kTitlePoints + 2.0);
    }
    c.setFontBold(false);
    c.setForeColor(Qt::black);

    // The graph in words, for a screen reader.
    QStringList points;
    for (const auto& p : pairs)
        if (std::isfinite(p.incidence) && std::isfinite(p.refraction))
            points << QStringLiteral("(%1°, %2°)").arg(fmt(p.incidence, "0.0"), fmt(p.refraction, "0.0"));
    c.setSummary(QStringLiteral("Graph: %1 across (%2° to %3°) against %4 up (%5° to %6°). %7 points%8: %9.")
                     .arg(incidenceTitle, fmt(kAngleLeft, "0"), fmt(kAngleRight, "0"), refractionTitle,
                          fmt(kAngleBottom, "0"), fmt(top, "0"))
                     .arg(points.size())
                     .arg(style.setLabel.isEmpty() ? QString() : QStringLiteral(" of ") + style.setLabel.trimmed(),
                          points.join(QLatin1String(", "))));
}

void drawSineGraph(Canvas& c, const history::SineFit& fit, const PlotStyle& style, const QString& indexText,
                   const QString& sinIncidenceTitle, const QString& sinRefractionTitle) {
    c.cls();
    c.scale(kSineLeft, kSineTop, kSineRight, kSineBottom);
    c.setForeColor(Qt::black);
    c.setDrawWidth(1);
    c.setFontBold(false);
    c.setFontSize(kLabelPoints);
    c.line(-0.05, 0, 1.1, 0);
    c.line(0, -0.05, 0, 1.1);
    const double tickX = 0.012 * (kSineRight - kSineLeft);
    const double tickY = 0.012 * (kSineTop - kSineBottom);
    for (int k = 1; k <= 11; ++k) {
        const double v = k / 10.0;
        c.line(v, 0, v, tickY, kBlue);
        c.line(0, v, tickX, v, kBlue);
        if (k % 2 == 0) {
            const QString label = fmt(v, "0.0");
            printAt(c, v - c.textWidth(label) / 2.0, -0.01, label);
            printAt(c, -0.015 - c.textWidth(label), v + c.textHeight() / 2.0, label);
        }
    }

    c.setDrawStyle(DrawStyle::Dash);
    c.line(0, 0, 1.0, 1.0, kGreen);
    c.setDrawStyle(DrawStyle::Solid);
    c.setForeColor(kGreen);
    printAt(c, 1.02, 1.03, QStringLiteral("n = 1"));

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

    c.setFontBold(true);
    c.setForeColor(Qt::black);
    printFitted(c, 0.05, 1.19, indexText, 1.4, kTitlePoints + 1.0);
    printFitted(c, 0.02, 1.12, sinRefractionTitle, 0.9, kTitlePoints);
    printFitted(c, 0.55, -0.09, sinIncidenceTitle, 0.9, kTitlePoints);
    if (!style.setLabel.isEmpty()) {
        c.setForeColor(style.colour);
        printFitted(c, 1.12, 0.6, style.setLabel, 0.37, kTitlePoints + 1.0);
    }
    c.setFontBold(false);
    c.setForeColor(Qt::black);

    // The graph in words, for a screen reader.
    QString summary = QStringLiteral("Graph: %1 across against %2 up, both 0 to 1.1. %3 points%4. Dashed line n = 1.")
                          .arg(sinIncidenceTitle, sinRefractionTitle)
                          .arg(n)
                          .arg(style.setLabel.isEmpty() ? QString() : QStringLiteral(" of ") + style.setLabel.trimmed());
    if (fit.line)
        summary += QStringLiteral(" Fitted line: sin r = %1 sin i %2 %3. %4")
                       .arg(fmt(fit.line->slope, "0.000"), fit.line->intercept < 0 ? QStringLiteral("-") : QStringLiteral("+"),
                            fmt(std::fabs(fit.line->intercept), "0.000"), indexText.trimmed());
    c.setSummary(summary);
}
