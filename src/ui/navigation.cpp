#include "ui/navigation.h"

#include <QWidget>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "ui/forms.h"

namespace {

std::array<std::function<QWidget&()>, 2>& places() {
    static std::array<std::function<QWidget&()>, 2> routes;
    return routes;
}

}  // namespace

void setPlace(Place place, std::function<QWidget&()> window) {
    places()[static_cast<std::size_t>(place)] = std::move(window);
}

QWidget& windowOf(Place place) {
    const auto& window = places()[static_cast<std::size_t>(place)];
    if (!window) {
        std::fputs("refraction: a screen asked for a place the shell never set\n", stderr);
        std::abort();
    }
    return window();
}

void showPlace(Place place) { showScreen(windowOf(place)); }
