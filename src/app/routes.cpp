#include "app/routes.h"

#include "analysis/errors_screen.h"
#include "app/lesson_links.h"
#include "app/main_menu.h"
#include "history/inpdat_screen.h"
#include "semicircle/bench_routes.h"
#include "ui/forms.h"
#include "ui/navigation.h"

void connectRoutes() {
    setPlace(Place::MainMenu, []() -> QWidget& { return form<Diathlasimeleti>(); });
    setPlace(Place::DataScreen, []() -> QWidget& { return form<Inpdat>(); });

    BenchRoutes& bench = benchRoutes();
    bench.showMeanError = [] {
        const bool existed = Forms::instance().exists<Errors>();
        Errors& errors = form<Errors>();
        if (existed) errors.Form_Click();  // a new graph for the bench as it is now
        showScreen(errors);
    };
    bench.hideMeanError = [] { hideIfCreated<Errors>(); };
    bench.transferPairs = [](const std::vector<MeasuredPair>& pairs) {
        form<Inpdat>().takeMeasuredPairs(pairs);
        showPlace(Place::DataScreen);
    };
    connectLessonLinks();
}
