// How long the semicircle screens take to draw: a scroll bar's full redraw
// of the bench, with and without the angles beside the rays and the
// protractor, against a bare clearing of the same canvas, the all-random
// experiment, and the mean-error graph.
#include <QApplication>

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

#include "analysis/errors_screen.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "screen_bench_main.h"
#include "semicircle/hmiky_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

namespace {

class SilentDialogs : public DialogProvider {
public:
    void message(const QString&, const QString&) override {}
    QString input(const QString&, const QString&, const QString&) override { return {}; }
};

// The bench as the pupil has it: opened, block turned left, at a usual size.
Hmiky& preparedBench() {
    static Hmiky* bench = [] {
        form<Diathlasimeleti>().Command1_Click();
        Hmiky& b = form<Hmiky>();
        b.resize(1000, 900);
        QCoreApplication::processEvents();
        b.moredens_Click();
        return &b;
    }();
    return *bench;
}

// The lab bench's aids on or off: the angles beside the rays and the
// protractor.
void setLabAids(Hmiky& bench, bool on) {
    auto* readouts = bench.findChild<QAction*>("readouts");
    if (readouts->isChecked() != on) readouts->trigger();
    if (bench.protractorShown().has_value() != on) bench.findChild<QAction*>("protractor")->trigger();
}

void scrollBarRedraws(benchmark::State& state, bool labAids) {
    Hmiky& bench = preparedBench();
    setLabAids(bench, labAids);
    auto* xcoor = bench.findChild<QScrollBar*>("xcoor");
    int step = 0;
    for (auto _ : state) {
        xcoor->setValue(step++ % 2 == 0 ? 10 : 11);  // each change redraws the whole bench
        showDrawing(bench.drawing());
    }
    setLabAids(bench, false);
    bench.findChild<QAction*>("readouts")->trigger();  // back to the bench as it opens
    state.SetItemsProcessed(state.iterations());
}

// The redraw as it was before the lab aids, and with the readouts and the
// protractor: the difference must stay under a tenth of a display frame.
void BM_ScrollBarRedraw(benchmark::State& state) { scrollBarRedraws(state, false); }
BENCHMARK(BM_ScrollBarRedraw)->Unit(benchmark::kMicrosecond);

void BM_ScrollBarRedrawLabAids(benchmark::State& state) { scrollBarRedraws(state, true); }
BENCHMARK(BM_ScrollBarRedrawLabAids)->Unit(benchmark::kMicrosecond);

void BM_BareCls(benchmark::State& state) {
    auto* canvas = preparedBench().findChild<Canvas*>("bench");
    for (auto _ : state) {
        canvas->cls();
        showDrawing(*canvas);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BareCls)->Unit(benchmark::kMicrosecond);

void BM_AllRandom(benchmark::State& state) {
    Hmiky& bench = preparedBench();
    for (auto _ : state) {
        bench.allrandom_Click();
        showDrawing(bench.drawing());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_AllRandom)->Unit(benchmark::kMicrosecond);

void BM_RaysForAllIncidences(benchmark::State& state) {
    Hmiky& bench = preparedBench();
    for (auto _ : state) {
        bench.Command4_Click();
        showDrawing(bench.drawing());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RaysForAllIncidences)->Unit(benchmark::kMicrosecond);

void BM_MeanErrorScreen(benchmark::State& state) {
    Hmiky& bench = preparedBench();
    bench.findChild<QScrollBar*>("xcoor")->setValue(20);
    Errors& errors = form<Errors>();
    errors.resize(860, 660);
    errors.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        errors.Form_Click();  // 67 radii × 9 rays, then the graph
        showDrawing(errors.drawing());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MeanErrorScreen)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) { return runScreenBenchmarks(argc, argv, std::make_unique<SilentDialogs>()); }
