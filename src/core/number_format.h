#pragma once
#include <string>
#include <string_view>

// Fixed display formats used throughout the program: "0", "0.0" ... "0.000000"
// (fixed decimals) and "0.00e+00" (scientific, two decimals, signed two-digit
// exponent). Rounding is half away from zero on the number's shortest decimal
// form, so 0.075 shows as "0.08" even though the binary double lies just below
// it. Non-finite values show as "NaN", "∞" or "-∞" rather than garbage.
std::string formatNumber(double value, std::string_view pattern);
