#include <QtTest>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "ui/forms.h"
#include "app/main_menu.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "history/pupil_table.h"
#include "test_support.h"

using namespace history;

namespace {

QStringList grid(const Inpdat& d) {
    QStringList cells;
    for (int k = 0; k < Inpdat::kRows; ++k) cells << d.Text1[k]->text() << d.Refr[k]->text();
    return cells;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

}  // namespace

class TestPupilTable : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void readsCommaAndGreekSpreadsheetForms() {
        const TableFileReading plain = parseTableFile("incidence,refraction\r\n10,6.6\n20, 13.2\n30,\n\n");
        QVERIFY(!plain.error);
        QCOMPARE(int(plain.rows.size()), 3);
        QCOMPARE(plain.rows[1].refraction, std::string("13.2"));
        QCOMPARE(plain.rows[2].refraction, std::string(""));  // a row may wait for its refraction
        const TableFileReading greek = parseTableFile("\xEF\xBB\xBF\"πρόσπτωση\";\"διάθλαση\"\n10;6,6\n\"20\";\"13,25\"\n");
        QVERIFY(!greek.error);
        QCOMPARE(greek.rows[0].refraction, std::string("6.6"));
        QCOMPARE(greek.rows[1].refraction, std::string("13.25"));
        QVERIFY(!parseTableFile("10,7\n20,13\n").error);  // no header at all
    }

    // Every bad file names its line (0: the file as a whole).
    void refusesBadFiles() {
        std::string fifteen = "i,r\n";
        for (int k = 0; k < 15; ++k) fifteen += std::to_string(k) + ",1\n";
        struct Case { std::string text; int line; };
        const std::vector<Case> cases{
            {"i,r\n10,7,3\n", 2},             // three cells
            {"i,r\n10\n", 2},                 // one cell
            {"i,r\n10,abc\n", 2},             // letters
            {"i,r\n10,7\n\n20,13\n", 3},      // a blank line inside
            {"i,r\n19,5,13\n", 2},            // a decimal comma with comma cells
            {"i,r\n10,7\n200,7\n", 3},        // not an angle
            {"i,r\n10,nan\n", 2},
            {fifteen, 16},
            {std::string("i,r\n10,7\n\x01\x02\xff,3\n", 14), 3},  // binary junk
            {"i,r\n1\xC3,2\n", 2},            // broken UTF-8
            {"i,r\n10,\xED\xA0\x80\n", 2},    // an encoded surrogate
            {"", 0},
            {"i,r\n", 0},
            {std::string(kLargestTableFile + 1, '1'), 0},
        };
        for (const Case& c : cases) {
            const TableFileReading r = parseTableFile(c.text);
            QVERIFY2(r.error && r.rows.empty(), c.text.substr(0, 30).c_str());
            QCOMPARE(r.error->line, c.line);
            QVERIFY(!r.error->english.empty() && !r.error->greek.empty());
        }
    }

    // A cell quoted in a message is cut short and cannot reverse the text
    // after it: direction controls and other invisible characters show as
    // escapes.
    void quotedCellsStayReadable() {
        const TableFileReading reversed = parseTableFile("i,r\n10,7\xE2\x80\xAE" "12\n");  // U+202E
        QVERIFY(reversed.error);
        for (const std::string& text : {reversed.error->english, reversed.error->greek})
            QVERIFY2(text.find("\xE2\x80\xAE") == std::string::npos && text.find("\\u202E") != std::string::npos,
                     text.c_str());
        const TableFileReading digits = parseTableFile("i,r\n10," + std::string(60000, '9') + "\n");
        QVERIFY(digits.error && digits.error->english.size() < 120 && digits.error->greek.size() < 160);
    }

