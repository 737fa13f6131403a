#include <QBoxLayout>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/alhaytham_texts.h"
#include "apparatus/apparatus_summaries.h"
#include "apparatus/apparatus_widgets.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "core/physics.h"
#include "ui/caption_button.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/scroll_bars.h"
#include "ui/window_placement.h"

namespace {
const QColor kShadow1(155, 255, 0);
const QColor kShadow2(255, 255, 0);
constexpr double kRadius = 150.0;
using physics::radians;
}  // namespace

Xaithamos::Xaithamos() {
    setObjectName(QStringLiteral("xaithamos"));
    setWindowTitle(QStringLiteral("Πείραμα του Αλ Χαϊθάμ"));
    setFont(roleFont(FontRole::Caption, 9.0));
    createControls();
    layOut();
    connectControls();
    resize(760, 700);
}

void Xaithamos::createControls() {
    instrument_ = new Canvas;
    instrument_->setObjectName(QStringLiteral("instrument"));
    instrument_->setAccessibleName(QStringLiteral("Al Haytham's instrument  Η συσκευή του Al Haytham"));
    instrument_->scale(-200, 200, 200, -200);
    instrument_->setFontRole(FontRole::Caption);
    instrument_->setFontSize(10.0);
    strefo = apparatus::makeScrollBar(Qt::Horizontal, 0, 80, 10, 30, "strefo",
                                      QStringLiteral("Angle of incidence  Γωνία πρόσπτωσης"));
    timiepi =
        apparatus::makeScrollBar(Qt::Vertical, 0, 10, 2, 0, "timiepi",
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
}

void Xaithamos::layOut() {
    auto* side = new QVBoxLayout;
    side->addWidget(Option1);
    side->addWidget(Option2);
    side->addSpacing(12);
    side->addWidget(Label2);
    side->addStretch(1);
    side->addWidget(svise);
    sidePanel_ = new QWidget;
    sidePanel_->setLayout(side);

    auto* drawingRow = new QHBoxLayout;
    drawingRow->addWidget(new apparatus::AspectHost(instrument_, 1.0), 1);
    drawingRow->addWidget(timiepi);
    top_ = new QBoxLayout(QBoxLayout::LeftToRight);
    top_->addLayout(drawingRow, 1);
    top_->addWidget(sidePanel_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(top_, 1);
    layout->addWidget(Label1);
    layout->addWidget(strefo);
    fitOptions();
}

void Xaithamos::fitOptions() {
    // As wide as the longer option's whole caption, in the font's own units.
    const QMargins margins = sidePanel_->layout()->contentsMargins();
    sidePanel_->setFixedWidth(std::max({190, Option1->sizeHint().width(), Option2->sizeHint().width()}) +
                              margins.left() + margins.right());
    // The window may be narrower than the drawing and the options side by
    // side (a narrow screen at a large presentation size): its least size
    // is that of the options under the drawing.
    setMinimumSize(minimumSizeHint());
    arrangeOptions();
}

void Xaithamos::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && sidePanel_) fitOptions();
}

QSize Xaithamos::minimumSizeHint() const {
    const QMargins m = layout()->contentsMargins();
    const int spacing = layout()->spacing();
    const QSize drawing = instrument_->parentWidget()->minimumSize();
    const int width = std::max(drawing.width(), sidePanel_->minimumSizeHint().width()) + m.left() + m.right();
    const int height = drawing.height() + sidePanel_->minimumSizeHint().height() + Label1->minimumSizeHint().height() +
                       strefo->sizeHint().height() + 3 * spacing + m.top() + m.bottom();
    return {width, height};
}

void Xaithamos::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrangeOptions();
}

// The options stand beside the drawing where the window has room for both
// and the stylus's scroll bar (shown or not), under it otherwise.
void Xaithamos::arrangeOptions() {
    const QMargins m = layout()->contentsMargins();
    const int beside = instrument_->parentWidget()->minimumWidth() + timiepi->sizeHint().width() + sidePanel_->width() +
                       2 * top_->spacing() + m.left() + m.right();
    const auto direction = width() >= beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (top_->direction() != direction) top_->setDirection(direction);
}

void Xaithamos::connectControls() {
    describeValue(*strefo,
                  [](int value) { return QStringLiteral("incidence = ") + fmt(value, "0") + QStringLiteral("°"); });
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
}

void Xaithamos::Form_Load() {
    apparatus::setLabel(Label1,
                        QStringLiteral("INCIDENCE  ANGLE Γωνία πρόσπτωσης = ") + fmt(strefo->value(), "0") + "°");
}

void Xaithamos::strefo_Change() {
    apparatus::setLabel(Label1,
                        QStringLiteral("INCIDENCE ANGLE Γωνία πρόσπτωσης = ") + fmt(strefo->value(), "0") + "°");
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
    if (Label2->text().isEmpty()) showStylusPosition();
    DrawAlHaythamApparatus();
}

void Xaithamos::timiepi_Change() {
    DrawAlHaythamApparatus();
    showStylusPosition();
}

void Xaithamos::showStylusPosition() {
    apparatus::setLabel(Label2, QStringLiteral("POSITION OF STYLUSθέση στυλού = ") +
                                    fmt(timiepi->value() / 10.0, "0.0") + QStringLiteral(" RAY ακτίνα"));
}

