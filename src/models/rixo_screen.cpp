#include "models/rixo_screen.h"

#include <QEvent>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <cmath>

#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/index_prompt.h"
#include "ui/program_exit.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "ui/navigation.h"
#include "models/energy_shares.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "models/note_lines.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "models/wave_fronts.h"

namespace {

const QColor kUpperMedium(255, 255, 200);
const QColor kLowerMedium(255, 255, 255);
const QColor kIncident(200, 100, 0);
const QColor kReflected(255, 0, 0);
const QColor kRefracted(0, 0, 255);
const QColor kNormal(120, 120, 120);
const QColor kBrewster(0, 128, 0);

constexpr double kWaveStepPerTick = 1.0;  // field units the incident wave moves per tick
constexpr double kWavelength = 40.0;
constexpr int kPulseLength = 12;          // points of the path the travelling stretch covers

// The shade of a front for an amplitude share: strong waves solid, weak ones faint.
QColor shaded(QColor c, double amplitude) {
    c.setAlpha(static_cast<int>(std::lround(60.0 + 195.0 * std::clamp(amplitude, 0.0, 1.0))));
    return c;
}

}  // namespace

Rixo::Rixo() {
    setObjectName(QStringLiteral("rixo"));
    setWindowTitle(QStringLiteral("WAVES"));
    setFont(programFont(QStringLiteral("Arial Greek"), 9.0));

    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("waveField"));
    canvas->setAccessibleName(QStringLiteral("Waves at the boundary of two media  Κύματα στο όριο δύο μέσων"));
    canvas->setFontName(QStringLiteral("Arial Greek"));
    canvas->setFontSize(9.0);
    canvas->setMinimumSize(1, 1);
    setCentralWidget(canvas);
    moving = new MovingLayer(canvas);
    moving->setObjectName(QStringLiteral("waveFronts"));
    moving->setAccessibleName(QStringLiteral("Moving wave fronts  Κινούμενα μέτωπα κύματος"));
    Shape1 = new ShapeWidget(canvas, QColor(0, 0, 0), 10, true);
    Shape1->setObjectName(QStringLiteral("Shape1"));
    Shape1->setAccessibleName(QStringLiteral("Point of the wave front  Σημείο του μετώπου κύματος"));

    QMenuBar* bar = menuBar();
    auto action = [&](const QString& caption, const char* name) {
        QAction* a = bar->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    Endof = action(QStringLiteral("BACK"), "Endof");
    TIMERSTART = action(QStringLiteral("WAVE"), "TIMERSTART");
    okitis1 = action(QStringLiteral("c=1"), "okitis1");
    okitis2 = action(QStringLiteral("c=2"), "okitis2");
    okitismiso = action(QStringLiteral("c=0,5"), "okitismiso");
    aktina = action(QStringLiteral("RAY"), "aktina");
    // The index typed by the pupil and the index-and-velocities screen
    // share one menu, so that the bar fits a narrow window.
    QMenu* indexMenu = bar->addMenu(QStringLiteral("INDEX  Δείκτης"));
    indexMenu->setObjectName(QStringLiteral("indexMenu"));
    deiktis = indexMenu->addAction(QStringLiteral("GIVE INDEX Δώσε δείκτη"));
    deiktis->setObjectName(QStringLiteral("deiktis"));
    epiloges = indexMenu->addAction(QStringLiteral("INDEX AND VELOCITIES  Δείκτης και ταχύτητες"));
    epiloges->setObjectName(QStringLiteral("epiloges"));
    telos = action(QStringLiteral("END"), "telos");
    speedGroup_ = new QActionGroup(this);
    for (QAction* a : {okitis1, okitis2, okitismiso}) {
        a->setCheckable(true);
        speedGroup_->addAction(a);
    }

    Timer1 = new FormTimer(this, [this] { Timer1_Timer(); }, 10);

    connect(Endof, &QAction::triggered, this, &Rixo::Endof_Click);
    connect(TIMERSTART, &QAction::triggered, this, &Rixo::TIMERSTART_Click);
    connect(okitis1, &QAction::triggered, this, &Rixo::okitis1_Click);
    connect(okitis2, &QAction::triggered, this, &Rixo::okitis2_Click);
    connect(okitismiso, &QAction::triggered, this, &Rixo::okitismiso_Click);
    connect(aktina, &QAction::triggered, this, &Rixo::aktina_Click);
    connect(deiktis, &QAction::triggered, this, &Rixo::deiktis_Click);
    connect(epiloges, &QAction::triggered, this, &Rixo::epiloges_Click);
    connect(telos, &QAction::triggered, this, &Rixo::Telos_Click);
    canvas->installEventFilter(this);

    resize(640, 520);
    Form_Load();
}

