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

// The program's few kinds of lettering. Windows, controls and drawings ask
// for one of these by what the text is, never by a face name, so each face
// is chosen in one place.
enum class FontRole {
    Caption,  // window texts, buttons, labels and the drawings' notes: a plain sans
    Panel,    // the menu-like windows (history, choices, Ptolemy's disc): a wider sans
    Reading,  // running text of the history pages and the explanation buttons: a serif
    Table,    // figures set in columns that must line up: a fixed-width face
};

// The installed family a role is drawn in.
QString roleFamily(FontRole role);

// A font of the role at a point size and weight.
QFont roleFont(FontRole role, double pointSize = 10.0, bool bold = false);
