#include "ui/program_exit.h"

#include <QApplication>

namespace {
ProgramEnder& current() {
    static ProgramEnder ender = [](int status) {
        // Every window goes at once and the event loop returns the status;
        // main() then tears the screens down in order.
        QApplication::closeAllWindows();
        QApplication::exit(status);
    };
    return ender;
}
}  // namespace

void endProgram(int status) { current()(status); }

ProgramEnder setProgramEnder(ProgramEnder ender) {
    ProgramEnder previous = current();
    if (ender) current() = std::move(ender);
    return previous;
}
