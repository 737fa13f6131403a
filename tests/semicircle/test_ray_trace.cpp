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
    Block b;
    b.radius = radius;
    b.direction = direction;
    b.index = index;
    return b;
}

bool finitePoint(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }

double slopeAngle(const Segment& s) {
    return std::atan2(std::fabs(s.to.y - s.from.y), std::fabs(s.to.x - s.from.x));
}

}  // namespace

class TestRayTrace : public QObject {
    Q_OBJECT
private slots:
    void blockOutline() {
        Block b = centredBlock(1, 1.5, 50.0);
        b.xc = 10.0;
        b.yc = -20.0;
        const Segment face = flatFace(b);
        QCOMPARE(face.from.x, 10.0);
        QCOMPARE(face.from.y, 30.0);
        QCOMPARE(face.to.y, -70.0);

        // Turned left: the curved half on −x; turned right: on +x.
        QVERIFY(insideBlock(b, {-30.0, -20.0}));
        QVERIFY(!insideBlock(b, {50.0, -20.0}));
        QVERIFY(insideBlock(b, {10.0, 30.0}));  // the corner belongs to it
        b.direction = 2;
        QVERIFY(insideBlock(b, {50.0, -20.0}));
        QVERIFY(!insideBlock(b, {-30.0, -20.0}));
        // A quarter turn counter-clockwise puts the curved half below.
        b.direction = 1;
        b.tilt = kPi / 2.0;
        QVERIFY(insideBlock(b, {10.0, -50.0}));
        QVERIFY(!insideBlock(b, {10.0, 10.0}));
    }

    void arcAnglesMatchTheOutline() {
        // Canvas arcs run counter-clockwise from |start| to |end|: the left
        // half for direction 1, the right half for direction 2.
        Block b = centredBlock(1, 1.5);
        ArcAngles a = blockArcAngles(b);
        QCOMPARE(a.start, -kPi / 2.0);
        QCOMPARE(a.end, -3.0 * kPi / 2.0);
        b.direction = 2;
        a = blockArcAngles(b);
        QVERIFY(a.start < 0.0 && a.end < 0.0);
        QVERIFY(std::fabs(std::fabs(a.start) - 3.0 * kPi / 2.0) < 1e-12);
        QVERIFY(std::fabs(std::fabs(a.end) - kPi / 2.0) < 1e-12);

        // The tilt that makes the start exactly 0 still draws the radius.
        b.direction = 1;
        b.tilt = -kPi / 2.0;
        a = blockArcAngles(b);
        QCOMPARE(a.start, -0.001);
        QVERIFY(std::fabs(a.end + kPi) < 1e-12);

        // Any tilt gives two negative angles half a turn apart.
        for (double tilt : {-7.0, -3.0, -kPi, -1.0, 0.3, 2.0, kPi, 5.0, 40.0, 1e6}) {
            for (int direction : {1, 2}) {
                b.tilt = tilt;
                b.direction = direction;
                a = blockArcAngles(b);
                QVERIFY(a.start < 0.0 && a.start >= -2.0 * kPi);
                QVERIFY(a.end < 0.0 && a.end >= -2.0 * kPi);
                const double sweep = std::fmod(std::fabs(a.end) - std::fabs(a.start) + 4.0 * kPi, 2.0 * kPi);
                QVERIFY2(std::fabs(sweep - kPi) < 2e-3, qPrintable(QString::number(tilt)));
            }
        }
    }

