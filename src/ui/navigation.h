#pragma once
#include <functional>

class QWidget;

// The places a screen sends the pupil back to, whatever floor the screen
// stands on: the main menu and the data screen sit above most of the
// screens that return to them. The shell, which sees every floor, says at
// start-up which window each place is; a screen names the place and never
// includes the screen behind it.
enum class Place { MainMenu, DataScreen };

// Makes `window` the way to a place (it creates the window on first use).
void setPlace(Place place, std::function<QWidget&()> window);

// The window of a place, created on first use. Asking for a place the shell
// never set is a fault of the program, not of the pupil: it stops.
QWidget& windowOf(Place place);

// Shows a place's window modeless, wholly on the screen, in front.
void showPlace(Place place);
