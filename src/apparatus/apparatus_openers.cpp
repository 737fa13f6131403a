#include "apparatus/apparatus_openers.h"

#include "app/dialogs.h"

namespace {
void notYet() {
    messageBox(QStringLiteral("This simulation is not available yet.  Αυτή η προσομοίωση δεν είναι ακόμη διαθέσιμη."));
}
}  // namespace

void openPtolemyInstrument() { notYet(); }
void openAlHaythamInstrument() { notYet(); }
void openPtolemyDataFitting() { notYet(); }
