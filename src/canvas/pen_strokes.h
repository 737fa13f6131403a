#pragma once
#include <QColor>
#include <QPen>
#include <QPointF>

#include "canvas/recorded_ops.h"

class QPainter;

namespace canvas_ops {

Qt::PenStyle penStyleFor(DrawStyle s);

// Liang–Barsky clip of a segment to the square ±kPixelLimit. Returns false
// when nothing of it lies inside.
bool clipToLimit(double& x1, double& y1, double& x2, double& y2);

// The width a pen of this DrawWidth is painted with: grown by the
// presentation size on the screen.
double paintedPenWidth(int drawWidth, double magnify);

// Half a pixel for an odd width on the device, so that the line's sides
// fall on pixel boundaries; in logical pixels.
double penOffset(double drawWidth, qreal dpr);

// The pen for a line of this colour, width and style, its width grown by
// magnify (the presentation size).
QPen makePen(const QColor& colour, const PenState& pen, double magnify);

// A solid rule along a pixel row or column filled as a rectangle; false
// when the line is not one (it is then to be stroked).
bool fillAsRectangle(QPainter& painter, const QPointF& a, const QPointF& b, const QPen& pen);

// A thin line stroked in two halves, one each side of the pixel boundary
// it straddles; false when that does not apply.
bool strokeRowBySide(QPainter& painter, const QPointF& a, const QPointF& b);

}  // namespace canvas_ops
