#include "semicircle/bench_state.h"

#include "core/physics.h"

Block BenchState::block() const {
    Block b;
    b.xc = xc_;
    b.yc = yc_;
    b.radius = semicircleRadius_;
    b.tilt = physics::radians(angleWithY_);
    b.direction = semicircleDirection_;
    b.index = indexN_;
    return b;
}

BenchControls BenchState::controls() const {
    return controlsShowing(semicircleRadius_, xc_, yc_, angleWithY_, rayHeight_, indexN_);
}
