#include <QtTest>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>

#include "semicircle/measurement_file.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::uint8_t> fileBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeBytes(const fs::path& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

MeasurementRecord sample(double k) { return {1.5 + k, -2.25 + k, 3.0 + k, 12.5 + k, 1.4999 + k, 0.125f, 0.6667f}; }

bool same(const MeasurementRecord& a, const MeasurementRecord& b) { return encodeRecord(a) == encodeRecord(b); }

}  // namespace

class TestMeasurementFile : public QObject {
    Q_OBJECT
    QTemporaryDir dir_;
    fs::path folder() const { return fs::path(dir_.path().toStdString()); }
    fs::path file() const { return folder() / kMeasurementFileName; }
    // A recalled record; a missing one reads as a sample no test expects.
    MeasurementRecord recall(long long position) const {
        return recallMeasurementRecord(file(), position).value_or(sample(-99));
    }

private slots:
    void init() { fs::remove_all(file()); }

    // Little-endian doubles and singles; the writer spaces records 128 bytes
    // apart, the recall reads 48-byte positions, so only position 1 finds a
    // whole record. A missing or empty file holds no records.
    void writeThenReadBack() {
        QVERIFY(readMeasurementRecords(file()).empty() && !recallMeasurementRecord(file(), 1));
        writeBytes(file(), {});
        QVERIFY(readMeasurementRecords(file()).empty() && same(recall(1), MeasurementRecord{}));
        const auto bytes = encodeRecord(sample(0));
        // 1.5 = 0x3FF8… at 0, −2.25 = 0xC002… at 8, 12.5 = 0x4029… at 24, 0.125f = 0x3E000000 at 40.
        QVERIFY(bytes[0] == 0x00 && bytes[6] == 0xF8 && bytes[7] == 0x3F && bytes[15] == 0xC0 && bytes[30] == 0x29);
        QVERIFY(bytes[40] == 0x00 && bytes[43] == 0x3E && decodeRecord(bytes.data()).slope == 0.6667f);

        const std::vector<MeasurementRecord> records{sample(0), sample(1), sample(2), sample(3), sample(4)};
        const WriteOutcome outcome = writeMeasurementFile(file(), records);
        QVERIFY2(outcome.ok, outcome.error.c_str());
        QCOMPARE(fs::file_size(file()), std::uintmax_t{4 * 128 + 48});
        const auto read = readMeasurementRecords(file());
        QCOMPARE(read.size(), records.size());
        for (std::size_t k = 0; k < read.size(); ++k) QVERIFY(same(read[k], records[k]));

        QVERIFY(same(recall(1), records[0]));
        QVERIFY(same(recall(2), MeasurementRecord{}));  // bytes 48…95: the gap after the first record
        QCOMPARE(recall(3).index, records[1].h);        // bytes 96…143 run into the second slot
        QVERIFY(same(recall(1000), MeasurementRecord{}) &&
                same(recall(1LL << 62), MeasurementRecord{}));  // past the end
        QVERIFY(!recallMeasurementRecord(file(), 0) && !recallMeasurementRecord(file(), -3));
        for (const auto& entry : fs::directory_iterator(folder())) QVERIFY(entry.path() == file());
        // A longer file keeps its tail beyond the new records.
        std::vector<std::uint8_t> old(1000);
        for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<std::uint8_t>(i * 7 + 1);
        writeBytes(file(), old);
        QVERIFY(writeMeasurementFile(file(), {sample(0), sample(1)}).ok);
        const auto kept = fileBytes(file());
        QCOMPARE(kept.size(), old.size());
        QVERIFY(std::equal(kept.begin() + 48, kept.begin() + 128, old.begin() + 48));
        QVERIFY(std::equal(kept.begin() + 176, kept.end(), old.begin() + 176));
        QVERIFY(same(decodeRecord(kept.data() + 128), sample(1)));
        Block b{0.0, 0.0, 100.0, 2.0 * std::numbers::pi / 180.0, 1, 1.5};
        const auto series = runMeasurementSeries(b, 0.5);
        QCOMPARE(series.size(), std::size_t{81});
        // Nested loops: height outermost, then x, y and the tilt innermost.
        QVERIFY(series[0].h == 0.5 && series[0].xc == 0.0 && std::fabs(series[0].angle - 2.0) < 1e-12);
        QVERIFY(std::fabs(series[1].angle - 3.0) < 1e-12 && series[3].yc == 1.0 && series[9].xc == 1.0);
        QVERIFY(series[27].h == 1.5 && series[80].h == 2.5);
        for (const MeasurementRecord& r : series) {
            QCOMPARE(r.index, 1.0 / static_cast<double>(r.slope));
            QVERIFY(std::fabs(r.index - 1.5) < 0.1);  // near the centre, near n
        }
        b.tilt = 0.0;  // exactly through the centre of an upright block the fit gives n
        const auto centred = runMeasurementSeries(b, 0.0);
        QVERIFY(std::fabs(centred[0].index - 1.5) < 1e-6 && std::fabs(centred[0].intercept) < 1e-6f);
        b.radius = 5.0;  // a ray far from a small block measures nothing
        QVERIFY(runMeasurementSeries(b, 80.0).empty());
    }
};

QTEST_APPLESS_MAIN(TestMeasurementFile)
#include "test_measurement_file.moc"
