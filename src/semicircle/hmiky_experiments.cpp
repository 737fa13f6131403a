#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/message_text.h"
#include "semicircle/bench_routes.h"
#include "semicircle/bench_state.h"
#include "semicircle/hmiky_look.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/measurement_file.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

// The experiments of the bench's menus: a direction for the block, parallel
// beams, the critical angle, random set-ups, the comparison with Snell's
// law, the best semicircle and the measurement file.

using namespace bench_look;

namespace {

QString rowText(const QString& a, const QString& b, const QString& c, const QString& d) {
    return QStringLiteral("%1 %2 %3 %4").arg(a, 5).arg(b, 9).arg(c, 9).arg(d, 8);
}

// What Snell's law gives when the ray crosses the flat face at its centre:
// the curved face is then met along a radius and does not bend the ray.
// The light enters through the flat face when the block looks left and
// leaves through it when the block looks right. None beyond the critical
// angle.
std::optional<double> snellRefraction(const Block& block, double incidence) {
    const double sinI = std::sin(physics::radians(incidence));
    const double sinR = block.direction == 1 ? sinI / block.index : sinI * block.index;
    if (std::fabs(sinR) > 1.0) return std::nullopt;
    return physics::degrees(std::asin(std::fabs(sinR)));
}

// The ray Snell's law expects, from where the traced ray crosses x = 0,
// heading the way the traced ray leaves; none when no ray left.
std::optional<Segment> expectedRay(const RayTrace& trace, std::optional<double> expected, double rayHeight) {
    const RaySegment* last = trace.segments.empty() ? nullptr : &trace.segments.back();
    if (!expected || !last || last->kind != SegmentKind::Emerging) return std::nullopt;
    const double dx = last->segment.to.x - last->segment.from.x;
    const double dy = last->segment.to.y - last->segment.from.y;
    const double r = physics::radians(*expected);
    const Point from{0.0, rayHeight};
    const Point to{(dx < 0 ? -1.0 : 1.0) * std::cos(r) * 190.0,
                   rayHeight + (dy < 0 ? -1.0 : 1.0) * std::sin(r) * 190.0};
    return Segment{from, to};
}

}  // namespace

// ------------------------------------------------------------- experiments ---

void Hmiky::chooseDirection(int direction) {
    // The tick follows the shared value.
    state().setSemicircleDirection(direction);
    const Block block = state().block();
    paint([this, block] { drawBench(block); });
}

void Hmiky::moredens_Click() { chooseDirection(1); }

void Hmiky::Raref_Click() { chooseDirection(2); }

void Hmiky::Paral_Click() {
    const Block block = state().block();
    paint([this, block] { drawBench(block); });
}

void Hmiky::parallelBeam(bool fromTheRight) {
    const Block block = state().block();
    std::vector<RayTrace> beam;
    if (hasDirection(block)) beam = traceParallelBeam(block, fromTheRight);
    const QString note = fromTheRight ? QStringLiteral("PARALLEL RAYS FROM THE RIGHT  Παράλληλες ακτίνες από δεξιά")
                                      : QStringLiteral("PARALLEL RAYS FROM LEFT  Παράλληλες ακτίνες από αριστερά");
    paint([this, block, beam, note] {
        drawBench(block);
        if (!hasDirection(block)) {
            drawDirectionHint();
            return;
        }
        for (const RayTrace& trace : beam) drawTrace(block, trace);
        printNotes({note});
    });
}

void Hmiky::rightpar_Click() { parallelBeam(true); }

void Hmiky::leftpar_Click() { parallelBeam(false); }

void Hmiky::kritikal_Click() {
    const int direction = state().semicircleDirection();
    if (direction == 1) {
        messageBox(QStringLiteral("`Change Direction of Semicircle"), QStringLiteral("Critical Angle"));
        return;
    }
    if (direction != 2) return;
    // The bar holds tenths: at least 10 means n ≥ 1.0.
    if (Indexn->value() < 10) {
        messageBox(QStringLiteral("Try with index>1"), QStringLiteral("Critical Angle"));
        return;
    }
    const Block block = state().block();
    const std::optional<CriticalAngleRun> run = runCriticalAngle(block, state().rayHeight());
    if (!run || !std::isfinite(run->angleDegrees)) {
        messageBox(QStringLiteral("Try with index>1"), QStringLiteral("Critical Angle"));
        return;
    }
    keepMeasurement(run->trace);
    const QString text = QStringLiteral("critical=") + fmt(run->angleDegrees, "0.00");
    const RayTrace trace = run->trace;
    paint([this, block, trace, text] {
        drawBench(block);
        drawTrace(block, trace);
        printNotes({QStringLiteral("Critical Angle"), text});
    });
    messageBox(text, QStringLiteral("Critical Angle"));
}

