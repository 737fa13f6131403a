#include "history/data_screen_opener.h"

#include <algorithm>

#include "analysis/graph_screens.h"
#include "history/inpdat_screen.h"
#include "ui/forms.h"
#include "ui/window_placement.h"

void openDataScreen() {
    Inpdat& data = form<Inpdat>();
    // The left part of the display, so that the two graph screens fit
    // beside it; wide enough for its menus on one row, unless that leaves
    // the graphs too little room (a narrow screen at a large presentation
    // size): then the menus wrap.
    const QRect area = availableArea(&data);
    const int oneRowOfMenus = data.widthForMenusOnOneRow() + 16;  // and its frame
    const int width = std::max({area.width() * 36 / 100, std::min(area.width(), 520),
                                std::min(oneRowOfMenus, area.width() - kGraphStripWidth)});
    placeWindow(data, QRect(area.left(), area.top(), width, area.height()));
    showScreen(data);
    placeGraphScreensBeside(data);
}
