// Every file the pupil writes — the bench's measurement file, the data
// screen's table, a figure as PNG or SVG — fails the same way whatever goes
// wrong: the old file stays byte for byte, nothing else appears in its
// folder, and the pupil is told why in English and Greek.
//
// The failures: a full disk and a write stopped half way (a file-size limit
// on the process: the temporary grows to the limit, then writing fails, as
// on a full disk), the name taken by a folder, a folder that does not exist
// or whose "folder" is a file, a read-only folder, an old file that can be
// written but not read, and the folder renamed while saving. The superuser
// writes into read-only folders, so when the tests run as root that row
// proves nothing and is left out; the others fail for root as for anyone.
#include <QtTest>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <thread>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "ui/figure_commands.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/measurement_file.h"
#include "core/outside_files.h"
#include "test_support.h"
#include "unreadable.h"

namespace {

const QByteArray kOld("old file\n");

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// While alive, no file of this process may grow beyond `bytes`: writing
// past it fails (EFBIG) as it would on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &normal_);
        rlimit limited = normal_;
        limited.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &normal_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit normal_{};
};

// One of the program's writers, as the pupil starts it: `save(path)` writes
// the file the pupil chose (the measurement file is always "fylaxi" in the
// current folder, so `path` must be named so).
struct Writer {
    QString name;
    QString fileName;
    std::function<void(const QString& path)> save;
};

}  // namespace

class TestFailedWrites : public QObject {
    Q_OBJECT
    std::unique_ptr<ScreenTestScope> scope_;
    Canvas* figure_ = nullptr;

    std::vector<Writer> writers() {
        std::vector<Writer> list;
        list.push_back({QStringLiteral("measurement file"), QString::fromLatin1(kMeasurementFileName),
                        [](const QString& path) {
                            const QString previous = QDir::currentPath();
                            QDir::setCurrent(QFileInfo(path).absolutePath());
                            form<Hmiky>().fylaxe_Click();
                            QDir::setCurrent(previous);
                        }});
        list.push_back({QStringLiteral("table"), QStringLiteral("table.csv"), [this](const QString& path) {
                            scope_->dialogs().saveFiles = {path};
                            form<Inpdat>().saveTable();
                        }});
        for (const char* suffix : {"png", "svg"})
            list.push_back({QStringLiteral("figure ") + QLatin1String(suffix),
                            QStringLiteral("figure.") + QLatin1String(suffix), [this](const QString& path) {
                                scope_->dialogs().saveFiles = {path};
                                saveFigureInteractive(*figure_);
                            }});
        return list;
    }

    QString lastMessage() const {
        const QStringList& m = scope_->dialogs().messages;
        return m.isEmpty() ? QString() : m.last();
    }

private slots:
    void initTestCase() { installFontSubstitutions(); }

    void init() {
        scope_ = std::make_unique<ScreenTestScope>();
        form<Diathlasimeleti>().Command1_Click();  // the bench, ready to write its series
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& data = form<Inpdat>();
        data.showPairs({{"10", "6.5"}, {"20", "13"}});
        figure_ = new Canvas;
        figure_->resize(300, 200);
        figure_->scale(0, 0, 10, 10);
        figure_->line(0, 0, 10, 10, QColor(255, 0, 0));
        figure_->print(QStringLiteral("n = 1.5"));
    }
    void cleanup() {
        delete figure_;
        scope_.reset();
    }

    // Each writer works at all, so that a refusal below is the failure's.
    void everyWriterWrites() {
        for (const Writer& w : writers()) {
            QTemporaryDir dir;
            const QString path = dir.filePath(w.fileName);
            QVERIFY(writeAll(path, kOld));
            w.save(path);
            QVERIFY2(readAll(path) != kOld && !readAll(path).isEmpty(), qPrintable(w.name));
            QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        }
    }

