#include "app/main_menu.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/errors_screen.h"
#include "app/history_screen.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "canvas/graph_axes.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"
#include "canvas/qt_format.h"
#include "core/physics.h"
#include "history/data_screen_opener.h"
#include "models/interpretation_openers.h"
#include "semicircle/hmiky_screen.h"
#include "ui/caption_button.h"
#include "ui/forms.h"
#include "ui/presentation_size.h"
#include "ui/program_exit.h"
#include "ui/window_placement.h"

namespace {
CaptionButton* makeButton(QWidget* parent, const QString& caption, FontRole role, const QString& name) {
    auto* button = new CaptionButton(caption, parent);
    button->setObjectName(name);
    button->setFont(roleFont(role, 11.0, true));
    return button;
}
}  // namespace

Diathlasimeleti::Diathlasimeleti() {
    setObjectName(QStringLiteral("diathlasimeleti"));
    setWindowTitle(QStringLiteral("STUDY OF REFRACTION   MELETH DIATHLASIS"));
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, palette::menu::window);
    setPalette(pal);

    createTitle();
    createButtons();
    createIllustration();
    createWindowControls();
    resize(900, 650);
}

void Diathlasimeleti::createWindowControls() {
    // How large the whole program shows, for a projector, and a way back to
    // the windows' first places.
    auto* label = new QLabel(QStringLiteral("SIZE  Μέγεθος"), this);
    label->setObjectName(QStringLiteral("sizeLabel"));
    label->setFont(roleFont(FontRole::Caption, 10.0, true));
    label->setWordWrap(true);
    auto* size = new QComboBox(this);
    size->setObjectName(QStringLiteral("presentationSize"));
    size->setFont(roleFont(FontRole::Caption, 10.0));
    size->setAccessibleName(QStringLiteral("Presentation size  Μέγεθος παρουσίασης"));
    size->view()->setAccessibleName(size->accessibleName());  // its list of sizes
    size->setToolTip(QStringLiteral("Ctrl++  Ctrl+-  Ctrl+0"));
    for (const int percent : presentationSizes()) size->addItem(QStringLiteral("%1 %").arg(percent), percent);
    label->setBuddy(size);
    auto showSize = [size](int percent) { size->setCurrentIndex(size->findData(percent)); };
    showSize(presentationSize());
    watchPresentationSize(size, showSize);
    connect(size, &QComboBox::activated, this,
            [size](int index) { setPresentationSize(size->itemData(index).toInt()); });
    auto* reset =
        makeButton(this, QStringLiteral("RESET WINDOWS  Επαναφορά παραθύρων"), FontRole::Caption, "resetWindows");
    reset->setFont(roleFont(FontRole::Caption, 10.0, true));
    connect(reset, &QPushButton::clicked, this, [] { resetWindowPlaces(); });
    // The picture is drawn again for the new size by itself (redrawWhenResized).
    watchPresentationSize(this, [this](int) { layOut(); });
    setTabOrder(Command5, size);
    setTabOrder(size, reset);
}

