// The bench as a lab bench: the menu of its aids (the angles beside the
// rays, the mystery block and its check) and the listing of every ray the
// bench traces into the block.
#include <QMenuBar>
#include <QMouseEvent>
#include <QSettings>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <random>

#include "canvas/qt_format.h"
#include "core/number_input.h"
#include "semicircle/hmiky_look.h"
#include "semicircle/hmiky_screen.h"
#include "ui/dialogs.h"
#include "ui/window_placement.h"

using namespace bench_look;

namespace {

const QString kMysteryTitle = QStringLiteral("MYSTERY BLOCK  Άγνωστο υλικό");
const QString kCheckTitle = QStringLiteral("CHECK MY n  Έλεγχος του n μου");
// A key press or a notch of the wheel turns the protractor this much.
constexpr double kProtractorTurn = 0.5;

// A hidden index from 1.30 to 2.00, in hundredths.
double drawHiddenIndex() {
    static std::mt19937 generator{std::random_device{}()};
    return std::uniform_int_distribution<int>(130, 200)(generator) / 100.0;
}

constexpr const char* kReadoutsKey = "bench/anglesBesideRays";

}  // namespace

void Hmiky::createLabMenu() {
    lab = menuBar()->addMenu(QStringLiteral("LAB  Εργαστήριο"));
    lab->setObjectName(QStringLiteral("lab"));
    readouts = lab->addAction(QStringLiteral("ANGLES BESIDE THE RAYS  Γωνίες δίπλα στις ακτίνες"));
    readouts->setCheckable(true);
    // A teacher who turned them off for a measuring exercise finds them off
    // the next time too.
    readouts->setChecked(programSettings()->value(QString::fromLatin1(kReadoutsKey), true).toBool());
    protractor = lab->addAction(QStringLiteral("PROTRACTOR  Μοιρογνωμόνιο"));
    protractor->setCheckable(true);
    lab->addSeparator();
    mystery = lab->addAction(kMysteryTitle);
    mystery->setCheckable(true);
    checkN = lab->addAction(kCheckTitle);
    checkN->setEnabled(false);
    const std::pair<QAction*, const char*> names[] = {
        {readouts, "readouts"}, {protractor, "protractor"}, {mystery, "mystery"}, {checkN, "checkN"}};
    for (const auto& [action, name] : names) action->setObjectName(QString::fromLatin1(name));
    connect(readouts, &QAction::triggered, this, &Hmiky::readouts_Click);
    connect(protractor, &QAction::triggered, this, &Hmiky::protractor_Click);
    connect(mystery, &QAction::triggered, this, &Hmiky::mystery_Click);
    connect(checkN, &QAction::triggered, this, &Hmiky::checkN_Click);
}

void Hmiky::readouts_Click() {
    programSettings()->setValue(QString::fromLatin1(kReadoutsKey), readouts->isChecked());
    // The same picture, with or without its angles.
    drawPicture();
}

void Hmiky::protractor_Click() {
    if (protractor_)
        protractor_.reset();
    else
        protractor_ = protractorOn(state().block());
    protractor->setChecked(protractor_.has_value());
    grip_ = ProtractorGrip::None;
    drawPicture();
}

void Hmiky::moveProtractor(double dx, double dy, double turnDegrees) {
    if (!protractor_) return;
    protractor_->centre.x = std::clamp(protractor_->centre.x + dx, -200.0, 200.0);
    protractor_->centre.y = std::clamp(protractor_->centre.y + dy, -200.0, 200.0);
    protractor_->zeroDegrees = std::remainder(protractor_->zeroDegrees + turnDegrees, 360.0);
    drawPicture();
}

bool Hmiky::protractorKey(int key, Qt::KeyboardModifiers modifiers) {
    // Arrows move it a unit a press; with Shift, or Page Up and Down, they
    // turn it half a degree.
    const bool turn = modifiers.testFlag(Qt::ShiftModifier);
    switch (key) {
    case Qt::Key_Left: turn ? moveProtractor(0, 0, kProtractorTurn) : moveProtractor(-1, 0, 0); return true;
    case Qt::Key_Right: turn ? moveProtractor(0, 0, -kProtractorTurn) : moveProtractor(1, 0, 0); return true;
    case Qt::Key_Up: turn ? moveProtractor(0, 0, kProtractorTurn) : moveProtractor(0, 1, 0); return true;
    case Qt::Key_Down: turn ? moveProtractor(0, 0, -kProtractorTurn) : moveProtractor(0, -1, 0); return true;
    case Qt::Key_PageUp: moveProtractor(0, 0, kProtractorTurn); return true;
    case Qt::Key_PageDown: moveProtractor(0, 0, -kProtractorTurn); return true;
    default: return false;
    }
}

