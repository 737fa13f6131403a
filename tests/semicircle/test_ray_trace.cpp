#include <QtTest>

#include <cmath>
#include <limits>
#include <numbers>

#include "semicircle/bench_experiments.h"
#include "semicircle/bench_geometry.h"
#include "semicircle/ray_trace.h"

namespace {

constexpr double kPi = std::numbers::pi;

Block centredBlock(int direction, double index, double radius = 100.0) {
    return Block{0.0, 0.0, radius, 0.0, direction, index};
}

bool near(double a, double b, double tolerance = 1e-12) { return std::fabs(a - b) <= tolerance; }
bool finitePoint(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace

class TestRayTrace : public QObject {
    Q_OBJECT
private slots:
    void blockOutlineAndArcAngles() {
        Block b = centredBlock(1, 1.5, 50.0);
        b.xc = 10.0;
        b.yc = -20.0;
        // Turned left the curved half lies on −x, turned right on +x; corners belong to it.
        QVERIFY(insideBlock(b, {-30.0, -20.0}) && !insideBlock(b, {50.0, -20.0}) && insideBlock(b, {10.0, 30.0}));
        b.direction = 2;
        QVERIFY(insideBlock(b, {50.0, -20.0}) && !insideBlock(b, {-30.0, -20.0}));

        // The tilt that brings the start to exactly 0 keeps it negative, so the radius is drawn.
        b.tilt = -kPi / 2.0;
        b.direction = 1;
        ArcAngles a = blockArcAngles(b);
        QVERIFY(a.start == -0.001 && near(a.end, -kPi));
        // Any tilt, either way round: two negative angles half a turn apart.
        for (double tilt : {-7.0, -kPi, 0.3, kPi, 5.0, 1e6, std::nan("")})
            for (int direction : {1, 2}) {
                b.tilt = tilt;
                b.direction = direction;
                a = blockArcAngles(b);
                QVERIFY(a.start < 0.0 && a.start >= -2.0 * kPi && a.end < 0.0 && a.end >= -2.0 * kPi);
                const double sweep = std::fmod(std::fabs(a.end) - std::fabs(a.start) + 4.0 * kPi, 2.0 * kPi);
                QVERIFY2(std::fabs(sweep - kPi) < 2e-3, qPrintable(QString::number(tilt)));
            }
        // y = x against the circle of radius √2 about the origin: (1, 1) for root 1, (−1, −1) otherwise.
        CircleCrossing c = lineCircleIntersection(1.0, 0.0, 0.0, 0.0, std::sqrt(2.0), 1);
        QVERIFY(c.found && near(c.x, 1.0) && near(c.y, 1.0) && near(c.incidence, 0.0));
        c = lineCircleIntersection(1.0, 0.0, 0.0, 0.0, std::sqrt(2.0), 2);
        QVERIFY(near(c.x, -1.0) && near(c.y, -1.0));
        // y = x + 5 meets the radius-5 circle at its top: a vertical radius.
        c = lineCircleIntersection(1.0, 5.0, 0.0, 0.0, 5.0, 1);
        QVERIFY(c.found && c.x == 0.0 && c.radiusAngle == kPi / 2.0 && near(c.incidence, kPi / 4.0));
        QVERIFY(!lineCircleIntersection(0.0, 5.0, 2.0, 0.0, 5.0, 1).found);      // tangent
        QVERIFY(!lineCircleIntersection(1e200, 0.0, 0.0, 0.0, 1e200, 1).found);  // overflow
        QVERIFY(!lineCircleIntersection(std::nan(""), 0.0, 0.0, 0.0, 1.0, 1).found);

        const auto q = lineLineIntersection({5, -1}, {5, 1}, {0, 7}, {1, 7});  // beyond both segments
        QVERIFY(q && q->x == 5.0 && q->y == 7.0);
        QVERIFY(!lineLineIntersection({0, 0}, {1, 1}, {0, 1}, {1, 2}));  // parallel
        QVERIFY(!lineLineIntersection({0, 0}, {0, 0}, {0, 1}, {1, 2}));  // degenerate
    }

    // A ray through the centre of the flat face meets the arc along a radius,
    // so only the diameter bends it. Flat face first (direction 1) it measures
    // n; curved face first (2) it crosses the diameter from inside, measures
    // 1/n, or is totally reflected exactly where n·sin i > 1. Index 1 leaves
    // the ray undeviated.
    void centredRayMeasuresTheIndexOrReflects() {
        for (int direction : {1, 2})
            for (double n : {1.0, 1.33, 1.5, 2.0, 2.4})
                for (double a : measurementIncidences()) {
                    const RayTrace t = traceRay(centredBlock(direction, n, 60.0), 0.0, a);
                    const bool beyond = direction == 2 && n * std::sin(a * kPi / 180.0) > 1.0;
                    QVERIFY(t.segments.size() >= 2 && t.totalReflection == beyond);
                    const Point diameter = t.segments[direction == 1 ? 0 : 1].segment.to;
                    QVERIFY(near(diameter.x, 0.0, 1e-9) && near(diameter.y, 0.0, 1e-9));  // crossed at the centre
                    const Segment& out = t.segments.back().segment;
                    if (beyond) {
                        QVERIFY(!t.measuredIndex && out.to.x > out.from.x);  // turned back to the right
                        continue;
                    }
                    QCOMPARE(t.segments.size(), std::size_t{3});
                    QVERIFY(t.segments[1].kind == SegmentKind::Inside && t.segments[2].kind == SegmentKind::Emerging);
                    QVERIFY(out.to.x <= out.from.x + 1e-9);  // onwards to the left
                    QVERIFY(t.measuredIndex && near(*t.measuredIndex, direction == 1 ? n : 1.0 / n));
                    // The faces it met, with Snell's law between the angles
                    // from the normal: the arc along its radius, the flat face
                    // at the incidence a, whichever way the light crosses it.
                    QVERIFY(t.hits.size() == 2 && t.hits[direction == 1 ? 0 : 1].flatFace);
                    for (const FaceHit& h : t.hits) {
                        const double inside =
                            std::sin((h.entering ? h.leavingDegrees : h.incidenceDegrees) * kPi / 180);
                        const double outside =
                            std::sin((h.entering ? h.incidenceDegrees : h.leavingDegrees) * kPi / 180);
                        QVERIFY(near(outside, n * inside, 1e-9) &&
                                near(std::hypot(h.normal.x, h.normal.y), 1.0, 1e-12));
                        QVERIFY(!h.flatFace || near(h.incidenceDegrees, a, 1e-9));
                    }
                    for (const RaySegment& s : t.segments) {  // index 1: every piece at the incidence angle
                        const Segment& g = s.segment;
                        const double slope = std::atan2(std::fabs(g.to.y - g.from.y), std::fabs(g.to.x - g.from.x));
                        QVERIFY(n != 1.0 || near(slope, a * kPi / 180.0, 1e-9));
                    }
                }
        // At the critical angle itself (n = √2, 45°) n·sin i comes out as exactly 1: the light still leaves.
        QVERIFY(!traceRay(centredBlock(2, std::sqrt(2.0)), 0.0, 45.0).totalReflection);
        const double critical = *criticalAngleDegrees(1.5);
        QVERIFY(!traceRay(centredBlock(2, 1.5), 0.0, critical - 0.01).totalReflection);
        QVERIFY(traceRay(centredBlock(2, 1.5), 0.0, critical + 0.01).totalReflection);
        QVERIFY(*criticalAngleDegrees(1.0) == 90.0 && near(*criticalAngleDegrees(2.0), 30.0));
        QVERIFY(!criticalAngleDegrees(0.9) && !criticalAngleDegrees(std::nan("")));
        const auto run = runCriticalAngle(centredBlock(2, 1.5), 0.0);
        QVERIFY(run && run->angleDegrees == critical && !runCriticalAngle(centredBlock(2, 0.8), 0.0));
        // Along the axis the ray leaves horizontally: an exit angle of 0, no index.
        const RayTrace axis = traceRay(centredBlock(1, 1.5), 0.0, 0.0);
        QVERIFY(axis.exitRayAngle && *axis.exitRayAngle == 0.0 && !axis.measuredIndex);
        const RayTrace miss = traceRay(centredBlock(1, 1.5, 20.0), 60.0, 10.0);
        QVERIFY(!miss.hitBlock && miss.segments.size() == 1 && !miss.measuredIndex);
        // Off the centre the measurement is off too.
        const RayTrace off = traceRay(centredBlock(1, 1.5, 30.0), 10.0, 40.0);
        QVERIFY(off.measuredIndex && std::fabs(*off.measuredIndex - 1.5) > 0.01);
        // n = 0.5: from air sin r = 2 sin i, so at 40° nothing enters.
        const RayTrace back = traceRay(centredBlock(1, 0.5), 0.0, 40.0);
        QVERIFY(back.totalReflection && back.segments.size() == 2 && !back.exitRayAngle);
        QVERIFY(back.segments[1].kind == SegmentKind::Reflected && back.segments[1].segment.to.x > 0.0);
        // From inside, aimed at the centre at 45° (beyond the critical angle): reflected, then out.
        const RayTrace aimed = traceAimedRay(centredBlock(1, 1.5, 50.0), {-20.0, -20.0});
        QVERIFY(aimed.segments.front().kind == SegmentKind::Inside && aimed.totalReflection && aimed.exitRayAngle);
        QVERIFY(traceAimedRay(centredBlock(1, 1.5), {0.0, 0.0}).segments.empty());
        // A parallel beam from the right: every ray hits, the middle one undeviated; at most 1000 rays.
        const auto beam = traceParallelBeam(centredBlock(2, 1.5, 80.0), true, 5);
        QVERIFY(beam.size() == 5 && near(beam[2].segments.back().segment.to.y, 0.0, 1e-9));
        for (const RayTrace& t : beam) QVERIFY(t.hitBlock && t.segments.front().segment.from.x == 200.0);
        QCOMPARE(traceParallelBeam(centredBlock(2, 1.5), false, 3).front().segments.front().segment.from.x, -200.0);
        QVERIFY(traceParallelBeam(centredBlock(2, 1.5), true, 0).empty());
        QVERIFY(traceParallelBeam(centredBlock(2, 1.5), true, 1 << 30).size() == 1000);
        const double big = std::numeric_limits<double>::max();
        const double tiny = std::numeric_limits<double>::denorm_min();
        int traced = 0;
        for (double radius : {0.0, -5.0, tiny, 14.0, 1e300, big})
            for (double index : {-1.0, 0.0, tiny, 0.3, 1.5, 1e300})
                for (int direction : {0, 1, 2, 3})
                    for (double v : {0.0, 1e-300, 89.999, 90.0, 1e6, -1e300, big, -big})
                        for (double h : {0.0, v})
                            for (double a : {45.0, v}) {
                                Block b = centredBlock(direction, index, radius);
                                b.xc = b.tilt = v;
                                b.yc = -v;
                                const RayTrace t = traceRay(b, h, a);
                                traced += t.segments.empty() ? 0 : 1;
                                for (const RaySegment& s : t.segments)
                                    QVERIFY(finitePoint(s.segment.from) && finitePoint(s.segment.to));
                                QVERIFY(!t.exitRayAngle || std::isfinite(*t.exitRayAngle));
                                QVERIFY(!t.measuredIndex || std::isfinite(*t.measuredIndex));
                                if (radius <= 0.0 || index <= 0.0 || direction == 0 || direction == 3)
                                    QVERIFY(t.segments.empty());
                            }
        QVERIFY(traced > 100);
        const double nan = std::nan("");
        QVERIFY(traceRay(centredBlock(1, 1.5), nan, 30.0).segments.empty());
        QVERIFY(traceRay(centredBlock(1, nan), 0.0, 30.0).segments.empty());
        const Point endless{1.0, std::numeric_limits<double>::infinity()};
        QVERIFY(tracePath(centredBlock(1, 1.5), {0.0, 0.0}, endless, 0.0).segments.empty());
    }
};

QTEST_APPLESS_MAIN(TestRayTrace)
#include "test_ray_trace.moc"
