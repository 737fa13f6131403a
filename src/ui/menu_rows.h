#pragma once
#include <QList>

class QAction;
class QMainWindow;

// A menu bar that does not fit its window hides its last menus behind an
// arrow, where a pupil does not look for them. Instead the menus that do not
// fit go onto a further row under the first (and so on), in their order,
// and come back when the window is wide enough again. Once per window.
void letMenusWrap(QMainWindow& window);

// Every menu of the window's menu bar, in order, whichever row it stands on.
QList<QAction*> menusOfAllRows(const QMainWindow& window);
