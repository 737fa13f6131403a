#pragma once

class QObject;

// What a screen reader is told about the program's windows beyond what each
// screen names itself:
// - every window of the program is a frame, as its title bar shows it
//   (a plain widget made a window would otherwise be a "filler");
// - the scroll bars of a text box or a list carry the box's name.
void installWindowAccessEverywhere(QObject& application);
