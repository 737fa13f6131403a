// The constructions of the interpretation screens, without any screen.
#include <QtTest>

#include <cmath>
#include <limits>

#include "models/corpuscles.h"
#include "models/fermat.h"
#include "models/kymatiko.h"
#include "models/wave_fronts.h"

using namespace kymatiko;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool inside(const Field& f, Point p) {
    return p.x >= -1e-6 && p.x <= f.width + 1e-6 && p.y >= -1e-6 && p.y <= f.height + 1e-6;
}

// Direction of the last stretch of a track, as the angle from the downward
// normal (radians).
double finalAngle(const Track& t) {
    const Point a = t.points[t.points.size() - 6], b = t.points.back();
    return std::atan2(b.x - a.x, a.y - b.y);
}

}  // namespace

class TestKymatiko : public QObject {
    Q_OBJECT
private slots:
    void fresnelAgainstTextbookValues() {
        // Air to glass, n = 1.5, at 45°: r = 28.13°, |rs| = 0.3034, ts = 0.6966,
        // |rp| = 0.0920, tp = 0.7280 (Hecht's tables).
        const Refraction r = refract(radians(45.0), 1.5);
        QVERIFY(r.valid && !r.totalReflection);
        QVERIFY(std::fabs(degrees(r.refraction) - 28.1255) < 1e-3);
        const Fresnel f = fresnel(r, 1.5);
        QVERIFY(std::fabs(std::fabs(f.rs) - 0.3034) < 5e-4);
        QVERIFY(std::fabs(f.ts - 0.6966) < 5e-4);
        QVERIFY(std::fabs(std::fabs(f.rp) - 0.0920) < 5e-4);
        QVERIFY(std::fabs(f.tp - 0.7280) < 5e-4);
        // At Brewster's angle (56.31°) the p wave is not reflected.
        QVERIFY(std::fabs(fresnel(refract(radians(56.31), 1.5), 1.5).rp) < 1e-3);
        // The shares are the amplitudes times 100; from glass into air they
        // add up to more than 100.
        const Shares s = shares(f);
        QVERIFY(std::fabs(s.reflected - 100.0 * std::fabs(f.rs)) < 1e-12);
        QVERIFY(std::fabs(s.refracted - 100.0 * f.ts) < 1e-12);
        const Shares out = shares(fresnel(refract(radians(30.0), 1.0 / 1.5), 1.0 / 1.5));
        QVERIFY(out.reflected + out.refracted > 110.0);
    }

    void fresnelAtNormalIncidenceAndTotalReflection() {
        // 0/0 at normal incidence: the limits, 20 % and 80 % for glass.
        const Fresnel f = fresnel(refract(0.0, 1.5), 1.5);
        QVERIFY(std::isfinite(f.rs) && std::isfinite(f.ts) && std::isfinite(f.rp) && std::isfinite(f.tp));
        QVERIFY(std::fabs(shares(f).reflected - 20.0) < 1e-9);
        QVERIFY(std::fabs(shares(f).refracted - 80.0) < 1e-9);
        // Alike media: everything goes through, at any angle.
        QVERIFY(std::fabs(shares(fresnel(refract(radians(30.0), 1.0), 1.0)).refracted - 100.0) < 1e-9);
        // Total reflection: all reflected, nothing refracted.
        const Fresnel t = fresnel(refract(radians(60.0), 0.5), 0.5);
        QCOMPARE(shares(t).reflected, 100.0);
        QCOMPARE(shares(t).refracted, 0.0);
        // Unusable input gives zeros, not NaN.
        for (double n : {0.0, -1.5, kNaN}) {
            const Fresnel bad = fresnel(refract(radians(30.0), n), n);
            QCOMPARE(bad.rs, 0.0);
            QCOMPARE(bad.ts, 0.0);
        }
    }

