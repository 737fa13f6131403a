#include "semicircle/measurement_file.h"

#include <bit>
#include <cmath>
#include <numbers>

#include "core/least_squares.h"
#include "core/outside_files.h"
#include "core/physics.h"

namespace {

namespace fs = std::filesystem;

// Field by field, least significant byte first, so that the layout does not
// depend on the host's byte order or structure padding.
template <typename Unsigned>
void putLittleEndian(std::uint8_t* out, Unsigned value) {
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) out[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

template <typename Unsigned>
Unsigned getLittleEndian(const std::uint8_t* in) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
        value |= static_cast<Unsigned>(static_cast<Unsigned>(in[i]) << (8 * i));
    return value;
}

void putDouble(std::uint8_t* out, double v) { putLittleEndian(out, std::bit_cast<std::uint64_t>(v)); }
void putFloat(std::uint8_t* out, float v) { putLittleEndian(out, std::bit_cast<std::uint32_t>(v)); }
double getDouble(const std::uint8_t* in) { return std::bit_cast<double>(getLittleEndian<std::uint64_t>(in)); }
float getFloat(const std::uint8_t* in) { return std::bit_cast<float>(getLittleEndian<std::uint32_t>(in)); }

std::string failureMessage(const fs::path& path, const std::string& reason) {
    const std::string name = path.filename().string();
    return "Could not write the measurement file " + name + ": " + reason +
           ".  Δεν ήταν δυνατή η εγγραφή του αρχείου " + name + ".";
}

// The 48 bytes at `offset`, zeros where the file ends; none on a read error.
std::optional<MeasurementRecord> recordAt(InputFile& in, std::uint64_t offset) {
    std::array<std::uint8_t, kRecordBytes> bytes{};
    if (in.readAt(offset, bytes.data(), bytes.size()) < 0) return std::nullopt;
    return decodeRecord(bytes.data());
}

}  // namespace

std::array<std::uint8_t, kRecordBytes> encodeRecord(const MeasurementRecord& record) {
    std::array<std::uint8_t, kRecordBytes> bytes{};
    putDouble(bytes.data() + 0, record.h);
    putDouble(bytes.data() + 8, record.xc);
    putDouble(bytes.data() + 16, record.yc);
    putDouble(bytes.data() + 24, record.angle);
    putDouble(bytes.data() + 32, record.index);
    putFloat(bytes.data() + 40, record.intercept);
    putFloat(bytes.data() + 44, record.slope);
    return bytes;
}

MeasurementRecord decodeRecord(const std::uint8_t* bytes) {
    MeasurementRecord record;
    record.h = getDouble(bytes + 0);
    record.xc = getDouble(bytes + 8);
    record.yc = getDouble(bytes + 16);
    record.angle = getDouble(bytes + 24);
    record.index = getDouble(bytes + 32);
    record.intercept = getFloat(bytes + 40);
    record.slope = getFloat(bytes + 44);
    return record;
}

WriteOutcome writeMeasurementFile(const std::filesystem::path& path, const std::vector<MeasurementRecord>& records) {
    // The old file is copied into the temporary without passing through
    // memory (shared extents or its data stretches only), then the records
    // go into their slots: the cost follows what is written, not the size
    // of whatever file was there before.
    const FileWriteResult result = replaceFile(path, [&records](int temporary, int old) {
        if (old >= 0)
            if (const int error = copyFileContents(old, temporary)) return error;
        for (std::size_t k = 0; k < records.size(); ++k) {
            const auto bytes = encodeRecord(records[k]);
            if (const int error = writeAllAt(temporary, bytes.data(), bytes.size(), k * kWriterSlotBytes)) return error;
        }
        return 0;
    });
    if (!result.ok) return {false, failureMessage(path, result.reason)};
    return {true, {}};
}

MeasurementFileState measurementFileState(const std::filesystem::path& path) {
    InputFile in(path);
    if (in.isOpen()) return {true, false, {}};
    return {false, in.missing(), in.reason()};
}

std::vector<MeasurementRecord> readMeasurementRecords(const std::filesystem::path& path) {
    std::vector<MeasurementRecord> records;
    InputFile in(path);
    for (std::uint64_t offset = 0; offset < in.size(); offset += kWriterSlotBytes) {
        const auto record = recordAt(in, offset);
        if (!record) break;
        records.push_back(*record);
    }
    return records;
}

std::optional<LastRecord> readLastMeasurementRecord(const std::filesystem::path& path) {
    InputFile in(path);
    if (in.size() == 0) return std::nullopt;
    const std::uint64_t slots = (in.size() + kWriterSlotBytes - 1) / kWriterSlotBytes;
    const auto record = recordAt(in, (slots - 1) * kWriterSlotBytes);
    if (!record) return std::nullopt;
    return LastRecord{static_cast<long long>(slots), *record};
}

long long recallPositionCount(const std::filesystem::path& path) {
    InputFile in(path);
    return static_cast<long long>((in.size() + kRecordBytes - 1) / kRecordBytes);
}

std::optional<MeasurementRecord> recallMeasurementRecord(const std::filesystem::path& path, long long position) {
    if (position < 1) return std::nullopt;
    InputFile in(path);
    if (!in.isOpen()) return std::nullopt;
    const auto index = static_cast<std::uint64_t>(position - 1);
    // A position past the end reads as zeros; test it before multiplying so
    // that a huge position cannot overflow the offset.
    if (index > in.size() / kRecordBytes) return MeasurementRecord{};
    return recordAt(in, index * kRecordBytes);
}

namespace {

// One set-up of the series: the fitted line of sin(exit angle) against
// sin(incidence) over the rays that gave a measurement.
std::optional<MeasurementRecord> measureSetup(const Block& block, double rayHeight, double angleDegrees) {
    std::vector<double> sinIncidence{0.0};  // 1-based
    std::vector<double> sinExit{0.0};
    for (double incidence : measurementIncidences()) {
        const RayTrace trace = traceRay(block, rayHeight, incidence);
        if (!trace.measuredIndex || !trace.exitRayAngle) continue;
        sinIncidence.push_back(std::sin(physics::radians(incidence)));
        sinExit.push_back(std::sin(*trace.exitRayAngle));
    }
    const int count = static_cast<int>(sinIncidence.size()) - 1;
    if (count < 2) return std::nullopt;
    const std::optional<FittedLine> line = leastSquaresLine(sinIncidence, sinExit, count);
    if (!line || line->slope == 0.0f) return std::nullopt;
    MeasurementRecord record;
    record.h = rayHeight;
    record.xc = block.xc;
    record.yc = block.yc;
    record.angle = angleDegrees;
    record.index = 1.0 / static_cast<double>(line->slope);
    record.intercept = line->intercept;
    record.slope = line->slope;
    return record;
}

}  // namespace

std::vector<MeasurementRecord> runMeasurementSeries(const Block& block, double rayHeight) {
    std::vector<MeasurementRecord> records;
    Block setup = block;
    if (setup.direction != 1 && setup.direction != 2) setup.direction = 1;
    const double baseDegrees = physics::degrees(block.tilt);
    for (int ih = 0; ih < 3; ++ih) {
        for (int ix = 0; ix < 3; ++ix) {
            for (int iy = 0; iy < 3; ++iy) {
                for (int ia = 0; ia < 3; ++ia) {
                    const double angleDegrees = baseDegrees + ia;
                    setup.xc = block.xc + ix;
                    setup.yc = block.yc + iy;
                    setup.tilt = block.tilt + physics::radians(ia);
                    if (auto record = measureSetup(setup, rayHeight + ih, angleDegrees)) records.push_back(*record);
                }
            }
        }
    }
    return records;
}
