#pragma once
#include <vector>

#include "models/kymatiko.h"

// Huygens' picture of a beam of light meeting the boundary: the fronts of
// the incident wave, and those of the reflected and refracted waves that
// they give rise to. A front is a straight line across the beam,
// perpendicular to its direction. When the incident front has gone a
// distance s past the point of incidence (negative before it), the
// reflected front has gone s and the refracted one s / n in the same time,
// since the lower medium's speed is c1 / n; so the three fronts of one
// instant meet on the boundary, at s / sin i from the point of incidence,
// and the refracted fronts lie closer together by the factor n.
namespace kymatiko {

struct WaveFronts {
    std::vector<Segment> incident;
    std::vector<Segment> reflected;
    std::vector<Segment> refracted;  // none after a total reflection
};

struct WaveSettings {
    double phase = 0.0;            // how far the incident wave has moved, field units
    double wavelength = 40.0;      // in the upper medium
    double beamHalfWidth = 120.0;  // of the incident (and reflected) beam
    bool reflected = true;         // draw the reflected wave
};

// The fronts within the field, clipped to the beams and to their own side
// of the boundary. Bounded: about (width + height) / wavelength fronts each.
WaveFronts waveFronts(const Field& field, const Refraction& refraction, double n, const WaveSettings& settings);

}  // namespace kymatiko
