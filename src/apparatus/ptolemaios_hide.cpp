// "HIDE" on Ptolemy's instrument: back to the data screen, with the
// instrument explained in the notes screen and drawn on the graph screen.
#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolemy_geometry.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "ui/forms.h"
#include "ui/navigation.h"

namespace {

void printCentred(Canvas& canvas, double x, double y, const QString& text) {
    canvas.setCurrentX(x - canvas.textWidth(text) / 2.0);
    canvas.setCurrentY(y + canvas.textHeight(text) / 2.0);
    canvas.print(text);
}
}  // namespace

QString ptolemyApparatusExplanation() {
    const QStringList greek{
        QStringLiteral("O ΠΤΟΛΕΜΑΙΟΣ (Κλαύδιος), είναι οδιάσημος αρχαίος αστρονόμος, ο πρώτος"),
        QStringLiteral(" που μελέτησε πειραματικά το νόμο της διάθλασης. Για το σκοπό αυτό κατασκεύασε μια ειδική "
                       "συσκευή:"),
        QStringLiteral(" Ένας χάλκινος δίσκος ABGD ήταν χωρισμένος σε 4 τεταρτημόρια και βαθμολογημένος σε μοίρες. "
                       "Ένα μικρό σώμα είναι στερεωμένο στο κέντρο E. Δύο κινητά σώματα (κατά μήκος των τόξων DA, "
                       "BG) τοποθετούνται στα δύο τεταρτημόρια: ο στόχος Z στο DA, το H στο BG."),
        QStringLiteral(" Με το Z επιλέγεται μια γωνία πρόσπτωσης. Ο παρατηρητής κοιτάζει κατά μήκος της ακτίνας από "
                       "το Z (γωνία ZEA) και μετακινεί το σώμα H ώσπου τα 3 σώματα Z, E, H να φαίνονται στην ίδια "
                       "ευθεία."),
        QStringLiteral(" Τότε μετρά τη γωνία διάθλασης GEH.")};
    const QStringList english{
        QStringLiteral("PTOLEMY, was the famous ancient astronomer. He was the first to study experimentally "
                       "REFRACTION'S LAW. For this purpose he built a special  apparatus:"),
        QStringLiteral(" A copper disk ABGD was subdivided into 4 quarters. It was graduated in degrees. One small "
                       "body is fixed on the center. Two movable bodies (along arcs DA, BG) are put on the two  "
                       "quarters. Target Z is on DA. H on BG. "),
        QStringLiteral(" An incidence angle is chosen with Z. Then  as the observer  looks  along the radius from Z "
                       "(angle ZEA), body H is  moved until the 3  bodies  Z, E, H are aligned. Then  the  refraction "
                       "angle HEG is measured")};
    return greek.join(QString()) + QStringLiteral("\n\n") + english.join(QStringLiteral("\n"));
}

void drawPtolemyDiagram(Canvas& canvas) {
    // ±140 across the shorter side of the screen, more along the longer, so
    // that the ring stays round.
    const double areaW = std::max(1, canvas.width());
    const double areaH = std::max(1, canvas.height());
    const double sx = areaW >= areaH ? 140.0 * areaW / areaH : 140.0;
    const double sy = areaW >= areaH ? 140.0 : 140.0 * areaH / areaW;
    canvas.scale(-sx, sy, sx, -sy);
    canvas.cls();
    canvas.setForeColor(palette::black);
    canvas.setDrawWidth(1);
    canvas.filledBox(-sx - 10, 0, sx + 10, -sy - 10, palette::ptolemy::hiddenWater);
    canvas.line(-140, 0, 140, 0);
    canvas.line(0, -140, 0, 140);
    canvas.circle(0, 0, 100);
    canvas.circle(0, 0, 105);
    for (int d = 0; d < 360; d += 5) {  // a mark every 5°, longer every 30°
        const double a = ptolemy::radians(d);
        const double inner = d % 30 == 0 ? 95.0 : 100.0;
        canvas.line(inner * std::cos(a), inner * std::sin(a), 105 * std::cos(a), 105 * std::sin(a));
    }
    // Z in air 40° from EA, H in water where the light from Z goes.
    const double z = ptolemy::radians(40.0);
    const double h = ptolemy::radians(ptolemy::degrees(std::asin(std::sin(z) / ptolemy::kWaterIndex)));
    canvas.setDrawWidth(2);
    canvas.line(-100 * std::sin(z), 100 * std::cos(z), 0, 0, palette::ptolemy::hiddenSight);
    canvas.lineTo(100 * std::sin(h), -100 * std::cos(h), palette::ptolemy::hiddenSight);
    canvas.setDrawWidth(1);
    canvas.filledCircle(-100 * std::sin(z), 100 * std::cos(z), 3, palette::ptolemy::hiddenSight);
    canvas.filledCircle(100 * std::sin(h), -100 * std::cos(h), 3, palette::ptolemy::hiddenSight);
    canvas.filledCircle(0, 0, 3, palette::black);

    canvas.setFontSize(12.0);
    canvas.setFontBold(true);
    printCentred(canvas, 0, 115, QStringLiteral("A"));
    printCentred(canvas, 115, 0, QStringLiteral("B"));
    printCentred(canvas, 0, -115, QStringLiteral("G"));
    printCentred(canvas, -115, 0, QStringLiteral("D"));
    printCentred(canvas, 8, 8, QStringLiteral("E"));
    printCentred(canvas, -115 * std::sin(z), 115 * std::cos(z), QStringLiteral("Z"));
    printCentred(canvas, 115 * std::sin(h), -115 * std::cos(h), QStringLiteral("H"));
    canvas.setFontBold(false);
    canvas.setFontSize(10.0);
    canvas.setSummary(
        QStringLiteral("Diagram of Ptolemy's instrument: the graduated ring ABGD with E at its centre, A at "
                       "the top, G at the bottom; the water fills the lower half. Z on the arc DA in air "
                       "at %1 from EA; the line Z E H bends at the surface to H on the arc BG, %2 from "
                       "EG.")
            .arg(fmt(40.0, "0") + QStringLiteral("°"), fmt(ptolemy::degrees(h), "0.0") + QStringLiteral("°")));
}

void Ptolemaios::Command1_Click() {
    hide();
    hideIfCreated<Emfanisi>();

    // Shown before drawing, so that the letters are measured at the size
    // they will be seen.
    showPlace(Place::DataScreen);
    Incref& graph = form<Incref>();
    Analysis& notes = form<Analysis>();
    showScreen(graph);
    showScreen(notes);

    notes.setTitle(QStringLiteral("ABOUT PTOLEMY"));
    notes.showText(ptolemyApparatusExplanation(), 13.0);
    graph.setTitle(QStringLiteral("PTOLEMY'S APPARATUS Η συσκευή του Πτολεμαίου"));
    drawPtolemyDiagram(*graph.canvas());
    graph.setPicture(Picture::Diagram);
}
