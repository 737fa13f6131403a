#include "core/outside_files.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

std::string systemReason(int error) { return std::error_code(error, std::generic_category()).message(); }

namespace {

// The reason for refusing something that exists but is not a plain file.
std::string notAFile(mode_t mode) {
    if (S_ISDIR(mode)) return systemReason(EISDIR);
    if (S_ISFIFO(mode)) return "it is a pipe (FIFO), not a file";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "it is a device, not a file";
    if (S_ISSOCK(mode)) return "it is a socket, not a file";
    return "it is not a regular file";
}

class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            fd_ = other.fd_;
            other.fd_ = -1;
        }
        return *this;
    }
    int get() const { return fd_; }
    // Closes now and reports a failed close (it can carry a deferred write error).
    int close() {
        const int fd = fd_;
        fd_ = -1;
        return fd >= 0 && ::close(fd) != 0 ? errno : 0;
    }
    void reset() { (void)close(); }

private:
    int fd_;
};

}  // namespace

// ------------------------------------------------------------- reading ---

InputFile::InputFile(const fs::path& path) {
    // Looked at before it is opened, and again through the open handle, in
    // case something else took the name in between; O_NONBLOCK makes even
    // that case return at once instead of waiting for a pipe's writer.
    struct stat before {};
    if (::stat(path.c_str(), &before) != 0) {
        missing_ = errno == ENOENT;
        reason_ = systemReason(errno);
        return;
    }
    if (!S_ISREG(before.st_mode)) {
        reason_ = notAFile(before.st_mode);
        return;
    }
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        missing_ = errno == ENOENT;
        reason_ = systemReason(errno);
        return;
    }
    struct stat opened {};
    const bool statted = ::fstat(fd, &opened) == 0;
    if (!statted || !S_ISREG(opened.st_mode)) {
        reason_ = statted ? notAFile(opened.st_mode) : systemReason(errno);
        ::close(fd);
        return;
    }
    fd_ = fd;
    size_ = static_cast<std::uint64_t>(opened.st_size);
}

InputFile::~InputFile() {
    if (fd_ >= 0) ::close(fd_);
}

std::int64_t InputFile::readAt(std::uint64_t offset, void* buffer, std::size_t count) {
    if (fd_ < 0) return -1;
    if (offset > static_cast<std::uint64_t>(LLONG_MAX)) return 0;
    auto* out = static_cast<char*>(buffer);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t n = ::pread(fd_, out + done, count - done, static_cast<off_t>(offset + done));
        if (n < 0) {
            if (errno == EINTR) continue;
            reason_ = systemReason(errno);
            return -1;
        }
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<std::int64_t>(done);
}

// ------------------------------------------------------------- writing ---

int writeAllAt(int fd, const void* bytes, std::size_t count, std::uint64_t offset) {
    const auto* in = static_cast<const char*>(bytes);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t n = ::pwrite(fd, in + done, count - done, static_cast<off_t>(offset + done));
        if (n < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        done += static_cast<std::size_t>(n);
    }
    return 0;
}