    void lineCircleCrossing() {
        // y = x + 0 against the circle of radius √2 about the origin: (±1, ±1).
        CircleCrossing c = lineCircleIntersection(1.0, 0.0, 0.0, 0.0, std::sqrt(2.0), 1);
        QVERIFY(c.found);
        QVERIFY(std::fabs(c.x - 1.0) < 1e-12 && std::fabs(c.y - 1.0) < 1e-12);
        QVERIFY(std::fabs(c.radiusSlope - 1.0) < 1e-12);
        QVERIFY(std::fabs(c.incidence) < 1e-12);  // the line runs along the radius
        c = lineCircleIntersection(1.0, 0.0, 0.0, 0.0, std::sqrt(2.0), 2);
        QVERIFY(std::fabs(c.x + 1.0) < 1e-12 && std::fabs(c.y + 1.0) < 1e-12);

        // Horizontal line y = 3 against the circle about (2, 0) of radius 5.
        c = lineCircleIntersection(0.0, 3.0, 2.0, 0.0, 5.0, 1);
        QCOMPARE(c.x, 6.0);
        QCOMPARE(c.radiusAngle, std::atan(0.75));
        // y = x + 5 meets the circle of radius 5 at its top: a vertical radius.
        c = lineCircleIntersection(1.0, 5.0, 0.0, 0.0, 5.0, 1);
        QVERIFY(c.found);
        QCOMPARE(c.x, 0.0);
        QCOMPARE(c.radiusAngle, kPi / 2.0);
        QCOMPARE(c.incidence, kPi / 4.0);

        QVERIFY(!lineCircleIntersection(0.0, 5.0, 2.0, 0.0, 5.0, 1).found);  // tangent: D = 0
        QVERIFY(!lineCircleIntersection(0.0, 9.0, 2.0, 0.0, 5.0, 1).found);
        QVERIFY(!lineCircleIntersection(1e200, 0.0, 0.0, 0.0, 1e200, 1).found);  // overflow
        QVERIFY(!lineCircleIntersection(std::nan(""), 0.0, 0.0, 0.0, 1.0, 1).found);
    }

    void lineLineCrossing() {
        const auto p = lineLineIntersection({0, 0}, {2, 2}, {0, 2}, {2, 0});
        QVERIFY(p);
        QCOMPARE(p->x, 1.0);
        QCOMPARE(p->y, 1.0);
        // A vertical and a horizontal line, crossing outside both segments.
        const auto q = lineLineIntersection({5, -1}, {5, 1}, {0, 7}, {1, 7});
        QVERIFY(q);
        QCOMPARE(q->x, 5.0);
        QCOMPARE(q->y, 7.0);
        QVERIFY(!lineLineIntersection({0, 0}, {1, 1}, {0, 1}, {1, 2}));  // parallel
        QVERIFY(!lineLineIntersection({0, 0}, {0, 0}, {0, 1}, {1, 2}));  // degenerate
    }

    void indexOneLeavesTheRayUndeviated() {
        for (int direction : {1, 2}) {
            const Block b = centredBlock(direction, 1.0);
            for (double a : measurementIncidences()) {
                const RayTrace t = traceRay(b, 0.0, a);
                QVERIFY(t.hitBlock);
                QCOMPARE(t.segments.size(), std::size_t{3});
                for (const RaySegment& s : t.segments) QVERIFY(std::fabs(slopeAngle(s.segment) - a * kPi / 180.0) < 1e-9);
                QVERIFY(t.measuredIndex);
                QVERIFY(std::fabs(*t.measuredIndex - 1.0) < 1e-9);
            }
        }
    }

    void flatFaceFirstMeasuresTheIndex() {
        for (double n : {1.33, 1.5, 2.4}) {
            const Block b = centredBlock(1, n, 60.0);
            for (double a : measurementIncidences()) {
                const RayTrace t = traceRay(b, 0.0, a);
                QVERIFY(!t.totalReflection);
                QCOMPARE(t.segments.size(), std::size_t{3});
                QVERIFY(t.segments[0].kind == SegmentKind::Incident);
                QVERIFY(t.segments[1].kind == SegmentKind::Inside);
                QVERIFY(t.segments[2].kind == SegmentKind::Emerging);
                // It enters at the centre and leaves on the left through the arc.
                QVERIFY(std::fabs(t.segments[0].segment.to.x) < 1e-9);
                QVERIFY(t.segments[2].segment.from.x < 0.0);
                QVERIFY(t.measuredIndex);
                QVERIFY2(std::fabs(*t.measuredIndex - n) < 1e-12, qPrintable(QString::number(*t.measuredIndex - n)));
            }
        }
    }

