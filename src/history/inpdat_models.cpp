// The laws of refraction laid over the data on the angle graph, and the
// expected values written into the grid.
#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"
#include "history/data_plots.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "history/law_labels.h"
#include "history/refraction_laws.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/index_prompt.h"

namespace {

constexpr double kLabelPoints = 9.0;

// The labels sit at fixed places among the curves: their type follows the
// graph's width (9 points on a 900-pixel graph), so that on a small window
// they cover no more of the curves than on a large one.
double labelPoints(const Canvas& c) { return std::clamp(kLabelPoints * c.width() / 900.0, kSmallestPoints, 12.0); }

// The 2/3 and 3/2 lines, from the origin to incidence 100°.
void fixedLine(Canvas& c, double end) {
    c.setDrawWidth(2);
    c.line(0, 0, 100, end, palette::law::fixedLine);
    c.setDrawWidth(1);
}

}  // namespace

std::optional<double> Inpdat::askIndex(const QString& prompt) { return askTypedIndex(prompt); }

bool Inpdat::redrawDataIfAsked() {
    // Without ERASE a law goes over the data already drawn, if there are any:
    // the graph screen starts with the angle graph's scale but no data.
    if (!svinograf->isChecked() && lastAnalysis_ && form<Incref>().picture() == Picture::AngleGraph) {
        showGraphScreens();
        return true;
    }
    // Pairs that cannot be fitted are refused with the analysis's own message
    // before any graph screen opens: a law needs the data drawn under it.
    return analyseCurrentPairs() && form<Incref>().picture() == Picture::AngleGraph;
}

void Inpdat::Kepler_Click() {
    const auto pairs = currentPairs(false);
    if (!pairs) return;
    const history::KeplerModel model = history::keplerModel(*pairs);
    if (!model.ratio) {
        messageBox(QStringLiteral(
            "Kepler's model needs at least two pairs with different incidence angles below 45°, at the start of the "
            "table.  Το μοντέλο του Kepler χρειάζεται τουλάχιστον δύο ζεύγη με διαφορετικές γωνίες πρόσπτωσης κάτω "
            "από 45°, στην αρχή του πίνακα."));
        return;
    }
    Incref& incref = form<Incref>();
    incref.setTitle(QStringLiteral("REFRACTION ANGLE VS INCIDENCE  ANGLE "));
    if (!redrawDataIfAsked()) return;
    hideAnalysisText();

    const double k = *model.ratio;
    LawFigure figure;
    figure.drawLine = [k](Canvas& c) {
        c.setDrawWidth(2);
        c.line(0, 0, 100, 100 * k, palette::law::kepler);
        c.setDrawWidth(1);
    };
    figure.label = [k](Canvas& c) {
        const QString text = QStringLiteral("Kepler's Model for Refraction Μοντέλο Kepler για διάθλαση= ") +
                             fmt(k, "0.00") + QStringLiteral("Πρόσπτωση");
        c.setFontBold(true);
        // On a small window the label takes more lines: it then starts
        // higher, so that its yellow ground, which reaches as far down as
        // its lines do, ends above the x axis's tick marks. Shown larger, it
        // takes more lines as well, to be as wide as designed and find a
        // free place beside the data.
        const double shown = presentationScale();
        const FittedText fitted = fitText(c, text, 76.0 / shown, labelPoints(c));
        const double height = static_cast<double>(fitted.lines.size()) * c.textHeight();
        constexpr double aboveAxisPixels = 6.0;  // a tick's half length (3), the ground's rim (2) and one to spare
        const double top = std::max(13.0, height + aboveAxisPixels * std::fabs(c.userPerPixelY()));
        const double bottom = std::min(6.0, top - height);
        return LawLabel{fitted.lines,
                        fitted.points,
                        palette::law::kepler,
                        palette::law::keplerGround,
                        23.0,
                        top,
                        QRectF(QPointF(23.0, top), QPointF(23.0 + 77.0 / shown, bottom))};
    };
    figure.spoken = QStringLiteral(
                        "Kepler's model, k = %1: the red line r = k·i from (0°, 0°) to (100°, %2°), fitted "
                        "to the %3 pairs below 45°.")
                        .arg(fmt(k, "0.00"), fmt(100 * k, "0.0"))
                        .arg(model.runLength);
    figure.legend = QStringLiteral("Kepler k = ") + fmt(k, "0.00");
    figure.colour = palette::law::kepler;
    lawDrawn(QStringLiteral("Kepler's model  Μοντέλο Kepler: r = ") + fmt(k, "0.00") + QStringLiteral("·i"),
             std::move(figure));
}

