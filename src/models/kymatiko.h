#pragma once
#include <optional>
#include <vector>

#include "core/physics.h"

// The constructions behind the interpretation screens: refraction at a plane
// boundary, the critical angle, the Fresnel amplitudes, the ray paths along
// which a pulse of light is traced, and the crossing of a ray with a line.
// Plain arithmetic, no drawing: the screens draw what these return.
//
// Coordinates are field units with y upwards: the field runs from (0, 0) at
// the bottom left to (width, height), the boundary between the two media is
// the line y = height / 2 and the light comes from the upper medium. The
// ratio n is the index of the lower medium over that of the upper one.
namespace kymatiko {

using physics::kPi;
// A sine of the refraction angle of this much or more counts as total
// reflection: close to grazing the refracted beam carries next to nothing,
// and the arcsine below stays well conditioned.
inline constexpr double kTotalReflectionSine = 0.99;
// Points of a path table: indices 0 to 15000.
inline constexpr int kPathCapacity = 15001;

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Segment {
    Point a;
    Point b;
};

// The drawing field of a screen: 1500 units shared between its width and
// height in proportion to the window, so the picture keeps its shape.
struct Field {
    double width = 750.0;
    double height = 750.0;
    double boundary() const { return height / 2.0; }
    Point hit() const { return {width / 2.0, height / 2.0}; }  // where the ray meets the boundary
};
Field fieldFor(double pixelWidth, double pixelHeight, double units = 1500.0);

// The arcsine written through the arctangent, ±π/2 at |x| ≥ 1.
inline double arcSine(double x) { return physics::clampedArcSine(x); }

// Refraction at the boundary for an incidence angle (radians, from the
// normal) and the ratio n.
struct Refraction {
    bool valid = false;      // n and the angle were usable numbers
    double incidence = 0.0;  // radians
    double sinR = 0.0;       // sin i / n
    bool totalReflection = false;
    double refraction = 0.0;  // radians; 0 after a total reflection
};
Refraction refract(double incidenceRadians, double n);
using physics::degrees;
using physics::radians;

// The critical angle of the pair of media (degrees), from the ratio of the
// smaller index to the larger. None when the media are alike or n is unusable.
using physics::criticalAngleDegrees;
// Light going down meets a critical angle only when the lower medium is the
// less dense one.
inline bool intoLessDense(double n) { return n > 0.0 && n < 1.0; }

// Fresnel amplitude coefficients for s and p polarisation.
struct Fresnel {
    double rs = 0.0, ts = 0.0, rp = 0.0, tp = 0.0;
};
// At normal incidence the quotients are 0/0; their limits there are the
// textbook values (1 − n)/(1 + n), 2/(1 + n) and (n − 1)/(n + 1). After a
// total reflection all the light is reflected: |rs| = |rp| = 1, ts = tp = 0.
Fresnel fresnel(const Refraction& refraction, double n);
// The shares shown to the pupil: 100·|rs| and 100·|ts|, the amplitudes (not
// the intensities), so the two need not add up to 100.
struct Shares {
    double reflected = 0.0;
    double refracted = 0.0;
};
Shares shares(const Fresnel& f);
// Below this |rs| the reflected ray is too faint to be drawn in red.
inline constexpr double kVisibleReflection = 0.05;

// --- crossings of a ray with a line, by similar triangles -------------------
// A ray from (x0, y0) through (x1, y1). Each gives none when the ray runs
// parallel to the line.
// The x where the ray meets the horizontal line y = lineY.
std::optional<double> lineCrossingX(double x0, double y0, double x1, double y1, double lineY);
// The y where the ray meets the vertical line x = lineX.
std::optional<double> lineCrossingY(double x0, double y0, double x1, double y1, double lineX);
// How far along from the first point to the second the ray meets
// y = lineY, as a fraction of that stretch (0 at the start, 1 at the second).
std::optional<double> lineCrossingRatio(double y0, double y1, double lineY);

// --- the path tables of the ray routine ----------------------------------------
// The incident ray from the edge of the field to the point of incidence,
// then the reflected ray back to the edge and the refracted ray (none after a
// total reflection) to the far edge, as points `step` units apart.
struct RayPaths {
    std::vector<Point> incident;
    std::vector<Point> reflected;
    std::vector<Point> refracted;
    int length() const;  // the points of the longest walk: incident then the longer branch
};
RayPaths rayPaths(const Field& field, const Refraction& refraction, double step = 5.0);
// Where a ray leaving `from` in direction (dx, dy) leaves the field.
Point edgeOfField(const Field& field, Point from, double dx, double dy);

}  // namespace kymatiko
