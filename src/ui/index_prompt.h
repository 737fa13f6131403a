#pragma once
#include <QString>

#include <optional>

// Every box that asks for a refractive index asks through here, so that all
// of them accept the same answers and refuse the others with the same words.

// Shows an input box with the prompt; the index typed, or none on Cancel
// and (after a bilingual message that says what is accepted) on a bad answer.
std::optional<double> askTypedIndex(const QString& prompt);

// The message for an answer that is not a number, quoting it.
QString indexNotANumberMessage(const QString& answer);
// The message for a number outside the indices the screens can show.
QString indexOutOfRangeMessage();
