#pragma once
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>

#include <optional>

#include "models/interpretation_state.h"
#include "models/model_texts.h"
#include "models/model_widgets.h"
#include "ui/caption_button.h"

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
// The values are the interpretation's shared state: the bars set them there
// and follow them when another window changes them, and the figures are
// written again after every change.
class Rixotext : public QWidget {
    Q_OBJECT
public:
    Rixotext();

    // The notes that the corpuscle screen writes on the panel.
    enum class Note { LayerThickness, CriticalAngle, Text };
    // Writes a note and shows it; an empty text hides it.
    void showNote(Note note, const QString& text);

    // Writes every figure of the panel — the ratio, the critical angle, the
    // reflected and refracted shares and the angles — from the shared index
    // and angle, in the wording given, and keeps the wording for later
    // changes.
    void showFigures(const FigureWording& wording);
    const FigureWording& figureWording() const { return wording_; }

    // Shows or hides Newton's scroll bar with its labels.
    void showNewtonControls(bool visible);
    // Whether the pupil wants the reflected wave drawn (REFLECTED WAVE).
    bool reflectedWaveWanted() const;
    // Stops the pulse of light along the rays.
    void stopAnimation();

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
    void createControls();
    void createLabels();
    void layOut();
    void connectControls();
    // Writes a label and shows it, or hides it when the text is empty.
    static void setLabel(QLabel* label, const QString& text);
    // The bars stand where the shared values are, without running their
    // handlers again.
    void followIndex(double n);
    void followIncidence(int degrees);

    CaptionButton* Command1;  // WAVES AND PARTICLES
    FormTimer* Timer1;        // the pulse of light along the rays of the wave screen
    QScrollBar* newtongtimi;  // Newton's value, 5 … 100 (a hundred times the pull)
    QScrollBar* n1overn2;     // n2/n1 × 100
    QScrollBar* prosptosi;    // angle of incidence, degrees
    QLineEdit* Text1;         // free text
    QCheckBox* reflected;     // REFLECTED WAVE
    QLabel* Label7;           // layer thickness
    QLabel* Label6;           // critical angle
    QLabel* Label5;           // reflected share
    QLabel* Label4;           // refracted share
    QLabel* Label1;           // the angles
    QLabel* Label2;           // the ratio
    QLabel* Label3;           // "REFLECTED WAVE ANAKΛΩMENO KYMA"
    // Beside the amplitude figures of Label5 and Label4, which do not add up
    // to 100: how the energy divides, for s and p light, and Brewster's angle.
    QLabel* energyS;
    QLabel* energyP;
    QLabel* brewster;
    QLabel* newtonText;     // Newton's value
    QLabel* newtonCaption;  // caption of Newton's scroll bar

    InterpretationState& state_;
    FigureWording wording_;
    // The wording the panel's own change of a value asks for; without one
    // the figures keep the wording they have.
    std::optional<FigureWording> pendingWording_;
};
