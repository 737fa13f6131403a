#pragma once
#include <algorithm>

// Limits shared by the canvas's drawing operations and its replay.
namespace canvas_limits {

// Pixel coordinates further out than this are clipped before painting:
// the rasteriser works in fixed point internally and must never see huge values.
inline constexpr double kPixelLimit = 1.0e6;

// A canvas's backing image is never larger than the largest screen (in
// device pixels) nor than this floor (its width; the height is 5/8 of it),
// whichever is more: a window larger than that is painted at fewer pixels
// and scaled up.
inline constexpr int kSmallestImageCap = 1920;

inline constexpr double kMinFontPoints = 1.0;
inline constexpr double kMaxFontPoints = 500.0;

inline double clampPixel(double v) { return std::clamp(v, -kPixelLimit, kPixelLimit); }

}  // namespace canvas_limits
