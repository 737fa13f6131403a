// Every file the pupil writes — the bench's measurement file, the data
// screen's table, a figure as PNG or SVG — fails the same way whatever goes
// wrong: the old file stays byte for byte, nothing else appears in its
// folder, and the pupil is told why in English and Greek. (The folder
// renamed while saving is left to the outside files' own test: every writer
// goes through the same door.)
#include <QtTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
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
        const QString path = entry.filePath();
        found << entry.fileName() + QStringLiteral(": ") +
                     (entry.isSymLink() ? QStringLiteral("link to ") + entry.symLinkTarget()
                      : entry.isDir()   ? QDir(path).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(',')
                                        : QString::fromLatin1(readAll(path).toHex()));
    }
    return found;
}

QString withMode(const QString& path, mode_t mode) {
    ::chmod(qPrintable(path), mode);
    return path;
}

bool writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// While the guard returned lives, no file of this process may grow beyond
// `bytes`: writing past it fails (EFBIG) as it would on a full disk.
auto fileSizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit normal{};
    ::getrlimit(RLIMIT_FSIZE, &normal);
    rlimit limited = normal;
    limited.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limited);
    return qScopeGuard([normal] { ::setrlimit(RLIMIT_FSIZE, &normal); });
}

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

    QString lastMessage() const { return scope_->dialogs().messages.value(scope_->dialogs().messages.size() - 1); }
    // Whether the pupil was told once more, in both languages, since there were `n` messages.
    bool toldOnce(qsizetype n) const { return scope_->dialogs().messages.size() == n + 1 && bilingual(lastMessage()); }

private slots:
    void initTestCase() { installFontSubstitutions(); }

    void init() {
        scope_ = std::make_unique<ScreenTestScope>();
        form<Diathlasimeleti>().Command1_Click();  // the bench, ready to write its series
        form<Diathlasimeleti>().Command2_Click();
        form<Inpdat>().showPairs({{"10", "6.5"}, {"20", "13"}});
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

    // A full disk, and one that fills half way through the new contents;
    // first each writer replaces an old file at all, leaving nothing else,
    // so that a refusal is the failure's.
    void fullDiskAndHalfWay() {
        for (const Writer& w : writers()) {
            QTemporaryDir sized;
            const QString written = sized.filePath(w.fileName);
            QVERIFY(writeAll(written, kOld));
            w.save(written);
            const qint64 size = QFileInfo(written).size();
            QVERIFY2(size > 2 * kOld.size() && readAll(written) != kOld, qPrintable(w.name));
            QCOMPARE(QDir(sized.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
            for (const rlim_t limit : {rlim_t(0), static_cast<rlim_t>(size / 2)}) {
                QTemporaryDir dir;
                const QString path = dir.filePath(w.fileName);
                QVERIFY(writeAll(path, kOld));
                const qsizetype messages = scope_->dialogs().messages.size();
                {
                    const auto full = fileSizeLimit(limit);
                    w.save(path);
                }
                const QString what = w.name + QStringLiteral(", limit ") + QString::number(limit);
                QVERIFY2(readAll(path) == kOld, qPrintable(what));
                QVERIFY2(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size() == 1,
                         qPrintable(what + QStringLiteral(": a temporary was left behind")));
                // The system's own reason, not a stand-in.
                QVERIFY2(toldOnce(messages) && lastMessage().contains(QString::fromStdString(systemReason(EFBIG))),
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
        const auto old = [](const QDir& d, const QString& f) {
            writeAll(d.filePath(f), kOld);
            return d.filePath(f);
        };
        const auto link = [](const QDir& d, const QString& to, const QString& f) {
            QFile::link(d.filePath(to), d.filePath(f));
            return d.filePath(f);
        };
        const std::vector<std::pair<const char*, std::function<QString(const QDir&, const QString&)>>> refusals{
            {"read-only old file", [&](const QDir& d, const QString& f) { return withMode(old(d, f), 0440); }},
            {"dangling link", [&](const QDir& d, const QString& f) { return link(d, "nowhere", f); }},
            {"loop of links",
             [&](const QDir& d, const QString& f) {
                 link(d, f, "other");
                 return link(d, "other", f);
             }},
            {"name taken by a folder",
             [](const QDir& d, const QString& f) { return d.mkdir(f) ? d.filePath(f) : QString(); }},
            {"read-only folder",
             [&](const QDir& d, const QString& f) {
                 const QString path = old(d, f);
                 withMode(d.path(), 0500);
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
                    QVERIFY2(toldOnce(messages), qPrintable(what + QStringLiteral(": ") + lastMessage()));
                    QVERIFY2(folderContents(dir) == before, qPrintable(what));
                }
                withMode(dir.path(), 0700);
            }
        }
    }

    // An old file that can be written but not read: the measurement writer
    // would have to drop what it cannot copy, the others would replace a
    // file the pupil cannot look at. Every writer refuses it and says why.
    void unreadableOldFileRefused() {
        for (const Writer& w : writers()) {
            QTemporaryDir dir;
            withMode(dir.path(), 0777);  // so that "nobody" may make a temporary
            const QString path = dir.filePath(w.fileName);
            QVERIFY(writeAll(path, kOld));
            withMode(path, 0222);
            const qsizetype messages = scope_->dialogs().messages.size();
            {
                AsNobody nobody;
                if (!AsNobody::refusesReading(qPrintable(path))) QSKIP("every file here can be read");
                w.save(path);
            }
            QVERIFY2(toldOnce(messages) && lastMessage().contains(QString::fromStdString(systemReason(EACCES))),
                     qPrintable(w.name + QStringLiteral(": ") + lastMessage()));
            QVERIFY2(readAll(path) == kOld, qPrintable(w.name));
            QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{w.fileName});
        }
    }
};

QTEST_MAIN(TestFailedWrites)
#include "test_failed_writes.moc"
