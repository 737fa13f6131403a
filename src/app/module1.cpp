#include "app/module1.h"

#include <cmath>

#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "app/routes.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "models/interpretation_state.h"
#include "semicircle/bench_state.h"
#include "ui/forms.h"
#include "ui/window_placement.h"

void Main() {
    connectRoutes();
    sharedState<InterpretationState>().setSpeedRatio(1.0);
    BenchState& bench = sharedState<BenchState>();
    bench.setAngleWithY(0.0);
    bench.setXc(0.0);
    bench.setYc(0.0);
    bench.setRayHeight(0.0);

    // Nearly the whole screen, title bar and frame included.
    auto& menu = form<Diathlasimeleti>();
    placeWindow(menu, screenShare(menu, 0.0, 0.0, 49.0 / 50.0, 49.0 / 50.0));
    const QRect screen = availableArea(&menu);

    // The symbol face would show these Latin letters as Greek; the title bar
    // has no such face, so the letters stand as written.
    menu.setWindowTitle(QStringLiteral("MELETH DIAULASHS"));
    showOnScreen(menu);

    menu.placeButtonRow(screen.height() * 4 / 8);
    menu.showStartUpCaptions();

    // The data screen and its two graph screens get their Greek faces
    // before they are first shown.
    form<Inpdat>().setFont(roleFont(FontRole::Caption, 10.0));
}
