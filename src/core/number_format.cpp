#include "core/number_format.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace {

// Decimal digits and exponent of the shortest representation that reads back
// as the same double: value = 0.d1d2d3... × 10^exponent.
struct Decimal {
    std::string digits;  // no leading zeros, at least one digit ("0" for zero)
    int exponent = 0;
};

Decimal shortestDecimal(double magnitude) {
    char buffer[64];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific);
    (void)ec;
    std::string text(buffer, end);  // d.ddddde±xx
    const auto ePos = text.find('e');
    Decimal d;
    for (std::size_t i = 0; i < ePos; ++i)
        if (text[i] != '.') d.digits.push_back(text[i]);
    d.exponent = std::atoi(text.c_str() + ePos + 1) + 1;
    while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
    if (d.digits == "0") d.exponent = 1;
    return d;
}

// Adds one unit in the last place of a digit string; returns true when the
// carry runs out of the string ("99" -> "00" and true).
bool incrementDigits(std::string& digits) {
    for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
        if (*it == '9') {
            *it = '0';
        } else {
            ++*it;
            return false;
        }
    }
    return true;
}

// Cuts a digit string to `keep` digits, rounding half up on the cut digit.
// Returns true when rounding carried into a new leading digit.
bool roundTo(std::string& digits, std::size_t keep) {
    if (digits.size() < keep) digits.append(keep - digits.size(), '0');
    const bool up = digits.size() > keep && digits[keep] >= '5';
    digits.resize(keep);
    if (up && incrementDigits(digits)) {
        digits.insert(digits.begin(), '1');
        return true;
    }
    return false;
}

std::string fixed(double magnitude, int decimals) {
    const Decimal d = shortestDecimal(magnitude);
    std::string digits = d.digits;
    int integerDigits = d.exponent;
    if (integerDigits <= 0) {  // 0.000ddd: write the leading zeros out
        digits.insert(0, static_cast<std::size_t>(1 - integerDigits), '0');
        integerDigits = 1;
    }
    if (roundTo(digits, static_cast<std::size_t>(integerDigits + decimals))) ++integerDigits;
    std::string intPart = digits.substr(0, static_cast<std::size_t>(integerDigits));
    const std::string fracPart = digits.substr(static_cast<std::size_t>(integerDigits));
    const auto firstNonZero = intPart.find_first_not_of('0');
    intPart = firstNonZero == std::string::npos ? "0" : intPart.substr(firstNonZero);
    return decimals > 0 ? intPart + "." + fracPart : intPart;
}

std::string scientific(double magnitude, int decimals) {
    if (magnitude == 0.0) return "0." + std::string(static_cast<std::size_t>(decimals), '0') + "e+00";
    const Decimal d = shortestDecimal(magnitude);
    std::string digits = d.digits;
    int power = d.exponent - 1;
    if (roundTo(digits, static_cast<std::size_t>(decimals + 1))) {
        digits.pop_back();  // "999" became "1000": one more power of ten
        ++power;
    }
    std::string text = digits.substr(0, 1);
    if (decimals > 0) text += "." + digits.substr(1);
    const int absPower = std::abs(power);
    text += power < 0 ? "e-" : "e+";
    if (absPower < 10) text += '0';
    text += std::to_string(absPower);
    return text;
}

}  // namespace

std::string formatNumber(double value, std::string_view pattern) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "∞" : "-∞";

    const bool isScientific =
        pattern.find('e') != std::string_view::npos || pattern.find('E') != std::string_view::npos;
    const auto point = pattern.find('.');
    int decimals = 0;
    if (point != std::string_view::npos) {
        for (std::size_t i = point + 1; i < pattern.size() && pattern[i] == '0'; ++i) ++decimals;
    }
    const double magnitude = std::fabs(value);
    std::string body = isScientific ? scientific(magnitude, decimals) : fixed(magnitude, decimals);
    // A value that rounds to zero is shown without a minus sign.
    const bool allZero = body.find_first_of("123456789") == std::string::npos || (isScientific && magnitude == 0.0);
    if (value < 0 && !allZero) body.insert(body.begin(), '-');
    return body;
}
