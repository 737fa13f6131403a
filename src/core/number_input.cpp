#include "core/number_input.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <string>

namespace {

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::optional<double> parseWithPoint(std::string_view text) {
    text = trimmed(text);
    if (text.empty()) return std::nullopt;

    // Only the characters of a plain decimal number may appear; this also
    // keeps "nan", "inf" and hexadecimal forms out.
    bool sawDigit = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            sawDigit = true;
            continue;
        }
        if (c == '.' || c == 'e' || c == 'E') continue;
        if ((c == '+' || c == '-') && (i == 0 || text[i - 1] == 'e' || text[i - 1] == 'E')) continue;
        return std::nullopt;
    }
    if (!sawDigit) return std::nullopt;
    if (text.front() == '+') text.remove_prefix(1);  // from_chars takes no '+'

    double value = 0.0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
    return value;
}

}  // namespace

std::optional<double> parsePointNumber(std::string_view text) { return parseWithPoint(text); }

std::optional<double> parseTypedNumber(std::string_view text) {
    const auto commas = std::count(text.begin(), text.end(), ',');
    if (commas == 0) return parseWithPoint(text);
    if (commas > 1 || text.find('.') != std::string_view::npos) return std::nullopt;
    std::string withPoint(text);
    std::replace(withPoint.begin(), withPoint.end(), ',', '.');
    return parseWithPoint(withPoint);
}

TypedIndex readTypedIndex(std::string_view text) {
    if (trimmed(text).empty()) return {TypedIndex::Kind::Cancelled};
    const auto value = parseTypedNumber(text);
    if (!value) return {TypedIndex::Kind::NotANumber};
    if (!(*value >= kSmallestTypedIndex && *value <= kLargestTypedIndex)) return {TypedIndex::Kind::OutOfRange};
    return {TypedIndex::Kind::Valid, *value};
}
