#include "semicircle/bench_random.h"

#include <bit>
#include <chrono>
#include <ctime>

namespace {

// A 24-bit linear congruential generator: small, fast and with a full
// period; u is the state divided by 2^24.
constexpr std::uint32_t kMultiplier = 1140671485u;
constexpr std::uint32_t kIncrement = 12820163u;
constexpr std::uint32_t kStateMask = 0xFFFFFFu;
constexpr double kStates = 16777216.0;

double secondsSinceMidnight() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t whole = system_clock::to_time_t(now);
    std::tm local{};
    if (localtime_r(&whole, &local) == nullptr) return 0.0;
    const auto sinceWhole = now - system_clock::from_time_t(whole);
    const double fraction = duration<double>(sinceWhole).count();
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fraction;
}

}  // namespace

BenchRandom::BenchRandom() : BenchRandom(Timer(secondsSinceMidnight)) {}

BenchRandom::BenchRandom(Timer timer) : timer_(timer ? std::move(timer) : Timer(secondsSinceMidnight)) {}

void BenchRandom::reseed() {
    // The high word of the timer's double is folded to 16 bits and replaces
    // the middle of the state; the low byte of the running state stays, so
    // two reseeds in the same timer tick still start from different states.
    const auto bits = std::bit_cast<std::uint64_t>(timer_());
    const auto high = static_cast<std::uint32_t>(bits >> 32);
    const std::uint32_t folded = ((high & 0xFFFFu) ^ (high >> 16)) & 0xFFFFu;
    state_ = (state_ & 0xFFu) | (folded << 8);
}

double BenchRandom::uniform() {
    reseed();
    state_ = (state_ * kMultiplier + kIncrement) & kStateMask;
    return state_ / kStates;
}

double BenchRandom::rayHeightValue() { return 2.0 * uniform() - 1.0; }
double BenchRandom::centreXValue() { return 2.0 * uniform() - 1.0; }
double BenchRandom::centreYValue() { return 2.0 * uniform() - 1.0; }
double BenchRandom::tiltValue() { return 11.0 * uniform() - 5.0; }
