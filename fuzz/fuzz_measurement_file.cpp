// The measurement file's readers on any bytes: the sequential reader, the
// last-record reader, the recall reader with the position the pupil types.
// Then the writer over those bytes, against a plain model of what it must
// leave: the records in their 128-byte slots, every other byte as it was.
// Input: an optional first line with the typed position, then the file.
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <signal.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "core/number_input.h"
#include "fuzz_check.h"
#include "semicircle/measurement_file.h"

namespace fs = std::filesystem;

namespace {

// A file per fuzzing process. libFuzzer ends without running exit
// handlers, so each run clears the files of runs that have ended.
fs::path scratchFile() {
    std::error_code ec;
    const fs::path folder = fs::is_directory("/dev/shm", ec) ? fs::path("/dev/shm") : fs::temp_directory_path();
    const std::string prefix = "fylaxi-fuzz-";
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) != 0) continue;
        const long pid = std::strtol(name.c_str() + prefix.size(), nullptr, 10);
        if (pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) fs::remove(entry.path(), ec);
    }
    return folder / (prefix + std::to_string(::getpid()));
}

// The 48 bytes at `offset`, zeros where the file has ended.
std::vector<std::uint8_t> paddedAt(const std::vector<std::uint8_t>& file, std::size_t offset) {
    std::vector<std::uint8_t> bytes(kRecordBytes, 0);
    for (std::size_t i = 0; i < kRecordBytes && offset + i < file.size(); ++i) bytes[i] = file[offset + i];
    return bytes;
}

// Bit for bit: a stored NaN must come back as the same NaN.
bool holds(const MeasurementRecord& record, const std::vector<std::uint8_t>& bytes) {
    const auto encoded = encodeRecord(record);
    return std::equal(encoded.begin(), encoded.end(), bytes.begin());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fs::path path = scratchFile();
    std::string_view input(reinterpret_cast<const char*>(data), size);
    std::string_view typedPosition;
    if (const auto newline = input.find('\n'); newline != std::string_view::npos && newline <= 64) {
        typedPosition = input.substr(0, newline);
        input.remove_prefix(newline + 1);
    }
    const std::vector<std::uint8_t> file(input.begin(), input.end());
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(input.data(), static_cast<std::streamsize>(input.size()));
    }

    // decodeRecord reads any 48 bytes and encodeRecord gives them back.
    const auto first = paddedAt(file, 0);
    FUZZ_REQUIRE(holds(decodeRecord(first.data()), first));

    // Sequential reader: one record per started 128-byte slot.
    const std::vector<MeasurementRecord> records = readMeasurementRecords(path);
    const std::size_t slots = (file.size() + kWriterSlotBytes - 1) / kWriterSlotBytes;
    FUZZ_REQUIRE(records.size() == slots);
    for (std::size_t k = 0; k < records.size(); ++k)
        FUZZ_REQUIRE(holds(records[k], paddedAt(file, k * kWriterSlotBytes)));

    // The last slot, read without reading the others, is the same record.
    const auto last = readLastMeasurementRecord(path);
    FUZZ_REQUIRE(last.has_value() == !file.empty());
    if (last) {
        FUZZ_REQUIRE(last->position == static_cast<long long>(slots));
        FUZZ_REQUIRE(holds(last->record, paddedAt(file, (slots - 1) * kWriterSlotBytes)));
    }

    // Recall reader: 48-byte positions from 1; past the end, zeros.
    const long long positions = recallPositionCount(path);
    FUZZ_REQUIRE(positions == static_cast<long long>((file.size() + kRecordBytes - 1) / kRecordBytes));
    const std::vector<std::uint8_t> zeros(kRecordBytes, 0);
    for (long long position : {LLONG_MIN, -1LL, 0LL}) FUZZ_REQUIRE(!recallMeasurementRecord(path, position));
    for (long long position : {positions + 1, LLONG_MAX / 48, LLONG_MAX - 1, LLONG_MAX}) {
        const auto record = recallMeasurementRecord(path, position);
        FUZZ_REQUIRE(record && holds(*record, zeros));
    }

    // The position as the data screen takes it from the pupil: a whole
    // number from 1 to the count, else refused before the file is read.
    if (const auto value = parseTypedNumber(typedPosition)) {
        FUZZ_REQUIRE(std::isfinite(*value));
        if (*value == std::floor(*value) && *value >= 1.0 && *value <= static_cast<double>(positions)) {
            const auto position = static_cast<long long>(*value);
            const auto record = recallMeasurementRecord(path, position);
            FUZZ_REQUIRE(record &&
                         holds(*record, paddedAt(file, static_cast<std::size_t>(position - 1) * kRecordBytes)));
        }
    }

    // Two records written over the file: slots 1 and 2, the rest kept.
    const std::vector<MeasurementRecord> written{decodeRecord(paddedAt(file, 0).data()),
                                                 MeasurementRecord{1.5, -2, 3, 45, 1.5, 0.25f, 0.5f}};
    std::vector<std::uint8_t> expected = file;
    expected.resize(std::max(expected.size(), kWriterSlotBytes + kRecordBytes), 0);
    for (std::size_t k = 0; k < written.size(); ++k) {
        const auto bytes = encodeRecord(written[k]);
        std::copy(bytes.begin(), bytes.end(), expected.begin() + static_cast<std::ptrdiff_t>(k * kWriterSlotBytes));
    }
    FUZZ_REQUIRE(writeMeasurementFile(path, written).ok);
    std::ifstream in(path, std::ios::binary);
    const std::vector<std::uint8_t> after{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    FUZZ_REQUIRE(after == expected);
    return 0;
}
