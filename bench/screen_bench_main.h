#pragma once
// The set-up every screen benchmark shares: an offscreen application with
// the program's fonts, dialogs answered by the given provider, no program
// end, then Google Benchmark, then the screens given back.
#include <QApplication>

#include <benchmark/benchmark.h>
#include <memory>

#include "app/routes.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

// A canvas paints what was drawn on it when its pixels are first needed, at
// the next frame: a timed redraw ends with that painting, as if every change
// were shown.
inline void showDrawing(const Canvas& canvas) { benchmark::DoNotOptimize(canvas.image().constBits()); }

inline int runScreenBenchmarks(int argc, char** argv, std::unique_ptr<DialogProvider> answers) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    installFontSubstitutions();
    setDialogs(std::move(answers));
    setProgramEnder([](int) {});
    connectRoutes();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Forms::instance().destroyAll();
    return 0;
}
