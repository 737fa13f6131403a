#include "models/interpretation_openers.h"

#include <QMainWindow>

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
// they are shown, but keeps its place, which stays clear. The drawings grow
// smaller if they must; the panel keeps the height its texts are laid out
// in and the width its controls need. Where there is no room for all three,
// the later ones cover part of the earlier rather than the data screen; on
// screens too narrow for the panel beside it (below about 1800 pixels at
// 150 %), the panel covers part of it.
void layOutBesideData(Rixo& rixo, Rixotext& panel, Somata& somata) {
    lastLayout = Layout::BesideData;
    const QWidget& data = windowOf(Place::DataScreen);
    const QRect area = availableArea(&data);
    std::vector<QRect> mustStayClear = {outerRect(data)};
    // Its title bar and menus first: a panel too wide for the room beside
    // it covers its grid and buttons rather than them.
    if (const auto* main = qobject_cast<const QMainWindow*>(&data))
        mustStayClear.insert(mustStayClear.begin(), titleBarAndMenus(*main));
    const QRect panelShare = screenShare(panel, 0.0, kUpper, 1.0, 1.0 - kUpper);
    struct Wanted {
        QWidget* window;
        QSize size;
        QSize least;
    };
    const Wanted windows[] = {{&rixo, screenShare(rixo, 0.0, 0.0, kLeft, kUpper).size(), {280, 200}},
                              {&panel, panelShare.size(), {280, panelShare.height()}},
                              {&somata, screenShare(somata, kLeft, 0.0, 1.0 - kLeft, kUpper).size(), {280, 200}}};
    std::vector<QRect> placed;
    for (const Wanted& w : windows) {
        // A window is never placed smaller than its layout lets it be: it
        // would grow out of its place when shown.
        const QSize least = w.least.expandedTo(w.window->minimumSizeHint().grownBy(windowFrameMargins(*w.window)));
        const QRect place = clearPlace(w.size.expandedTo(least), least, area, mustStayClear, placed);
        placeWindow(*w.window, place);
        placed.push_back(place);
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
