#include "analysis/errors_screen.h"

#include <QKeyEvent>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <cmath>

#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "semicircle/bench_state.h"
#include "ui/forms.h"
#include "ui/window_keys.h"

namespace {
constexpr double kTickLabelPoints = 8.0;
}  // namespace

Errors::Errors() {
    setObjectName(QStringLiteral("errors"));
    setWindowTitle(QStringLiteral("Mean Error  Μέσο σφάλμα"));
    canvas = new Canvas(this);
    canvas->setObjectName(QStringLiteral("meanErrorGraph"));
    canvas->setAccessibleName(QStringLiteral(
        "Mean error of the measured index against the radius  Μέσο σφάλμα του δείκτη ως προς την ακτίνα"));
    canvas->setToolTip(
        QStringLiteral("Click or press Enter to draw again from the bench  "
                       "Κάνε κλικ ή πάτησε Enter για νέο σχέδιο από τον πάγκο"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(canvas);
    // The labels under the x axis need some height to stay apart.
    setMinimumSize(640, 520);
    resize(860, 660);
    canvas->installEventFilter(this);
    markGraphWindow(*this);
    connect(canvas, &Canvas::clicked, this, [this](double, double) { Form_Click(); });
    Form_Load();
}

void Errors::Form_Load() { drawMeanError(); }

void Errors::Form_Click() { drawMeanError(); }

void Errors::tickmarks() {
    canvas->setFontSize(kTickLabelPoints);
    canvas->setFontBold(false);
    canvas->setDrawWidth(1);
    canvas->setForeColor(palette::graph::axis);
    // The y axis, its numbers every 20 and the blue grid come from the shared
    // routine; a label limit below the x range leaves the x axis to us.
    drawGraphAxes(*canvas, 150, 0, 100, 0, -1.0, std::nullopt, 10, 20);
    // On the x axis the numbers must sit tight under the axis, because
    // "Radius of Semicircle" is written just below them: the ticks point up
    // into the graph instead.
    for (int x = 10; x <= 150; x += 10) canvas->line(x, 0, x, x % 20 == 0 ? 2.0 : 1.2, palette::graph::axis);
    for (int x = 20; x <= 140; x += 20) {  // the origin has its "0" on the y axis
        const QString label = QString::number(x);
        canvas->setCurrentX(x - canvas->textWidth(label) / 2.0);
        canvas->setCurrentY(-0.3);
        canvas->print(label);
    }
}

bool Errors::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize) {
        const auto* resize = static_cast<QResizeEvent*>(event);
        if (resize->size() != resize->oldSize()) paintGraph();
    } else if (watched == canvas && event->type() == QEvent::KeyPress) {
        // The keyboard's click: Enter or Space on the focused graph.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            Form_Click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Errors::drawMeanError() {
    // The set-up on the bench. The bench's values stay as they are (their
    // scroll bars show them); only the last measured index is the curve's.
    BenchState& bench = sharedState<BenchState>();
    index_ = bench.indexN();
    rayHeight_ = bench.rayHeight();
    xc_ = bench.xc();
    yc_ = bench.yc();
    angleDegrees_ = bench.angleWithY();
    curve_ = computeMeanErrorCurve(bench.block(), rayHeight_, bench.measuredIndex());
    bench.setMeasuredIndex(curve_.lastMeasuredIndex);
    paintGraph();
}

void Errors::paintGraph() {
    canvas->cls();
    canvas->setForeColor(palette::graph::axis);
    canvas->setFontRole(FontRole::Caption);
    canvas->scale(-14, 104, 156, -9);
    tickmarks();
    canvas->setDrawWidth(1);
    canvas->line(0, 0, 150, 0);
    canvas->line(0, 0, 0, 100);

    canvas->setDrawWidth(2);
    segmentsDrawn_ = 0;
    const MeanErrorPoint* previous = nullptr;
    for (const MeanErrorPoint& point : curve_.points) {
        if (!std::isfinite(point.radius) || !std::isfinite(point.errorPercent)) {
            previous = nullptr;  // a gap rather than a line to nowhere
            continue;
        }
        if (previous) {
            canvas->line(previous->radius, previous->errorPercent, point.radius, point.errorPercent);
            ++segmentsDrawn_;
        }
        previous = &point;
    }
    canvas->setDrawWidth(1);

    canvas->setFontBold(true);
    canvas->setFontSize(12);
    auto printAt = [this](double x, double y, const QString& text) {
        canvas->setCurrentX(x);
        canvas->setCurrentY(y);
        canvas->print(text);
    };
    printAt(45, -2, QStringLiteral("Radius of Semicircle"));
    printAt(15, 80, QStringLiteral("Mean Error%"));
    printAt(25, 65, QStringLiteral("n= ") + fmt(index_, "0.00"));
    printAt(25, 60, QStringLiteral("h= ") + fmt(rayHeight_, "0.00"));
    printAt(25, 55, QStringLiteral("xc= ") + fmt(xc_, "0.00"));
    printAt(25, 50, QStringLiteral("yc= ") + fmt(yc_, "0.00"));
    printAt(25, 45, QStringLiteral("Angle= ") + fmt(angleDegrees_, "0.00"));
    canvas->setFontBold(false);
    describeGraph();
}

void Errors::describeGraph() {
    // Its range, and where the error is least and largest.
    const MeanErrorPoint* least = nullptr;
    const MeanErrorPoint* largest = nullptr;
    for (const MeanErrorPoint& p : curve_.points) {
        if (!std::isfinite(p.radius) || !std::isfinite(p.errorPercent)) continue;
        if (!least || p.errorPercent < least->errorPercent) least = &p;
        if (!largest || p.errorPercent > largest->errorPercent) largest = &p;
    }
    QString summary = QStringLiteral(
                          "Graph: mean error % of the measured index against the radius of the semicircle, "
                          "for n = %1, h = %2, xc = %3, yc = %4.")
                          .arg(fmt(index_, "0.00"), fmt(rayHeight_, "0.00"), fmt(xc_, "0.00"), fmt(yc_, "0.00"));
    if (least && largest)
        summary += QStringLiteral(" Least %1 % at radius %2; largest %3 % at radius %4.")
                       .arg(fmt(least->errorPercent, "0.00"), fmt(least->radius, "0"),
                            fmt(largest->errorPercent, "0.00"), fmt(largest->radius, "0"));
    canvas->setSummary(summary);
}
