#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QPagedPaintDevice;

// The pupils' worksheet of a lesson: the program's name, the lesson's
// title, blanks for name, class and date, the steps, a table to fill and the
// questions with room to answer, never the answers. It is made from the
// lesson's own page, so the sheet and the lesson cannot tell different
// stories: the sections "## Steps", "## Table" and "## Questions" and their
// Greek twins "## Βήματα" and "## Ερωτήσεις"; what the teacher reads
// ("## For the teacher", "## Για τον καθηγητή") never reaches it.
struct Worksheet {
    QString title;
    QStringList steps;  // each step in English, then in Greek
    QStringList tableHeads;
    QList<QStringList> tableRows;  // the cells given; the rest are to fill
    QStringList questions;         // each in English, then in Greek
};

// The worksheet of a lesson's Markdown; none for a page without steps.
std::optional<Worksheet> worksheetOf(const QString& markdown);

// Paints the sheet on A4 pages of the device (a PDF writer or a printer),
// the same way the lab report is made: text ≥ 10 pt, one page where it
// fits. False when the device could not be painted on.
bool paintWorksheet(QPagedPaintDevice& device, const Worksheet& sheet);
// The sheet as a PDF document in memory; empty if it could not be made.
QByteArray worksheetPdf(const Worksheet& sheet);
