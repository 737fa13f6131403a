#include "models/interpretation_state.h"

#include <algorithm>
#include <cmath>

namespace {
bool usable(double n) { return std::isfinite(n) && n > 0.0; }
}  // namespace

void InterpretationState::useIndex(double n) {
    if (n == index_) return;
    index_ = n;
    emit indexChanged(n);
    emit figuresDue();
}

void InterpretationState::setIndex(double n) {
    if (!usable(n)) return;
    if (n != 1.0 && sameSpeeds_) {
        sameSpeeds_ = false;
        emit sameSpeedsChanged(false);
    }
    useIndex(n);
}

void InterpretationState::setIncidence(int degrees) {
    degrees = std::clamp(degrees, kMinIncidence, kMaxIncidence);
    if (degrees == incidence_) return;
    incidence_ = degrees;
    emit incidenceChanged(degrees);
    emit figuresDue();
}

void InterpretationState::setNewtonValue(double pull) {
    if (pull == newtonValue_) return;
    newtonValue_ = pull;
    emit newtonValueChanged(pull);
}

void InterpretationState::setSpeedRatio(double c) {
    if (c == speedRatio_) return;
    speedRatio_ = c;
    emit speedRatioChanged(c);
}

void InterpretationState::setSameSpeeds(bool same) {
    if (same == sameSpeeds_) return;
    sameSpeeds_ = same;
    if (same) bendingIndex_ = index_;
    emit sameSpeedsChanged(same);
    const double n = same ? 1.0 : bendingIndex_;
    if (n != index_)
        useIndex(n);
    else
        emit figuresDue();
}

void InterpretationState::setBendingIndex(double n) {
    if (!usable(n)) return;
    if (sameSpeeds_)
        bendingIndex_ = n;
    else
        setIndex(n);
}

void InterpretationState::setMode(Mode mode) {
    if (mode == mode_) return;
    mode_ = mode;
    emit modeChanged(mode);
}
