#pragma once
#include <optional>

#include "models/kymatiko.h"

// How the light's energy divides at the boundary, beside the amplitude
// figures the wave screens print (which do not add up to 100). For each
// polarisation the reflected share R = r² and the transmitted share
// T = (n·cos r / cos i)·t² add up to 1: the factor n·cos r / cos i weighs the
// refracted beam's changed speed and width.
namespace kymatiko {

struct EnergyShares {
    double reflectedS = 0.0, transmittedS = 0.0;  // light polarised across the plane of incidence
    double reflectedP = 0.0, transmittedP = 0.0;  // in the plane of incidence
};

// For an incidence angle (radians, 0 … π/2) and the ratio n of the lower
// medium's index to the upper's: R and T for s and p light, fractions of 1.
// Beyond the critical angle, and at grazing incidence, all the light is
// reflected. None for an unusable n or angle.
std::optional<EnergyShares> energyShares(double incidenceRadians, double n);

// The same for the screens' own refraction, so that the energy figures agree
// with what they draw: after their total reflection (which they take at a
// refraction sine of 0.99) every share is reflected.
std::optional<EnergyShares> energyShares(const Refraction& refraction, double n);

// Brewster's angle in degrees, tan θB = n: the incidence at which no
// p-polarised light is reflected. None for an unusable n.
std::optional<double> brewsterAngleDegrees(double n);

}  // namespace kymatiko
