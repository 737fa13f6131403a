// The data screen's lab report: the last analysis, its graphs and the laws
// drawn over it, written as a PDF.
#include <QDate>
#include <QFile>
#include <QFileInfo>

#include "analysis/graph_screens.h"
#include "canvas/qt_format.h"
#include "core/message_text.h"
#include "core/outside_files.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "history/lab_report.h"
#include "semicircle/bench_state.h"
#include "ui/dialogs.h"
#include "ui/forms.h"

namespace {

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

}  // namespace

void Inpdat::labReport() {
    QString path = saveFileDialog(QStringLiteral("Lab report (PDF)  Αναφορά εργαστηρίου (PDF)"),
                                  QStringLiteral("PDF document (*.pdf)"), QStringLiteral("lab-report.pdf"));
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().compare(QLatin1String("pdf"), Qt::CaseInsensitive) != 0)
        path += QStringLiteral(".pdf");
    writeLabReport(path);
}

bool Inpdat::writeLabReport(const QString& path) {
    // The report shows the graphs as they stand, so they must still be the
    // analysis's (an instrument or a note may have drawn over them since).
    const Canvas& angles = *form<Incref>().canvas();
    const Canvas& sines = *form<Analysis>().canvas();
    if (!lastAnalysis_ || form<Incref>().picture() != Picture::AngleGraph ||
        form<Analysis>().picture() != Picture::SineGraph) {
        messageBox(
            QStringLiteral("Analyse the data first (Data Analysis or a historical table): the report shows "
                           "the analysis and its graphs.  Ανάλυσε πρώτα τα δεδομένα (Data Analysis ή ένας "
                           "ιστορικός πίνακας): η αναφορά δείχνει την ανάλυση και τα γραφήματά της."));
        return false;
    }
    LabReport report;
    report.date = QDate::currentDate().toString(Qt::ISODate);
    report.source = lastAnalysis_->source;
    report.pairs = sharedState<DataState>().pairs();
    report.fit = lastAnalysis_->fit;
    report.indexFormat = QString::fromLatin1(lastAnalysis_->indexFormat);
    report.laws = lastAnalysis_->laws;
    if (const auto& check = sharedState<BenchState>().lastMysteryCheck())
        report.mysteryResult = QStringLiteral(
                                   "Mystery block  Άγνωστο υλικό:  n found  βρέθηκε %1, true  πραγματικός %2, "
                                   "difference  διαφορά %3 %")
                                   .arg(fmt(check->found, "0.000"), fmt(check->actual, "0.00"),
                                        (check->differencePercent > 0 ? QStringLiteral("+") : QString()) +
                                            fmt(check->differencePercent, "0.0"));
    report.angleGraph = &angles;
    report.angleGraphTitle = form<Incref>().title();
    report.sineGraph = &sines;
    report.sineGraphTitle = form<Analysis>().title();

    const QByteArray pdf = labReportPdf(report);
    const QString name = fromUtf8(quotedForMessage(QFileInfo(path).fileName().toStdString()));
    const FileWriteResult written =
        pdf.isEmpty() ? FileWriteResult{false, "the document could not be made"}
                      : replaceFile(std::filesystem::path(QFile::encodeName(path).toStdString()),
                                    std::string_view(pdf.constData(), static_cast<std::size_t>(pdf.size())));
    if (!written.ok) {
        messageBox(QStringLiteral("The report could not be saved in %1 (%2); nothing was changed.  "
                                  "Η αναφορά δεν αποθηκεύτηκε στο %1· δεν άλλαξε τίποτα.")
                       .arg(name, fromUtf8(written.reason)));
        return false;
    }
    return true;
}
