// The source folders form floors: a file includes its own folder and the
// floors below it, never a floor above or a neighbour on its own floor.
// Screens that must reach upwards go through the places and routes the
// shell connects.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <map>
#include <set>

namespace {

// Lowest first. Folders on one floor do not include each other.
const std::vector<std::set<QString>> kFloors = {
    {"core"}, {"canvas"}, {"ui"}, {"semicircle"}, {"analysis"}, {"apparatus", "models"}, {"history"}, {"app"},
};

int floorOf(const QString& folder) {
    for (std::size_t k = 0; k < kFloors.size(); ++k)
        if (kFloors[k].count(folder)) return static_cast<int>(k);
    return -1;
}

}  // namespace

class TestFloors : public QObject {
    Q_OBJECT
private slots:
    void includesPointDown() {
        const QString src = QStringLiteral(REFRACTION_SOURCE_DIR "/src");
        const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s*\"([a-z_]+)/"));
        const QRegularExpression qtInclude(QStringLiteral("^\\s*#\\s*include\\s*<Q"));
        QStringList wrong;
        int files = 0;
        QDirIterator it(src, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString folder = QDir(src).relativeFilePath(path).section(QLatin1Char('/'), 0, 0);
            const int own = floorOf(folder);
            if (own < 0) {
                wrong << QStringLiteral("%1: folder %2 stands on no floor").arg(path, folder);
                continue;
            }
            ++files;
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            int line = 0;
            while (!file.atEnd()) {
                const QString text = QString::fromUtf8(file.readLine());
                ++line;
                if (folder == QLatin1String("core") && qtInclude.match(text).hasMatch())
                    wrong << QStringLiteral("%1:%2: the core uses no Qt").arg(path).arg(line);
                const auto m = include.match(text);
                if (!m.hasMatch()) continue;
                const QString target = m.captured(1);
                const int theirs = floorOf(target);
                if (target != folder && theirs >= own)
                    wrong << QStringLiteral("%1:%2: %3 includes %4 (a floor above or beside it)")
                                 .arg(path)
                                 .arg(line)
                                 .arg(folder, target);
            }
        }
        QVERIFY2(files > 100, "the source tree was not found");
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    }
};

QTEST_APPLESS_MAIN(TestFloors)
#include "test_floors.moc"
