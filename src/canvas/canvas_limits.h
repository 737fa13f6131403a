#pragma once
#include <algorithm>

// Limits shared by the canvas's drawing operations and its replay.
namespace canvas_limits {

// Pixel coordinates further out than this are clipped before painting:
// the rasteriser works in fixed point internally and must never see huge values.
inline constexpr double kPixelLimit = 1.0e6;

inline constexpr double kMinFontPoints = 1.0;
inline constexpr double kMaxFontPoints = 500.0;

inline double clampPixel(double v) { return std::clamp(v, -kPixelLimit, kPixelLimit); }

}  // namespace canvas_limits
