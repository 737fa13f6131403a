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

// How the three screens were last laid out: they keep the pupil's places,
// and are laid out again only when they come from elsewhere.
enum class Layout { None, Shared, BesideData };
Layout lastLayout = Layout::None;

// From the main menu the three screens share the display: the waves on
// the left, the corpuscles on the right, the panel under both.
void layOutShared(Rixo& rixo, Rixotext& panel, Somata& somata) {
    if (lastLayout == Layout::Shared) return;
    lastLayout = Layout::Shared;
    placeWindow(rixo, screenShare(rixo, 0.0, 0.0, kLeft, kUpper));
    placeWindow(somata, screenShare(somata, kLeft, 0.0, 1.0 - kLeft, kUpper));
    placeWindow(panel, screenShare(panel, 0.0, kUpper, 1.0, 1.0 - kUpper));
}

// From the data screen they go beside it, as the graph screens do, so that
// its menus, grid and buttons are uncovered when the pupil comes back to
// it with the panel or the corpuscles still up. The data screen hides while
// they are shown, but keeps its place, which stays clear. The three share
// the room beside it as they share the display from the main menu, and
// grow smaller if they must; the panel keeps the height its texts are laid
// out in and the width its controls need. Where there is no room for all
// three, the later ones cover part of the earlier rather than the data
// screen; where there is no room for the panel (below about 1400 pixels,
// 1800 at 150 %), it covers part of the data screen's grid.
void layOutBesideData(Rixo& rixo, Rixotext& panel, Somata& somata) {
    lastLayout = Layout::BesideData;
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
    // The panel first, as it holds the controls the drawings follow.
    const Wanted windows[] = {{&panel, share(1.0, 1.0 - kUpper), share(0.0, 1.0 - kUpper)},
                              {&rixo, share(kLeft, kUpper), {280, 200}},
                              {&somata, share(1.0 - kLeft, kUpper), {280, 200}}};
    for (const Wanted& w : windows) {
        // A window is never placed smaller than its layout lets it be: it
        // would grow out of its place when shown.
        const QSize least = w.least.expandedTo(w.window->minimumSizeHint().grownBy(windowFrameMargins(*w.window)));
        const QRect place = clearPlace(w.size.expandedTo(least), least, area, mustStayClear, {});
        placeWindow(*w.window, place);
        mustStayClear.push_back(place);
    }
}

void showAll(bool fromData) {
    Rixo& rixo = form<Rixo>();
    Rixotext& panel = form<Rixotext>();
    Somata& somata = form<Somata>();
    if (fromData)
        layOutBesideData(rixo, panel, somata);
    else
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
