// The constructions of the interpretation screens, without any screen:
// refraction, Fresnel and the energy shares, corpuscle tracks, wave fronts
// and Fermat's least time.
#include <QtTest>

#include <cmath>
#include <limits>

#include "models/corpuscles.h"
#include "models/energy_shares.h"
#include "models/fermat.h"
#include "models/kymatiko.h"
#include "models/wave_fronts.h"

using namespace kymatiko;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr CorpuscleModel kModels[] = {CorpuscleModel::Descartes, CorpuscleModel::NewtonOneLayer,
                                      CorpuscleModel::NewtonParallelLayers};

bool inside(const Field& f, Point p) {
    return p.x >= -1e-6 && p.x <= f.width + 1e-6 && p.y >= -1e-6 && p.y <= f.height + 1e-6;
}

bool near(double a, double b, double tolerance) { return std::fabs(a - b) < tolerance; }

// Direction of the last stretch of a track from the downward normal, or,
// upwards, from the upward one (radians).
double finalAngle(const Track& t, bool upwards = false) {
    const Point a = t.points[t.points.size() - 6], b = t.points.back();
    return std::atan2(b.x - a.x, upwards ? b.y - a.y : a.y - b.y);
}

}  // namespace

class TestKymatiko : public QObject {
    Q_OBJECT
private slots:
    void fresnelAgainstTextbookValues() {
        // Air to glass, n = 1.5, at 45°: r = 28.13°, |rs| = 0.3034, ts = 0.6966,
        // |rp| = 0.0920, tp = 0.7280 (Hecht's tables).
        const Refraction r = refract(radians(45.0), 1.5);
        QVERIFY(r.valid && !r.totalReflection && near(degrees(r.refraction), 28.1255, 1e-3));
        const Fresnel f = fresnel(r, 1.5);
        QVERIFY(near(std::fabs(f.rs), 0.3034, 5e-4) && near(f.ts, 0.6966, 5e-4));
        QVERIFY(near(std::fabs(f.rp), 0.0920, 5e-4) && near(f.tp, 0.7280, 5e-4));
        // The shares (amplitudes times 100) from glass into air add up to more than 100.
        const Shares out = shares(fresnel(refract(radians(30.0), 1.0 / 1.5), 1.0 / 1.5));
        QVERIFY(out.reflected + out.refracted > 110.0);
        // 0/0 at normal incidence: the limits, 20 % and 80 % for glass.
        const Fresnel normal = fresnel(refract(0.0, 1.5), 1.5);
        QVERIFY(std::isfinite(normal.rp) && std::isfinite(normal.tp));
        QVERIFY(near(shares(normal).reflected, 20.0, 1e-9) && near(shares(normal).refracted, 80.0, 1e-9));
        // Alike media: everything goes through; total reflection: nothing.
        QVERIFY(near(shares(fresnel(refract(radians(30.0), 1.0), 1.0)).refracted, 100.0, 1e-9));
        const Fresnel t = fresnel(refract(radians(60.0), 0.5), 0.5);
        QVERIFY(shares(t).reflected == 100.0 && shares(t).refracted == 0.0);
        // Unusable input gives zeros, not NaN.
        for (double n : {0.0, -1.5, kNaN}) QVERIFY(fresnel(refract(radians(30.0), n), n).rs == 0.0);
    }

    void totalReflectionCriticalAngleAndCrossings() {
        // n = 0.5: sin r = 2 sin i reaches 0.99 at i = 29.67°, below the
        // critical angle of 30°, and already counts as total reflection.
        const double atLimit = std::asin(0.99 * 0.5);
        QVERIFY(refract(atLimit + 1e-9, 0.5).totalReflection && !refract(atLimit - 1e-6, 0.5).totalReflection);
        QVERIFY(!refract(radians(89.0), 1.5).totalReflection);
        QVERIFY(!refract(0.3, 0.0).valid && !refract(kNaN, 1.5).valid);
        // The same pair of media has one critical angle, whichever way round.
        QVERIFY(near(*criticalAngleDegrees(1.5), 41.8103, 1e-3) && near(*criticalAngleDegrees(0.5), 30.0, 1e-9));
        QVERIFY(near(*criticalAngleDegrees(2.0), 30.0, 1e-9));
        QVERIFY(!criticalAngleDegrees(1.0) && !criticalAngleDegrees(0.0) && !criticalAngleDegrees(-2.0));
        QVERIFY(intoLessDense(0.8) && !intoLessDense(1.2));
        // The ray from (0, 10) through (2, 6) meets y = 0 at x = 5.
        QCOMPARE(*lineCrossingX(0, 10, 2, 6, 0), 5.0);
        QCOMPARE(*lineCrossingRatio(10, 6, 0), 2.5);
        QCOMPARE(*lineCrossingY(0, 10, 2, 6, 5), 0.0);
        QVERIFY(!lineCrossingX(0, 3, 5, 3, 0) && !lineCrossingY(2, 0, 2, 9, 5));  // parallel to the line
    }

