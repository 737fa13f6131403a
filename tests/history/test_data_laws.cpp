#include <QtTest>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <string>

#include "history/data_pairs.h"
#include "history/fit_statistics.h"
#include "history/historical_tables.h"
#include "history/history_notes.h"
#include "history/pupil_table.h"
#include "history/refraction_laws.h"
#include "semicircle/measurement_file.h"

using namespace history;

namespace {

std::vector<AnglePair> tablePairs(TableId id) {
    const HistoricalTable& t = historicalTable(id);
    return pairsFromLists(t.incidence, t.refraction);
}

double fittedIndex(TableId id) { return fitSines(tablePairs(id), leavesDenserMedium(id)).index.value_or(-1.0); }

// The uncertainty and r² by another road: the covariance matrix s²·(XᵀX)⁻¹
// of the normal equations for the slope's variance, and the squared
// correlation of x and y for r², in long double from raw sums.
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
    const long double N = n, det = N * sxx - sx * sx;
    const long double slope = (N * sxy - sx * sy) / det, intercept = (sxx * sy - sx * sxy) / det;
    long double sse = 0;
    for (std::size_t k = 0; k < n; ++k) sse += std::pow(y[k] - (slope * x[k] + intercept), 2.0L);
    const long double r = (N * sxy - sx * sy) / std::sqrt(det * (N * syy - sy * sy));
    return {slope, std::sqrt(sse / (N - 2) * N / det) / (slope * slope), r * r};
}

bool near(double a, long double b, double relative) {
    return std::fabs(a - static_cast<double>(b)) <= relative * std::fabs(static_cast<double>(b)) + 1e-15;
}

}  // namespace