bool Hmiky::protractorEvent(QEvent* event) {
    if (!protractor_) return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPointF at = canvas->toUser(mouse->position());
        const Point p{at.x(), at.y()};
        // The rim is a few pixels wide whatever the bench's size.
        grip_ = mouse->button() == Qt::LeftButton ? gripAt(*protractor_, p, 8.0 * std::fabs(canvas->userPerPixelX()))
                                                  : ProtractorGrip::None;
        gripPoint_ = p;
        return grip_ != ProtractorGrip::None;
    }
    case QEvent::MouseMove: {
        if (grip_ == ProtractorGrip::None) return false;
        const QPointF at = canvas->toUser(static_cast<QMouseEvent*>(event)->position());
        const Point p{at.x(), at.y()};
        if (grip_ == ProtractorGrip::Body)
            moveProtractor(p.x - gripPoint_.x, p.y - gripPoint_.y, 0.0);
        else
            moveProtractor(0, 0, bearingDegrees(*protractor_, p) - bearingDegrees(*protractor_, gripPoint_));
        gripPoint_ = p;
        return true;
    }
    case QEvent::MouseButtonRelease: {
        const bool held = grip_ != ProtractorGrip::None;
        grip_ = ProtractorGrip::None;
        return held;
    }
    case QEvent::Wheel: {
        const int steps = static_cast<QWheelEvent*>(event)->angleDelta().y() / 120;
        if (steps == 0) return true;
        moveProtractor(0, 0, steps * kProtractorTurn);
        return true;
    }
    default: return false;
    }
}

void Hmiky::mystery_Click() {
    BenchState& s = state();
    if (s.mysteryOn()) {
        s.endMystery();
    } else {
        s.startMystery(drawHiddenIndex());
    }
    const bool on = s.mysteryOn();
    mystery->setChecked(on);
    checkN->setEnabled(on);
    // The index bar would show the set index, not the hidden one.
    Indexn->setEnabled(!on);
    showValues();
    redraw(on ? QStringList{kMysteryTitle, QStringLiteral("n = ?  Find it!  Βρες τον!")}
              : QStringList{QStringLiteral(" n= ") + fmt(s.indexN(), "0.00")});
}

void Hmiky::checkN_Click() {
    if (!state().mysteryOn()) return;
    const QString answer =
        inputBox(QStringLiteral("What index n did you find for the block?\nΠοιον δείκτη n βρήκες για το ημικύκλιο;"),
                 kCheckTitle);
    if (answer.trimmed().isEmpty()) return;  // Cancel
    const std::optional<double> typed = parseTypedNumber(answer.toStdString());
    const std::optional<BenchState::MysteryCheck> check =
        typed ? state().checkMystery(*typed) : std::optional<BenchState::MysteryCheck>();
    if (!check) {
        messageBox(QStringLiteral("The index must be a positive number, for example 1.52.\n"
                                  "Ο δείκτης πρέπει να είναι θετικός αριθμός, για παράδειγμα 1.52."),
                   kCheckTitle);
        return;
    }
    const QString actual = fmt(check->actual, "0.00");
    const QString found = fmt(check->found, "0.000");
    const QString difference = (check->differencePercent > 0 ? QStringLiteral("+") : QString()) +
                               fmt(check->differencePercent, "0.0") + QStringLiteral(" %");
    messageBox(QStringLiteral("The true index is %1. Yours, %2, differs from it by %3.\n"
                              "Ο πραγματικός δείκτης είναι %1. Ο δικός σου, %2, διαφέρει κατά %3.")
                   .arg(actual, found, difference),
               kCheckTitle);
}

bool Hmiky::refusedForMystery(const QString& title) {
    if (!state().mysteryOn()) return false;
    messageBox(QStringLiteral("Not with the mystery block: it would give its index away.\n"
                              "Όχι με το άγνωστο υλικό: θα φανέρωνε τον δείκτη του."),
               title);
    return true;
}

void Hmiky::listRay(const Block& block, double incidence, const RayTrace& trace, RaySource source) {
    state().recordRay(block, incidence, trace, source);
}
