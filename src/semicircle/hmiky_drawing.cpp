#include <QKeyEvent>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/physics.h"
#include "semicircle/hmiky_look.h"
#include "semicircle/hmiky_screen.h"
#include "ui/forms.h"

// The bench's shared values and its drawing: every picture is kept, so a
// resized bench draws it again.

using namespace bench_look;

// ------------------------------------------------------------ shared values ---

BenchState& Hmiky::state() { return sharedState<BenchState>(); }

BenchControls Hmiky::controls() const {
    BenchControls c;
    c.radius = HScroll1->value();
    c.xcoor = xcoor->value();
    c.ycoor = ycoor->value();
    c.angle = angle->value();
    c.hvalue = hvalue->value();
    c.indexn = Indexn->value();
    return c;
}

void Hmiky::followState() {
    const BenchState& s = state();
    const BenchControls c = s.controls();
    // A bar that moves runs its handler, which writes the bar's whole step
    // back: the bars never hold a value the pupil could not set.
    const std::pair<QScrollBar*, int> shown[] = {{HScroll1, c.radius}, {xcoor, c.xcoor},   {ycoor, c.ycoor},
                                                 {angle, c.angle},     {hvalue, c.hvalue}, {Indexn, c.indexn}};
    for (const auto& [bar, value] : shown) bar->setValue(value);
    if (s.semicircleDirection() == 1) moredens->setChecked(true);
    if (s.semicircleDirection() == 2) Raref->setChecked(true);
    showValues();
}

void Hmiky::controlChanged(const std::function<QStringList()>& notes) {
    showValues();
    redraw(notes());  // the notes read the values the bar has just set
}

void Hmiky::keepMeasurement(const RayTrace& trace) {
    BenchState& s = state();
    if (trace.measuredIndex && std::isfinite(*trace.measuredIndex)) s.setMeasuredIndex(*trace.measuredIndex);
    if (trace.exitRayAngle && std::isfinite(*trace.exitRayAngle)) s.setExitRayAngle(*trace.exitRayAngle);
}

void Hmiky::showValues() {
    const BenchState& s = state();
    const std::pair<QLineEdit*, QString> edits[] = {
        {aktis, QStringLiteral("Semicircle's Radius= ") + fmt(s.semicircleRadius(), "0")},
        {gon, QStringLiteral("Angle with Y Γωνία με άξοναY=") + fmt(s.angleWithY(), "0.00")}};
    for (const auto& [edit, text] : edits) {
        if (edit->text() != text) edit->setText(text);
        edit->setAccessibleDescription(text);
    }
    const std::pair<QLabel*, QString> labels[] = {
        {Indexnt, QStringLiteral("Δείκτης  n = ") + indexText(s.indexN(), "0.00")},
        {Label4, QStringLiteral("h(Ray's y(0)=") + fmt(s.rayHeight(), "0.00")},
        {Label3, QStringLiteral("xc=") + fmt(s.xc(), "0.00")},
        {Label2, QStringLiteral("yc=") + fmt(s.yc(), "0.00")}};
    for (const auto& [label, text] : labels) {
        label->setText(text);
        label->setAccessibleName(text);
    }
}

// ------------------------------------------------------------------ drawing ---

void Hmiky::paint(std::function<void()> picture) {
    picture_ = std::move(picture);
    drawPicture();
}

void Hmiky::drawPicture() {
    if (!picture_) return;
    pendingReadouts_.clear();
    pendingRays_.clear();
    picture_();
    // A printout of the bench states the block's index, or "?" for a mystery block.
    canvas->setPrintNote(QStringLiteral("n = ") + indexText(state().indexN(), "0.00"));
    if (protractor_) {
        drawProtractor(*canvas, *protractor_);
        canvas->addToSummary(protractorSentence(*protractor_));
    }
    if (readouts->isChecked()) placeReadouts(*canvas, pendingReadouts_, pendingRays_);
    pendingReadouts_.clear();
    pendingRays_.clear();
    // The readouts are placed for the size shown; a saved or printed bench
    // is drawn again as designed.
    drawAgainForExports(*canvas, [this] { drawPicture(); });
}

QString Hmiky::indexText(double value, const char* format) {
    return state().mysteryOn() ? QStringLiteral("?") : fmt(value, format);
}

