#pragma once
// The text corner and angle helpers of the semicircle bench, shared by the files
// that build, draw and run it.
#include <QString>

#include "core/physics.h"

namespace bench_look {

// The notes start in the upper left corner, a little inside it.
constexpr double kLeft = -200.0;
constexpr double kTop = 200.0;
constexpr double kMargin = 4.0;

inline double degreesToRadians(double degrees) { return physics::radians(degrees); }
inline double radiansToDegrees(double radians) { return physics::degrees(radians); }

}  // namespace bench_look
