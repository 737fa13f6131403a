#pragma once
#include <QString>

#include <vector>

#include "canvas/canvas.h"

// A note printed on a drawing, as the lines it takes there: each line with
// the size it is printed at.
struct NoteLine {
    QString text;
    double points;
};

// The lines a note takes in a drawing room user units wide, in the canvas's
// font at the given size. The canvas's font size is left at that size.
std::vector<NoteLine> fitNote(Canvas& canvas, const QString& note, double room, double points);
