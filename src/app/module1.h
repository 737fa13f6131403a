#pragma once

// The start procedure: sets the shared values, places the main menu from the
// screen's size, replaces its start-up captions, prepares the fonts and
// shows it.
void Main();
