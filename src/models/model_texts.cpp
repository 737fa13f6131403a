#include "models/model_texts.h"

#include "canvas/qt_format.h"
#include "models/energy_shares.h"

namespace texts {

QString ratioOnLoad(double n) { return QStringLiteral("n2 του κάτω διά n1 του πάνω: n2/n1 = ") + fmt(n, "0.00"); }

QString ratioOnChange(double n) { return QStringLiteral("n2 του κάτω δια του n1 του πάνω: n2/n1 = ") + fmt(n, "0.00"); }

QString newtonValue(double value) { return QStringLiteral("Σταθερά Newton= ") + fmt(value, "0.00"); }

QString layerThickness(double thickness) { return QStringLiteral("Πάχος στρώματος = ") + fmt(thickness, "0.00"); }

QString criticalAngle(CriticalWording wording, double degrees) {
    QString lead;
    switch (wording) {
    case CriticalWording::RayRoutine: lead = QStringLiteral("κρίσιμη γωνία= "); break;
    case CriticalWording::NewtonLayer: lead = QStringLiteral("κρίσιμη γωνία = "); break;
    case CriticalWording::Panel: lead = QStringLiteral("Κρίσιμη γωνία= "); break;
    case CriticalWording::PanelTimer: lead = QStringLiteral("Κρίσιμη γωνία ="); break;
    case CriticalWording::Corpuscles: lead = QStringLiteral("CRITICAL ANGLE Κρίσιμη γωνία ="); break;
    case CriticalWording::CorpuscleTick: lead = QStringLiteral("CRITICAL  ANGLE Κρίσιμη γωνία ="); break;
    case CriticalWording::RayPicture: lead = QStringLiteral("criticalγωνία ="); break;
    }
    return lead + fmt(degrees, "0.00");
}

QString totalReflectionNote() { return QStringLiteral("TOTAL REFLECTION  ΟΛΙΚΗ ΑΝΑΚΛΑΣΗ"); }

namespace {

QString refractionPart(const kymatiko::Refraction& r) {
    if (r.totalReflection) return QStringLiteral(" -  ") + totalReflectionNote();
    return fmt(kymatiko::degrees(r.refraction), "0.00") + QStringLiteral("°");
}

}  // namespace

QString anglesPanel(double incidenceDegrees, const kymatiko::Refraction& r) {
    return QStringLiteral("INCIDENCE Πρόσπτωσης= ") + fmt(incidenceDegrees, "0") +
           QStringLiteral("  REFRACTION διάθλασης =") + refractionPart(r);
}

QString anglesWaves(double incidenceDegrees, const kymatiko::Refraction& r) {
    return QStringLiteral("INCIDENCE Πρόσπτωσης= ") + fmt(incidenceDegrees, "0") +
           QStringLiteral(" REFRACTION διάθλασης =") + refractionPart(r);
}

QString reflectedShare(ShareWording wording, double share) {
    switch (wording) {
    case ShareWording::Plain: return QStringLiteral("REFLECTED Ανακλώμενο= ") + fmt(share, "0.00");
    case ShareWording::Spaced: return QStringLiteral("REFLECTED Ανακλώμενο = ") + fmt(share, "0.00");
    case ShareWording::Percent: break;
    }
    return QStringLiteral("REFLECTED Ανακλώμενο % = ") + fmt(share, "0.00");
}

QString refractedShare(ShareWording wording, double share) {
    switch (wording) {
    case ShareWording::Plain: return QStringLiteral("REFRACTED Διαθλώμενο= ") + fmt(share, "0.00");
    case ShareWording::Spaced: return QStringLiteral("REFRACTED Διαθλώμενο = ") + fmt(share, "0.00");
    case ShareWording::Percent: break;
    }
    return QStringLiteral("REFRACTED Διαθλώμενο % = ") + fmt(share, "0.00");
}

QString energyShare(char polarisation, double reflected, double transmitted) {
    const QString p(QChar::fromLatin1(polarisation));
    return QStringLiteral("ENERGY ") + p + QStringLiteral("  Ενέργεια ") + p + QStringLiteral(":  R = ") +
           fmt(100.0 * reflected, "0.00") + QStringLiteral(" %   T = ") + fmt(100.0 * transmitted, "0.00") +
           QStringLiteral(" %");
}

QString brewsterAngle(double degrees) {
    return QStringLiteral("BREWSTER ANGLE  Γωνία Brewster θB = ") + fmt(degrees, "0.00") +
           QStringLiteral("°  (p: R = 0)");
}

QStringList energyLines(const kymatiko::Refraction& r, double n) {
    const std::optional<kymatiko::EnergyShares> e = kymatiko::energyShares(r, n);
    const std::optional<double> brewster = kymatiko::brewsterAngleDegrees(n);
    if (!e || !brewster) return {};
    return {energyShare('s', e->reflectedS, e->transmittedS), energyShare('p', e->reflectedP, e->transmittedP),
            brewsterAngle(*brewster)};
}

QString brewsterMark() { return QStringLiteral("θB"); }

QString speedsLine(double n) {
    // n = c1 / c2: light is slower in the medium of the larger index.
    return QStringLiteral("n =") + fmt(n, "0.00") + QStringLiteral("    c2/c1= ") + fmt(1.0 / n, "0.00") +
           QStringLiteral("    c1/c2= ") + fmt(n, "0.00");
}

QString rayPictureAngles(double incidenceDegrees, const kymatiko::Refraction& r) {
    return QStringLiteral("Incidence πρόσπτωσης =") + fmt(incidenceDegrees, "0") + QStringLiteral("    Refraction= ") +
           refractionPart(r);
}

QString fermatInstruction() {
    return QStringLiteral(
        "Time of movement from magenta body through blue to  green. TO MOVE THE magenta body press Shift, to MOVE THE  "
        "GREEN PRESS Control, TO MOVE BLUE PRESS Shift & Control");
}

QString fermatTime(kymatiko::PathKind kind, double time, double distance) {
    switch (kind) {
    case kymatiko::PathKind::Reflection:
        return QStringLiteral("Time of movement from  magenta through blue to  GREEN") + fmt(time, "0.00") +
               QStringLiteral("            total distance = ") + fmt(distance, "0.00") +
               QStringLiteral("      Νόμος Ήρωνος");
    case kymatiko::PathKind::Refraction:
        return QStringLiteral("Time of movement from  magenta through blue to  GREEN") + fmt(time, "0.00") +
               QStringLiteral("             total distance = ") + fmt(distance, "0.00") +
               QStringLiteral("      Παράδειγμα αρχής Fermat");
    case kymatiko::PathKind::Plain: break;
    }
    return QStringLiteral("Time of movement from  magenta through blue to GREEN ") + fmt(time, "0.00");
}

QString leastTime(double time) { return QStringLiteral("LEAST TIMEΟ ΕΛΑΧΙΣΤΟΣ ΧΡΟΝΟΣ: ") + fmt(time, "0.00"); }

QString nrefra(double n) { return QStringLiteral("nrefra= ") + fmt(n, "0.00"); }

QString layersMismatch() { return QStringLiteral("diafora megali"); }

}  // namespace texts