    // Every model leaves the boundary along sin r = sin i / n, at n times
    // the speed, inside the field and the table; beyond the critical angle
    // it turns back and leaves at the angle it came in (mirror image).
    void corpuscleTracksObeyTheLaw() {
        const Field field{800, 700};
        for (CorpuscleModel model : kModels) {
            for (double n : {1.5, 0.8}) {
                const Track t = corpuscleTrack(field, radians(35.0), n, model, 0.2);
                QVERIFY(t.points.size() > 20 && int(t.points.size()) <= kPathCapacity && !t.totalReflection);
                for (const Point& p : t.points) QVERIFY(inside(field, p));
                QVERIFY(near(std::sin(finalAngle(t)), std::sin(radians(35.0)) / n, 1e-6));
                const Point a = t.points[t.points.size() - 2], b = t.points.back();
                QVERIFY(near(std::hypot(b.x - a.x, b.y - a.y), kCorpuscleSpeed * n, 1e-6));
                QCOMPARE(t.points.front().y, field.height);  // comes in from the top edge
            }
            const Track back = corpuscleTrack({750, 750}, radians(60.0), 0.7, model, 0.2);
            QVERIFY(back.totalReflection && back.points.back().y > 375.0 + 10.0);
            QVERIFY(near(finalAngle(back, true), radians(60.0), 1e-6));
        }
        // Newton's layers: 50 units for glass at a pull of 0.2, stacked or one.
        const Track one = corpuscleTrack({750, 750}, radians(30.0), 1.5, CorpuscleModel::NewtonOneLayer, 0.2);
        QVERIFY(one.thickness == 50.0 && one.faces.size() == 2 && one.faces[0] - one.faces[1] == 50.0);
        const Track stack = corpuscleTrack({750, 750}, radians(30.0), 1.5, CorpuscleModel::NewtonParallelLayers, 0.2);
        QVERIFY(stack.thickness == 50.0 && int(stack.faces.size()) == kParallelLayers + 1 && stack.mismatch <= 1e-4);
        QVERIFY(newtonLayerThickness(1.0, 0.2) == 0.0 && newtonLayerThickness(1.5, 0.0) == 0.0);
    }

    // Inside Newton's layer the corpuscle feels a constant pull a across the
    // boundary (down into a denser medium, up out of a rarer one), so with u
    // the normal speed on arrival, v the speed along it and t = (x − x_hit)/v
    // its depth below the boundary is u·t ± a·t²/2. After a total reflection
    // it turns at depth u²/(2a), within half a table step, and climbs the
    // same parabola back out of the field at the angle it came in.
    void newtonOneLayerFollowsTheParabola() {
        const Field field{800, 700};
        const double top = field.boundary();
        int reflections = 0;
        for (double degreesIn : {20.0, 45.0, 70.0}) {
            for (double pull : {0.05, 0.2, 0.6}) {
                for (double n : {1.5, 1.33, 0.8, 0.6}) {
                    const Track t = corpuscleTrack(field, radians(degreesIn), n, CorpuscleModel::NewtonOneLayer, pull);
                    QVERIFY(!t.points.empty());
                    const double v = kCorpuscleSpeed * std::sin(radians(degreesIn));
                    const double u = kCorpuscleSpeed * std::cos(radians(degreesIn));
                    const double a = n > 1.0 ? -pull : pull;  // upward acceleration
                    double deepest = 0.0;
                    for (const Point& p : t.points) {
                        if (p.y >= top - 1e-9 || p.y <= top - t.thickness + 1e-9) continue;  // outside the layer
                        const double time = (p.x - field.hit().x) / v;
                        QVERIFY2(
                            near(top - p.y, u * time - 0.5 * a * time * time, 1e-6),
                            qPrintable(QStringLiteral("i=%1 a=%2 n=%3 x=%4").arg(degreesIn).arg(pull).arg(n).arg(p.x)));
                        deepest = std::max(deepest, top - p.y);
                    }
                    if (!t.totalReflection) continue;
                    ++reflections;
                    const double apex = u * u / (2.0 * pull);
                    QVERIFY(deepest <= apex + 1e-9 && deepest >= apex - pull / 8.0 - 1e-9);
                    const Point last = t.points.back(), before = t.points[t.points.size() - 2];
                    QVERIFY(last.y > top && near(last.y - before.y, u, 1e-6) && near(last.x - before.x, v, 1e-6));
                }
            }
        }
        QVERIFY(reflections >= 6 && reflections <= 16);  // both kinds of path were checked
    }