// ---------------------------------------------------------------- set-up ---

double Rixo::incidenceDegrees() const { return form<Rixotext>().incidenceDegrees(); }
double Rixo::index() const { return form<Rixotext>().ratio(); }

kymatiko::Refraction Rixo::refraction() const { return form<Rixotext>().refraction(); }

kymatiko::Field Rixo::field() const { return kymatiko::fieldFor(canvas->width(), canvas->height()); }

bool Rixo::reflectedWaveWanted() const {
    return !Forms::instance().exists<Rixotext>() || form<Rixotext>().reflected->isChecked();
}

// --------------------------------------------------------------- drawing ---

void Rixo::applyField() {
    const kymatiko::Field f = field();
    canvas->scale(0.0, f.height, f.width, 0.0);
    moving->setGeometry(canvas->rect());
    Shape1->setCentre(toWidget(f.hit()));
}

QPointF Rixo::toWidget(kymatiko::Point p) const { return canvas->toLogical(p.x, p.y); }

QRect Rixo::keptClear(kymatiko::Point corner, kymatiko::Point opposite) const {
    // A few pixels of margin, so that no front ends touching a letter.
    return QRectF(toWidget(corner), toWidget(opposite)).normalized().adjusted(-3, -3, 3, 3).toAlignedRect();
}

void Rixo::drawMedia() {
    const kymatiko::Field f = field();
    canvas->cls();
    canvas->filledBox(0.0, f.boundary(), f.width, f.height, kUpperMedium);
    canvas->filledBox(0.0, 0.0, f.width, f.boundary(), kLowerMedium);
    canvas->setDrawWidth(2);
    canvas->line(0.0, f.boundary(), f.width, f.boundary(), QColor(0, 0, 0));
    canvas->setDrawWidth(1);
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->line(f.width / 2.0, 0.0, f.width / 2.0, f.height, kNormal);
    canvas->setDrawStyle(DrawStyle::Solid);
}

void Rixo::drawRays(const kymatiko::Refraction& r) {
    paths_ = kymatiko::rayPaths(field(), r);
    const kymatiko::Fresnel f = kymatiko::fresnel(r, index());
    auto polyline = [this](const std::vector<kymatiko::Point>& path, const QColor& colour) {
        if (path.size() < 2) return;
        canvas->line(path.front().x, path.front().y, path.back().x, path.back().y, colour);
    };
    canvas->setDrawWidth(2);
    polyline(paths_.incident, kIncident);
    if (std::fabs(f.rs) >= kymatiko::kVisibleReflection) polyline(paths_.reflected, kReflected);
    polyline(paths_.refracted, kRefracted);
    canvas->setDrawWidth(1);
}