    void totalReflectionFromSineOfPointNineNine() {
        // n = 0.5: sin r = 2 sin i reaches 0.99 at i = 29.67°, below the
        // critical angle of 30°, and already counts as total reflection.
        const double atLimit = std::asin(0.99 * 0.5);
        QVERIFY(refract(atLimit + 1e-9, 0.5).totalReflection);
        QVERIFY(!refract(atLimit - 1e-6, 0.5).totalReflection);
        QVERIFY(!refract(radians(89.0), 1.5).totalReflection);
        QCOMPARE(refract(radians(60.0), 0.5).refraction, 0.0);
        QVERIFY(!refract(0.3, 0.0).valid);
        QVERIFY(!refract(kNaN, 1.5).valid);
    }

    void criticalAngle() {
        QVERIFY(std::fabs(*criticalAngleDegrees(1.5) - 41.8103) < 1e-3);
        QVERIFY(std::fabs(*criticalAngleDegrees(0.5) - 30.0) < 1e-9);  // smaller over larger: same pair, same angle
        QVERIFY(std::fabs(*criticalAngleDegrees(2.0) - 30.0) < 1e-9);
        QVERIFY(!criticalAngleDegrees(1.0));
        QVERIFY(!criticalAngleDegrees(0.0));
        QVERIFY(!criticalAngleDegrees(-2.0));
        QVERIFY(intoLessDense(0.8) && !intoLessDense(1.2));
        QCOMPARE(arcSine(1.0), kPi / 2.0);
        QCOMPARE(arcSine(-3.0), -kPi / 2.0);
    }

    void lineCrossings() {
        // The ray from (0, 10) through (2, 6) meets y = 0 at x = 5.
        QCOMPARE(*lineCrossingX(0, 10, 2, 6, 0), 5.0);
        QCOMPARE(*lineCrossingRatio(10, 6, 0), 2.5);
        QCOMPARE(*lineCrossingY(0, 10, 2, 6, 5), 0.0);
        QVERIFY(!lineCrossingX(0, 3, 5, 3, 0));  // parallel to the line
        QVERIFY(!lineCrossingY(2, 0, 2, 9, 5));
    }

    void newtonLayerThickness() {
        // T = v1²·|n² − 1| / (2a) with v1 = 4: 50 units for glass at a = 0.2,
        // half of it at twice the pull, 30 units for n = 0.5.
        QCOMPARE(kymatiko::newtonLayerThickness(1.5, 0.2), 50.0);
        QCOMPARE(kymatiko::newtonLayerThickness(1.5, 0.4), 25.0);
        QCOMPARE(kymatiko::newtonLayerThickness(0.5, 0.2), 30.0);
        QCOMPARE(kymatiko::newtonLayerThickness(1.0, 0.2), 0.0);
        QCOMPARE(kymatiko::newtonLayerThickness(1.5, 0.0), 0.0);
        const Field field{750, 750};
        const Track one = corpuscleTrack(field, radians(30.0), 1.5, CorpuscleModel::NewtonOneLayer, 0.2);
        QCOMPARE(one.thickness, 50.0);
        QCOMPARE(one.faces.size(), std::size_t(2));
        QCOMPARE(one.faces[0] - one.faces[1], 50.0);
        const Track stack = corpuscleTrack(field, radians(30.0), 1.5, CorpuscleModel::NewtonParallelLayers, 0.2);
        QCOMPARE(stack.thickness, 50.0);
        QCOMPARE(int(stack.faces.size()), kParallelLayers + 1);
        QVERIFY(stack.mismatch <= 1e-4);
    }

