#include "ui/forms.h"

#include "ui/window_placement.h"

Forms& Forms::instance() {
    // Never destroyed by static destruction: widgets must go before the
    // application object, so main() calls destroyAll() while it still lives.
    static Forms* forms = new Forms;
    return *forms;
}

void Forms::destroyAll() {
    while (!order_.empty()) {
        screens_.erase(order_.back());
        order_.pop_back();
    }
    states_.clear();
}

void Forms::hideAllBut(const QWidget& keep) {
    for (auto& [key, screen] : screens_)
        if (screen.get() != &keep) screen->hide();
}

void showScreen(QWidget& screen) { showOnScreen(screen); }
