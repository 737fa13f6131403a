#pragma once
#include <QObject>

// The values the interpretation screens share, each held once: the ratio of
// the indices in use, the angle of incidence, Newton's value, the speed
// ratio c of the wave screen's menus, "the same speed in both media" with
// the index it set aside, and which interpretation the corpuscle screen
// shows. The wave screen, the control panel, the
// corpuscle screen and the index-and-velocities screen read them here and
// follow the change signals, so that every window shows the same values
// whichever of them changed one.
class InterpretationState : public QObject {
    Q_OBJECT
public:
    static constexpr int kMinIncidence = 0;  // degrees, the panel's bar
    static constexpr int kMaxIncidence = 89;

    // Light as Newton's corpuscles, as Descartes' balls, or Fermat's least time.
    enum class Mode { Newton, Descartes, Fermat };

    // n2/n1, the index of the lower medium over that of the upper one.
    double index() const { return index_; }
    int incidence() const { return incidence_; }         // degrees
    double newtonValue() const { return newtonValue_; }  // Newton's pull
    // c = c1/c2 as the wave screen's menus last set it; the panel's WAVES
    // AND PARTICLES sets it to 0.25.
    double speedRatio() const { return speedRatio_; }
    // "The same speed in both media" (IDIA V): while it holds the index in
    // use is 1 and the ray goes straight on.
    bool sameSpeeds() const { return sameSpeeds_; }
    Mode mode() const { return mode_; }
    // The index for when the speeds differ: the one in use, or the one set
    // aside while the speeds are the same.
    double bendingIndex() const { return sameSpeeds_ ? bendingIndex_ : index_; }

    // A new index in use; other than 1 it gives the media different speeds
    // and so ends the same speeds. Not finite or not positive: ignored.
    void setIndex(double n);
    // Clamped to the angles the panel's bar offers.
    void setIncidence(int degrees);
    void setNewtonValue(double pull);
    void setSpeedRatio(double c);
    // IDIA V sets the index in use aside and uses 1; METAVOLH V brings the
    // index set aside back.
    void setSameSpeeds(bool same);
    // A typed index for the second medium: in use at once, or, while the
    // speeds are the same, set aside for when they differ.
    void setBendingIndex(double n);
    void setMode(Mode mode);

signals:
    void indexChanged(double n);
    void incidenceChanged(int degrees);
    void newtonValueChanged(double pull);
    void speedRatioChanged(double c);
    void sameSpeedsChanged(bool same);
    void modeChanged(InterpretationState::Mode mode);
    // After the signals above of one change of the index, the angle or the
    // same speeds, once every window has followed: the panel writes its
    // figures last, over whatever a picture wrote into them on the way.
    void figuresDue();

private:
    void useIndex(double n);

    double index_ = 1.5;
    int incidence_ = 30;
    double newtonValue_ = 0.2;
    double speedRatio_ = 1.0;
    bool sameSpeeds_ = false;
    double bendingIndex_ = 1.5;
    Mode mode_ = Mode::Newton;
};
