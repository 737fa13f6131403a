#pragma once

// How the data screen opens the simulations of historical instruments.
// Each shows its screen (created on first use) and draws what it starts with.

// Ptolemy's instrument, "PTOLEMY'S METHOD", with its sight view.
void openPtolemyInstrument();
// Al Haytham's instrument, with his rules printed on the graph screen.
void openAlHaythamInstrument();
// Ptolemy's adjustment of his data, "PTOLEMY DATA MANIPULATION".
void openPtolemyDataFitting();

// Hides every apparatus screen that was ever opened (with Ptolemy's sight
// view and Al Haytham's check): for a command that leaves the data screen
// for the main menu.
void hideApparatusScreens();
