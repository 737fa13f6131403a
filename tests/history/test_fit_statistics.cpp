#include <QtTest>

#include <cmath>
#include <numbers>

#include "history/data_pairs.h"
#include "history/fit_statistics.h"
#include "history/historical_tables.h"

namespace {

// The same figures by another road: the covariance matrix s²·(XᵀX)⁻¹ of the
// normal equations for the slope's variance, and the squared correlation
// of x and y for r², in long double from raw sums.
struct Independent {
    long double slope, indexError, rSquared;
};
Independent independent(const std::vector<double>& x, const std::vector<double>& y, std::size_t n) {
    long double sx = 0, sy = 0, sxx = 0, sxy = 0, syy = 0;
    for (std::size_t k = 0; k < n; ++k) {
        sx += x[k];
        sy += y[k];
        sxx += static_cast<long double>(x[k]) * x[k];
        sxy += static_cast<long double>(x[k]) * y[k];
        syy += static_cast<long double>(y[k]) * y[k];
    }
    const long double N = n;
    const long double det = N * sxx - sx * sx;
    const long double slope = (N * sxy - sx * sy) / det;
    const long double intercept = (sxx * sy - sx * sxy) / det;
    long double sse = 0;
    for (std::size_t k = 0; k < n; ++k) {
        const long double e = y[k] - (slope * x[k] + intercept);
        sse += e * e;
    }
    const long double variance = sse / (N - 2) * N / det;
    const long double r = (N * sxy - sx * sy) / std::sqrt(det * (N * syy - sy * sy));
    return {slope, std::sqrt(variance) / (slope * slope), r * r};
}

bool near(double a, long double b, double relative) {
    return std::fabs(a - static_cast<double>(b)) <= relative * std::fabs(static_cast<double>(b)) + 1e-15;
}

}  // namespace

class TestFitStatistics : public QObject {
    Q_OBJECT
private slots:
    // (0,0), (1,1), (2,3): slope 3/2, residuals 1/6, −1/3, 1/6, Σe² = 1/6,
    // s² = 1/6, Σ(x − x̄)² = 2: u(slope) = √(1/12); Σ(y − ȳ)² = 14/3.
    void byHand() {
        const auto s = history::fitStatistics({0, 1, 2}, {0, 1, 3}, 3);
        QVERIFY(s.slopeError && s.indexError && s.rSquared);
        QCOMPARE(*s.slopeError, std::sqrt(1.0 / 12.0));
        QCOMPARE(*s.indexError, std::sqrt(1.0 / 12.0) / 2.25);
        QCOMPARE(*s.rSquared, 1.0 - (1.0 / 6.0) / (14.0 / 3.0));
        const auto e = history::residuals({0, 1, 2}, {0, 1, 3}, 3, 1.5, -1.0 / 6.0);
        QCOMPARE(e.size(), std::size_t{3});
        QCOMPARE(e[1], -1.0 / 3.0);
    }

    // Every historical table, through the analysis's own sine fit, against
    // the independent computation. The figures are printed for the record.
    void historicalTables() {
        for (const history::HistoricalTable& table : history::historicalTables()) {
            std::vector<history::AnglePair> pairs;
            for (std::size_t k = 0; k < table.incidence.size(); ++k)
                pairs.push_back({static_cast<float>(table.incidence[k]), static_cast<float>(table.refraction[k])});
            const history::SineFit fit = history::fitSines(pairs, history::leavesDenserMedium(table.id));
            QVERIFY(fit.index && fit.statistics.indexError && fit.statistics.rSquared);
            const auto n = static_cast<std::size_t>(fit.fittedPairs);
            const Independent ref = independent(fit.sinIncidence, fit.sinRefraction, n);
            QVERIFY2(near(*fit.statistics.indexError, ref.indexError, 1e-9), table.itemName.c_str());
            QVERIFY2(near(*fit.statistics.rSquared, ref.rSquared, 1e-12), table.itemName.c_str());
            // The printed index comes from the single-precision slope.
            QVERIFY(std::fabs(*fit.index - 1.0 / static_cast<double>(ref.slope)) < 1e-6 * *fit.index);
            qInfo("%-14s n = %.4f ± %.4f, r² = %.5f (%zu pairs)", table.itemName.c_str(), *fit.index,
                  *fit.statistics.indexError, *fit.statistics.rSquared, n);
        }
    }

    // Points exactly on a line leave no uncertainty; two points leave it
    // undefined, as they do r²; points that cannot be fitted give nothing.
    void limits() {
        std::vector<double> x, y;
        for (int k = 1; k <= 8; ++k) {
            x.push_back(std::sin(10.0 * k * std::numbers::pi / 180.0));
            y.push_back(x.back() / 1.5);
        }
        const auto exact = history::fitStatistics(x, y, 8);
        QVERIFY(exact.indexError && *exact.indexError < 1e-12);
        QCOMPARE(*exact.rSquared, 1.0);

        const auto two = history::fitStatistics(x, y, 2);
        QCOMPARE(two.points, 2);
        QVERIFY(!two.slopeError && !two.indexError && !two.rSquared);
        QVERIFY(!history::fitStatistics({0.5, 0.5, 0.5}, {0.1, 0.2, 0.3}, 3).slopeError);
        QVERIFY(!history::fitStatistics({0.1, 0.2}, {0.1, 0.2}, 3).slopeError);  // count beyond the arrays
        // A flat line: the slope is known, the index is not.
        const auto flat = history::fitStatistics({0.1, 0.2, 0.3}, {0.5, 0.5, 0.5}, 3);
        QVERIFY(flat.slopeError && !flat.indexError && !flat.rSquared);
    }
};

QTEST_APPLESS_MAIN(TestFitStatistics)
#include "test_fit_statistics.moc"
