#include <QtTest>

#include <cmath>
#include <filesystem>
#include <limits>
#include <fstream>
#include <string>

#include "history/data_pairs.h"
#include "history/historical_tables.h"
#include "history/history_notes.h"
#include "history/refraction_laws.h"
#include "semicircle/measurement_file.h"

using namespace history;

namespace {

std::vector<AnglePair> tablePairs(TableId id) {
    const HistoricalTable& t = historicalTable(id);
    return pairsFromLists(t.incidence, t.refraction);
}

double fittedIndex(TableId id) { return fitSines(tablePairs(id), leavesDenserMedium(id)).index.value_or(-1.0); }

}  // namespace

class TestDataLaws : public QObject {
    Q_OBJECT
private slots:
    // The tables as the lists show them, and the index each one gives:
    // water near 4/3 and glass near 3/2, as the historical figures should.
    void tablesAndTheirIndices() {
        QCOMPARE(int(historicalTables().size()), 8);
        for (const HistoricalTable& t : historicalTables()) {
            QCOMPARE(t.incidence.size(), t.refraction.size());
            QCOMPARE(&historicalTable(t.id), &t);
        }
        QCOMPARE(historicalTable(TableId::Newt).incidence.size(), std::size_t(12));
        QCOMPARE(historicalTable(TableId::newt2).incidence.size(), std::size_t(7));
        QCOMPARE(shortestDecimal(historicalTable(TableId::Alhazen2).refraction[0]), std::string("7.54"));
        QCOMPARE(shortestDecimal(historicalTable(TableId::Newt).refraction[11]), std::string("40.1833"));
        QCOMPARE(shortestDecimal(historicalTable(TableId::Ptolemy).refraction[1]), std::string("13.5"));
        QCOMPARE(shortestDecimal(historicalTable(TableId::newt2).incidence[0]), std::string("0"));
        QCOMPARE(shortestDecimal(-0.0), std::string("0"));
        QCOMPARE(historicalTable(TableId::Vitello_Glass).refraction.back(), 118.0);  // kept, not clipped

        QCOMPARE(historicalTable(TableId::Vitello_water).caption, std::string("Witelo Data: From Water  to  Airνερό σε αέρα "));
        QCOMPARE(historicalTable(TableId::Ptolemy).increfTitle,
                 std::string("REFRACTION ANGLE VX INCIDENCE ANGLE Γωνία διάθλασης vs γωνία πρόσπτωσης"));
        QCOMPARE(historicalTable(TableId::Alhazen).incidenceHeading, std::string(" incidence Πρόσπτωση"));

        QVERIFY(std::fabs(fittedIndex(TableId::Ptolemy) - 1.5195) < 5e-4);
        QVERIFY(std::fabs(fittedIndex(TableId::ptolemy2) - 1.3303) < 5e-4);
        QVERIFY(std::fabs(fittedIndex(TableId::Alhazen2) - 1.3145) < 5e-4);
        QVERIFY(std::fabs(fittedIndex(TableId::Newt) - 1.5499) < 5e-4);
        QVERIFY(std::fabs(fittedIndex(TableId::newt2) - 1.3333) < 5e-4);
        // Al Haytham's glass repeats Ptolemy's: the very same fit.
        const SineFit p = fitSines(tablePairs(TableId::Ptolemy), false);
        const SineFit a = fitSines(tablePairs(TableId::Alhazen), false);
        QCOMPARE(p.line->slope, a.line->slope);
        QCOMPARE(p.line->intercept, a.line->intercept);
    }

    // Witelo's tables leave the glass or water: only the pairs below 90°
    // are fitted (10° … 60°), every pair is still there to plot.
    void witeloFitsOnlyTheMeasurablePairs() {
        const SineFit glass = fitSines(tablePairs(TableId::Vitello_Glass), true);
        QCOMPARE(glass.fittedPairs, 6);
        QCOMPARE(glass.sinIncidence.size(), std::size_t(8));
        QVERIFY(std::fabs(*glass.index - 0.8731) < 5e-4);
        QCOMPARE(fitSines(tablePairs(TableId::Vitello_water), true).fittedPairs, 6);
        // The same pairs fitted whole would give another line.
        QVERIFY(fitSines(tablePairs(TableId::Vitello_Glass), false).line->slope != glass.line->slope);
    }