    void tracksAndPathsStayBounded() {
        // Grazing light, a feeble pull (a layer thicker than the field), a
        // sliver of a field and unusable numbers: bounded, finite, no hang.
        const Track grazing = corpuscleTrack({1499, 1}, radians(89.9), 1.5, CorpuscleModel::NewtonOneLayer, 1e-6);
        QVERIFY(int(grazing.points.size()) <= kPathCapacity);
        for (const Point& p : grazing.points) QVERIFY(std::isfinite(p.x) && std::isfinite(p.y));
        QVERIFY(corpuscleTrack({750, 750}, 0.5, kNaN, CorpuscleModel::Descartes).points.empty());
        QVERIFY(corpuscleTrack({750, 750}, 0.5, 1.5, CorpuscleModel::NewtonOneLayer, 0.0).points.empty());
        QVERIFY(corpuscleTrack({0, 750}, 0.5, 1.5, CorpuscleModel::Descartes).points.empty());
        // The stream's schedule: a quarter index per 10 ms tick.
        QVERIFY(corpuscleIndex(100, 10, 0, 3.0) == 25.0 && corpuscleIndex(100, 50, 2, 3.0) == 119.0);
        // The field keeps the window's shape; the ray paths meet at the
        // point of incidence and leave along the refraction angle.
        const Field field = fieldFor(800, 600);
        QVERIFY(field.width + field.height == 1500.0 && field.width / field.height == 800.0 / 600.0);
        QVERIFY(std::isfinite(fieldFor(0, 0).width) && fieldFor(0, 0).width > 0);
        const Refraction r = refract(radians(40.0), 1.5);
        const RayPaths p = rayPaths(field, r);
        QVERIFY(p.incident.back().x == field.hit().x && p.incident.back().y == field.hit().y);
        QVERIFY(inside(field, p.incident.front()) && inside(field, p.refracted.back()) && p.length() < kPathCapacity);
        const Point a = p.refracted.front(), b = p.refracted.back();
        QVERIFY(near(std::atan2(b.x - a.x, a.y - b.y), r.refraction, 1e-9));
        QVERIFY(rayPaths(field, refract(radians(60.0), 0.5)).refracted.empty());
        QVERIFY(rayPaths(field, r, 0.0).incident.empty());  // no step, no walk
    }

    void waveFrontsMeetOnTheBoundary() {
        const Field field{900, 600};
        const Refraction r = refract(radians(40.0), 1.5);
        WaveSettings settings;
        settings.phase = 13.0;
        const WaveFronts w = waveFronts(field, r, 1.5, settings);
        QVERIFY(!w.incident.empty() && !w.refracted.empty() && !w.reflected.empty() && w.incident.size() < 200);
        // Every refracted front that reaches the boundary meets an incident
        // front there.
        auto onBoundary = [&](const Segment& s) -> std::optional<double> {
            for (Point p : {s.a, s.b})
                if (near(p.y, field.boundary(), 1e-6)) return p.x;
            return std::nullopt;
        };
        int met = 0;
        for (const Segment& rf : w.refracted)
            for (const Segment& in : w.incident)
                if (auto x = onBoundary(rf), xi = onBoundary(in); x && xi && near(*xi, *x, 1e-6)) ++met;
        QVERIFY(met >= 3);
        for (const auto* list : {&w.incident, &w.reflected, &w.refracted})
            for (const Segment& s : *list) QVERIFY(inside(field, s.a) && inside(field, s.b));
        // Straight down into n = 2: horizontal fronts half a wavelength apart.
        const WaveFronts down = waveFronts(field, refract(0.0, 2.0), 2.0, settings);
        QVERIFY(down.refracted.size() >= 2);
        QVERIFY(near(std::fabs(down.refracted[1].a.y - down.refracted[0].a.y), settings.wavelength / 2, 1e-9));
        // No refracted wave after a total reflection; none reflected when not asked.
        QVERIFY(waveFronts(field, refract(radians(60.0), 0.5), 0.5, settings).refracted.empty());
        settings.reflected = false;
        QVERIFY(waveFronts(field, r, 1.5, settings).reflected.empty());
        settings.wavelength = 0.0;
        QVERIFY(waveFronts(field, r, 1.5, settings).incident.empty());
    }