    void curvedFaceFirstMeasuresTheInverseOrReflects() {
        const double n = 1.5;
        const Block b = centredBlock(2, n, 80.0);
        int reflected = 0;
        for (double a : measurementIncidences()) {
            const RayTrace t = traceRay(b, 0.0, a);
            const bool beyondCritical = n * std::sin(a * kPi / 180.0) > 1.0;
            QCOMPARE(t.totalReflection, beyondCritical);
            if (beyondCritical) {
                ++reflected;
                QVERIFY(!t.measuredIndex);
                // Turned back at the diameter, it leaves through the arc on the right.
                QVERIFY(t.segments.back().kind == SegmentKind::Emerging);
                QVERIFY(t.segments.back().segment.to.x > t.segments.back().segment.from.x);
            } else {
                QVERIFY(t.measuredIndex);
                QVERIFY(std::fabs(*t.measuredIndex - 1.0 / n) < 1e-12);
                QVERIFY(t.segments.back().segment.to.x < -100.0);  // out on the left
            }
        }
        QCOMPARE(reflected, 4);  // 50° … 80° lie beyond the critical 41.8°
    }

    void criticalAngle() {
        QCOMPARE(*criticalAngleDegrees(1.0), 90.0);
        QVERIFY(std::fabs(*criticalAngleDegrees(2.0) - 30.0) < 1e-12);
        QVERIFY(!criticalAngleDegrees(0.9));
        QVERIFY(!criticalAngleDegrees(std::nan("")));
        // Just inside and just beyond the critical angle.
        const Block b = centredBlock(2, 1.5);
        const double critical = *criticalAngleDegrees(1.5);
        QVERIFY(!traceRay(b, 0.0, critical - 0.01).totalReflection);
        QVERIFY(traceRay(b, 0.0, critical + 0.01).totalReflection);
        const auto run = runCriticalAngle(b, 0.0);
        QVERIFY(run);
        QCOMPARE(run->angleDegrees, critical);
        QVERIFY(!runCriticalAngle(centredBlock(2, 0.8), 0.0));
    }

    void horizontalExitGivesNoMeasurement() {
        // Along the axis through the centre the ray leaves horizontally.
        const Block b = centredBlock(1, 1.5);
        const RayTrace t = traceRay(b, 0.0, 0.0);
        QVERIFY(t.exitRayAngle);
        QCOMPARE(*t.exitRayAngle, 0.0);
        QVERIFY(!t.measuredIndex);
    }

    void noDirectionNoTrace() {
        Block b = centredBlock(0, 1.5);
        QVERIFY(traceRay(b, 0.0, 30.0).segments.empty());
        b.direction = 3;
        QVERIFY(traceRay(b, 0.0, 30.0).segments.empty());
    }

    void rayPassingByAndOffCentre() {
        const Block b = centredBlock(1, 1.5, 20.0);
        const RayTrace miss = traceRay(b, 60.0, 10.0);
        QVERIFY(!miss.hitBlock);
        QCOMPARE(miss.segments.size(), std::size_t{1});
        QVERIFY(!miss.measuredIndex);
        // Off the centre the measurement is off too.
        const RayTrace off = traceRay(centredBlock(1, 1.5, 30.0), 10.0, 40.0);
        QVERIFY(off.measuredIndex);
        QVERIFY(std::fabs(*off.measuredIndex - 1.5) > 0.01);
    }

    void lessDenseBlockTurnsTheLightBackAtOnce() {
        // n = 0.5: from air into the block sin r = 2 sin i, beyond 30° nothing enters.
        const RayTrace t = traceRay(centredBlock(1, 0.5), 0.0, 40.0);
        QVERIFY(t.totalReflection);
        QCOMPARE(t.segments.size(), std::size_t{2});
        QVERIFY(t.segments[1].kind == SegmentKind::Reflected);
        QVERIFY(t.segments[1].segment.to.x > 0.0);
        QVERIFY(!t.exitRayAngle);
    }

