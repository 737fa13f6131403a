#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

// Every file the program reads or writes lies outside it: the pupil may
// pick a pipe, a device, a link to nowhere, a read-only file or a file of
// gigabytes, and a folder may be renamed while a save is under way. Every
// reader and writer goes through these two doors so that each of those
// cases is met the same way everywhere, and the pupil is told the system's
// own reason (in English; the callers add the Greek sentence).

// A file opened for reading. Only a regular file is opened, and opening
// never waits: a FIFO would block until some writer came, a device may
// never end.
class InputFile {
public:
    explicit InputFile(const std::filesystem::path& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    bool isOpen() const { return fd_ >= 0; }
    // Nothing of that name exists (as opposed to a file that cannot be read).
    bool missing() const { return missing_; }
    // Why the file could not be opened or read.
    const std::string& reason() const { return reason_; }
    std::uint64_t size() const { return size_; }

    // Up to `count` bytes at `offset`, fewer where the file ends; -1 on a
    // read error (then reason() says why).
    std::int64_t readAt(std::uint64_t offset, void* buffer, std::size_t count);

private:
    int fd_ = -1;
    bool missing_ = false;
    std::string reason_;
    std::uint64_t size_ = 0;
};

struct FileWriteResult {
    bool ok = false;
    std::string reason;  // why not, when !ok
};

// Puts new contents in place of `target`, whole or not at all: they are
// written to a temporary file beside the target, made durable, and renamed
// over it; on any failure the old file stays as it was and the temporary
// is removed. The temporary (named after the target's first few letters,
// so that a target of the longest name allowed still gives an allowed
// name) is made, renamed and removed through a handle on the folder, so a
// folder renamed mid-save neither loses the file nor keeps a stray
// temporary.
//
// Awkward targets are refused, whatever writes them: an old file that
// cannot be read or is read-only, a link that leads nowhere or round in a
// loop, anything that is not a regular file. A link to a regular file
// replaces the file it leads to; an old file's permission bits are kept.
//
// `fill` writes the contents into the temporary (`temporary` is a file
// descriptor open for writing at offset 0) and returns 0 or an errno
// value; `old` is the old file open for reading, or -1 when there is none.
using FileFiller = std::function<int(int temporary, int old)>;
FileWriteResult replaceFile(const std::filesystem::path& target, const FileFiller& fill);
FileWriteResult replaceFile(const std::filesystem::path& target, std::string_view contents);

// Copies the whole of `from` into `to` (both at offset 0) without passing
// it through memory: shared extents where the file system offers them,
// else only the parts that hold data, so a sparse file costs what it
// holds, not its length. Returns 0 or an errno value.
int copyFileContents(int from, int to);

// Writes all of `bytes` at `offset`, retrying short writes; 0 or errno.
int writeAllAt(int fd, const void* bytes, std::size_t count, std::uint64_t offset);

// The text of an errno value, as the system words it.
std::string systemReason(int error);
