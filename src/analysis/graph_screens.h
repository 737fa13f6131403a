#pragma once
#include <QTextEdit>
#include <QWidget>

#include "canvas/canvas.h"

// A graph's user scale: x from left to right, y from top down to bottom.
struct GraphScale {
    double left, top, right, bottom;
};
// Refraction angle against incidence angle, both in degrees.
inline constexpr GraphScale kAngleGraphScale{-5.0, 110.0, 110.0, -30.0};
// sin r against sin i.
inline constexpr GraphScale kSineGraphScale{-0.3, 1.2, 1.5, -0.2};

// What a drawing screen's picture is, as whoever drew it last says: the
// data screen's angle or sine graph, an instrument's diagram or rules page,
// a history note's figure, or nothing yet. Code that would lay something
// over a graph, or report it, asks this instead of guessing from the scale.
enum class Picture { Nothing, AngleGraph, SineGraph, Diagram, NoteFigure };

// "incref": a drawing screen with no logic of its own. The data screen
// plots refraction angle against incidence angle on it (kAngleGraphScale);
// the apparatus screens draw their diagrams and print
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
    // The angle graph's scale (kAngleGraphScale), in which the instruments'
    // rules are printed too.
    void graphScale();

    // Said by whoever draws the picture, right after drawing it.
    void setPicture(Picture picture) { picture_ = picture; }
    Picture picture() const { return picture_; }

private:
    Canvas* canvas_;
    Picture picture_ = Picture::Nothing;
};

// "analysis": a drawing screen for sin r against sin i (kSineGraphScale), with a text box Text1 for the history notes
// and the explanations of the apparatus screens. The text box is hidden until a screen puts a text into it; while it
// shows, it takes the upper part of the window and the drawing the rest, so that a note's figure stays visible.
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
    // The sine graph's scale (kSineGraphScale).
    void graphScale();
    // Said by whoever draws the picture (the text box is not part of it).
    void setPicture(Picture picture) { picture_ = picture; }
    Picture picture() const { return picture_; }
    // Puts the text into Text1 in the given type size and shows it.
    void showText(const QString& text, double pointSize = 13.0);
    // Hides Text1 (its text stays).
    void hideText();
    bool textShown() const { return !Text1->isHidden(); }

private:
    Canvas* canvas_;
    QTextEdit* Text1;  // read-only, scrollable
    Picture picture_ = Picture::Nothing;
};

// Places the two drawing screens beside a screen that uses them (the data
// screen on the left): incref in the upper right of the display, analysis
// in the lower right. Done once per screen, the first time it is placed;
// later the pupil's own placement stands.
void placeGraphScreensBeside(const QWidget& owner);

// The least width of the strip beside the data screen in which the two
// graphs are read one over the other.
inline constexpr int kGraphStripWidth = 400;
