#pragma once
#include <QString>
#include <QStringList>

#include <optional>

#include "models/fermat.h"
#include "models/kymatiko.h"

// The texts that the interpretation screens write into their labels. Each
// handler has its own wording (blanks, "=" with or without a blank before
// it) and keeps it: the pupil sees the same text for the same command.
namespace texts {

// --- the ratio and Newton's value -----------------------------------------
QString ratioOnLoad(double n);      // "n2 του κάτω διά n1 του πάνω: n2/n1 = "
QString ratioOnChange(double n);    // "n2 του κάτω δια του n1 του πάνω: n2/n1 = "
QString newtonValue(double value);  // "Σταθερά Newton= "
QString layerThickness(double thickness);

// --- critical angle, in the wording of each place ----------------------------
enum class CriticalWording {
    RayRoutine,     // "κρίσιμη γωνία= "
    NewtonLayer,    // "κρίσιμη γωνία = "
    Panel,          // "Κρίσιμη γωνία= "
    PanelTimer,     // "Κρίσιμη γωνία ="
    Corpuscles,     // "CRITICAL ANGLE Κρίσιμη γωνία ="
    CorpuscleTick,  // "CRITICAL  ANGLE Κρίσιμη γωνία ="
    RayPicture,     // "criticalγωνία ="
};
QString criticalAngle(CriticalWording wording, double degrees);

// --- incidence and refraction ---------------------------------------------------
// "INCIDENCE Πρόσπτωσης= 30  REFRACTION διάθλασης =19.47°" with two blanks
// before REFRACTION (scroll bar) or one (the WAVES button and WAVE menu).
// After a total reflection the refraction angle is replaced by a note.
QString anglesPanel(double incidenceDegrees, const kymatiko::Refraction& r);
QString anglesWaves(double incidenceDegrees, const kymatiko::Refraction& r);
QString totalReflectionNote();

// --- shares -----------------------------------------------------------------------
enum class ShareWording {
    Plain,    // "REFLECTED Ανακλώμενο= "
    Spaced,   // "REFLECTED Ανακλώμενο = "
    Percent,  // "REFLECTED Ανακλώμενο % = "
};
QString reflectedShare(ShareWording wording, double share);
QString refractedShare(ShareWording wording, double share);

// --- energy, beside the amplitude figures above --------------------------------
// The shares of the light's energy for one polarisation ('s' or 'p'), given
// as fractions of 1 and shown in per cent: "ENERGY s  Ενέργεια s:  R = 5.78 %
// T = 94.22 %" (R reflected, T refracted); the two add up to 100.
QString energyShare(char polarisation, double reflected, double transmitted);
// "BREWSTER ANGLE  Γωνία Brewster θB = 56.31°  (p: R = 0)"
QString brewsterAngle(double degrees);
// The three lines above for a refraction and its index: s, p, Brewster.
// Empty when n or the angle cannot be used.
QStringList energyLines(const kymatiko::Refraction& r, double n);
// The short mark of Brewster's direction on the wave picture.
QString brewsterMark();  // "θB"

// --- the ray picture of the wave screen ----------------------------------------
QString speedsLine(double n);  // "n =1.50    c2/c1= 0.67    c1/c2= 1.50"
QString rayPictureAngles(double incidenceDegrees, const kymatiko::Refraction& r);

// --- Fermat --------------------------------------------------------------------------
QString fermatInstruction();
QString fermatTime(kymatiko::PathKind kind, double time, double distance);
QString leastTime(double time);
QString nrefra(double n);

// --- messages --------------------------------------------------------------------------
QString layersMismatch();  // "diafora megali"

}  // namespace texts
