#pragma once
#include <string>
#include <vector>

namespace history {

// The lettered figure that goes with some notes.
enum class NoteFigure { None, Fermat, Hero, Newton, Ptolemy };

// A short note on one scientist: its menu item, the title of the note
// screen, the Greek text and the English one (each as the pieces it is
// written in), and its figure.
struct HistoryNote {
    std::string itemName;
    std::string menuCaption;
    std::string title;
    std::vector<std::string> greek;
    std::vector<std::string> english;
    NoteFigure figure;
};

// The ten notes in menu order: Al Haytham, Descartes, Fermat, Fresnel,
// Hero, Kepler, Newton, Ptolemy's apparatus, Snell, Witelo.
const std::vector<HistoryNote>& historyNotes();

// The text of the note box: the Greek paragraph, then the English one.
// Pieces run on where a blank already separates them, otherwise a new line
// starts.
std::string noteText(const HistoryNote& note);

// The captions printed with a figure, top to bottom.
std::vector<std::string> figureCaptions(NoteFigure figure);

}  // namespace history
