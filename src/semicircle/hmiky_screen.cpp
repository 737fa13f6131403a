#include "semicircle/hmiky_screen.h"

// Building the bench: its controls, their layout, the menus and the wiring.
// The drawing, the handlers of the controls and the experiments of the
// menus live in hmiky_drawing.cpp, hmiky_handlers.cpp and
// hmiky_experiments.cpp.

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <utility>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "ui/presentation_size.h"
#include "ui/scroll_bars.h"

namespace {

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

}  // namespace

Hmiky::Hmiky() {
    setObjectName(QStringLiteral("hmiky"));
    setWindowTitle(QStringLiteral("SIMULATION EΞOMOIΩΣH TOY ΠEIΠAMATOΣ"));
    setFont(roleFont(FontRole::Caption, 9.0));

    createCanvas();
    auto* host = new SquareHost(canvas);
    createButtons();
    createScrollBars();
    createDisplays();
    QWidget* controlsPanel = createControlsPanel();
    QWidget* buttonPanel = createButtonPanel();

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
    QWidget* order[] = {HScroll1, aktis,    xcoor,    ycoor,      angle,    gon,      hvalue,
                        Indexn,   Command1, Command4, listOfData, Command2, Command3, cmdend};
    for (std::size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);

    createMenus();
    connectHandlers();
    canvas->installEventFilter(this);
    // The angles beside the rays are placed for the size they are shown in.
    watchPresentationSize(this, [this](int) { drawPicture(); });
    resize(1000, 900);
    Form_Load();
}

void Hmiky::createCanvas() {
    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("bench"));
    canvas->setAccessibleName(QStringLiteral("Semicircle bench  Πάγκος του ημικυκλίου"));
    canvas->scale(-200, 200, 200, -200);
    canvas->setFontRole(FontRole::Caption);
    canvas->setFontSize(9.0);
}

void Hmiky::createButtons() {
    const QFont buttonFont = roleFont(FontRole::Caption, 9.0, true);
    auto button = [&](const QString& caption, const char* name) {
        auto* b = new CaptionButton(caption);
        b->setObjectName(QString::fromLatin1(name));
        b->setFont(buttonFont);
        b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        return b;
    };
    Command1 = button(QStringLiteral("GIVE INCIDENCE ANGLE      Δώσε γωνία Πρόσπτωσης"), "Command1");
    Command4 =
        button(QStringLiteral("RAYS FOR incidence = 0° to 90°      Ακτίνες για Γωνίες πρόσπτωσης  0-90°"), "Command4");
    Command4->setFont(roleFont(FontRole::Table, 9.0, true));
    Command2 = button(QStringLiteral("erase ΚΑΘΑΡΙΣΕ"), "Command2");
    Command3 = button(QStringLiteral("BACK ΠΙΣΩ"), "Command3");
    cmdend = button(QStringLiteral("END Τέλος"), "cmdend");
    listOfData = button(QStringLiteral("LIST OF DATA  Λίστα δεδομένων"), "listOfData");
}

void Hmiky::createScrollBars() {
    // The bars start where the shared values stand.
    const BenchControls c = state().controls();
    // Each: orientation, minimum, maximum, value, small change, large change, name, what it stands for.
    HScroll1 = createScrollBar({Qt::Horizontal, 10, 120, c.radius, 1, 10, "HScroll1",
                                QStringLiteral("Radius of the semicircle  Ακτίνα του ημικυκλίου")});
    xcoor = createScrollBar({Qt::Horizontal, -125, 125, c.xcoor, 1, 25, "xcoor",
                             QStringLiteral("x of the centre of the semicircle  x του κέντρου του ημικυκλίου")});
    ycoor = createScrollBar({Qt::Horizontal, -125, 125, c.ycoor, 1, 25, "ycoor",
                             QStringLiteral("y of the centre of the semicircle  y του κέντρου του ημικυκλίου")});
    angle =
        createScrollBar({Qt::Horizontal, -900, 900, c.angle, 10, 100, "angle",
                         QStringLiteral("Angle of the diameter with the Y axis  Γωνία της διαμέτρου με τον άξονα Y")});
    hvalue = createScrollBar({Qt::Horizontal, -250, 250, c.hvalue, 5, 50, "hvalue",
                              QStringLiteral("Height of the ray, y(0)  Ύψος της ακτίνας, y(0)")});
    Indexn = createScrollBar(
        {Qt::Horizontal, 5, 30, c.indexn, 1, 5, "Indexn", QStringLiteral("Refractive index n  Δείκτης διάθλασης n")});
    // A screen reader hears each bar's value as the labels show it.
    const std::pair<QScrollBar*, std::function<QString()>> shown[] = {
        {HScroll1, [this] { return QStringLiteral("radius = ") + fmt(radiusOf(controls()), "0"); }},
        {xcoor, [this] { return QStringLiteral("xc = ") + fmt(centreXOf(controls()), "0.00"); }},
        {ycoor, [this] { return QStringLiteral("yc = ") + fmt(centreYOf(controls()), "0.00"); }},
        {angle, [this] { return QStringLiteral("angle with Y = ") + fmt(tiltDegreesOf(controls()), "0.00") + "°"; }},
        {hvalue, [this] { return QStringLiteral("h = ") + fmt(rayHeightOf(controls()), "0.00"); }},
        {Indexn, [this] { return QStringLiteral("n = ") + indexText(indexOf(controls()), "0.00"); }}};
    for (const auto& [bar, text] : shown) describeValue(*bar, [text](int) { return text(); });
}

void Hmiky::createDisplays() {
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
}

QWidget* Hmiky::createControlsPanel() {
    auto* panel = new QWidget;
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(6);
    const QFont captionFont = roleFont(FontRole::Caption, 9.0, true);
    std::vector<QLabel*> titles;
    auto addControl = [&](int row, int column, const QString& caption, QScrollBar* bar, QWidget* shows) {
        auto* box = new QVBoxLayout;
        box->setSpacing(2);
        auto* title = new QLabel(caption);
        title->setFont(captionFont);
        titles.push_back(title);
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
    wrapWhenShownLarger(this, titles);
    for (int c = 0; c < 3; ++c) grid->setColumnStretch(c, 1);
    return panel;
}

QWidget* Hmiky::createButtonPanel() {
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
    return buttonPanel;
}

void Hmiky::createMenus() {
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
    createLabMenu();
    const std::pair<QAction*, const char*> names[] = {
        {allrandom, "allrandom"}, {Paral, "Paral"},       {rightpar, "rightpar"}, {leftpar, "leftpar"},
        {Raref, "Raref"},         {moredens, "moredens"}, {kritikal, "kritikal"}, {sygr, "sygr"},
        {Optimize, "Optimize"},   {fylaxe, "fylaxe"}};
    for (const auto& [action, name] : names) action->setObjectName(QString::fromLatin1(name));
}

void Hmiky::connectHandlers() {
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
    // Whoever changes the shared values, the bars and the displays show them.
    connect(&state(), &BenchState::changed, this, &Hmiky::followState);
}

void Hmiky::openExperiment() {
    BenchState& s = state();
    s.setIndexN(1.5);
    s.setAngleWithY(0.0);
    canvas->scale(-200, 200, 200, -200);
    canvas->cls();
    initialDrawing();
    showValues();
}
