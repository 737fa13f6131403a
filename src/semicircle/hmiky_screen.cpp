#include "semicircle/hmiky_screen.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "analysis/errors_screen.h"
#include "app/dialogs.h"
#include "app/forms.h"
#include "app/main_menu.h"
#include "app/number_input.h"
#include "app/program_exit.h"
#include "app/shared_state.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "semicircle/measurement_file.h"

namespace {

const QColor kBlack(0, 0, 0);
const QColor kBlockFill(205, 235, 255);
const QColor kRayColour(0, 200, 0);      // incident and emerging rays
const QColor kInsideColour(0, 200, 100);  // inside the block and reflected
const QColor kGivenIncident(0, 0, 255);   // the ray of a typed incidence angle
const QColor kGivenOther(0, 255, 0);
const QColor kHintColour(170, 0, 0);
const QColor kExpectedColour(230, 0, 0);

constexpr double kLeft = -200.0;
constexpr double kTop = 200.0;
constexpr double kMargin = 4.0;

const QString kIncidenceTitle = QStringLiteral("incidence angle");

double degreesToRadians(double degrees) { return degrees * module1().pi / 180.0; }
double radiansToDegrees(double radians) { return radians * 180.0 / module1().pi; }

// Keeps the bench square: the canvas is the largest square that fits,
// centred. A non-square area would bend the block's circle away from the
// straight rays that must meet it.
class SquareHost : public QWidget {
public:
    explicit SquareHost(Canvas* canvas, QWidget* parent = nullptr) : QWidget(parent), canvas_(canvas) {
        canvas_->setParent(this);
        setMinimumSize(240, 240);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    QSize sizeHint() const override { return {640, 640}; }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        const int side = std::min(width(), height());
        canvas_->setGeometry((width() - side) / 2, (height() - side) / 2, side, side);
    }

private:
    Canvas* canvas_;
};

QScrollBar* makeScrollBar(int minimum, int maximum, int value, int single, int page, const QString& name,
                          const QString& accessible) {
    auto* bar = new QScrollBar(Qt::Horizontal);
    bar->setObjectName(name);
    bar->setRange(minimum, maximum);
    bar->setValue(value);
    bar->setSingleStep(single);
    bar->setPageStep(page);
    bar->setFocusPolicy(Qt::StrongFocus);  // arrow keys move the block too
    bar->setInvertedControls(false);        // Right raises the value, as the bar points
    bar->setAccessibleName(accessible);
    bar->setMinimumHeight(18);
    return bar;
}

QString rowText(const QString& a, const QString& b, const QString& c, const QString& d) {
    return QStringLiteral("%1 %2 %3 %4").arg(a, 5).arg(b, 9).arg(c, 9).arg(d, 8);
}

}  // namespace