    void corpuscleTracksObeyTheLaw() {
        // Every model leaves the boundary along sin r = sin i / n, at n times
        // the speed, and stays inside the field and the table.
        const Field field{800, 700};
        for (CorpuscleModel model :
             {CorpuscleModel::Descartes, CorpuscleModel::NewtonOneLayer, CorpuscleModel::NewtonParallelLayers}) {
            for (double n : {1.5, 0.8}) {
                const Track t = corpuscleTrack(field, radians(35.0), n, model, 0.2);
                QVERIFY(t.points.size() > 20 && int(t.points.size()) <= kPathCapacity);
                QVERIFY(!t.totalReflection);
                for (const Point& p : t.points) QVERIFY(inside(field, p));
                QVERIFY(std::fabs(std::sin(finalAngle(t)) - std::sin(radians(35.0)) / n) < 1e-6);
                const Point a = t.points[t.points.size() - 2], b = t.points.back();
                QVERIFY(std::fabs(std::hypot(b.x - a.x, b.y - a.y) - kCorpuscleSpeed * n) < 1e-6);
                QCOMPARE(t.points.front().y, field.height);  // comes in from the top edge
            }
        }
    }

    void corpusclesTurnBackAtTotalReflection() {
        const Field field{750, 750};
        for (CorpuscleModel model :
             {CorpuscleModel::Descartes, CorpuscleModel::NewtonOneLayer, CorpuscleModel::NewtonParallelLayers}) {
            const Track t = corpuscleTrack(field, radians(60.0), 0.7, model, 0.2);
            QVERIFY(t.totalReflection);
            QVERIFY(t.points.back().y > field.boundary() + 10.0);  // back in the upper medium
            // Leaves at the angle it came in (mirror image).
            QVERIFY(std::fabs(std::atan2(t.points.back().x - t.points[t.points.size() - 6].x,
                                         t.points.back().y - t.points[t.points.size() - 6].y) -
                              radians(60.0)) < 1e-6);
        }
    }

    void newtonOneLayerFollowsTheParabola() {
        // Inside Newton's layer the corpuscle feels a constant pull a across
        // the boundary (down into a denser medium, up out of a rarer one), so
        // with u the normal speed on arrival, v the speed along it and
        // t = (x − x_hit)/v its depth below the boundary is u·t ± a·t²/2.
        // After a total reflection it turns at depth u²/(2a) and climbs the
        // same parabola back, never deeper than that.
        const Field field{800, 700};
        const Point hit = field.hit();
        int reflections = 0, refractions = 0;
        for (double degreesIn : {20.0, 45.0, 70.0}) {
            for (double pull : {0.05, 0.2, 0.6}) {
                for (double n : {1.5, 1.33, 0.8, 0.6}) {
                    const Track t = corpuscleTrack(field, radians(degreesIn), n, CorpuscleModel::NewtonOneLayer, pull);
                    QVERIFY(!t.points.empty());
                    const double v = kCorpuscleSpeed * std::sin(radians(degreesIn));
                    const double u = kCorpuscleSpeed * std::cos(radians(degreesIn));
                    const double a = n > 1.0 ? -pull : pull;  // upward acceleration
                    const double floor = field.boundary() - t.thickness;
                    double deepest = 0.0;
                    for (const Point& p : t.points) {
                        if (p.y >= field.boundary() - 1e-9 || p.y <= floor + 1e-9) continue;  // outside the layer
                        const double time = (p.x - hit.x) / v;
                        const double depth = u * time - 0.5 * a * time * time;
                        QVERIFY2(std::fabs(field.boundary() - p.y - depth) < 1e-6,
                                 qPrintable(QStringLiteral("i=%1 a=%2 n=%3 x=%4").arg(degreesIn).arg(pull).arg(n).arg(p.x)));
                        deepest = std::max(deepest, field.boundary() - p.y);
                    }
                    if (!t.totalReflection) {
                        ++refractions;
                        continue;
                    }
                    ++reflections;
                    // The turn: within half a table step of the apex.
                    const double apex = u * u / (2.0 * pull);
                    QVERIFY(deepest <= apex + 1e-9);
                    QVERIFY(deepest >= apex - pull / 8.0 - 1e-9);
                    // Back in the upper medium and out of the field upwards,
                    // at the angle it came in.
                    const Point last = t.points.back(), before = t.points[t.points.size() - 2];
                    QVERIFY(last.y > field.boundary());
                    QVERIFY(std::fabs((last.y - before.y) - u) < 1e-6 && std::fabs((last.x - before.x) - v) < 1e-6);
                }
            }
        }
        QVERIFY(reflections >= 6 && refractions >= 20);  // both kinds of path were checked
    }

