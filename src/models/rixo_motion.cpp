// What moves on the wave screen: the wave fronts while the animation runs
// and the pulse of light along the rays.
#include <algorithm>
#include <cmath>

#include "canvas/palette.h"
#include "models/rixo_screen.h"
#include "models/wave_fronts.h"

namespace {

constexpr double kWaveStepPerTick = 1.0;  // field units the incident wave moves per tick
constexpr double kWavelength = 40.0;
constexpr int kPulseLength = 12;  // points of the path the travelling stretch covers

// The shade of a front for an amplitude share: strong waves solid, weak ones faint.
QColor shaded(QColor c, double amplitude) {
    c.setAlpha(static_cast<int>(std::lround(60.0 + 195.0 * std::clamp(amplitude, 0.0, 1.0))));
    return c;
}

}  // namespace

void Rixo::updateFronts() {
    if (picture_ != Picture::Rays || !Timer1->isEnabled()) {
        moving->setLayer(0, {});
        return;
    }
    kymatiko::WaveSettings settings;
    const kymatiko::Field f = field();
    settings.phase = phase_;
    settings.wavelength = kWavelength;
    settings.beamHalfWidth = std::min(f.width, f.height) / 6.0;
    settings.reflected = reflectedWaveWanted();
    const kymatiko::Refraction r = refraction();
    const kymatiko::WaveFronts w = kymatiko::waveFronts(f, r, index(), settings);
    const kymatiko::Fresnel amp = kymatiko::fresnel(r, index());
    auto stroke = [this](const std::vector<kymatiko::Segment>& segments, const QColor& colour) {
        MovingLayer::Stroke s;
        s.colour = colour;
        s.width = 2.0;
        s.smooth = false;  // a whole field of fronts every tick: the sharp pen keeps it cheap
        s.lines.reserve(segments.size());
        for (const kymatiko::Segment& seg : segments) s.lines.emplace_back(toWidget(seg.a), toWidget(seg.b));
        return s;
    };
    moving->setLayer(0, {stroke(w.incident, palette::waves::incident),
                         stroke(w.reflected, shaded(palette::waves::reflected, std::fabs(amp.rs))),
                         stroke(w.refracted, shaded(palette::waves::refracted, std::fabs(amp.ts)))});
}

void Rixo::updatePulse() {
    if (picture_ != Picture::Rays || pulse_ <= 0) {
        moving->setLayer(1, {});
        return;
    }
    auto stretch = [this](const std::vector<kymatiko::Point>& path, int end, const QColor& colour) {
        MovingLayer::Stroke s;
        s.colour = colour;
        s.width = 5.0;
        const int last = std::min(end, static_cast<int>(path.size()) - 1);
        for (int k = std::max(1, end - kPulseLength); k <= last; ++k)
            s.lines.emplace_back(toWidget(path[static_cast<std::size_t>(k - 1)]),
                                 toWidget(path[static_cast<std::size_t>(k)]));
        return s;
    };
    const int incident = static_cast<int>(paths_.incident.size());
    std::vector<MovingLayer::Stroke> strokes{stretch(paths_.incident, pulse_, palette::waves::incident)};
    if (pulse_ >= incident) {
        const int beyond = pulse_ - incident + 1;
        if (reflectedWaveWanted() &&
            std::fabs(kymatiko::fresnel(refraction(), index()).rs) >= kymatiko::kVisibleReflection)
            strokes.push_back(stretch(paths_.reflected, beyond, palette::waves::reflected));
        strokes.push_back(stretch(paths_.refracted, beyond, palette::waves::refracted));
    }
    moving->setLayer(1, std::move(strokes));
}

bool Rixo::pulseStep() {
    if (picture_ != Picture::Rays || paths_.incident.empty()) return false;
    ++pulse_;
    if (pulse_ > paths_.length() + kPulseLength) {
        pulse_ = 0;
        updatePulse();
        return false;
    }
    updatePulse();
    return true;
}

void Rixo::Timer1_Timer() {
    phase_ = std::fmod(phase_ + kWaveStepPerTick, kWavelength);
    updateFronts();
}