Hmiky::Hmiky() {
    setObjectName(QStringLiteral("hmiky"));
    setWindowTitle(QStringLiteral("SIMULATION EΞOMOIΩΣH TOY ΠEIΠAMATOΣ"));
    setFont(programFont(QStringLiteral("Arial"), 9.0));

    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("bench"));
    canvas->setAccessibleName(QStringLiteral("Semicircle bench  Πάγκος του ημικυκλίου"));
    canvas->scale(-200, 200, 200, -200);
    canvas->setFontName(QStringLiteral("Arial"));
    canvas->setFontSize(9.0);
    auto* host = new SquareHost(canvas);

    // --- buttons ------------------------------------------------------------
    const QFont buttonFont = programFont(QStringLiteral("Arial"), 9.0, true);
    auto button = [&](const QString& caption, const char* name) {
        auto* b = new CaptionButton(caption);
        b->setObjectName(QString::fromLatin1(name));
        b->setFont(buttonFont);
        b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        return b;
    };
    Command1 = button(QStringLiteral("GIVE INCIDENCE ANGLE      Δώσε γωνία Πρόσπτωσης"), "Command1");
    Command4 = button(QStringLiteral("RAYS FOR incidence = 0° to 90°      Ακτίνες για Γωνίες πρόσπτωσης  0-90°"),
                      "Command4");
    Command4->setFont(programFont(QStringLiteral("Courier New"), 9.0, true));
    Command2 = button(QStringLiteral("erase ΚΑΘΑΡΙΣΕ"), "Command2");
    Command3 = button(QStringLiteral("BACK ΠΙΣΩ"), "Command3");
    cmdend = button(QStringLiteral("END Τέλος"), "cmdend");
    listOfData = button(QStringLiteral("LIST OF DATA  Λίστα δεδομένων"), "listOfData");

    // --- scroll bars and their displays -----------------------------------------
    HScroll1 = makeScrollBar(10, 120, 100, 1, 10, QStringLiteral("HScroll1"),
                             QStringLiteral("Radius of the semicircle  Ακτίνα του ημικυκλίου"));
    xcoor = makeScrollBar(-125, 125, 0, 1, 25, QStringLiteral("xcoor"),
                          QStringLiteral("x of the centre of the semicircle  x του κέντρου του ημικυκλίου"));
    ycoor = makeScrollBar(-125, 125, 0, 1, 25, QStringLiteral("ycoor"),
                          QStringLiteral("y of the centre of the semicircle  y του κέντρου του ημικυκλίου"));
    angle = makeScrollBar(-900, 900, 0, 10, 100, QStringLiteral("angle"),
                          QStringLiteral("Angle of the diameter with the Y axis  Γωνία της διαμέτρου με τον άξονα Y"));
    hvalue = makeScrollBar(-250, 250, 0, 5, 50, QStringLiteral("hvalue"),
                           QStringLiteral("Height of the ray, y(0)  Ύψος της ακτίνας, y(0)"));
    Indexn = makeScrollBar(5, 30, 15, 1, 5, QStringLiteral("Indexn"),
                           QStringLiteral("Refractive index n  Δείκτης διάθλασης n"));

    auto display = [](const char* name, const QString& accessible) {
        auto* edit = new QLineEdit;
        edit->setObjectName(QString::fromLatin1(name));
        edit->setReadOnly(true);
        edit->setAccessibleName(accessible);
        return edit;
    };
    aktis = display("aktis", QStringLiteral("Radius of the semicircle  Ακτίνα του ημικυκλίου"));
    gon = display("gon", QStringLiteral("Angle with the Y axis  Γωνία με τον άξονα Y"));
    auto valueLabel = [](const char* name) {
        auto* label = new QLabel;
        label->setObjectName(QString::fromLatin1(name));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return label;
    };
    Indexnt = valueLabel("Indexnt");
    Label2 = valueLabel("Label2");
    Label3 = valueLabel("Label3");
    Label4 = valueLabel("Label4");

    auto* controlsPanel = new QWidget;
    auto* grid = new QGridLayout(controlsPanel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(6);
    const QFont captionFont = programFont(QStringLiteral("Arial"), 9.0, true);
    auto addControl = [&](int row, int column, const QString& caption, QScrollBar* bar, QWidget* shows) {
        auto* box = new QVBoxLayout;
        box->setSpacing(2);
        auto* title = new QLabel(caption);
        title->setFont(captionFont);
        title->setBuddy(bar);
        title->setAccessibleName(caption);
        box->addWidget(title);
        box->addWidget(bar);
        box->addWidget(shows);
        grid->addLayout(box, row, column);
    };
    addControl(0, 0, QStringLiteral("Radius  Ακτίνα"), HScroll1, aktis);
    addControl(0, 1, QStringLiteral("Centre x  Κέντρο x"), xcoor, Label3);
    addControl(0, 2, QStringLiteral("Centre y  Κέντρο y"), ycoor, Label2);
    addControl(1, 0, QStringLiteral("Tilt of the diameter  Κλίση διαμέτρου"), angle, gon);
    addControl(1, 1, QStringLiteral("Ray height h  Ύψος ακτίνας h"), hvalue, Label4);
    addControl(1, 2, QStringLiteral("Index n  Δείκτης n"), Indexn, Indexnt);
    for (int c = 0; c < 3; ++c) grid->setColumnStretch(c, 1);

    auto* buttonColumn = new QVBoxLayout;
    buttonColumn->setSpacing(8);
    for (CaptionButton* b : {Command1, Command4, listOfData, Command2}) buttonColumn->addWidget(b);
    buttonColumn->addStretch(1);
    for (CaptionButton* b : {Command3, cmdend}) buttonColumn->addWidget(b);
    // The captions wrap in the narrow column: each button is as tall as
    // its wrapped caption.
    constexpr int kButtonColumnWidth = 170;
    for (CaptionButton* b : {Command1, Command4, listOfData, Command2, Command3, cmdend}) {
        const QRect text = QFontMetrics(b->font()).boundingRect(QRect(0, 0, kButtonColumnWidth - 14, 2000),
                                                                Qt::AlignCenter | Qt::TextWordWrap, b->text());
        b->setMinimumHeight(text.height() + 20);
    }
    auto* buttonPanel = new QWidget;
    buttonPanel->setLayout(buttonColumn);
    buttonPanel->setFixedWidth(kButtonColumnWidth);
    buttonColumn->setContentsMargins(0, 0, 0, 0);

    auto* central = new QWidget;
    auto* layout = new QGridLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(8);
    layout->addWidget(host, 0, 0);
    layout->addWidget(controlsPanel, 1, 0);
    layout->addWidget(buttonPanel, 0, 1, 2, 1);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
    setCentralWidget(central);

    // The keyboard walks the scroll bars row by row, then the buttons.
    QWidget* order[] = {HScroll1, aktis, xcoor, ycoor, angle, gon, hvalue, Indexn,
                        Command1, Command4, listOfData, Command2, Command3, cmdend};
    for (std::size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);

    // --- menus, in design order -----------------------------------------------
    QMenuBar* bar = menuBar();
    exper = bar->addMenu(QStringLiteral("EXPERIMENT"));
    exper->setObjectName(QStringLiteral("exper"));
    allrandom = exper->addAction(QStringLiteral("ALL RANDOM"));
    Paral = bar->addAction(QStringLiteral("PARALLEL"));
    rightpar = bar->addAction(QStringLiteral("FROM THE RIGHT"));
    leftpar = bar->addAction(QStringLiteral("FROM LEFT"));
    moreless = bar->addMenu(QStringLiteral("CHOOSE DIRECTION OF SEMICIRCLE"));
    moreless->setObjectName(QStringLiteral("moreless"));
    Raref = moreless->addAction(QStringLiteral("TO THE RIGHT"));
    moredens = moreless->addAction(QStringLiteral("TO THE LEFT"));
    directionGroup_ = new QActionGroup(this);
    directionGroup_->setExclusive(true);
    for (QAction* a : {Raref, moredens}) {
        a->setCheckable(true);
        directionGroup_->addAction(a);
    }
    kritikal = bar->addAction(QStringLiteral("CRITICAL ANGLE"));
    sygr = bar->addAction(QStringLiteral("COMPARISONS"));
    Optimize = bar->addAction(QStringLiteral("BEST SEMICIRCLE"));
    fylaxe = bar->addAction(QStringLiteral("Δημιουργία αρχείου για δεδομένες τιμές"));
    const std::pair<QAction*, const char*> names[] = {
        {allrandom, "allrandom"}, {Paral, "Paral"},       {rightpar, "rightpar"}, {leftpar, "leftpar"},
        {Raref, "Raref"},         {moredens, "moredens"}, {kritikal, "kritikal"}, {sygr, "sygr"},
        {Optimize, "Optimize"},   {fylaxe, "fylaxe"}};
    for (const auto& [action, name] : names) action->setObjectName(QString::fromLatin1(name));

    // --- wiring -------------------------------------------------------------
    connect(Command1, &QPushButton::clicked, this, &Hmiky::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Hmiky::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &Hmiky::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &Hmiky::Command4_Click);
    connect(cmdend, &QPushButton::clicked, this, &Hmiky::cmdend_Click);
    connect(listOfData, &QPushButton::clicked, this, &Hmiky::listOfData_Click);
    connect(HScroll1, &QScrollBar::valueChanged, this, &Hmiky::HScroll1_Change);
    connect(xcoor, &QScrollBar::valueChanged, this, &Hmiky::xcoor_Change);
    connect(ycoor, &QScrollBar::valueChanged, this, &Hmiky::ycoor_Change);
    connect(angle, &QScrollBar::valueChanged, this, &Hmiky::angle_Change);
    connect(hvalue, &QScrollBar::valueChanged, this, &Hmiky::hvalue_Change);
    connect(Indexn, &QScrollBar::valueChanged, this, &Hmiky::Indexn_Change);
    connect(allrandom, &QAction::triggered, this, &Hmiky::allrandom_Click);
    connect(Paral, &QAction::triggered, this, &Hmiky::Paral_Click);
    connect(rightpar, &QAction::triggered, this, &Hmiky::rightpar_Click);
    connect(leftpar, &QAction::triggered, this, &Hmiky::leftpar_Click);
    connect(Raref, &QAction::triggered, this, &Hmiky::Raref_Click);
    connect(moredens, &QAction::triggered, this, &Hmiky::moredens_Click);
    connect(kritikal, &QAction::triggered, this, &Hmiky::kritikal_Click);
    connect(sygr, &QAction::triggered, this, &Hmiky::sygr_Click);
    connect(Optimize, &QAction::triggered, this, &Hmiky::Optimize_Click);
    connect(fylaxe, &QAction::triggered, this, &Hmiky::fylaxe_Click);
    connect(canvas, &Canvas::mousePressed, this, [this](double x, double y, Qt::MouseButton) { Form_MouseDown(x, y); });
    connect(canvas, &Canvas::mouseReleased, this, [this](double x, double y, Qt::MouseButton) { Form_MouseUp(x, y); });

    canvas->installEventFilter(this);
    resize(1000, 900);
    Form_Load();
}

