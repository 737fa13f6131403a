#pragma once
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>

#include "ui/caption_button.h"
#include "models/corpuscles.h"
#include "models/kymatiko.h"
#include "models/model_texts.h"
#include "models/model_widgets.h"

// How the panel's figures are worded: each command that writes them keeps
// its own wording, and a later change of the index or the angle rewrites
// them in the wording last used.
struct FigureWording {
    texts::CriticalWording critical = texts::CriticalWording::Panel;
    texts::ShareWording shares = texts::ShareWording::Spaced;
    bool oneBlankBeforeRefraction = false;  // the WAVES commands' angles text; two blanks elsewhere
};

// "rixotext": the control panel of the wave and corpuscle models. Its
// scroll bars set the ratio of the indices, the angle of incidence and
// Newton's value; its labels carry the figures of the wave screen and of
// the corpuscle screen; its button runs the waves and the corpuscles side
// by side.
//
// The panel holds the one index and the one angle of the interpretation
// screens: the wave screen, the corpuscle screen and the index-and-velocities
// screen read them from here each time and change them only through
// setIndex() and setIncidence(), so every window shows the same values.
class Rixotext : public QWidget {
    Q_OBJECT
public:
    Rixotext();

    CaptionButton* Command1;   // WAVES AND PARTICLES
    FormTimer* Timer1;         // the pulse of light along the rays of the wave screen
    QScrollBar* newtongtimi;   // Newton's value, 5 … 100 (a hundred times the pull)
    QScrollBar* n1overn2;      // n2/n1 × 100
    QScrollBar* prosptosi;     // angle of incidence, degrees
    QLineEdit* Text1;          // free text
    QCheckBox* reflected;      // REFLECTED WAVE
    QLabel* Label7;            // layer thickness
    QLabel* Label6;            // critical angle
    QLabel* Label5;            // reflected share
    QLabel* Label4;            // refracted share
    QLabel* Label1;            // the angles
    QLabel* Label2;            // the ratio
    QLabel* Label3;            // "REFLECTED WAVE ANAKΛΩMENO KYMA"
    // Beside the amplitude figures of Label5 and Label4, which do not add up
    // to 100: how the energy divides, for s and p light, and Brewster's angle.
    QLabel* energyS;
    QLabel* energyP;
    QLabel* brewster;
    QLabel* newtonText;        // Newton's value
    QLabel* newtonCaption;     // caption of Newton's scroll bar

    // The values as the other screens read them. The index is the ratio
    // bar's value / 100 unless a menu or a typed answer set it (the bar then
    // stands as near it as it can).
    double ratio() const { return index_; }
    double incidenceDegrees() const { return prosptosi->value(); }
    double newtonValue() const { return newtongtimi->value() * kymatiko::kNewtonValueScale; }  // Newton's pull
    kymatiko::Refraction refraction() const;

    // Changes of the index or the angle from the other screens: the panel's
    // figures and every interpretation picture follow at once. A new index
    // other than 1 gives the media different speeds, so it ends "the same
    // speed in both media" below.
    void setIndex(double n);
    void setIncidence(int degrees);

    // "The same speed in both media" (IDIA V): while it holds the index in
    // use is 1 and the ray goes straight on. The index the speeds had is
    // kept and is in use again once the speeds differ (METAVOLH V).
    bool sameSpeeds() const { return sameSpeeds_; }
    void setSameSpeeds(bool same);
    // The index for when the speeds differ: the one in use, or the one kept
    // while the speeds are the same.
    double bendingIndex() const { return sameSpeeds_ ? bendingIndex_ : index_; }
    // A typed index for the second medium: in use at once, or, while the
    // speeds are the same, kept for when they differ.
    void setBendingIndex(double n);

    // Writes every figure of the panel — the ratio, the critical angle, the
    // reflected and refracted shares and the angles — from the one index
    // and angle, in the wording given, and keeps the wording for later
    // changes.
    void showFigures(const FigureWording& wording);
    const FigureWording& figureWording() const { return wording_; }

    // Shows or hides Newton's scroll bar with its labels.
    void showNewtonControls(bool visible);
    // Writes a label and shows it, or hides it when the text is empty.
    static void setLabel(QLabel* label, const QString& text);

    void Form_Load();
    void n1overn2_Change();
    void newtongtimi_Change();
    void prosptosi_Change();
    void Command1_Click();
    void Timer1_Timer();

protected:
    // Closing the panel stops its pulse and puts the first corpuscle back.
    void closeEvent(QCloseEvent* event) override;

private:
    // The corpuscle screen follows every change of the panel.
    void redrawCorpuscles();
    // The index or the angle changed: the other screens draw again first,
    // then the panel writes its figures in its own wording.
    void valuesChanged(const FigureWording& wording);

    // Puts an index in use: the bar follows and every window draws again.
    void useIndex(double n);

    double index_ = 1.5;
    bool sameSpeeds_ = false;
    double bendingIndex_ = 1.5;
    FigureWording wording_;
};
