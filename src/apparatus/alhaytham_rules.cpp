#include "apparatus/alhaytham_rules.h"

#include <cmath>

#include "core/physics.h"

namespace alhaytham {

namespace {

std::optional<double> refractionAt(double incidence, double n) {
    const double x = std::sin(incidence) / n;
    if (!std::isfinite(x) || x >= 1.0 || x <= -1.0) return std::nullopt;
    return physics::arcSine(x);
}
}  // namespace

std::vector<CheckStep> checkSteps(double n) {
    std::vector<CheckStep> steps;
    if (!std::isfinite(n) || n <= 0.0) return steps;
    steps.reserve(90);
    for (int i = 1; i <= 90; ++i) {
        CheckStep s{};
        s.incidenceDegrees = i;
        s.i1 = physics::radians(i);
        s.i2 = physics::radians(i + 1);
        const std::optional<double> r1 = refractionAt(s.i1, n);
        const std::optional<double> r2 = refractionAt(s.i2, n);
        if (!r1 || !r2) continue;
        s.r1 = *r1;
        s.r2 = *r2;
        s.d1 = std::fabs(s.r1 - s.i1);
        s.d2 = std::fabs(s.r2 - s.i2);
        s.rule5Violated = n > 1.0 && s.d1 > s.i1 / 2.0;
        s.rule6Violated = n < 1.0 && s.d1 > (s.i1 + s.d1) / 2.0;
        steps.push_back(s);
    }
    return steps;
}

int RuleFlags::take(const CheckStep& step) {
    rule5Violated = step.rule5Violated;
    rule6Violated = step.rule6Violated;
    int reprints = 0;
    if (rule5Violated != rule5Shown) {
        rule5Shown = rule5Violated;
        ++reprints;
    }
    if (rule6Violated != rule6Shown) {
        rule6Shown = rule6Violated;
        ++reprints;
    }
    return reprints;
}

double refractionInWaterDegrees(double incidenceDegrees) {
    return physics::degrees(std::asin(std::sin(physics::radians(incidenceDegrees)) / kWaterIndex));
}

}  // namespace alhaytham
