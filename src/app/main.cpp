#include <QApplication>

#include <cstdio>

#include "app/command_line.h"
#include "app/focus_frame.h"
#include "app/forms.h"
#include "app/help_window.h"
#include "app/menu_keys.h"
#include "app/module1.h"
#include "app/version.h"
#include "app/window_access.h"
#include "app/window_keys.h"
#include "canvas/fonts.h"

int main(int argc, char* argv[]) {
    // Answered before any window system is needed, so it works over ssh too.
    if (const auto answer = answerCommandLine(argc, argv)) {
        std::puts(answer->line.c_str());
        return answer->status;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("refraction"));
    QApplication::setApplicationDisplayName(QStringLiteral("Refraction  Διάθλαση"));
    QApplication::setApplicationVersion(QStringLiteral(REFRACTION_VERSION));
    // The window's class is the desktop entry's name, so a dock ties the
    // running program to its launcher.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.diathlasi.Refraction"));
    installFontSubstitutions();
    installMenuKeysEverywhere(app);
    installHelpEverywhere(app);
    installWindowKeysEverywhere(app);
    installFocusFrameEverywhere(app);
    installWindowAccessEverywhere(app);
    Main();
    const int status = QApplication::exec();
    Forms::instance().destroyAll();
    return status;
}
