#include "app/module1.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

#include "app/forms.h"
#include "app/main_menu.h"
#include "app/shared_state.h"

void Main() {
    SharedState& s = module1();
    s.pi = 4.0 * std::atan(1.0);
    s.speedRatio = 1.0;
    s.angleWithY = 0.0;
    s.xc = 0.0;
    s.yc = 0.0;
    s.rayHeight = 0.0;

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    auto& menu = form<Diathlasimeleti>();
    menu.move(screen.left(), screen.top());
    menu.resize(screen.width() * 49 / 50, screen.height() * 49 / 50);

    // The symbol face would show these Latin letters as Greek; the title bar
    // has no such face, so the letters stand as written.
    menu.setWindowTitle(QStringLiteral("MELETH DIAULASHS"));
    menu.show();

    menu.placeButtonRow(screen.height() * 4 / 8);
    menu.Command1->setCaption(QStringLiteral("SEMICIRCLE ΗΜΙΚΥΚΛΙΟ"));
    menu.Command2->setCaption(
        QStringLiteral("ANALYSIS OF DATA, SOME HISTORICAL ELEMENTS  Μελέτη των δεδομένων,ιστορικά στοιχεία"));
    menu.Command3->setCaption(QStringLiteral("END Τέλος"));
    s.speedRatio = 1.0;
}
