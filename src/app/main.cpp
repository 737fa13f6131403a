#include <QApplication>

#include "app/focus_frame.h"
#include "app/forms.h"
#include "app/menu_keys.h"
#include "app/module1.h"
#include "app/window_keys.h"
#include "canvas/fonts.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("refraction"));
    QApplication::setApplicationDisplayName(QStringLiteral("Refraction  Διάθλαση"));
    installFontSubstitutions();
    installMenuKeysEverywhere(app);
    installWindowKeysEverywhere(app);
    installFocusFrameEverywhere(app);
    Main();
    const int status = QApplication::exec();
    Forms::instance().destroyAll();
    return status;
}
