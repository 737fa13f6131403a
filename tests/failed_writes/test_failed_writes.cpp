// Every file the pupil writes — the bench's measurement file, the data
// screen's table, a figure as PNG or SVG — fails the same way whatever goes
// wrong: the old file stays byte for byte, nothing else appears in its
// folder, and the pupil is told why in English and Greek.
//
// The failures: a full disk and a write stopped half way (a file-size limit
// on the process: the temporary grows to the limit, then writing fails, as
// on a full disk), awkward targets (read-only, links, a folder in the way,
// a read-only or missing folder) and an old file that can be written but
// not read. The folder renamed while saving is left to the outside files'
// own test: every writer goes through the same door. The superuser writes
// into read-only folders, so when the tests run as root that row proves
// nothing and is left out; the others fail for root as for anyone.
#include <QtTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <unistd.h>

#include "app/main_menu.h"
#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "core/outside_files.h"
#include "history/inpdat_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/measurement_file.h"
#include "test_support.h"
#include "ui/figure_commands.h"
#include "ui/forms.h"
#include "unreadable.h"

namespace {

const QByteArray kOld("old file\n");

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Every entry of the folder, hidden ones included, with what it holds: a
// file's bytes, a link's target, a folder's entries.
QStringList folderContents(const QDir& dir) {
    QStringList found;
    for (const QFileInfo& entry :
         dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
        QString held;
        if (entry.isSymLink())
            held = QStringLiteral("link to ") + entry.symLinkTarget();
        else if (entry.isDir())
            held = QDir(entry.filePath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(',');
        else
            held = QString::fromLatin1(readAll(entry.filePath()).toHex());
        found << entry.fileName() + QStringLiteral(": ") + held;
    }
    return found;
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
        list.push_back(
            {QStringLiteral("measurement file"), QString::fromLatin1(kMeasurementFileName), [](const QString& path) {
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

    // Targets every writer refuses, with one bilingual message, leaving the
    // folder exactly as it was: a read-only old file, a link that leads
    // nowhere, a loop of links, the name taken by a folder, a read-only
    // folder (not for root), and, chosen in a file dialog only (the
    // measurement file's place is fixed), a folder that is gone or a
    // "folder" that is a file.
    void refusedTargets() {
        using Make = std::function<QString(const QDir&, const QString&)>;
        const auto old = [](const QDir& d, const QString& f) {
            writeAll(d.filePath(f), kOld);
            return d.filePath(f);
        };
        const auto link = [](const QDir& d, const QString& to, const QString& f) {
            QFile::link(d.filePath(to), d.filePath(f));
            return d.filePath(f);
        };
        const std::vector<std::pair<const char*, Make>> refusals{
            {"read-only old file",
             [&](const QDir& d, const QString& f) {
                 QFile::setPermissions(old(d, f), QFileDevice::ReadOwner | QFileDevice::ReadGroup);
                 return d.filePath(f);
             }},
            {"dangling link", [&](const QDir& d, const QString& f) { return link(d, "nowhere", f); }},
            {"loop of links",
             [&](const QDir& d, const QString& f) {
                 link(d, f, "other");
                 return link(d, "other", f);
             }},
            {"name taken by a folder",
             [](const QDir& d, const QString& f) {
                 d.mkdir(f);
                 return d.filePath(f);
             }},
            {"read-only folder",
             [&](const QDir& d, const QString& f) {
                 const QString path = old(d, f);
                 QFile::setPermissions(d.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
                 return path;
             }},
            {"folder gone", [](const QDir& d, const QString& f) { return d.filePath("gone/" + f); }},
            {"folder is a file", [&](const QDir& d, const QString& f) { return old(d, "plain") + '/' + f; }},
        };
        for (const Writer& w : writers()) {
            for (const auto& [name, make] : refusals) {
                const bool dialogOnly = QLatin1String(name).startsWith(QLatin1String("folder "));
                if (dialogOnly && w.fileName == QLatin1String(kMeasurementFileName)) continue;
                QTemporaryDir temporary;
                const QDir dir(temporary.path());
                const QString path = make(dir, w.fileName);
                const QString what = w.name + QStringLiteral(", ") + QLatin1String(name);
                if (::access(qPrintable(dir.path()), W_OK) != 0 || QLatin1String(name) != "read-only folder") {
                    const QStringList before = folderContents(dir);
                    const qsizetype messages = scope_->dialogs().messages.size();
                    w.save(path);
                    QVERIFY2(scope_->dialogs().messages.size() == messages + 1 && bilingual(lastMessage()),
                             qPrintable(what + QStringLiteral(": ") + lastMessage()));
                    QVERIFY2(folderContents(dir) == before, qPrintable(what));
                }
                QFile::setPermissions(dir.path(),
                                      QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
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
                                                  QFileDevice::ReadOther | QFileDevice::WriteOther |
                                                  QFileDevice::ExeOther);
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
};

QTEST_MAIN(TestFailedWrites)
#include "test_failed_writes.moc"
