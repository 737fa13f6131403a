#pragma once
#include <QStringList>

#include <functional>
#include <optional>

class Canvas;
class QPainter;

// Draws a pair of graph axes on the canvas, in its user coordinates, with
// ticks, numeric labels and a blue grid:
//
// - the x axis runs from xMin to xMax at y = 0 when yMin … yMax contains 0,
//   otherwise along the lower edge y = yMin; the y axis likewise at x = 0 or
//   along the left edge x = xMin; both in ForeColor;
// - ticks and labels stand at whole multiples of the tick step (xStep, yStep
//   when given and positive, otherwise derived from the order of magnitude
//   of the range), labels below the x axis and left of the y axis, written
//   "0", "0.0", "0.00" or "0.00e+00" as the step needs;
// - xLabelMax and yLabelMax, when given, end the ticks and labels there
//   (a graph whose data stop at 80 on a range up to 110);
// - horizontal grid lines in blue RGB(0, 0, 255) run from the y axis (x = 0
//   when the x range contains 0) to xMax at every y tick below yMax, except
//   along the x axis itself.
//
// A label that would run past the canvas's edge is moved in to lie whole
// on it. A range that cannot be drawn (an end not finite, xMax ≤ xMin, yMax ≤ yMin)
// draws nothing. The pen (CurrentX, CurrentY) is left after the last label.
//
// A graph that may mark a point at the axes' crossing (a data point at
// (0, 0)) gives the mark's radius in x user units as crossingMark: the
// crossing's label in the corner then keeps clear of the mark.
void drawGraphAxes(Canvas& canvas, double xMax, double xMin, double yMax, double yMin,
                   std::optional<double> xLabelMax = std::nullopt, std::optional<double> yLabelMax = std::nullopt,
                   std::optional<double> xStep = std::nullopt, std::optional<double> yStep = std::nullopt,
                   double crossingMark = 0.0);

// Widens the canvas's user scale to the right, when needed, so that each
// text written from x in the present font ends on the canvas: for legends
// beside a graph on a narrow window. Like makeRoomForAxisLabels, before
// anything is drawn.
void makeRoomForTextsFrom(Canvas& canvas, double x, const QStringList& texts);

// Widens the canvas's user scale where it leaves too little room round the
// graph for the labels drawGraphAxes would write with the same arguments in
// the present font, so that no label is cut at the canvas's edge. To be
// called after the scale is set and before anything is drawn, since what is
// drawn stays where the scale of its moment put it.
void makeRoomForAxisLabels(Canvas& canvas, double xMax, double xMin, double yMax, double yMin,
                           std::optional<double> xLabelMax = std::nullopt,
                           std::optional<double> yLabelMax = std::nullopt, std::optional<double> xStep = std::nullopt,
                           std::optional<double> yStep = std::nullopt, double crossingMark = 0.0);

// Moves the top edge of the canvas's user scale out, when needed, so that
// at least `pixels` lie between it and y = graphTop: a band above the graph
// for its titles, which no line of the graph then crosses. The bottom edge
// stays; the band never takes more than half the canvas. `pixels` are as
// designed: on the screen the band grows with the presentation size, as its
// texts do. Before anything is drawn, like makeRoomForAxisLabels.
void makeRoomAtTop(Canvas& canvas, double graphTop, double pixels);
// The same below the graph: the bottom edge moves out until `pixels` lie
// between y = graphBottom and it.
void makeRoomAtBottom(Canvas& canvas, double graphBottom, double pixels);

// Keeps a picture laid out for its canvas: when the canvas changes size
// (a text box opens above a graph, the pupil resizes the window) and
// nothing else has been drawn on it since, draw() runs again, so that its
// texts are placed and wrapped for the new size instead of being squeezed
// into the old places. draw() draws the whole picture (cls first) and may
// call this again. Anything else drawn on the canvas, or a cls(), ends it.
// A new presentation size draws it again too: some of its layout (the room
// for bands of text, labels in free places) follows the size shown.
void redrawWhenResized(Canvas& canvas, std::function<void()> draw);

// The same for exports only, for a screen that draws its picture again
// itself on a resize or a new size (the bench).
void drawAgainForExports(Canvas& canvas, std::function<void()> draw);

// Paints the canvas's figure for an export or a page (Canvas::renderFigure)
// as drawn at the designed size, whatever the size shown: a picture kept by
// redrawWhenResized is drawn again as designed for it, then as shown.
void renderAsDesigned(const Canvas& canvas, QPainter& painter);