// ------------------------------------------------------------ shared values ---

BenchControls Hmiky::controls() const {
    BenchControls c;
    c.radius = HScroll1->value();
    c.xcoor = xcoor->value();
    c.ycoor = ycoor->value();
    c.angle = angle->value();
    c.hvalue = hvalue->value();
    c.indexn = Indexn->value();
    return c;
}

Block Hmiky::currentBlock() const {
    const BenchControls c = controls();
    Block b;
    b.xc = centreXOf(c);
    b.yc = centreYOf(c);
    b.radius = radiusOf(c);
    b.tilt = tiltDegreesOf(c) * 4.0 * std::atan(1.0) / 180.0;
    b.direction = module1().semicircleDirection;
    b.index = indexOf(c);
    return b;
}

void Hmiky::controlChanged(const std::function<QStringList()>& notes) {
    syncSharedValues();
    showValues();
    redraw(notes());  // the notes read the values just synced
}

void Hmiky::syncSharedValues() {
    SharedState& s = module1();
    if (s.pi == 0.0) s.pi = 4.0 * std::atan(1.0);
    const BenchControls c = controls();
    s.semicircleRadius = radiusOf(c);
    s.xc = centreXOf(c);
    s.yc = centreYOf(c);
    s.angleWithY = tiltDegreesOf(c);  // degrees on this screen
    s.rayHeight = rayHeightOf(c);
    s.indexN = indexOf(c);
}

