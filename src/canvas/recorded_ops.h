#pragma once
#include <QColor>
#include <QFont>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

#include "canvas/text_link.h"

class QPainter;
class QPaintDevice;

// Line styles of the pen, by their classic numbers.
enum class DrawStyle { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4, Transparent = 5, InsideSolid = 6 };

// Whether closed figures (circles, pies) are filled with FillColor.
enum class FillStyle { Solid = 0, Transparent = 1 };

// The drawing operations a canvas keeps between two cls(), and how one of
// them is painted. Operations are recorded in area fractions (0..1 across
// and down), so that they replay at any pixel size and survive later
// changes of scale.
namespace canvas_ops {

struct PenState {
    QColor foreColor{Qt::black};
    int drawWidth = 1;
    DrawStyle drawStyle = DrawStyle::Solid;
    QColor fillColor{Qt::black};
    FillStyle fillStyle = FillStyle::Transparent;
};

struct LineOp {
    double x1, y1, x2, y2;
    QColor colour;
    PenState pen;
};
struct BoxOp {
    double x1, y1, x2, y2;
    QColor colour;
    bool filled;
    PenState pen;
    bool onlyGrown = false;  // painted only where texts are shown larger
};
struct CircleOp {
    double x, y, radius;  // radius as a fraction of the area's width
    QColor colour;
    std::optional<double> start, end;
    double aspect;
    PenState pen;
    std::optional<QColor> forcedFill;
};
struct PointOp {
    double x, y;
    QColor colour;
    PenState pen;
};
// Text keeps its point size when the area grows; when it shrinks below
// the size the text was printed at, the text shrinks with it, so that
// lines printed one under another do not run into each other, but never
// below 8 points (or its own size, when it was printed smaller): smaller
// type cannot be read from the back of a classroom. A picture that must
// stay free of overlaps draws itself again at the new size instead.
struct TextOp {
    double x, y;
    QString text;
    QFont font;
    QColor colour;
    double areaWidth, areaHeight;
    QColor halo;
    TextLink link;
    int behind;     // texts recorded between the one it follows and it
    double below;   // designed distance under the text it follows, a fraction of the height (Below)
    bool onGround;  // it sits on the filled box recorded before it (see TextFlow)
    TextAnchor anchor;
};
using Op = std::variant<LineOp, BoxOp, CircleOp, PointOp, TextOp>;

// Where operations are painted: the area's size in logical pixels, and the
// vertical resolution the canvas lays its texts out for.
struct ReplayArea {
    double width;
    double height;
    int layoutDpiY;
};

struct TextFlow;  // canvas/text_flow.h

// Paints one operation through the painter, whose device gives the pixel
// ratio; a text is placed after the texts it follows and moves the flow on.
void paintOp(QPainter& painter, const Op& op, const ReplayArea& area, TextFlow& flow);
// Moves only the flow's ground on, as painting the operation would: what a
// text recorded next sits on, known before the operations are painted.
void noteGround(const Op& op, TextFlow& flow);

// The type size a recorded text is painted in on an area of this size.
double paintedPoints(const TextOp& text, double areaWidth, double areaHeight);

}  // namespace canvas_ops
