#pragma once
#include <QString>

#include "semicircle/bench_geometry.h"

class Canvas;

// A semicircular protractor laid over the bench, as in the school lab: its
// straight edge through the centre, marked every degree and numbered every
// 10° from its 0° line out to 90° on each side.
struct Protractor {
    Point centre;
    double zeroDegrees = 0.0;  // direction of the 0° line, from the x axis, counter-clockwise
    double radius = 170.0;     // bench units
};

// The protractor laid on a block: centred on its flat face, 0° along the
// face's normal, towards the light source's side.
Protractor protractorOn(const Block& block);

// Where a point takes hold of the protractor: its rim turns it, the rest of
// it moves it.
enum class ProtractorGrip { None, Body, Rim };
ProtractorGrip gripAt(const Protractor& protractor, Point p, double rimWidth);

// The direction of a point from the centre, degrees from the x axis.
double bearingDegrees(const Protractor& protractor, Point p);

// The mark of an angle: its inner and outer ends (the 10° marks longest).
struct Mark {
    double degrees;  // from the 0° line, −90 … 90
    Point inner;
    Point outer;
};
Mark markAt(const Protractor& protractor, int degrees);

void drawProtractor(Canvas& canvas, const Protractor& protractor);

// The protractor in words for the spoken summary.
QString protractorSentence(const Protractor& protractor);
