#include "apparatus/apparatus_openers.h"

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/window_placement.h"

namespace {
// Over the data screen, where the pupil's eyes are.
void moveTo(QWidget& window, QPoint frameTopLeft) {
    placeWindow(window, QRect(frameTopLeft, outerRect(window).size()));
}

// Then beside its menus, grid and buttons, which stay in reach: smaller if
// it must, down to the least its layout lets it be (or its controls would
// be cut), and only then over the rest of the data screen.
// A window to be watched beside it (the rules page) is covered least after
// the data screen.
void keepDataScreenInReach(QWidget& window, const QWidget* watched = nullptr) {
    const QWidget& data = windowOf(Place::DataScreen);
    const QSize size = outerRect(window).size();
    const QSize least = window.minimumSizeHint().grownBy(windowFrameMargins(window)).boundedTo(size);
    std::vector<QRect> keepClear = {outerRect(data)};
    if (watched && watched->isVisible()) keepClear.push_back(outerRect(*watched));
    placeWindow(window, clearPlace(size, least, availableArea(&data), workingParts(data), keepClear));
}
}  // namespace

void openPtolemyInstrument() {
    const bool first = !Forms::instance().exists<Ptolemaios>();
    Ptolemaios& instrument = form<Ptolemaios>();
    if (first) {
        // Over the data screen, where the pupil's eyes are; the sight view
        // takes its place beside it.
        moveTo(instrument, outerRect(windowOf(Place::DataScreen)).topLeft());
        instrument.Form_Load();
        keepDataScreenInReach(instrument);
    } else {
        instrument.DrawPtolemyApparatus();
    }
    showScreen(instrument);
}

void openAlHaythamInstrument() {
    const bool first = !Forms::instance().exists<Xaithamos>();
    Xaithamos& instrument = form<Xaithamos>();
    if (first) {
        moveTo(instrument, outerRect(windowOf(Place::DataScreen)).topLeft());
        instrument.Form_Load();
        keepDataScreenInReach(instrument, &form<Incref>());
    }
    // The rules stand on the graph screen while the pupil works the
    // instrument, coloured as the last check left them; the instrument
    // comes in front of them with the keyboard, where the two must overlap.
    showScreen(form<Incref>());
    showAlHaythamRulesAsLastChecked();
    showScreen(instrument);
    instrument.DrawAlHaythamApparatus();
}

void openPtolemyDataFitting() {
    const bool first = !Forms::instance().exists<Ptolkam>();
    Ptolkam& fitting = form<Ptolkam>();
    if (first) {
        moveTo(fitting, outerRect(windowOf(Place::DataScreen)).topLeft());
        fitting.Form_Load();
    }
    showScreen(fitting);
}

void hideApparatusScreens() {
    hideIfCreated<Ptolemaios>();
    hideIfCreated<Emfanisi>();
    hideIfCreated<Xaithamos>();
    hideIfCreated<Alhazencheck>();
    hideIfCreated<Ptolkam>();
}