bool Hmiky::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize && picture_) {
        const auto* resize = static_cast<QResizeEvent*>(event);
        if (resize->size() != resize->oldSize()) drawPicture();
    } else if (watched == canvas && protractorEvent(event)) {
        return true;
    } else if (watched == canvas && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (benchKey(key->key(), key->modifiers())) return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void Hmiky::drawsemicircle() { drawBlock(state().block()); }

void Hmiky::drawBlock(const Block& block) {
    // Both arc angles come back negative, so the circle is closed by its
    // diameter and filled as one piece.
    const ArcAngles arc = blockArcAngles(block);
    canvas->setFillColor(palette::bench::blockFill);
    canvas->setFillStyle(FillStyle::Solid);
    canvas->setDrawWidth(1);
    canvas->circle(block.xc, block.yc, block.radius, palette::black, arc.start, arc.end);
    canvas->setFillStyle(FillStyle::Transparent);
}

void Hmiky::drawBench(const Block& block, bool withSourceCircle) {
    canvas->cls();
    canvas->setDrawWidth(1);
    canvas->setForeColor(palette::black);
    if (withSourceCircle) canvas->circle(0, 0, kSourceCircleRadius, palette::black);
    canvas->line(-200, 0, 200, 0, palette::black);
    canvas->line(0, -200, 0, 200, palette::black);
    drawBlock(block);
}

void Hmiky::initialDrawing() { redraw({}); }

void Hmiky::drawTrace(const Block& block, const RayTrace& trace, std::optional<QColor> incidentColour,
                      std::optional<QColor> otherColour) {
    canvas->setDrawWidth(2);
    for (const RaySegment& s : trace.segments) {
        QColor colour;
        switch (s.kind) {
        case SegmentKind::Incident: colour = incidentColour.value_or(palette::bench::ray); break;
        case SegmentKind::Emerging: colour = otherColour.value_or(palette::bench::ray); break;
        case SegmentKind::Inside:
        case SegmentKind::Reflected: colour = otherColour.value_or(palette::bench::insideRay); break;
        }
        canvas->line(s.segment.from.x, s.segment.from.y, s.segment.to.x, s.segment.to.y, colour);
        drawArrowhead(*canvas, s, colour);
        pendingRays_.push_back(s.segment);
    }
    canvas->setDrawWidth(1);
    drawNormals(*canvas, trace);
    if (readouts->isChecked()) {
        const std::vector<Readout> beside = readoutsOf(trace);
        pendingReadouts_.insert(pendingReadouts_.end(), beside.begin(), beside.end());
    }
    describeTrace(block, trace);
}

namespace {

// A drawn piece of a ray by its slope, as a protractor laid along the
// bench's x axis would read it.
QString slopeOf(const Segment& s) {
    const double degrees =
        std::atan2(std::fabs(s.to.y - s.from.y), std::fabs(s.to.x - s.from.x)) * 180.0 / physics::kPi;
    return fmt(degrees, "0.00") + QStringLiteral("°");
}

constexpr int kDescribedRays = 6;

}  // namespace

void Hmiky::describeTrace(const Block& block, const RayTrace& trace) {
    // The bench in words for a screen reader: the block, then each ray by
    // the slopes of its drawn pieces against the x axis.
    QStringList lines = canvas->summary().isEmpty() ? QStringList() : canvas->summary().split(QLatin1Char('\n'));
    if (lines.isEmpty())
        lines << QStringLiteral("Semicircle of radius %1, centre xc = %2, yc = %3, index n = %4.")
                     .arg(fmt(block.radius, "0"), fmt(block.xc, "0.00"), fmt(block.yc, "0.00"),
                          indexText(block.index, "0.00"));
    const auto rays =
        std::count_if(lines.begin(), lines.end(), [](const QString& l) { return l.startsWith(QLatin1String("Ray ")); });
    if (rays >= kDescribedRays) {
        const QString more = QStringLiteral("More rays: ");
        if (!lines.last().startsWith(more))
            lines << more + QStringLiteral("1");
        else
            lines.last() = more + QString::number(lines.last().mid(more.size()).toInt() + 1);
        canvas->setSummary(lines.join(QLatin1Char('\n')));
        return;
    }
    QStringList parts;
    for (const RaySegment& s : trace.segments) {
        switch (s.kind) {
        case SegmentKind::Incident: parts << QStringLiteral("incidence ") + slopeOf(s.segment); break;
        case SegmentKind::Inside: parts << QStringLiteral("in the block ") + slopeOf(s.segment); break;
        case SegmentKind::Emerging: parts << QStringLiteral("leaves at ") + slopeOf(s.segment); break;
        case SegmentKind::Reflected: parts << QStringLiteral("reflected at ") + slopeOf(s.segment); break;
        }
    }
    if (!trace.hitBlock) parts << QStringLiteral("misses the block");
    if (trace.totalReflection) parts << QStringLiteral("total reflection");
    if (trace.measuredIndex) parts << QStringLiteral("measured index ") + indexText(*trace.measuredIndex, "0.00");
    if (readouts->isChecked() && !trace.hits.empty()) parts << readoutSentence(trace);
    lines << QStringLiteral("Ray %1: ").arg(rays + 1) + parts.join(QLatin1String(", ")) + QLatin1Char('.');
    canvas->setSummary(lines.join(QLatin1Char('\n')));
}

void Hmiky::printNotes(const QStringList& notes) {
    // The light comes from the upper right and leaves to the lower left or
    // lower right: the upper left corner stays free for text.
    canvas->setForeColor(palette::black);
    double y = kTop - kMargin;
    for (const QString& note : notes) {
        canvas->setCurrentX(kLeft + kMargin);
        canvas->setCurrentY(y);
        canvas->print(note);
        y = canvas->currentY();
    }
}

void Hmiky::drawDirectionHint() {
    const QStringList hint{QStringLiteral("Choose the direction of the semicircle:"),
                           QStringLiteral("menu CHOOSE DIRECTION OF SEMICIRCLE"),
                           QStringLiteral("Διάλεξε πρώτα την κατεύθυνση του ημικυκλίου")};
    canvas->setForeColor(palette::bench::hint);
    canvas->setFontBold(true);
    double y = -kSourceCircleRadius - 6.0;  // under the circle of the light source
    for (const QString& line : hint) {
        canvas->setCurrentX(-canvas->textWidth(line) / 2.0);
        canvas->setCurrentY(y);
        canvas->print(line);
        y = canvas->currentY();
    }
    canvas->setFontBold(false);
    canvas->setForeColor(palette::black);
}

void Hmiky::redraw(const QStringList& notes) {
    const BenchState& s = state();
    const Block block = s.block();
    std::optional<RayTrace> trace;
    if (hasDirection(block)) {
        trace = traceRay(block, s.rayHeight(), s.incidenceAngle());
        keepMeasurement(*trace);
    }
    paint([this, block, trace, notes] {
        drawBench(block);
        if (trace)
            drawTrace(block, *trace);
        else
            drawDirectionHint();
        printNotes(notes);
    });
}

bool Hmiky::showHintIfNoDirection(const Block& block) {
    if (hasDirection(block)) return false;
    paint([this, block] {
        drawBench(block);
        drawDirectionHint();
    });
    return true;
}
