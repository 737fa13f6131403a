#include "history/data_screen_opener.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include "analysis/graph_screens.h"
#include "app/forms.h"
#include "history/inpdat_screen.h"

void openDataScreen() {
    Inpdat& data = form<Inpdat>();
    // The left part of the display, so that the two graph screens fit
    // beside it.
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        const int width = std::clamp(area.width() * 36 / 100, std::min(area.width(), 520), area.width());
        data.setGeometry(area.left(), area.top() + 30, width, std::max(300, area.height() - 40));
    }
    showScreen(data);
    placeGraphScreensBeside(data);
}

void showDataScreen() { showScreen(form<Inpdat>()); }

QRect dataScreenGeometry() { return form<Inpdat>().frameGeometry(); }