    void fitsThatCannotBeMade() {
        QVERIFY(!fitSines({}, false).line);
        QVERIFY(!fitSines({{30.0f, 20.0f}}, false).line);                     // one pair
        QVERIFY(!fitSines({{30.0f, 20.0f}, {30.0f, 25.0f}}, false).line);     // one incidence
        const SineFit flat = fitSines({{10.0f, 20.0f}, {50.0f, 20.0f}}, false);
        QVERIFY(flat.line && !flat.index);                                     // slope 0: no index
        QVERIFY(!fitSines({{10.0f, 95.0f}, {20.0f, 100.0f}}, true).line);     // nothing below 90°
    }

    // The pupil's grid: rows run until a blank incidence, a row without a
    // refraction angle is left out, and anything that is not an angle stops
    // the reading with its row and column.
    void typedRows() {
        const TypedReading ok = readTypedPairs({{"10", "7"}, {" 20 ", ""}, {"30", "19,5"}, {"", "99"}, {"40", "25"}});
        QCOMPARE(int(ok.pairs.size()), 2);
        QCOMPARE(ok.pairs[1].incidence, 30.0f);
        QCOMPARE(ok.pairs[1].refraction, 19.5f);  // a Greek decimal comma
        QVERIFY(!ok.error);

        const std::string digits400(400, '9');
        struct Bad { std::string text; TypedRowError::Kind kind; };
        for (const Bad& bad : {Bad{"abc", TypedRowError::Kind::NotANumber}, Bad{"1,5.0", TypedRowError::Kind::NotANumber},
                               Bad{"1,,5", TypedRowError::Kind::NotANumber},
                               Bad{"1e999", TypedRowError::Kind::NotANumber}, Bad{"nan", TypedRowError::Kind::NotANumber},
                               Bad{digits400, TypedRowError::Kind::NotANumber},
                               Bad{"181", TypedRowError::Kind::OutOfRange}, Bad{"-1e300", TypedRowError::Kind::OutOfRange}}) {
            const TypedReading r = readTypedPairs({{"10", "7"}, {"20", bad.text}});
            QVERIFY2(r.error && r.pairs.empty(), bad.text.c_str());
            QCOMPARE(r.error->row, 2);
            QVERIFY(r.error->inRefraction);
            QVERIFY(r.error->kind == bad.kind);
        }
        const TypedReading inIncidence = readTypedPairs({{"x", "7"}});
        QVERIFY(inIncidence.error && !inIncidence.error->inRefraction && inIncidence.error->row == 1);
    }

    // Kepler takes the leading run below 45° in the order entered.
    void keplerRun() {
        const KeplerModel ptolemy = keplerModel(tablePairs(TableId::Ptolemy));
        QCOMPARE(ptolemy.runLength, 4);  // 10, 20, 30, 40
        QVERIFY(std::fabs(*ptolemy.ratio - 0.6) < 1e-6);
        const KeplerModel newton = keplerModel(tablePairs(TableId::newt2));
        QCOMPARE(newton.runLength, 3);  // (0, 0), 15, 30
        QVERIFY(std::fabs(*newton.ratio - 0.733889) < 1e-5);
        // Unsorted entries: the run stops at the first large angle.
        QCOMPARE(keplerModel({{10, 7}, {50, 30}, {20, 13}}).runLength, 1);
        QVERIFY(!keplerModel({{10, 7}, {50, 30}, {20, 13}}).ratio);
        QVERIFY(!keplerModel({{60, 35}}).ratio);
    }

    void snellCurves() {
        // Into glass: every degree to 90°, where r is the critical angle.
        const auto into = snellCurve(1.5, false);
        QCOMPARE(int(into.size()), 91);
        QVERIFY(std::fabs(into.back().refraction - std::asin(1.0 / 1.5) * 180.0 / M_PI) < 1e-9);
        QVERIFY(std::fabs(into[30].refraction - 19.4712206) < 1e-6);
        // Out of glass: only while sin i < 1/n, so the curve ends just below
        // the critical angle (41.8°) and never reaches r = 90°.
        const auto out = snellCurve(1.5, true);
        QCOMPARE(out.back().incidence, 41.0);
        QVERIFY(std::sin(out.back().incidence * M_PI / 180.0) < 1.0 / 1.5);
        QVERIFY(out.back().refraction < 90.0);
        // An index below 1 into the "denser" medium meets total reflection too.
        QCOMPARE(snellCurve(0.8, false).back().incidence, 53.0);
        // n = 1: sin i / n reaches 1 exactly at 90°, where arcSine(1) = 90°.
        QCOMPARE(snellCurve(1.0, false).back().refraction, 90.0);
        for (double bad : {0.0, -1.5, std::nan(""), std::numeric_limits<double>::infinity()}) QVERIFY(snellCurve(bad, false).empty());
        for (const auto& curve : {into, out, snellCurve(0.5, true), snellCurve(3.0, false)})
            for (const auto& p : curve) QVERIFY(std::isfinite(p.refraction));
    }

