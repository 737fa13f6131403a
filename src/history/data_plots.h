#pragma once
#include <QColor>
#include <QString>
#include <QStringList>

#include <vector>

#include "history/data_pairs.h"

class Canvas;

// The two graphs of a data analysis, drawn whole on their canvases.

// Colour and name of a plotted set (no name for the pupil's own data).
struct PlotStyle {
    QColor colour{Qt::black};
    QString setLabel;
};

// The top of the angle graph: 110°, or higher when a refraction angle
// (Witelo's extrapolations reach 118°) would otherwise fall off the graph.
double angleGraphTop(const std::vector<history::AnglePair>& pairs);

// Refraction against incidence: the scale (x −5 … 110, y top … −30), axes,
// grid, the pairs as dots, the set's name and the two axis titles.
void drawAngleGraph(Canvas& canvas, const std::vector<history::AnglePair>& pairs, const PlotStyle& style,
                    const QString& refractionTitle, const QString& incidenceTitle);

// sin r against sin i: the scale (x −0.3 … 1.5, y 1.2 … −0.2), axes with
// blue ticks to 1.1, the green line sin r = sin i for comparison, the
// fitted line from sin i = 0 to 1, the points, the index text and the
// axis titles. Non-finite values are left out.
void drawSineGraph(Canvas& canvas, const history::SineFit& fit, const PlotStyle& style, const QString& indexText,
                   const QString& sinIncidenceTitle, const QString& sinRefractionTitle);

// The smallest type a graph is labelled in.
constexpr double kSmallestPoints = 8.0;

// Breaks the text into lines at its blanks so that each line is at most
// maxWidth user units wide in the canvas's present font (a single word wider
// than that stands on a line of its own).
QStringList wrapWords(const Canvas& canvas, const QString& text, double maxWidth);

// The same for a bilingual caption: the Greek starts a line of its own, and
// each language is broken further only where it is still too wide.
QStringList wrapToWidth(const Canvas& canvas, const QString& text, double maxWidth);

// Prints the text with its top-left corner at (x, y) in the given type
// size, smaller if needed so that it is no wider than maxWidth user units,
// but never below kSmallestPoints: beyond that it is written on more lines.
void printFitted(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points);
