#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include "ui/help_pages.h"

// tools/screenshots.sh writes a picture of every screen that has a help
// page, at 100 % and 200 %, none of them is blank, and the guide's own
// copies are of the screens as they are now.
class TestScreenshots : public QObject {
    Q_OBJECT
private slots:
    void everyScreenPictured() {
        QTemporaryDir out;
        QVERIFY(out.isValid());
        QProcess run;
        run.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        run.start(QStringLiteral("bash"), {QStringLiteral(REFRACTION_SOURCE_DIR "/tools/screenshots.sh"),
                                           QStringLiteral(REFRACTION_BUILD_DIR), out.path()});
        QVERIFY(run.waitForFinished(240000));
        QCOMPARE(run.exitStatus(), QProcess::NormalExit);
        QCOMPARE(run.exitCode(), 0);

        QStringList names{QStringLiteral("help")};
        for (const HelpPage& p : helpPages()) names << QString::fromLatin1(p.page).chopped(3);
        for (const QString& name : names) {
            const QImage one(out.filePath(name + QStringLiteral(".png")));
            const QImage two(out.filePath(QStringLiteral("2x/") + name + QStringLiteral(".png")));
            QVERIFY2(!one.isNull(), qPrintable(name + " missing"));
            QVERIFY2(!two.isNull(), qPrintable(name + " missing at 200 %"));
            QCOMPARE(two.size(), one.size() * 2);
            // Not blank: a screen shows at least a few colours and some
            // pixels differ from the background in the corner.
            QSet<QRgb> colours;
            int unlikeCorner = 0;
            const QRgb corner = one.pixel(0, 0);
            for (int y = 0; y < one.height(); y += 3)
                for (int x = 0; x < one.width(); x += 3) {
                    const QRgb c = one.pixel(x, y);
                    if (colours.size() < 64) colours.insert(c);
                    if (c != corner) ++unlikeCorner;
                }
            QVERIFY2(colours.size() >= 3, qPrintable(name + " is nearly one colour"));
            QVERIFY2(unlikeCorner > one.width() * one.height() / 9 / 100, qPrintable(name + " is nearly empty"));
            // The guide in the source tree shows the same screens: a picture
            // whose size no longer matches its screen's is out of date.
            const QImage kept(QStringLiteral(REFRACTION_SOURCE_DIR "/docs/screenshots/") + name +
                              QStringLiteral(".png"));
            QVERIFY2(!kept.isNull(), qPrintable(QStringLiteral("docs/screenshots has no ") + name));
            QVERIFY2(kept.size() == one.size(),
                     qPrintable(QStringLiteral("docs/screenshots/") + name +
                                QStringLiteral(".png is out of date: run tools/screenshots.sh")));
        }
    }
};

QTEST_MAIN(TestScreenshots)
#include "test_screenshots.moc"
