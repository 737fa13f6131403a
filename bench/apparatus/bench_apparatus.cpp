// How long the historical instruments take to redraw after a change of a
// control, each against a bare clearing of the same canvas (the counter
// "x_cls" is the ratio), and the critical-angle guard from 88°.
#include <QApplication>
#include <QRadioButton>
#include <QScrollBar>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <memory>

#include "../screen_bench_main.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

namespace {

class ScriptedAnswer : public DialogProvider {
public:
    void message(const QString&, const QString&) override {}
    QString input(const QString&, const QString&, const QString&) override { return QStringLiteral("2"); }
};

// Microseconds of one bare cls of the canvas, from a few hundred runs.
double clsMicroseconds(Canvas& canvas) {
    constexpr int kRuns = 300;
    const auto start = std::chrono::steady_clock::now();
    for (int k = 0; k < kRuns; ++k) canvas.cls();
    const std::chrono::duration<double, std::micro> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / kRuns;
}

// The screen's one drawing, cleared bare for the comparison.
Canvas& drawingOf(QWidget& screen) { return *screen.findChild<Canvas*>(); }

template <typename Change>
void redrawAgainstCls(benchmark::State& state, Canvas& canvas, Change change) {
    const auto start = std::chrono::steady_clock::now();
    int step = 0;
    for (auto _ : state) {
        change(step++);
        showDrawing(canvas);
    }
    const std::chrono::duration<double, std::micro> spent = std::chrono::steady_clock::now() - start;
    const double perRedraw = spent.count() / static_cast<double>(state.iterations());
    state.counters["x_cls"] = perRedraw / clsMicroseconds(canvas);
    change(0);  // leave the picture drawn
}

Ptolemaios& ptolemy() {
    static Ptolemaios* screen = [] {
        openPtolemyInstrument();
        Ptolemaios& p = form<Ptolemaios>();
        p.resize(560, 900);
        QCoreApplication::processEvents();
        return &p;
    }();
    return *screen;
}

Alhazencheck& check() {
    static Alhazencheck* screen = [] {
        openAlHaythamInstrument();
        form<Xaithamos>().svise_Click();
        Alhazencheck& c = form<Alhazencheck>();
        c.resize(820, 600);
        QCoreApplication::processEvents();
        return &c;
    }();
    return *screen;
}

void BM_PtolemyPositionInAir(benchmark::State& state) {
    Ptolemaios& p = ptolemy();
    QScrollBar* inAir = p.findChild<QScrollBar*>(QStringLiteral("metatopisipar"));
    redrawAgainstCls(state, drawingOf(p), [inAir](int step) { inAir->setValue(step % 2 == 0 ? 130 : 140); });
}
BENCHMARK(BM_PtolemyPositionInAir)->Unit(benchmark::kMicrosecond);

// 88° drawn from scratch: the guard lowers it to 47° and the bar shows it.
void BM_PtolemyGuardFrom88(benchmark::State& state) {
    Ptolemaios& p = ptolemy();
    QScrollBar* inWater = p.findChild<QScrollBar*>(QStringLiteral("goniaprosptosis"));
    redrawAgainstCls(state, drawingOf(p), [inWater](int) { inWater->setValue(88); });
    inWater->setValue(30);
}
BENCHMARK(BM_PtolemyGuardFrom88)->Unit(benchmark::kMicrosecond);

void BM_AlHaythamIncidence(benchmark::State& state) {
    openAlHaythamInstrument();
    Xaithamos& x = form<Xaithamos>();
    x.resize(760, 700);
    x.findChild<QRadioButton*>(QStringLiteral("Option2"))->click();
    QCoreApplication::processEvents();
    QScrollBar* incidence = x.findChild<QScrollBar*>(QStringLiteral("strefo"));
    redrawAgainstCls(state, drawingOf(x), [incidence](int step) { incidence->setValue(step % 2 == 0 ? 40 : 41); });
}
BENCHMARK(BM_AlHaythamIncidence)->Unit(benchmark::kMicrosecond);

void BM_AlHaythamCheckIndex(benchmark::State& state) {
    Alhazencheck& c = check();
    QScrollBar* index = c.findChild<QScrollBar*>(QStringLiteral("timidikti"));
    redrawAgainstCls(state, drawingOf(c), [index](int step) { index->setValue(step % 2 == 0 ? 133 : 134); });
}
BENCHMARK(BM_AlHaythamCheckIndex)->Unit(benchmark::kMicrosecond);

// Between 2.00 and 1.99 rule (5) changes along the curve: the rules are
// printed again on the graph screen at every change.
void BM_AlHaythamCheckRulesReprinted(benchmark::State& state) {
    Alhazencheck& c = check();
    QScrollBar* index = c.findChild<QScrollBar*>(QStringLiteral("timidikti"));
    redrawAgainstCls(state, drawingOf(c), [index](int step) { index->setValue(step % 2 == 0 ? 200 : 199); });
}
BENCHMARK(BM_AlHaythamCheckRulesReprinted)->Unit(benchmark::kMicrosecond);

void BM_PtolemyFittingSet(benchmark::State& state) {
    openPtolemyDataFitting();
    Ptolkam& k = form<Ptolkam>();
    k.resize(1000, 760);
    QCoreApplication::processEvents();
    redrawAgainstCls(state, drawingOf(k), [&k](int step) {
        if (step % 2 == 0)
            k.Option1_Click();
        else
            k.Option2_Click();
    });
}
BENCHMARK(BM_PtolemyFittingSet)->Unit(benchmark::kMicrosecond);

void BM_PtolemyFittingOtherStart(benchmark::State& state) {
    openPtolemyDataFitting();
    Ptolkam& k = form<Ptolkam>();
    redrawAgainstCls(state, drawingOf(k), [&k](int) { k.Enallagi_Click(); });
}
BENCHMARK(BM_PtolemyFittingOtherStart)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) { return runScreenBenchmarks(argc, argv, std::make_unique<ScriptedAnswer>()); }
