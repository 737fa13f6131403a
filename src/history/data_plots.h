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
    QString indexNote;  // the fitted index as a printout states it: "n = 1.523"
};

// The top of the angle graph: 110°, or higher when a refraction angle
// (Witelo's extrapolations reach 118°) would otherwise fall off the graph.
double angleGraphTop(const std::vector<history::AnglePair>& pairs);

// Refraction against incidence: the scale (kAngleGraphScale, its top raised
// to angleGraphTop), axes,
// grid, the pairs as dots, the set's name and the two axis titles. The
// titles stand where no line of the graph runs (the scale grows a little
// on a small window to give them room), and the graph is drawn again when
// its canvas changes size.
void drawAngleGraph(Canvas& canvas, const std::vector<history::AnglePair>& pairs, const PlotStyle& style,
                    const QString& refractionTitle, const QString& incidenceTitle);

// The texts of the sine graph.
struct SineGraphTexts {
    QString index;       // the index line at the top
    QString fitQuality;  // printed under it when not empty (fitQualityText)
    QString sinIncidenceTitle;
    QString sinRefractionTitle;
};

// sin r against sin i: the scale (kSineGraphScale), axes with
// blue ticks to 1.1, the green line sin r = sin i for comparison, the
// fitted line from sin i = 0 to 1, the points, the index text with the
// fit's quality under it and the axis titles. Non-finite values are left
// out. With residualBars each fitted point's distance from the line is
// drawn as a bar standing on the line, magnified ten times so that a
// scatter of a few thousandths shows. Like the angle graph, its texts keep
// clear of its lines and it is drawn again at a new size.
void drawSineGraph(Canvas& canvas, const history::SineFit& fit, const PlotStyle& style, const SineGraphTexts& texts,
                   bool residualBars = false);

// How many times the residual bars are magnified.
inline constexpr double kResidualMagnification = 10.0;

// The line under the index: "n = 1.519 ± 0.012, r² = 0.9987" (the index and
// its standard uncertainty in the given format, r² in four decimals); with
// two fitted pairs a bilingual sentence that the uncertainty is not defined
// instead of a number; empty when there is no index.
QString fitQualityText(const history::SineFit& fit, const char* indexFormat);

// The smallest type a graph is labelled in.
constexpr double kSmallestPoints = 8.0;

// Breaks the text into lines at its blanks so that each line is at most
// maxWidth user units wide in the canvas's present font (a single word wider
// than that stands on a line of its own).
QStringList wrapWords(const Canvas& canvas, const QString& text, double maxWidth);

// The same for a bilingual caption: the Greek starts a line of its own, and
// each language is broken further only where it is still too wide.
QStringList wrapToWidth(const Canvas& canvas, const QString& text, double maxWidth);

// A text laid out as printFitted writes it: the type size and the lines.
struct FittedText {
    double points = 0.0;
    QStringList lines;
};

// Lays the text out no wider than maxWidth user units in the given type
// size (kSmallestPoints when a smaller one is asked for), smaller if needed,
// but never below kSmallestPoints: beyond that it goes onto more lines. Leaves the canvas's type size at the size
// chosen.
FittedText fitText(Canvas& canvas, const QString& text, double maxWidth, double points);

// The height in pixels of the text so laid out, in the canvas's font.
double fittedHeightPixels(Canvas& canvas, const QString& text, double maxWidth, double points);

// Prints the text with its top-left corner at (x, y) laid out by fitText.
// Returns the y at which a line printed under it would start.
double printFitted(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points);
// The same on a ground (Canvas::groundForTexts) just the text's size as
// designed: where the screen shows the text larger, the ground grows with it
// and hides the grid lines it would otherwise be struck through by.
double printFittedOnGround(Canvas& canvas, double x, double y, const QString& text, double maxWidth, double points);
