// A file that is there but cannot be read is not "missing": every reader
// says it cannot be read and why (test_failed_writes: the writers refuse
// it). Also: a target of the longest name allowed can still be saved.
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "app/main_menu.h"
#include "core/outside_files.h"
#include "history/inpdat_screen.h"
#include "semicircle/measurement_file.h"
#include "test_support.h"
#include "ui/forms.h"
#include "unreadable.h"

namespace fs = std::filesystem;

namespace {

std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

QStringList names(const fs::path& folder) {
    QStringList list;
    for (const auto& entry : fs::directory_iterator(folder)) list << QString::fromStdString(entry.path().filename());
    list.sort();
    return list;
}

const std::string kDenied = systemReason(EACCES);

}  // namespace

class TestUnreadableFiles : public QObject {
    Q_OBJECT
    QTemporaryDir dir_;
    fs::path at(const std::string& name) const { return fs::path(dir_.path().toStdString()) / name; }

    // A file of that name with some bytes, that nobody may read.
    fs::path unreadable(const std::string& name, mode_t mode = 0) const {
        std::ofstream(at(name), std::ios::binary) << std::string(300, 'x');
        ::chmod(at(name).c_str(), mode);
        return at(name);
    }

private slots:
    void initTestCase() {
        // Open to all, so that "nobody" can reach the files and make temporaries.
        QVERIFY(::chmod(dir_.path().toLocal8Bit().constData(), 0777) == 0);
    }
    void init() {
        for (const auto& entry : fs::directory_iterator(at(""))) fs::remove_all(entry.path());
    }

    // Below the screens, the reading door and the measurement file's
    // readers; on the data screen, FILE's reading, RECALL (which asks for no
    // position first) and a table file: each says the file cannot be read
    // and why, and nothing is changed.
    void readersSayWhy() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& data = form<Inpdat>();
        const fs::path measurements = unreadable(kMeasurementFileName, 0222), table = unreadable("table.csv");
        const QStringList before = names(at(""));
        const QString previous = QDir::currentPath();
        const auto back = qScopeGuard([&previous] { QDir::setCurrent(previous); });
        QVERIFY(QDir::setCurrent(dir_.path()));
        {
            AsNobody nobody;
            if (!AsNobody::refusesReading(table.c_str())) QSKIP("every file here can be read");
            const InputFile in(table);
            QVERIFY(!in.isOpen() && !in.missing());
            QCOMPARE(in.reason(), kDenied);
            const MeasurementFileState state = measurementFileState(measurements);
            QVERIFY(!state.readable && !state.missing);
            QCOMPARE(state.reason, kDenied);
            QVERIFY(readMeasurementRecords(measurements).empty() && !readLastMeasurementRecord(measurements) &&
                    !recallMeasurementRecord(measurements, 1));
            data.readStoredSetups();
            data.recallSetup();
            data.openTableFile(QString::fromStdString(table.string()));
        }
        QCOMPARE(names(at("")), before);
        QCOMPARE(contents(measurements), std::string(300, 'x'));
        QVERIFY(scope.dialogs().prompts.isEmpty());
        const QStringList& m = scope.dialogs().messages;
        QCOMPARE(m.size(), 3);
        for (const QString& message : m) {
            QVERIFY2(bilingual(message) && message.contains(QString::fromStdString(kDenied)), qPrintable(message));
            QVERIFY2(!message.contains(QStringLiteral("no measurement file")), qPrintable(message));
        }
    }

    // The longest name the file system allows, in Latin letters and in
    // Greek (two bytes each): saved, and nothing else left beside it.
    void longestNames() {
        std::string greek;
        for (int k = 0; k < 127; ++k) greek += "\xCE\xB1";  // α
        for (const std::string& name : {std::string(255, 'a'), greek}) {
            init();
            const FileWriteResult first = replaceFile(at(name), "first");
            QVERIFY2(first.ok, first.reason.c_str());
            const FileWriteResult second = replaceFile(at(name), "second");
            QVERIFY2(second.ok, second.reason.c_str());
            QCOMPARE(contents(at(name)), std::string("second"));
            QCOMPARE(names(at("")).size(), 1);
        }
    }
};

QTEST_MAIN(TestUnreadableFiles)
#include "test_unreadable_files.moc"
