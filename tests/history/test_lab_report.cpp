#include <QDate>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "apparatus/alhaytham_screens.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "test_support.h"
#include "ui/forms.h"

namespace {

Inpdat& openData() {
    form<Diathlasimeleti>().Command2_Click();
    form<Incref>().resize(900, 560);
    form<Analysis>().resize(900, 560);
    return form<Inpdat>();
}

// The text of a PDF as a reader extracts it (the text must be selectable).
QString pdfText(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!p.waitForFinished(20000) || p.exitCode() != 0) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

// pdftotext ends every page with a form feed.
int pdfPages(const QString& path) { return int(pdfText(path).count(QLatin1Char('\f'))); }

}  // namespace

class TestLabReport : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        installFontSubstitutions();
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is needed to read the report back");
    }

    // Ptolemy's table with Snell's law over it: one A4 page whose text holds
    // the title, the date, the source, the index with its uncertainty, the
    // law, the graphs' own texts (so they are vector drawings, not pictures)
    // and every pair of the table.
    void tableWithLaw() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        d.Ptolemy_Click();
        d.Snell_1_Click();
        QTemporaryDir dir;
        const QString path = QDir(dir.path()).filePath("ptolemy");
        scope.dialogs().saveFiles = {path};
        named<QAction>(d, "labReport")->trigger();
        QVERIFY(scope.dialogs().messages.isEmpty());
        const QString pdf = path + ".pdf";
        QCOMPARE(pdfPages(pdf), 1);

        const QString text = pdfText(pdf);
        const QString simplified = text.simplified();
        for (const QString& expected :  // the graphs' own texts too: vector drawings, not pictures
             {QStringLiteral("Lab report"), QDate::currentDate().toString(Qt::ISODate),
              QStringLiteral("PTOLEMY'S DATA FOR GLASS"), QStringLiteral("n = 1.519 ± 0.026, r² = 0.9982"),
              QStringLiteral("Snell's law"), QStringLiteral("n = 1.52"), QStringLiteral("PTOLEMY Πτολεμαίος"),
              QStringLiteral("n=1.52")})
            QVERIFY2(simplified.contains(expected), qPrintable(expected));
        // Every pair of the table, with its sines.
        for (const char* row : {"1 10 7", "4 40 25", "8 80 42"}) QVERIFY2(simplified.contains(row), row);
        QVERIFY(simplified.contains(QStringLiteral("0.9848 0.6691")));

        // Witelo's pairs beyond 90° are listed but marked as left out of the fit.
        d.Vitello_Glass_Click();
        QVERIFY(d.writeLabReport(pdf));
        const QString witelo = pdfText(pdf).simplified();
        QVERIFY(witelo.contains(QStringLiteral("(6 pairs fitted")) && witelo.contains(QStringLiteral("7*")) &&
                witelo.contains(QStringLiteral("left out of the fit")));
        QVERIFY(!witelo.contains(QStringLiteral("Snell's law")));  // a new analysis, no law over it yet

        // The report shows the graphs as they stand: not over the
        // instruments' rules page, drawn in the angle graph's own scale.
        showAlHaythamRules(false, false);
        QVERIFY(!d.writeLabReport(pdf));
        QVERIFY(scope.dialogs().messages.last().contains("Analyse the data first"));
    }

    // Nothing analysed, a folder that does not exist: a message each, and
    // no file left behind. Typed pairs fill the table.
    void typedAndRefused() {
        ScreenTestScope scope;
        Inpdat& d = openData();
        QTemporaryDir dir;
        const QString first = QDir(dir.path()).filePath("first.pdf");
        QVERIFY(!d.writeLabReport(first) && !QFile::exists(first));
        QVERIFY(scope.dialogs().messages.size() == 1 && scope.dialogs().messages[0].contains("Analyse the data first"));

        std::vector<history::TypedRow> rows;
        for (int k = 0; k < Inpdat::kRows; ++k) {
            const double i = 5.0 + 6.0 * k;
            const double r = std::asin(std::sin(i * M_PI / 180.0) / 1.5) * 180.0 / M_PI;
            rows.push_back(
                {QString::number(i).toStdString(), QString::number(r, 'f', 2).replace('.', ',').toStdString()});
        }
        d.showPairs(rows);
        d.Command1_Click();
        QVERIFY(!d.writeLabReport(QDir(dir.path()).filePath("missing/report.pdf")));
        QVERIFY(scope.dialogs().messages.size() == 2 && scope.dialogs().messages[1].contains("nothing was changed"));
        QVERIFY(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());

        QVERIFY(d.writeLabReport(first));
        const QString text = pdfText(first).simplified();
        QVERIFY(text.contains("Typed by the pupil") && text.contains("14 83 41.43"));
        QVERIFY(QRegularExpression(QStringLiteral("n = 1\\.\\d{4} ± 0\\.\\d{4}")).match(text).hasMatch());
        QVERIFY(pdfPages(first) >= 1 && pdfPages(first) <= 2);
    }
};

QTEST_MAIN(TestLabReport)
#include "test_lab_report.moc"
