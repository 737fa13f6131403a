#pragma once
#include <QWidget>

#include "analysis/mean_error.h"
#include "canvas/canvas.h"

// "errors": how far the index that the bench measures lies from the true
// one, in per cent, against the radius of the block, for the ray, centre,
// tilt and index set on the bench. Drawn when the screen first loads and
// again whenever it is clicked, always from the bench's current set-up.
class Errors : public QWidget {
    Q_OBJECT
public:
    Errors();

    // The graph, to read.
    const Canvas& drawing() const { return *canvas; }

    void Form_Load();
    void Form_Click();
    // Graduates the two axes.
    void tickmarks();

    // The curve of the last drawing (67 points, radius 14 … 146).
    const MeanErrorCurve& curve() const { return curve_; }
    // Segments of the curve drawn by the last drawing.
    int segmentsDrawn() const { return segmentsDrawn_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Computes the curve for the bench's set-up, keeping the last measured
    // index as the measurement leaves it, then draws it.
    void drawMeanError();
    // Draws the graph of the last computation; a resize draws it again with
    // its texts measured for the new size.
    void paintGraph();
    // The graph in words, for a screen reader.
    void describeGraph();

    Canvas* canvas;

    MeanErrorCurve curve_{};
    int segmentsDrawn_ = 0;
    double index_ = 0.0;
    double rayHeight_ = 0.0;
    double xc_ = 0.0;
    double yc_ = 0.0;
    double angleDegrees_ = 0.0;
};