    void corpuscleTracksStayBounded() {
        // Grazing light, a feeble pull (a layer thicker than the field), a
        // sliver of a field and unusable numbers: bounded, finite, no hang.
        const Track grazing = corpuscleTrack({1499, 1}, radians(89.9), 1.5, CorpuscleModel::NewtonOneLayer, 1e-6);
        QVERIFY(int(grazing.points.size()) <= kPathCapacity);
        for (const Point& p : grazing.points) QVERIFY(std::isfinite(p.x) && std::isfinite(p.y));
        QVERIFY(corpuscleTrack({750, 750}, 0.5, kNaN, CorpuscleModel::Descartes).points.empty());
        QVERIFY(corpuscleTrack({750, 750}, 0.5, 1.5, CorpuscleModel::NewtonOneLayer, 0.0).points.empty());
        QVERIFY(corpuscleTrack({0, 750}, 0.5, 1.5, CorpuscleModel::Descartes).points.empty());
        // The stream's schedule: a quarter index per 10 ms tick.
        QCOMPARE(corpuscleIndex(100, 10, 0, 3.0), 25.0);
        QCOMPARE(corpuscleIndex(100, 50, 2, 3.0), 119.0);
    }

    void rayPathsAndField() {
        const Field field = fieldFor(800, 600);
        QCOMPARE(field.width + field.height, 1500.0);
        QCOMPARE(field.width / field.height, 800.0 / 600.0);
        QVERIFY(std::isfinite(fieldFor(0, 0).width) && fieldFor(0, 0).width > 0);
        const Refraction r = refract(radians(40.0), 1.5);
        const RayPaths p = rayPaths(field, r);
        QCOMPARE(p.incident.back().x, field.hit().x);
        QCOMPARE(p.incident.back().y, field.hit().y);
        QVERIFY(inside(field, p.incident.front()) && inside(field, p.refracted.back()));
        const Point a = p.refracted.front(), b = p.refracted.back();
        QVERIFY(std::fabs(std::atan2(b.x - a.x, a.y - b.y) - r.refraction) < 1e-9);
        QVERIFY(p.length() < kPathCapacity);
        QVERIFY(rayPaths(field, refract(radians(60.0), 0.5)).refracted.empty());
        QVERIFY(rayPaths(field, r, 0.0).incident.empty());  // no step, no walk
    }

    void waveFrontsMeetOnTheBoundary() {
        const Field field{900, 600};
        const double n = 1.5;
        const Refraction r = refract(radians(40.0), n);
        WaveSettings settings;
        settings.phase = 13.0;
        const WaveFronts w = waveFronts(field, r, n, settings);
        QVERIFY(!w.incident.empty() && !w.refracted.empty() && !w.reflected.empty());
        QVERIFY(w.incident.size() < 200);
        // Every refracted front that reaches the boundary meets an incident
        // front there.
        auto onBoundary = [&](const Segment& s) -> std::optional<double> {
            for (Point p : {s.a, s.b})
                if (std::fabs(p.y - field.boundary()) < 1e-6) return p.x;
            return std::nullopt;
        };
        int met = 0;
        for (const Segment& rf : w.refracted) {
            const auto x = onBoundary(rf);
            if (!x) continue;
            for (const Segment& in : w.incident)
                if (auto xi = onBoundary(in); xi && std::fabs(*xi - *x) < 1e-6) ++met;
        }
        QVERIFY(met >= 3);
        for (const auto* list : {&w.incident, &w.reflected, &w.refracted})
            for (const Segment& s : *list) QVERIFY(inside(field, s.a) && inside(field, s.b));
        // Straight down into n = 2: horizontal fronts half a wavelength apart.
        const WaveFronts down = waveFronts(field, refract(0.0, 2.0), 2.0, settings);
        QVERIFY(down.refracted.size() >= 2);
        QVERIFY(std::fabs(std::fabs(down.refracted[1].a.y - down.refracted[0].a.y) - settings.wavelength / 2) < 1e-9);
        // No refracted wave after a total reflection; none reflected when not asked.
        QVERIFY(waveFronts(field, refract(radians(60.0), 0.5), 0.5, settings).refracted.empty());
        settings.reflected = false;
        QVERIFY(waveFronts(field, r, n, settings).reflected.empty());
        settings.wavelength = 0.0;
        QVERIFY(waveFronts(field, r, n, settings).incident.empty());
    }

