#include "models/energy_shares.h"

#include <algorithm>
#include <cmath>

namespace kymatiko {

namespace {

bool usable(double n) { return std::isfinite(n) && n > 0.0; }

EnergyShares allReflected() { return {1.0, 0.0, 1.0, 0.0}; }

// From the cosines of the two angles; written without dividing by cos i, so
// that grazing incidence (cos i = 0) needs no case of its own.
EnergyShares fromCosines(double cosI, double cosR, double n) {
    const double sSum = cosI + n * cosR;
    const double pSum = n * cosI + cosR;
    const double rs = (cosI - n * cosR) / sSum;
    const double rp = (n * cosI - cosR) / pSum;
    EnergyShares e;
    e.reflectedS = rs * rs;
    e.reflectedP = rp * rp;
    // (n·cos r / cos i)·t² with t = 2 cos i / sum.
    e.transmittedS = 4.0 * n * cosI * cosR / (sSum * sSum);
    e.transmittedP = 4.0 * n * cosI * cosR / (pSum * pSum);
    return e;
}

}  // namespace

std::optional<EnergyShares> energyShares(double incidenceRadians, double n) {
    if (!usable(n) || !std::isfinite(incidenceRadians)) return std::nullopt;
    const double i = std::fabs(incidenceRadians);
    if (i > kPi / 2.0 + 1e-12) return std::nullopt;
    const double sinR = std::sin(i) / n;
    if (sinR >= 1.0) return allReflected();
    return fromCosines(std::cos(std::min(i, kPi / 2.0)), std::sqrt(1.0 - sinR * sinR), n);
}

std::optional<EnergyShares> energyShares(const Refraction& refraction, double n) {
    if (!refraction.valid || !usable(n)) return std::nullopt;
    if (refraction.totalReflection) return allReflected();
    return fromCosines(std::cos(refraction.incidence), std::cos(refraction.refraction), n);
}

std::optional<double> brewsterAngleDegrees(double n) {
    if (!usable(n)) return std::nullopt;
    return degrees(std::atan(n));
}

}  // namespace kymatiko
