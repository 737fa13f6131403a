#include <QtTest>

#include <cmath>

#include "models/energy_shares.h"
#include "models/kymatiko.h"

using kymatiko::EnergyShares;
using kymatiko::radians;

class TestEnergyShares : public QObject {
    Q_OBJECT
private slots:
    // Glass (n = 1.5) at 30°: the amplitude figures 24.04 and 75.96 of the
    // wave screens become 5.78 % and 94.22 % of the energy.
    void glassAtThirty() {
        const auto e = kymatiko::energyShares(radians(30.0), 1.5);
        QVERIFY(e);
        QCOMPARE(std::round(e->reflectedS * 10000.0) / 100.0, 5.78);
        QCOMPARE(std::round(e->transmittedS * 10000.0) / 100.0, 94.22);
        QVERIFY(e->reflectedP < e->reflectedS);
    }

    // Every share against the amplitudes of the wave screens' own Fresnel
    // formulas (sines and tangents of i ± r): R = r², T = (n cos r / cos i)·t²,
    // and each pair adds up to 1, on both sides of 1 for n and up to the
    // critical angle.
    void againstTheAmplitudes() {
        for (double n : {1.33, 1.5, 2.4, 0.75}) {
            for (double degrees = 5.0; degrees < 89.0; degrees += 7.0) {
                const kymatiko::Refraction r = kymatiko::refract(radians(degrees), n);
                if (r.totalReflection) continue;
                const kymatiko::Fresnel f = kymatiko::fresnel(r, n);
                const auto e = kymatiko::energyShares(radians(degrees), n);
                QVERIFY(e);
                const double weight = n * std::cos(r.refraction) / std::cos(r.incidence);
                QVERIFY(std::fabs(e->reflectedS - f.rs * f.rs) < 1e-12);
                QVERIFY(std::fabs(e->reflectedP - f.rp * f.rp) < 1e-12);
                QVERIFY(std::fabs(e->transmittedS - weight * f.ts * f.ts) < 1e-12);
                QVERIFY(std::fabs(e->transmittedP - weight * f.tp * f.tp) < 1e-12);
                QVERIFY(std::fabs(e->reflectedS + e->transmittedS - 1.0) < 1e-12);
                QVERIFY(std::fabs(e->reflectedP + e->transmittedP - 1.0) < 1e-12);
            }
        }
    }

    // The textbook limits: ((n − 1)/(n + 1))² at normal incidence for both
    // polarisations, everything reflected at grazing incidence and beyond
    // the critical angle.
    void limits() {
        for (double n : {1.5, 1.33, 0.5}) {
            const auto normal = kymatiko::energyShares(0.0, n);
            const double expected = std::pow((n - 1.0) / (n + 1.0), 2.0);
            QVERIFY(std::fabs(normal->reflectedS - expected) < 1e-15);
            QVERIFY(std::fabs(normal->reflectedP - expected) < 1e-15);
            const auto grazing = kymatiko::energyShares(radians(90.0), n);
            QCOMPARE(grazing->reflectedS, 1.0);
            QCOMPARE(grazing->reflectedP, 1.0);
            QVERIFY(grazing->transmittedS < 1e-15 && grazing->transmittedP < 1e-15);
        }
        // Water into air beyond 48.75°.
        const auto beyond = kymatiko::energyShares(radians(50.0), 1.0 / 1.33);
        QCOMPARE(beyond->reflectedS, 1.0);
        QCOMPARE(beyond->transmittedP, 0.0);
        // The screens' own total reflection (a refraction sine of 0.99 or more)
        // gives the same, so their figures never contradict their picture.
        const kymatiko::Refraction nearCritical = kymatiko::refract(radians(48.3), 1.0 / 1.33);
        QVERIFY(nearCritical.totalReflection);
        QCOMPARE(kymatiko::energyShares(nearCritical, 1.0 / 1.33)->reflectedS, 1.0);
        QVERIFY(kymatiko::energyShares(radians(48.3), 1.0 / 1.33)->transmittedS > 0.0);

        for (double bad : {0.0, -1.5, std::nan("")}) {
            QVERIFY(!kymatiko::energyShares(0.3, bad));
            QVERIFY(!kymatiko::brewsterAngleDegrees(bad));
        }
        QVERIFY(!kymatiko::energyShares(radians(100.0), 1.5));
    }

    // Brewster's angle: 56.31° for glass, 53.06° for water; there the
    // reflected p-light vanishes, and only there.
    void brewster() {
        QCOMPARE(std::round(*kymatiko::brewsterAngleDegrees(1.5) * 100.0) / 100.0, 56.31);
        QCOMPARE(std::round(*kymatiko::brewsterAngleDegrees(1.33) * 100.0) / 100.0, 53.06);
        for (double n : {1.5, 1.33, 0.75}) {
            const double theta = *kymatiko::brewsterAngleDegrees(n);
            QVERIFY(kymatiko::energyShares(radians(theta), n)->reflectedP < 1e-20);
            QVERIFY(kymatiko::energyShares(radians(theta + 2.0), n)->reflectedP > 1e-5);
            QVERIFY(kymatiko::energyShares(radians(theta), n)->reflectedS > 0.01);
        }
    }
};

QTEST_APPLESS_MAIN(TestEnergyShares)
#include "test_energy_shares.moc"
