#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QPrinter>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "paint_probe.h"
#include "test_support.h"
#include "ui/figure_commands.h"

namespace {

// A small figure: a red diagonal, a blue box and two texts.
void drawFigure(Canvas& c) {
    c.resize(400, 300);
    c.scale(0, 0, 400, 300);
    c.cls();
    c.setDrawWidth(3);
    c.line(0, 0, 400, 300, QColor(255, 0, 0));
    c.setDrawWidth(1);
    c.filledBox(300, 20, 380, 60, QColor(0, 0, 255));
    c.setCurrentX(20);
    c.setCurrentY(200);
    c.print(QStringLiteral("REFRACTION Διάθλαση"));
    c.print(QStringLiteral("n=1.50"));
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The page size a PDF declares, in points.
QSizeF mediaBox(const QByteArray& pdf) {
    static const QRegularExpression box(QStringLiteral(R"(/MediaBox\s*\[\s*0\s+0\s+([\d.]+)\s+([\d.]+)\s*\])"));
    const auto m = box.match(QString::fromLatin1(pdf));
    return m.hasMatch() ? QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble()) : QSizeF();
}

}  // namespace

class TestFigureExport : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // PNG at twice the size on the screen, drawn from the record, up to a cap.
    void pngAtTwiceTheSizeUpToACap() {
        QTemporaryDir dir;
        Canvas c;
        drawFigure(c);
        const QString path = dir.filePath("figure.png");
        QCOMPARE(saveFigureFile(c, path), QString());
        const QImage image(path);
        QCOMPARE(image.size(), QSize(800, 600));
        QCOMPARE(image.pixelColor(400, 300), QColor(255, 0, 0));  // the middle of the diagonal
        QCOMPARE(image.pixelColor(680, 80), QColor(0, 0, 255));
        QCOMPARE(image.pixelColor(700, 500), QColor(Qt::white));
        // A window as large as a 4K screen does not become a 48-megapixel
        // image: the long side is capped, the proportions kept.
        c.resize(4000, 3000);
        QCOMPARE(figureImage(c).size(), QSize(4096, 3072));
    }

    // SVG keeps texts as text and lines as vector paths.
    void svgIsVector() {
        QTemporaryDir dir;
        Canvas c;
        drawFigure(c);
        const QString path = dir.filePath("figure.SVG");
        QCOMPARE(saveFigureFile(c, path), QString());
        QXmlStreamReader xml(readAll(path));
        QStringList texts;
        int shapes = 0;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement) continue;
            const auto name = xml.name();
            if (name == QLatin1String("text"))
                texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
            if (QStringList{"path", "polyline", "line", "rect"}.contains(name)) ++shapes;
            QVERIFY(name != QLatin1String("image"));  // nothing drawn as pixels
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        // Text elements, one per run of a script: Latin and Greek apart.
        QVERIFY(texts.contains(QStringLiteral("REFRACTION")) && texts.contains(QStringLiteral("Διάθλαση")));
        QVERIFY(texts.contains(QStringLiteral("n=1.50")));
        QVERIFY(shapes >= 2);
    }

    // The context menu shows the window's keys; each item says where the
    // figure went; printing goes to the chosen printer.
    void menuAndPrint() {
        ScreenTestScope scope;
        QTemporaryDir dir;
        Canvas c;
        drawFigure(c);
        const QList<QAction*> actions = c.actions();
        QCOMPARE(actions.size(), 2);
        QVERIFY(actions[0]->text().endsWith(QKeySequence(QKeySequence::Save).toString(QKeySequence::NativeText)));

        scope.dialogs().saveFiles = {dir.filePath("named")};  // no suffix: a PNG
        actions[0]->trigger();
        QVERIFY(QImageReader(dir.filePath("named.png")).canRead());
        QCOMPARE(scope.dialogs().messages.size(), 1);
        QVERIFY(scope.dialogs().messages[0].contains(dir.filePath("named.png")));
        actions[0]->trigger();  // Cancel: nothing
        QCOMPARE(scope.dialogs().messages.size(), 1);

        actions[1]->trigger();  // print dialog cancelled
        QCOMPARE(scope.dialogs().messages.size(), 1);
        scope.dialogs().printToPdf = dir.filePath("page.pdf");
        actions[1]->trigger();
        QVERIFY(scope.dialogs().messages.last().contains(dir.filePath("page.pdf")));
        const QByteArray pdf = readAll(dir.filePath("page.pdf"));
        QVERIFY(pdf.startsWith("%PDF") && pdf.size() > 1000);
        const QSizeF page = mediaBox(pdf);
        QVERIFY2(page.width() > page.height(), "a wide figure is printed on a page turned sideways");
    }

    // The printed page carries the figure as the screen shows it: as large
    // as the printable area allows, texts at the same size relative to the
    // lines. A printer's 1200 dots per inch once made every text twelve
    // times too large.
    void printedPageIsTheScreenFigure() {
        Canvas c;
        drawFigure(c);
        ProbeDevice screen(c.size(), c.logicalDpiY());
        {
            QPainter painter(&screen);
            c.renderFigure(painter);
        }

        QTemporaryDir dir;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath("page.pdf"));
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageOrientation(QPageLayout::Portrait);
        const QSizeF area = printer.pageLayout().paintRectPixels(printer.resolution()).size();
        ProbeDevice paper(area.toSize(), printer.resolution());
        {
            QPainter painter(&paper);
            paintFigureOnPage(c, painter, area);
        }
        const QRectF place = figureOnPage(QSizeF(c.size()), area);
        // A 4:3 figure on a portrait page: as wide as the printable area.
        QCOMPARE(place.width(), area.width());
        const QRectF pageRect(QPointF(0, 0), area);
        const double k = place.width() / c.width();  // page pixels per screen pixel
        // Thin lines sit on pixel centres: half a screen pixel may stick out
        // at the figure's edge, where the figure's clip cuts it.
        const QRectF ink = paper.engine.ink;
        QVERIFY2(pageRect.adjusted(-k, -k, k, k).contains(ink),
                 qPrintable(QString::asprintf("%g,%g %gx%g on %gx%g", ink.x(), ink.y(), ink.width(), ink.height(),
                                              area.width(), area.height())));
        QVERIFY(paper.engine.ink.width() > 0.99 * area.width());

        QCOMPARE(paper.engine.texts.size(), screen.engine.texts.size());
        QVERIFY(paper.engine.texts.size() >= 2);  // a run per script: Latin and Greek apart
        for (std::size_t i = 0; i < screen.engine.texts.size(); ++i) {
            const QRectF s = screen.engine.texts[i].box;
            const QRectF p = paper.engine.texts[i].box;
            const QRectF expected(place.x() + s.x() * k, place.y() + s.y() * k, s.width() * k, s.height() * k);
            QVERIFY2(pageRect.contains(p), qPrintable(paper.engine.texts[i].text));
            const double tolerance = 0.03 * expected.width() + k;  // hinting differs a little at each resolution
            QVERIFY2(std::abs(p.left() - expected.left()) < k && std::abs(p.top() - expected.top()) < k &&
                         std::abs(p.width() - expected.width()) < tolerance &&
                         std::abs(p.height() - expected.height()) < 0.1 * expected.height() + k,
                     qPrintable(paper.engine.texts[i].text +
                                QString::asprintf(": printed %g,%g %gx%g, expected %g,%g %gx%g", p.x(), p.y(),
                                                  p.width(), p.height(), expected.x(), expected.y(), expected.width(),
                                                  expected.height())));
        }

        // With its heading (what, when, whose) on top: the figure keeps its
        // proportions below it and no figure text runs into it.
        c.setWindowTitle(QStringLiteral("Data Analysis"));
        c.setPrintNote(QStringLiteral("n = 1.523"));
        const QString heading = figureHeading(c, QDate(2026, 11, 26));
        QCOMPARE(heading,
                 QStringLiteral("Data Analysis     2026-11-26     n = 1.523     Name  Όνομα: ____________________"));
        ProbeDevice headed(area.toSize(), printer.resolution());
        {
            QPainter painter(&headed);
            paintFigureOnPage(c, painter, area, heading);
        }
        const auto& texts = headed.engine.texts;
        // The heading comes first, in a run per script.
        const std::size_t runs = texts.size() - screen.engine.texts.size();
        QVERIFY(runs >= 2 && texts[0].text.startsWith(QStringLiteral("Data Analysis")) && texts[0].box.top() >= 0.0);
        double headingFoot = 0.0;
        for (std::size_t i = 0; i < runs; ++i) headingFoot = std::max(headingFoot, texts[i].box.bottom());
        for (std::size_t i = runs; i < texts.size(); ++i) QVERIFY(texts[i].box.top() > headingFoot);
        QVERIFY(pageRect.adjusted(-k, -k, k, k).contains(headed.engine.ink));
        c.cls();
        QVERIFY(c.printNote().isEmpty());  // a new drawing states its own

        printFigure(c, printer);
        QVERIFY(mediaBox(readAll(dir.filePath("page.pdf"))).height() > 800);  // A4 upright: 842 points
    }
};

QTEST_MAIN(TestFigureExport)
#include "test_figure_export.moc"