// Water, lighter towards the surface, and the graduated disc: its rim, a
// mark every 5° (longer every 10°) and the degrees from the normal every 30°.
void Xaithamos::drawWaterAndDisc() {
    Canvas& c = *instrument_;
    c.cls();
    c.setDrawWidth(1);
    c.setForeColor(palette::black);
    c.filledBox(-200, 0, 200, -200, palette::alhaytham::water);
    c.filledBox(-200, -150, 200, -200, palette::alhaytham::deepWater);
    c.filledBox(-200, 0, 200, -3, palette::alhaytham::surfaceWater);

    for (int i = 1; i <= 360; ++i)
        c.line(kRadius * std::cos(radians(i)), kRadius * std::sin(radians(i)), kRadius * std::cos(radians(i + 1)),
               kRadius * std::sin(radians(i + 1)));
    for (int d = -170; d <= 180; d += 5) {
        const double inner = d % 10 == 0 ? kRadius - 10.0 : kRadius - 5.0;
        const QColor mark = std::sin(radians(d + 90)) < 0 ? palette::white : palette::black;  // white under water
        c.line(inner * std::cos(radians(d)), inner * std::sin(radians(d)), kRadius * std::cos(radians(d)),
               kRadius * std::sin(radians(d)), mark);
    }
    c.setFontSize(8.0);
    for (int fromNormal : {30, 60}) {
        for (int side : {-1, 1}) {
            const QString text = QString::number(fromNormal);
            const double a = radians(90 - side * fromNormal);
            c.setCurrentX((kRadius + 8) * std::cos(a) - c.textWidth(text) / 2.0);
            c.setCurrentY((kRadius + 8) * std::sin(a) + c.textHeight() / 2.0);
            c.print(text);
        }
    }
    c.setFontSize(10.0);
    c.line(-200, 0, 200, 0);
    c.setDrawStyle(DrawStyle::Dash);
    c.line(0, -200, 0, 200);
    c.setDrawStyle(DrawStyle::Solid);
}

// The ruler lies beside the refracted beam; the stylus stands on it at its
// place along the radius, with its shadow on the disc.
void Xaithamos::drawRulerAndStylus(double refraction) {
    Canvas& c = *instrument_;
    const double ux = std::sin(radians(refraction));
    const double uy = -std::cos(radians(refraction));
    const double nx = -uy * 5.0;
    const double ny = ux * 5.0;
    c.setDrawWidth(7);
    c.line(nx, ny, kRadius * ux + nx, kRadius * uy + ny, palette::alhaytham::ruler);
    const double f = timiepi->value() / 10.0;
    const double px = f * kRadius * ux;
    const double py = f * kRadius * uy;
    c.setDrawWidth(4);
    c.line(px, py, px + 16, py - 10, kShadow1);
    c.setDrawWidth(2);
    c.line(px, py, px + 16, py - 10, kShadow2);
    c.setDrawWidth(3);
    c.line(px, py, px - 6, py + 34, palette::black);
    c.setDrawWidth(1);
    c.filledCircle(px, py, 3, palette::black);
}

void Xaithamos::DrawAlHaythamApparatus() {
    const double incidence = strefo->value();
    const double refraction = alhaytham::refractionInWaterDegrees(incidence);
    drawWaterAndDisc();

    // The beam from the upper left, refracted at the centre.
    Canvas& c = *instrument_;
    const double ix = -kRadius * std::sin(radians(incidence));
    const double iy = kRadius * std::cos(radians(incidence));
    const double rx = kRadius * std::sin(radians(refraction));
    const double ry = -kRadius * std::cos(radians(refraction));
    c.setDrawWidth(3);
    c.line(ix, iy, 0, 0, palette::alhaytham::beam);
    c.line(0, 0, rx, ry, palette::alhaytham::beam);
    c.setDrawWidth(1);
    if (Option2->isChecked()) drawRulerAndStylus(refraction);

    c.setCurrentX(-195);
    c.setCurrentY(195);
    c.print(QStringLiteral("i = ") + fmt(incidence, "0") + QStringLiteral("°   r = ") + fmt(refraction, "0.0") + "°");
    c.setSummary(apparatus::alHaythamInstrumentSummary(
        incidence, refraction, Option2->isChecked() ? std::optional<double>(timiepi->value() / 10.0) : std::nullopt));
}

void Xaithamos::svise_Click() {
    hide();
    Alhazencheck& check = form<Alhazencheck>();
    Analysis& notes = form<Analysis>();
    showScreen(form<Incref>());
    showScreen(notes);
    showAlHaythamRulesAsLastChecked();
    notes.setTitle(QStringLiteral("AL HAYTHAM"));
    notes.showText(alHaythamExplanation(), 13.0);

    // Clear of the rules page whose colours it asks the pupil to watch, and
    // of the explanation; over the data screen if nothing else is free.
    const QSize size = outerRect(check).size().boundedTo(outerRect(windowOf(Place::DataScreen)).size());
    placeWindow(check, leastCoveringPlace(
                           size, availableArea(&check),
                           {outerRect(form<Incref>()), outerRect(notes), outerRect(windowOf(Place::DataScreen))}));
    showScreen(check);
    check.checkChosenIndex();
}
