#include "apparatus/ptolemaios_screen.h"

#include <QGridLayout>
#include <QHideEvent>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "apparatus/apparatus_summaries.h"
#include "apparatus/apparatus_widgets.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "ui/caption_button.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/scroll_bars.h"
#include "ui/window_placement.h"

using namespace ptolemy;

namespace {

constexpr double kLeft = -190.0, kTop = 200.0, kRight = 190.0, kBottom = -200.0;
constexpr double kViewLeft = -20.0, kViewTop = 50.0, kViewRight = 20.0, kViewBottom = -50.0;

const QString kAngleInWater = QStringLiteral("ANGLE IN WATER γωνία μέσα στο νερό = ");
const QString kTargetsAngle = QStringLiteral("TARGET'S ANGLE Γωνία στόχου =");

double targetAngleOf(const QScrollBar* dgonia) { return dgonia->value() / 2.0; }

// A body on the disc: a thick arc of the rim between two angles measured
// from the downward (water) or upward (air) normal.
void drawBodyOnArc(Canvas& canvas, double fromDegrees, double toDegrees, bool inWater, const QColor& colour) {
    canvas.setDrawWidth(5);
    const int pieces = std::max(2, static_cast<int>(std::ceil(std::fabs(toDegrees - fromDegrees))));
    for (int k = 0; k < pieces; ++k) {
        const double a = radians(fromDegrees + (toDegrees - fromDegrees) * k / pieces);
        const double b = radians(fromDegrees + (toDegrees - fromDegrees) * (k + 1) / pieces);
        if (inWater)
            canvas.line(kDiscRadius * std::sin(a), -kDiscRadius * std::cos(a), kDiscRadius * std::sin(b),
                        -kDiscRadius * std::cos(b), colour);
        else
            canvas.line(-kDiscRadius * std::sin(a), kDiscRadius * std::cos(a), -kDiscRadius * std::sin(b),
                        kDiscRadius * std::cos(b), colour);
    }
    canvas.setDrawWidth(1);
}

void drawBand(Canvas& canvas, const Band& band, const QColor& fill, const QColor& outline) {
    canvas.filledBox(-50, band.top, 50, band.bottom, fill);
    canvas.box(-50, band.top, 50, band.bottom, outline);
}

}  // namespace

