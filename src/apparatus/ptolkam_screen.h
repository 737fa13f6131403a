#pragma once
#include <QWidget>

#include <vector>

#include "apparatus/ptolemy_fitting.h"

class Canvas;
class CaptionButton;
class QLabel;
class QRadioButton;
class QTextEdit;

// "ptolkam": how Ptolemy adjusted his refraction angles so that their second
// differences are constant, against the proportional law and the law of
// refraction, for his water and glass tables; and the same adjustment from a
// starting pair the pupil chooses.
class Ptolkam : public QWidget {
    Q_OBJECT
public:
    Ptolkam();

    void Form_Load();
    void Option1_Click();
    void Option2_Click();
    void Enallagi_Click();
    void kripse_Click();

    // Ptolemy's own values of the chosen set with the two laws.
    void standardAdjustment();
    // Asks for the starting pair, then draws the adjusted values and their
    // table. A refused answer leaves the picture as it was.
    void alternativeAdjustment();

    const ptolemy_fit::DataSet& chosenSet() const;
    // What the last drawing showed as Ptolemy's values.
    const std::vector<double>& shownValues() const { return shown_; }
    const Canvas& drawing() const { return *fittingGraph_; }

private:
    void createControls();
    void createExplanation();
    void layOut();
    void connectControls();
    struct Legend {
        QString analogy, ptolemy, expected;
    };
    void drawCurves(const ptolemy_fit::DataSet& set, const std::vector<double>& values, const Legend& legend);
    void printTable(const ptolemy_fit::DataSet& set, const std::vector<double>& values);

    Canvas* fittingGraph_;
    QRadioButton* Option1;    // glass
    QRadioButton* Option2;    // water
    CaptionButton* Enallagi;  // adjust from another starting pair
    CaptionButton* kripse;    // CLOSE
    QLabel* Label1;
    QTextEdit* explanation_;  // Ptolemy's rule, Greek and English

    std::vector<double> shown_;
};

// The explanation of Ptolemy's rule: Greek lines, then English ones.
QStringList ptolemyFittingExplanation();
