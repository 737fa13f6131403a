#pragma once
#include <QScrollBar>
#include <QString>

#include <functional>

// How a scroll bar of the program is set up. The defaults are those of a
// classic scroll bar: a step of 1 for the arrows.
struct ScrollBarSettings {
    Qt::Orientation orientation = Qt::Horizontal;
    int minimum = 0;
    int maximum = 100;
    int value = 0;
    int smallChange = 1;   // an arrow key or arrow button
    int largeChange = 10;  // Page Up/Down or a click in the trough
    const char* objectName = "";
    QString accessibleName;  // what the bar stands for, English then Greek
};

// Every scroll bar of the program is made here, so that all of them answer
// alike: Right and Down raise the value, Left and Up lower it, whichever
// way the bar lies — the thumb moves the way the arrow key points. Page
// Up/Down move by the large change, Home and End go to the ends. The bar
// takes the keyboard focus by Tab and by a click.
QScrollBar* createScrollBar(const ScrollBarSettings& settings);

// What a screen reader hears as the bar's value: its accessible
// description, kept up to date on every change, is the value as the screen
// shows it ("xc = 0.40", "n = 1.50") rather than the bar's inner whole
// number. Until a screen says how, the description is that number.
void describeValue(QScrollBar& bar, std::function<QString(int value)> shown);

// Says the bar's value again, for a bar whose shown value also depends on
// other controls (the body in air of Ptolemy's instrument stands where the
// angle in water puts it).
void refreshValueDescription(QScrollBar& bar);