QRect Rixo::printNotes(const QStringList& notes) {
    const kymatiko::Field f = field();
    canvas->setForeColor(QColor(0, 0, 0));
    // Bottom left: the light comes from the upper left and leaves to the
    // lower right, so this corner is clear of the fronts of the incident and
    // reflected waves. The refracted fronts can sweep the whole lower medium
    // and are kept off the notes. On a narrow window the longer notes reach
    // past the normal; the refracted ray then runs under them rather than
    // being cut short, which would lose the ray of the ray picture; a light
    // rim round the letters keeps them readable over it.
    const double left = f.width * 0.01;
    const double bottom = f.height * 0.01;
    const double room = f.width * 0.98;
    const double points = canvas->fontSize();
    std::vector<NoteLine> lines;
    for (const QString& note : notes) {
        const std::vector<NoteLine> fitted = fitNote(*canvas, note, room, points);
        lines.insert(lines.end(), fitted.begin(), fitted.end());
    }
    double top = bottom;
    for (const NoteLine& l : lines) {
        canvas->setFontSize(l.points);
        top += canvas->textHeight();
    }
    double right = left;
    double y = top;
    canvas->setTextHalo(kLowerMedium);
    for (const NoteLine& l : lines) {
        canvas->setFontSize(l.points);
        canvas->setCurrentX(left);
        canvas->setCurrentY(y);
        canvas->print(l.text);
        right = std::max(right, left + canvas->textWidth(l.text));
        y -= canvas->textHeight();
    }
    canvas->setTextHalo(QColor());
    canvas->setFontSize(points);
    return keptClear({left, top}, {right, bottom});
}

QRect Rixo::drawBrewsterMark() {
    const std::optional<double> brewster = kymatiko::brewsterAngleDegrees(index());
    if (!brewster) return {};
    const kymatiko::Field f = field();
    const double b = kymatiko::radians(*brewster);
    const double length = 0.3 * std::min(f.width, f.height);
    const kymatiko::Point end{f.hit().x - length * std::sin(b), f.hit().y + length * std::cos(b)};
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->line(f.hit().x, f.hit().y, end.x, end.y, kBrewster);
    canvas->setDrawStyle(DrawStyle::Solid);
    const QString mark = texts::brewsterMark();
    const double x = end.x - canvas->textWidth(mark) - f.width * 0.005;
    const double y = end.y + canvas->textHeight(mark);
    canvas->setForeColor(kBrewster);
    canvas->setCurrentX(x);
    canvas->setCurrentY(y);
    canvas->print(mark);
    canvas->setForeColor(QColor(0, 0, 0));
    return keptClear({x, y}, {x + canvas->textWidth(mark), y - canvas->textHeight(mark)});
}

void Rixo::summarise(const kymatiko::Refraction& r) {
    QStringList lines{QStringLiteral("Waves at the boundary: index n = %1, incidence %2°, %3.")
                          .arg(fmt(index(), "0.00"), fmt(incidenceDegrees(), "0"),
                               r.totalReflection ? QStringLiteral("total reflection")
                                                 : QStringLiteral("refraction ") + fmt(kymatiko::degrees(r.refraction), "0.00") + "°")};
    lines << texts::energyLines(r, index());
    canvas->setSummary(lines.join(QLatin1Char('\n')));
}

void Rixo::writePanelFigures() {
    form<Rixotext>().showFigures({texts::CriticalWording::RayRoutine, texts::ShareWording::Percent, false});
}

void Rixo::DrawRaysAtBoundary() {
    picture_ = Picture::Rays;
    applyField();
    drawMedia();
    const kymatiko::Refraction r = refraction();
    drawRays(r);
    QRegion keepClear = drawBrewsterMark();
    keepClear += printNotes(QStringList{texts::speedsLine(index()), texts::anglesPanel(incidenceDegrees(), r)}
                            << texts::energyLines(r, index()));
    moving->setKeepClear(keepClear);
    summarise(r);
    writePanelFigures();
    pulse_ = 0;
    moving->setLayer(1, {});
    updateFronts();
}

