#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include "test_support.h"
#include "ui/dialogs.h"

class TestDialogFolders : public QObject {
    Q_OBJECT
private slots:
    // The first dialog starts in the given folder; after a file is chosen the
    // next starts in that file's folder, unless the folder is gone. A bare
    // suggested name goes into the start folder, one with a folder is kept.
    void firstThenLast() {
        QTemporaryDir first, other;
        DialogFolders folders(first.path());
        QCOMPARE(folders.startFolder(), first.path());
        QCOMPARE(folders.startFor(QStringLiteral("table.csv")), QDir(first.path()).filePath("table.csv"));
        QCOMPARE(folders.remember(QString()), QString());  // Cancel changes nothing
        QCOMPARE(folders.startFolder(), first.path());

        const QString chosen = QDir(other.path()).filePath("mine.csv");
        QCOMPARE(folders.remember(chosen), chosen);
        QCOMPARE(folders.startFolder(), other.path());
        QCOMPARE(folders.startFor(QStringLiteral("figure.png")), QDir(other.path()).filePath("figure.png"));
        QCOMPARE(folders.startFor(QStringLiteral("/elsewhere/figure.png")), QStringLiteral("/elsewhere/figure.png"));

        other.remove();
        QCOMPARE(folders.startFolder(), first.path());
    }

    // Documents when the desktop has one, else home.
    void documentsOrHome() {
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        QCOMPARE(DialogFolders::documentsOrHome(), QFileInfo(documents).isDir() ? documents : QDir::homePath());
    }

    // The screens' dialogs go through the program's one seam: a save dialog
    // is offered its name in the folder last used by an open dialog.
    void throughTheSeam() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        const QString opened = QDir(dir.path()).filePath("pupil.csv");
        scope.dialogs().openFiles = {opened};
        QCOMPARE(openFileDialog(QStringLiteral("Open"), QString()), opened);
        QCOMPARE(dialogFolders().startFolder(), dir.path());
        saveFileDialog(QStringLiteral("Save"), QString(), QStringLiteral("table.csv"));
        QCOMPARE(scope.dialogs().saveSuggestions.last(), QDir(dir.path()).filePath("table.csv"));
    }
};

QTEST_MAIN(TestDialogFolders)
#include "test_dialog_folders.moc"
