#include "models/interpretation_openers.h"

#include <QMainWindow>

#include <algorithm>
#include <vector>

#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/window_placement.h"

namespace {

constexpr double kUpper = 0.62;  // of the height, for the two drawings
constexpr double kLeft = 0.45;   // of the width, for the waves

// Whether the three screens lie as the program laid them out: they keep
// the pupil's places when they come back, and are laid out again once they
// stepped aside for the data screen.
bool laidOut = false;

// The three screens share the display: the waves on the left, the
// corpuscles on the right, the panel under both. From the data screen as
// well: it hides while they are shown, and they step aside when it comes
// back with some of them still up (stepAsideForData).
void layOutShared(Rixo& rixo, Rixotext& panel, Somata& somata) {
    if (laidOut) return;
    laidOut = true;
    placeWindow(rixo, screenShare(rixo, 0.0, 0.0, kLeft, kUpper));
    placeWindow(somata, screenShare(somata, kLeft, 0.0, 1.0 - kLeft, kUpper));
    placeWindow(panel, screenShare(panel, 0.0, kUpper, 1.0, 1.0 - kUpper));
}

void showAll(bool fromData) {
    Rixo& rixo = form<Rixo>();
    Rixotext& panel = form<Rixotext>();
    Somata& somata = form<Somata>();
    layOutShared(rixo, panel, somata);
    rixo.setCameFromData(fromData);
    if (fromData) rixo.startAnimation();
    showScreen(rixo);
    showScreen(panel);
    showScreen(somata);
}

}  // namespace

void showInterpretationScreens() { showAll(false); }
void showInterpretationScreensFromData() { showAll(true); }

// The screens still up go beside the data screen, as the graph screens do,
// so that its menus, grid and buttons are uncovered; smaller if they must.
// The panel keeps the height its texts are laid out in and the width its
// controls need: where there is no room for it beside the data screen
// (below about 1400 pixels, 1800 at 150 %), it covers part of the grid but
// never the title bar or menus.
void stepAsideForData() {
    const QWidget& data = windowOf(Place::DataScreen);
    const QRect area = availableArea(&data);
    std::vector<QRect> mustStayClear = {outerRect(data)};
    // Its title bar and menus first: what cannot be clear of the whole of it
    // is kept clear of them.
    if (const auto* main = qobject_cast<const QMainWindow*>(&data))
        mustStayClear.insert(mustStayClear.begin(), titleBarAndMenus(*main));
    const int room = std::max(area.width() - outerRect(data).width(), 0);
    auto share = [&](double width, double height) {
        return QSize(static_cast<int>(room * width), static_cast<int>(area.height() * height));
    };
    struct Wanted {
        QWidget* window;
        QSize size;
        QSize least;
    };
    Forms& forms = Forms::instance();
    // The panel first, as it holds the controls the drawings follow.
    std::vector<Wanted> windows;
    if (forms.exists<Rixotext>()) windows.push_back({&form<Rixotext>(), share(1.0, 1.0 - kUpper), share(0.0, 1.0 - kUpper)});
    if (forms.exists<Rixo>()) windows.push_back({&form<Rixo>(), share(kLeft, kUpper), {280, 200}});
    if (forms.exists<Somata>()) windows.push_back({&form<Somata>(), share(1.0 - kLeft, kUpper), {280, 200}});
    for (const Wanted& w : windows) {
        if (!w.window->isVisible()) continue;
        // A window is never placed smaller than its layout lets it be: it
        // would grow out of its place when shown.
        const QSize least = w.least.expandedTo(w.window->minimumSizeHint().grownBy(windowFrameMargins(*w.window)));
        const QRect place = clearPlace(w.size.expandedTo(least), least, area, mustStayClear, {});
        placeWindow(*w.window, place);
        mustStayClear.push_back(place);
        laidOut = false;
    }
}
