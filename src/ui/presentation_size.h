#pragma once
#include <functional>
#include <vector>

class QLabel;
class QObject;

// The presentation size: a class at the back of the room reads a projected
// window only when its texts, controls and drawn lines are larger than on a
// desk. One size for the whole program, in per cent of the designed size,
// applied to every window and drawing at once and kept for the next start.
// Drawings keep their exports; on the screen they are shown larger and make
// room for their larger texts.

// The sizes offered: 100, 125, 150, 175 and 200 %.
const std::vector<int>& presentationSizes();
int presentationSize();

// Sets the nearest offered size, applies it to every window, and keeps it.
void setPresentationSize(int percent);
// The next larger and smaller sizes (Ctrl++ and Ctrl+−); Ctrl+0 sets 100.
void growPresentationSize();
void shrinkPresentationSize();

// The size kept from the last run, applied before the first window is made.
void restorePresentationSize();

// Calls `changed` with the new size after every change, while `owner` lives
// (the main menu's control follows the keys so).
void watchPresentationSize(QObject* owner, std::function<void(int percent)> changed);

// Captions that keep one line as designed and may take two in a narrow
// window when shown larger: word wrap on above 100 %, from now on.
void wrapWhenShownLarger(QObject* owner, const std::vector<QLabel*>& labels);
