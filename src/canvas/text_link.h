#pragma once

// How a recorded text keeps its place among the others where a screen
// shows texts larger than designed.

namespace canvas_ops {

// How a text follows a text recorded shortly before it. A screen that shows
// texts larger than designed must keep texts that belong together apart:
// the next line of a block stays under the line above it, the other texts
// of a row stay on its row, and a continuation stays after the text it
// continues. Texts that follow nothing keep their designed place.
enum class TextLink { None, Below, SameRow, After };

// The point of a text's box, in fractions of its width and height, that
// stays where it was designed when a text that follows no other is shown
// larger: the top-left corner of running text; the middle of the right end
// of a label left of a tick, the middle of the top of a label under one, so
// that a grown label stays beside its mark instead of running over it.
struct TextAnchor {
    double across = 0.0;
    double down = 0.0;
    bool operator==(const TextAnchor&) const = default;
};
inline constexpr TextAnchor kUnderMark{0.5, 0.0}, kLeftOfMark{1.0, 0.5}, kLeftUnderMark{1.0, 0.0};

}  // namespace canvas_ops
