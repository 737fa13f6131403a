#include "analysis/graph_screens.h"

#include <QVBoxLayout>

#include <algorithm>

#include "canvas/fonts.h"
#include "ui/forms.h"
#include "ui/window_keys.h"
#include "ui/window_placement.h"

namespace {
void prepareCanvas(Canvas& canvas) {
    // Tahoma with the Greek character set, as start-up prepares it.
    canvas.setFontRole(FontRole::Panel);
    canvas.setFontCharset(161);
}
}  // namespace

Incref::Incref() {
    setObjectName(QStringLiteral("incref"));
    canvas_ = new Canvas(this);
    canvas_->setObjectName(QStringLiteral("increfCanvas"));
    canvas_->setAccessibleName(
        QStringLiteral("Refraction angle against incidence angle  Γωνία διάθλασης ως προς γωνία πρόσπτωσης"));
    prepareCanvas(*canvas_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(canvas_);
    setMinimumSize(320, 260);
    resize(760, 560);
    markGraphWindow(*this);
    graphScale();
    canvas_->cls();
}

void Incref::setTitle(const QString& title) { setWindowTitle(title); }

void Incref::graphScale() {
    canvas_->scale(kAngleGraphScale.left, kAngleGraphScale.top, kAngleGraphScale.right, kAngleGraphScale.bottom);
}

Analysis::Analysis() {
    setObjectName(QStringLiteral("analysis"));
    Text1 = new QTextEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setReadOnly(true);
    Text1->setAcceptRichText(false);
    Text1->setLineWrapMode(QTextEdit::WidgetWidth);
    Text1->setFont(roleFont(FontRole::Panel, 13.0));
    Text1->setAccessibleName(QStringLiteral("Notes and explanations  Σημειώσεις και εξηγήσεις"));
    Text1->hide();

    canvas_ = new Canvas(this);
    canvas_->setObjectName(QStringLiteral("analysisCanvas"));
    canvas_->setAccessibleName(
        QStringLiteral("Sine of refraction against sine of incidence  Ημίτονο διάθλασης ως προς ημίτονο πρόσπτωσης"));
    prepareCanvas(*canvas_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(Text1, 3);
    layout->addWidget(canvas_, 4);
    setMinimumSize(320, 260);
    resize(760, 560);
    markGraphWindow(*this);
    graphScale();
    canvas_->cls();
}

void Analysis::setTitle(const QString& title) { setWindowTitle(title); }

void Analysis::graphScale() {
    canvas_->scale(kSineGraphScale.left, kSineGraphScale.top, kSineGraphScale.right, kSineGraphScale.bottom);
}

void Analysis::showText(const QString& text, double pointSize) {
    Text1->setFont(roleFont(FontRole::Panel, pointSize));
    Text1->setPlainText(text);
    Text1->moveCursor(QTextCursor::Start);
    Text1->show();
}

void Analysis::hideText() { Text1->hide(); }

void placeGraphScreensBeside(const QWidget& owner) {
    const QRect area = availableArea(&owner);
    const QRect data =
        owner.isVisible() ? outerRect(owner) : QRect(area.topLeft(), QSize(area.width() / 2, area.height()));
    // The two graphs share the free strip right of the data screen, one over
    // the other, when it is wide enough to read them; otherwise each goes
    // where it hides least of the data screen's grid, menus and buttons.
    const int strip = area.right() - data.right();
    const int half = area.height() / 2;
    QRect upper, lower;
    if (strip >= kGraphStripWidth) {
        upper = QRect(data.right() + 1, area.top(), strip, half);
        lower = QRect(data.right() + 1, area.top() + half, strip, area.height() - half);
    } else {
        // The data screen's menus, grid and buttons stay uncovered: the
        // graphs grow smaller if they must (their texts keep 8 points).
        std::vector<QRect> mustStayClear = workingParts(owner);
        const QSize size(std::max(area.width() / 2, kGraphStripWidth), half);
        const QSize least(std::min(size.width(), 280), std::min(half, 200));
        upper = clearPlace(size, least, area, mustStayClear, {data});
        mustStayClear.push_back(upper);
        lower = clearPlace(size, least, area, mustStayClear, {data});
    }
    auto placeOnce = [](QWidget& w, const QRect& r) {
        if (w.property("placed").toBool()) return;
        placeWindow(w, r);
        w.setProperty("placed", true);
    };
    placeOnce(form<Incref>(), upper);
    placeOnce(form<Analysis>(), lower);
}
