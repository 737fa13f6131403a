#include <QtTest>

#include <unistd.h>

#include <cmath>
#include <cstring>
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

MeasurementRecord sample(double k) {
    MeasurementRecord r;
    r.h = 1.5 + k;
    r.xc = -2.25 + k;
    r.yc = 3.0 + k;
    r.angle = 12.5 + k;
    r.index = 1.4999 + k;
    r.intercept = 0.125f;
    r.slope = 0.6667f;
    return r;
}

bool sameRecord(const MeasurementRecord& a, const MeasurementRecord& b) {
    return a.h == b.h && a.xc == b.xc && a.yc == b.yc && a.angle == b.angle && a.index == b.index &&
           a.intercept == b.intercept && a.slope == b.slope;
}

bool noTemporariesLeft(const fs::path& dir) {
    for (const auto& entry : fs::directory_iterator(dir)) {
        if (entry.path().filename().string().find(".tmp-") != std::string::npos) return false;
    }
    return true;
}

}  // namespace

class TestMeasurementFile : public QObject {
    Q_OBJECT
    QTemporaryDir dir_;
    fs::path file() const { return fs::path(dir_.path().toStdString()) / kMeasurementFileName; }

private slots:
    void init() {
        std::error_code ec;
        fs::remove_all(file(), ec);
    }

    void recordLayout() {
        const auto bytes = encodeRecord(sample(0));
        QCOMPARE(bytes.size(), std::size_t{48});
        // 1.5 = 0x3FF8000000000000, little-endian: the exponent byte last.
        QCOMPARE(bytes[0], std::uint8_t{0x00});
        QCOMPARE(bytes[6], std::uint8_t{0xF8});
        QCOMPARE(bytes[7], std::uint8_t{0x3F});
        // −2.25 = 0xC002000000000000 at offset 8, 12.5 = 0x4029000000000000 at 24.
        QCOMPARE(bytes[15], std::uint8_t{0xC0});
        QCOMPARE(bytes[30], std::uint8_t{0x29});
        // The two singles: 0.125f = 0x3E000000 at 40; the slope at 44.
        QCOMPARE(bytes[40], std::uint8_t{0x00});
        QCOMPARE(bytes[43], std::uint8_t{0x3E});
        std::uint32_t slopeBits = 0;
        const float slope = 0.6667f;
        std::memcpy(&slopeBits, &slope, 4);
        QCOMPARE(bytes[44], static_cast<std::uint8_t>(slopeBits & 0xFF));
        QCOMPARE(bytes[47], static_cast<std::uint8_t>(slopeBits >> 24));
        QVERIFY(sameRecord(decodeRecord(bytes.data()), sample(0)));
    }

