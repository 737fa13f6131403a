#pragma once
#include <QLabel>
#include <QTableWidget>
#include <QWidget>

#include <optional>

#include "semicircle/bench_series.h"
#include "ui/caption_button.h"

// "List_of_Data": every ray the bench traced into the block, as a table of
// incidence and refraction angles with the index each pair gives and how
// the ray was made, the angles Snell's law expects beside them on request,
// and the ways to carry the measured pairs to the data screen: straight
// into its grid, or as its CSV table.
class ListOfData : public QWidget {
    Q_OBJECT
public:
    // Columns of the table.
    enum Column { IncidenceColumn = 0, RefractionColumn, IndexColumn, SourceColumn, ExpectedColumn, ColumnCount };

    ListOfData();

    // The index the listed pairs give, fitted as the data screen fits them.
    std::optional<double> fittedIndex() const;

    // "EXPECTED": shows the column of the angles Snell's law gives, filled
    // afresh from the listed series.
    void Command1_Click();
    // "TRANSFER OF DATA": the measured pairs into the data screen's grid,
    // as typed data, and the data screen in front.
    void Command2_Click();
    // "BACK": the list goes, the bench stays.
    void Command3_Click();
    // "SAVE AS CSV": the measured pairs as the data screen's table file.
    void saveCsv_Click();
    bool saveCsvFile(const QString& path);
    // "CLEAR": the list starts afresh.
    void clear_Click();

private:
    void createTable();
    void createButtons();
    void fillTable();

    QLabel* Label1;           // which series it is
    QLabel* Label2;           // the block it was measured with
    QTableWidget* List1;      // one row per ray
    CaptionButton* Command1;  // EXPECTED
    CaptionButton* Command2;  // TRANSFER OF DATA
    CaptionButton* Command3;  // BACK
    CaptionButton* saveCsv;   // SAVE AS CSV
    CaptionButton* clear;     // CLEAR

    bool expectedShown_ = false;
};
