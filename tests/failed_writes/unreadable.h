#pragma once
// Files that exist but cannot be read, whoever runs the tests. Permission
// bits do not stop the superuser, so for root the file system is asked as
// "nobody" while an AsNobody lives: setfsuid changes only the identity the
// file system checks, only on this thread, and is undone at the end.
#include <cerrno>
#include <fcntl.h>
#include <sys/fsuid.h>
#include <unistd.h>

class AsNobody {
public:
    AsNobody() {
        if (::geteuid() != 0) return;
        ::setfsgid(kNobody);
        ::setfsuid(kNobody);
        active_ = true;
    }
    ~AsNobody() {
        if (!active_) return;
        ::setfsuid(0);
        ::setfsgid(0);
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    // Whether opening `path` for reading is refused for lack of permission
    // (if it is not, a test of unreadable files has nothing to test).
    static bool refusesReading(const char* path) {
        const int fd = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (fd >= 0) {
            ::close(fd);
            return false;
        }
        return errno == EACCES;
    }

private:
    static constexpr unsigned kNobody = 65534;
    bool active_ = false;
};
