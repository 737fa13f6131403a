#pragma once
#include <optional>
#include <string_view>

// Reads a number typed by the pupil: optional blanks, an optional sign,
// digits with at most one decimal mark, an optional exponent. The decimal
// mark is a point or, as Greek pupils write it, a comma ("1,5" is 1.5); a
// text with both a comma and a point, or with two commas, is refused rather
// than guessed at (thousands separators are not numbers a pupil types here).
// Anything else (letters, "nan", "inf", a value too large for a double, an
// empty answer) gives no number either.
std::optional<double> parseTypedNumber(std::string_view text);

// The same with the point as the only decimal mark, for text where the
// comma already means something else (a cell separator in a table file).
std::optional<double> parsePointNumber(std::string_view text);

// The refractive indices a pupil may give in any index box: every screen can
// draw them and print both n and 1/n (the speed ratio) with two decimals.
inline constexpr double kSmallestTypedIndex = 0.01;
inline constexpr double kLargestTypedIndex = 100.0;

// What an answer to an index box holds.
struct TypedIndex {
    enum class Kind { Cancelled, NotANumber, OutOfRange, Valid } kind;
    double value = 0.0;  // when Valid
};
// A blank answer is Cancel; a number outside the range above is refused.
TypedIndex readTypedIndex(std::string_view text);
