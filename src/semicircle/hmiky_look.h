#pragma once
// The text corner, angle helpers and the lab aids' look of the semicircle
// bench, shared by the files that build, draw and run it.
#include <QString>

#include "canvas/fonts.h"
#include "core/physics.h"

namespace bench_look {

// The lab bench's aids: normals, arrowheads, the angles beside the rays,
// the protractor (their colours are the palette's, palette::bench).
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

}  // namespace bench_look