void Rixo::drawRayPicture() {
    picture_ = Picture::RayPicture;
    applyField();
    drawMedia();
    const kymatiko::Refraction r = refraction();
    drawRays(r);
    const kymatiko::Shares s = kymatiko::shares(kymatiko::fresnel(r, index()));
    QStringList notes{texts::speedsLine(index()), texts::rayPictureAngles(incidenceDegrees(), r)};
    if (const auto c = kymatiko::criticalAngleDegrees(index()))
        notes << texts::criticalAngle(texts::CriticalWording::RayPicture, *c);
    notes << texts::reflectedShare(texts::ShareWording::Plain, s.reflected)
          << texts::refractedShare(texts::ShareWording::Plain, s.refracted) << texts::anglesWaves(incidenceDegrees(), r)
          << texts::energyLines(r, index());
    QRegion keepClear = drawBrewsterMark();
    keepClear += printNotes(notes);
    moving->setKeepClear(keepClear);
    summarise(r);
    moving->clearAll();
}

void Rixo::drawStraightRay() {
    picture_ = Picture::StraightRay;
    applyField();
    drawMedia();
    // The line through the point of incidence with the slope of the
    // incident ray, from edge to edge: what light would do if nothing
    // changed at the boundary.
    const kymatiko::Field f = field();
    const double si = std::sin(kymatiko::radians(incidenceDegrees())), ci = std::cos(kymatiko::radians(incidenceDegrees()));
    const kymatiko::Point from = kymatiko::edgeOfField(f, f.hit(), -si, ci);
    const kymatiko::Point to = kymatiko::edgeOfField(f, f.hit(), si, -ci);
    canvas->setDrawWidth(2);
    canvas->line(from.x, from.y, to.x, to.y, kIncident);
    canvas->setDrawWidth(1);
    const kymatiko::Refraction straight = kymatiko::refract(kymatiko::radians(incidenceDegrees()), 1.0);
    moving->setKeepClear(printNotes({texts::rayPictureAngles(incidenceDegrees(), straight)}));
    canvas->setSummary(QStringLiteral("The ray straight on through the boundary, incidence %1°.").arg(fmt(incidenceDegrees(), "0")));
    moving->clearAll();
}

void Rixo::redraw() {
    switch (picture_) {
    case Picture::Rays: {
        const int pulse = pulse_;
        DrawRaysAtBoundary();
        pulse_ = pulse;  // a resize does not start the pulse again
        updatePulse();
        break;
    }
    case Picture::RayPicture: drawRayPicture(); break;
    case Picture::StraightRay: drawStraightRay(); break;
    }
}

// -------------------------------------------------------------- moving ---

void Rixo::updateFronts() {
    if (picture_ != Picture::Rays || !Timer1->isEnabled()) {
        moving->setLayer(0, {});
        return;
    }
    kymatiko::WaveSettings settings;
    const kymatiko::Field f = field();
    settings.phase = phase_;
    settings.wavelength = kWavelength;
    settings.beamHalfWidth = std::min(f.width, f.height) / 6.0;
    settings.reflected = reflectedWaveWanted();
    const kymatiko::Refraction r = refraction();
    const kymatiko::WaveFronts w = kymatiko::waveFronts(f, r, index(), settings);
    const kymatiko::Fresnel amp = kymatiko::fresnel(r, index());
    auto stroke = [this](const std::vector<kymatiko::Segment>& segments, const QColor& colour) {
        MovingLayer::Stroke s;
        s.colour = colour;
        s.width = 2.0;
        s.smooth = false;  // a whole field of fronts every tick: the sharp pen keeps it cheap
        s.lines.reserve(segments.size());
        for (const kymatiko::Segment& seg : segments) s.lines.emplace_back(toWidget(seg.a), toWidget(seg.b));
        return s;
    };
    moving->setLayer(0, {stroke(w.incident, kIncident), stroke(w.reflected, shaded(kReflected, std::fabs(amp.rs))),
                         stroke(w.refracted, shaded(kRefracted, std::fabs(amp.ts)))});
}

