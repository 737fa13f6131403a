#include "semicircle/bench_readouts.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"
#include "semicircle/hmiky_look.h"

using namespace bench_look;

namespace {

const QString kTotalReflection = QStringLiteral("TOTAL REFLECTION  ΟΛΙΚΗ ΑΝΑΚΛΑΣΗ");

QString degreesText(double degrees) { return fmt(degrees, "0.0") + QStringLiteral("°"); }

// Whether the segment from a to b crosses the rectangle or lies in it.
bool crosses(const QRectF& box, QPointF a, QPointF b) {
    if (box.contains(a) || box.contains(b)) return true;
    const QLineF line(a, b);
    const QPointF corners[] = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
    for (int k = 0; k < 4; ++k)
        if (line.intersects(QLineF(corners[k], corners[(k + 1) % 4]), nullptr) == QLineF::BoundedIntersection)
            return true;
    return false;
}

// Font of the readouts, set for the time they are measured and written.
class ReadoutFont {
public:
    explicit ReadoutFont(Canvas& canvas)
        : canvas_(canvas), role_(canvas.fontRole()), points_(canvas.fontSize()), bold_(canvas.fontBold()) {
        canvas.setFontRole(kReadoutFont);
        canvas.setFontSize(kReadoutPoints);
        canvas.setFontBold(false);
    }
    ~ReadoutFont() {
        canvas_.setFontRole(role_);
        canvas_.setFontSize(points_);
        canvas_.setFontBold(bold_);
    }
    ReadoutFont(const ReadoutFont&) = delete;
    ReadoutFont& operator=(const ReadoutFont&) = delete;

private:
    Canvas& canvas_;
    FontRole role_;
    double points_;
    bool bold_;
};

// A free place for a box of the given size near the anchor (widget pixels):
// rings of candidates further and further out, the first one that stays on
// the canvas and covers none of `taken` (nor, when `rays` is given, a ray).
std::optional<QRectF> freePlace(QSizeF size, QPointF anchor, QSizeF area, const std::vector<QRectF>& taken,
                                const std::vector<QLineF>* rays) {
    constexpr double kRings[] = {8, 18, 30, 45, 65, 90, 120, 155, 195, 240, 300, 370, 450};
    const QRectF canvasArea(QPointF(0, 0), area);
    for (double ring : kRings) {
        // Candidates a dozen pixels apart round the ring.
        const int directions = std::max(16, static_cast<int>(2.0 * physics::kPi * ring / 12.0));
        for (int k = 0; k < directions; ++k) {
            // Start below-left of the point and go round: rays come from the
            // upper right, so the free side is tried first.
            const double a = (5.0 / 16.0 + static_cast<double>(k) / directions) * 2.0 * physics::kPi;
            const double cx = anchor.x() + std::cos(a) * (ring + size.width() / 2.0);
            const double cy = anchor.y() + std::sin(a) * (ring + size.height() / 2.0);
            const QRectF box(cx - size.width() / 2.0, cy - size.height() / 2.0, size.width(), size.height());
            if (!canvasArea.contains(box)) continue;
            const auto overlaps = [&box](const QRectF& other) { return box.intersects(other); };
            if (std::any_of(taken.begin(), taken.end(), overlaps)) continue;
            if (rays && std::any_of(rays->begin(), rays->end(),
                                    [&box](const QLineF& ray) { return crosses(box, ray.p1(), ray.p2()); }))
                continue;
            return box;
        }
    }
    return std::nullopt;
}

}  // namespace

QStringList readoutLines(const FaceHit& hit) {
    QStringList lines{QStringLiteral("i = ") + degreesText(hit.incidenceDegrees)};
    if (hit.totalReflection)
        lines << QStringLiteral("i' = ") + degreesText(hit.leavingDegrees) << kTotalReflection;
    else
        lines << QStringLiteral("r = ") + degreesText(hit.leavingDegrees);
    return lines;
}

std::vector<Readout> readoutsOf(const RayTrace& trace) {
    std::vector<Readout> readouts;
    bool flatShown = false;
    for (const FaceHit& hit : trace.hits) {
        const bool firstFlat = hit.flatFace && !flatShown;
        if (!firstFlat && !hit.totalReflection) continue;
        flatShown = flatShown || hit.flatFace;
        readouts.push_back({hit.at, readoutLines(hit), hit.flatFace});
    }
    return readouts;
}

QString readoutSentence(const RayTrace& trace) {
    QStringList parts;
    for (const Readout& r : readoutsOf(trace))
        parts << (r.flatFace ? QStringLiteral("at the flat face ") : QStringLiteral("at the curved face ")) +
                     r.lines.join(QLatin1String(", "));
    return parts.join(QLatin1String("; "));
}

