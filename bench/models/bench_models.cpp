// How long the interpretation screens take: one tick of each animation and
// one full redraw of each screen, each against a bare cls of the same canvas
// (counter x_cls) and, for the ticks, as a share of the timer's interval
// (counter pct_interval, which must stay under 5). Then the missed ticks of
// ten seconds of all four animations running together, and the resident
// memory before and after ten minutes' worth of ticks (60,000 ticks of 10 ms).
#include <QApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <fstream>
#include <memory>
#include <unistd.h>

#include "../screen_bench_main.h"
#include "canvas/fonts.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

namespace {

// CPU time of this thread, microseconds: the machine is shared, so wall
// time would count other programs' turns as ours.
double cpuMicroseconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e6 + static_cast<double>(t.tv_nsec) / 1e3;
}

class SilentDialogs : public DialogProvider {
public:
    void message(const QString&, const QString&) override {}
    QString input(const QString&, const QString&, const QString&) override { return {}; }
};

struct Screens {
    Rixo& rixo;
    Rixotext& panel;
    Somata& somata;
    // What the benchmarks drive by hand, found by name as a test would.
    Canvas* rixoCanvas = rixo.findChild<Canvas*>("waveField");
    Canvas* somataCanvas = somata.findChild<Canvas*>("corpuscleField");
    FormTimer* rixoTimer = rixo.findChild<FormTimer*>("Timer1");
    FormTimer* panelTimer = panel.findChild<FormTimer*>("Timer1");
    FormTimer* somataTimer1 = somata.findChild<FormTimer*>("Timer1");
    FormTimer* somataTimer2 = somata.findChild<FormTimer*>("Timer2");
};

// The three screens as the pupil has them, at usual sizes, all animating.
Screens& screens() {
    static Screens* s = [] {
        showInterpretationScreens();
        auto* made = new Screens{form<Rixo>(), form<Rixotext>(), form<Somata>()};
        made->rixo.resize(640, 520);
        made->somata.resize(720, 560);
        QCoreApplication::processEvents();
        made->panel.Command1_Click();
        QCoreApplication::processEvents();
        return made;
    }();
    return *s;
}

// Microseconds of a bare cls of a canvas, with its repaint.
double clsMicroseconds(Canvas* canvas) {
    constexpr int kRounds = 200;
    const double start = cpuMicroseconds();
    for (int k = 0; k < kRounds; ++k) {
        canvas->cls();
        QCoreApplication::processEvents();
    }
    return (cpuMicroseconds() - start) / kRounds;
}

