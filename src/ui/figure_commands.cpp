#include "ui/figure_commands.h"

#include <QFileInfo>
#include <QPrinter>

#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "core/message_text.h"
#include "ui/dialogs.h"

namespace {

// Where a file went, in full, as a message may quote it.
QString quotedPath(const QString& path) {
    return QString::fromStdString(quotedForMessage(QFileInfo(path).absoluteFilePath().toStdString(), 200));
}

}  // namespace

void saveFigureInteractive(const Canvas& canvas) {
    QString path =
        saveFileDialog(QStringLiteral("Save figure  Αποθήκευση σχήματος"),
                       QStringLiteral("PNG image (*.png);;SVG drawing (*.svg)"), QStringLiteral("figure.png"));
    if (path.isEmpty()) return;
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix != QLatin1String("png") && suffix != QLatin1String("svg")) path += QStringLiteral(".png");
    const QString error = saveFigureFile(canvas, path);
    if (error.isEmpty()) {
        messageBox(QStringLiteral("The figure was saved in %1  Το σχήμα αποθηκεύτηκε στο %1").arg(quotedPath(path)));
        return;
    }
    messageBox(QStringLiteral("The figure could not be saved in %1 (%2); nothing was changed.  "
                              "Το σχήμα δεν αποθηκεύτηκε στο %1· δεν άλλαξε τίποτα.")
                   .arg(QString::fromStdString(quotedForMessage(QFileInfo(path).fileName().toStdString())), error));
}

void printFigureInteractive(const Canvas& canvas) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(figureTitle(canvas));
    // A wide figure fills more of a page turned sideways.
    printer.setPageOrientation(canvas.width() > canvas.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (!choosePrinterDialog(printer)) return;
    if (!printFigure(canvas, printer)) {
        messageBox(QStringLiteral("The figure could not be printed.  Το σχήμα δεν τυπώθηκε."));
        return;
    }
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty())
        messageBox(QStringLiteral("The figure was printed to %1  Το σχήμα τυπώθηκε στο %1")
                       .arg(quotedPath(printer.outputFileName())));
    else
        messageBox(QStringLiteral("The figure was sent to the printer %1  Το σχήμα στάλθηκε στον εκτυπωτή %1")
                       .arg(printer.printerName()));
}

void installFigureCommands() { setFigureCommands({saveFigureInteractive, printFigureInteractive}); }