Emfanisi::Emfanisi() {
    setObjectName(QStringLiteral("EMFANISI"));
    setWindowTitle(QStringLiteral("SIGHT VIEW Τι βλέπει ο παρατηρητής"));
    sightView_ = new Canvas;
    sightView_->setObjectName(QStringLiteral("sightView"));
    sightView_->setAccessibleName(
        QStringLiteral("The bodies as the observer sees them  Τα σώματα όπως τα βλέπει ο παρατηρητής"));
    sightView_->scale(kViewLeft, kViewTop, kViewRight, kViewBottom);
    sightView_->setFontRole(FontRole::Panel);
    sightView_->setFontSize(8.0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(sightView_);
    setMinimumSize(140, 260);
    resize(220, 560);
}

void Emfanisi::showSight(const std::optional<SightView>& sight) {
    Canvas& view = *sightView_;
    view.cls();
    view.setForeColor(palette::black);
    view.setDrawWidth(1);
    view.setSummary(apparatus::ptolemySightSummary(sight));
    if (!sight) return;
    drawBand(view, sight->target, palette::ptolemy::targetBand, palette::ptolemy::targetOutline);
    drawBand(view, sight->centralBody, palette::ptolemy::bodyBand, palette::ptolemy::centralOutline);
    view.setCurrentX(kViewLeft + 3.5);
    const double bandsTop = std::max(sight->airBody.top, sight->centralBody.top);
    view.setCurrentY(std::min(kViewTop - 1.0, bandsTop + 1.2 * view.textHeight()));
    view.print(QStringLiteral("iN AIR Στόν αέρα"));
    drawBand(view, sight->airBody, palette::ptolemy::bodyBand, palette::ptolemy::airOutline);
    view.line(-50, 0, 50, 0, palette::ptolemy::lineOfSight);
    // A scale of degrees on both sides, so that the pupil can read how far
    // the target is seen from the line of sight.
    for (int d = -9; d <= 9; ++d) {
        const double y = d * kViewUnitsPerDegree;
        const double length = d % 5 == 0 ? 3.0 : 1.5;
        view.line(kViewLeft, y, kViewLeft + length, y, palette::ptolemy::marks);
        view.line(kViewRight - length, y, kViewRight, y, palette::ptolemy::marks);
    }
    // Beyond the view the target is not seen: say on which side to look.
    if (sight->target.bottom >= kViewTop || sight->target.top <= kViewBottom) {
        const bool above = sight->target.bottom >= kViewTop;
        view.setForeColor(palette::ptolemy::targetOutline);
        view.setCurrentX(kViewLeft + 3.5);
        view.setCurrentY(above ? kViewTop - 1.0 : kViewBottom + 1.0 + 2.0 * view.textHeight());
        view.print(above ? QStringLiteral("Z ↑ higher  πιο πάνω") : QStringLiteral("Z ↓ lower  πιο κάτω"));
        view.setForeColor(palette::black);
    }
}

Ptolemaios::Ptolemaios() {
    setObjectName(QStringLiteral("ptolemaios"));
    setWindowTitle(QStringLiteral("PTOLEMY'S METHOD"));
    setFont(roleFont(FontRole::Panel, 9.0));
    createControls();
    layOut();
    describeBars();
    connectControls();
    setMinimumSize(360, 480);
    resize(560, 760);
}

void Ptolemaios::createControls() {
    instrument_ = new Canvas;
    instrument_->setObjectName(QStringLiteral("instrument"));
    instrument_->setAccessibleName(QStringLiteral("Ptolemy's instrument  Η συσκευή του Πτολεμαίου"));
    instrument_->scale(kLeft, kTop, kRight, kBottom);
    instrument_->setFontRole(FontRole::Panel);
    goniaprosptosis = apparatus::makeScrollBar(Qt::Horizontal, kMinWaterAngle, kMaxWaterAngle, 5, 30, "goniaprosptosis",
                                               QStringLiteral("Angle in water  Γωνία στο νερό"));
    metatopisipar = apparatus::makeScrollBar(Qt::Horizontal, -200, 300, 20, 50, "metatopisipar",
                                             QStringLiteral("Position in air  Θέση στον αέρα"));
    dgonia = apparatus::makeScrollBar(Qt::Horizontal, 1, 20, 2, 1, "dgonia",
                                      QStringLiteral("Angle of target  Γωνία στόχου"));
    Command1 = new CaptionButton(QStringLiteral("HIDE"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Label1 = apparatus::makeLabel("Label1");
    Label2 = apparatus::makeLabel("Label2");
    Label3 = apparatus::makeLabel("Label3");
}

void Ptolemaios::layOut() {
    auto* host = new apparatus::AspectHost(instrument_, (kRight - kLeft) / (kTop - kBottom));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->addWidget(Label1, 0, 0);
    grid->addWidget(goniaprosptosis, 0, 1);
    grid->addWidget(Command1, 0, 2);
    grid->addWidget(Label2, 1, 0, 1, 3);
    grid->addWidget(metatopisipar, 2, 1);
    grid->addWidget(Label3, 3, 0);  // level with the bar it describes
    grid->addWidget(dgonia, 3, 1);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(host, 1);
    layout->addLayout(grid);
}

// A screen reader hears each bar's value as the screen shows it.
void Ptolemaios::describeBars() {
    describeValue(*goniaprosptosis, [](int value) {
        return QStringLiteral("angle in water = ") + fmt(guardWaterAngle(value).angle, "0") + QStringLiteral("°");
    });
    describeValue(*metatopisipar, [this](int value) {
        const double target = targetAngleOf(dgonia);
        const double air = airBodyAngle(guardWaterAngle(goniaprosptosis->value()).angle, value, target);
        return QStringLiteral("body in air = ") + fmt(air - target / 2.0, "0.00") + QStringLiteral("° to ") +
               fmt(air + target / 2.0, "0.00") + QStringLiteral("°");
    });
    describeValue(*dgonia,
                  [](int value) { return QStringLiteral("target's angle = ") + fmt(value / 2.0, "0.0") + "°"; });
}

void Ptolemaios::connectControls() {
    setTabOrder(goniaprosptosis, Command1);
    setTabOrder(Command1, metatopisipar);
    setTabOrder(metatopisipar, dgonia);

    connect(goniaprosptosis, &QScrollBar::valueChanged, this, &Ptolemaios::goniaprosptosis_Change);
    connect(metatopisipar, &QScrollBar::valueChanged, this, &Ptolemaios::metatopisipar_Change);
    connect(dgonia, &QScrollBar::valueChanged, this, &Ptolemaios::dgonia_Change);
    connect(Command1, &QPushButton::clicked, this, &Ptolemaios::Command1_Click);
}

void Ptolemaios::Form_Load() {
    // The window takes most of the display's height; the sight view
    // stands beside it.
    const QRect area = availableArea(this);
    const int height = static_cast<int>(0.8 * area.height());
    QRect frame = outerRect(*this);
    frame.setSize({std::min(area.width() / 2, std::max(minimumWidth(), height * 3 / 4)), height});
    placeWindow(*this, frame);
    DrawPtolemyApparatus();
    apparatus::setLabel(Label1,
                        QStringLiteral("ANGLE IN WATER γωνία στο νερό = ") + fmt(goniaprosptosis->value(), "0"));
    apparatus::setLabel(Label2, QStringLiteral("POSITION IN AIR θέση στον αέρα = ") + fmt(metatopisipar->value(), "0"));
    apparatus::setLabel(Label3,
                        QStringLiteral("ANGLE OF TARGET Γωνία στόχου =") + fmt(targetAngleOf(dgonia), "0.0") + "°");
}

void Ptolemaios::goniaprosptosis_Change() {
    DrawPtolemyApparatus();
    apparatus::setLabel(Label1, kAngleInWater + fmt(goniaprosptosis->value(), "0"));
}

void Ptolemaios::metatopisipar_Change() {
    DrawPtolemyApparatus();
    apparatus::setLabel(Label3,
                        QStringLiteral("ANGLE OF TARGET Γωνία στόχου =") + fmt(targetAngleOf(dgonia), "0.0") + "°");
}

void Ptolemaios::dgonia_Change() {
    DrawPtolemyApparatus();
    apparatus::setLabel(Label3, kTargetsAngle + fmt(targetAngleOf(dgonia), "0.0") + "°");
}

void Ptolemaios::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous()) hideIfCreated<Emfanisi>();
}

void Ptolemaios::drawDisc() {
    for (int i = 1; i <= 360; ++i) {
        const double a = radians(i);
        const double b = radians(i + 1);
        instrument_->line(kDiscRadius * std::cos(a), kDiscRadius * std::sin(a), kDiscRadius * std::cos(b),
                          kDiscRadius * std::sin(b));
    }
}

void Ptolemaios::showBesideTheSightView() {
    Emfanisi& view = form<Emfanisi>();
    if (!isVisible()) showScreen(*this);
    if (!view.isVisible()) {
        // Clear of the data screen's menus and controls and of the instrument.
        std::vector<QRect> clear = workingParts(windowOf(Place::DataScreen));
        clear.push_back(outerRect(*this));
        const QSize size = outerRect(view).size();
        placeWindow(view, clearPlace(size, size * 0.75, availableArea(this), clear, {}));
        showOnScreen(view, false);
    }
}

void Ptolemaios::drawWaterAndDisc(double targetAngle) {
    Canvas& c = *instrument_;
    c.cls();
    c.setForeColor(palette::black);
    c.setDrawWidth(1);
    c.filledBox(-200, 0, 200, -200, palette::ptolemy::water);
    c.circle(0, 0, kBodySize / 2.0);
    apparatus::setLabel(Label3, kTargetsAngle + fmt(targetAngle, "0.0") + "°");
    drawDisc();
    c.line(-200, 0, 200, 0);
    c.line(0, -200, 0, 200);
}

// The ray from the target through the centre, its continuation in air, the
// lines of sight past the edges of the central body, and the two bodies.
void Ptolemaios::drawSightLinesAndBodies(int w, double expected, double air, double targetAngle) {
    Canvas& c = *instrument_;
    const double zx = kDiscRadius * std::sin(radians(w));
    const double zy = -kDiscRadius * std::cos(radians(w));
    c.line(zx, zy, 0, 0);
    c.line(0, 0, -kDiscRadius * std::sin(radians(expected)), kDiscRadius * std::cos(radians(expected)));
    c.setForeColor(palette::ptolemy::sightLines);
    for (double edge : {kBodySize, -kBodySize}) {
        if (const std::optional<SightLine> sight = PtolemySightLine(w, edge)) {
            c.line(zx, zy, sight->surfaceX, 0);
            c.lineTo(sight->endX, sight->endY);
        }
    }
    drawBodyOnArc(c, w - targetAngle / 2.0, w + targetAngle / 2.0, true, palette::ptolemy::targetBand);
    drawBodyOnArc(c, air - targetAngle / 2.0, air + targetAngle / 2.0, false, palette::ptolemy::bodyBand);
}

void Ptolemaios::showBodyPosition(double air, double expected, double targetAngle) {
    const double low = air - targetAngle / 2.0;
    const double high = air + targetAngle / 2.0;
    if (covered_)
        apparatus::setLabel(Label2, QStringLiteral("BODY'S POSITION IN  AIR θέση σώματος στον αέρα=") +
                                        fmt(low, "0.0") + "°-" + fmt(high, "0.0") + "°" +
                                        QStringLiteral("αναμενόμενη =") + fmt(expected, "0.0") + "°" +
                                        QStringLiteral("MEAN μέσος =") + fmt(air, "0.0") + "°");
    else
        apparatus::setLabel(Label2, QStringLiteral("BODY'S POSITION IN AIR θέση σώματος στον αέρα=") +
                                        fmt(low, "0.00") + "°-" + fmt(high, "0.00") + "°" +
                                        QStringLiteral("EXPECTED αναμενόμενη =") + fmt(expected, "0.0") + "°");
}

void Ptolemaios::DrawPtolemyApparatus() {
    showBesideTheSightView();
    const double targetAngle = targetAngleOf(dgonia);
    const GuardResult guard = guardWaterAngle(goniaprosptosis->value());
    const int w = guard.angle;
    if (guard.restarts > 0) apparatus::setLabel(Label1, kAngleInWater + fmt(w, "0") + "°");

    drawWaterAndDisc(targetAngle);
    // The guard has made sure that every line of sight leaves the water.
    const double expected = expectedAirAngle(w).value_or(0.0);
    const double air = airBodyAngle(w, metatopisipar->value(), targetAngle);
    drawSightLinesAndBodies(w, expected, air, targetAngle);

    const std::optional<SightView> sight = sightView(w, air, targetAngle);
    covered_ = sight && sight->covered;
    airAngle_ = air;
    expected_ = expected;
    showBodyPosition(air, expected, targetAngle);
    form<Emfanisi>().showSight(sight);
    instrument_->setForeColor(palette::black);
    drawDisc();  // the rim stays on top of the bodies
    instrument_->setSummary(
        apparatus::ptolemyInstrumentSummary({goniaprosptosis->value(), w, expected, air, targetAngle, covered_}));
    // The body in air follows the angle in water and the target's size.
    refreshValueDescription(*metatopisipar);

    if (goniaprosptosis->value() != w) {
        // The bar shows the angle drawn; its own handler need not draw again.
        const QSignalBlocker quiet(goniaprosptosis);
        goniaprosptosis->setValue(w);
        apparatus::setLabel(Label1, kAngleInWater + fmt(w, "0") + "°");
    }
    // Just below the critical angle the line through the centre leaves the
    // water but one past an edge of the central body does not: say which
    // line was turned back, and why, once the picture is drawn.
    if (guard.edgeTurnedBack)
        messageBox(QStringLiteral("ANGLE OF INCIDENCE 2 IN WATER γωνία πρόσπτωσης 2 στο νερό = ") +
                   fmt(guard.edgeTurnedBack->incidenceDegrees, "0.0") + QStringLiteral("  SIN ημιτονο = ") +
                   fmt(guard.edgeTurnedBack->sineTimesIndex, "0.0"));
}
