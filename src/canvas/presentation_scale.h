#pragma once
#include <QFont>
#include <QSizeF>

#include "canvas/fonts.h"

// How much larger than designed texts, marks and lines are shown on the
// screen, so that a class at the back of the room can read a projected
// window: 1.0 (as designed) … 2.0. roleFont() grows window fonts by it and
// the canvas paints its texts, pens and points larger by it; a drawing's
// summary and exports stay those of 1.0, and so does its layout but for
// the room it makes for its larger texts on the screen.
double presentationScale();
// Sets the factor (clamped to 1 … 2); windows already made are brought to
// it by whoever changes it (ui/presentation_size.h).
void setPresentationScale(double factor);

// The size a box of texts (a readout, a label's ground, a legend) takes on
// the screen: it grows down and to the right by as much as the texts on it,
// `texts` being their extent as designed. For boxes placed in free room.
QSizeF shownBoxSize(QSizeF box, QSizeF texts);

// While one lives, the canvas paints as designed: exports and prints are
// the same at every presentation size.
class DesignedScale {
public:
    DesignedScale() : kept_(presentationScale()) { setPresentationScale(1.0); }
    ~DesignedScale() { setPresentationScale(kept_); }
    DesignedScale(const DesignedScale&) = delete;
    DesignedScale& operator=(const DesignedScale&) = delete;

private:
    double kept_;
};

// A font of the role at the designed size, for what is laid out once for
// every screen and page (a drawing's record, a printed report).
QFont designedRoleFont(FontRole role, double pointSize = 10.0, bool bold = false);
