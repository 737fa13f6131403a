// A file that is there but cannot be read is neither "missing" nor
// something to write over: every reader says it cannot be read and why
// (the recall asks for no position first); test_failed_writes has the
// writers refuse it with the system's own reason. Also: a target of the longest name the file
// system allows can still be saved (its temporary's name must fit too).
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

void put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

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
        put(at(name), std::string(300, 'x'));
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

    // The reading door and the measurement file's readers, below the screens.
    void doorsSayWhy() {
        const fs::path none = unreadable("none");
        const fs::path writeOnly = unreadable(kMeasurementFileName, 0222);
        const QStringList before = names(at(""));
        {
            AsNobody nobody;
            if (!AsNobody::refusesReading(none.c_str())) QSKIP("every file here can be read");
            const InputFile in(none);
            QVERIFY(!in.isOpen() && !in.missing());
            QCOMPARE(in.reason(), kDenied);
            const MeasurementFileState state = measurementFileState(writeOnly);
            QVERIFY(!state.readable && !state.missing);
            QCOMPARE(state.reason, kDenied);
            QVERIFY(readMeasurementRecords(writeOnly).empty() && !readLastMeasurementRecord(writeOnly) &&
                    !recallMeasurementRecord(writeOnly, 1));
        }
        QCOMPARE(names(at("")), before);
        QCOMPARE(contents(writeOnly), std::string(300, 'x'));
    }

    // On the data screen: FILE's reading and RECALL both say the file cannot
    // be read and why, and RECALL asks for no position; a table file is
    // refused the same way.
    void dataScreenSaysWhy() {
        ScreenTestScope scope;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& data = form<Inpdat>();
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir_.path()));
        unreadable(kMeasurementFileName, 0222);
        const fs::path table = unreadable("table.csv");
        {
            AsNobody nobody;
            if (!AsNobody::refusesReading(kMeasurementFileName)) {
                QDir::setCurrent(previous);
                QSKIP("every file here can be read");
            }
            data.readStoredSetups();
            data.recallSetup();
            data.openTableFile(QString::fromStdString(table.string()));
        }
        QDir::setCurrent(previous);
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
