#pragma once
#include <QLabel>
#include <QTableWidget>
#include <QWidget>

#include "semicircle/bench_series.h"
#include "ui/caption_button.h"

// "List_of_Data": the bench's last series as a table of incidence and
// refraction angles, with the angles Snell's law expects beside them on
// request, and the way to carry the measured pairs into the data screen's
// grid for the pupil's own analysis.
class ListOfData : public QWidget {
    Q_OBJECT
public:
    // Columns of the table.
    enum Column { IncidenceColumn = 0, RefractionColumn = 1, ExpectedColumn = 2 };

    ListOfData();

    // Lists the series (a copy: the list shows what was measured, whatever
    // the bench does next until it records another series).
    void showSeries(const BenchSeries& series);
    const BenchSeries& series() const { return series_; }

    // "EXPECTED": shows the column of the angles Snell's law gives, filled
    // afresh from the listed series.
    void Command1_Click();
    // "TRANSFER OF DATA": the measured pairs into the data screen's grid,
    // as typed data, and the data screen in front.
    void Command2_Click();
    // "BACK": the list goes, the bench stays.
    void Command3_Click();

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

    BenchSeries series_;
    bool expectedShown_ = false;
};
