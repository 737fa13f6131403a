// The texts that go with Al Haytham's instrument: his eight rules, printed on
// the graph screen, and the explanation for the notes screen.
#include "apparatus/alhaytham_texts.h"

#include <QStringList>

#include "canvas/canvas.h"
#include "canvas/palette.h"

namespace {

// Rule (2) stands twice, at 85 and at 80, as it always has; the blanks line
// the Greek up in a column of its own.
const QString kRule2 =
    QStringLiteral("(2)d2 - d1 < i2-i1                                               απ2 - απ1 < πρ2 - πρ1 .");
}  // namespace

const std::vector<std::pair<double, QString>>& alHaythamRuleLines() {
    static const std::vector<std::pair<double, QString>> lines{
        {110, QStringLiteral(" AL HAYTHAM'S RULES  FOR REFRACTION–Κανόνες του Al Haytham για τη διάθλαση")},
        {105, QStringLiteral(" If i1 & i2 2 incidence angles                                   Αν πρ1 και πρ2 είναι "
                             "δύο γωνίες πρόσπτωσης, ")},
        {100, QStringLiteral(
                  " d1,d2 the  DEVIATION ANGLES                                    απ1, απ2 οι γωνίες απόκλισης ")},
        {95, QStringLiteral(" and r1, r2 REFRACTION ANGLES                                   και δ1, δ2 οι γωνίες "
                            "διάθλασης τότε αν πρ1>πρ2 έχομε:")},
        {90, QStringLiteral("(1)d2>d1                                                        απ2 > απ1  .")},
        {85, kRule2},
        {80, kRule2},
        {75, QStringLiteral("(3) d2/r2 > d1/r1.                                               απ2 /πρ2 > απ1 /πρ1.")},
        {70, QStringLiteral("(4) d2 > d1                                                             δ2 >δ1")},
        {65, QStringLiteral("(5) for refraction form rare to dens d < r/2                     για διάθλαση από αραιό "
                            "σε πυκνό απ < πρ/2")},
        {60, QStringLiteral("(6) for refraction from dense to rare, d<½(i+d)                  για διάθλαση από πυκνό "
                            "σε αραιό , απ < ½ (πρ+απ)")},
        {55, QStringLiteral("(7) In a denser medium the light approaches the  peprendicular    `Eνα πυκνότερο μέσο "
                            "πλησιάζει το φως προς την κάθετο")},
        {50, QStringLiteral("(8) In a rarer medium the  light diverges from the perpendicular     `Eνα αραιότερο μέσο "
                            "απομακρύνει το φως από την κάθετο.")},
    };
    return lines;
}

void PrintAlHaythamRules(Canvas& canvas, bool rule5Violated, bool rule6Violated) {
    const auto& lines = alHaythamRuleLines();
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const bool rule5 = k == 9;
        const bool rule6 = k == 10;
        QColor colour = palette::black;
        if (rule5 && rule5Violated) colour = palette::alhaytham::ruleFiveBroken;
        if (rule6 && rule6Violated) colour = palette::alhaytham::ruleSixBroken;
        canvas.setForeColor(colour);
        canvas.setCurrentX(canvas.scaleLeft() + 1.0);
        canvas.setCurrentY(lines[k].first);
        canvas.print(lines[k].second);
        canvas.setForeColor(palette::black);
    }
}

QString alHaythamExplanation() {
    const QStringList greek{
        QStringLiteral("Ο `Aραβας AL HAYTHAM που είναι γνωστός και ως Al Hazen πρότεινε διάφορους νόμους διάθλασης. "
                       "Συνέκρινε τη διάθλαση προς την κίνηση ενός σώματος."),
        QStringLiteral(" Δεν έδωσε έναν ενιαίο νόμο διάθλασης, αλλά "
                       "μια σειρά από κανόνες, που φαίνονται στην επόμενη οθόνη."),
        QStringLiteral(" Η κάθετη συνιστώσα της ταχύτητας ελαττώνεται, ενώ η παράλληλη μένει σταθερή (ο NEWTON "
                       "πίστευε ότι αλλάζει η κάθετη συνιστώσα)."),
        QStringLiteral(" Η συσκευή του Al Haytham χρησιμοποιούσε μια φωτεινή δέσμη. Έδειξε ότι η διαθλώμενη ακτίνα, η "
                       "κάθετη και η προσπίπτουσα ακτίνα βρίσκονται στο ίδιο επίπεδο."),
        QStringLiteral(" Χρησιμοποίησε ένα 'στυλό' για να ελέγξει την πορεία της διαθλώμενης ακτίνας.")};
    const QStringList english{
        QStringLiteral(" AL HAYTHAM (AL HAZEN) did not give a single REFRACTION law, but  a series of rules, depicted "
                       "in next form. He  compared refraction to the movement of a body. "),
        QStringLiteral(" The  perpendicular component of velocity is reduced, while the PARALLEL remains constant "
                       "(NEWTON BELIEVED THAT THE PERPENDICULAR COMPONENT CHANGES)"),
        QStringLiteral(" Al Haytham's apparatus used a LIGHT BEAM. He established that the refracted ray, the  "
                       "perpendicular  and the incident ray all lie on the same plane."),
        QStringLiteral(" He used a 'stylus' to check the path of refracted ray"),
        QStringLiteral("    ********   CHANGE THE INDEX OF REFRACTION. (on form 'CHECK AL HAYTHAM RULES') YOU CAN "
                       "CHECK IF A RULE IS VIOLATED IF A GRAPH CHANGES COLOR. ALSO THE RULE CHANGES COLOR")};
    return greek.join(QStringLiteral("\n")) + QStringLiteral("\n\n") + english.join(QStringLiteral("\n"));
}