void Diathlasimeleti::createTitle() {
    Label1 = new QLabel(QStringLiteral("STUDY OF THE  LAW OF REFRACTION Ο ΝΟΜΟΣ ΤΗΣ ΔΙΑΘΛΑΣΗΣ"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setFont(roleFont(FontRole::Caption, 22.0, true));
    Label1->setAlignment(Qt::AlignCenter);
    Label1->setWordWrap(true);
    Label1->setAccessibleName(Label1->text());
}

void Diathlasimeleti::createButtons() {
    // The design captions; start-up replaces three of them (showStartUpCaptions).
    Command1 = makeButton(this, QStringLiteral("Semicircle Experiment"), FontRole::Caption, "Command1");
    Command2 = makeButton(this, QStringLiteral("Data Input - Historical Measurments - Interpretation of the Law"),
                          FontRole::Caption, "Command2");
    Command3 = makeButton(this, QStringLiteral("End"), FontRole::Caption, "Command3");
    Command4 = makeButton(this,
                          QStringLiteral("A SHORT HISTORY OF THE LAW OF REFACTION    (in Greek)") +
                              QString(20, QLatin1Char(' ')) + QStringLiteral("Σύντομη ιστορία του νόμου της Διάθλασης"),
                          FontRole::Caption, "Command4");
    Command5 = makeButton(this, QStringLiteral("INTERPRETATION OF REFRACTION       ΕΡΜΗΝΕΙΑ ΤΗΣ ΔΙΑΘΛΑΣΗΣ"),
                          FontRole::Caption, "Command5");

    connect(Command1, &QPushButton::clicked, this, &Diathlasimeleti::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Diathlasimeleti::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &Diathlasimeleti::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &Diathlasimeleti::Command4_Click);
    connect(Command5, &QPushButton::clicked, this, &Diathlasimeleti::Command5_Click);

    // Keyboard order: the row of the experiment, data and END, then the
    // history and the interpretation.
    setTabOrder(Command1, Command2);
    setTabOrder(Command2, Command3);
    setTabOrder(Command3, Command4);
    setTabOrder(Command4, Command5);
}

void Diathlasimeleti::createIllustration() {
    illustration_ = new Canvas(this);
    illustration_->setObjectName(QStringLiteral("illustration"));
    illustration_->setAccessibleName(
        QStringLiteral("Refraction of a ray from air into glass  Διάθλαση ακτίνας από αέρα σε γυαλί"));
    drawIllustration();
}

void Diathlasimeleti::showStartUpCaptions() {
    Command1->setCaption(QStringLiteral("SEMICIRCLE ΗΜΙΚΥΚΛΙΟ"));
    Command2->setCaption(
        QStringLiteral("ANALYSIS OF DATA, SOME HISTORICAL ELEMENTS  Μελέτη των δεδομένων,ιστορικά στοιχεία"));
    Command3->setCaption(QStringLiteral("END Τέλος"));
}

void Diathlasimeleti::drawIllustration() {
    // A ray from air into glass with its normal: a reminder of what the
    // program is about, drawn again for each size so that its texts are
    // laid out for it.
    Canvas& c = *illustration_;
    c.setBackColor(palette().color(QPalette::Window));
    c.scale(-200, 100, 200, -100);
    constexpr double n = 1.5;
    constexpr double incidence = physics::radians(50.0);
    const double refraction = std::asin(std::sin(incidence) / n);
    c.filledBox(-200, 0, 200, -100, palette::menu::water);
    c.line(-200, 0, 200, 0, palette::menu::surface);
    c.setDrawStyle(DrawStyle::Dash);
    c.line(0, 95, 0, -95, palette::menu::normal);
    c.setDrawStyle(DrawStyle::Solid);
    c.setDrawWidth(3);
    const double inLength = 120.0;
    c.line(-inLength * std::sin(incidence), inLength * std::cos(incidence), 0, 0, palette::menu::ray);
    c.line(0, 0, inLength * std::sin(refraction), -inLength * std::cos(refraction), palette::menu::ray);
    c.setDrawWidth(1);
    c.setFontRole(FontRole::Caption);
    c.setFontSize(12);
    c.setForeColor(palette::menu::caption);
    c.setCurrentX(10);
    c.setCurrentY(90);
    c.print(QStringLiteral("AIR  ΑΕΡΑΣ"));
    // The medium and the law, in both languages, each on one line where it
    // fits on its side of the normal as the screen shows it, otherwise a
    // part a line.
    auto printBeside = [&c](double left, const QStringList& parts) {
        constexpr double room = 180.0;
        const QStringList lines = c.textWidth(parts.join(QStringLiteral("   "))) * presentationScale() <= room
                                      ? QStringList{parts.join(QStringLiteral("   "))}
                                      : parts;
        // y runs upwards; on a low picture the last line rises to stay whole.
        const double lastTop = std::max(-70.0, -97.0 + c.textHeight());
        for (qsizetype k = 0; k < lines.size(); ++k) {
            c.setCurrentX(left);
            c.setCurrentY(lastTop + static_cast<double>(lines.size() - 1 - k) * c.textHeight());
            c.print(lines[k]);
        }
    };
    printBeside(10, {QStringLiteral("GLASS  ΓΥΑΛΙ"), QStringLiteral("n = ") + fmt(n, "0.0")});
    printBeside(-190, {QStringLiteral("sin i = n · sin r"), QStringLiteral("ημ i = n · ημ r")});
    c.setSummary(
        QStringLiteral("A ray from air into glass (n = %1) bending towards the normal: incidence %2°, "
                       "refraction %3°.")
            .arg(fmt(n, "0.0"), fmt(physics::degrees(incidence), "0"), fmt(physics::degrees(refraction), "0.00")));
    redrawWhenResized(c, [this] { drawIllustration(); });
}

void Diathlasimeleti::placeButtonRow(int rowTop) {
    rowTop_ = rowTop;
    layOut();
}

namespace {
// The height a text needs wrapped to the width, in the widget's font.
int wrappedHeight(const QWidget& w, const QString& text, int width) {
    return QFontMetrics(w.font()).boundingRect(QRect(0, 0, std::max(1, width), 4000), Qt::TextWordWrap, text).height();
}

// The width of the widest word of the text, in the widget's font.
int widestWord(const QWidget& w, const QString& text) {
    const QFontMetrics metrics(w.font());
    int widest = 0;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        widest = std::max(widest, metrics.horizontalAdvance(word));
    return widest;
}

// The window's own controls beside the history and interpretation buttons,
// out of the pupil's road: the size on the left, the reset on the right,
// each in a strip of the width given.
void placeSideControls(QWidget& menu, int margin, int top, int strip) {
    auto* label = menu.findChild<QLabel*>(QStringLiteral("sizeLabel"));
    auto* size = menu.findChild<QComboBox*>(QStringLiteral("presentationSize"));
    auto* reset = menu.findChild<CaptionButton*>(QStringLiteral("resetWindows"));
    if (!label || !size || !reset) return;
    const int labelHeight = wrappedHeight(*label, label->text(), strip) + 2;
    label->setGeometry(margin, top, strip, labelHeight);
    size->setGeometry(margin, top + labelHeight, strip, size->sizeHint().height());
    const int resetHeight = wrappedHeight(*reset, reset->text(), strip - 14) + 20;
    reset->setGeometry(menu.width() - margin - strip, top, strip, resetHeight);
}
}  // namespace

void Diathlasimeleti::layOut() {
    const int w = width();
    const int h = height();
    const int margin = std::max(8, w / 80);
    // Side strips wide enough for the longest word of their controls; the
    // history and interpretation buttons take the middle.
    int strip = w / 6 - 2 * margin;
    if (auto* reset = findChild<CaptionButton*>(QStringLiteral("resetWindows")))
        strip = std::max(strip, widestWord(*reset, reset->text()) + 16);
    const int middleLeft = strip == w / 6 - 2 * margin ? w / 6 : strip + 2 * margin;
    const int middleWidth = middleLeft == w / 6 ? w * 2 / 3 : w - 2 * middleLeft;
    // Buttons tall enough for their captions at any presentation size.
    int buttonHeight = std::clamp(h / 9, 48, 110);
    const std::pair<const CaptionButton*, int> buttons[] = {{Command1, w * 3 / 10},
                                                            {Command2, w * 9 / 20},
                                                            {Command3, w / 4 - 3 * margin},
                                                            {Command4, middleWidth},
                                                            {Command5, middleWidth}};
    for (const auto& [button, width] : buttons)
        buttonHeight = std::max(buttonHeight, wrappedHeight(*button, button->text(), width - 14) + 16);

    const int titleHeight = std::max({40, h / 8, wrappedHeight(*Label1, Label1->text(), w - 2 * margin - 4) + 6});
    Label1->setGeometry(margin, margin, w - 2 * margin, titleHeight);

    const int historyTop = std::max(h / 6, titleHeight) + margin;
    Command4->setGeometry(middleLeft, historyTop, middleWidth, buttonHeight);
    Command5->setGeometry(middleLeft, historyTop + buttonHeight + margin, middleWidth, buttonHeight);
    placeSideControls(*this, margin, historyTop, strip);
    // The row stays where start-up put it unless the window became too
    // short or the buttons above grew into it.
    const int below = Command5->geometry().bottom() + 1 + margin;
    const int rowTop =
        std::clamp(std::max(below, rowTop_ < 0 ? h / 2 : rowTop_), 0, std::max(0, h - buttonHeight - margin));

    Command1->setGeometry(0, rowTop, w * 3 / 10, buttonHeight);
    Command2->setGeometry(w * 3 / 10 + margin, rowTop, w * 9 / 20, buttonHeight);
    Command3->setGeometry(w * 3 / 4 + 2 * margin, rowTop, w / 4 - 3 * margin, buttonHeight);

    const int pictureTop = rowTop + buttonHeight + margin;
    const int pictureHeight = h - pictureTop - margin;
    illustration_->setVisible(pictureHeight > 60);
    illustration_->setGeometry(w / 4, pictureTop, w / 2, std::max(pictureHeight, 1));
}

void Diathlasimeleti::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void Diathlasimeleti::closeEvent(QCloseEvent* event) {
    // Closing the main menu's window is the same as "END".
    event->accept();
    endProgram(0);
}

void Diathlasimeleti::Command1_Click() {
    // The first touch creates the bench, which draws its starting figure.
    Hmiky& bench = form<Hmiky>();

    // A square screen, as tall as most of the display, at the top.
    const QRect screen = availableArea(&bench);
    const int side = screen.height() * 9 / 10;
    // The menu bar of the bench is long: the window may be wider than it is
    // tall so that every menu shows; the drawing itself stays square.
    const int width = std::min(screen.width(), std::max(side, bench.menuBar()->sizeHint().width() + 16));
    placeWindow(bench, QRect(screen.left() + (screen.width() - width) / 2, screen.top(), width, side));

    bench.openExperiment();
    showScreen(bench);
}

void Diathlasimeleti::Command2_Click() {
    hideIfCreated<Hmiky>();
    hideIfCreated<Errors>();
    hideIfCreated<ListOfData>();
    openDataScreen();
}

void Diathlasimeleti::Command3_Click() { endProgram(0); }

void Diathlasimeleti::Command4_Click() {
    auto& history = form<Storiopt>();
    placeWindow(history, availableArea(&history));
    history.protomeros_Click();  // the first page, sized to the screen
    showScreen(history);
}

void Diathlasimeleti::Command5_Click() { showInterpretationScreens(); }
