#pragma once
#include <optional>
#include <vector>

#include "semicircle/bench_geometry.h"

// Radius of the circle around the origin on which the light source stands.
inline constexpr double kSourceCircleRadius = 150.0;

enum class SegmentKind {
    Incident,   // from the source to the first face
    Inside,     // inside the block (refracted, or totally reflected)
    Emerging,   // leaving the block into the air
    Reflected,  // turned back at the first face without entering
};

struct RaySegment {
    Segment segment;
    SegmentKind kind;
};

// Where the ray meets a face of the block, and the angles there from the
// face's normal, in degrees in [0, 90]: the incidence in the medium the
// light comes from and, after it, the refraction in the other medium or,
// when the light is turned back, the reflection.
struct FaceHit {
    Point at;
    Point normal;  // unit, pointing out of the block
    bool flatFace = false;
    bool entering = false;  // from the air into the block
    double incidenceDegrees = 0.0;
    double leavingDegrees = 0.0;  // refraction, or reflection when totalReflection
    bool totalReflection = false;
};

struct RayTrace {
    std::vector<RaySegment> segments;  // in the order the light travels them
    std::vector<FaceHit> hits;         // in the same order
    bool hitBlock = false;             // the ray met the block at all
    // Reflected totally at some face: inside the block, or at the first face
    // of a block less dense than air (then the segment is Reflected).
    bool totalReflection = false;
    // Angle of the ray that finally leaves the block, from the horizontal:
    // atan(|dy/dx|), radians in [0, π/2]. None when no ray left the block
    // by refraction.
    std::optional<double> exitRayAngle;
    // |sin a / sin exitRayAngle|, a the angle of incidence of the source;
    // none when there is no exit ray or its angle is 0, and none after a
    // total reflection: only light refracted at both faces measures the
    // index.
    std::optional<double> measuredIndex;
};

// The source of the experiment for an incidence angle a (degrees): the
// point (150·cos a, 150·sin a), on the right of the bench for either
// direction. The direction turns the block, not the light: a block turned
// to the left (1) shows its flat face to the source, one turned to the
// right (2) its curved face.
Point sourcePoint(double incidenceDegrees, int direction);

// The experiment's ray: from the source for the incidence angle through the
// point (0, rayHeight), traced through the block by Snell's law at each face
// (air index 1, block index block.index), with total reflection inside where
// |n·sin i| > 1. Nothing is traced (an empty result) when block.direction is
// neither 1 nor 2, when the numbers are not finite, or when the radius or
// the index is not positive.
RayTrace traceRay(const Block& block, double rayHeight, double incidenceDegrees);

// A ray from any point in any direction (need not be unit length), traced
// the same way; used for parallel beams and rays aimed with the mouse.
// `incidenceDegrees` is only used for the measured index. The last segment
// reaches `reach` units beyond its last face (beyond the start when the ray
// misses). A start inside the block begins with an Inside segment. Any
// direction other than 2 is the block turned to the left. After 8 total
// reflections inside, the ray is given up without an exit. Empty when a
// number is not finite, the radius or the index is not positive, or the
// direction is zero.
RayTrace tracePath(const Block& block, Point start, Point direction, double incidenceDegrees, double reach = 450.0);

// The critical angle of the block for light leaving it, degrees:
// arcsine(1/n) written through the arctangent, 90 for n = 1; none for n < 1.
std::optional<double> criticalAngleDegrees(double index);
