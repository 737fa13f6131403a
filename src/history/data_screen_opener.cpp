#include "history/data_screen_opener.h"

#include <QGuiApplication>
#include <QScreen>

void openDataScreen() {}

void showDataScreen() {}

QRect dataScreenGeometry() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 800, 600);
}