void Hmiky::showValues() {
    const SharedState& s = module1();
    aktis->setText(QStringLiteral("Semicircle's Radius= ") + fmt(s.semicircleRadius, "0"));
    gon->setText(QStringLiteral("Angle with Y Γωνία με άξοναY=") + fmt(s.angleWithY, "0.00"));
    Indexnt->setText(QStringLiteral("Δείκτης  n = ") + fmt(s.indexN, "0.00"));
    Label4->setText(QStringLiteral("h(Ray's y(0)=") + fmt(s.rayHeight, "0.00"));
    Label3->setText(QStringLiteral("xc=") + fmt(s.xc, "0.00"));
    Label2->setText(QStringLiteral("yc=") + fmt(s.yc, "0.00"));
    for (QLabel* label : {Indexnt, Label2, Label3, Label4}) label->setAccessibleName(label->text());
    aktis->setAccessibleDescription(aktis->text());
    gon->setAccessibleDescription(gon->text());
}

// ------------------------------------------------------------------ drawing ---

void Hmiky::paint(std::function<void()> picture) {
    picture_ = std::move(picture);
    if (picture_) picture_();
}

bool Hmiky::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas && event->type() == QEvent::Resize && picture_) {
        const auto* resize = static_cast<QResizeEvent*>(event);
        if (resize->size() != resize->oldSize()) picture_();
    }
    return QMainWindow::eventFilter(watched, event);
}

void Hmiky::drawsemicircle() {
    const SharedState& s = module1();
    Block b;
    b.xc = s.xc;
    b.yc = s.yc;
    b.radius = s.semicircleRadius;
    b.tilt = degreesToRadians(s.angleWithY);
    b.direction = s.semicircleDirection;
    b.index = s.indexN;
    drawBlock(b);
}

void Hmiky::drawBlock(const Block& block) {
    // Both arc angles come back negative, so the circle is closed by its
    // diameter and filled as one piece.
    const ArcAngles arc = blockArcAngles(block);
    canvas->setFillColor(kBlockFill);
    canvas->setFillStyle(FillStyle::Solid);
    canvas->setDrawWidth(1);
    canvas->circle(block.xc, block.yc, block.radius, kBlack, arc.start, arc.end);
    canvas->setFillStyle(FillStyle::Transparent);
}

void Hmiky::drawBench(const Block& block, bool withSourceCircle) {
    canvas->cls();
    canvas->setDrawWidth(1);
    canvas->setForeColor(kBlack);
    if (withSourceCircle) canvas->circle(0, 0, kSourceCircleRadius, kBlack);
    canvas->line(-200, 0, 200, 0, kBlack);
    canvas->line(0, -200, 0, 200, kBlack);
    drawBlock(block);
}

void Hmiky::initialDrawing() { redraw({}); }

void Hmiky::keepMeasurement(const RayTrace& trace) {
    if (trace.measuredIndex && std::isfinite(*trace.measuredIndex)) module1().measuredIndex = *trace.measuredIndex;
    if (trace.exitRayAngle && std::isfinite(*trace.exitRayAngle)) module1().exitRayAngle = *trace.exitRayAngle;
}