    void verticalRaysAndStartsInside() {
        const Block b = centredBlock(1, 1.5, 50.0);
        // Straight down through the curved half: no refraction at normal
        // incidence on the arc, out through the bottom.
        RayTrace t = tracePath(b, {-10.0, 150.0}, {0.0, -1.0}, 90.0);
        QVERIFY(t.hitBlock);
        QVERIFY(t.segments.back().kind == SegmentKind::Emerging);
        for (const RaySegment& s : t.segments) QVERIFY(finitePoint(s.segment.to));
        // From inside, aimed at the centre of the flat face, it leaves there.
        t = traceAimedRay(b, {-20.0, -20.0});
        QVERIFY(t.segments.front().kind == SegmentKind::Inside);
        QVERIFY(std::fabs(t.segments.front().segment.to.x) < 1e-9);
        QVERIFY(t.exitRayAngle);
        // 45° inside is beyond the critical angle of 1.5: reflected, then out through the arc.
        QVERIFY(t.totalReflection);
        QVERIFY(traceAimedRay(b, {0.0, 0.0}).segments.empty());
    }

    void parallelBeam() {
        const Block b = centredBlock(2, 1.5, 80.0);
        const auto right = traceParallelBeam(b, true, 5);
        QCOMPARE(right.size(), std::size_t{5});
        for (const RayTrace& t : right) {
            QVERIFY(t.hitBlock);
            QCOMPARE(t.segments.front().segment.from.x, 200.0);
        }
        // The middle ray runs along the axis undeviated.
        QVERIFY(std::fabs(right[2].segments.back().segment.to.y) < 1e-9);
        const auto left = traceParallelBeam(b, false, 3);
        QCOMPARE(left.front().segments.front().segment.from.x, -200.0);
        QVERIFY(traceParallelBeam(b, true, 0).empty());
        QCOMPARE(traceParallelBeam(b, true, 1 << 30).size(), std::size_t{1000});
    }

    void oddInputsNeverGiveNaN() {
        const double big = std::numeric_limits<double>::max();
        const double tiny = std::numeric_limits<double>::denorm_min();
        const double values[] = {0.0, -0.0, 1e-300, tiny, 1.0, -3.5, 89.999, 90.0, 180.0, 1e6, 1e300, -1e300, big, -big};
        int traced = 0;
        for (double radius : {0.0, -5.0, tiny, 1e-12, 14.0, 146.0, 1e300, big}) {
            for (double index : {-1.0, 0.0, tiny, 0.3, 1.0, 1.5, 1e300}) {
                for (int direction : {1, 2}) {
                    for (double v : values) {
                        Block b = centredBlock(direction, index, radius);
                        b.xc = v;
                        b.yc = -v;
                        b.tilt = v;
                        for (double h : {0.0, 10.0, v}) {
                            for (double a : {0.0, 45.0, v}) {
                                const RayTrace t = traceRay(b, h, a);
                                if (!t.segments.empty()) ++traced;
                                for (const RaySegment& s : t.segments) {
                                    QVERIFY(finitePoint(s.segment.from));
                                    QVERIFY(finitePoint(s.segment.to));
                                }
                                if (t.exitRayAngle) QVERIFY(std::isfinite(*t.exitRayAngle));
                                if (t.measuredIndex) QVERIFY(std::isfinite(*t.measuredIndex));
                                if (radius <= 0.0 || index <= 0.0) QVERIFY(t.segments.empty());
                            }
                        }
                    }
                }
            }
        }
        QVERIFY(traced > 1000);
        const double nan = std::nan("");
        QVERIFY(traceRay(centredBlock(1, 1.5), nan, 30.0).segments.empty());
        QVERIFY(traceRay(centredBlock(1, nan), 0.0, 30.0).segments.empty());
        QVERIFY(tracePath(centredBlock(1, 1.5), {0.0, 0.0}, {1.0, std::numeric_limits<double>::infinity()}, 0.0)
                    .segments.empty());
    }
};

QTEST_APPLESS_MAIN(TestRayTrace)
#include "test_ray_trace.moc"
