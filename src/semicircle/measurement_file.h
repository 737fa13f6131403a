#pragma once
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "semicircle/bench_experiments.h"

// One stored set-up: 48 bytes, little-endian IEEE 754, in this order.
struct MeasurementRecord {
    double h = 0.0;  // ray height
    double xc = 0.0;
    double yc = 0.0;
    double angle = 0.0;  // tilt of the set-up, degrees
    double index = 0.0;  // 1 / slope
    float intercept = 0.0f;
    float slope = 0.0f;
};

inline constexpr std::size_t kRecordBytes = 48;
inline constexpr std::size_t kWriterSlotBytes = 128;  // spacing of the writer and the sequential reader
inline constexpr const char* kMeasurementFileName = "fylaxi";

std::array<std::uint8_t, kRecordBytes> encodeRecord(const MeasurementRecord& record);
MeasurementRecord decodeRecord(const std::uint8_t* bytes);  // reads kRecordBytes

// Writes the records from slot 1 on over the old contents: record k at
// (k − 1)·128; bytes between records and anything of a longer old file
// beyond the last record are kept; new gaps are zeros. The file is
// replaced whole or not at all, by the rules of replaceFile (a read-only
// old file or a broken link is refused). Time and memory follow the
// records written, not the old file's size. On failure the old file is
// untouched and the result holds a bilingual message.
struct WriteOutcome {
    bool ok = false;
    std::string error;
};
WriteOutcome writeMeasurementFile(const std::filesystem::path& path, const std::vector<MeasurementRecord>& records);

// Whether the readers can read the file, and if not whether it is simply
// not there or could not be opened (then `reason` says why, in the
// system's words: a folder, a pipe, no permission).
struct MeasurementFileState {
    bool readable = false;
    bool missing = false;
    std::string reason;
};
MeasurementFileState measurementFileState(const std::filesystem::path& path);

// Sequential reader: every 128-byte slot from the start while the file has
// bytes there (a short last record is padded with zeros). A missing or empty
// file gives no records.
std::vector<MeasurementRecord> readMeasurementRecords(const std::filesystem::path& path);

// The sequential reader's result without reading every slot: the number of
// 128-byte slots the file holds and the last of them, which is what the
// data screen shows. A file of any size costs one read.
// None for a missing, empty or unreadable file.
struct LastRecord {
    long long position = 0;  // from 1
    MeasurementRecord record;
};
std::optional<LastRecord> readLastMeasurementRecord(const std::filesystem::path& path);

// How many 48-byte positions the recall reader finds in the file (a short
// last one counts); 0 for a missing or unreadable file.
long long recallPositionCount(const std::filesystem::path& path);

// Recall reader: position k (from 1) at byte (k − 1)·48; beyond the end of
// the file the missing bytes read as zeros. None for k < 1 or an unreadable
// file.
std::optional<MeasurementRecord> recallMeasurementRecord(const std::filesystem::path& path, long long position);

// The series the bench writes: four nested loops — ray height, centre x,
// centre y and tilt, each at the current value and 1 and 2 steps above it
// (one unit, or one degree for the tilt) — 81 set-ups. For each, the nine
// incidences of measurementIncidences() are traced and sin(exit angle) is
// fitted against sin(incidence) by least squares; index = 1 / slope. A
// set-up with fewer than two measured rays or a zero slope is left out.
// The block's direction is used as it is, 1 when none is chosen.
std::vector<MeasurementRecord> runMeasurementSeries(const Block& block, double rayHeight);
