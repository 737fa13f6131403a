#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "analysis/mean_error.h"
#include "apparatus/alhaytham_rules.h"
#include "apparatus/ptolemy_fitting.h"
#include "apparatus/ptolemy_geometry.h"
#include "canvas/qt_format.h"
#include "history/historical_tables.h"
#include "history/refraction_laws.h"
#include "models/energy_shares.h"
#include "models/fermat.h"
#include "semicircle/bench_series.h"

// The results the help pages promise a class, worked out again with the
// program's own physics: a change in the physics that moves a result makes
// the page that states it fail here, instead of misleading a teacher.
namespace {

QString page(const char* name) {
    QFile file(QStringLiteral(":/help/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

// The figures the page fails to state.
QStringList unstated(const char* name, const QStringList& figures) {
    QStringList lacking;
    for (const QString& figure : figures)
        if (!page(name).contains(figure)) lacking << figure;
    return lacking;
}

// A lesson states every figure it is given and no decimal figure besides:
// a figure typed into a lesson without being worked out here fails.
QStringList lessonFiguresAmiss(const char* name, const QStringList& figures) {
    QFile file(QStringLiteral(":/lessons/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) return {QStringLiteral("no lesson")};
    const QString text = QString::fromUtf8(file.readAll());
    QStringList amiss;
    for (const QString& figure : figures)
        if (!text.contains(figure)) amiss << QStringLiteral("unstated ") + figure;
    static const QRegularExpression decimal(QStringLiteral(R"(\d+\.\d+)"));
    for (auto it = decimal.globalMatch(text); it.hasNext();)
        if (const QString stated = it.next().captured(); !figures.contains(stated)) amiss << stated;
    amiss.removeDuplicates();
    return amiss;
}

#define STATES(pageName, ...) QCOMPARE(unstated(pageName, {__VA_ARGS__}), QStringList())

QString deg(double value, const char* pattern) { return fmt(value, pattern) + "°"; }
QString pct(double value, const char* pattern) { return fmt(value, pattern) + " %"; }

double tableIndex(history::TableId id) {
    const auto& t = history::historicalTable(id);
    const auto fit =
        history::fitSines(history::pairsFromLists(t.incidence, t.refraction), history::leavesDenserMedium(id));
    return fit.index.value_or(0.0);
}

double keplerRatio(history::TableId id) {
    const auto& t = history::historicalTable(id);
    return history::keplerModel(history::pairsFromLists(t.incidence, t.refraction)).ratio.value_or(0.0);
}

}  // namespace

class TestGuideFigures : public QObject {
    Q_OBJECT
private slots:
    void bench() {
        Block left;
        left.direction = 1;
        Block right = left;
        right.direction = 2;
        STATES("bench.md", fmt(runIncidenceSeries(left, 0.0).meanIndex.value_or(0), "0.0000"),
               fmt(runIncidenceSeries(right, 0.0).meanIndex.value_or(0), "0.0000"),
               deg(runCriticalAngle(right, 0.0)->angleDegrees, "0.00"));
        // The sweep carried to the data screen as the list transfers it
        // (incidence to 0.1°, refraction to 0.01°) and analysed as typed data.
        for (const Block& block : {left, right}) {
            BenchSeries series;
            series.recordSweep(block, runIncidenceSeries(block, 0.0));
            std::vector<double> incidence, refraction;
            for (const MeasuredPair& p : series.measuredPairs()) {
                incidence.push_back(fmt(p.incidenceDegrees, "0.0").toDouble());
                refraction.push_back(fmt(p.refractionDegrees, "0.00").toDouble());
            }
            const auto fit = history::fitSines(history::pairsFromLists(incidence, refraction), false);
            QVERIFY(fit.index);
            STATES("list_of_data.md", "**" + fmt(*fit.index, "0.0000") + "**");
        }
        STATES("list_of_data.md", deg(std::stod(*history::expectedRows(1.5)[2].refraction), "0.00"));  // at 30°
    }

    // The lessons on the bench: the angles LIST OF DATA shows, the means,
    // the critical angle, and the readings to half a degree analysed.
    void benchLessons() {
        Block left, right;
        left.direction = 1;
        right.direction = 2;
        BenchSeries into, outOf;
        into.recordSweep(left, runIncidenceSeries(left, 0.0));
        outOf.recordSweep(right, runIncidenceSeries(right, 0.0));
        QStringList angles, halfDegrees, leaving;
        std::vector<double> incidence, readings;
        for (const SeriesReading& r : into.readings())
            if (r.incidenceDegrees >= 10) {
                angles << fmt(*r.refractionDegrees, "0.00");
                incidence.push_back(r.incidenceDegrees);
                readings.push_back(std::round(*r.refractionDegrees * 2) / 2);
                halfDegrees << fmt(readings.back(), "0.0");
            }
        for (const SeriesReading& r : outOf.readings())
            if (r.refractionDegrees && r.incidenceDegrees >= 10) leaving << fmt(*r.refractionDegrees, "0.00");
        QCOMPARE(outOf.readings().back().reading, RayReading::TotalReflection);  // at 80°
        const QString mean = fmt(runIncidenceSeries(left, 0.0).meanIndex.value_or(0), "0.0000");
        const QString critical = fmt(runCriticalAngle(right, 0.0)->angleDegrees, "0.00");
        QCOMPARE(lessonFiguresAmiss("snell_bench.md", angles + QStringList{mean, critical, fmt(left.index, "0.0")}),
                 QStringList());
        QCOMPARE(lessonFiguresAmiss(
                     "critical_angle.md",
                     leaving + QStringList{critical, fmt(left.index, "0.0"),
                                           fmt(runIncidenceSeries(right, 0.0).meanIndex.value_or(0), "0.0000"),
                                           fmt(*criticalAngleDegrees(2.0), "0.00"), fmt(2.0, "0.0")}),
                 QStringList());
        // As LIST OF DATA hands the sweep over: incidence to 0.1°, refraction to 0.01°.
        std::vector<double> handedI, handedR;
        for (const MeasuredPair& p : into.measuredPairs()) {
            handedI.push_back(fmt(p.incidenceDegrees, "0.0").toDouble());
            handedR.push_back(fmt(p.refractionDegrees, "0.00").toDouble());
        }
        const auto handed = history::fitSines(history::pairsFromLists(handedI, handedR), false);
        const auto fit = history::fitSines(history::pairsFromLists(incidence, readings), false);
        QVERIFY(fit.index && fit.statistics.indexError);
        QCOMPARE(
            lessonFiguresAmiss(
                "measuring_index.md",
                halfDegrees + QStringList{fmt(*handed.index, "0.0000"), fmt(*handed.statistics.indexError, "0.0000"),
                                          fmt(*handed.statistics.rSquared, "0.0000"), fmt(left.index, "0.0"),
                                          fmt(*fit.index, "0.0000"), fmt(*fit.statistics.indexError, "0.0000"),
                                          fmt(fit.statistics.rSquared.value_or(0), "0.0000")}),
            QStringList());
    }

    void meanError() {
        Block block;
        block.direction = 1;
        const MeanErrorCurve curve = computeMeanErrorCurve(block, 5.0, 1.5);
        auto best = curve.points.front();
        for (const auto& p : curve.points)
            if (p.errorPercent < best.errorPercent) best = p;
        STATES("mean_error.md", pct(curve.points.front().errorPercent, "0.0"),
               pct(curve.points.back().errorPercent, "0.0"), pct(best.errorPercent, "0.00"),
               "radius **" + fmt(best.radius, "0") + "**");
        QCOMPARE(computeMeanErrorCurve(block, 0.0, 1.5).points[20].errorPercent, 0.0);
    }

    void historicalTables() {
        using history::TableId;
        // Witelo's light leaves the glass: the screen prints n of air in glass.
        const double witelo = tableIndex(TableId::Vitello_Glass);
        STATES("data_screen.md", fmt(tableIndex(TableId::Ptolemy), "0.000"),
               fmt(tableIndex(TableId::ptolemy2), "0.000"), fmt(tableIndex(TableId::Newt), "0.000"),
               fmt(tableIndex(TableId::newt2), "0.000"), "k = " + fmt(keplerRatio(TableId::Ptolemy), "0.00"),
               fmt(witelo, "0.000"), fmt(1.0 / witelo, "0.000"));
        STATES("sine_graph.md", fmt(tableIndex(TableId::Ptolemy), "0.000"), fmt(tableIndex(TableId::Newt), "0.000"));
        STATES("angle_graph.md", "k = " + fmt(keplerRatio(TableId::ptolemy2), "0.00"));

        // Ptolemy's glass table with its differences, the laws laid over it,
        // and his water table against the proportional law and Snell's.
        const auto& glass = history::historicalTable(TableId::Ptolemy);
        QStringList ptolemy{fmt(tableIndex(TableId::Ptolemy), "0.000"), fmt(keplerRatio(TableId::Ptolemy), "0.00")};
        for (std::size_t k = 0; k < glass.refraction.size(); ++k) {
            ptolemy << QString::fromStdString(history::shortestDecimal(glass.refraction[k]));
            if (k > 0)
                ptolemy << QString::fromStdString(
                    history::shortestDecimal(glass.refraction[k] - glass.refraction[k - 1]));
        }
        const auto& water = ptolemy_fit::waterSet();
        ptolemy << fmt(ptolemy_fit::proportionalRatio(water), "0.00")
                << fmt(ptolemy_fit::snellRefraction(water).back().value_or(0), "0.0");
        ptolemy.removeDuplicates();
        QCOMPARE(lessonFiguresAmiss("ptolemy_to_snell.md", ptolemy), QStringList());
    }

    void instruments() {
        // The body bar's ends as the page reads them, and the widest bar values
        // at which the body still hides a target of the smallest and largest size,
        // found by walking the bar as a pupil would.
        const auto lastCovering = [](double targetAngle) {
            int last = 0;
            for (int value = 0; value <= 300; ++value) {
                const auto view = ptolemy::sightView(20, ptolemy::airBodyAngle(20, value, targetAngle), targetAngle);
                if (!view || !view->covered) break;
                last = value;
            }
            return last;
        };
        const int small = lastCovering(0.5);
        const int large = lastCovering(10.0);
        STATES("ptolemy_instrument.md", deg(*ptolemy::expectedAirAngle(20), "0.0"),
               deg(*ptolemy::expectedAirAngle(40), "0.0"), deg(ptolemy::guardWaterAngle(88).angle, "0"),
               "**−" + fmt(-ptolemy::bodyDisplacement(-200), "0.00") + "°**",
               "**+" + fmt(ptolemy::bodyDisplacement(300), "0.00") + "°**", QStringLiteral("−%1 to %1").arg(small),
               "±" + deg(ptolemy::bodyDisplacement(small), "0.00"),
               "±" + deg(ptolemy::bodyDisplacement(large), "0.00"));

        const auto& water = ptolemy_fit::waterSet();
        const auto snell = ptolemy_fit::snellRefraction(water);
        QCOMPARE(fmt(snell[6].value_or(0), "0.0"), fmt(water.refraction[6], "0.0"));  // they agree at 60°
        STATES("ptolemy_fitting.md", "c = **" + fmt(ptolemy_fit::proportionalRatio(water), "0.00"),
               deg(water.refraction.back(), "0"), deg(snell.back().value_or(0), "0.0"),  // at 80°
               deg(water.refraction[6], "0.0"));

        STATES("alhaytham_instrument.md", deg(alhaytham::refractionInWaterDegrees(60), "0.0"),
               deg(alhaytham::refractionInWaterDegrees(40), "0.0"));
        const auto broken = [](double n) {
            for (const auto& s : alhaytham::checkSteps(n))
                if (s.rule5Violated || s.rule6Violated) return s.incidenceDegrees;
            return 0;
        };
        QCOMPARE(broken(1.33), 0);
        QCOMPARE(broken(2.0), 1);
        QVERIFY(broken(0.5) > 0);
        STATES("alhaytham_rules.md", QStringLiteral("from **%1°**").arg(broken(1.9)));
    }

    void interpretations() {
        using namespace kymatiko;
        const Refraction at40 = refract(radians(40), 1.5);
        const Fresnel f = fresnel(at40, 1.5);
        const Shares s = shares(f);
        const EnergyShares e = *energyShares(at40, 1.5);
        STATES("wave_panel.md", pct(s.reflected, "0.00"), pct(s.refracted, "0.00"), pct(100 * f.rs * f.rs, "0.0"),
               pct(shares(fresnel(refract(radians(80), 1.5), 1.5)).reflected, "0.00"),
               deg(*kymatiko::criticalAngleDegrees(1 / 1.5), "0.00"), pct(100 * e.reflectedS, "0.00"),
               deg(*brewsterAngleDegrees(1.5), "0.00"), pct(100 * e.reflectedP, "0.00"));
        STATES("wave_screen.md", deg(degrees(at40.refraction), "0.0"), pct(100 * e.reflectedS, "0.00"),
               pct(100 * e.transmittedS, "0.00"));

        // Least time between bodies 300 units apart across the boundary.
        const kymatiko::Point a{100, 100}, c{400, 400};
        const double boundary = 250;
        const auto search = findLeastTime(a, c, boundary, speedsFor(SpeedLaw::Fermat, 1.5));
        const auto sinRatioAt = [&](double x) {
            return ((c.x - x) / std::hypot(c.x - x, c.y - boundary)) /
                   ((x - a.x) / std::hypot(x - a.x, boundary - a.y));
        };
        STATES("corpuscles.md", fmt(sinRatioAt(search.bestX), "0.000"));
        QCOMPARE(
            lessonFiguresAmiss(
                "why_light_bends.md",
                {fmt(1.5, "0.00"), fmt(degrees(at40.refraction), "0.00"), fmt(s.reflected, "0.00"),
                 fmt(s.refracted, "0.00"), fmt(100 * e.reflectedS, "0.00"), fmt(100 * e.transmittedS, "0.00"),
                 fmt(100 * e.reflectedP, "0.00"), fmt(*brewsterAngleDegrees(1.5), "0.00"),
                 fmt(*kymatiko::criticalAngleDegrees(0.5), "0.00"), fmt(speedsFor(SpeedLaw::Fermat, 1.5).upper, "0.00"),
                 fmt(speedsFor(SpeedLaw::Fermat, 1.5).lower, "0.00"),
                 fmt(speedsFor(SpeedLaw::Descartes, 1.5).lower, "0.00")}),
            QStringList());
        // Within one step of the search the sines obey n = 1.5.
        const double step = (c.x - a.x) / LeastTimeSearch::kCandidates;
        QVERIFY(std::min(sinRatioAt(search.bestX - step), sinRatioAt(search.bestX + step)) <= 1.5);
        QVERIFY(std::max(sinRatioAt(search.bestX - step), sinRatioAt(search.bestX + step)) >= 1.5);
    }
};

QTEST_MAIN(TestGuideFigures)
#include "test_guide_figures.moc"