void Inpdat::lawDrawn(const QString& law, LawFigure figure) {
    if (!lastAnalysis_) return;
    lastAnalysis_->laws.append(law);
    lastAnalysis_->figures.push_back(std::move(figure));
    drawLawsOverData();
}

void Inpdat::drawLawsOverData() {
    if (!lastAnalysis_) return;
    // The whole picture is drawn again, the data and every law so far, so
    // that the labels are placed knowing each other and stand over every
    // line; and so again whenever the pupil resizes the window.
    Canvas& c = *form<Incref>().canvas();
    const Analysed& a = *lastAnalysis_;
    drawAngleGraph(c, sharedState<DataState>().pairs(), a.style, a.refractionTitle, a.incidenceTitle);
    layLawsOver(c, a.figures);
    redrawWhenResized(c, [this] { drawLawsOverData(); });
}

namespace {

QString snellLaw(double index) { return QStringLiteral("Snell's law  Νόμος του Snell: n = ") + fmt(index, "0.00"); }

// Where the curve runs, in words: it stops at the critical angle when the
// light leaves the denser medium.
QString spokenSnell(double index, bool leavesDenserMedium) {
    const auto curve = history::snellCurve(index, leavesDenserMedium);
    QString text = QStringLiteral("Snell's law, n = ") + fmt(index, "0.000");
    if (curve.size() < 2) return text + QLatin1Char('.');
    return text + QStringLiteral(": the curve from incidence %1° to %2°, where the refraction angle is %3°%4.")
                      .arg(fmt(curve.front().incidence, "0"), fmt(curve.back().incidence, "0"),
                           fmt(curve.back().refraction, "0.0"),
                           leavesDenserMedium ? QStringLiteral("; it stops at the critical angle") : QString());
}

LawFigure snellFigure(double index, bool leavesDenserMedium) {
    LawFigure figure;
    figure.drawLine = [index, leavesDenserMedium](Canvas& c) {
        const auto curve = history::snellCurve(index, leavesDenserMedium);
        c.setDrawWidth(2);
        for (std::size_t k = 1; k < curve.size(); ++k)
            c.line(curve[k - 1].incidence, curve[k - 1].refraction, curve[k].incidence, curve[k].refraction,
                   palette::law::snell);
        c.setDrawWidth(1);
    };
    figure.label = [index](Canvas& c) {
        c.setFontBold(true);
        const FittedText fitted = fitText(c, QStringLiteral("n=") + fmt(index, "0.00"), 16.0, labelPoints(c));
        return LawLabel{fitted.lines,
                        fitted.points,
                        Qt::black,
                        palette::law::snellGround,
                        80.0,
                        70.0,
                        QRectF(QPointF(77.0, 70.0), QPointF(97.0, 65.0))};
    };
    figure.spoken = spokenSnell(index, leavesDenserMedium);
    figure.legend = QStringLiteral("Snell n = ") + fmt(index, "0.00");
    figure.colour = palette::law::snell;
    return figure;
}

}  // namespace

void Inpdat::Snell_1_Click() {
    const double fitted = sharedState<DataState>().dataIndex();
    if (!std::isfinite(fitted) || !history::usableIndex(fitted)) {
        messageBox(
            QStringLiteral("There is no index from the data yet: press \"Data Analysis\" or choose a table first.  "
                           "Δεν υπάρχει ακόμη δείκτης από τα δεδομένα: πάτησε \"Data Analysis\" ή διάλεξε "
                           "πρώτα έναν πίνακα."));
        return;
    }
    if (!redrawDataIfAsked()) return;
    // Leaving the denser medium, sin r / sin i is the denser medium's own
    // index: the fitted slope, the inverse of the index the analysis shows.
    const bool leaving = witeloChecked();
    const double index = leaving ? 1.0 / fitted : fitted;
    lawDrawn(snellLaw(index), snellFigure(index, leaving));
}

void Inpdat::Snell_2_Click() {
    const auto index = askIndex(QStringLiteral("INDEX OF REFRACTION δείκτης διάθλασης?"));
    if (!index) return;
    if (!redrawDataIfAsked()) return;
    lawDrawn(snellLaw(*index), snellFigure(*index, witeloChecked()));
}

