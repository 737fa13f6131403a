#pragma once

// The main menu's way in to the data screen "inpdat": lays it out on the
// display (and the graph screens beside it) and shows it.
void openDataScreen();
