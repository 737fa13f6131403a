// The corpuscle models of the corpuscle screen: the Newton constructions,
// the streams of corpuscles and their timers.
#include <cmath>

#include "canvas/palette.h"
#include "models/model_summaries.h"
#include "models/model_texts.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

namespace {}  // namespace

kymatiko::CorpuscleModel Somata::newtonModel() const {
    return NEWTON2STROMATA->isChecked() ? kymatiko::CorpuscleModel::NewtonParallelLayers
                                        : kymatiko::CorpuscleModel::NewtonOneLayer;
}

void Somata::buildTrack(kymatiko::CorpuscleModel model) {
    model_ = model;
    trackStale_ = false;
    track_ = kymatiko::corpuscleTrack(field(), kymatiko::radians(state_.incidence()), state_.index(), model,
                                      state_.newtonValue());
}

// The beam: the same track shifted along the boundary, since the layers
// are horizontal every stream bends alike.
double Somata::streamOffset(int stream) const { return (stream - 1) * field().width / 14.0; }

void Somata::drawTrackPicture() {
    applyField();
    drawMedium();
    const kymatiko::Field f = field();
    canvas->setDrawStyle(DrawStyle::Dash);
    for (double y : track_.faces) canvas->line(0.0, y, f.width, y, palette::corpuscles::layerFace);
    canvas->setDrawStyle(DrawStyle::Solid);
    canvas->setDrawWidth(1);
    const bool points = model_ == kymatiko::CorpuscleModel::NewtonParallelLayers;
    for (int stream = 0; stream < kStreams; ++stream) {
        const double dx = streamOffset(stream);
        const auto& p = track_.points;
        for (std::size_t k = 1; k < p.size(); ++k) {
            if (points)
                canvas->pset(p[k].x + dx, p[k].y, palette::corpuscles::track);
            else
                canvas->line(p[k - 1].x + dx, p[k - 1].y, p[k].x + dx, p[k].y, palette::corpuscles::track);
        }
    }
    const double n = state_.index();
    canvas->setSummary(spoken::corpuscles(model_, state_.incidence(), n, track_));
    Rixotext& panel = form<Rixotext>();
    if (model_ == kymatiko::CorpuscleModel::Descartes) {
        panel.showNote(Rixotext::Note::LayerThickness, {});
    } else {
        panel.showNote(Rixotext::Note::LayerThickness, texts::layerThickness(track_.thickness));
        if (const auto c = kymatiko::criticalAngleDegrees(n); c && kymatiko::intoLessDense(n))
            panel.showNote(Rixotext::Note::CriticalAngle,
                           texts::criticalAngle(texts::CriticalWording::NewtonLayer, *c));
    }
    // The construction checks itself once per picture; say so only once.
    if (track_.mismatch > 1e-4 && !warnedMismatch_) {
        warnedMismatch_ = true;
        messageBox(texts::layersMismatch());
    }
}

void Somata::DrawNewtonOneLayer() {
    neftonas->setChecked(true);
    if (state_.mode() == Mode::Fermat) setMode(Mode::Newton);
    buildTrack(kymatiko::CorpuscleModel::NewtonOneLayer);
    drawTrackPicture();
}

void Somata::DrawNewtonParallelLayers() {
    NEWTON2STROMATA->setChecked(true);
    if (state_.mode() == Mode::Fermat) setMode(Mode::Newton);
    buildTrack(kymatiko::CorpuscleModel::NewtonParallelLayers);
    drawTrackPicture();
}

void Somata::drawNewtonConstruction() {
    if (NEWTON2STROMATA->isChecked())
        DrawNewtonParallelLayers();
    else
        DrawNewtonOneLayer();
}

void Somata::showCriticalAngle(bool tickWording) {
    const double n = state_.index();
    const auto c = kymatiko::criticalAngleDegrees(n);
    form<Rixotext>().showNote(
        Rixotext::Note::CriticalAngle,
        c && kymatiko::intoLessDense(n)
            ? texts::criticalAngle(
                  tickWording ? texts::CriticalWording::CorpuscleTick : texts::CriticalWording::Corpuscles, *c)
            : QString());
}

void Somata::hideCorpuscles() {
    for (ShapeWidget* s : soma)
        if (s->isVisible()) s->hide();
}

void Somata::moveCorpuscles(int intervalMs) {
    const auto& p = track_.points;
    for (int k = 0; k < kCorpuscles; ++k) {
        ShapeWidget* shape = soma[static_cast<std::size_t>(k)];
        const double index = kymatiko::corpuscleIndex(tick_, intervalMs, k / kStreams, kCorpuscleSpacing);
        const bool onTrack = index >= 0.0 && index < static_cast<double>(p.size());
        if (!onTrack) {
            if (shape->isVisible()) shape->hide();
            continue;
        }
        // Between two table points the corpuscle is where the straight step puts it.
        const auto i = static_cast<std::size_t>(index);
        const double f = index - static_cast<double>(i);
        const kymatiko::Point a = p[i], b = i + 1 < p.size() ? p[i + 1] : p[i];
        shape->setCentre(toWidget({a.x + f * (b.x - a.x) + streamOffset(k % kStreams), a.y + f * (b.y - a.y)}));
        if (!shape->isVisible()) shape->show();
    }
}

void Somata::startCorpuscles(Mode mode) {
    setMode(mode);
    showBodies(false);
    Label1->hide();
    applyField();
    buildTrack(mode == Mode::Descartes ? kymatiko::CorpuscleModel::Descartes : newtonModel());
    showCriticalAngle(false);
    drawTrackPicture();
    tick_ = 0;
    hideCorpuscles();
}

void Somata::SOMATIDIA_Click() {
    Timer2->setEnabled(false);
    startCorpuscles(Mode::Newton);
    Timer1->setInterval(10);
    Timer1->setEnabled(true);
}

void Somata::xekina_Click() {
    Timer1->setEnabled(false);
    startCorpuscles(Mode::Descartes);
    form<Rixotext>().showNote(Rixotext::Note::Text, texts::nrefra(state_.index()));
    Timer2->setInterval(50);
    Timer2->setEnabled(true);
}

void Somata::corpuscleTick(int intervalMs) {
    if (trackStale_) {  // the values changed: the new path from here on
        buildTrack(model_ == kymatiko::CorpuscleModel::Descartes ? model_ : newtonModel());
        drawTrackPicture();
    }
    ++tick_;
    // When the last corpuscle has gone, the stream starts again.
    const int lastOfStream = kCorpuscles / kStreams - 1;
    if (kymatiko::corpuscleIndex(tick_, intervalMs, lastOfStream, kCorpuscleSpacing) >=
        static_cast<double>(track_.points.size()))
        tick_ = 0;
    moveCorpuscles(intervalMs);
}

void Somata::Timer1_Timer() {
    showCriticalAngle(true);
    corpuscleTick(Timer1->interval());
}

void Somata::Timer2_Timer() { corpuscleTick(Timer2->interval()); }

void Somata::STAMATHMA_Click() {
    resetFirstCorpuscle();
    stopAnimation();
}

void Somata::stopAnimation() {
    Timer1->setEnabled(false);
    Timer2->setEnabled(false);
}

void Somata::resetFirstCorpuscle() {
    if (track_.points.empty()) return;
    soma[0]->setCentre(toWidget(track_.points.front()));
}
