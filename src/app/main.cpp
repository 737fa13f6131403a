#include <QApplication>

#include <cstdio>

#include "app/command_line.h"
#include "app/module1.h"
#include "canvas/fonts.h"
#include "core/version.h"
#include "ui/figure_commands.h"
#include "ui/focus_frame.h"
#include "ui/forms.h"
#include "ui/help_window.h"
#include "ui/menu_keys.h"
#include "ui/presentation_size.h"
#include "ui/window_access.h"
#include "ui/window_keys.h"

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
    restorePresentationSize();  // before the first window takes its fonts
    installMenuKeysEverywhere(app);
    installHelpEverywhere(app);
    installFigureCommands();
    installWindowKeysEverywhere(app);
    installFocusFrameEverywhere(app);
    installWindowAccessEverywhere(app);
    Main();
    const int status = QApplication::exec();
    Forms::instance().destroyAll();
    return status;
}
