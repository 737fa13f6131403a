// Fermat's principle on the corpuscle screen: three bodies, the travel
// time of light through them, and the search for the least time.
#include <algorithm>
#include <cmath>

#include "canvas/palette.h"
#include "models/model_summaries.h"
#include "models/model_texts.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "ui/forms.h"

namespace {}  // namespace

kymatiko::Point Somata::bodyCentre(Body body) const {
    const kymatiko::Field f = field();
    const kymatiko::Point p = bodies_[static_cast<std::size_t>(body)];
    return {p.x * f.width, p.y * f.height};
}

void Somata::setBodyCentre(Body body, kymatiko::Point p) {
    const kymatiko::Field f = field();
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
    // Bodies stay within the field, so they can always be seen and clicked.
    bodies_[static_cast<std::size_t>(body)] = {std::clamp(p.x / f.width, 0.0, 1.0),
                                               std::clamp(p.y / f.height, 0.0, 1.0)};
    placeBodies();
}

kymatiko::SpeedLaw Somata::lawOfSpeeds() const {
    return descartes->isChecked() ? kymatiko::SpeedLaw::Descartes : kymatiko::SpeedLaw::Fermat;
}

kymatiko::Speeds Somata::speeds() const { return kymatiko::speedsFor(lawOfSpeeds(), state_.index()); }

void Somata::showBodies(bool visible) {
    for (ShapeWidget* b : {fermat1, fermat2, fermat3}) b->setVisible(visible);
    if (!visible) fermatscr->hide();
    if (visible) placeBodies();
}

void Somata::placeBodies() {
    fermat1->setCentre(toWidget(bodyCentre(Magenta)));
    fermat2->setCentre(toWidget(bodyCentre(Blue)));
    fermat3->setCentre(toWidget(bodyCentre(Green)));
}

void Somata::drawFermatPicture(kymatiko::Point blue, const QColor& pathColour) {
    applyField();
    drawMedium();
    const kymatiko::Point a = bodyCentre(Magenta), c = bodyCentre(Green);
    canvas->setDrawWidth(2);
    canvas->line(a.x, a.y, blue.x, blue.y, pathColour);
    canvas->line(blue.x, blue.y, c.x, c.y, pathColour);
    canvas->setDrawWidth(1);
    placeBodies();
}

void Somata::setFermatLabel(const QString& text) {
    Label1->setText(text);
    Label1->setAccessibleName(text);
    Label1->show();
}

void Somata::showFermat() {
    const kymatiko::Field f = field();
    if (fermatView_ == FermatView::LeastTime) {
        const kymatiko::LeastTimeSearch s =
            kymatiko::findLeastTime(bodyCentre(Magenta), bodyCentre(Green), f.boundary(), speeds());
        if (s.best > 0) {
            bodies_[Blue] = {s.bestX / f.width, 0.5};
            drawFermatPicture(bodyCentre(Blue), palette::corpuscles::fermatPath);
            setFermatLabel(texts::leastTime(s.bestTime));
            const kymatiko::Point a = bodyCentre(Magenta), b = bodyCentre(Blue), c = bodyCentre(Green);
            canvas->setSummary(spoken::fermat({lawOfSpeeds(), state_.index(), speeds(), a, b, c, f.boundary(),
                                               kymatiko::PathKind::Refraction,
                                               kymatiko::travelTime(a, b, c, f.boundary(), speeds()), s.bestTime}));
            return;
        }
        fermatView_ = FermatView::PictureOnly;  // nothing to search: the bodies as they stand
    }
    const kymatiko::Point a = bodyCentre(Magenta), b = bodyCentre(Blue), c = bodyCentre(Green);
    const kymatiko::PathTime t = kymatiko::travelTime(a, b, c, f.boundary(), speeds());
    const kymatiko::PathKind kind =
        kymatiko::classifyPath(a, b, c, f.boundary(), state_.index(), fermalaw->isChecked());
    const QColor colour = kind == kymatiko::PathKind::Reflection   ? palette::corpuscles::heroPath
                          : kind == kymatiko::PathKind::Refraction ? palette::corpuscles::fermatPath
                                                                   : palette::black;
    drawFermatPicture(b, colour);
    canvas->setSummary(
        spoken::fermat({lawOfSpeeds(), state_.index(), speeds(), a, b, c, f.boundary(), kind, t, std::nullopt}));
    switch (fermatView_) {
    case FermatView::Instruction: setFermatLabel(texts::fermatInstruction()); break;
    case FermatView::TravelTime: setFermatLabel(texts::fermatTime(kind, t.time, t.distance())); break;
    case FermatView::PictureOnly:
    case FermatView::LeastTime: Label1->hide(); break;
    }
}

