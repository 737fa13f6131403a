#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/alhaytham_texts.h"
#include "apparatus/apparatus_summaries.h"
#include "apparatus/apparatus_widgets.h"
#include "ui/forms.h"
#include "ui/scroll_bars.h"
#include "ui/window_placement.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "ui/navigation.h"
#include "core/physics.h"

namespace {
const QColor kBlack(0, 0, 0);
const QColor kWhite(255, 255, 255);
const QColor kBeam(255, 0, 0);
const QColor kDeepWater(0, 0, 200);
const QColor kSurfaceWater(0, 5, 200);
const QColor kWater(0, 100, 200);
const QColor kRuler(200, 200, 0);
const QColor kShadow1(155, 255, 0);
const QColor kShadow2(255, 255, 0);
constexpr double kRadius = 150.0;
using physics::kPi;

double rad(double degrees) { return degrees * kPi / 180.0; }
}  // namespace

Xaithamos::Xaithamos() {
    setObjectName(QStringLiteral("xaithamos"));
    setWindowTitle(QStringLiteral("Πείραμα του Αλ Χαϊθάμ"));
    setFont(programFont(QStringLiteral("Arial"), 9.0));

    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("instrument"));
    canvas->setAccessibleName(QStringLiteral("Al Haytham's instrument  Η συσκευή του Al Haytham"));
    canvas->scale(-200, 200, 200, -200);
    canvas->setFontName(QStringLiteral("Arial"));
    canvas->setFontSize(10.0);
    auto* host = new apparatus::AspectHost(canvas, 1.0);

    strefo = apparatus::makeScrollBar(Qt::Horizontal, 0, 80, 10, 30, "strefo",
                                      QStringLiteral("Angle of incidence  Γωνία πρόσπτωσης"));
    timiepi = apparatus::makeScrollBar(Qt::Vertical, 0, 10, 2, 0, "timiepi",
                                       QStringLiteral("Position of the stylus on the ruler  Θέση του στυλού στον κανόνα"));
    Option1 = new QRadioButton(QStringLiteral("RULER IVISIBLEΚΑΝΟΝΑΣ ΑΟΡΑΤΟΣ"));
    Option1->setObjectName(QStringLiteral("Option1"));
    Option2 = new QRadioButton(QStringLiteral("RULER VISIBLE ΚΑΝΟΝΑΣ ΟΡΑΤΟΣ"));
    Option2->setObjectName(QStringLiteral("Option2"));
    Option1->setChecked(true);
    timiepi->setVisible(false);
    svise = new CaptionButton(QStringLiteral("HIDE ΠΙΣΩ"));
    svise->setObjectName(QStringLiteral("svise"));
    apparatus::fitCaptionHeight(svise, 190);
    Label1 = apparatus::makeLabel("Label1");
    Label2 = apparatus::makeLabel("Label2");
    Label2->setVisible(false);

    auto* side = new QVBoxLayout;
    side->addWidget(Option1);
    side->addWidget(Option2);
    side->addSpacing(12);
    side->addWidget(Label2);
    side->addStretch(1);
    side->addWidget(svise);
    auto* sidePanel = new QWidget;
    sidePanel->setLayout(side);
    // As wide as the longer option's whole caption, in the font's own units.
    const QMargins margins = side->contentsMargins();
    sidePanel->setFixedWidth(std::max({190, Option1->sizeHint().width(), Option2->sizeHint().width()}) + margins.left() +
                             margins.right());

    auto* top = new QHBoxLayout;
    top->addWidget(host, 1);
    top->addWidget(timiepi);
    top->addWidget(sidePanel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(top, 1);
    layout->addWidget(Label1);
    layout->addWidget(strefo);

    describeValue(*strefo, [](int value) { return QStringLiteral("incidence = ") + fmt(value, "0") + QStringLiteral("°"); });
    describeValue(*timiepi, [](int value) {
        return QStringLiteral("stylus = ") + fmt(value / 10.0, "0.0") + QStringLiteral(" of the radius");
    });

    setTabOrder(strefo, Option1);
    setTabOrder(Option1, Option2);
    setTabOrder(Option2, timiepi);
    setTabOrder(timiepi, svise);

    connect(strefo, &QScrollBar::valueChanged, this, &Xaithamos::strefo_Change);
    connect(timiepi, &QScrollBar::valueChanged, this, &Xaithamos::timiepi_Change);
    // Toggled, not clicked: a key or a screen reader's action chooses an
    // option too, and the picture must follow whichever way it was chosen.
    connect(Option1, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Option1_Click();
    });
    connect(Option2, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Option2_Click();
    });
    connect(svise, &QPushButton::clicked, this, &Xaithamos::svise_Click);

    setMinimumSize(480, 420);
    resize(760, 700);
}

void Xaithamos::Form_Load() {
    apparatus::setLabel(Label1, QStringLiteral("INCIDENCE  ANGLE Γωνία πρόσπτωσης = ") + fmt(strefo->value(), "0") + "°");
}

void Xaithamos::strefo_Change() {
    apparatus::setLabel(Label1, QStringLiteral("INCIDENCE ANGLE Γωνία πρόσπτωσης = ") + fmt(strefo->value(), "0") + "°");
    DrawAlHaythamApparatus();
}

void Xaithamos::Option1_Click() {
    timiepi->setVisible(false);
    Label2->setVisible(false);
    DrawAlHaythamApparatus();
}

