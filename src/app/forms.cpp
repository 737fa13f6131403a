#include "app/forms.h"

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
}

void showScreen(QWidget& screen) {
    screen.show();
    screen.raise();
    screen.activateWindow();
}
