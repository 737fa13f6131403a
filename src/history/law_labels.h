#pragma once
#include <QColor>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class Canvas;

// A law's label as it would stand at its own place on the angle graph: the
// lines printed one under another (bold) from (x, top), their type size and
// colour, and the ground painted under them. groundAtLeast is the least the
// ground covers, in user coordinates (left, top, right, bottom); the ground
// always reaches a little beyond the text as well.
struct LawLabel {
    QStringList lines;
    double points = 8.0;
    QColor colour{Qt::black};
    QColor ground{Qt::white};
    double x = 0.0, top = 0.0;
    QRectF groundAtLeast;  // empty: just around the text
};

// A law laid over the data: its line or curve, its label worked out for the
// canvas's present size and scale, and a sentence for the graph's summary.
struct LawFigure {
    std::function<void(Canvas&)> drawLine;
    std::function<LawLabel(Canvas&)> label;
    QString spoken;
    // The law's row of the legend: its name with its parameter
    // ("Snell n = 1.52") beside a short line of its colour.
    QString legend;
    QColor colour;
};

// Lays the laws over the graph already drawn on the canvas: first every
// line, then every label on its ground, so that no line runs over a label.
// A label goes to its own place when that is free; otherwise it moves down,
// or up, a few pixels at a time to the nearest place where its ground
// covers no text already printed (the graph's and the other laws' labels),
// no data point and no axis. Last comes the legend, one row per law, in the
// first place from the upper left where it covers no text, label, data
// point, axis or line of a law.
void layLawsOver(Canvas& canvas, const std::vector<LawFigure>& laws);
