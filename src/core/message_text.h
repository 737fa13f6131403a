#pragma once
#include <cstddef>
#include <string>
#include <string_view>

// Text from outside the program (a cell of a table file, a file name) that
// a message quotes. It must not be able to spoil the message: a cell of
// sixty thousand digits would make a box wider than the screen, and an
// invisible right-to-left override would turn the rest of the sentence
// round.

// Strict UTF-8: no overlong forms, no encoded surrogates (U+D800–U+DFFF),
// nothing beyond U+10FFFF.
bool isValidUtf8(std::string_view text);

// The text as a message may quote it: at most `maxCharacters` characters,
// cut with an ellipsis; control characters, line and paragraph separators
// and the direction controls shown as escapes ("\u202E"), bytes that are
// not UTF-8 as "\xNN".
std::string quotedForMessage(std::string_view text, std::size_t maxCharacters = 40);
