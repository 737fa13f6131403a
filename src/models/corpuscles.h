#pragma once
#include <vector>

#include "models/kymatiko.h"

// Light as a stream of corpuscles (Newton, Descartes). A track is the
// corpuscle's position at equal time steps, so the spacing of its points
// shows the speed: the screens move each corpuscle one table index at a time.
//
// Both models keep the component of the velocity along the boundary and
// change the one across it, so that sin r = sin i / n with v2 = n · v1:
// - Descartes: the speed changes at once at the boundary (a ball through a
//   thin sheet);
// - Newton, one layer: within a layer of thickness T under the boundary the
//   denser medium pulls the corpuscle with a constant acceleration a (pushes
//   it back when the lower medium is the less dense), so it moves on a
//   parabola. Energy gives v2² = v1² + 2·a·T, hence the thickness
//   T = v1² · |n² − 1| / (2a): a stronger pull (Newton's value) makes a
//   thinner layer.
// - Newton, parallel layers: the same thickness cut into layers of constant
//   speed, the speed stepping up so that layer k of N has index
//   n_k² = 1 + (n² − 1)·k/N; the corpuscle bends at every face.
// A corpuscle that cannot get through (sin of its angle ≥ 0.99) turns back
// on the mirror image of its way in.
namespace kymatiko {

// Speed of the corpuscles in the upper medium, field units per table step.
inline constexpr double kCorpuscleSpeed = 4.0;
// Layers of the parallel-layer construction.
inline constexpr int kParallelLayers = 6;
// Newton's value on the panel is a hundred times the pull a, in field units
// per step squared.
inline constexpr double kNewtonValueScale = 0.01;

double newtonLayerThickness(double n, double pull, double speed = kCorpuscleSpeed);

enum class CorpuscleModel { Descartes, NewtonOneLayer, NewtonParallelLayers };

struct Track {
    std::vector<Point> points;  // one per time step, at most kPathCapacity
    bool totalReflection = false;
    double thickness = 0.0;  // of Newton's layer (0 for Descartes)
    // Parallel layers: the largest gap between where the stepping reached a
    // face of a layer and where the line-crossing helper puts it. Anything
    // above 0.0001 means the construction went wrong.
    double mismatch = 0.0;
    std::vector<double> faces;  // y of the faces of the layers, top first
};

// The track of a corpuscle that reaches the point of incidence of the field
// at the incidence angle (radians) with the ratio n; `pull` is Newton's a.
// Unusable numbers give an empty track.
Track corpuscleTrack(const Field& field, double incidenceRadians, double n, CorpuscleModel model, double pull = 0.2);

// Where corpuscle k of a stream stands after `tick` ticks of a timer whose
// interval is `intervalMs`: index tick·(interval/40) − k·spacing of the
// track; negative when it has not started yet, past the end when gone.
double corpuscleIndex(long tick, int intervalMs, int k, double spacing);

}  // namespace kymatiko
