// The two doors to outside files: a reader that never waits on a pipe and
// tells a missing file from an unreadable one, a writer that refuses
// awkward targets, leaves nothing behind and copies old contents without
// reading them into memory; and quoting outside text in messages.
#include <QtTest>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "core/message_text.h"
#include "core/outside_files.h"

namespace fs = std::filesystem;

namespace {

std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

// Everything in the folder, hidden names included.
QStringList names(const fs::path& folder) {
    QStringList list;
    for (const auto& entry : fs::directory_iterator(folder)) list << QString::fromStdString(entry.path().filename());
    list.sort();
    return list;
}

}  // namespace

class TestOutsideFiles : public QObject {
    Q_OBJECT
    QTemporaryDir dir_;
    fs::path at(const char* name) const { return fs::path(dir_.path().toStdString()) / name; }

private slots:
    void init() {
        for (const auto& entry : fs::directory_iterator(at(""))) fs::remove_all(entry.path());
    }

    // A FIFO with no writer would block a plain open for ever; it must be
    // refused at once, as must a folder and a device.
    void readerRefusesWhatIsNotAFile() {
        QCOMPARE(::mkfifo(at("pipe").c_str(), 0600), 0);
        const auto started = std::chrono::steady_clock::now();
        const InputFile pipe(at("pipe"));
        QVERIFY(std::chrono::steady_clock::now() - started < std::chrono::seconds(2));
        QVERIFY(!pipe.isOpen() && !pipe.missing() && pipe.reason().find("pipe") != std::string::npos);

        fs::create_directory(at("folder"));
        const InputFile folder(at("folder"));
        QVERIFY(!folder.isOpen() && !folder.missing() && folder.reason() == systemReason(EISDIR));
        QVERIFY(!InputFile("/dev/zero").isOpen());

        const InputFile gone(at("gone"));
        QVERIFY(!gone.isOpen() && gone.missing());

        put(at("plain"), "abcdef");
        InputFile plain(at("plain"));
        char bytes[8] = {};
        QVERIFY(plain.isOpen() && plain.size() == 6);
        QCOMPARE(plain.readAt(2, bytes, sizeof bytes), std::int64_t{4});
        QCOMPARE(std::string(bytes), std::string("cdef"));
    }

    // (Read-only files, dangling links, link loops and folders are refused
    // through every writer of the program: tests/failed_writes.)
    void writerWritesThroughALink() {
        // A link to a real file writes that file and stays a link; the old
        // permission bits are kept.
        put(at("real"), "old");
        const fs::perms mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
        fs::permissions(at("real"), mode);
        fs::create_symlink("real", at("link"));
        QVERIFY(replaceFile(at("link"), "new").ok);
        QVERIFY(fs::is_symlink(at("link")) && contents(at("real")) == "new");
        QCOMPARE(fs::status(at("real")).permissions(), mode);
    }

    // The folder renamed while the contents are being written: the
    // temporary goes with it and is removed there on failure; on success
    // the file lands in the folder under its new name.
    void folderRenamedMidSave() {
        fs::create_directory(at("a"));
        put(at("a") / "t.csv", "old");
        const FileWriteResult failed = replaceFile(at("a") / "t.csv", [this](int temporary, int) {
            fs::rename(at("a"), at("b"));
            (void)writeAllAt(temporary, "x", 1, 0);
            return EIO;
        });
        QVERIFY(!failed.ok && failed.reason == systemReason(EIO));
        QCOMPARE(names(at("b")), QStringList{"t.csv"});

        const FileWriteResult saved = replaceFile(at("b") / "t.csv", [this](int temporary, int) {
            fs::rename(at("b"), at("c"));
            return writeAllAt(temporary, "new", 3, 0);
        });
        QVERIFY(saved.ok);
        QCOMPARE(names(at("c")), QStringList{"t.csv"});
        QCOMPARE(contents(at("c") / "t.csv"), std::string("new"));
    }

    // A gigabyte file of one hole and a few bytes: copied in a moment, and
    // still sparse afterwards.
    void copyKeepsHolesAndData() {
        const std::uint64_t size = std::uint64_t{1} << 30;
        std::ofstream(at("sparse"), std::ios::binary).write("head", 4).seekp(size - 4).write("tail", 4);
        const int from = ::open(at("sparse").c_str(), O_RDONLY);
        const int to = ::open(at("copy").c_str(), O_WRONLY | O_CREAT, 0600);
        const auto started = std::chrono::steady_clock::now();
        QCOMPARE(copyFileContents(from, to), 0);
        QVERIFY(std::chrono::steady_clock::now() - started < std::chrono::seconds(5));
        ::close(from);
        ::close(to);
        struct stat info {};
        QCOMPARE(::stat(at("copy").c_str(), &info), 0);
        QCOMPARE(static_cast<std::uint64_t>(info.st_size), size);
        QVERIFY(info.st_blocks * 512 < 1024 * 1024);
        InputFile copy(at("copy"));
        char head[4] = {}, middle[4] = {1, 1, 1, 1}, tail[4] = {};
        copy.readAt(0, head, 4);
        copy.readAt(size / 2, middle, 4);
        copy.readAt(size - 4, tail, 4);
        QVERIFY(std::string(head, 4) == "head" && std::string(tail, 4) == "tail" && middle[0] == 0 && middle[3] == 0);
    }

    // Outside text is strict UTF-8 or not text; a quoted cell can neither
    // widen a message beyond reason nor turn it round: the cut is marked,
    // invisible controls become visible escapes.
    void strictUtf8AndQuoting() {
        QVERIFY(isValidUtf8("incidence,διάθλαση 😀"));
        // Surrogates U+D800 and U+DFFF, '/' in three bytes, beyond U+10FFFF, cut short.
        for (const char* bad : {"\xED\xA0\x80", "\xED\xBF\xBF", "\xE0\x80\xAF", "\xF4\x90\x80\x80", "\xCE"})
            QVERIFY2(!isValidUtf8(bad), QByteArray(bad).toHex().constData());
        QCOMPARE(quotedForMessage("19,5"), std::string("19,5"));
        QCOMPARE(quotedForMessage(std::string("abc\xE2\x80\xAE") + "def"), std::string("abc\\u202Edef"));  // U+202E
        QCOMPARE(quotedForMessage("a\tb\x7F"), std::string("a\\u0009b\\u007F"));
        QCOMPARE(quotedForMessage("x\xFFy"), std::string("x\\xFFy"));
        QCOMPARE(quotedForMessage(std::string(60000, '7')), std::string(39, '7') + "…");
        QCOMPARE(quotedForMessage(std::string(40, 'g')), std::string(40, 'g'));  // exactly fits: no cut
        // Greek letters count as one character each, and are never split.
        const std::string greek = quotedForMessage(std::string(50, ' ') + "διάθλαση", 52);
        QVERIFY(isValidUtf8(greek) && greek.ends_with("δ…"));
    }
};

QTEST_APPLESS_MAIN(TestOutsideFiles)
#include "test_outside_files.moc"