    void writeThenReadBack() {
        std::vector<MeasurementRecord> records;
        for (int k = 0; k < 5; ++k) records.push_back(sample(k));
        const WriteOutcome outcome = writeMeasurementFile(file(), records);
        QVERIFY2(outcome.ok, outcome.error.c_str());
        QCOMPARE(fs::file_size(file()), std::uintmax_t{4 * 128 + 48});

        const auto read = readMeasurementRecords(file());
        QCOMPARE(read.size(), records.size());
        for (std::size_t k = 0; k < read.size(); ++k) QVERIFY(sameRecord(read[k], records[k]));

        // Recall at 48-byte spacing: position 1 is the first set-up,
        // position 2 reads bytes 48…95 (zeros inside the first slot), and
        // position 3 starts at 96 and runs into the second record at 128.
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 1), records[0]));
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 2), MeasurementRecord{}));
        const auto bytes = fileBytes(file());
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 3), decodeRecord(bytes.data() + 96)));
        QCOMPARE(recallMeasurementRecord(file(), 3)->index, records[1].h);
        // Beyond the end, zeros; position 0 or below, nothing.
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 1000), MeasurementRecord{}));
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 1LL << 62), MeasurementRecord{}));
        QVERIFY(!recallMeasurementRecord(file(), 0));
        QVERIFY(!recallMeasurementRecord(file(), -3));
        QVERIFY(noTemporariesLeft(file().parent_path()));
    }

    void shortLastSlotIsPadded() {
        auto bytes = buildSeriesContents({}, {sample(0)});
        bytes.resize(128 + 8, 0);
        std::memcpy(bytes.data() + 128, encodeRecord(sample(7)).data(), 8);
        writeBytes(file(), bytes);
        const auto read = readMeasurementRecords(file());
        QCOMPARE(read.size(), std::size_t{2});
        QCOMPARE(read[1].h, sample(7).h);
        QCOMPARE(read[1].yc, 0.0);
        // Position 3 covers bytes 96…143: zeros, the 8 bytes of the second
        // slot, and past the end of the file zeros again.
        const auto partial = recallMeasurementRecord(file(), 3);
        QCOMPARE(partial->h, 0.0);
        QCOMPARE(partial->index, sample(7).h);
        QCOMPARE(partial->slope, 0.0f);
    }

    void emptyOrMissingFile() {
        QVERIFY(readMeasurementRecords(file()).empty());
        QVERIFY(!recallMeasurementRecord(file(), 1));
        writeBytes(file(), {});
        QVERIFY(readMeasurementRecords(file()).empty());
        QVERIFY(sameRecord(*recallMeasurementRecord(file(), 1), MeasurementRecord{}));
    }

    void longerFileKeepsItsTail() {
        std::vector<std::uint8_t> old(1000);
        for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<std::uint8_t>(i * 7 + 1);
        writeBytes(file(), old);
        QVERIFY(writeMeasurementFile(file(), {sample(0), sample(1)}).ok);
        const auto bytes = fileBytes(file());
        QCOMPARE(bytes.size(), old.size());
        QVERIFY(std::equal(bytes.begin() + 48, bytes.begin() + 128, old.begin() + 48));
        QVERIFY(std::equal(bytes.begin() + 176, bytes.end(), old.begin() + 176));
        QVERIFY(sameRecord(decodeRecord(bytes.data() + 128), sample(1)));
    }

    void failedWriteLeavesTheOldFile() {
        const std::vector<std::uint8_t> old{1, 2, 3, 4, 5};
        writeBytes(file(), old);

        // Into a folder that does not exist.
        const fs::path nowhere = file().parent_path() / "missing" / kMeasurementFileName;
        WriteOutcome outcome = writeMeasurementFile(nowhere, {sample(0)});
        QVERIFY(!outcome.ok);
        QVERIFY(outcome.error.starts_with("Could not write the measurement file fylaxi: "));
        QVERIFY(outcome.error.ends_with("  Δεν ήταν δυνατή η εγγραφή του αρχείου fylaxi"));
        QVERIFY(!fs::exists(nowhere.parent_path()));

        // Over a folder of that name.
        const fs::path folder = file().parent_path() / "taken";
        fs::create_directory(folder);
        outcome = writeMeasurementFile(folder, {sample(0)});
        QVERIFY(!outcome.ok);
        QVERIFY(outcome.error.find("Δεν ήταν δυνατή") != std::string::npos);
        QVERIFY(fs::is_directory(folder));

        QVERIFY(fileBytes(file()) == old);
        QVERIFY(noTemporariesLeft(file().parent_path()));
    }

    void readOnlyFolder() {
        if (::geteuid() == 0) QSKIP("the superuser may write into read-only folders");
        const std::vector<std::uint8_t> old{9, 8, 7};
        writeBytes(file(), old);
        const fs::path folder = file().parent_path();
        fs::permissions(folder, fs::perms::owner_write, fs::perm_options::remove);
        const WriteOutcome outcome = writeMeasurementFile(file(), {sample(0)});
        fs::permissions(folder, fs::perms::owner_write, fs::perm_options::add);
        QVERIFY(!outcome.ok);
        QVERIFY(fileBytes(file()) == old);
    }

    void seriesOfSetUps() {
        Block b;
        b.radius = 100.0;
        b.direction = 1;
        b.index = 1.5;
        b.tilt = 2.0 * std::numbers::pi / 180.0;
        const auto records = runMeasurementSeries(b, 0.5);
        QCOMPARE(records.size(), std::size_t{81});
        // Nested loops: height outermost, then x, y and the tilt innermost.
        QCOMPARE(records[0].h, 0.5);
        QCOMPARE(records[0].xc, 0.0);
        QVERIFY(std::fabs(records[0].angle - 2.0) < 1e-12);
        QVERIFY(std::fabs(records[1].angle - 3.0) < 1e-12);
        QCOMPARE(records[3].yc, 1.0);
        QCOMPARE(records[9].xc, 1.0);
        QCOMPARE(records[27].h, 1.5);
        QCOMPARE(records[80].h, 2.5);
        for (const MeasurementRecord& r : records) {
            QCOMPARE(r.index, 1.0 / static_cast<double>(r.slope));
            QVERIFY(std::fabs(r.index - 1.5) < 0.1);  // near the centre, near n
        }
        // Exactly through the centre of an upright block the fit gives n.
        b.tilt = 0.0;
        const auto centred = runMeasurementSeries(b, 0.0);
        QVERIFY(std::fabs(centred[0].index - 1.5) < 1e-6);
        QVERIFY(std::fabs(centred[0].intercept) < 1e-6f);

        // A ray far from a small block measures nothing: no records.
        b.radius = 5.0;
        QVERIFY(runMeasurementSeries(b, 80.0).empty());
    }
};

QTEST_APPLESS_MAIN(TestMeasurementFile)
#include "test_measurement_file.moc"