// Runs `step` and then the repaint it asked for, timed apart: the step is
// what the timer's handler costs; the repaint is what Qt does for it at the
// next frame (ticks that come faster than frames share one). Reported in
// microseconds of CPU time, against a cls of the canvas with its repaint, and for a
// tick as a share of the timer's interval, with and without the repaint.
template <typename Step, typename Prepare = void (*)()>
void measure(
    benchmark::State& state, Canvas* canvas, Step step, int intervalMs = 0, Prepare prepare = [] {}) {
    // The screens' own timers would tick inside processEvents and be
    // counted here: the steps are driven by hand instead.
    Rixo::stopInterpretationTimers();
    prepare();
    const double cls = clsMicroseconds(canvas);
    step();  // the picture as it stands after a step
    QCoreApplication::processEvents();
    double stepping = 0.0, painting = 0.0;
    for (auto _ : state) {
        const double start = cpuMicroseconds();
        step();
        const double stepped = cpuMicroseconds();
        QCoreApplication::processEvents();
        painting += cpuMicroseconds() - stepped;
        stepping += stepped - start;
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["step_us"] = stepping / n;
    state.counters["paint_us"] = painting / n;
    state.counters["x_cls"] = (stepping + painting) / n / cls;
    if (intervalMs > 0) {
        state.counters["pct_interval"] = 100.0 * stepping / n / (intervalMs * 1000.0);
        state.counters["pct_with_paint"] = 100.0 * (stepping + painting) / n / (intervalMs * 1000.0);
    }
}

void BM_WaveTick(benchmark::State& state) {
    Screens& s = screens();
    measure(
        state, s.rixoCanvas, [&] { s.rixo.Timer1_Timer(); }, 10,
        [&] {
            // Enabled, so that the fronts are drawn, but never due.
            s.rixoTimer->setInterval(1000000000);
            s.rixoTimer->setEnabled(true);
        });
    s.rixoTimer->setInterval(10);
}
BENCHMARK(BM_WaveTick)->Unit(benchmark::kMicrosecond);

void BM_PulseTick(benchmark::State& state) {
    Screens& s = screens();
    measure(
        state, s.rixoCanvas,
        [&] {
            if (!s.rixo.pulseStep()) s.rixo.pulseStep();  // round again when it has left the field
        },
        10);
}
BENCHMARK(BM_PulseTick)->Unit(benchmark::kMicrosecond);

void BM_NewtonCorpuscleTick(benchmark::State& state) {
    Screens& s = screens();
    s.somata.SOMATIDIA_Click();
    measure(
        state, s.somataCanvas, [&] { s.somata.Timer1_Timer(); }, 10);
}
BENCHMARK(BM_NewtonCorpuscleTick)->Unit(benchmark::kMicrosecond);

void BM_DescartesCorpuscleTick(benchmark::State& state) {
    Screens& s = screens();
    s.somata.xekina_Click();
    measure(
        state, s.somataCanvas, [&] { s.somata.Timer2_Timer(); }, 50);
    s.somata.SOMATIDIA_Click();
}
BENCHMARK(BM_DescartesCorpuscleTick)->Unit(benchmark::kMicrosecond);

void BM_WaveScreenFullRedraw(benchmark::State& state) {
    Screens& s = screens();
    measure(state, s.rixoCanvas, [&] { s.rixo.DrawRaysAtBoundary(); });
}
BENCHMARK(BM_WaveScreenFullRedraw)->Unit(benchmark::kMicrosecond);

void BM_CorpuscleScreenFullRedraw(benchmark::State& state) {
    Screens& s = screens();
    measure(state, s.somataCanvas, [&] { s.somata.drawNewtonConstruction(); });
}
BENCHMARK(BM_CorpuscleScreenFullRedraw)->Unit(benchmark::kMicrosecond);

void BM_FermatScrollBar(benchmark::State& state) {
    Screens& s = screens();
    s.somata.fermat_Click();
    int value = 400;
    measure(state, s.somataCanvas,
            [&] { s.somata.findChild<QScrollBar*>("fermatscr")->setValue(value = value == 400 ? 401 : 400); });
}
BENCHMARK(BM_FermatScrollBar)->Unit(benchmark::kMicrosecond);

void BM_FindMinimum(benchmark::State& state) {
    Screens& s = screens();
    measure(state, s.somataCanvas, [&] { s.somata.evresielaxistoy_Click(); });
    s.somata.SOMATIDIA_Click();
}
BENCHMARK(BM_FindMinimum)->Unit(benchmark::kMicrosecond);

// Ten seconds of the event loop with all four animations on: the ticks
// that came against the ticks that should have come.
void BM_TenSecondsAllAnimations(benchmark::State& state) {
    Screens& s = screens();
    for (auto _ : state) {
        s.panel.Command1_Click();          // waves, pulse, Newton's corpuscles
        s.somataTimer2->setEnabled(true);  // and Descartes' timer beside them
        const long waves = s.rixoTimer->ticks(), corpuscles = s.somataTimer1->ticks();
        const long descartes = s.somataTimer2->ticks();
        long pulse = 0, pulseBefore = s.panelTimer->ticks();
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 10000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            if (!s.panelTimer->isEnabled()) {  // the pulse ends by itself: send another
                pulse += s.panelTimer->ticks() - pulseBefore;
                s.rixo.DrawRaysAtBoundary();
                s.panelTimer->setEnabled(true);
                pulseBefore = s.panelTimer->ticks();
            }
        }
        const double seconds = static_cast<double>(clock.elapsed()) / 1000.0;
        pulse += s.panelTimer->ticks() - pulseBefore;
        state.counters["missed_waves"] = seconds * 100.0 - static_cast<double>(s.rixoTimer->ticks() - waves);
        state.counters["missed_newton"] = seconds * 100.0 - static_cast<double>(s.somataTimer1->ticks() - corpuscles);
        state.counters["missed_descartes"] = seconds * 20.0 - static_cast<double>(s.somataTimer2->ticks() - descartes);
        state.counters["missed_pulse"] = seconds * 100.0 - static_cast<double>(pulse);
        s.somataTimer2->setEnabled(false);
    }
}
BENCHMARK(BM_TenSecondsAllAnimations)->Unit(benchmark::kMillisecond)->Iterations(1);

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

// Ten minutes of 10 ms ticks of every animation, run as fast as they go.
void BM_TenMinutesOfTicksMemory(benchmark::State& state) {
    Screens& s = screens();
    for (auto _ : state) {
        s.panel.Command1_Click();
        QCoreApplication::processEvents();
        const double before = residentMegabytes();
        for (int t = 0; t < 60000; ++t) {
            s.rixo.Timer1_Timer();
            s.somata.Timer1_Timer();
            if (t % 5 == 0) s.somata.Timer2_Timer();
            if (!s.rixo.pulseStep()) s.rixo.pulseStep();
            if (t % 20 == 0) QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        state.counters["rss_start_MB"] = before;
        state.counters["rss_end_MB"] = residentMegabytes();
        state.counters["canvas_ops"] = s.rixoCanvas->recordedOperations() + s.somataCanvas->recordedOperations();
    }
}
BENCHMARK(BM_TenMinutesOfTicksMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

int main(int argc, char** argv) { return runScreenBenchmarks(argc, argv, std::make_unique<SilentDialogs>()); }