void Hmiky::drawTrace(const RayTrace& trace, std::optional<QColor> incidentColour, std::optional<QColor> otherColour) {
    canvas->setDrawWidth(2);
    for (const RaySegment& s : trace.segments) {
        QColor colour;
        switch (s.kind) {
        case SegmentKind::Incident: colour = incidentColour.value_or(kRayColour); break;
        case SegmentKind::Emerging: colour = otherColour.value_or(kRayColour); break;
        case SegmentKind::Inside:
        case SegmentKind::Reflected: colour = otherColour.value_or(kInsideColour); break;
        }
        canvas->line(s.segment.from.x, s.segment.from.y, s.segment.to.x, s.segment.to.y, colour);
    }
    canvas->setDrawWidth(1);
}

void Hmiky::printNotes(const QStringList& notes) {
    // The light comes from the upper right and leaves to the lower left or
    // lower right: the upper left corner stays free for text.
    canvas->setForeColor(kBlack);
    double y = kTop - kMargin;
    for (const QString& note : notes) {
        canvas->setCurrentX(kLeft + kMargin);
        canvas->setCurrentY(y);
        canvas->print(note);
        y = canvas->currentY();
    }
}

void Hmiky::drawDirectionHint() {
    const QStringList hint{QStringLiteral("Choose the direction of the semicircle:"),
                           QStringLiteral("menu CHOOSE DIRECTION OF SEMICIRCLE"),
                           QStringLiteral("Διάλεξε πρώτα την κατεύθυνση του ημικυκλίου")};
    canvas->setForeColor(kHintColour);
    canvas->setFontBold(true);
    double y = -kSourceCircleRadius - 6.0;  // under the circle of the light source
    for (const QString& line : hint) {
        canvas->setCurrentX(-canvas->textWidth(line) / 2.0);
        canvas->setCurrentY(y);
        canvas->print(line);
        y = canvas->currentY();
    }
    canvas->setFontBold(false);
    canvas->setForeColor(kBlack);
}

void Hmiky::redraw(const QStringList& notes) {
    syncSharedValues();
    const Block block = currentBlock();
    std::optional<RayTrace> trace;
    if (hasDirection(block)) {
        trace = traceRay(block, module1().rayHeight, module1().incidenceAngle);
        keepMeasurement(*trace);
    }
    paint([this, block, trace, notes] {
        drawBench(block);
        if (trace) drawTrace(*trace);
        else drawDirectionHint();
        printNotes(notes);
    });
}

// ----------------------------------------------------------------- handlers ---

void Hmiky::Form_Load() {
    SharedState& s = module1();
    s.pi = 4.0 * std::atan(1.0);
    s.semicircleRadius = HScroll1->value();
    controlChanged([&s] {
        return QStringList{QStringLiteral("Semicircle Radius=") + fmt(s.semicircleRadius, "0.0"),
                           QStringLiteral("n=") + fmt(s.indexN, "0.0")};
    });
}

void Hmiky::HScroll1_Change() {
    controlChanged([] { return QStringList{QStringLiteral("angle=") + fmt(module1().angleWithY, "0.00") + "°"}; });
}

void Hmiky::xcoor_Change() {
    controlChanged([] { return QStringList{QStringLiteral("xc = ") + fmt(module1().xc, "0.00")}; });
}

void Hmiky::ycoor_Change() {
    controlChanged([] { return QStringList{QStringLiteral("yc = ") + fmt(module1().yc, "0.00")}; });
}

void Hmiky::angle_Change() {
    controlChanged([] {
        const QString value = fmt(module1().angleWithY, "0.00");
        return QStringList{QStringLiteral("ANGLE  Γωνία= ") + value,
                           QStringLiteral("Angle of Diameter with Y-axis=") + value};
    });
}

void Hmiky::hvalue_Change() {
    controlChanged([] { return QStringList{QStringLiteral("h(y(0) ray'2 =  ") + fmt(module1().rayHeight, "0.00")}; });
}

void Hmiky::Indexn_Change() {
    controlChanged([] { return QStringList{QStringLiteral(" n= ") + fmt(module1().indexN, "0.00")}; });
}