    void fermatTravelTimeAndLaws() {
        const Speeds fermatSpeeds = speedsFor(SpeedLaw::Fermat, 1.5);
        QVERIFY(fermatSpeeds.lower == kUpperSpeed / 1.5 &&
                speedsFor(SpeedLaw::Descartes, 1.5).lower == kUpperSpeed * 1.5);
        // 300 up at c1, 400·1.5/c1 down.
        const PathTime t = travelTime({0, 600}, {0, 300}, {0, -100}, 300, fermatSpeeds);
        QVERIFY(t.time == 3.0 + 6.0 && t.distance() == 700.0);
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
                return (x - a.x) / std::hypot(x - a.x, a.y - yb) / speeds.upper -
                       (c.x - x) / std::hypot(c.x - x, yb - c.y) / speeds.lower;
            };
            QVERIFY(law1(s.bestX - step) * law1(s.bestX + step) <= 0.0);
            // Only Fermat's speeds make the found path the law of refraction.
            QCOMPARE(classifyPath(a, {s.bestX, yb}, c, yb, 1.5, true),
                     law == SpeedLaw::Fermat ? PathKind::Refraction : PathKind::Plain);
        }
        // Bodies at the same x: one point 500 times, the first is reported.
        const LeastTimeSearch same = findLeastTime({300, 600}, {300, 100}, yb, speedsFor(SpeedLaw::Fermat, 1.5));
        QVERIFY(same.best == 1 && same.bestX == 300.0);
    }

    // Every energy share against the amplitudes of the wave screens' own
    // Fresnel formulas: R = r², and T, worked out on its own, adding up with
    // R to 1, on both sides of 1 for n and up to the critical angle.
    void energySharesAgainstTheAmplitudes() {
        for (double n : {1.33, 1.5, 2.4, 0.75}) {
            for (double degreesIn = 5.0; degreesIn < 89.0; degreesIn += 7.0) {
                const Refraction r = refract(radians(degreesIn), n);
                if (r.totalReflection) continue;
                const Fresnel f = fresnel(r, n);
                const auto e = energyShares(radians(degreesIn), n);
                QVERIFY(e);
                QVERIFY(near(e->reflectedS, f.rs * f.rs, 1e-12) && near(e->reflectedP, f.rp * f.rp, 1e-12));
                QVERIFY(near(e->reflectedS + e->transmittedS, 1.0, 1e-12) &&
                        near(e->reflectedP + e->transmittedP, 1.0, 1e-12));
            }
        }
    }

    // The textbook limits: ((n − 1)/(n + 1))² at normal incidence for both
    // polarisations, everything reflected at grazing incidence and beyond
    // the critical angle; at Brewster's angle, and only there, no p light.
    void energyLimitsAndBrewster() {
        for (double n : {1.5, 1.33, 0.5}) {
            const auto normal = energyShares(0.0, n);
            const double expected = std::pow((n - 1.0) / (n + 1.0), 2.0);
            QVERIFY(near(normal->reflectedS, expected, 1e-15) && near(normal->reflectedP, expected, 1e-15));
            const auto grazing = energyShares(radians(90.0), n);
            QVERIFY(near(grazing->reflectedS, 1.0, 1e-12) && near(grazing->reflectedP, 1.0, 1e-12));
            QVERIFY(grazing->transmittedS < 1e-15);
        }
        // The screens' own total reflection (a refraction sine of 0.99 or
        // more) gives the same, so their figures never contradict their picture.
        const Refraction nearCritical = refract(radians(48.3), 1.0 / 1.33);
        QVERIFY(nearCritical.totalReflection && near(energyShares(nearCritical, 1.0 / 1.33)->reflectedS, 1.0, 1e-12));
        QVERIFY(energyShares(radians(48.3), 1.0 / 1.33)->transmittedS > 0.0);
        for (double bad : {0.0, -1.5, kNaN}) QVERIFY(!energyShares(0.3, bad) && !brewsterAngleDegrees(bad));
        QVERIFY(!energyShares(radians(100.0), 1.5));
        QCOMPARE(std::round(*brewsterAngleDegrees(1.33) * 100.0) / 100.0, 53.06);
        for (double n : {1.5, 1.33, 0.75}) {
            const double theta = *brewsterAngleDegrees(n);
            QVERIFY(energyShares(radians(theta), n)->reflectedP < 1e-20);
            QVERIFY(energyShares(radians(theta + 2.0), n)->reflectedP > 1e-5);
            QVERIFY(energyShares(radians(theta), n)->reflectedS > 0.01);
        }
    }
};

QTEST_APPLESS_MAIN(TestKymatiko)
#include "test_kymatiko.moc"
