#include "semicircle/bench_protractor.h"

#include <cmath>
#include <cstdlib>

#include "canvas/canvas.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "semicircle/hmiky_look.h"

using namespace bench_look;

namespace {

Point along(const Protractor& p, double degreesFromZero, double distance) {
    const double a = physics::radians(p.zeroDegrees + degreesFromZero);
    return {p.centre.x + distance * std::cos(a), p.centre.y + distance * std::sin(a)};
}

}  // namespace

Protractor protractorOn(const Block& block) {
    // The flat face's outward normal is (cos tilt, sin tilt) for a block
    // turned to the left; a block turned to the right is the same turned by
    // 180°, and the light still comes from the right.
    Protractor p;
    p.centre = {block.xc, block.yc};
    p.zeroDegrees = physics::degrees(block.tilt);
    return p;
}

double bearingDegrees(const Protractor& protractor, Point p) {
    return physics::degrees(std::atan2(p.y - protractor.centre.y, p.x - protractor.centre.x));
}

ProtractorGrip gripAt(const Protractor& protractor, Point p, double rimWidth) {
    const double dx = p.x - protractor.centre.x, dy = p.y - protractor.centre.y;
    const double distance = std::hypot(dx, dy);
    const double a = physics::radians(protractor.zeroDegrees);
    const double ahead = dx * std::cos(a) + dy * std::sin(a);  // towards the arc
    if (ahead < -rimWidth || distance > protractor.radius + rimWidth) return ProtractorGrip::None;
    return distance >= protractor.radius - rimWidth ? ProtractorGrip::Rim : ProtractorGrip::Body;
}

Mark markAt(const Protractor& protractor, int degrees) {
    const double length = degrees % 10 == 0 ? 14.0 : degrees % 5 == 0 ? 9.0 : 5.0;
    return {static_cast<double>(degrees), along(protractor, degrees, protractor.radius - length),
            along(protractor, degrees, protractor.radius)};
}

void drawProtractor(Canvas& canvas, const Protractor& protractor) {
    const Protractor& p = protractor;
    canvas.setDrawWidth(1);
    // The arc and the straight edge.
    const double start = physics::radians(p.zeroDegrees - 90.0), end = physics::radians(p.zeroDegrees + 90.0);
    const auto positive = [](double a) {
        return std::fmod(std::fmod(a, 2 * physics::kPi) + 2 * physics::kPi, 2 * physics::kPi);
    };
    canvas.circle(p.centre.x, p.centre.y, p.radius, palette::bench::protractorInk, positive(start), positive(end));
    const Point left = along(p, 90.0, p.radius), right = along(p, -90.0, p.radius);
    canvas.line(left.x, left.y, right.x, right.y, palette::bench::protractorInk);
    const Point zero = along(p, 0.0, p.radius);
    canvas.setDrawStyle(DrawStyle::Dot);
    canvas.line(p.centre.x, p.centre.y, zero.x, zero.y, palette::bench::protractorInk);
    canvas.setDrawStyle(DrawStyle::Solid);
    for (int d = -90; d <= 90; ++d) {
        const Mark m = markAt(p, d);
        canvas.line(m.inner.x, m.inner.y, m.outer.x, m.outer.y, palette::bench::protractorInk);
    }
    // The numbers inside the 10° marks, centred on their line.
    const FontRole role = canvas.fontRole();
    const double points = canvas.fontSize();
    canvas.setFontRole(kProtractorFont);
    canvas.setFontSize(kProtractorPoints);
    canvas.setForeColor(palette::bench::protractorInk);
    for (int d = -90; d <= 90; d += 10) {
        const QString number = QString::number(std::abs(d));
        const double inset = 14.0 + 2.0 + canvas.textWidth(QStringLiteral("90")) * 0.6 + canvas.textHeight() * 0.5;
        const Point at = along(p, d, p.radius - inset);
        canvas.setCurrentX(at.x - canvas.textWidth(number) / 2.0);
        canvas.setCurrentY(at.y + canvas.textHeight() / 2.0);
        canvas.print(number);
    }
    canvas.setFontRole(role);
    canvas.setFontSize(points);
    canvas.setForeColor(palette::black);
}

QString protractorSentence(const Protractor& p) {
    return QStringLiteral("Protractor centred at x = %1, y = %2, its 0° line at %3° from the x axis.")
        .arg(fmt(p.centre.x, "0.0"), fmt(p.centre.y, "0.0"), fmt(p.zeroDegrees, "0.0"));
}
