#pragma once
#include <QRect>

// The data screen "inpdat" as other screens reach it: the instrument and
// interpretation screens come back to it and place themselves beside it.

// The main menu's way in: lays the data screen out on the display (and the
// graph screens beside it) and shows it.
void openDataScreen();
// Shows the data screen as the pupil left it (created on first use).
void showDataScreen();
// Where the data screen stands on the display (its frame), created or not.
QRect dataScreenGeometry();
