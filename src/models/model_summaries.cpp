#include "models/model_summaries.h"

#include <QStringList>

#include <cmath>

#include "canvas/qt_format.h"

namespace spoken {

namespace {

QString deg(double value, const char* pattern = "0.00") { return fmt(value, pattern) + QStringLiteral("°"); }

QString side(kymatiko::Point p, double boundaryY) {
    if (std::fabs(p.y - boundaryY) < kymatiko::kOnBoundary) return QStringLiteral("on the boundary");
    return p.y > boundaryY ? QStringLiteral("above the boundary") : QStringLiteral("below the boundary");
}

QString at(kymatiko::Point p) { return QStringLiteral("(%1, %2)").arg(fmt(p.x, "0"), fmt(p.y, "0")); }

// The angles at the boundary: "incidence 30°, refraction 19.47°" or the
// total reflection.
QString angles(double incidenceDegrees, const kymatiko::Refraction& r) {
    QString text = QStringLiteral("incidence ") + deg(incidenceDegrees, "0");
    if (!r.valid) return text;
    if (r.totalReflection) return text + QStringLiteral(", totally reflected (no refracted ray)");
    return text + QStringLiteral(", refraction ") + deg(kymatiko::degrees(r.refraction));
}

QString criticalAngle(double n) {
    const auto c = kymatiko::criticalAngleDegrees(n);
    if (!c || !kymatiko::intoLessDense(n)) return {};
    return QStringLiteral(" Critical angle ") + deg(*c) + QLatin1Char('.');
}

}  // namespace

QString corpuscles(kymatiko::CorpuscleModel model, double incidenceDegrees, double n, const kymatiko::Track& track) {
    QString name;
    switch (model) {
    case kymatiko::CorpuscleModel::Descartes:
        name = QStringLiteral("Descartes' model: the speed changes at the boundary");
        break;
    case kymatiko::CorpuscleModel::NewtonOneLayer:
        name = QStringLiteral("Newton's model with one layer of thickness %1 under the boundary")
                   .arg(fmt(track.thickness, "0.0"));
        break;
    case kymatiko::CorpuscleModel::NewtonParallelLayers:
        name = QStringLiteral("Newton's model with %1 parallel layers, %2 thick in all")
                   .arg(kymatiko::kParallelLayers)
                   .arg(fmt(track.thickness, "0.0"));
        break;
    }
    const kymatiko::Refraction r = kymatiko::refract(kymatiko::radians(incidenceDegrees), n);
    QString text = QStringLiteral("Corpuscles, ") + name + QStringLiteral(". n2/n1 = ") + fmt(n, "0.00") +
                   QStringLiteral(", ") + angles(incidenceDegrees, r) + QLatin1Char('.');
    if (track.totalReflection && !r.totalReflection) text += QStringLiteral(" The corpuscles turn back.");
    return text + criticalAngle(n) + QStringLiteral(" The lower half is the second medium.");
}

QString fermat(const FermatPicture& p) {
    QStringList lines;
    lines << QStringLiteral(
                 "Fermat's principle: light from the magenta body to the green one through the blue body; "
                 "speeds by %1's law, %2 above the boundary and %3 below (n = %4).")
                 .arg(p.law == kymatiko::SpeedLaw::Descartes ? QStringLiteral("Descartes") : QStringLiteral("Fermat"),
                      fmt(p.speeds.upper, "0.00"), fmt(p.speeds.lower, "0.00"), fmt(p.n, "0.00"));
    lines << QStringLiteral("Magenta body at %1, %2; blue at %3, %4; green at %5, %6.")
                 .arg(at(p.magenta), side(p.magenta, p.boundaryY), at(p.blue), side(p.blue, p.boundaryY), at(p.green),
                      side(p.green, p.boundaryY));
    if (p.leastTime) {
        lines << QStringLiteral("Least time %1 found with the blue body at x = %2; the path is drawn green.")
                     .arg(fmt(*p.leastTime, "0.00"), fmt(p.blue.x, "0"));
        return lines.join(QLatin1Char('\n'));
    }
    QString kind;
    switch (p.kind) {
    case kymatiko::PathKind::Plain: kind = QStringLiteral("The path is drawn black"); break;
    case kymatiko::PathKind::Reflection:
        kind = QStringLiteral("The path is drawn red: a reflection, Hero's law");
        break;
    case kymatiko::PathKind::Refraction:
        kind = QStringLiteral("The path is drawn green: a refraction, an example of Fermat's principle");
        break;
    }
    lines << kind + QStringLiteral("; travel time %1, length %2.")
                        .arg(fmt(p.time.time, "0.00"), fmt(p.time.distance(), "0.00"));
    return lines.join(QLatin1Char('\n'));
}

}  // namespace spoken
