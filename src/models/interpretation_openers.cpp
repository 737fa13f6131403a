#include "models/interpretation_openers.h"

#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"
#include "ui/window_placement.h"

namespace {

// The first time they come up, the three screens share the display: the
// waves on the left, the corpuscles on the right, the panel under both.
void layOut(Rixo& rixo, Rixotext& panel, Somata& somata) {
    static bool laidOut = false;
    if (laidOut) return;
    laidOut = true;
    constexpr double upper = 0.62;  // of the height, for the two drawings
    constexpr double left = 0.45;   // of the width, for the waves
    placeWindow(rixo, screenShare(rixo, 0.0, 0.0, left, upper));
    placeWindow(somata, screenShare(somata, left, 0.0, 1.0 - left, upper));
    placeWindow(panel, screenShare(panel, 0.0, upper, 1.0, 1.0 - upper));
}

void showAll(bool fromData) {
    Rixo& rixo = form<Rixo>();
    Rixotext& panel = form<Rixotext>();
    Somata& somata = form<Somata>();
    layOut(rixo, panel, somata);
    rixo.setCameFromData(fromData);
    if (fromData) rixo.startAnimation();
    showScreen(rixo);
    showScreen(panel);
    showScreen(somata);
}

}  // namespace

void showInterpretationScreens() { showAll(false); }
void showInterpretationScreensFromData() { showAll(true); }