void Xaithamos::Option2_Click() {
    timiepi->setVisible(true);
    Label2->setVisible(true);
    if (Label2->text().isEmpty())
        apparatus::setLabel(Label2, QStringLiteral("POSITION OF STYLUSθέση στυλού = ") + fmt(timiepi->value() / 10.0, "0.0") +
                                        QStringLiteral(" RAY ακτίνα"));
    DrawAlHaythamApparatus();
}

void Xaithamos::timiepi_Change() {
    DrawAlHaythamApparatus();
    apparatus::setLabel(Label2, QStringLiteral("POSITION OF STYLUSθέση στυλού = ") + fmt(timiepi->value() / 10.0, "0.0") +
                                    QStringLiteral(" RAY ακτίνα"));
}

void Xaithamos::DrawAlHaythamApparatus() {
    const double incidence = strefo->value();
    const double refraction = alhaytham::refractionInWaterDegrees(incidence);

    canvas->cls();
    canvas->setDrawWidth(1);
    canvas->setForeColor(kBlack);
    // Water, lighter towards the surface.
    canvas->filledBox(-200, 0, 200, -200, kWater);
    canvas->filledBox(-200, -150, 200, -200, kDeepWater);
    canvas->filledBox(-200, 0, 200, -3, kSurfaceWater);

    // The graduated disc: its rim, a mark every 5° (longer every 10°) and
    // the degrees from the normal every 30°.
    for (int i = 1; i <= 360; ++i)
        canvas->line(kRadius * std::cos(rad(i)), kRadius * std::sin(rad(i)), kRadius * std::cos(rad(i + 1)),
                     kRadius * std::sin(rad(i + 1)));
    for (int d = -170; d <= 180; d += 5) {
        const double inner = d % 10 == 0 ? kRadius - 10.0 : kRadius - 5.0;
        const QColor mark = std::sin(rad(d + 90)) < 0 ? kWhite : kBlack;  // white under water
        canvas->line(inner * std::cos(rad(d)), inner * std::sin(rad(d)), kRadius * std::cos(rad(d)),
                     kRadius * std::sin(rad(d)), mark);
    }
    canvas->setFontSize(8.0);
    for (int fromNormal : {30, 60}) {
        for (int side : {-1, 1}) {
            const QString text = QString::number(fromNormal);
            const double a = rad(90 - side * fromNormal);
            canvas->setCurrentX((kRadius + 8) * std::cos(a) - canvas->textWidth(text) / 2.0);
            canvas->setCurrentY((kRadius + 8) * std::sin(a) + canvas->textHeight() / 2.0);
            canvas->print(text);
        }
    }
    canvas->setFontSize(10.0);
    canvas->line(-200, 0, 200, 0);
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->line(0, -200, 0, 200);
    canvas->setDrawStyle(DrawStyle::Solid);

    // The beam from the upper left, refracted at the centre.
    const double ix = -kRadius * std::sin(rad(incidence));
    const double iy = kRadius * std::cos(rad(incidence));
    const double rx = kRadius * std::sin(rad(refraction));
    const double ry = -kRadius * std::cos(rad(refraction));
    canvas->setDrawWidth(3);
    canvas->line(ix, iy, 0, 0, kBeam);
    canvas->line(0, 0, rx, ry, kBeam);
    canvas->setDrawWidth(1);

    if (Option2->isChecked()) {
        // The ruler lies beside the refracted beam; the stylus stands on it
        // at its place along the radius, with its shadow on the disc.
        const double ux = std::sin(rad(refraction));
        const double uy = -std::cos(rad(refraction));
        const double nx = -uy * 5.0;
        const double ny = ux * 5.0;
        canvas->setDrawWidth(7);
        canvas->line(nx, ny, rx + nx, ry + ny, kRuler);
        const double f = timiepi->value() / 10.0;
        const double px = f * kRadius * ux;
        const double py = f * kRadius * uy;
        canvas->setDrawWidth(4);
        canvas->line(px, py, px + 16, py - 10, kShadow1);
        canvas->setDrawWidth(2);
        canvas->line(px, py, px + 16, py - 10, kShadow2);
        canvas->setDrawWidth(3);
        canvas->line(px, py, px - 6, py + 34, kBlack);
        canvas->setDrawWidth(1);
        canvas->filledCircle(px, py, 3, kBlack);
    }

    canvas->setCurrentX(-195);
    canvas->setCurrentY(195);
    canvas->print(QStringLiteral("i = ") + fmt(incidence, "0") + QStringLiteral("°   r = ") + fmt(refraction, "0.0") + "°");
    canvas->setSummary(apparatus::alHaythamInstrumentSummary(
        incidence, refraction, Option2->isChecked() ? std::optional<double>(timiepi->value() / 10.0) : std::nullopt));
}

void Xaithamos::svise_Click() {
    hide();
    Alhazencheck& check = form<Alhazencheck>();
    Analysis& notes = form<Analysis>();
    showScreen(form<Incref>());
    showScreen(notes);
    showAlHaythamRules(check.flags().rule5Shown, check.flags().rule6Shown);
    notes.setTitle(QStringLiteral("AL HAYTHAM"));
    notes.showText(alHaythamExplanation(), 13.0);

    // Clear of the rules page whose colours it asks the pupil to watch, and
    // of the explanation; over the data screen if nothing else is free.
    const QSize size = outerRect(check).size().boundedTo(outerRect(windowOf(Place::DataScreen)).size());
    placeWindow(check, leastCoveringPlace(size, availableArea(&check),
                                          {outerRect(form<Incref>()), outerRect(notes), outerRect(windowOf(Place::DataScreen))}));
    showScreen(check);
    check.CheckAlHaythamRules(check.timidikti->value() / 100.0);
}
