#pragma once
// The text corner, angle helpers and the lab aids' look of the semicircle
// bench, shared by the files that build, draw and run it.
#include <QColor>
#include <QString>

#include "canvas/fonts.h"
#include "core/physics.h"

namespace bench_look {

// The lab bench's aids: normals, arrowheads, the angles beside the rays,
// the protractor. Kept together so that they can join the program's
// palette and font roles.
inline const QColor kNormalColour(90, 90, 90);        // dashed normals at the faces
inline const QColor kReadoutText(0, 0, 0);            // the angles beside the rays
inline const QColor kReadoutFrame(0, 120, 60);        // their box's edge and leader
inline const QColor kReadoutPaper(255, 255, 255);     // their box's background
inline const QColor kTotalReflectionText(170, 0, 0);  // "TOTAL REFLECTION"
inline const QColor kProtractorInk(120, 60, 0);       // marks and numbers
inline constexpr FontRole kReadoutFont = FontRole::Caption;
constexpr double kReadoutPoints = 9.0;
inline constexpr FontRole kProtractorFont = FontRole::Caption;
constexpr double kProtractorPoints = 7.0;
// The dashed normal reaches this far (bench units) to each side of a face.
constexpr double kNormalReach = 45.0;
// Arrowheads: length of each barb (bench units) and its angle to the ray.
constexpr double kArrowBarb = 7.0;
constexpr double kArrowSpread = 0.45;  // radians

// The notes start in the upper left corner, a little inside it.
constexpr double kLeft = -200.0;
constexpr double kTop = 200.0;
constexpr double kMargin = 4.0;

inline double degreesToRadians(double degrees) { return physics::radians(degrees); }
inline double radiansToDegrees(double radians) { return physics::degrees(radians); }

}  // namespace bench_look