class TestDataLaws : public QObject {
    Q_OBJECT
private slots:
    // The tables as the lists show them, and the index each one gives:
    // water near 4/3 and glass near 3/2, as the historical figures should.
    void tablesAndTheirIndices() {
        for (const HistoricalTable& t : historicalTables()) QCOMPARE(t.incidence.size(), t.refraction.size());
        QCOMPARE(shortestDecimal(historicalTable(TableId::Alhazen2).refraction[0]), std::string("7.54"));
        QCOMPARE(shortestDecimal(historicalTable(TableId::Newt).refraction[11]), std::string("40.1833"));
        QCOMPARE(shortestDecimal(historicalTable(TableId::newt2).incidence[0]), std::string("0"));
        QCOMPARE(shortestDecimal(-0.0), std::string("0"));
        const std::pair<TableId, double> indices[] = {{TableId::Ptolemy, 1.5195},
                                                      {TableId::ptolemy2, 1.3303},
                                                      {TableId::Alhazen2, 1.3145},
                                                      {TableId::Newt, 1.5499},
                                                      {TableId::newt2, 1.3333}};
        for (const auto& [id, index] : indices) QVERIFY(std::fabs(fittedIndex(id) - index) < 5e-4);
        // Al Haytham's glass repeats Ptolemy's: the very same fit.
        const SineFit p = fitSines(tablePairs(TableId::Ptolemy), false);
        const SineFit a = fitSines(tablePairs(TableId::Alhazen), false);
        QVERIFY(p.line->slope == a.line->slope && p.line->intercept == a.line->intercept);
        // Witelo's tables leave the glass or water: only the pairs below 90°
        // are fitted (10° … 60°), every pair is still there to plot.
        const SineFit glass = fitSines(tablePairs(TableId::Vitello_Glass), true);
        QCOMPARE(glass.fittedPairs, 6);
        QCOMPARE(glass.sinIncidence.size(), std::size_t(8));
        QVERIFY(std::fabs(*glass.index - 0.8731) < 5e-4);
        QCOMPARE(fitSines(tablePairs(TableId::Vitello_water), true).fittedPairs, 6);
        // (0,0), (1,1), (2,3) by hand: slope 3/2, Σe² = 1/6, u(slope) = √(1/12),
        // Σ(y − ȳ)² = 14/3. Then every historical table through the analysis's
        // own fit against the independent computation.
        const auto s = fitStatistics({0, 1, 2}, {0, 1, 3}, 3);
        QCOMPARE(*s.slopeError, std::sqrt(1.0 / 12.0));
        QCOMPARE(*s.indexError, std::sqrt(1.0 / 12.0) / 2.25);
        QCOMPARE(*s.rSquared, 1.0 - (1.0 / 6.0) / (14.0 / 3.0));
        QCOMPARE(residuals({0, 1, 2}, {0, 1, 3}, 3, 1.5, -1.0 / 6.0)[1], -1.0 / 3.0);
        for (const HistoricalTable& table : historicalTables()) {
            const SineFit fit = fitSines(tablePairs(table.id), leavesDenserMedium(table.id));
            QVERIFY(fit.index && fit.statistics.indexError && fit.statistics.rSquared);
            const Independent ref =
                independent(fit.sinIncidence, fit.sinRefraction, static_cast<std::size_t>(fit.fittedPairs));
            QVERIFY2(near(*fit.statistics.indexError, ref.indexError, 1e-9), table.itemName.c_str());
            QVERIFY2(near(*fit.statistics.rSquared, ref.rSquared, 1e-12), table.itemName.c_str());
            // The printed index comes from the single-precision slope.
            QVERIFY(std::fabs(*fit.index - 1.0 / static_cast<double>(ref.slope)) < 1e-6 * *fit.index);
        }
        // Points on a line leave no uncertainty; two points leave it undefined,
        // as they do r²; points that cannot be fitted give nothing.
        QVERIFY(!fitSines({}, false).line);
        QVERIFY(!fitSines({{30.0f, 20.0f}}, false).line);                  // one pair
        QVERIFY(!fitSines({{30.0f, 20.0f}, {30.0f, 25.0f}}, false).line);  // one incidence
        const SineFit level = fitSines({{10.0f, 20.0f}, {50.0f, 20.0f}}, false);
        QVERIFY(level.line && !level.index);                               // slope 0: no index
        QVERIFY(!fitSines({{10.0f, 95.0f}, {20.0f, 100.0f}}, true).line);  // nothing below 90°
        std::vector<double> x, y;
        for (int k = 1; k <= 8; ++k) {
            x.push_back(std::sin(10.0 * k * std::numbers::pi / 180.0));
            y.push_back(x.back() / 1.5);
        }
        const auto exact = fitStatistics(x, y, 8);
        QVERIFY(exact.indexError && *exact.indexError < 1e-12 && *exact.rSquared == 1.0);
        const auto two = fitStatistics(x, y, 2);
        QVERIFY(two.points == 2 && !two.slopeError && !two.indexError && !two.rSquared);
        QVERIFY(!fitStatistics({0.5, 0.5, 0.5}, {0.1, 0.2, 0.3}, 3).slopeError);
        QVERIFY(!fitStatistics({0.1, 0.2}, {0.1, 0.2}, 3).slopeError);  // count beyond the arrays
        const auto flat = fitStatistics({0.1, 0.2, 0.3}, {0.5, 0.5, 0.5}, 3);
        QVERIFY(flat.slopeError && !flat.indexError && !flat.rSquared);
    }

