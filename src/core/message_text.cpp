#include "core/message_text.h"

#include <cstdint>
#include <cstdio>

namespace {

// The code point that starts at `at`, and its length in bytes; length 0
// for a byte that does not start a valid sequence.
struct Decoded {
    char32_t point = 0;
    std::size_t length = 0;
};

Decoded decodeAt(std::string_view s, std::size_t at) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[at + k]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    std::size_t length = 0;
    char32_t point = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, point = lead & 0x1Fu, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, point = lead & 0x0Fu, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, point = lead & 0x07u, least = 0x10000;
    } else {
        return {};
    }
    if (at + length > s.size()) return {};
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(k) & 0xC0) != 0x80) return {};
        point = (point << 6) | (byte(k) & 0x3Fu);
    }
    if (point < least || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) return {};
    return {point, length};
}

bool shownAsEscape(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

std::string hex(const char* format, unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

}  // namespace

bool isValidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Decoded d = decodeAt(text, at);
        if (d.length == 0) return false;
        at += d.length;
    }
    return true;
}

std::string quotedForMessage(std::string_view text, std::size_t maxCharacters) {
    if (maxCharacters == 0) return {};
    std::string out;
    std::size_t shown = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Decoded d = decodeAt(text, at);
        std::string piece;
        if (d.length == 0)
            piece = hex("\\x%02X", static_cast<unsigned char>(text[at]));
        else if (shownAsEscape(d.point))
            piece = hex("\\u%04X", static_cast<unsigned>(d.point));
        else
            piece = std::string(text.substr(at, d.length));
        const std::size_t width = d.length == 0 || shownAsEscape(d.point) ? piece.size() : 1;
        // Room for one more piece, and for the ellipsis if more would follow.
        const std::size_t next = at + (d.length == 0 ? 1 : d.length);
        const std::size_t room = next < text.size() ? maxCharacters - 1 : maxCharacters;
        if (shown + width > room) {
            out += "…";
            return out;
        }
        out += piece;
        shown += width;
        at = next;
    }
    return out;
}
