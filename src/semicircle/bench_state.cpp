#include "semicircle/bench_state.h"

#include <cmath>

#include "core/physics.h"

Block BenchState::block() const {
    Block b;
    b.xc = xc_;
    b.yc = yc_;
    b.radius = semicircleRadius_;
    b.tilt = physics::radians(angleWithY_);
    b.direction = semicircleDirection_;
    b.index = mysteryIndex_.value_or(indexN_);
    return b;
}

BenchControls BenchState::controls() const {
    return controlsShowing(semicircleRadius_, xc_, yc_, angleWithY_, rayHeight_, indexN_);
}

void BenchState::startMystery(double hiddenIndex) {
    mysteryIndex_ = hiddenIndex;
    lastCheck_.reset();
    emit changed();
}

void BenchState::endMystery() {
    if (!mysteryIndex_) return;
    mysteryIndex_.reset();
    emit changed();
}

std::optional<BenchState::MysteryCheck> BenchState::checkMystery(double found) {
    if (!mysteryIndex_ || !std::isfinite(found) || !(found > 0.0)) return std::nullopt;
    lastCheck_ = MysteryCheck{found, *mysteryIndex_, (found - *mysteryIndex_) / *mysteryIndex_ * 100.0};
    return lastCheck_;
}

void BenchState::recordRay(const Block& block, double incidenceDegrees, const RayTrace& trace, RaySource source) {
    series_.record(block, incidenceDegrees, trace, source);
    emit seriesChanged();
}

void BenchState::recordRays(const Block& block, const RaysSeries& rays, RaySource source) {
    series_.recordSweep(block, rays, source);
    emit seriesChanged();
}

void BenchState::clearSeries() {
    series_.clear();
    emit seriesChanged();
}
