#include "models/interpretation_openers.h"

#include <QGuiApplication>
#include <QScreen>

#include "app/forms.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"

namespace {

// The first time they come up, the three screens share the display: the
// waves on the left, the corpuscles on the right, the panel under both.
void layOut(Rixo& rixo, Rixotext& panel, Somata& somata) {
    static bool laidOut = false;
    if (laidOut) return;
    laidOut = true;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    const int upper = area.height() * 64 / 100;
    const int left = area.width() * 45 / 100;
    rixo.setGeometry(area.x(), area.y(), left, upper - 40);
    somata.setGeometry(area.x() + left, area.y(), area.width() - left, upper - 40);
    panel.setGeometry(area.x(), area.y() + upper, area.width(), area.height() - upper - 40);
}

void showAll(bool fromData) {
    Rixo& rixo = form<Rixo>();
    Rixotext& panel = form<Rixotext>();
    Somata& somata = form<Somata>();
    layOut(rixo, panel, somata);
    rixo.setCameFromData(fromData);
    if (fromData) rixo.Timer1->setEnabled(true);
    showScreen(rixo);
    showScreen(panel);
    showScreen(somata);
}

}  // namespace

void showInterpretationScreens() { showAll(false); }
void showInterpretationScreensFromData() { showAll(true); }