    void expectedValues() {
        const auto glass = expectedRows(1.5);
        QCOMPARE(int(glass.size()), 9);
        QCOMPARE(glass[2].incidence, 30);
        QCOMPARE(*glass[2].refraction, std::string("19.471221"));
        QCOMPARE(*glass[8].refraction, std::string("41.810315"));
        const auto rare = expectedRows(0.75);  // critical angle 48.6°
        QCOMPARE(int(rare.size()), 8);
        QCOMPARE(*rare[3].refraction, std::string("58.98697"));
        for (int k = 4; k < 8; ++k) QVERIFY(!rare[k].refraction);
        QVERIFY(expectedRows(0.0).empty() && expectedRows(-2.0).empty());
    }

    void notes() {
        const auto& all = historyNotes();
        QCOMPARE(int(all.size()), 10);
        const char* order[] = {"alhaytham", "Descarteslaw", "Fermatlaw", "fresnellaw", "Herolaw",
                               "Keplerlaw", "Newtonlaw",  "Ptolemylaw", "Snellaw",   "Witellolaw"};
        for (int k = 0; k < 10; ++k) {
            QCOMPARE(all[k].itemName, std::string(order[k]));
            QVERIFY(!all[k].greek.empty() && !all[k].english.empty());
            // Greek first, English after it.
            const std::string text = noteText(all[k]);
            QVERIFY(text.find(all[k].greek.front()) < text.find(all[k].english.front()));
        }
        QCOMPARE(all[7].title, std::string("ABOUT PTOLEMY"));
        // Pieces that meet without a blank start a new line, not one word.
        QVERIFY(noteText(all[3]).find("μερικής\nανάκλασης") != std::string::npos);
        QVERIFY(noteText(all[8]).find("γνωστό με ποια") != std::string::npos);
        QCOMPARE(figureCaptions(NoteFigure::Hero)[1], std::string(" & EH=EH' &  GH=GH\""));
        QCOMPARE(int(figureCaptions(NoteFigure::Fermat).size()), 4);
        QVERIFY(figureCaptions(NoteFigure::None).empty());
    }

    // The sequential reader's last slot, found without reading the others,
    // even in a file of gigabytes; the recall reader's count of positions.
    void lastRecordOfAnyFile() {
        namespace fs = std::filesystem;
        const fs::path dir = fs::temp_directory_path() / ("refraction_last_" + std::to_string(QCoreApplication::applicationPid()));
        fs::create_directories(dir);
        const fs::path file = dir / "fylaxi";
        QVERIFY(!readLastMeasurementRecord(file) && recallPositionCount(file) == 0);

        std::vector<MeasurementRecord> records(3);
        for (int k = 0; k < 3; ++k) records[k].h = 10.0 * (k + 1);
        QVERIFY(writeMeasurementFile(file, records).ok);
        const auto last = readLastMeasurementRecord(file);
        QVERIFY(last && last->position == 3 && last->record.h == 30.0);
        QCOMPARE(recallPositionCount(file), (2 * 128 + 48 + 47) / 48);

        // A sparse 5 GB file: one read, position counted from its size.
        {
            std::ofstream grow(file, std::ios::binary | std::ios::in | std::ios::out);
            grow.seekp(5LL * 1024 * 1024 * 1024 - 1);
            grow.put('\0');
        }
        QElapsedTimer timer;
        timer.start();
        const auto huge = readLastMeasurementRecord(file);
        QVERIFY(huge && huge->position == 5LL * 1024 * 1024 * 1024 / 128);
        QVERIFY(timer.elapsed() < 1000);
        fs::remove_all(dir);
    }
};

QTEST_GUILESS_MAIN(TestDataLaws)
#include "test_data_laws.moc"
