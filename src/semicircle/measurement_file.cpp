#include "semicircle/measurement_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <numbers>
#include <system_error>

#include "history/least_squares.h"

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
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) value |= static_cast<Unsigned>(static_cast<Unsigned>(in[i]) << (8 * i));
    return value;
}

void putDouble(std::uint8_t* out, double v) { putLittleEndian(out, std::bit_cast<std::uint64_t>(v)); }
void putFloat(std::uint8_t* out, float v) { putLittleEndian(out, std::bit_cast<std::uint32_t>(v)); }
double getDouble(const std::uint8_t* in) { return std::bit_cast<double>(getLittleEndian<std::uint64_t>(in)); }
float getFloat(const std::uint8_t* in) { return std::bit_cast<float>(getLittleEndian<std::uint32_t>(in)); }

std::string failureMessage(const fs::path& path, const std::string& reason) {
    const std::string name = path.filename().string();
    return "Could not write the measurement file " + name + ": " + reason + "  Δεν ήταν δυνατή η εγγραφή του αρχείου " +
           name;
}

std::string systemReason(int error) { return std::error_code(error, std::generic_category()).message(); }

// Reads up to `count` bytes at `offset`; fewer where the file ends.
std::vector<std::uint8_t> readBytes(std::ifstream& in, std::uint64_t offset, std::size_t count) {
    std::vector<std::uint8_t> bytes(count, 0);
    in.clear();
    in.seekg(static_cast<std::streamoff>(offset));
    if (!in) return {};
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return bytes;
}

MeasurementRecord decodePadded(std::vector<std::uint8_t> bytes) {
    bytes.resize(kRecordBytes, 0);
    return decodeRecord(bytes.data());
}

// Writes everything to an open descriptor, retrying short writes.
bool writeAll(int fd, const std::vector<std::uint8_t>& bytes, int& error) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errno;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

// A name for the temporary beside the target that no other writer uses.
fs::path temporaryBeside(const fs::path& target, int attempt) {
    static std::atomic<unsigned> counter{0};
    const std::string name = "." + target.filename().string() + ".tmp-" + std::to_string(::getpid()) + "-" +
                             std::to_string(counter++) + "-" + std::to_string(attempt);
    return target.parent_path() / name;
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

std::vector<std::uint8_t> buildSeriesContents(const std::vector<std::uint8_t>& existing,
                                              const std::vector<MeasurementRecord>& records) {
    std::vector<std::uint8_t> contents = existing;
    if (records.empty()) return contents;
    const std::size_t needed = (records.size() - 1) * kWriterSlotBytes + kRecordBytes;
    if (contents.size() < needed) contents.resize(needed, 0);
    for (std::size_t k = 0; k < records.size(); ++k) {
        const auto bytes = encodeRecord(records[k]);
        std::copy(bytes.begin(), bytes.end(), contents.begin() + static_cast<std::ptrdiff_t>(k * kWriterSlotBytes));
    }
    return contents;
}

WriteOutcome writeMeasurementFile(const std::filesystem::path& path, const std::vector<MeasurementRecord>& records) {
    std::error_code ec;
    fs::path target = path;
    if (fs::is_symlink(target, ec)) {
        // Replace the file the link points to, not the link itself.
        const fs::path resolved = fs::weakly_canonical(target, ec);
        if (!ec) target = resolved;
    }
    if (target.filename().empty()) return {false, failureMessage(path, "no file name")};

    std::vector<std::uint8_t> existing;
    std::optional<fs::perms> oldPermissions;
    const fs::file_status status = fs::status(target, ec);
    if (fs::exists(status)) {
        if (!fs::is_regular_file(status)) return {false, failureMessage(path, "it is not a regular file")};
        oldPermissions = status.permissions();
        std::ifstream in(target, std::ios::binary);
        if (!in) return {false, failureMessage(path, "it cannot be read")};
        existing.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        if (in.bad()) return {false, failureMessage(path, "it cannot be read")};
    }
    const std::vector<std::uint8_t> contents = buildSeriesContents(existing, records);

    fs::path temporary;
    int fd = -1;
    int error = 0;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temporary = temporaryBeside(target, attempt);
        fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        error = errno;
        if (fd < 0 && error != EEXIST) break;
    }
    if (fd < 0) return {false, failureMessage(path, systemReason(error))};

    bool written = writeAll(fd, contents, error);
    if (written && oldPermissions) {
        // Keep the old file's permission bits; failing to do so is harmless.
        (void)::fchmod(fd, static_cast<mode_t>(*oldPermissions) & 07777);
    }
    if (written && ::fsync(fd) != 0) {
        error = errno;
        written = false;
    }
    if (::close(fd) != 0 && written) {
        error = errno;
        written = false;
    }
    if (written) {
        fs::rename(temporary, target, ec);
        if (!ec) return {true, {}};
    }
    const std::string reason = written ? ec.message() : systemReason(error);
    std::error_code ignored;
    fs::remove(temporary, ignored);
    return {false, failureMessage(path, reason)};
}

std::vector<MeasurementRecord> readMeasurementRecords(const std::filesystem::path& path) {
    std::vector<MeasurementRecord> records;
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return records;
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec) return records;
    std::ifstream in(path, std::ios::binary);
    if (!in) return records;
    for (std::uintmax_t offset = 0; offset < size; offset += kWriterSlotBytes) {
        std::vector<std::uint8_t> bytes = readBytes(in, offset, kRecordBytes);
        if (bytes.empty()) break;
        records.push_back(decodePadded(std::move(bytes)));
    }
    return records;
}

std::optional<LastRecord> readLastMeasurementRecord(const std::filesystem::path& path) {
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec || size == 0) return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    const std::uintmax_t slots = (size + kWriterSlotBytes - 1) / kWriterSlotBytes;
    std::vector<std::uint8_t> bytes = readBytes(in, (slots - 1) * kWriterSlotBytes, kRecordBytes);
    if (bytes.empty()) return std::nullopt;
    return LastRecord{static_cast<long long>(slots), decodePadded(std::move(bytes))};
}

long long recallPositionCount(const std::filesystem::path& path) {
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return 0;
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec) return 0;
    return static_cast<long long>((size + kRecordBytes - 1) / kRecordBytes);
}

std::optional<MeasurementRecord> recallMeasurementRecord(const std::filesystem::path& path, long long position) {
    if (position < 1) return std::nullopt;
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec) return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    const auto index = static_cast<std::uintmax_t>(position - 1);
    // A position past the end reads as zeros; test it before multiplying so
    // that a huge position cannot overflow the offset.
    if (index > size / kRecordBytes) return MeasurementRecord{};
    const std::uintmax_t offset = index * kRecordBytes;
    if (offset >= size) return MeasurementRecord{};
    return decodePadded(readBytes(in, offset, kRecordBytes));
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
        sinIncidence.push_back(std::sin(incidence * std::numbers::pi / 180.0));
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
    const double baseDegrees = block.tilt * 180.0 / std::numbers::pi;
    for (int ih = 0; ih < 3; ++ih) {
        for (int ix = 0; ix < 3; ++ix) {
            for (int iy = 0; iy < 3; ++iy) {
                for (int ia = 0; ia < 3; ++ia) {
                    const double angleDegrees = baseDegrees + ia;
                    setup.xc = block.xc + ix;
                    setup.yc = block.yc + iy;
                    setup.tilt = block.tilt + ia * std::numbers::pi / 180.0;
                    if (auto record = measureSetup(setup, rayHeight + ih, angleDegrees)) records.push_back(*record);
                }
            }
        }
    }
    return records;
}
