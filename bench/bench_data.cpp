// How long the data screen takes: "Data Analysis" on a full grid (the fit
// with its uncertainty, both graphs) and Snell's law over Newton's glass
// table, each against a bare clearing of the two graph canvases it draws
// on; Kepler's law shown at 150 %; what the fit's uncertainty adds to the
// analysis; the lab report of Newton's table with Snell's law, made in
// memory and written to a file.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "canvas/presentation_scale.h"
#include "core/least_squares.h"
#include "history/data_pairs.h"
#include "history/data_plots.h"
#include "history/fit_statistics.h"
#include "history/inpdat_screen.h"
#include "screen_bench_main.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

namespace {

class AnswerIndex : public DialogProvider {
public:
    void message(const QString&, const QString&) override {}
    QString input(const QString&, const QString&, const QString&) override { return QStringLiteral("1.55"); }
};

Inpdat& preparedData() {
    static Inpdat* data = [] {
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        form<Incref>().resize(960, 600);
        form<Analysis>().resize(960, 600);
        QCoreApplication::processEvents();
        return &d;
    }();
    return *data;
}

void BM_DataAnalysisFullGrid(benchmark::State& state) {
    Inpdat& d = preparedData();
    std::vector<history::TypedRow> rows;
    for (int k = 0; k < Inpdat::kRows; ++k) {
        const double refraction = std::asin(std::sin((5 + 6 * k) * M_PI / 180.0) / 1.5) * 180.0 / M_PI;
        rows.push_back({QString::number(5 + 6 * k).toStdString(), QString::number(refraction, 'f', 3).toStdString()});
    }
    d.showPairs(rows);
    for (auto _ : state) {
        d.Command1_Click();
        showDrawing(*form<Incref>().canvas());
        showDrawing(*form<Analysis>().canvas());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DataAnalysisFullGrid)->Unit(benchmark::kMicrosecond);

void BM_SnellOverNewtonGlass(benchmark::State& state) {
    Inpdat& d = preparedData();
    d.Newt_Click();
    QCheckBox* erase = d.findChild<QCheckBox*>(QStringLiteral("svinograf"));
    erase->setChecked(true);  // each law starts from the data drawn afresh
    for (auto _ : state) {
        d.Snell_2_Click();
        showDrawing(*form<Incref>().canvas());
        showDrawing(*form<Analysis>().canvas());
    }
    erase->setChecked(false);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SnellOverNewtonGlass)->Unit(benchmark::kMicrosecond);

// Kepler's long label at 150 % over Witelo's steep table, where it looks
// for a free place across the whole graph.
void BM_KeplerOverWiteloAt150(benchmark::State& state) {
    Inpdat& d = preparedData();
    const DesignedScale restored;  // puts the size back afterwards
    setPresentationScale(1.5);
    d.Vitello_Glass_Click();
    QCheckBox* erase = d.findChild<QCheckBox*>(QStringLiteral("svinograf"));
    erase->setChecked(true);
    for (auto _ : state) {
        d.Kepler_Click();
        showDrawing(*form<Incref>().canvas());
    }
    erase->setChecked(false);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_KeplerOverWiteloAt150)->Unit(benchmark::kMicrosecond);

void BM_LabReportMadeAndWritten(benchmark::State& state) {
    Inpdat& d = preparedData();
    d.Newt_Click();
    d.Snell_1_Click();
    QTemporaryDir dir;
    const QString path = QDir(dir.path()).filePath("report.pdf");
    for (auto _ : state) benchmark::DoNotOptimize(d.writeLabReport(path));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LabReportMadeAndWritten)->Unit(benchmark::kMillisecond);

// What the uncertainty adds to the analysis, measured on the same full grid:
// the fit of the sines as the screen makes it (the line with its
// statistics) against the line alone, and the statistics with the printed
// line "n = … ± …, r² = …" by themselves. The screen's analysis without the
// uncertainty is the whole analysis above less the latter.
std::vector<history::AnglePair> fullGridPairs() {
    std::vector<history::AnglePair> pairs;
    for (int k = 0; k < Inpdat::kRows; ++k) {
        const double i = 5 + 6 * k;
        pairs.push_back(
            {static_cast<float>(i), static_cast<float>(std::asin(std::sin(i * M_PI / 180.0) / 1.5) * 180.0 / M_PI)});
    }
    return pairs;
}

void BM_FitWithUncertainty(benchmark::State& state) {
    const auto pairs = fullGridPairs();
    for (auto _ : state) benchmark::DoNotOptimize(history::fitSines(pairs, false));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FitWithUncertainty)->Unit(benchmark::kNanosecond);

void BM_FitLineAlone(benchmark::State& state) {
    const auto pairs = fullGridPairs();
    for (auto _ : state) {
        // The fit of the sines step by step as the screen makes it, less
        // its statistics: the sines kept for the graphs, their 1-based
        // copies, the line and the index.
        history::SineFit fit;
        for (const history::AnglePair& p : pairs) {
            fit.sinIncidence.push_back(std::sin(static_cast<double>(p.incidence) * M_PI / 180.0));
            fit.sinRefraction.push_back(std::sin(static_cast<double>(p.refraction) * M_PI / 180.0));
        }
        fit.fittedPairs = static_cast<int>(pairs.size());
        std::vector<double> x{0.0}, y{0.0};
        x.insert(x.end(), fit.sinIncidence.begin(), fit.sinIncidence.end());
        y.insert(y.end(), fit.sinRefraction.begin(), fit.sinRefraction.end());
        fit.line = leastSquaresLine(x, y, fit.fittedPairs);
        if (fit.line && fit.line->slope != 0.0f) fit.index = 1.0 / static_cast<double>(fit.line->slope);
        benchmark::DoNotOptimize(fit);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FitLineAlone)->Unit(benchmark::kNanosecond);

void BM_UncertaintyAndItsLine(benchmark::State& state) {
    const history::SineFit fit = history::fitSines(fullGridPairs(), false);
    for (auto _ : state) {
        benchmark::DoNotOptimize(history::fitStatistics(fit.sinIncidence, fit.sinRefraction, fit.fittedPairs));
        benchmark::DoNotOptimize(fitQualityText(fit, "0.0000"));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UncertaintyAndItsLine)->Unit(benchmark::kNanosecond);

// The floor both are measured against: clearing the same two canvases.
void BM_BareClsOfBothGraphs(benchmark::State& state) {
    preparedData();
    Canvas& incref = *form<Incref>().canvas();
    Canvas& analysis = *form<Analysis>().canvas();
    for (auto _ : state) {
        incref.cls();
        analysis.cls();
        showDrawing(incref);
        showDrawing(analysis);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BareClsOfBothGraphs)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) { return runScreenBenchmarks(argc, argv, std::make_unique<AnswerIndex>()); }
