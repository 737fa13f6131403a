#pragma once
// Colours and the text corner of the semicircle bench, shared by the files
// that build, draw and run it.
#include <QColor>
#include <QString>

#include "core/physics.h"

namespace bench_look {

inline const QColor kBlack(0, 0, 0);
inline const QColor kBlockFill(205, 235, 255);
inline const QColor kRayColour(0, 200, 0);       // incident and emerging rays
inline const QColor kInsideColour(0, 200, 100);  // inside the block and reflected
inline const QColor kGivenIncident(0, 0, 255);   // the ray of a typed incidence angle
inline const QColor kGivenOther(0, 255, 0);
inline const QColor kHintColour(170, 0, 0);
inline const QColor kExpectedColour(230, 0, 0);

// The notes start in the upper left corner, a little inside it.
constexpr double kLeft = -200.0;
constexpr double kTop = 200.0;
constexpr double kMargin = 4.0;

inline double degreesToRadians(double degrees) { return physics::radians(degrees); }
inline double radiansToDegrees(double radians) { return physics::degrees(radians); }

}  // namespace bench_look