    // The pupil's grid: rows run until a blank incidence, a row without a
    // refraction angle is left out, and anything that is not an angle stops
    // the reading with its row and column.
    void typedRowsAndTheLaws() {
        const TypedReading ok = readTypedPairs({{"10", "7"}, {" 20 ", ""}, {"30", "19,5"}, {"", "99"}, {"40", "25"}});
        QCOMPARE(int(ok.pairs.size()), 2);
        QCOMPARE(ok.pairs[1].refraction, 19.5f);  // a Greek decimal comma
        QVERIFY(!ok.error);
        using Kind = TypedRowError::Kind;
        const std::pair<std::string, Kind> bad[] = {
            {"abc", Kind::NotANumber},   {"1,5.0", Kind::NotANumber}, {"1,,5", Kind::NotANumber},
            {"1e999", Kind::NotANumber}, {"nan", Kind::NotANumber},   {std::string(400, '9'), Kind::NotANumber},
            {"181", Kind::OutOfRange},   {"-1e300", Kind::OutOfRange}};
        for (const auto& [text, kind] : bad) {
            const TypedReading r = readTypedPairs({{"10", "7"}, {"20", text}});
            QVERIFY2(r.error && r.pairs.empty() && r.error->row == 2 && r.error->inRefraction, text.c_str());
            QVERIFY(r.error->kind == kind);
        }
        const TypedReading inIncidence = readTypedPairs({{"x", "7"}});
        QVERIFY(inIncidence.error && !inIncidence.error->inRefraction && inIncidence.error->row == 1);
        // Kepler takes the leading run below 45° in the order entered.
        const KeplerModel ptolemy = keplerModel(tablePairs(TableId::Ptolemy));
        QVERIFY(ptolemy.runLength == 4 && std::fabs(*ptolemy.ratio - 0.6) < 1e-6);  // 10, 20, 30, 40
        const KeplerModel newton = keplerModel(tablePairs(TableId::newt2));
        QVERIFY(newton.runLength == 3 && std::fabs(*newton.ratio - 0.733889) < 1e-5);  // (0, 0), 15, 30
        // Unsorted entries: the run stops at the first large angle.
        const KeplerModel unsorted = keplerModel({{10, 7}, {50, 30}, {20, 13}});
        QVERIFY(unsorted.runLength == 1 && !unsorted.ratio && !keplerModel({{60, 35}}).ratio);
        // Into glass: every degree to 90°, where r is the critical angle.
        const auto into = snellCurve(1.5, false);
        QCOMPARE(int(into.size()), 91);
        QVERIFY(std::fabs(into.back().refraction - std::asin(1.0 / 1.5) * 180.0 / M_PI) < 1e-9);
        QVERIFY(std::fabs(into[30].refraction - 19.4712206) < 1e-6);
        // Out of glass: only while sin i < 1/n, so the curve ends just below
        // the critical angle (41.8°) and never reaches r = 90°.
        const auto out = snellCurve(1.5, true);
        QCOMPARE(out.back().incidence, 41.0);
        QVERIFY(out.back().refraction < 90.0);
        QCOMPARE(snellCurve(0.8, false).back().incidence, 53.0);   // total reflection into a "denser" n < 1
        QCOMPARE(snellCurve(1.0, false).back().refraction, 90.0);  // sin i / n reaches 1 exactly at 90°
        for (double index : {0.0, -1.5, std::nan(""), std::numeric_limits<double>::infinity()})
            QVERIFY(snellCurve(index, false).empty());
        for (const auto& curve : {into, out, snellCurve(0.5, true), snellCurve(3.0, false)})
            for (const auto& p : curve) QVERIFY(std::isfinite(p.refraction));

        const auto glass = expectedRows(1.5);
        QCOMPARE(int(glass.size()), 9);
        QCOMPARE(*glass[8].refraction, std::string("41.810315"));
        const auto rare = expectedRows(0.75);  // critical angle 48.6°
        QCOMPARE(int(rare.size()), 8);
        QCOMPARE(*rare[3].refraction, std::string("58.98697"));
        for (int k = 4; k < 8; ++k) QVERIFY(!rare[k].refraction);
        QVERIFY(expectedRows(0.0).empty() && expectedRows(-2.0).empty());
        for (const HistoryNote& note : historyNotes()) {
            // Greek first, English after it.
            const std::string text = noteText(note);
            QVERIFY(text.find(note.greek.front()) < text.find(note.english.front()));
        }
        // Pieces that meet without a blank start a new line, not one word.
        QVERIFY(noteText(historyNotes()[3]).find("μερικής\nανάκλασης") != std::string::npos);
        QVERIFY(noteText(historyNotes()[8]).find("γνωστό με ποια") != std::string::npos);
        // The pupil's CSV tables: comma and Greek spreadsheet forms, and every
        // bad file refused naming its line (0: the file as a whole).
        const TableFileReading plain = parseTableFile("incidence,refraction\r\n10,6.6\n20, 13.2\n30,\n\n");
        QVERIFY(!plain.error && plain.rows.size() == 3);
        QCOMPARE(plain.rows[2].refraction, std::string(""));  // a row may wait for its refraction
        const TableFileReading greek =
            parseTableFile("\xEF\xBB\xBF\"πρόσπτωση\";\"διάθλαση\"\n10;6,6\n\"20\";\"13,25\"\n");
        QVERIFY(!greek.error && greek.rows[1].refraction == "13.25");
        QVERIFY(!parseTableFile("10,7\n20,13\n").error);  // no header at all
        std::string tooLong = "i,r\n";
        for (int k = 0; k < kLargestTableRows; ++k) tooLong += std::to_string(k % 90) + ",1\n";
        QCOMPARE(parseTableFile(tooLong).rows.size(), std::size_t(kLargestTableRows));  // far longer than the grid
        tooLong += "5,3\n";
        const std::pair<std::string, int> broken[] = {{"i,r\n10,7,3\n", 2},
                                                      {"i,r\n10\n", 2},

                                                      {"i,r\n10,7\n\n20,13\n", 3},
                                                      {"i,r\n19,5,13\n", 2},
                                                      {"i,r\n10,7\n200,7\n", 3},

                                                      {tooLong, kLargestTableRows + 2},
                                                      {std::string("i,r\n10,7\n\x01\x02\xff,3\n", 14), 3},
                                                      {"i,r\n1\xC3,2\n", 2},
                                                      {"i,r\n10,\xED\xA0\x80\n", 2},
                                                      {"", 0},
                                                      {"i,r\n", 0},
                                                      {std::string(kLargestTableFile + 1, '1'), 0}};
        for (const auto& [text, line] : broken) {
            const TableFileReading r = parseTableFile(text);
            QVERIFY2(r.error && r.rows.empty() && r.error->line == line, text.substr(0, 30).c_str());
            QVERIFY(!r.error->english.empty() && !r.error->greek.empty());
        }
        // A cell quoted in a message is cut short and cannot reverse the
        // text after it: direction controls show as escapes.
        const TableFileReading reversed = parseTableFile(
            "i,r\n10,7\xE2\x80\xAE"
            "12\n");  // U+202E
        QVERIFY(reversed.error);
        for (const std::string& text : {reversed.error->english, reversed.error->greek})
            QVERIFY(text.find("\xE2\x80\xAE") == std::string::npos && text.find("\\u202E") != std::string::npos);
        const TableFileReading digits = parseTableFile("i,r\n10," + std::string(60000, '9') + "\n");
        QVERIFY(digits.error && digits.error->english.size() < 120 && digits.error->greek.size() < 160);
        // The sequential reader's last slot, found without reading the others,
        // even in a file of gigabytes; the recall reader's count of positions.
        namespace fs = std::filesystem;
        const fs::path dir =
            fs::temp_directory_path() / ("refraction_last_" + std::to_string(QCoreApplication::applicationPid()));
        fs::create_directories(dir);
        const fs::path file = dir / "fylaxi";
        QVERIFY(!readLastMeasurementRecord(file) && recallPositionCount(file) == 0);
        std::vector<MeasurementRecord> records(3);
        for (int k = 0; k < 3; ++k) records[k].h = 10.0 * (k + 1);
        QVERIFY(writeMeasurementFile(file, records).ok);
        const auto last = readLastMeasurementRecord(file);
        QVERIFY(last && last->position == 3 && last->record.h == 30.0);
        QCOMPARE(recallPositionCount(file), (2 * 128 + 48 + 47) / 48);
        {  // a sparse 5 GB file: one read, position counted from its size
            std::ofstream grow(file, std::ios::binary | std::ios::in | std::ios::out);
            grow.seekp(5LL * 1024 * 1024 * 1024 - 1);
            grow.put('\0');
        }
        QElapsedTimer timer;
        timer.start();
        const auto huge = readLastMeasurementRecord(file);
        QVERIFY(huge && huge->position == 5LL * 1024 * 1024 * 1024 / 128 && timer.elapsed() < 1000);
        fs::remove_all(dir);
    }
};

QTEST_APPLESS_MAIN(TestDataLaws)
#include "test_data_laws.moc"
