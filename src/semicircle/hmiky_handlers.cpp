#include <algorithm>
#include <cmath>

#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/number_input.h"
#include "core/physics.h"
#include "semicircle/bench_routes.h"
#include "semicircle/hmiky_look.h"
#include "semicircle/hmiky_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"

using namespace bench_look;

namespace {
const QString kIncidenceTitle = QStringLiteral("incidence angle");
}  // namespace

// ----------------------------------------------------------------- handlers ---

void Hmiky::Form_Load() {
    followState();  // the direction's tick, for a bench made after the values were set
    const BenchState& s = state();
    controlChanged([&s] {
        return QStringList{QStringLiteral("Semicircle Radius=") + fmt(s.semicircleRadius(), "0.0"),
                           QStringLiteral("n=") + indexText(s.indexN(), "0.0")};
    });
}

void Hmiky::HScroll1_Change() {
    state().setSemicircleRadius(radiusOf(controls()));
    controlChanged([] { return QStringList{QStringLiteral("angle=") + fmt(state().angleWithY(), "0.00") + "°"}; });
}

void Hmiky::xcoor_Change() {
    state().setXc(centreXOf(controls()));
    controlChanged([] { return QStringList{QStringLiteral("xc = ") + fmt(state().xc(), "0.00")}; });
}

void Hmiky::ycoor_Change() {
    state().setYc(centreYOf(controls()));
    controlChanged([] { return QStringList{QStringLiteral("yc = ") + fmt(state().yc(), "0.00")}; });
}

void Hmiky::angle_Change() {
    state().setAngleWithY(tiltDegreesOf(controls()));  // degrees on this screen
    controlChanged([] {
        const QString value = fmt(state().angleWithY(), "0.00");
        return QStringList{QStringLiteral("ANGLE  Γωνία= ") + value,
                           QStringLiteral("Angle of Diameter with Y-axis=") + value};
    });
}

void Hmiky::hvalue_Change() {
    state().setRayHeight(rayHeightOf(controls()));
    controlChanged([] {
        const QString value = fmt(state().rayHeight(), "0.00");
        return QStringList{QStringLiteral("h(y(0) ray'2 =  ") + value, QStringLiteral("h=") + value};
    });
}

void Hmiky::Indexn_Change() {
    state().setIndexN(indexOf(controls()));
    controlChanged([] { return QStringList{QStringLiteral(" n= ") + indexText(state().indexN(), "0.00")}; });
}

void Hmiky::Command1_Click() {
    const QString answer =
        inputBox(QStringLiteral("WHAT IS THE INCIDENCE ANGLE Πόση είναι η γωνία πρόσπτωσης ως προς το ημικύκλιο?"),
                 kIncidenceTitle);
    if (answer.trimmed().isEmpty()) return;  // Cancel
    const std::optional<double> typed = parseTypedNumber(answer.toStdString());
    if (!typed) {
        messageBox(QStringLiteral("The incidence angle must be a number of degrees, for example 30 or 42.5.\n"
                                  "Η γωνία πρόσπτωσης πρέπει να είναι αριθμός μοιρών, για παράδειγμα 30 ή 42.5."),
                   kIncidenceTitle);
        return;
    }
    if (*typed < -90.0 || *typed > 90.0) {
        messageBox(QStringLiteral("The incidence angle must lie between -90 and 90 degrees.\n"
                                  "Η γωνία πρόσπτωσης πρέπει να είναι από -90 έως 90 μοίρες."),
                   kIncidenceTitle);
        return;
    }

    BenchState& s = state();
    s.setIncidenceAngle(*typed);
    const Block block = s.block();
    std::optional<RayTrace> trace;
    if (hasDirection(block)) {
        trace = traceRay(block, s.rayHeight(), s.incidenceAngle());
        keepMeasurement(*trace);
        listRay(block, s.incidenceAngle(), *trace, RaySource::Typed);
    }
    const QStringList lines{QStringLiteral("angle φ=") + fmt(s.incidenceAngle(), "0.00"),
                            QStringLiteral("h=") + fmt(s.rayHeight(), "0.00"),
                            QStringLiteral("xc=") + fmt(s.xc(), "0.00"), QStringLiteral("yc=") + fmt(s.yc(), "0.00")};
    paint([this, block, trace, lines] {
        drawBench(block, false);
        if (trace)
            drawTrace(block, *trace, palette::bench::givenIncident, palette::bench::givenOther);
        else
            drawDirectionHint();
        printNotes(lines);
    });
}

