#pragma once

class QObject;

// A focus frame that cannot be missed: whichever control has the keyboard
// focus (a button, a scroll bar, a check or option box, a text box, a
// drawing) gets a 2-pixel black frame with a white line inside it, drawn
// over its edge after the control has painted itself, so it shows on light
// and dark controls alike and needs no room around the control.
// (The styles' own focus marks are one dotted pixel, or nothing at all on
// scroll bars and drawings.)
void installFocusFrameEverywhere(QObject& application);

// Whether the widget would get the frame when focused (tests).
class QWidget;
bool framesFocus(const QWidget& widget);
