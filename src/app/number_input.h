#pragma once
#include <optional>
#include <string_view>

// Reads a number typed by the pupil: optional blanks, an optional sign,
// digits with at most one decimal point, an optional exponent. Anything else
// (letters, a decimal comma, "nan", "inf", a value too large for a double,
// an empty answer) gives no number.
std::optional<double> parseTypedNumber(std::string_view text);
