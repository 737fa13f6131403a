#pragma once
#include <QByteArray>
#include <QDate>
#include <QImage>
#include <QRectF>
#include <QString>

#include <functional>

class Canvas;
class QPainter;
class QPrinter;

// Figures out of the program: every drawing can be saved as PNG (at twice
// its size on the screen) or SVG (lines stay lines, texts stay texts) and
// printed, from its context menu or with its window's Ctrl+S and Ctrl+P.
// All of it replays what the canvas recorded; nothing is a screenshot.

// The figure as an image `scale` times the canvas's logical size, its long
// side at most 4096 pixels.
QImage figureImage(const Canvas& canvas, double scale = 2.0);
// Qt scales a painter on an image by the image's pixel ratio only when the
// ratio is above 1; this sets the rest of the scale for a ratio below 1 (a
// picture smaller than the window it shows), so that the whole figure
// lands in the image. Call it right after the painter begins.
void followImageRatio(QPainter& painter);

// The figure as an SVG document.
QByteArray figureSvg(const Canvas& canvas, const QString& title);
// Where a figure of the given size goes on a page: as large as fits with
// its proportions kept, centred across, at the top.
QRectF figureOnPage(const QSizeF& figure, const QSizeF& page);
// The line a printed figure carries above it, so that a pile of printouts
// can be told apart: the window's title, the date, the fitted index where
// the figure has one, and a blank for the pupil's name.
QString figureHeading(const Canvas& canvas, QDate date);
// Paints the figure through the painter, whose origin is the page's
// top-left corner (in the painter's units, the page's size is `page`):
// with a heading, the heading at the top (on two lines if one is too
// narrow) and the figure as large as fits below it, its proportions kept;
// without, the figure as figureOnPage places it.
void paintFigureOnPage(const Canvas& canvas, QPainter& painter, const QSizeF& page, const QString& heading = {});
// Prints the figure with today's heading on the printer's page, in its
// printable area; false when the printer could not be used.
bool printFigure(const Canvas& canvas, QPrinter& printer);

// Writes the figure to the file, as SVG when the name ends in .svg and as
// PNG otherwise, whole or not at all: on failure an existing file is left
// as it was and the error is returned (empty on success).
QString saveFigureFile(const Canvas& canvas, const QString& path);

// The title a saved or printed figure carries: its window's, else the
// drawing's own name.
QString figureTitle(const Canvas& canvas);

// What the drawing's two menu items do. The dialogs that ask for a file or
// a printer belong to the windows' floor, which installs them at start-up;
// until then the items do nothing.
struct FigureCommands {
    std::function<void(const Canvas&)> save;
    std::function<void(const Canvas&)> print;
};
void setFigureCommands(FigureCommands commands);

// Adds the context menu to a canvas (every canvas does this when it is
// made); the menu shows the window's keys for its two items.
void installFigureActions(Canvas& canvas);
