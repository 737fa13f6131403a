#pragma once
#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>

#include <array>
#include <optional>
#include <vector>

#include "canvas/canvas.h"
#include "history/data_pairs.h"
#include "history/data_plots.h"
#include "history/historical_tables.h"
#include "history/history_notes.h"
#include "history/law_labels.h"
#include "semicircle/bench_series.h"
#include "ui/caption_button.h"

// "inpdat": the data screen. The pupil types measured angle pairs into a
// 14-row grid or loads a historical table, has them analysed (refraction
// against incidence on the graph screen incref, sin r against sin i with
// the fitted index on the sine screen analysis), lays the laws of
// refraction over them and reads the history notes. It also opens the
// instrument and interpretation screens.
class Inpdat : public QMainWindow {
    Q_OBJECT
public:
    static constexpr int kRows = 14;

    Inpdat();

    // Where the analysis takes its pairs from: the lists (a table) or the grid.
    bool historicalDataFlag = false;
    // The last least-squares line of sin r on sin i.
    float intercept = 0.0f;
    float slope = 0.0f;

    // The width (without the frame) that holds every menu on one row; a
    // narrower window wraps them onto further rows.
    int widthForMenusOnOneRow() const;

    // --- procedures -------------------------------------------------------
    void Form_Load();
    // The analysis of the current pairs (the lists or the grid), drawn on
    // incref and analysis, with the index in three decimals.
    void analysisdata();
    void toentrito();    // r = 2/3 i
    void toendeytero();  // r = 3/2 i
    // The bench's measured pairs become the pupil's data: no table marked,
    // and the grid holds nothing but these; a set longer than the grid goes
    // to the lists instead and is analysed at once.
    void takeMeasuredPairs(const std::vector<MeasuredPair>& pairs);
    // The grid holds these rows from the top, as if the pupil had typed
    // them, and nothing under them.
    void showPairs(const std::vector<history::TypedRow>& rows);

    // --- handlers ---------------------------------------------------------
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Text1_Change(int index);
    void Text1_KeyDown(int index, int keyCode);
    void Refr_KeyDown(int index, int keyCode);
    void klinoistoria_Click();
    void Ptolemy_Click();
    void ptolemy2_Click();
    void Alhazen_Click();
    void Alhazen2_Click();
    void Newt_Click();
    void newt2_Click();
    void Vitello_Glass_Click();
    void Vitello_water_Click();
    void ptolemeosprosarmogidedo_Click();
    void Kepler_Click();
    void Snell_1_Click();
    void Snell_2_Click();
    void empirikos_Click();
    void pyknoareo_Click();
    void toentrito1_Click();
    void theoretikes_Click();
    void residuals_Toggled();
    void showNote(int noteIndex);  // one of the HISTORY NOTES items
    void empiricalFit();
    void recallSetup();       // the recall reader
    void readStoredSetups();  // the sequential reader
    void openTable();         // asks for a CSV file and fills the grid from it
    void saveTable();         // asks for a file name and writes the pairs
    void labReport();         // asks for a file name and writes the report
    // The three without the file dialog; false after a message.
    bool openTableFile(const QString& path);
    bool saveTableFile(const QString& path);
    bool writeLabReport(const QString& path);

    // The last analysis that was drawn: its pairs, fit and texts.
    // (Its pairs are DataState's.)
    struct Analysed {
        history::SineFit fit;
        PlotStyle style;
        SineGraphTexts sineTexts;
        const char* indexFormat;  // of the index as printed
        QString source;           // the table's name, or that the pupil typed the pairs
        QStringList laws;         // the laws drawn over these data since, in order
        QString refractionTitle;  // the angle graph's two axis titles
        QString incidenceTitle;
        std::vector<LawFigure> figures;  // the laws as drawn, to draw them again
    };
    const std::optional<Analysed>& lastAnalysis() const { return lastAnalysis_; }