void drawNormals(Canvas& canvas, const RayTrace& trace) {
    const DrawStyle style = canvas.drawStyle();
    const int width = canvas.drawWidth();
    canvas.setDrawStyle(DrawStyle::Dash);
    canvas.setDrawWidth(1);
    for (const FaceHit& h : trace.hits)
        canvas.line(h.at.x - kNormalReach * h.normal.x, h.at.y - kNormalReach * h.normal.y,
                    h.at.x + kNormalReach * h.normal.x, h.at.y + kNormalReach * h.normal.y, palette::bench::normal);
    canvas.setDrawStyle(style);
    canvas.setDrawWidth(width);
}

void drawArrowhead(Canvas& canvas, const RaySegment& s, const QColor& colour) {
    const double dx = s.segment.to.x - s.segment.from.x;
    const double dy = s.segment.to.y - s.segment.from.y;
    const double length = std::hypot(dx, dy);
    if (!(length > 3.0 * kArrowBarb)) return;
    // Pieces that run off the bench carry their arrow near their start,
    // where it is seen.
    const bool runsOff = s.kind == SegmentKind::Emerging || s.kind == SegmentKind::Reflected;
    const double along = runsOff ? std::min(length / 2.0, 60.0) : length / 2.0;
    const double ux = dx / length, uy = dy / length;
    const double tipX = s.segment.from.x + ux * (along + kArrowBarb / 2.0);
    const double tipY = s.segment.from.y + uy * (along + kArrowBarb / 2.0);
    for (double side : {-1.0, 1.0}) {
        // Each barb is the ray's direction turned back and to one side.
        const double c = std::cos(side * kArrowSpread), sn = std::sin(side * kArrowSpread);
        const double bx = -(ux * c - uy * sn), by = -(ux * sn + uy * c);
        canvas.line(tipX, tipY, tipX + kArrowBarb * bx, tipY + kArrowBarb * by, colour);
    }
}

std::vector<QRectF> placeReadouts(Canvas& canvas, const std::vector<Readout>& readouts,
                                  const std::vector<Segment>& rays) {
    std::vector<QRectF> placed;
    if (readouts.empty()) return placed;
    const ReadoutFont font(canvas);
    std::vector<QRectF> taken;
    for (const Canvas::DrawnText& t : canvas.drawnTexts()) taken.push_back(t.box.adjusted(-2, -2, 2, 2));
    std::vector<QLineF> rayLines;
    for (const Segment& s : rays)
        rayLines.emplace_back(canvas.toLogical(s.from.x, s.from.y), canvas.toLogical(s.to.x, s.to.y));
    const double pxX = std::fabs(canvas.userPerPixelX()), pxY = std::fabs(canvas.userPerPixelY());
    if (!(pxX > 0.0) || !(pxY > 0.0)) return placed;
    constexpr double kPad = 3.0;  // pixels round the text

    for (const Readout& r : readouts) {
        const QString text = r.lines.join(QLatin1Char('\n'));
        const QSizeF textSize(canvas.textWidth(text) / pxX, canvas.textHeight(text) / pxY);
        const QSizeF size = textSize + QSizeF(2 * kPad, 2 * kPad);
        // The box goes where its size as the screen shows it is free.
        const QSizeF room = shownBoxSize(size, textSize);
        const QPointF anchor = canvas.toLogical(r.anchor.x, r.anchor.y);
        const QSizeF area(canvas.width(), canvas.height());
        std::optional<QRectF> free = freePlace(room, anchor, area, taken, &rayLines);
        if (!free) free = freePlace(room, anchor, area, taken, nullptr);
        if (!free) continue;
        taken.push_back(free->adjusted(-2, -2, 2, 2));
        placed.push_back(*free);
        const QRectF box(free->topLeft(), size);

        const QPointF topLeft = canvas.toUser(box.topLeft()), bottomRight = canvas.toUser(box.bottomRight());
        const QPointF centre = canvas.toUser(box.center());
        if (QLineF(box.center(), anchor).length() > std::hypot(box.width(), box.height()) / 2.0 + 10.0)
            canvas.line(r.anchor.x, r.anchor.y, centre.x(), centre.y(), palette::bench::readoutFrame);
        canvas.filledBox(topLeft.x(), topLeft.y(), bottomRight.x(), bottomRight.y(), palette::bench::readoutPaper);
        canvas.box(topLeft.x(), topLeft.y(), bottomRight.x(), bottomRight.y(), palette::bench::readoutFrame);
        double y = topLeft.y() - kPad * pxY;
        for (const QString& line : r.lines) {
            canvas.setForeColor(line == kTotalReflection ? palette::bench::totalReflectionText
                                                         : palette::bench::readoutText);
            canvas.setCurrentX(topLeft.x() + kPad * pxX);
            canvas.setCurrentY(y);
            canvas.print(line);
            y = canvas.currentY();
        }
    }
    canvas.setForeColor(palette::black);
    return placed;
}
