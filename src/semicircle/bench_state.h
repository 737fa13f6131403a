#pragma once
#include <QObject>

#include <optional>

#include "semicircle/bench_experiments.h"
#include "semicircle/bench_geometry.h"
#include "semicircle/bench_series.h"

// The semicircle bench's set-up and its last measurement, held once for the
// whole program: the bench's scroll bars show these values and write into
// them, its displays follow them, and the drawing, the experiments and the
// mean-error graph read them. Every setter tells `changed()` only when the
// value really changes.
class BenchState : public QObject {
    Q_OBJECT
public:
    double semicircleRadius() const { return semicircleRadius_; }  // bench units
    double incidenceAngle() const { return incidenceAngle_; }      // degrees
    double angleWithY() const { return angleWithY_; }              // tilt of the flat face, degrees
    double indexN() const { return indexN_; }                      // refractive index of the block
    double xc() const { return xc_; }                              // centre of the flat face
    double yc() const { return yc_; }
    double rayHeight() const { return rayHeight_; }                   // the ray's y at x = 0
    int semicircleDirection() const { return semicircleDirection_; }  // 0 none yet, 1 left, 2 right
    double measuredIndex() const { return measuredIndex_; }           // of the last ray that measured one
    double exitRayAngle() const { return exitRayAngle_; }             // radians from the horizontal

    void setSemicircleRadius(double value) { assign(semicircleRadius_, value); }
    void setIncidenceAngle(double value) { assign(incidenceAngle_, value); }
    void setAngleWithY(double value) { assign(angleWithY_, value); }
    void setIndexN(double value) { assign(indexN_, value); }
    void setXc(double value) { assign(xc_, value); }
    void setYc(double value) { assign(yc_, value); }
    void setRayHeight(double value) { assign(rayHeight_, value); }
    void setSemicircleDirection(int value) { assign(semicircleDirection_, value); }
    void setMeasuredIndex(double value) { assign(measuredIndex_, value); }
    void setExitRayAngle(double value) { assign(exitRayAngle_, value); }

    // The mystery block: while it is on, the light meets a hidden index and
    // indexN() keeps the index that was set before, for when it goes.
    bool mysteryOn() const { return mysteryIndex_.has_value(); }
    void startMystery(double hiddenIndex);
    void endMystery();
    // The pupil's check of a mystery block's index.
    struct MysteryCheck {
        double found;
        double actual;
        double differencePercent;  // (found − actual) / actual × 100
    };
    // Checks the index the pupil found against the hidden one; none when no
    // mystery block is on or the number is not a positive index.
    std::optional<MysteryCheck> checkMystery(double found);
    // The last check made, kept after the mystery block goes.
    const std::optional<MysteryCheck>& lastMysteryCheck() const { return lastCheck_; }

    // Every ray the bench traced into the block, until cleared.
    const BenchSeries& series() const { return series_; }
    void recordRay(const Block& block, double incidenceDegrees, const RayTrace& trace, RaySource source);
    void recordRays(const Block& block, const RaysSeries& rays, RaySource source);
    void clearSeries();

    // The block the set-up stands for, its tilt turned into radians; the
    // mystery block's index when it is on.
    Block block() const;
    // The bench's scroll bars that show the set-up.
    BenchControls controls() const;

signals:
    void changed();
    void seriesChanged();

private:
    template <typename Value>
    void assign(Value& field, Value value) {
        if (field == value) return;
        field = value;
        emit changed();
    }

    // The radius starts where the radius bar starts; the index at 1.5.
    double semicircleRadius_ = 100.0;
    double incidenceAngle_ = 0.0;
    double angleWithY_ = 0.0;
    double indexN_ = 1.5;
    double xc_ = 0.0;
    double yc_ = 0.0;
    double rayHeight_ = 0.0;
    int semicircleDirection_ = 0;
    double measuredIndex_ = 0.0;
    double exitRayAngle_ = 0.0;
    std::optional<double> mysteryIndex_;
    std::optional<MysteryCheck> lastCheck_;
    BenchSeries series_;
};
