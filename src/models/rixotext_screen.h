#pragma once
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>

#include "canvas/caption_button.h"
#include "models/corpuscles.h"
#include "models/kymatiko.h"
#include "models/model_widgets.h"

// "rixotext": the control panel of the wave and corpuscle models. Its
// scroll bars set the ratio of the indices, the angle of incidence and
// Newton's value; its labels carry the figures of the wave screen and of
// the corpuscle screen; its button runs the waves and the corpuscles side
// by side. Other screens read the scroll bars each time they need a value.
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
    QLabel* newtonText;        // Newton's value
    QLabel* newtonCaption;     // caption of Newton's scroll bar

    // The values as the other screens read them.
    double ratio() const { return n1overn2->value() / 100.0; }
    double incidenceDegrees() const { return prosptosi->value(); }
    double newtonValue() const { return newtongtimi->value() * kymatiko::kNewtonValueScale; }  // Newton's pull
    kymatiko::Refraction refraction() const;

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
};
