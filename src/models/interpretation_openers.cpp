#include "models/interpretation_openers.h"

#include <QMainWindow>

#include <algorithm>
#include <vector>

#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/presentation_size.h"
#include "ui/window_placement.h"

namespace {

constexpr double kUpper = 0.62;  // of the height, for the two drawings
constexpr double kLeft = 0.45;   // of the width, for the waves

// Whether the three screens lie as the program laid them out, kept on the
// panel, which lives as long as they do: they keep the pupil's places when
// they come back, and are laid out again once they stepped aside for the
// data screen or the presentation size changed.
constexpr const char* kLaidOut = "laidOutShared";
bool laidOut(const Rixotext& panel) { return panel.property(kLaidOut).toBool(); }
void setLaidOut(Rixotext& panel, bool on) { panel.setProperty(kLaidOut, on); }

// The three screens share the display: the waves on the left, the
// corpuscles on the right, the panel under both. From the data screen as
// well: it hides while they are shown, and they step aside when it comes
// back with some of them still up (stepAsideForData). The panel is as tall
// as its texts need at the display's width (more on a small display at a
// large presentation size); the drawings take the rest.
void layOutShared(Rixo& rixo, Rixotext& panel, Somata& somata) {
    if (laidOut(panel)) return;
    setLaidOut(panel, true);
    const QRect area = availableArea(&panel);
    const QMargins frame = windowFrameMargins(panel);
    const int width = area.width() - frame.left() - frame.right();
    const int needs = panel.hasHeightForWidth() ? panel.heightForWidth(width) : panel.minimumSizeHint().height();
    constexpr double kMostForPanel = 0.6;
    const double lower = std::clamp((needs + frame.top() + frame.bottom()) / std::max(1.0, double(area.height())),
                                    1.0 - kUpper, kMostForPanel);
    placeWindow(rixo, screenShare(rixo, 0.0, 0.0, kLeft, 1.0 - lower));
    placeWindow(somata, screenShare(somata, kLeft, 0.0, 1.0 - kLeft, 1.0 - lower));
    placeWindow(panel, screenShare(panel, 0.0, 1.0 - lower, 1.0, lower));
}

void showAll(bool fromData) {
    Rixo& rixo = form<Rixo>();
    Rixotext& panel = form<Rixotext>();
    Somata& somata = form<Somata>();
    if (!panel.property("watched").toBool()) {
        panel.setProperty("watched", true);
        // Shown larger or smaller, the panel needs another height: the three
        // are laid out again, those the pupil placed himself excepted.
        watchPresentationSize(&panel, [&panel](int) {
            const Forms& forms = Forms::instance();
            if (!laidOut(panel) || !forms.exists<Rixo>() || !forms.exists<Somata>()) return;
            setLaidOut(panel, false);
            layOutShared(form<Rixo>(), panel, form<Somata>());
        });
    }
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
// so that its menus, grid and buttons are uncovered; smaller if they must,
// but never smaller than their layouts let them be. One that has no room
// beside it even so (the panel below about 1400 pixels, 1800 at 150 %)
// steps back altogether: INTERPRETATION OF lAW brings the three back.
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
    if (forms.exists<Rixotext>())
        windows.push_back({&form<Rixotext>(), share(1.0, 1.0 - kUpper), share(0.0, 1.0 - kUpper)});
    if (forms.exists<Rixo>()) windows.push_back({&form<Rixo>(), share(kLeft, kUpper), {280, 200}});
    if (forms.exists<Somata>()) windows.push_back({&form<Somata>(), share(1.0 - kLeft, kUpper), {280, 200}});
    for (const Wanted& w : windows) {
        if (!w.window->isVisible()) continue;
        // A window is never placed smaller than its layout lets it be: it
        // would grow out of its place when shown.
        const QSize least = w.least.expandedTo(w.window->minimumSizeHint().grownBy(windowFrameMargins(*w.window)));
        const QRect place = clearPlace(w.size.expandedTo(least), least, area, mustStayClear, {});
        const auto covers = [&place](const QRect& part) { return place.intersects(part); };
        if (std::ranges::any_of(workingParts(data), covers)) {
            w.window->hide();
            continue;
        }
        placeWindow(*w.window, place);
        mustStayClear.push_back(place);
        setLaidOut(form<Rixotext>(), false);
    }
}
