#include "apparatus/apparatus_summaries.h"

#include <QStringList>

#include <cmath>

#include "canvas/qt_format.h"
#include "core/physics.h"

namespace apparatus {

namespace {

QString degreesText(double value, const char* pattern = "0.00") { return fmt(value, pattern) + QStringLiteral("°"); }

// "from 12° to 40°", or "at 12°" for a single step.
QString span(int from, int to) {
    if (from == to) return QStringLiteral("at ") + degreesText(from, "0");
    return QStringLiteral("from ") + degreesText(from, "0") + QStringLiteral(" to ") + degreesText(to, "0");
}

// The incidences at which a rule is broken, as the runs of whole degrees
// the check graph draws dotted.
QString brokenAt(const std::vector<alhaytham::CheckStep>& steps, bool alhaytham::CheckStep::*flag) {
    QStringList runs;
    int start = -1, last = -1;
    for (const alhaytham::CheckStep& s : steps) {
        if (s.*flag) {
            if (start < 0 || s.incidenceDegrees != last + 1) {
                if (start >= 0) runs << span(start, last);
                start = s.incidenceDegrees;
            }
            last = s.incidenceDegrees;
        }
    }
    if (start >= 0) runs << span(start, last);
    return runs.join(QStringLiteral(", "));
}

}  // namespace

QString ptolemyInstrumentSummary(const PtolemyState& s) {
    QStringList lines;
    lines << QStringLiteral("Ptolemy's instrument: a graduated disc half in water, the body E at its centre.");
    if (s.requestedAngle != s.waterAngle)
        lines << QStringLiteral(
                     "The angle in water was lowered from %1 to %2: beyond it the light from Z cannot leave "
                     "the water.")
                     .arg(degreesText(s.requestedAngle, "0"), degreesText(s.waterAngle, "0"));
    lines << QStringLiteral("Target Z in water at %1 from the normal; the law of refraction puts it at %2 in air.")
                 .arg(degreesText(s.waterAngle, "0"), degreesText(s.expectedAngle));
    const double off = s.airAngle - s.expectedAngle;
    const QString where =
        std::fabs(off) < 0.005
            ? QStringLiteral("exactly there")
            : QStringLiteral("%1 %2 it")
                  .arg(degreesText(std::fabs(off)), off > 0 ? QStringLiteral("beyond") : QStringLiteral("short of"));
    lines << QStringLiteral("Body H in air at %1 (from %2 to %3), %4.")
                 .arg(degreesText(s.airAngle), degreesText(s.airAngle - s.targetAngle / 2.0),
                      degreesText(s.airAngle + s.targetAngle / 2.0), where);
    lines << (s.covered ? QStringLiteral("Z, E and H are aligned: H hides Z.")
                        : QStringLiteral("Z, E and H are not aligned: Z is seen beside H."));
    lines << QStringLiteral("Target's angle %1.").arg(degreesText(s.targetAngle, "0.0"));
    return lines.join(QLatin1Char('\n'));
}

QString ptolemySightSummary(const std::optional<ptolemy::SightView>& view) {
    if (!view) return QStringLiteral("Sight view: the target cannot be seen from the air.");
    QString text = QStringLiteral("Sight view along the line over H and E: bands for Z, E and H. ");
    const double limit = ptolemy::kViewHalfHeight / ptolemy::kViewUnitsPerDegree;
    if (view->covered) return text + QStringLiteral("H covers Z: the bodies are aligned.");
    const double off = view->offsetDegrees;
    text += QStringLiteral("Z is seen %1 %2 the line of sight")
                .arg(degreesText(std::fabs(off)), off > 0 ? QStringLiteral("above") : QStringLiteral("below"));
    if (std::fabs(off) > limit) text += QStringLiteral(", outside the view");
    return text + QStringLiteral("; H is on the line.");
}

QString alHaythamInstrumentSummary(double incidenceDegrees, double refractionDegrees, std::optional<double> stylus) {
    QString text = QStringLiteral(
                       "Al Haytham's instrument: a beam enters the water at the centre of a graduated disc, "
                       "incidence %1, refraction %2 (water, n = 1.33).")
                       .arg(degreesText(incidenceDegrees, "0"), degreesText(refractionDegrees, "0.0"));
    if (stylus)
        text += QStringLiteral("\nThe ruler lies along the refracted beam; the stylus stands at %1 of the radius.")
                    .arg(fmt(*stylus, "0.0"));
    else
        text += QStringLiteral("\nThe ruler is hidden.");
    return text;
}

QString alHaythamCheckSummary(double n, const std::vector<alhaytham::CheckStep>& steps) {
    QStringList lines;
    const QString direction = n > 1.0   ? QStringLiteral("from rare to dense")
                              : n < 1.0 ? QStringLiteral("from dense to rare")
                                        : QStringLiteral("between alike media");
    lines << QStringLiteral(
                 "Check of Al Haytham's rules for n = %1 (%2): refraction (red), deviation (black), half "
                 "the incidence (blue) and half the sum of incidence and deviation (magenta) against the "
                 "incidence.")
                 .arg(fmt(n, "0.00"), direction);
    if (steps.empty()) {
        lines << QStringLiteral("No curve: there is no refracted ray at any incidence.");
        return lines.join(QLatin1Char('\n'));
    }
    const alhaytham::CheckStep& last = steps.back();
    const double lastIncidence = last.incidenceDegrees + 1;
    const double radToDeg = 180.0 / physics::kPi;
    lines << QStringLiteral("The curves run from incidence 1° to %1%2; there refraction is %3 and deviation %4.")
                 .arg(degreesText(lastIncidence, "0"),
                      lastIncidence < 90.5 && n < 1.0 ? QStringLiteral(" (total reflection beyond)") : QString(),
                      degreesText(last.r2 * radToDeg, "0.0"), degreesText(last.d2 * radToDeg, "0.0"));
    for (const auto& [flag, name] :
         {std::pair{&alhaytham::CheckStep::rule5Violated, QStringLiteral("Rule (5), d < i/2,")},
          std::pair{&alhaytham::CheckStep::rule6Violated, QStringLiteral("Rule (6), d < (i + d)/2,")}}) {
        const QString where = brokenAt(steps, flag);
        lines << name + (where.isEmpty() ? QStringLiteral(" holds at every incidence.")
                                         : QStringLiteral(" is broken ") + where + QStringLiteral(" (dotted curves)."));
    }
    return lines.join(QLatin1Char('\n'));
}

QString ptolemyFittingSummary(const ptolemy_fit::DataSet& set, const std::vector<double>& values,
                              std::optional<int> startPair) {
    QStringList lines;
    lines << QStringLiteral("Refraction against incidence for Ptolemy's %1 table (n = %2), %3 pairs.")
                 .arg(set.incidence.size() == 9 ? QStringLiteral("water") : QStringLiteral("glass"),
                      fmt(set.index, "0.0000"))
                 .arg(set.incidence.size());
    if (startPair && *startPair >= 0 && static_cast<std::size_t>(*startPair + 1) < set.incidence.size())
        lines << QStringLiteral(
                     "Values adjusted from the pair %1 (%2 and %3): every difference 0.5° smaller than the one "
                     "before.")
                     .arg(*startPair)
                     .arg(degreesText(set.incidence[static_cast<std::size_t>(*startPair)], "0"),
                          degreesText(set.incidence[static_cast<std::size_t>(*startPair + 1)], "0"));
    const auto snell = ptolemy_fit::snellRefraction(set);
    QStringList ptolemy, expected;
    double worst = 0.0, worstAt = 0.0;
    for (std::size_t k = 0; k < values.size() && k < set.incidence.size(); ++k) {
        ptolemy << QStringLiteral("%1 → %2").arg(degreesText(set.incidence[k], "0"), degreesText(values[k], "0.0"));
        if (k < snell.size() && snell[k]) {
            expected << QStringLiteral("%1 → %2").arg(degreesText(set.incidence[k], "0"),
                                                      degreesText(*snell[k], "0.0"));
            if (std::fabs(values[k] - *snell[k]) > std::fabs(worst)) {
                worst = values[k] - *snell[k];
                worstAt = set.incidence[k];
            }
        }
    }
    lines << QStringLiteral("Ptolemy's values (purple): ") + ptolemy.join(QStringLiteral(", ")) + QLatin1Char('.');
    lines
        << QStringLiteral("Proportional law (green): r = %1·i.").arg(fmt(ptolemy_fit::proportionalRatio(set), "0.000"));
    lines << QStringLiteral("Law of refraction (red): ") + expected.join(QStringLiteral(", ")) + QLatin1Char('.');
    if (!expected.isEmpty())
        lines << QStringLiteral("Ptolemy's values differ most from the law at %1: by %2.")
                     .arg(degreesText(worstAt, "0"), degreesText(worst, "0.0"));
    return lines.join(QLatin1Char('\n'));
}

}  // namespace apparatus
