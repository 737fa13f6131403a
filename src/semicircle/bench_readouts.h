#pragma once
#include <QColor>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

#include "semicircle/ray_trace.h"

class Canvas;

// The lab bench's aids drawn over a traced ray: the normal at each face it
// meets, an arrowhead on each piece, and its angles from the normal written
// beside it, as a pupil reads them with a protractor.

// The angles at one face, one decimal: "i = 30.0°" and "r = 19.5°"; under
// total reflection "i = 50.0°", "i' = 50.0°" (the reflected ray) and
// "TOTAL REFLECTION  ΟΛΙΚΗ ΑΝΑΚΛΑΣΗ".
QStringList readoutLines(const FaceHit& hit);

// What is written beside one ray, and the point it belongs to.
struct Readout {
    Point anchor;
    QStringList lines;
    bool flatFace = false;
};

// The readouts of a trace: at its first crossing of the flat face, and at
// any other face where the light was totally reflected.
std::vector<Readout> readoutsOf(const RayTrace& trace);

// The same angles in words, for the spoken summary ("at the flat face
// i = 30.0°, r = 19.5°"); empty when the ray met no face.
QString readoutSentence(const RayTrace& trace);

// The dashed normal at every face the ray meets.
void drawNormals(Canvas& canvas, const RayTrace& trace);
// An arrowhead on a piece of the ray, pointing the way the light goes.
void drawArrowhead(Canvas& canvas, const RaySegment& piece, const QColor& colour);

// Writes the readouts in boxes near their points, each where it covers no
// text already on the canvas and no other readout, and if it can also no
// ray of `rays`; a box away from its point gets a thin leader to it. A
// readout with no free place left (a very small bench) is not written.
// Returns the boxes drawn, in the canvas's widget pixels.
std::vector<QRectF> placeReadouts(Canvas& canvas, const std::vector<Readout>& readouts,
                                  const std::vector<Segment>& rays);
