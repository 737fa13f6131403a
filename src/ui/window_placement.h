#pragma once
#include <QMargins>
#include <QRect>
#include <QSize>

#include <memory>
#include <vector>

class QMainWindow;
class QSettings;
class QWidget;

// Where every window of the program goes. Classrooms run anything from a
// 1024×700 projector to a 4K screen at 200 %, so sizes and positions are
// taken as parts of the screen the program runs on, and a window is always
// kept wholly on the part of the screen that windows may use, title bar and
// frame included, so that it can be seen, dragged and closed.

// The part of the screen that windows may use (panels and docks left out):
// the screen the window stands on, or the primary screen.
QRect availableArea(const QWidget* window = nullptr);

// The frame the window manager draws round a window: the real one once the
// window has been shown framed, otherwise the last real frame seen on any
// window, or a generous guess before the first.
QMargins windowFrameMargins(const QWidget& window);

// A window's outer rectangle, frame and title bar included; also before it
// is shown, with the frame it is likely to get.
QRect outerRect(const QWidget& window);

// The top of a window's outer rectangle down to the foot of its menu bar:
// its title bar and menus, what a pupil reaches for next.
QRect titleBarAndMenus(const QMainWindow& window);

// Moves and shrinks a rectangle so that it lies inside area: first cut to
// the area's size, then moved in by the least amount.
QRect fitRectInside(QRect rect, const QRect& area);

// Where a window of the given outer size (cut to the area) covers least of
// the rectangles to be kept clear, the earlier ones weighing more than all
// later ones together: beside or below them where the area has room, over
// the least important otherwise. Among equal places the first tried wins:
// right of, below, left of and above the first rectangle, then the corners.
QRect leastCoveringPlace(QSize frameSize, const QRect& area, const std::vector<QRect>& keepClear);

// Where a window of about the wanted outer size covers none of the
// rectangles that must stay clear (an opener's menus and controls) and least
// of the others: made smaller step by step down to `least` if it must, and
// at `least` over the least important of them if nothing is clear.
QRect clearPlace(QSize wanted, QSize least, const QRect& area, const std::vector<QRect>& mustStayClear,
                 const std::vector<QRect>& keepClear);

// The rectangle on the screen that holds every shown control of a window a
// pupil works with: buttons, text boxes, lists, boxes to tick or choose.
QRect controlsOnScreen(const QWidget& window);

// What of a shown window a pupil reaches for and which the windows it opens
// should leave clear: its title bar and menus, then its controls (nothing
// for a hidden window).
std::vector<QRect> workingParts(const QWidget& window);

// Gives a window the outer rectangle wanted, frame and title bar included
// (screen coordinates), but inside the available area: a size larger than
// the area is cut down to it, a position outside is moved in. A window the
// pupil has moved, resized or maximised keeps the place he gave it instead,
// while the program runs and at the next start (the program's settings, by
// the window's object name), wholly on a screen that exists now.
void placeWindow(QWidget& window, const QRect& frame);

// The settings the program keeps between runs (window places, the
// presentation size), under its organisation and application names.
std::unique_ptr<QSettings> programSettings();

// Forgets every place the pupil gave a window and puts each window back
// where the program placed it ("Reset windows").
void resetWindowPlaces();

// The same for the window's present geometry; nothing changes when it
// already lies inside.
void keepWindowOnScreen(QWidget& window);

// An outer rectangle in the available area from proportions of it: left and
// top as parts of its width and height from its top-left corner, width and
// height as parts of its width and height; for placeWindow.
QRect screenShare(const QWidget& window, double left, double top, double width, double height);

// A window may not grow larger than all the screens together.
void limitToScreens(QWidget& window);

// Shows a window where placeWindow or its last position put it, inside the
// screen, and keeps it there while the window manager frames it; brings it
// to the front and, unless told not to, gives it the keyboard.
void showOnScreen(QWidget& window, bool takeFocus = true);