    void fermatTravelTimeAndLaws() {
        const Speeds fermatSpeeds = speedsFor(SpeedLaw::Fermat, 1.5);
        QCOMPARE(fermatSpeeds.lower, kUpperSpeed / 1.5);
        QCOMPARE(speedsFor(SpeedLaw::Descartes, 1.5).lower, kUpperSpeed * 1.5);
        // 300 up at c1, 400·1.5/c1 down.
        const PathTime t = travelTime({0, 600}, {0, 300}, {0, -100}, 300, fermatSpeeds);
        QCOMPARE(t.time, 3.0 + 6.0);
        QCOMPARE(t.distance(), 700.0);
        // Hero: equal slopes on the same side; not when b is off the boundary
        // or outside the two bodies.
        QCOMPARE(classifyPath({100, 500}, {300, 300}, {500, 500}, 300, 1.5, true), PathKind::Reflection);
        QCOMPARE(classifyPath({100, 500}, {300, 301}, {500, 500}, 300, 1.5, true), PathKind::Plain);
        QCOMPARE(classifyPath({100, 500}, {600, 300}, {500, 500}, 300, 1.5, true), PathKind::Plain);
        // Bodies on top of each other or at the same x: finite, plain.
        QCOMPARE(classifyPath({300, 500}, {300, 300}, {300, 500}, 300, 1.5, true), PathKind::Plain);
        QVERIFY(std::isfinite(travelTime({300, 300}, {300, 300}, {300, 300}, 300, fermatSpeeds).time));
    }

    void leastTimeSearch() {
        const double yb = 375.0;
        const Point a{100, 650}, c{650, 60};
        for (SpeedLaw law : {SpeedLaw::Fermat, SpeedLaw::Descartes}) {
            const Speeds speeds = speedsFor(law, 1.5);
            const LeastTimeSearch s = findLeastTime(a, c, yb, speeds);
            QVERIFY(s.best >= 1 && s.best <= 500);
            for (int i = 1; i <= 500; ++i) QVERIFY(i < s.best ? s.time[i] > s.bestTime : s.time[i] >= s.bestTime);
            // The law of the chosen speeds, sin θ1 / c1 = sin θ2 / c2, changes
            // sign within one grid step of the point found.
            const double step = (c.x - a.x) / 500.0;
            auto law1 = [&](double x) {
                const double s1 = (x - a.x) / std::hypot(x - a.x, a.y - yb);
                const double s2 = (c.x - x) / std::hypot(c.x - x, yb - c.y);
                return s1 / speeds.upper - s2 / speeds.lower;
            };
            QVERIFY(law1(s.bestX - step) * law1(s.bestX + step) <= 0.0);
            // Only Fermat's speeds make the found path the law of refraction.
            QCOMPARE(classifyPath(a, {s.bestX, yb}, c, yb, 1.5, true),
                     law == SpeedLaw::Fermat ? PathKind::Refraction : PathKind::Plain);
        }
        // Bodies at the same x: one point 500 times, the first is reported.
        const LeastTimeSearch same = findLeastTime({300, 600}, {300, 100}, yb, speedsFor(SpeedLaw::Fermat, 1.5));
        QCOMPARE(same.best, 1);
        QCOMPARE(same.bestX, 300.0);
    }
};

QTEST_APPLESS_MAIN(TestKymatiko)
#include "test_kymatiko.moc"