void Hmiky::Command2_Click() {
    // Each bar's own handler puts its value into the shared state; the
    // radius and the index stay as they are.
    for (QScrollBar* bar : {xcoor, ycoor, angle, hvalue}) bar->setValue(0);
    showValues();
    // The list keeps its rows: the pupil clears it there.
    paint([this] { canvas->cls(); });
}

void Hmiky::Command3_Click() {
    hide();
    benchRoutes().hideMeanError();
    hideIfCreated<ListOfData>();
    showPlace(Place::MainMenu);
}

void Hmiky::Command4_Click() {
    const BenchState& s = state();
    const Block block = s.block();
    if (showHintIfNoDirection(block)) return;
    const RaysSeries series = runIncidenceSeries(block, s.rayHeight());
    for (const SeriesRay& ray : series.rays) keepMeasurement(ray.trace);
    state().recordRays(block, series, RaySource::Sweep);
    const QStringList lines{
        QStringLiteral("ANGLE φ=") + fmt(s.angleWithY(), "0.00"),
        QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη διάθλασης"),
        series.meanIndex ? indexText(*series.meanIndex, "0.0000") : QStringLiteral("no ray measured  καμία μέτρηση"),
        QStringLiteral("h= ") + fmt(s.rayHeight(), "0.00"),
        QStringLiteral("xc = ") + fmt(s.xc(), "0.00"),
        QStringLiteral("yc = ") + fmt(s.yc(), "0.00")};
    paint([this, block, series, lines] {
        drawBench(block);
        for (const SeriesRay& ray : series.rays) drawTrace(block, ray.trace);
        printNotes(lines);
    });
}

void Hmiky::cmdend_Click() { endProgram(0); }

void Hmiky::listOfData_Click() { showScreen(form<ListOfData>()); }

void Hmiky::Form_MouseDown(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    const Block block = state().block();
    markStartX = static_cast<float>(x);
    markStartY = static_cast<float>(y);
    std::optional<RayTrace> aimed;
    if (hasDirection(block)) aimed = traceAimedRay(block, Point{x, y});
    aimed_.reset();
    if (aimed) {
        // The ray's own slope is its incidence, as for the bench's source.
        const double incidence = physics::degrees(std::atan2(std::fabs(block.yc - y), std::fabs(block.xc - x)));
        aimed_ = AimedRay{block, incidence, *aimed};
    }
    paint([this, block, aimed, x, y] {
        drawBench(block);
        canvas->circle(x, y, 5);
        if (aimed)
            drawTrace(block, *aimed);
        else
            drawDirectionHint();
    });
}

bool Hmiky::benchKey(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
    if (protractor_) return protractorKey(key, modifiers);
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        Form_MouseUp(markStartX, markStartY);
        return true;
    }
    // Five units a press, or twenty-five with Shift; y grows upwards.
    const double step = modifiers.testFlag(Qt::ShiftModifier) ? 25.0 : 5.0;
    double dx = 0.0, dy = 0.0;
    switch (key) {
    case Qt::Key_Left: dx = -step; break;
    case Qt::Key_Right: dx = step; break;
    case Qt::Key_Up: dy = step; break;
    case Qt::Key_Down: dy = -step; break;
    default: return false;
    }
    const double left = canvas->scaleLeft(), right = left + canvas->scaleWidth();
    const double top = canvas->scaleTop(), bottom = top + canvas->scaleHeight();
    Form_MouseDown(std::clamp(double{markStartX} + dx, std::min(left, right), std::max(left, right)),
                   std::clamp(double{markStartY} + dy, std::min(top, bottom), std::max(top, bottom)));
    return true;
}

void Hmiky::Form_MouseUp(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    // Letting go takes the aimed ray as a measurement.
    if (aimed_) listRay(aimed_->block, aimed_->incidence, aimed_->trace, RaySource::Mouse);
    aimed_.reset();
    const double startX = markStartX;
    const double startY = markStartY;
    paint([this, before = picture_, startX, startY, x, y] {
        if (before) before();
        canvas->circle(startX, startY, 5);
        canvas->circle(x, y, 5, palette::bench::aimMark);
    });
}