void Hmiky::Command1_Click() {
    const QString answer =
        inputBox(QStringLiteral("WHAT IS THE INCIDENCE ANGLE Πόση είναι η γωνία πρόσπτωσης ως προς το ημικύκλιο?"),
                 kIncidenceTitle);
    if (answer.trimmed().isEmpty()) return;  // Cancel
    const std::optional<double> typed = parseTypedNumber(answer.toStdString());
    if (!typed) {
        messageBox(QStringLiteral("The incidence angle must be a number of degrees, for example 30 or 42.5.\n"
                                  "Η γωνία πρόσπτωσης πρέπει να είναι αριθμός μοιρών, για παράδειγμα 30 ή 42.5."),
                   kIncidenceTitle);
        return;
    }
    if (*typed < -90.0 || *typed > 90.0) {
        messageBox(QStringLiteral("The incidence angle must lie between -90 and 90 degrees.\n"
                                  "Η γωνία πρόσπτωσης πρέπει να είναι από -90 έως 90 μοίρες."),
                   kIncidenceTitle);
        return;
    }

    SharedState& s = module1();
    s.incidenceAngle = *typed;
    syncSharedValues();
    const Block block = currentBlock();
    std::optional<RayTrace> trace;
    if (hasDirection(block)) {
        trace = traceRay(block, s.rayHeight, s.incidenceAngle);
        keepMeasurement(*trace);
        series_.recordGivenAngle(block, s.incidenceAngle, *trace);
        seriesChanged();
    }
    const QStringList lines{QStringLiteral("angle φ=") + fmt(s.incidenceAngle, "0.00"),
                            QStringLiteral("h=") + fmt(s.rayHeight, "0.00"), QStringLiteral("xc=") + fmt(s.xc, "0.00"),
                            QStringLiteral("yc=") + fmt(s.yc, "0.00")};
    paint([this, block, trace, lines] {
        drawBench(block, false);
        if (trace) drawTrace(*trace, kGivenIncident, kGivenOther);
        else drawDirectionHint();
        printNotes(lines);
    });
}

void Hmiky::Command2_Click() {
    // Each bar's own handler puts its value into the shared state; the
    // radius and the index stay as they are.
    for (QScrollBar* bar : {xcoor, ycoor, angle, hvalue}) bar->setValue(0);
    SharedState& s = module1();
    s.rayHeight = 0.0;
    s.angleWithY = 0.0;
    s.xc = 0.0;
    s.yc = 0.0;
    showValues();
    paint([this] { canvas->cls(); });
    series_.clear();  // the typed angles start afresh
    seriesChanged();
}

void Hmiky::Command3_Click() {
    hide();
    hideIfCreated<Errors>();
    hideIfCreated<ListOfData>();
    showScreen(form<Diathlasimeleti>());
}

void Hmiky::Command4_Click() {
    syncSharedValues();
    const SharedState& s = module1();
    const Block block = currentBlock();
    if (!hasDirection(block)) {
        paint([this, block] {
            drawBench(block);
            drawDirectionHint();
        });
        return;
    }
    const RaysSeries series = runIncidenceSeries(block, s.rayHeight);
    for (const SeriesRay& ray : series.rays) keepMeasurement(ray.trace);
    series_.recordSweep(block, series);
    seriesChanged();
    const QStringList lines{QStringLiteral("ANGLE φ=") + fmt(s.angleWithY, "0.00"),
                            QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη διάθλασης"),
                            series.meanIndex ? fmt(*series.meanIndex, "0.0000")
                                             : QStringLiteral("no ray measured  καμία μέτρηση"),
                            QStringLiteral("h= ") + fmt(s.rayHeight, "0.00"), QStringLiteral("xc = ") + fmt(s.xc, "0.00"),
                            QStringLiteral("yc = ") + fmt(s.yc, "0.00")};
    paint([this, block, series, lines] {
        drawBench(block);
        for (const SeriesRay& ray : series.rays) drawTrace(ray.trace);
        printNotes(lines);
    });
}

void Hmiky::cmdend_Click() { endProgram(0); }

void Hmiky::listOfData_Click() {
    ListOfData& list = form<ListOfData>();
    list.showSeries(series_);
    showScreen(list);
}

void Hmiky::seriesChanged() {
    if (Forms::instance().exists<ListOfData>()) form<ListOfData>().showSeries(series_);
}

