// What writing the bench's series costs beside an old measurement file of
// growing size: a sparse file of a few bytes and a long hole, as a damaged
// or deliberately huge "fylaxi" may be. Time per write and the process's
// peak memory should stay the same from 1 MiB to 4 GiB.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <numbers>
#include <sys/resource.h>
#include <unistd.h>

#include "semicircle/measurement_file.h"

namespace fs = std::filesystem;

namespace {

long peakMemoryKiB() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// A file of `bytes` that holds data only in its first and last kilobyte.
bool makeSparseFile(const fs::path& path, std::int64_t bytes) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0) return false;
    const std::string kilobyte(1024, 'x');
    const bool ok = ::pwrite(fd, kilobyte.data(), kilobyte.size(), 0) == 1024 &&
                    ::pwrite(fd, kilobyte.data(), kilobyte.size(), bytes - 1024) == 1024;
    ::close(fd);
    return ok;
}

void BM_WriteSeriesBesideSparseFile(benchmark::State& state) {
    const fs::path folder = fs::temp_directory_path() / ("bench-fylaxi-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    const fs::path file = folder / kMeasurementFileName;
    const std::int64_t oldSize = state.range(0) << 20;
    if (!makeSparseFile(file, oldSize)) {
        state.SkipWithError("could not make the old file");
        return;
    }
    const Block block{0.0, 0.0, 100.0, 2.0 * std::numbers::pi / 180.0, 1, 1.5};
    const std::vector<MeasurementRecord> records = runMeasurementSeries(block, 0.5);
    for (auto _ : state) {
        const WriteOutcome outcome = writeMeasurementFile(file, records);
        if (!outcome.ok) state.SkipWithError(outcome.error.c_str());
    }
    state.counters["old_MiB"] = static_cast<double>(state.range(0));
    state.counters["peak_rss_MiB"] = static_cast<double>(peakMemoryKiB()) / 1024.0;
    state.counters["size_kept"] = fs::file_size(file) == static_cast<std::uintmax_t>(oldSize) ? 1 : 0;
    fs::remove_all(folder);
}

}  // namespace

BENCHMARK(BM_WriteSeriesBesideSparseFile)->Arg(1)->Arg(256)->Arg(1024)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
