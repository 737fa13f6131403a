#pragma once
#include <QTextEdit>
#include <QWidget>

#include "canvas/canvas.h"

// "incref": a drawing screen with no logic of its own. The data screen
// plots refraction angle against incidence angle on it (x −5 … 110, y 110
// down to −30 degrees); the apparatus screens draw their diagrams and print
// their rules on it. Whoever draws sets the title, the scale and the picture.
class Incref : public QWidget {
    Q_OBJECT
public:
    Incref();

    // The drawing every user of the screen draws on.
    Canvas* canvas() const { return canvas_; }

    // The window title, which names what the picture shows.
    void setTitle(const QString& title);
    QString title() const { return windowTitle(); }
    // The graph scale of the data screen: incidence −5 … 110 across,
    // refraction 110 at the top down to −30.
    void graphScale();

private:
    Canvas* canvas_;
};

// "analysis": a drawing screen for sin r against sin i (x −0.3 … 1.5,
// y 1.2 down to −0.2), with a text box Text1 for the history notes and the
// explanations of the apparatus screens. The text box is hidden until a
// screen puts a text into it; while it shows, it takes the upper part of the
// window and the drawing the rest, so that a note's figure stays visible.
class Analysis : public QWidget {
    Q_OBJECT
public:
    Analysis();

    // The drawing every user of the screen draws on.
    Canvas* canvas() const { return canvas_; }
    // What the text box holds, shown or not.
    QString text() const { return Text1->toPlainText(); }

    void setTitle(const QString& title);
    QString title() const { return windowTitle(); }
    // The sine-graph scale: x −0.3 … 1.5, y 1.2 at the top down to −0.2.
    void graphScale();
    // Puts the text into Text1 in the given type size and shows it.
    void showText(const QString& text, double pointSize = 13.0);
    // Hides Text1 (its text stays).
    void hideText();
    bool textShown() const { return !Text1->isHidden(); }

private:
    Canvas* canvas_;
    QTextEdit* Text1;  // read-only, scrollable
};

// Places the two drawing screens beside a screen that uses them (the data
// screen on the left): incref in the upper right of the display, analysis
// in the lower right. Done once per screen, the first time it is placed;
// later the pupil's own placement stands.
void placeGraphScreensBeside(const QWidget& owner);
