#include "models/interpretation_openers.h"

#include "app/dialogs.h"

namespace {
void notYet() {
    messageBox(QStringLiteral("The interpretation screens are not available yet.  Οι οθόνες της ερμηνείας δεν είναι ακόμη διαθέσιμες."));
}
}  // namespace

void showInterpretationScreens() { notYet(); }
void showInterpretationScreensFromData() { notYet(); }