void Inpdat::empirikos_Click() { hideAnalysisText(); }

void Inpdat::toentrito() {
    Incref& incref = form<Incref>();
    incref.setTitle(QStringLiteral("REFRACTION ANGLE VS INCIDENCE ANGLE"));
    hideAnalysisText();
    if (!redrawDataIfAsked()) return;
    const QString label = QStringLiteral("REFRACTION = 2/3 INCIDENCE Διάθλασης=2/3Πρόσπτωσης");
    LawFigure figure;
    figure.drawLine = [](Canvas& c) { fixedLine(c, 200.0 / 3.0); };
    figure.label = [label](Canvas& c) {
        // Written in two lines, the English over the Greek, with the Greek
        // line starting at (40, 50): in one line the label would run into
        // the 2/3 line itself, which rises through its end, and into the
        // data of water and glass beneath it. Both lines end before x = 69.
        const qsizetype split = label.indexOf(QStringLiteral("Διάθλασης"));
        const QString english = label.left(split);
        const QString greek = label.mid(split);
        c.setFontBold(true);
        c.setFontSize(labelPoints(c));
        while (c.fontSize() > kSmallestPoints && std::max(c.textWidth(english), c.textWidth(greek)) > 29.0)
            c.setFontSize(c.fontSize() - 0.5);
        // On a small window 8 points are wider than that: the label then
        // starts further left, so that it still ends before the line where
        // the line passes the foot of the Greek line.
        const double foot = 50.0 - c.textHeight();
        const double end = 1.5 * foot - 3.0 * std::fabs(c.userPerPixelX());
        const double left = std::min(40.0, end - std::max(c.textWidth(english), c.textWidth(greek)));
        return LawLabel{{english, greek},
                        c.fontSize(),
                        palette::law::fixedLabel,
                        palette::law::fixedGround,
                        left,
                        50.0 + c.textHeight(),
                        {}};
    };
    figure.spoken = QStringLiteral("refraction = 2/3 incidence: the line from (0°, 0°) to (100°, %1°).")
                        .arg(fmt(200.0 / 3.0, "0.0"));
    figure.legend = QStringLiteral("r = 2/3 i");
    figure.colour = palette::law::fixedLine;
    lawDrawn(label, std::move(figure));
}

void Inpdat::toendeytero() {
    Incref& incref = form<Incref>();
    incref.setTitle(QStringLiteral("REFRACTION  ANGLE VS INCIDENCE ANGLE"));
    hideAnalysisText();
    if (!redrawDataIfAsked()) return;
    const QString label = QStringLiteral("REFRACTION = 3/2 INCIDENCE διάθλασης=3/2πρόσπτωσης");
    LawFigure figure;
    figure.drawLine = [](Canvas& c) { fixedLine(c, 150.0); };
    figure.label = [label](Canvas& c) {
        // Below and right of the line where it passes x = 60.
        c.setFontBold(true);
        const FittedText fitted = fitText(c, label, 49.0, labelPoints(c));
        return LawLabel{
            fitted.lines, fitted.points, palette::law::fixedLabel, palette::law::fixedGround, 60.0, 1.5 * 60 - 2, {}};
    };
    figure.spoken = QStringLiteral("refraction = 3/2 incidence: the line from (0°, 0°) to (100°, 150°).");
    figure.legend = QStringLiteral("r = 3/2 i");
    figure.colour = palette::law::fixedLine;
    lawDrawn(label, std::move(figure));
}

void Inpdat::toentrito1_Click() { toentrito(); }

void Inpdat::pyknoareo_Click() { toendeytero(); }

void Inpdat::theoretikes_Click() {
    // Asked first, so that Cancel leaves the pupil's table as it was.
    const auto index = askIndex(QStringLiteral("index of refraction Δώσε δείκτη διάθλασης"));
    if (!index) return;
    form<Incref>().setTitle(QStringLiteral("REFRACTION ANGLE VS INCIDENCE ANGLE"));
    hideAnalysisText();
    for (int k = 0; k < 12; ++k) {
        Text1[k]->clear();
        Refr[k]->clear();
    }
    const auto rows = history::expectedRows(*index);
    for (std::size_t k = 0; k < rows.size() && k < static_cast<std::size_t>(kRows); ++k) {
        Text1[k]->setText(QString::number(rows[k].incidence));
        if (rows[k].refraction) Refr[k]->setText(QString::fromStdString(*rows[k].refraction));
    }
}