void Somata::showTravelTime() {
    fermatView_ = FermatView::TravelTime;
    showFermat();
}

void Somata::redrawFermat() { showFermat(); }

void Somata::setMode(Mode mode) {
    state_.setMode(mode);
    if (mode != Mode::Fermat) fermatView_ = FermatView::Instruction;  // what the demonstration opens with
}

void Somata::fermat_Click() {
    Timer1->setEnabled(false);
    Timer2->setEnabled(false);
    hideCorpuscles();
    setMode(Mode::Fermat);
    // Decided before anything is shown: showing the bar and the label
    // resizes the drawing, and the resize draws this view again.
    fermatView_ = FermatView::Instruction;
    applyField();
    showBodies(true);
    fermatscr->show();
    showFermat();
}

void Somata::Form_MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, double x, double y) {
    if (state_.mode() != Mode::Fermat || button != Qt::LeftButton) return;
    const bool withShift = shift.testFlag(Qt::ShiftModifier);
    const bool withControl = shift.testFlag(Qt::ControlModifier);
    if (withShift && withControl)
        setBodyCentre(Blue, {x, y});
    else if (withShift)
        setBodyCentre(Magenta, {x, y});
    else if (withControl)
        setBodyCentre(Green, {x, y});
    else
        return;
    showTravelTime();
}

bool Somata::fermatKey(int key, Qt::KeyboardModifiers modifiers) {
    if (state_.mode() != Mode::Fermat) return false;
    const bool withShift = modifiers.testFlag(Qt::ShiftModifier);
    const bool withControl = modifiers.testFlag(Qt::ControlModifier);
    if (!withShift && !withControl) return false;
    QPointF step;
    switch (key) {
    case Qt::Key_Left: step = {-1, 0}; break;
    case Qt::Key_Right: step = {1, 0}; break;
    case Qt::Key_Up: step = {0, -1}; break;
    case Qt::Key_Down: step = {0, 1}; break;
    default: return false;
    }
    // The same modifiers choose the body as with the mouse; one press moves
    // it a hundredth of the drawing, and the time is worked out as for a
    // click at the new place.
    const Body body = withShift && withControl ? Blue : withShift ? Magenta : Green;
    const QPointF here = toWidget(bodyCentre(body));
    const QPointF there = here + QPointF(step.x() * std::max(2.0, canvas->width() / 100.0),
                                         step.y() * std::max(2.0, canvas->height() / 100.0));
    const QPointF u = canvas->toUser(there);
    Form_MouseDown(Qt::LeftButton, modifiers, u.x(), u.y());
    return true;
}

void Somata::fermatscr_Change() {
    if (state_.mode() != Mode::Fermat) return;
    const kymatiko::Field f = field();
    const double x = f.width * fermatscr->value() / fermatscr->maximum();
    bodies_[Blue] = {std::clamp(x / f.width, 0.0, 1.0), 0.5};  // on the boundary
    placeBodies();
    showTravelTime();
}

void Somata::fermatscr_GotFocus() {
    // The bar takes the blue body's place, so that the two agree.
    const int value = static_cast<int>(std::lround(bodies_[Blue].x * fermatscr->maximum()));
    if (value != fermatscr->value()) fermatscr->setValue(value);
}

void Somata::evresielaxistoy_Click() {
    Timer1->setEnabled(false);
    Timer2->setEnabled(false);
    hideCorpuscles();
    setMode(Mode::Fermat);
    fermatView_ = FermatView::LeastTime;  // before the layout changes, as above
    fermatscr->hide();
    showBodies(true);
    applyField();
    showFermat();
}
