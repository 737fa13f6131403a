#pragma once
#include "history/history_notes.h"

class Canvas;

// Draws the lettered figure of a history note on the canvas (cleared
// first), with its captions in a column on the right. The scale is set so
// that a unit is as long across as down, whatever the canvas's shape; the
// figure itself fills the left part, x 0 … 60, y 0 … 55.
void drawNoteFigure(Canvas& canvas, history::NoteFigure figure);
