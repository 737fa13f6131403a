#include "analysis/graph_screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

#include "app/forms.h"
#include "app/window_keys.h"
#include "canvas/fonts.h"

namespace {
constexpr double kIncrefLeft = -5.0, kIncrefTop = 110.0, kIncrefRight = 110.0, kIncrefBottom = -30.0;
constexpr double kSineLeft = -0.3, kSineTop = 1.2, kSineRight = 1.5, kSineBottom = -0.2;

void prepareCanvas(Canvas& canvas) {
    // Tahoma with the Greek character set, as start-up prepares it.
    canvas.setFontName(QStringLiteral("TAHOMA"));
    canvas.setFontCharset(161);
}
}  // namespace

Incref::Incref() {
    setObjectName(QStringLiteral("incref"));
    canvas = new Canvas(this);
    canvas->setObjectName(QStringLiteral("increfCanvas"));
    canvas->setAccessibleName(QStringLiteral("Refraction angle against incidence angle  Γωνία διάθλασης ως προς γωνία πρόσπτωσης"));
    prepareCanvas(*canvas);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(canvas);
    setMinimumSize(320, 260);
    resize(760, 560);
    markGraphWindow(*this);
    graphScale();
    canvas->cls();
}

void Incref::setTitle(const QString& title) { setWindowTitle(title); }

void Incref::graphScale() { canvas->scale(kIncrefLeft, kIncrefTop, kIncrefRight, kIncrefBottom); }

Analysis::Analysis() {
    setObjectName(QStringLiteral("analysis"));
    Text1 = new QTextEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setReadOnly(true);
    Text1->setAcceptRichText(false);
    Text1->setLineWrapMode(QTextEdit::WidgetWidth);
    Text1->setFont(programFont(QStringLiteral("tahoma"), 13.0));
    Text1->setAccessibleName(QStringLiteral("Notes and explanations  Σημειώσεις και εξηγήσεις"));
    Text1->hide();

    canvas = new Canvas(this);
    canvas->setObjectName(QStringLiteral("analysisCanvas"));
    canvas->setAccessibleName(QStringLiteral("Sine of refraction against sine of incidence  Ημίτονο διάθλασης ως προς ημίτονο πρόσπτωσης"));
    prepareCanvas(*canvas);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(Text1, 3);
    layout->addWidget(canvas, 4);
    setMinimumSize(320, 260);
    resize(760, 560);
    markGraphWindow(*this);
    graphScale();
    canvas->cls();
}

void Analysis::setTitle(const QString& title) { setWindowTitle(title); }

void Analysis::graphScale() { canvas->scale(kSineLeft, kSineTop, kSineRight, kSineBottom); }

void Analysis::showText(const QString& text, double pointSize) {
    Text1->setFont(programFont(QStringLiteral("tahoma"), pointSize));
    Text1->setPlainText(text);
    Text1->moveCursor(QTextCursor::Start);
    Text1->show();
}

void Analysis::hideText() { Text1->hide(); }

void placeGraphScreensBeside(const QWidget& owner) {
    QScreen* screen = owner.screen() ? owner.screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    // The free strip right of the owner; when the owner leaves too little,
    // the right half of the display.
    int left = owner.isVisible() ? owner.frameGeometry().right() + 1 : area.left() + area.width() / 2;
    if (area.right() - left < std::max(400, area.width() / 3)) left = area.left() + area.width() / 2;
    const int width = area.right() - left + 1;
    const int half = area.height() / 2;
    const int frame = 30;  // room for the title bar of each window
    auto placeOnce = [](QWidget& w, const QRect& r) {
        if (w.property("placed").toBool()) return;
        w.setGeometry(r);
        w.setProperty("placed", true);
    };
    placeOnce(form<Incref>(), QRect(left, area.top() + frame, width, std::max(260, half - frame)));
    placeOnce(form<Analysis>(), QRect(left, area.top() + half + frame, width, std::max(260, half - frame)));
}