void Hmiky::allrandom_Click() {
    const RandomSetup setup = drawRandomSetup(random_, controls());
    // Each bar runs its own handler, as moving it by hand would.
    hvalue->setValue(setup.controls.hvalue);
    xcoor->setValue(setup.controls.xcoor);
    ycoor->setValue(setup.controls.ycoor);
    angle->setValue(setup.controls.angle);

    const BenchState& s = state();
    const Block block = s.block();
    RaysSeries series;
    if (hasDirection(block)) series = runIncidenceSeries(block, s.rayHeight());
    for (const SeriesRay& ray : series.rays) keepMeasurement(ray.trace);
    state().recordRays(block, series, RaySource::AllRandom);
    const QString mean =
        series.meanIndex ? indexText(*series.meanIndex, "0.0000") : QStringLiteral("no ray measured  καμία μέτρηση");
    const QStringList lines{QStringLiteral("ANGLE φ=") + fmt(s.angleWithY(), "0.00"),
                            QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= ") + mean,
                            QStringLiteral("h= ") + fmt(s.rayHeight(), "0.00"),
                            QStringLiteral("xc = ") + fmt(s.xc(), "0.00"),
                            QStringLiteral("yc = ") + fmt(s.yc(), "0.00")};
    paint([this, block, series, lines] {
        drawBench(block);
        if (!hasDirection(block)) drawDirectionHint();
        for (const SeriesRay& ray : series.rays) drawTrace(block, ray.trace);
        printNotes(lines);
    });
}

void Hmiky::sygr_Click() {
    const BenchState& s = state();
    const Block block = s.block();
    if (showHintIfNoDirection(block)) return;

    std::vector<RayTrace> traces;
    std::vector<Segment> expectedRays;
    QStringList table{
        QStringLiteral("COMPARISON WITH SNELL'S LAW"), QStringLiteral("Σύγκριση με το νόμο του Snell"),
        rowText(QStringLiteral("i°"), QStringLiteral("r° meas"), QStringLiteral("r° Snell"), QStringLiteral("n meas")),
        rowText(QString(), QStringLiteral("μέτρηση"), QStringLiteral("Snell"), QStringLiteral("μέτρηση"))};
    for (double incidence : measurementIncidences()) {
        const RayTrace trace = traceRay(block, s.rayHeight(), incidence);
        keepMeasurement(trace);
        listRay(block, incidence, trace, RaySource::Comparison);
        traces.push_back(trace);
        // Snell's angles would give a mystery block's index away.
        const std::optional<double> expected = s.mysteryOn() ? std::nullopt : snellRefraction(block, incidence);
        if (std::optional<Segment> ray = expectedRay(trace, expected, s.rayHeight())) expectedRays.push_back(*ray);

        QString measured = QStringLiteral("-");
        if (trace.totalReflection)
            measured = QStringLiteral("tot.ref");
        else if (trace.exitRayAngle)
            measured = fmt(physics::degrees(*trace.exitRayAngle), "0.00");
        const QString snell = s.mysteryOn() ? QStringLiteral("?")
                              : expected    ? fmt(*expected, "0.00")
                                            : QStringLiteral("tot.ref");
        const QString index = trace.measuredIndex ? indexText(*trace.measuredIndex, "0.000") : QStringLiteral("-");
        table.append(rowText(fmt(incidence, "0.0"), measured, snell, index));
    }
    paint([this, block, traces, expectedRays, table] { drawComparison(block, traces, expectedRays, table); });
}

void Hmiky::drawComparison(const Block& block, const std::vector<RayTrace>& traces,
                           const std::vector<Segment>& expectedRays, const QStringList& table) {
    drawBench(block);
    for (const RayTrace& trace : traces) drawTrace(block, trace);
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->setDrawWidth(2);
    for (const Segment& ray : expectedRays)
        canvas->line(ray.from.x, ray.from.y, ray.to.x, ray.to.y, palette::bench::expected);
    canvas->setDrawWidth(1);
    canvas->setDrawStyle(DrawStyle::Solid);

    // The table, on white, in the free upper left corner.
    canvas->setFontRole(FontRole::Table);
    canvas->setFontSize(8.0);
    double width = 0.0;
    for (const QString& line : table) width = std::max(width, canvas->textWidth(line));
    const double height = canvas->textHeight() * static_cast<double>(table.size());
    const double left = kLeft + kMargin;
    const double top = kTop - kMargin;
    canvas->filledBox(left - 2, top + 2, left + width + 2, top - height - 2, palette::white);
    canvas->box(left - 2, top + 2, left + width + 2, top - height - 2, palette::bench::noteFrame);
    printNotes(table);
    canvas->setFontRole(FontRole::Caption);
    canvas->setFontSize(9.0);

    canvas->setCurrentX(left);
    canvas->setCurrentY(top - height - 4);
    canvas->setForeColor(palette::bench::expected);
    canvas->print(QStringLiteral("- - -  Snell's law  νόμος του Snell"));
    canvas->setForeColor(palette::black);
}

void Hmiky::Optimize_Click() {
    if (refusedForMystery(QStringLiteral("BEST SEMICIRCLE"))) return;
    benchRoutes().showMeanError();
}

void Hmiky::fylaxe_Click() {
    if (refusedForMystery(QString::fromLatin1(kMeasurementFileName))) return;
    const std::vector<MeasurementRecord> records = runMeasurementSeries(state().block(), state().rayHeight());
    const WriteOutcome outcome = writeMeasurementFile(std::filesystem::path(kMeasurementFileName), records);
    const QString title = QString::fromLatin1(kMeasurementFileName);
    if (!outcome.ok) {
        messageBox(QString::fromStdString(outcome.error), title);
        return;
    }
    // The file lands in the current folder, which the pupil does not see:
    // say where it went, in full.
    const QString where =
        QString::fromStdString(quotedForMessage(QFileInfo(title).absoluteFilePath().toStdString(), 200));
    messageBox(QStringLiteral(" number of records =") + QString::number(records.size()) +
                   QStringLiteral("\nWritten to  Γράφτηκε στο: ") + where,
               title);
}
