#include "app/history_screen.h"

// Placeholder so that the build links while the pages are written.
Storiopt::Storiopt() {
    protomeros = nullptr;
    defteromeros = nullptr;
    klisimo = nullptr;
    Picture1 = new QWidget(this);
    Picture2 = new QWidget(this);
}
void Storiopt::Form_Load() {}
void Storiopt::protomeros_Click() {}
void Storiopt::defteromeros_Click() {}
void Storiopt::klisimo_Click() { hide(); }
void Storiopt::resizeEvent(QResizeEvent* event) { QMainWindow::resizeEvent(event); }