    // The pairs of the grid as the pupil typed them (for tests and screens).
    std::vector<history::TypedRow> typedRows() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    QGridLayout* createGrid(QWidget* central);
    void createRow(QGridLayout* grid, QWidget* central, int row);
    void createLabel3(QWidget* central);
    QGridLayout* createButtons(QWidget* central);
    void createFileView(QWidget* central);
    void orderKeyboard();
    void buildMenus();
    void createModelsMenu();
    void createHistoireMenu();
    void createNotesMenu();
    void createFileMenu();  // the bench's measurement file, the pupil's tables, the report
    void createInstrumentsMenu();
    QAction* dataItem(history::TableId id) const;
    void loadTable(history::TableId id);
    // Rows from the bench or a file: into the grid when they fit, else into
    // the lists under the caption (see takeMeasuredPairs).
    void takeRows(const std::vector<history::TypedRow>& rows, const QString& caption);
    // The lists show these rows under their headings, the caption under
    // them, and the analysis runs on them.
    void showTable(const QString& incidenceHeading, const QString& refractionHeading,
                   const std::vector<history::TypedRow>& rows, const QString& caption);
    // The lists show a measured set (not a historical table) that the pupil
    // has not typed over: Data Analysis takes it.
    bool measuredSetInLists() const { return measuredSetShown_ && !List1->isHidden(); }
    // Unchecks the six items that Home and a key in the refraction column
    // release (Witelo's two stay as they are).
    void uncheckAirDataItems();
    bool witeloChecked() const;
    bool measurementFileReadable();  // false after a message saying why not
    // The pairs the models and analysisdata use; a message and none when the
    // grid holds something that is not an angle.
    std::optional<std::vector<history::AnglePair>> currentPairs(bool typedOnly);
    // Plots the pairs and their fit on both graph screens; false (with a
    // message, and both pictures untouched) when they cannot be fitted.
    struct AnalysisTexts;
    bool analyse(const std::vector<history::AnglePair>& pairs, const AnalysisTexts& texts);
    void showGraphScreens();
    // analysisdata; false (after a message) when the pairs cannot be fitted.
    bool analyseCurrentPairs();
    // Redraws the data first when "ERASE" is ticked or the graph shows
    // something else; false when that failed.
    bool redrawDataIfAsked();
    void hideAnalysisText();
    // The index the pupil types; none on Cancel or (after a message) a bad one.
    std::optional<double> askIndex(const QString& prompt);
    void printFileLines(const QStringList& lines, const std::vector<QColor>& colours);
    // Notes a law drawn over the last analysis, for the report, and tells
    // the graph's summary what was laid over the data (in plain words).
    // The figure is laid over the graph with the laws drawn before it.
    void lawDrawn(const QString& law, LawFigure figure);
    // The angle graph of the last analysis with its laws over it, at the
    // canvas's present size (and again whenever it is resized).
    void drawLawsOverData();

    std::array<QLineEdit*, kRows> Text1{};  // incidence angles
    std::array<QLineEdit*, kRows> Refr{};   // refraction angles
    QLabel* Label1;                         // "INCIDENCE Πρόσπτωσης"
    QLabel* Label2;                         // "REFRACTION Διάθλασης"
    QLabel* Label3;                         // the loaded table's name
    QListWidget* List1;                     // a table's incidence angles, after a heading
    QListWidget* List2;                     // its refraction angles
    CaptionButton* Command1;                // Data Analysis
    CaptionButton* Command2;                // INITIAL
    CaptionButton* Command3;                // END
    CaptionButton* Command4;                // INTERPRETATION OF LAW
    QCheckBox* svinograf;                   // redraw the data before a model
    Canvas* fileView;                       // where the measurement file's readers print

    QMenu* Models;
    QAction* Kepler;
    QMenu* Snell;
    QAction* Snell_2;
    QAction* Snell_1;
    QAction* empirikos;
    QAction* pyknoareo;
    QAction* toentrito1;
    QAction* theoretikes;
    QAction* residualsItem;  // residual bars on the sine graph (checkable)

    QMenu* Histoire;
    QAction* newt2;
    QAction* Newt;
    QAction* Alhazen2;
    QAction* Alhazen;
    QAction* ptolemy2;
    QAction* ptolemeosprosarmogidedo;
    QAction* Ptolemy;
    QAction* Vitello_water;
    QAction* Vitello_Glass;
    QAction* klinoistoria;

    QMenu* History_notes;  // items named as history::historyNotes() names them

    QColor drawingColour_{Qt::black};
    std::optional<Analysed> lastAnalysis_;
    bool measuredSetShown_ = false;
};
