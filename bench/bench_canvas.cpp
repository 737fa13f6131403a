// How long the drawing surface takes for a whole figure on a full-HD screen,
// against the bare clearing that every redraw starts with, also at the
// largest presentation size on a 4K window, and how long the program takes
// from start to the main menu on the screen.
#include <QApplication>
#include <QTemporaryFile>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <numbers>
#include <utility>

#include "app/module1.h"
#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"
#include "ui/forms.h"

namespace {

Canvas* screenCanvas = nullptr;  // 1920 × 1080, the incidence graph's scale; lives in main()

using Clock = std::chrono::steady_clock;

constexpr double kFrameSeconds = 1.0 / 60.0;  // one frame of a 60 Hz display

// Wall time, and the CPU time of this thread: on a shared machine the wall
// clock also counts other programs' turns, the CPU clock only this work.
struct Spent {
    double wall = 0.0, cpu = 0.0;
};

double threadCpuSeconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

class Stopwatch {
public:
    Spent per(double rounds) const {
        return {std::chrono::duration<double>(Clock::now() - wall_).count() / rounds,
                (threadCpuSeconds() - cpu_) / rounds};
    }

private:
    Clock::time_point wall_ = Clock::now();
    double cpu_ = threadCpuSeconds();
};

// What a graph screen does on every change: clear, axes, a graduated disc of
// 360 one-degree chords (as the instrument screens draw it), twenty texts,
// all painted into the image the screen shows.
void fullRedraw(Canvas& c) {
    c.cls();
    drawGraphAxes(c, 110, -5, 110, -30, std::nullopt, std::nullopt, 10.0, 10.0);
    const double cx = 55.0, cy = 40.0, rx = 30.0;
    const double ry = rx * std::fabs(c.userPerPixelY() / c.userPerPixelX());  // round on the screen
    constexpr double degree = std::numbers::pi / 180.0;
    for (int d = 0; d < 360; ++d) {
        const double a1 = d * degree, a2 = (d + 1) * degree;
        c.line(cx + rx * std::cos(a1), cy + ry * std::sin(a1), cx + rx * std::cos(a2), cy + ry * std::sin(a2),
               QColor(0, 0, 200));
    }
    for (int i = 0; i < 20; ++i) {
        c.setCurrentX(60);
        c.setCurrentY(105 - 3.0 * i);
        c.print(QStringLiteral("REFRACTION ANGLE Γωνία Διάθλασης ") + fmt(1.5 * i, "0.00"));
    }
    benchmark::DoNotOptimize(c.image().constBits());
}

Spent meanSpent(int rounds, void (*work)(Canvas&)) {
    const Stopwatch watch;
    for (int i = 0; i < rounds; ++i) work(*screenCanvas);
    return watch.per(rounds);
}

void BM_BareCls(benchmark::State& state) {
    for (auto _ : state) {
        screenCanvas->cls();
        benchmark::DoNotOptimize(screenCanvas->image().constBits());
    }
}
BENCHMARK(BM_BareCls)->Unit(benchmark::kMicrosecond);

void BM_FullRedraw(benchmark::State& state) {
    const Spent cls = meanSpent(50, [](Canvas& c) { c.cls(); });
    const Stopwatch watch;
    for (auto _ : state) fullRedraw(*screenCanvas);
    const Spent full = watch.per(static_cast<double>(state.iterations()));
    state.counters["cls_us"] = cls.wall * 1e6;
    state.counters["x_cls"] = full.wall / cls.wall;                 // a full redraw in bare clears
    state.counters["frame_%"] = full.wall / kFrameSeconds * 100.0;  // share of a 60 Hz frame
    state.counters["cpu_frame_%"] = full.cpu / kFrameSeconds * 100.0;
}
BENCHMARK(BM_FullRedraw)->Unit(benchmark::kMicrosecond);

// The same figure at 200 % on a 3840 × 2160 window, as a projector in a
// large room shows it: twice the pens and type on four times the pixels.
// Its share of a 60 Hz frame should stay under a tenth.
void BM_FullRedrawAt200On4K(benchmark::State& state) {
    Canvas c;
    c.resize(3840, 2160);
    c.setBackColor(Qt::white);
    c.scale(-5, 110, 110, -30);
    const DesignedScale designed;  // restores the scale at the end
    setPresentationScale(2.0);
    fullRedraw(c);  // the image made at its size before timing
    Canvas* kept = std::exchange(screenCanvas, &c);
    const Spent cls = meanSpent(20, [](Canvas& cc) { cc.cls(); });
    const Stopwatch watch;
    for (auto _ : state) fullRedraw(c);
    const Spent full = watch.per(static_cast<double>(state.iterations()));
    screenCanvas = kept;
    state.counters["image_px"] = static_cast<double>(c.image().width()) * c.image().height();
    state.counters["cls_us"] = cls.wall * 1e6;
    state.counters["x_cls"] = full.wall / cls.wall;
    state.counters["frame_%"] = (full.wall - cls.wall) / kFrameSeconds * 100.0;  // drawing beyond the clear
    state.counters["cpu_frame_%"] = (full.cpu - cls.cpu) / kFrameSeconds * 100.0;
}
BENCHMARK(BM_FullRedrawAt200On4K)->Unit(benchmark::kMicrosecond);

// The same, shown and repainted: the copy of the image to the window included.
void BM_FullRedrawAndRepaint(benchmark::State& state) {
    screenCanvas->show();
    QApplication::processEvents();
    for (auto _ : state) {
        fullRedraw(*screenCanvas);
        screenCanvas->repaint();
    }
    screenCanvas->hide();
}
BENCHMARK(BM_FullRedrawAndRepaint)->Unit(benchmark::kMicrosecond);

// Saving the busiest figure as SVG, against drawing it on the screen.
void BM_SvgExportOfFullRedraw(benchmark::State& state) {
    fullRedraw(*screenCanvas);
    const double redrawSeconds = meanSpent(20, fullRedraw).wall;
    const auto start = Clock::now();
    for (auto _ : state) benchmark::DoNotOptimize(figureSvg(*screenCanvas, QStringLiteral("figure")).size());
    const double svgSeconds =
        std::chrono::duration<double>(Clock::now() - start).count() / static_cast<double>(state.iterations());
    state.counters["redraw_us"] = redrawSeconds * 1e6;
    state.counters["x_redraw"] = svgSeconds / redrawSeconds;
}
BENCHMARK(BM_SvgExportOfFullRedraw)->Unit(benchmark::kMicrosecond);

// Start-up: Main() places, captions and shows the main menu. The screens of
// the previous round are destroyed outside the timing.
void BM_StartupMain(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Forms::instance().destroyAll();
        QApplication::processEvents();
        state.ResumeTiming();
        Main();
    }
    Forms::instance().destroyAll();
}
BENCHMARK(BM_StartupMain)->Unit(benchmark::kMillisecond);

// Start-up until the first frame of the menu is laid out and painted.
void BM_StartupToFirstPaint(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Forms::instance().destroyAll();
        QApplication::processEvents();
        state.ResumeTiming();
        Main();
        QApplication::processEvents();
    }
    Forms::instance().destroyAll();
}
BENCHMARK(BM_StartupToFirstPaint)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    // A 4K screen, so that a 3840 × 2160 window gets its full image.
    QTemporaryFile screen;
    if (screen.open()) {
        screen.write(R"({"screens": [{"name": "4k", "x": 0, "y": 0, "width": 3840, "height": 2160}]})");
        screen.flush();
        qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen.fileName()).toLocal8Bit());
    } else {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    installFontSubstitutions();

    auto canvas = std::make_unique<Canvas>();
    canvas->resize(1920, 1080);
    canvas->setBackColor(Qt::white);
    canvas->scale(-5, 110, 110, -30);
    screenCanvas = canvas.get();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();

    screenCanvas = nullptr;
    canvas.reset();
    Forms::instance().destroyAll();
    return 0;
}
