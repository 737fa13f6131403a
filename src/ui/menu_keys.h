#pragma once
#include <QChar>
#include <QString>
#include <QStringList>

class QMainWindow;
class QObject;

// Alt and a letter opens each menu of a window's menu bar. The program's
// menu captions are used as written (an '&' would change them), so the keys
// are shortcuts of the window instead: each menu gets the first letter of
// its caption that no menu before it took. The key is added to the menu's
// tool tip and accessible description, so that it can be found. The menu
// opens with its first item highlighted, as a mnemonic opens it.

// The letters for a row of captions ('\0' where none is left).
QList<QChar> menuLetters(const QStringList& captions);

// Gives the window's menus their Alt keys; once per window.
void installMenuKeys(QMainWindow& window);

// Watches the application: every main window gets its menu keys when it is
// first shown, so screens added later need nothing of their own.
// Alt alone then highlights the menu bar's first title (filled as an open
// one, whatever the style) and the arrows move along the titles.
void installMenuKeysEverywhere(QObject& application);