namespace {

// Copies [begin, end) by reading and writing, for file systems that cannot
// copy between files themselves; memory stays one buffer.
int copyByHand(int from, int to, off_t begin, off_t end) {
    std::vector<char> buffer(256 * 1024);
    for (off_t at = begin; at < end;) {
        const auto want = static_cast<std::size_t>(std::min<off_t>(end - at, static_cast<off_t>(buffer.size())));
        const ssize_t n = ::pread(from, buffer.data(), want, at);
        if (n < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        if (n == 0) break;  // the file shrank under us: what is left reads as zeros
        if (const int e = writeAllAt(to, buffer.data(), static_cast<std::size_t>(n), static_cast<std::uint64_t>(at)))
            return e;
        at += n;
    }
    return 0;
}

// Copies [begin, end) inside the kernel when it can.
int copyRange(int from, int to, off_t begin, off_t end) {
    off_t in = begin;
    off_t out = begin;
    while (in < end) {
        const ssize_t n = ::copy_file_range(from, &in, to, &out, static_cast<std::size_t>(end - in), 0);
        if (n < 0) {
            if (errno == EINTR) continue;
            if (errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP || errno == EBADF)
                return copyByHand(from, to, in, end);
            return errno;
        }
        if (n == 0) break;
    }
    return 0;
}

}  // namespace

int copyFileContents(int from, int to) {
    // Shared extents: no data moves at all.
    if (::ioctl(to, FICLONE, from) == 0) return 0;
    struct stat info {};
    if (::fstat(from, &info) != 0) return errno;
    const off_t size = info.st_size;
    // Only the stretches that hold data; holes stay holes.
    for (off_t at = 0; at < size;) {
        off_t data = ::lseek(from, at, SEEK_DATA);
        if (data < 0) {
            if (errno == ENXIO) break;  // nothing but a hole up to the end
            data = at;                  // no hole finding here: copy all of it
        }
        off_t hole = ::lseek(from, data, SEEK_HOLE);
        if (hole < 0) hole = size;
        hole = std::min(hole, size);
        if (const int e = copyRange(from, to, data, hole)) return e;
        at = hole;
    }
    return ::ftruncate(to, size) == 0 ? 0 : errno;
}

namespace {

FileWriteResult refused(std::string reason) { return {false, std::move(reason)}; }

// How much of the target's name the temporary's name repeats: enough to
// tell whose it is, short enough that even a target of the longest name
// the file system allows gives a temporary name it allows too.
constexpr std::size_t kTemporaryStem = 32;

// A name for the temporary beside the target that no other writer uses.
std::string temporaryName(const std::string& target, int attempt) {
    static std::atomic<unsigned> counter{0};
    std::size_t stem = std::min(target.size(), kTemporaryStem);
    // Cut before a UTF-8 continuation byte, so that a Greek name stays whole letters.
    while (stem > 0 && stem < target.size() && (static_cast<unsigned char>(target[stem]) & 0xC0) == 0x80) --stem;
    return "." + target.substr(0, stem) + ".tmp-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + "-" +
           std::to_string(attempt);
}

}  // namespace

FileWriteResult replaceFile(const fs::path& requested, const FileFiller& fill) {
    fs::path target = requested;
    struct stat info {};
    bool exists = ::lstat(target.c_str(), &info) == 0;
    if (!exists && errno != ENOENT) return refused(systemReason(errno));
    if (exists && S_ISLNK(info.st_mode)) {
        // A link to a file writes that file; a link to nothing, or round in
        // a loop, is refused rather than replaced by a plain file.
        if (::stat(target.c_str(), &info) != 0)
            return refused(errno == ENOENT ? "it is a link to a file that does not exist" : systemReason(errno));
        char* resolved = ::realpath(target.c_str(), nullptr);
        if (!resolved) return refused(systemReason(errno));
        target = resolved;
        std::free(resolved);
        if (::lstat(target.c_str(), &info) != 0) return refused(systemReason(errno));
    }
    if (exists && !S_ISREG(info.st_mode)) return refused(notAFile(info.st_mode));

    const std::string name = target.filename().string();
    if (name.empty() || name == "." || name == "..") return refused("no file name was given");
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    Descriptor dir(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (dir.get() < 0) return refused(systemReason(errno));

    Descriptor old;
    if (exists) {
        // An old file that cannot be read is refused like one that cannot
        // be written: a writer that keeps part of it would lose that part
        // without a word, and one that does not would replace a file the
        // pupil cannot even look at.
        old = Descriptor(::openat(dir.get(), name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (old.get() < 0 && errno != ENOENT) return refused(systemReason(errno));
        exists = old.get() >= 0;  // gone meanwhile: then there is nothing to keep
    }
    // Read-only means read-only for everyone, the superuser included.
    if (exists && (info.st_mode & 0222) == 0) return refused("the file is read-only");
    if (exists && ::faccessat(dir.get(), name.c_str(), W_OK, AT_EACCESS) != 0) return refused(systemReason(errno));

    std::string temporary;
    Descriptor out;
    int error = EEXIST;
    for (int attempt = 0; attempt < 100 && out.get() < 0 && error == EEXIST; ++attempt) {
        temporary = temporaryName(name, attempt);
        out = Descriptor(::openat(dir.get(), temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        error = out.get() < 0 ? errno : 0;
    }
    if (out.get() < 0) return refused(systemReason(error));

    error = fill(out.get(), old.get());
    if (!error && exists) (void)::fchmod(out.get(), info.st_mode & 07777);  // keeping them is a courtesy
    if (!error && ::fsync(out.get()) != 0) error = errno;
    if (const int closing = out.close(); !error) error = closing;
    if (!error && ::renameat(dir.get(), temporary.c_str(), dir.get(), name.c_str()) != 0) error = errno;
    if (error) {
        ::unlinkat(dir.get(), temporary.c_str(), 0);
        return refused(systemReason(error));
    }
    return {true, {}};
}

FileWriteResult replaceFile(const fs::path& target, std::string_view contents) {
    return replaceFile(
        target, [contents](int temporary, int) { return writeAllAt(temporary, contents.data(), contents.size(), 0); });
}
