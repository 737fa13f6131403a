#pragma once
#include <optional>
#include <vector>

// Plane geometry of the bench, in its user units (the square −200 … 200).

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Segment {
    Point from;
    Point to;
};

// The semicircular block: the centre of its flat face, its radius, the tilt
// of the flat face from the Y axis (radians, counter-clockwise) and which
// way its curved face looks. With tilt 0 the flat face is vertical; the
// curved face bulges to the left (−x) for direction 0 and 1 ("TO THE LEFT")
// and to the right (+x, towards the light source) for direction 2
// ("TO THE RIGHT").
struct Block {
    double xc = 0.0;
    double yc = 0.0;
    double radius = 100.0;
    double tilt = 0.0;   // radians
    int direction = 0;   // 0 none chosen, 1 left, 2 right
    double index = 1.5;  // refractive index of the block
};

// The two end points of the flat face: centre ± radius·(−sin tilt, cos tilt).
Segment flatFace(const Block& block);

// The angles to pass to Canvas::circle to draw the block closed by its
// diameter: start = −π/2 − tilt, end = −3π/2 − tilt (the tilt turned by π
// for direction 2), each brought up by 2π while below −2π and down by 2π
// while above 0; a start of exactly 0 becomes −0.001 so that it stays
// negative and the radius to it is drawn, an end of 0 becomes −2π (the same
// direction). So both come back negative for any tilt; a tilt that is not
// finite is drawn as 0.
struct ArcAngles {
    double start;
    double end;
};
ArcAngles blockArcAngles(const Block& block);

// Whether a point lies inside the block (on the boundary counts as inside).
bool insideBlock(const Block& block, Point p);

// The line y = m·x + b against the circle of centre (x0, y0) and radius R:
// D = (1 + m²)·R² − (y0 − m·x0 − b)²; no crossing when D ≤ 0; otherwise
// x = (x0 + m·(y0 − b) ± √D) / (1 + m²), with + for direction 1 and − for
// any other, y = b + m·x. The record gives the slope of the radius to the
// crossing, its angle (atan of the slope; π/2 when the radius is vertical,
// whose slope is then given as 0), the angle of the line (atan m) and their
// difference: the angle of incidence on the curved face. Results that
// overflow count as no crossing.
struct CircleCrossing {
    bool found = false;
    double x = 0.0;
    double y = 0.0;
    double radiusSlope = 0.0;
    double radiusAngle = 0.0;
    double lineAngle = 0.0;
    double incidence = 0.0;
};
CircleCrossing lineCircleIntersection(double m, double b, double x0, double y0, double radius, int direction);

// Crossing of the infinite lines through (a1, a2) and (b1, b2); none when
// they are parallel or a line is degenerate.
std::optional<Point> lineLineIntersection(Point a1, Point a2, Point b1, Point b2);
