#pragma once
#include <vector>

#include "semicircle/bench_experiments.h"

// The mean error of the index that the bench measures, against the block's
// radius: for every radius 14, 16, …, 146 the nine rays of
// measurementIncidences() are traced with the given set-up; each measured
// index n_k gives (n_k − n)²; e = 100·√(Σ/9)/n. A ray without a measurement
// leaves the last measured index in force (it starts at
// `lastMeasuredIndex`), as the bench's shared value does. The block is
// always measured with its flat face towards the light (direction 1): that
// is the set-up whose reading is the block's own index n. Where
// there is no true index to compare with (n ≤ 0) the error is given as 0.
struct MeanErrorPoint {
    double radius;
    double errorPercent;
};
struct MeanErrorCurve {
    std::vector<MeanErrorPoint> points;  // 67 points
    double lastMeasuredIndex;            // the shared value after the run
};
MeanErrorCurve computeMeanErrorCurve(Block block, double rayHeight, double lastMeasuredIndex);
