#pragma once
#include <QCoreApplication>
#include <QLabel>

#include "app/main_menu.h"
#include "models/interpretation_state.h"
#include "models/model_widgets.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"

// A control of a screen by its name; the test fails on a missing one
// rather than crashing on it.
template <class Control>
Control& child(const QObject& screen, const char* name) {
    Control* c = screen.findChild<Control*>(QString::fromLatin1(name));
    if (!c) qFatal("no control %s", name);
    return *c;
}

inline QString text(const QObject& screen, const char* label) { return child<QLabel>(screen, label).text(); }

// The three interpretation windows as the main menu opens them, at sizes
// every test of them can rely on, with the shared values they show.
struct Screens {
    Rixo& rixo;
    Rixotext& panel;
    Somata& somata;
    InterpretationState& state = sharedState<InterpretationState>();
    FormTimer& waves = child<FormTimer>(rixo, "Timer1");
    FormTimer& pulse = child<FormTimer>(panel, "Timer1");
    FormTimer& newton = child<FormTimer>(somata, "Timer1");
    FormTimer& descartes = child<FormTimer>(somata, "Timer2");
    MovingLayer& fronts = child<MovingLayer>(rixo, "waveFronts");
};

inline Screens openFromMenu() {
    form<Diathlasimeleti>().Command5_Click();
    Screens s{form<Rixo>(), form<Rixotext>(), form<Somata>()};
    s.rixo.resize(640, 520);
    s.somata.resize(720, 560);
    QCoreApplication::processEvents();
    return s;
}
