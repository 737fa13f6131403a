// Every number the pupil types (input boxes, grid cells, position numbers)
// goes through parseTypedNumber: it gives a finite number only for a plain
// decimal text (its decimal mark a point or a comma), and then the very
// number the C library reads from it with the mark as a point.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/number_input.h"
#include "fuzz_check.h"

namespace {

bool blank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
bool digit(char c) { return c >= '0' && c <= '9'; }

// [sign] digits [mark digits] [e [sign] digits], the mark '.' or ',', at
// least one mantissa digit, between optional blanks.
bool plainDecimal(std::string_view s) {
    while (!s.empty() && blank(s.front())) s.remove_prefix(1);
    while (!s.empty() && blank(s.back())) s.remove_suffix(1);
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t mantissaDigits = 0;
    while (i < s.size() && digit(s[i])) ++i, ++mantissaDigits;
    if (i < s.size() && (s[i] == '.' || s[i] == ',')) {
        ++i;
        while (i < s.size() && digit(s[i])) ++i, ++mantissaDigits;
    }
    if (mantissaDigits == 0) return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
        std::size_t exponentDigits = 0;
        while (i < s.size() && digit(s[i])) ++i, ++exponentDigits;
        if (exponentDigits == 0) return false;
    }
    return i == s.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto value = parseTypedNumber(text);
    const bool plain = text.find('\0') == std::string::npos && plainDecimal(text);
    if (value) {
        FUZZ_REQUIRE(std::isfinite(*value));
        FUZZ_REQUIRE(plain);
    }
    if (plain) {
        // strtod in the "C" locale reads the same grammar (and more).
        errno = 0;
        char* end = nullptr;
        std::string withPoint = text;
        std::replace(withPoint.begin(), withPoint.end(), ',', '.');
        const double expected = std::strtod(withPoint.c_str(), &end);
        const bool inRange = errno == 0 && std::isfinite(expected);
        // A finite, representable number is never refused, and is read exactly.
        if (inRange) FUZZ_REQUIRE(value && *value == expected);
        // One too large for a double is refused, never read as infinity.
        if (std::isinf(expected)) FUZZ_REQUIRE(!value);
    }
    return 0;
}
