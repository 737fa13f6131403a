#pragma once
#include <QFont>
#include <QString>

// The program's captions name Windows faces ("Arial Greek", "TAHOMA",
// "Times New Roman Greek", "SYMBOL", "Swis721 Win95BT", ...). Those are rarely
// installed, so each name is mapped to an installed family that carries the
// Greek alphabet. Matching ignores case.
QString installedFamilyFor(const QString& requestedName);

// Registers the mapping with Qt's font substitution table, so that QFont
// objects built from the program's names (including widget fonts) resolve to
// Greek-capable faces. Safe to call more than once.
void installFontSubstitutions();

// A font for a requested name, point size and weight.
QFont programFont(const QString& requestedName, double pointSize = 10.0, bool bold = false);
