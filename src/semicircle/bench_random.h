#pragma once
#include <cstdint>
#include <functional>

// The random numbers of the all-random experiment. Every draw first reseeds
// the generator from the system timer and then takes one uniform number in
// [0, 1); the reseeding mixes the timer into the running state, so draws in
// the same timer tick still differ. The timer can be replaced for tests.
class BenchRandom {
public:
    using Timer = std::function<double()>;  // seconds, like a clock
    BenchRandom();
    explicit BenchRandom(Timer timer);

    double uniform();         // reseed, then u in [0, 1)
    double rayHeightValue();  // 2u − 1
    double centreXValue();    // 2u − 1
    double centreYValue();    // 2u − 1
    double tiltValue();       // 11u − 5 (degrees)

private:
    void reseed();
    Timer timer_;
    std::uint32_t state_ = 0x50000u;
};
