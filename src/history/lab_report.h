#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

#include "history/data_pairs.h"

class Canvas;

// The pupil's lab report: one A4 page (a second when the table does not fit
// under the graphs) with a title, the date, where the pairs came from, the
// fitted index with its uncertainty and r², the laws laid over the data,
// both graphs replayed from what their canvases recorded (lines stay lines,
// texts stay selectable text) and the table of pairs.
struct LabReport {
    QString date;    // as printed
    QString source;  // the table's name, or that the pupil typed the pairs
    std::vector<history::AnglePair> pairs;
    history::SineFit fit;
    QString indexFormat;  // "0.000" for a table, "0.0000" for typed pairs
    QStringList laws;     // the laws drawn over the data, in order
    QString mysteryResult;  // the bench's mystery block as checked, if it was
    const Canvas* angleGraph = nullptr;
    QString angleGraphTitle;
    const Canvas* sineGraph = nullptr;
    QString sineGraphTitle;
};

// The report as a PDF document, made in memory; empty if it could not be
// made.
QByteArray labReportPdf(const LabReport& report);
