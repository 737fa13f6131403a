#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "ui/dialogs.h"
#include "ui/forms.h"
#include "core/message_text.h"
#include "core/shared_state.h"
#include "canvas/qt_format.h"
#include "semicircle/bench_routes.h"
#include "semicircle/hmiky_look.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/measurement_file.h"

// The experiments of the bench's menus: a direction for the block, parallel
// beams, the critical angle, random set-ups, the comparison with Snell's
// law, the best semicircle and the measurement file.

using namespace bench_look;

namespace {

QString rowText(const QString& a, const QString& b, const QString& c, const QString& d) {
    return QStringLiteral("%1 %2 %3 %4").arg(a, 5).arg(b, 9).arg(c, 9).arg(d, 8);
}

}  // namespace

// ------------------------------------------------------------- experiments ---

void Hmiky::moredens_Click() {
    moredens->setChecked(true);
    module1().semicircleDirection = 1;
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::Raref_Click() {
    Raref->setChecked(true);
    module1().semicircleDirection = 2;
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::Paral_Click() {
    module1().semicircleRadius = HScroll1->value();
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::parallelBeam(bool fromTheRight) {
    syncSharedValues();
    const Block block = currentBlock();
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
        for (const RayTrace& trace : beam) drawTrace(trace);
        printNotes({note});
    });
}

void Hmiky::rightpar_Click() { parallelBeam(true); }

void Hmiky::leftpar_Click() { parallelBeam(false); }

void Hmiky::kritikal_Click() {
    const int direction = module1().semicircleDirection;
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
    syncSharedValues();
    const Block block = currentBlock();
    const std::optional<CriticalAngleRun> run = runCriticalAngle(block, module1().rayHeight);
    if (!run || !std::isfinite(run->angleDegrees)) {
        messageBox(QStringLiteral("Try with index>1"), QStringLiteral("Critical Angle"));
        return;
    }
    keepMeasurement(run->trace);
    const QString text = QStringLiteral("critical=") + fmt(run->angleDegrees, "0.00");
    const RayTrace trace = run->trace;
    paint([this, block, trace, text] {
        drawBench(block);
        drawTrace(trace);
        printNotes({QStringLiteral("Critical Angle"), text});
    });
    messageBox(text, QStringLiteral("Critical Angle"));
}

void Hmiky::allrandom_Click() {
    syncSharedValues();
    const RandomSetup setup = drawRandomSetup(random_, controls());
    // Each bar runs its own handler, as moving it by hand would.
    hvalue->setValue(setup.controls.hvalue);
    xcoor->setValue(setup.controls.xcoor);
    ycoor->setValue(setup.controls.ycoor);
    angle->setValue(setup.controls.angle);

    syncSharedValues();
    const SharedState& s = module1();
    const Block block = currentBlock();
    RaysSeries series;
    if (hasDirection(block)) series = runIncidenceSeries(block, s.rayHeight);
    for (const SeriesRay& ray : series.rays) keepMeasurement(ray.trace);
    const QString mean =
        series.meanIndex ? fmt(*series.meanIndex, "0.0000") : QStringLiteral("no ray measured  καμία μέτρηση");
    const QStringList lines{QStringLiteral("ANGLE φ=") + fmt(s.angleWithY, "0.00"),
                            QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= ") + mean,
                            QStringLiteral("h= ") + fmt(s.rayHeight, "0.00"), QStringLiteral("xc = ") + fmt(s.xc, "0.00"),
                            QStringLiteral("yc = ") + fmt(s.yc, "0.00")};
    paint([this, block, series, lines] {
        drawBench(block);
        if (!hasDirection(block)) drawDirectionHint();
        for (const SeriesRay& ray : series.rays) drawTrace(ray.trace);
        printNotes(lines);
    });
}

void Hmiky::sygr_Click() {
    syncSharedValues();
    const SharedState& s = module1();
    const Block block = currentBlock();
    if (showHintIfNoDirection(block)) return;

    std::vector<RayTrace> traces;
    std::vector<Segment> expectedRays;
    QStringList table{QStringLiteral("COMPARISON WITH SNELL'S LAW"), QStringLiteral("Σύγκριση με το νόμο του Snell"),
                      rowText(QStringLiteral("i°"), QStringLiteral("r° meas"), QStringLiteral("r° Snell"),
                              QStringLiteral("n meas")),
                      rowText(QString(), QStringLiteral("μέτρηση"), QStringLiteral("Snell"), QStringLiteral("μέτρηση"))};
    for (double incidence : measurementIncidences()) {
        const RayTrace trace = traceRay(block, s.rayHeight, incidence);
        keepMeasurement(trace);
        traces.push_back(trace);

        // What Snell's law gives when the ray crosses the flat face at its
        // centre: the curved face is then met along a radius and does not
        // bend the ray. The light enters through the flat face when the
        // block looks left and leaves through it when the block looks right.
        const double sinI = std::sin(degreesToRadians(incidence));
        const double sinR = block.direction == 1 ? sinI / block.index : sinI * block.index;
        std::optional<double> expected;
        if (std::fabs(sinR) <= 1.0) expected = radiansToDegrees(std::asin(std::fabs(sinR)));

        // The expected ray, from where the ray crosses x = 0, heading the
        // way the traced ray leaves.
        const RaySegment* last = trace.segments.empty() ? nullptr : &trace.segments.back();
        if (expected && last && last->kind == SegmentKind::Emerging) {
            const double dx = last->segment.to.x - last->segment.from.x;
            const double dy = last->segment.to.y - last->segment.from.y;
            const double r = degreesToRadians(*expected);
            const Point from{0.0, s.rayHeight};
            const Point to{(dx < 0 ? -1.0 : 1.0) * std::cos(r) * 190.0,
                           s.rayHeight + (dy < 0 ? -1.0 : 1.0) * std::sin(r) * 190.0};
            expectedRays.push_back({from, to});
        }

        QString measured = QStringLiteral("-");
        if (trace.totalReflection) measured = QStringLiteral("tot.ref");
        else if (trace.exitRayAngle) measured = fmt(radiansToDegrees(*trace.exitRayAngle), "0.00");
        const QString snell = expected ? fmt(*expected, "0.00") : QStringLiteral("tot.ref");
        const QString index = trace.measuredIndex ? fmt(*trace.measuredIndex, "0.000") : QStringLiteral("-");
        table.append(rowText(fmt(incidence, "0.0"), measured, snell, index));
    }

    paint([this, block, traces, expectedRays, table] {
        drawBench(block);
        for (const RayTrace& trace : traces) drawTrace(trace);
        canvas->setDrawStyle(DrawStyle::Dash);
        canvas->setDrawWidth(2);
        for (const Segment& ray : expectedRays) canvas->line(ray.from.x, ray.from.y, ray.to.x, ray.to.y, kExpectedColour);
        canvas->setDrawWidth(1);
        canvas->setDrawStyle(DrawStyle::Solid);

        // The table, on white, in the free upper left corner.
        canvas->setFontName(QStringLiteral("Courier New"));
        canvas->setFontSize(8.0);
        double width = 0.0;
        for (const QString& line : table) width = std::max(width, canvas->textWidth(line));
        const double height = canvas->textHeight() * static_cast<double>(table.size());
        const double left = kLeft + kMargin;
        const double top = kTop - kMargin;
        canvas->filledBox(left - 2, top + 2, left + width + 2, top - height - 2, QColor(255, 255, 255));
        canvas->box(left - 2, top + 2, left + width + 2, top - height - 2, QColor(160, 160, 160));
        printNotes(table);
        canvas->setFontName(QStringLiteral("Arial"));
        canvas->setFontSize(9.0);

        canvas->setCurrentX(left);
        canvas->setCurrentY(top - height - 4);
        canvas->setForeColor(kExpectedColour);
        canvas->print(QStringLiteral("- - -  Snell's law  νόμος του Snell"));
        canvas->setForeColor(kBlack);
    });
}

void Hmiky::Optimize_Click() {
    benchRoutes().showMeanError();
}

void Hmiky::fylaxe_Click() {
    syncSharedValues();
    const std::vector<MeasurementRecord> records = runMeasurementSeries(currentBlock(), module1().rayHeight);
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