    // A full disk, and one that fills half way through the new contents.
    void fullDiskAndHalfWay() {
        for (const Writer& w : writers()) {
            QTemporaryDir sized;
            w.save(sized.filePath(w.fileName));
            const qint64 size = QFileInfo(sized.filePath(w.fileName)).size();
            QVERIFY2(size > 2 * kOld.size(), qPrintable(w.name));
            for (const rlim_t limit : {rlim_t(0), static_cast<rlim_t>(size / 2)}) {
                QTemporaryDir dir;
                const QString path = dir.filePath(w.fileName);
                QVERIFY(writeAll(path, kOld));
                const qsizetype messages = scope_->dialogs().messages.size();
                {
                    FileSizeLimit full(limit);
                    w.save(path);
                }
                const QString what = w.name + QStringLiteral(", limit ") + QString::number(limit);
                QVERIFY2(readAll(path) == kOld, qPrintable(what));
                QVERIFY2(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size() == 1,
                         qPrintable(what + QStringLiteral(": a temporary was left behind")));
                QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()),
                         qPrintable(what + QStringLiteral(": ") + lastMessage()));
                // The system's own reason, not a stand-in.
                QVERIFY2(lastMessage().contains(QString::fromStdString(systemReason(EFBIG))),
                         qPrintable(what + QStringLiteral(": ") + lastMessage()));
            }
        }
    }

    // A read-only old file, a link that leads nowhere and a loop of links:
    // every writer refuses them alike instead of putting a plain file there.
    void awkwardTargetsRefused() {
        for (const Writer& w : writers()) {
            for (int kind = 0; kind < 3; ++kind) {
                QTemporaryDir dir;
                const QString path = dir.filePath(w.fileName);
                if (kind == 0) {
                    QVERIFY(writeAll(path, kOld));
                    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
                } else if (kind == 1) {
                    QVERIFY(QFile::link(dir.filePath("nowhere"), path));
                } else {
                    QVERIFY(QFile::link(dir.filePath("other"), path) && QFile::link(path, dir.filePath("other")));
                }
                const QStringList before = QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
                const qsizetype messages = scope_->dialogs().messages.size();
                w.save(path);
                const QString what = w.name + QStringLiteral(", case ") + QString::number(kind);
                QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()), qPrintable(what));
                QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
                if (kind == 0) QCOMPARE(readAll(path), kOld);
                else QVERIFY2(QFileInfo(path).isSymLink(), qPrintable(what));
            }
        }
    }

    // An old file that can be written but not read: the measurement writer
    // would have to drop what it cannot copy, the others would replace a
    // file the pupil cannot look at. Every writer refuses it and says why.
    void unreadableOldFileRefused() {
        for (const Writer& w : writers()) {
            QTemporaryDir dir;
            QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                                  QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther);
            const QString path = dir.filePath(w.fileName);
            QVERIFY(writeAll(path, kOld));
            QFile::setPermissions(path, QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther);
            const qsizetype messages = scope_->dialogs().messages.size();
            {
                AsNobody nobody;
                if (!AsNobody::refusesReading(qPrintable(path))) QSKIP("every file here can be read");
                w.save(path);
            }
            QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()), qPrintable(w.name));
            QVERIFY2(lastMessage().contains(QString::fromStdString(systemReason(EACCES))),
                     qPrintable(w.name + QStringLiteral(": ") + lastMessage()));
            QVERIFY2(readAll(path) == kOld, qPrintable(w.name));
            QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{w.fileName});
        }
    }

    // The folder renamed back and forth while the pupil saves again and
    // again: a save lands whole in whichever name the folder has, or fails
    // with a message, and no temporary is ever left in it.
    void folderRenamedWhileSaving() {
        for (const Writer& w : writers()) {
            if (w.fileName == QLatin1String(kMeasurementFileName)) continue;  // its folder is the current one
            QTemporaryDir dir;
            const QString a = dir.filePath(QStringLiteral("a")), b = dir.filePath(QStringLiteral("b"));
            QVERIFY(QDir().mkdir(a) && writeAll(a + QLatin1Char('/') + w.fileName, kOld));
            std::atomic<bool> stop{false};
            std::atomic<int> renames{0};
            const QByteArray from = QFile::encodeName(a), to = QFile::encodeName(b);
            std::thread renamer([&] {
                while (!stop) {
                    if (std::rename(from.constData(), to.constData()) == 0) ++renames;
                    if (std::rename(to.constData(), from.constData()) == 0) ++renames;
                }
            });
            const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
            int saves = 0;
            while (std::chrono::steady_clock::now() < until) {
                w.save(a + QLatin1Char('/') + w.fileName);
                ++saves;
            }
            stop = true;
            renamer.join();
            QVERIFY2(renames > 10 && saves > 10, qPrintable(w.name));
            const QString folder = QFileInfo::exists(a) ? a : b;
            QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{w.fileName});
            QVERIFY2(!readAll(folder + QLatin1Char('/') + w.fileName).isEmpty(), qPrintable(w.name));
            for (const QString& m : scope_->dialogs().messages) QVERIFY2(bilingual(m), qPrintable(m));
            scope_->dialogs().messages.clear();
        }
    }

    // The name taken by a folder; a read-only folder (not for root).
    void nameTakenOrFolderReadOnly() {
        for (const Writer& w : writers()) {
            QTemporaryDir dir;
            const QString path = dir.filePath(w.fileName);
            QVERIFY(QDir(dir.path()).mkdir(w.fileName));
            w.save(path);
            QVERIFY2(QFileInfo(path).isDir() && QDir(path).isEmpty(), qPrintable(w.name));
            QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
            QVERIFY2(bilingual(lastMessage()), qPrintable(w.name + QStringLiteral(": ") + lastMessage()));

            QTemporaryDir locked;
            const QString old = locked.filePath(w.fileName);
            QVERIFY(writeAll(old, kOld));
            QFile::setPermissions(locked.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
            if (::access(qPrintable(locked.path()), W_OK) != 0) {
                const qsizetype messages = scope_->dialogs().messages.size();
                w.save(old);
                QVERIFY2(readAll(old) == kOld, qPrintable(w.name));
                QCOMPARE(QDir(locked.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
                QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()),
                         qPrintable(w.name));
            }
            QFile::setPermissions(locked.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        }
    }

    // Chosen in a file dialog: a folder that is gone, or a "folder" that is
    // a file. The measurement file's place is fixed, so it is not asked.
    void impossibleFolders() {
        for (const Writer& w : writers()) {
            if (w.fileName == QLatin1String(kMeasurementFileName)) continue;
            QTemporaryDir dir;
            QVERIFY(writeAll(dir.filePath("plain"), kOld));
            for (const QString& path : {dir.filePath("gone/" + w.fileName), dir.filePath("plain/" + w.fileName)}) {
                const qsizetype messages = scope_->dialogs().messages.size();
                w.save(path);
                QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()),
                         qPrintable(path));
            }
            QCOMPARE(readAll(dir.filePath("plain")), kOld);
            QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{QStringLiteral("plain")});
        }
    }
};

QTEST_MAIN(TestFailedWrites)
#include "test_failed_writes.moc"
