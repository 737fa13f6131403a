// The pupil's table as a CSV file: opened into the grid, saved from the
// grid or from a loaded historical table.
#include <QFile>
#include <QFileInfo>

#include "core/message_text.h"
#include "core/outside_files.h"
#include "history/inpdat_screen.h"
#include "history/pupil_table.h"
#include "ui/dialogs.h"

namespace {

const QString kFilter = QStringLiteral("CSV table (*.csv);;All files (*)");

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

// The file's name as a message may quote it.
QString shownName(const QString& path) { return fromUtf8(quotedForMessage(QFileInfo(path).fileName().toStdString())); }

std::filesystem::path nativePath(const QString& path) {
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

QString fileError(const QString& path, const history::TableFileError& e) {
    const QString name = shownName(path);
    if (e.line == 0) return QStringLiteral("%1: %2  %1: %3").arg(name, fromUtf8(e.english), fromUtf8(e.greek));
    return QStringLiteral("%1, line %2: %3  %1, γραμμή %2: %4")
        .arg(name)
        .arg(e.line)
        .arg(fromUtf8(e.english), fromUtf8(e.greek));
}

}  // namespace

void Inpdat::openTable() {
    const QString path = openFileDialog(QStringLiteral("Open table  Άνοιγμα πίνακα"), kFilter);
    if (!path.isEmpty()) openTableFile(path);
}

void Inpdat::saveTable() {
    const QString path =
        saveFileDialog(QStringLiteral("Save table  Αποθήκευση πίνακα"), kFilter, QStringLiteral("table.csv"));
    if (!path.isEmpty()) saveTableFile(path);
}

bool Inpdat::openTableFile(const QString& path) {
    InputFile file(nativePath(path));
    // Read no more than a table can need: a huge file is refused unread.
    std::string bytes(history::kLargestTableFile + 1, '\0');
    const std::int64_t read = file.isOpen() ? file.readAt(0, bytes.data(), bytes.size()) : -1;
    if (read < 0) {
        messageBox(QStringLiteral("The file %1 cannot be opened: %2.  Το αρχείο %1 δεν ανοίγει.")
                       .arg(shownName(path), fromUtf8(file.reason())));
        return false;
    }
    bytes.resize(static_cast<std::size_t>(read));
    const history::TableFileReading reading = history::parseTableFile(bytes);
    if (reading.error) {
        messageBox(fileError(path, *reading.error));
        return false;
    }
    // The pupil's own data now, not a historical table.
    takeRows(reading.rows, QStringLiteral("%1: %2 pairs  %1: %2 ζεύγη").arg(shownName(path)).arg(reading.rows.size()));
    return true;
}

bool Inpdat::saveTableFile(const QString& path) {
    std::vector<history::TypedRow> rows;
    if (historicalDataFlag && List1->isVisible()) {
        for (int k = 1; k < List1->count() && k < List2->count(); ++k)
            rows.push_back({List1->item(k)->text().toStdString(), List2->item(k)->text().toStdString()});
    } else {
        // Only what the analysis would read: a cell that is not an angle is
        // refused with the analysis's own message.
        const history::TypedReading reading = history::readTypedPairs(typedRows());
        if (reading.error) {
            currentPairs(true);
            return false;
        }
        for (const history::TypedRow& row : typedRows()) {
            if (QString::fromStdString(row.incidence).trimmed().isEmpty()) break;
            rows.push_back(row);
        }
    }
    if (rows.empty()) {
        messageBox(QStringLiteral("There are no angle pairs to save.  Δεν υπάρχουν ζεύγη γωνιών για αποθήκευση."));
        return false;
    }
    const FileWriteResult written = replaceFile(nativePath(path), history::writeTableFile(rows));
    if (!written.ok) {
        messageBox(QStringLiteral("The table could not be saved in %1 (%2); nothing was changed.  "
                                  "Ο πίνακας δεν αποθηκεύτηκε στο %1· δεν άλλαξε τίποτα.")
                       .arg(shownName(path), fromUtf8(written.reason)));
        return false;
    }
    return true;
}