void Rixo::updatePulse() {
    if (picture_ != Picture::Rays || pulse_ <= 0) {
        moving->setLayer(1, {});
        return;
    }
    auto stretch = [this](const std::vector<kymatiko::Point>& path, int end, const QColor& colour) {
        MovingLayer::Stroke s;
        s.colour = colour;
        s.width = 5.0;
        const int last = std::min(end, static_cast<int>(path.size()) - 1);
        for (int k = std::max(1, end - kPulseLength); k <= last; ++k)
            s.lines.emplace_back(toWidget(path[static_cast<std::size_t>(k - 1)]),
                                 toWidget(path[static_cast<std::size_t>(k)]));
        return s;
    };
    const int incident = static_cast<int>(paths_.incident.size());
    std::vector<MovingLayer::Stroke> strokes{stretch(paths_.incident, pulse_, kIncident)};
    if (pulse_ >= incident) {
        const int beyond = pulse_ - incident + 1;
        if (reflectedWaveWanted() && std::fabs(kymatiko::fresnel(refraction(), index()).rs) >= kymatiko::kVisibleReflection)
            strokes.push_back(stretch(paths_.reflected, beyond, kReflected));
        strokes.push_back(stretch(paths_.refracted, beyond, kRefracted));
    }
    moving->setLayer(1, std::move(strokes));
}

bool Rixo::pulseStep() {
    if (picture_ != Picture::Rays || paths_.incident.empty()) return false;
    ++pulse_;
    if (pulse_ > paths_.length() + kPulseLength) {
        pulse_ = 0;
        updatePulse();
        return false;
    }
    updatePulse();
    return true;
}

// ------------------------------------------------------------ handlers ---

void Rixo::Form_Load() {
    Timer1->setEnabled(true);
    DrawRaysAtBoundary();
}

void Rixo::speedMenu(double c) {
    module1().speedRatio = c;
    // c = c1 / c2 is the index of the lower medium relative to the upper:
    // the panel takes it, and every picture and figure follows.
    form<Rixotext>().setIndex(c);
}

void Rixo::okitis1_Click() { speedMenu(1.0); }
void Rixo::okitis2_Click() { speedMenu(2.0); }
void Rixo::okitismiso_Click() { speedMenu(0.5); }

void Rixo::TIMERSTART_Click() {
    Rixotext& panel = form<Rixotext>();
    panel.showNewtonControls(false);
    Timer1->setEnabled(true);
    DrawRaysAtBoundary();
    panel.showFigures({panel.figureWording().critical, texts::ShareWording::Plain, true});
}

void Rixo::aktina_Click() {
    Timer1->setEnabled(false);
    form<Rixotext>().showNewtonControls(false);
    drawRayPicture();
}

void Rixo::deiktis_Click() {
    // Cancel or a refused answer: the picture stays as it was.
    const std::optional<double> n = askTypedIndex(QStringLiteral("GIVE INDEX Δώσε δείκτη"));
    if (!n) return;
    Rixotext& panel = form<Rixotext>();
    panel.setIndex(*n);
    FigureWording wording = panel.figureWording();
    wording.shares = texts::ShareWording::Plain;
    panel.showFigures(wording);
}

void Rixo::epiloges_Click() { form<Epiloges>().showBesideWaves(); }

void Rixo::Timer1_Timer() {
    phase_ = std::fmod(phase_ + kWaveStepPerTick, kWavelength);
    updateFronts();
}

void Rixo::stopInterpretationTimers() {
    Forms& forms = Forms::instance();
    if (forms.exists<Rixo>()) form<Rixo>().Timer1->setEnabled(false);
    if (forms.exists<Rixotext>()) form<Rixotext>().Timer1->setEnabled(false);
    if (forms.exists<Somata>()) {
        form<Somata>().Timer1->setEnabled(false);
        form<Somata>().Timer2->setEnabled(false);
    }
}

void Rixo::Endof_Click() {
    stopInterpretationTimers();
    moving->clearAll();
    // The three screens came up together and go together.
    hide();
    hideIfCreated<Rixotext>();
    hideIfCreated<Somata>();
    hideIfCreated<Epiloges>();
    showPlace(cameFromData_ ? Place::DataScreen : Place::MainMenu);
}

void Rixo::Telos_Click() { endProgram(0); }

bool Rixo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize) redraw();
    return QMainWindow::eventFilter(watched, event);
}