    // A FIFO chosen as a table would wait for a writer for ever: refused
    // at once, with the reason, the grid as it was.
    void pipeIsRefusedAtOnce() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        const QString pipe = dir.filePath("pipe.csv");
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QStringList held = grid(d);
        ::alarm(20);  // a hang ends the test instead of the test run
        QVERIFY(!d.openTableFile(pipe));
        ::alarm(0);
        QVERIFY2(scope.dialogs().messages.last().contains("pipe"), qPrintable(scope.dialogs().messages.last()));
        QCOMPARE(grid(d), held);
    }

    // Through the screen: a saved grid opens back exactly; a loaded table
    // saves as its pairs; a bad file and a failed save change nothing.
    void roundTripsAndFailures() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        const QStringList typed{"10", "6.6", "20", "13.25", "30", "", "45.5", "28.125"};
        for (int k = 0; k < 4; ++k) {
            d.Text1[k]->setText(typed[2 * k]);
            d.Refr[k]->setText(typed[2 * k + 1]);
        }
        const QStringList before = grid(d);
        const QString path = dir.filePath("mine.csv");
        scope.dialogs().saveFiles = {path};
        d.saveTable();
        QCOMPARE(readAll(path), QByteArray("incidence,refraction\n10,6.6\n20,13.25\n30,\n45.5,28.125\n"));
        for (QLineEdit* box : d.Text1) box->clear();
        scope.dialogs().openFiles = {path};
        d.openTable();
        QCOMPARE(grid(d), before);
        QVERIFY(scope.dialogs().messages.isEmpty());

        d.Newt_Click();
        QVERIFY(d.saveTableFile(dir.filePath("newton.csv")));
        const QByteArray newton = readAll(dir.filePath("newton.csv"));
        QVERIFY(newton.startsWith("incidence,refraction\n10,6.433\n") && newton.endsWith("90,40.1833\n"));

        // A bad file: a message naming the line, the grid untouched.
        QVERIFY(writeAll(dir.filePath("bad.csv"), "i;r\n10;7\n20;x\n"));
        const QStringList held = grid(d);
        QVERIFY(!d.openTableFile(dir.filePath("bad.csv")));
        QVERIFY(scope.dialogs().messages.last().contains("line 3") && scope.dialogs().messages.last().contains("γραμμή 3"));
        QCOMPARE(grid(d), held);
        QVERIFY(!d.openTableFile(dir.filePath("missing.csv")));

        // A file the program may not replace stays byte for byte.
        const QString locked = dir.filePath("locked");
        QVERIFY(QDir().mkdir(locked));
        QVERIFY(writeAll(locked + "/old.csv", "incidence,refraction\n1,1\n"));
        QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        const bool writable = QFileInfo(locked).isWritable();  // root writes anyway
        const int messages = scope.dialogs().messages.size();
        const bool saved = d.saveTableFile(locked + "/old.csv");
        if (!writable) {
            QVERIFY(!saved);
            QCOMPARE(scope.dialogs().messages.size(), messages + 1);
            QCOMPARE(readAll(locked + "/old.csv"), QByteArray("incidence,refraction\n1,1\n"));
            QCOMPARE(QDir(locked).entryList(QDir::Files).size(), 1);  // no temporary left
        }
        QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        // A name that cannot be a file at all fails whatever the user.
        QVERIFY(!d.saveTableFile(dir.filePath("no/such/folder/t.csv")));
    }

    // A full disk shows only when the written text is flushed, which the
    // save's commit does not check: the old table was replaced by an empty
    // file and the pupil told nothing.
    void fullDiskKeepsTheOldTable() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        form<Diathlasimeleti>().Command2_Click();
        Inpdat& d = form<Inpdat>();
        d.Text1[0]->setText("10");
        d.Refr[0]->setText("6.5");
        const QString path = dir.filePath("old.csv");
        QVERIFY(writeAll(path, "incidence,refraction\n1,1\n"));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit normal{};
        ::getrlimit(RLIMIT_FSIZE, &normal);
        rlimit full = normal;
        full.rlim_cur = 0;
        ::setrlimit(RLIMIT_FSIZE, &full);
        const bool saved = d.saveTableFile(path);
        ::setrlimit(RLIMIT_FSIZE, &normal);
        QVERIFY(!saved);
        QCOMPARE(readAll(path), QByteArray("incidence,refraction\n1,1\n"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        QVERIFY(scope.dialogs().messages.last().contains("δεν άλλαξε τίποτα"));
    }
};

QTEST_MAIN(TestPupilTable)
#include "test_pupil_table.moc"
