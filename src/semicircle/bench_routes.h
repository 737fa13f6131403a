#pragma once
#include <cstddef>
#include <functional>
#include <vector>

#include "semicircle/bench_series.h"

// What the bench asks of screens on floors above its own: the mean-error
// graph, which analyses the bench, and the data screen, which analyses the
// pairs LIST OF DATA measured. The shell fills these in at start-up.
struct BenchRoutes {
    // Shows the mean-error graph, drawn anew for the bench as it is now
    // when it was shown before.
    std::function<void()> showMeanError;
    // Hides it if it was ever shown.
    std::function<void()> hideMeanError;
    // Makes the pairs the pupil's data on the data screen, every one of
    // them, and shows it.
    std::function<void(const std::vector<MeasuredPair>&)> transferPairs;
};

BenchRoutes& benchRoutes();