void Hmiky::moredens_Click() {
    moredens->setChecked(true);
    module1().semicircleDirection = 1;
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::Raref_Click() {
    Raref->setChecked(true);
    module1().semicircleDirection = 2;
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::Paral_Click() {
    module1().semicircleRadius = HScroll1->value();
    syncSharedValues();
    const Block block = currentBlock();
    paint([this, block] { drawBench(block); });
}

void Hmiky::parallelBeam(bool fromTheRight) {
    syncSharedValues();
    const Block block = currentBlock();
    std::vector<RayTrace> beam;
    if (hasDirection(block)) beam = traceParallelBeam(block, fromTheRight);
    const QString note = fromTheRight ? QStringLiteral("PARALLEL RAYS FROM THE RIGHT  Παράλληλες ακτίνες από δεξιά")
                                      : QStringLiteral("PARALLEL RAYS FROM LEFT  Παράλληλες ακτίνες από αριστερά");
    paint([this, block, beam, note] {
        drawBench(block);
        if (!hasDirection(block)) {
            drawDirectionHint();
            return;
        }
        for (const RayTrace& trace : beam) drawTrace(trace);
        printNotes({note});
    });
}

void Hmiky::rightpar_Click() { parallelBeam(true); }

void Hmiky::leftpar_Click() { parallelBeam(false); }

void Hmiky::kritikal_Click() {
    const int direction = module1().semicircleDirection;
    if (direction == 1) {
        messageBox(QStringLiteral("`Change Direction of Semicircle"), QStringLiteral("Critical Angle"));
        return;
    }
    if (direction != 2) return;
    // The bar holds tenths: at least 10 means n ≥ 1.0.
    if (Indexn->value() < 10) {
        messageBox(QStringLiteral("Try with index>1"), QStringLiteral("Critical Angle"));
        return;
    }
    syncSharedValues();
    const Block block = currentBlock();
    const std::optional<CriticalAngleRun> run = runCriticalAngle(block, module1().rayHeight);
    if (!run || !std::isfinite(run->angleDegrees)) {
        messageBox(QStringLiteral("Try with index>1"), QStringLiteral("Critical Angle"));
        return;
    }
    keepMeasurement(run->trace);
    const QString text = QStringLiteral("critical=") + fmt(run->angleDegrees, "0.00");
    const RayTrace trace = run->trace;
    paint([this, block, trace, text] {
        drawBench(block);
        drawTrace(trace);
        printNotes({QStringLiteral("Critical Angle"), text});
    });
    messageBox(text, QStringLiteral("Critical Angle"));
}

void Hmiky::allrandom_Click() {
    syncSharedValues();
    const RandomSetup setup = drawRandomSetup(random_, controls());
    // Each bar runs its own handler, as moving it by hand would.
    hvalue->setValue(setup.controls.hvalue);
    xcoor->setValue(setup.controls.xcoor);
    ycoor->setValue(setup.controls.ycoor);
    angle->setValue(setup.controls.angle);

    syncSharedValues();
    const SharedState& s = module1();
    const Block block = currentBlock();
    RaysSeries series;
    if (hasDirection(block)) series = runIncidenceSeries(block, s.rayHeight);
    for (const SeriesRay& ray : series.rays) keepMeasurement(ray.trace);
    const QString mean =
        series.meanIndex ? fmt(*series.meanIndex, "0.0000") : QStringLiteral("no ray measured  καμία μέτρηση");
    const QStringList lines{QStringLiteral("ANGLE φ=") + fmt(s.angleWithY, "0.00"),
                            QStringLiteral("MEAN VALUE OF INDEX Μέσος όρος δείκτη= ") + mean,
                            QStringLiteral("h= ") + fmt(s.rayHeight, "0.00"), QStringLiteral("xc = ") + fmt(s.xc, "0.00"),
                            QStringLiteral("yc = ") + fmt(s.yc, "0.00")};
    paint([this, block, series, lines] {
        drawBench(block);
        if (!hasDirection(block)) drawDirectionHint();
        for (const SeriesRay& ray : series.rays) drawTrace(ray.trace);
        printNotes(lines);
    });
}

void Hmiky::sygr_Click() {
    syncSharedValues();
    const SharedState& s = module1();
    const Block block = currentBlock();
    if (!hasDirection(block)) {
        paint([this, block] {
            drawBench(block);
            drawDirectionHint();
        });
        return;
    }

    std::vector<RayTrace> traces;
    std::vector<Segment> expectedRays;
    QStringList table{QStringLiteral("COMPARISON WITH SNELL'S LAW"), QStringLiteral("Σύγκριση με το νόμο του Snell"),
                      rowText(QStringLiteral("i°"), QStringLiteral("r° meas"), QStringLiteral("r° Snell"),
                              QStringLiteral("n meas")),
                      rowText(QString(), QStringLiteral("μέτρηση"), QStringLiteral("Snell"), QStringLiteral("μέτρηση"))};
    for (double incidence : measurementIncidences()) {
        const RayTrace trace = traceRay(block, s.rayHeight, incidence);
        keepMeasurement(trace);
        traces.push_back(trace);

        // What Snell's law gives when the ray crosses the flat face at its
        // centre: the curved face is then met along a radius and does not
        // bend the ray. The light enters through the flat face when the
        // block looks left and leaves through it when the block looks right.
        const double sinI = std::sin(degreesToRadians(incidence));
        const double sinR = block.direction == 1 ? sinI / block.index : sinI * block.index;
        std::optional<double> expected;
        if (std::fabs(sinR) <= 1.0) expected = radiansToDegrees(std::asin(std::fabs(sinR)));

        // The expected ray, from where the ray crosses x = 0, heading the
        // way the traced ray leaves.
        const RaySegment* last = trace.segments.empty() ? nullptr : &trace.segments.back();
        if (expected && last && last->kind == SegmentKind::Emerging) {
            const double dx = last->segment.to.x - last->segment.from.x;
            const double dy = last->segment.to.y - last->segment.from.y;
            const double r = degreesToRadians(*expected);
            const Point from{0.0, s.rayHeight};
            const Point to{(dx < 0 ? -1.0 : 1.0) * std::cos(r) * 190.0,
                           s.rayHeight + (dy < 0 ? -1.0 : 1.0) * std::sin(r) * 190.0};
            expectedRays.push_back({from, to});
        }

        QString measured = QStringLiteral("-");
        if (trace.totalReflection) measured = QStringLiteral("tot.ref");
        else if (trace.exitRayAngle) measured = fmt(radiansToDegrees(*trace.exitRayAngle), "0.00");
        const QString snell = expected ? fmt(*expected, "0.00") : QStringLiteral("tot.ref");
        const QString index = trace.measuredIndex ? fmt(*trace.measuredIndex, "0.000") : QStringLiteral("-");
        table.append(rowText(fmt(incidence, "0.0"), measured, snell, index));
    }

    paint([this, block, traces, expectedRays, table] {
        drawBench(block);
        for (const RayTrace& trace : traces) drawTrace(trace);
        canvas->setDrawStyle(DrawStyle::Dash);
        canvas->setDrawWidth(2);
        for (const Segment& ray : expectedRays) canvas->line(ray.from.x, ray.from.y, ray.to.x, ray.to.y, kExpectedColour);
        canvas->setDrawWidth(1);
        canvas->setDrawStyle(DrawStyle::Solid);

        // The table, on white, in the free upper left corner.
        canvas->setFontName(QStringLiteral("Courier New"));
        canvas->setFontSize(8.0);
        double width = 0.0;
        for (const QString& line : table) width = std::max(width, canvas->textWidth(line));
        const double height = canvas->textHeight() * static_cast<double>(table.size());
        const double left = kLeft + kMargin;
        const double top = kTop - kMargin;
        canvas->filledBox(left - 2, top + 2, left + width + 2, top - height - 2, QColor(255, 255, 255));
        canvas->box(left - 2, top + 2, left + width + 2, top - height - 2, QColor(160, 160, 160));
        printNotes(table);
        canvas->setFontName(QStringLiteral("Arial"));
        canvas->setFontSize(9.0);

        canvas->setCurrentX(left);
        canvas->setCurrentY(top - height - 4);
        canvas->setForeColor(kExpectedColour);
        canvas->print(QStringLiteral("- - -  Snell's law  νόμος του Snell"));
        canvas->setForeColor(kBlack);
    });
}

void Hmiky::Optimize_Click() {
    const bool existed = Forms::instance().exists<Errors>();
    Errors& errors = form<Errors>();
    if (existed) errors.Form_Click();  // a new graph for the bench as it is now
    showScreen(errors);
}

void Hmiky::fylaxe_Click() {
    syncSharedValues();
    const std::vector<MeasurementRecord> records = runMeasurementSeries(currentBlock(), module1().rayHeight);
    const WriteOutcome outcome = writeMeasurementFile(std::filesystem::path(kMeasurementFileName), records);
    const QString title = QString::fromLatin1(kMeasurementFileName);
    if (!outcome.ok) {
        messageBox(QString::fromStdString(outcome.error), title);
        return;
    }
    messageBox(QStringLiteral(" number of records =") + QString::number(records.size()), title);
}

void Hmiky::Form_MouseDown(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    syncSharedValues();
    const Block block = currentBlock();
    markStartX = static_cast<float>(x);
    markStartY = static_cast<float>(y);
    std::optional<RayTrace> aimed;
    if (hasDirection(block)) aimed = traceAimedRay(block, Point{x, y});
    paint([this, block, aimed, x, y] {
        drawBench(block);
        canvas->circle(x, y, 5);
        if (aimed) drawTrace(*aimed);
        else drawDirectionHint();
    });
}

void Hmiky::Form_MouseUp(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    const double startX = markStartX;
    const double startY = markStartY;
    paint([this, before = picture_, startX, startY, x, y] {
        if (before) before();
        canvas->circle(startX, startY, 5);
        canvas->circle(x, y, 5, QColor(255, 0, 0));
    });
}
