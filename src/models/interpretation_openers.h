#pragma once

// How the main menu and the data screen open the interpretation screens.

// The main menu's "INTERPRETATION OF REFRACTION": the wave screen, the
// reflected-and-refracted-waves panel and the corpuscle screen, shown in
// that order.
void showInterpretationScreens();
// The data screen's "INTERPRETATION  OF lAW" (the data screen hides itself
// first): the same three screens, the wave screen with its timer running,
// sharing the display as from the main menu.
void showInterpretationScreensFromData();
// Where the data screen comes back while some of the three are still up:
// they move beside it, so that its menus, grid and buttons are uncovered.
void stepAsideForData();
