#pragma once

class Canvas;
class QObject;
class QWidget;

// Keys that work alike in every window of the program, whatever control has
// the focus:
// - Ctrl+S and Ctrl+P save and print the window's drawing; the Menu key and
//   Shift+F10 open the drawing's menu;
// - F6 and Shift+F6 go to the next and the previous open window;
// - Escape in a graph window brings back the screen that opened it;
// - Enter presses a focused button, as Space does;
// - a window that comes to the front with nothing focused gives the focus
//   to its drawing (a graph window) or to its first control.

// The drawing the window's keys act on: the focused one, else the largest
// one that shows; null when the window shows none.
Canvas* windowDrawing(QWidget& window);

// A window that only shows a graph: Escape brings back its opener, and the
// focus goes to its drawing when it comes to the front.
void markGraphWindow(QWidget& window);

// The window that was in front when this one was first shown (null if none
// or gone).
QWidget* windowOpener(const QWidget& window);

// Watches the application: every window gets these keys when it is first
// shown, so screens added later need nothing of their own.
void installWindowKeysEverywhere(QObject& application);
