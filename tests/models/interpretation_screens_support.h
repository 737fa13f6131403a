#pragma once
#include <QCoreApplication>

#include <cmath>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "core/shared_state.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"

// The three interpretation windows as the main menu opens them, at sizes
// every test of them can rely on.
struct Screens {
    Rixo& rixo;
    Rixotext& panel;
    Somata& somata;
};

inline Screens openFromMenu() {
    module1().pi = 4.0 * std::atan(1.0);
    form<Diathlasimeleti>().Command5_Click();
    Screens s{form<Rixo>(), form<Rixotext>(), form<Somata>()};
    s.rixo.resize(640, 520);
    s.somata.resize(720, 560);
    QCoreApplication::processEvents();
    return s;
}
