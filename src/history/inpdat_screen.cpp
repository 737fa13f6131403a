#include "history/inpdat_screen.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>
#include <QVBoxLayout>

#include <algorithm>

#include "analysis/graph_screens.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"
#include "ui/window_placement.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"

namespace {

const QColor kTypedRow(255, 205, 205);

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

QAction* addItem(QMenu* menu, const QString& name, const QString& caption) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

// Key codes of the classic key events, so that the handlers read as the
// pupil's keys: Enter, Home, the four arrows.
int classicKeyCode(int qtKey) {
    switch (qtKey) {
        case Qt::Key_Return:
        case Qt::Key_Enter: return 13;
        case Qt::Key_Home: return 36;
        case Qt::Key_Left: return 37;
        case Qt::Key_Up: return 38;
        case Qt::Key_Right: return 39;
        case Qt::Key_Down: return 40;
        default: return 0;
    }
}

enum class Column { Incidence, Refraction };

// The grid's code for a key pressed in one of its boxes, or 0 when the key
// belongs to the box itself. Left and Right cross between the two columns
// only from the box's inner edge (the end of an incidence, the start of a
// refraction) with nothing selected; anywhere else they move the caret, so
// that a typed number can be mended.
int gridKeyCode(const QLineEdit& box, int key, Column column) {
    const int code = classicKeyCode(key);
    if (code != 37 && code != 39) return code;
    const bool towardsOtherColumn = (column == Column::Incidence) == (code == 39);
    if (!towardsOtherColumn) return 0;
    const int edge = column == Column::Incidence ? static_cast<int>(box.text().size()) : 0;
    return !box.hasSelectedText() && box.cursorPosition() == edge ? code : 0;
}

}  // namespace

Inpdat::Inpdat() {
    setObjectName(QStringLiteral("inpdat"));
    setWindowTitle(QStringLiteral("DATA  Δεδομένα"));
    setFont(programFont(QStringLiteral("Arial Greek"), 10.0));
    buildControls();
    buildMenus();
    Form_Load();
}

void Inpdat::buildControls() {
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(2);

    Label1 = new QLabel(QStringLiteral("INCIDENCE Πρόσπτωσης"), central);
    Label2 = new QLabel(QStringLiteral("REFRACTION Διάθλασης"), central);
    for (QLabel* label : {Label1, Label2}) {
        label->setWordWrap(true);
        label->setFont(programFont(QStringLiteral("Arial Greek"), 10.0, true));
    }
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2->setObjectName(QStringLiteral("Label2"));
    grid->addWidget(Label1, 0, 0);
    grid->addWidget(Label2, 0, 1);

    for (int k = 0; k < kRows; ++k) {
        Text1[k] = new QLineEdit(central);
        Refr[k] = new QLineEdit(central);
        Text1[k]->setObjectName(QStringLiteral("Text1_%1").arg(k));
        Refr[k]->setObjectName(QStringLiteral("Refr_%1").arg(k));
        Text1[k]->setAccessibleName(
            QStringLiteral("Incidence angle, row %1  Γωνία πρόσπτωσης, γραμμή %1").arg(k + 1));
        Refr[k]->setAccessibleName(
            QStringLiteral("Refraction angle, row %1  Γωνία διάθλασης, γραμμή %1").arg(k + 1));
        for (QLineEdit* box : {Text1[k], Refr[k]}) {
            box->setMaxLength(40);
            box->setMinimumWidth(70);
            box->installEventFilter(this);
        }
        grid->addWidget(Text1[k], k + 1, 0);
        grid->addWidget(Refr[k], k + 1, 1);
        connect(Text1[k], &QLineEdit::textChanged, this, [this, k] { Text1_Change(k); });
    }

    List1 = new QListWidget(central);
    List2 = new QListWidget(central);
    List1->setObjectName(QStringLiteral("List1"));
    List2->setObjectName(QStringLiteral("List2"));
    List1->setAccessibleName(QStringLiteral("Incidence angles of the table  Γωνίες πρόσπτωσης του πίνακα"));
    List2->setAccessibleName(QStringLiteral("Refraction angles of the table  Γωνίες διάθλασης του πίνακα"));
    grid->addWidget(List1, 0, 2, kRows + 1, 1);
    grid->addWidget(List2, 0, 3, kRows + 1, 1);

    Label3 = new QLabel(central);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label3->setWordWrap(true);
    Label3->setFont(programFont(QStringLiteral("Arial Greek"), 11.0, true));

    Command1 = new CaptionButton(QStringLiteral("Data Analysis Ανάλυση δεδομένων"), central);
    Command2 = new CaptionButton(QStringLiteral("INITIAL Αρχική"), central);
    Command3 = new CaptionButton(QStringLiteral("END Τέλος"), central);
    Command4 = new CaptionButton(QStringLiteral("INTERPRETATION  OF lAW Ερμηνεία του νόμου"), central);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command2->setObjectName(QStringLiteral("Command2"));
    Command3->setObjectName(QStringLiteral("Command3"));
    Command4->setObjectName(QStringLiteral("Command4"));
    svinograf = new QCheckBox(QStringLiteral("ERASE Σβήσε γρα φικές"), central);
    svinograf->setObjectName(QStringLiteral("svinograf"));
    svinograf->setAccessibleName(svinograf->text());
    svinograf->setToolTip(QStringLiteral("A model draws the data again first  Ένα μοντέλο σχεδιάζει πρώτα ξανά τα δεδομένα"));

    auto* buttons = new QGridLayout;
    buttons->addWidget(Command1, 0, 0);
    buttons->addWidget(Command4, 0, 1);
    buttons->addWidget(Command2, 1, 0);
    buttons->addWidget(Command3, 1, 1);
    buttons->addWidget(svinograf, 2, 0, 1, 2);

    fileView = new Canvas(central);
    fileView->setObjectName(QStringLiteral("fileView"));
    fileView->setAccessibleName(QStringLiteral("Stored set-up of the bench  Αποθηκευμένη διάταξη του πάγκου"));
    fileView->setMinimumHeight(90);
    fileView->setMaximumHeight(150);  // a few lines of the stored set-up
    fileView->setFontName(QStringLiteral("Arial Greek"));

    auto* layout = new QVBoxLayout(central);
    layout->addLayout(grid);
    layout->addWidget(Label3);
    layout->addLayout(buttons);
    layout->addWidget(fileView);
    layout->addStretch(1);

    connect(Command1, &QPushButton::clicked, this, &Inpdat::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Inpdat::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &Inpdat::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &Inpdat::Command4_Click);

    // Keyboard: the grid row by row, then the buttons and the check box.
    QWidget* previous = nullptr;
    for (int k = 0; k < kRows; ++k) {
        for (QWidget* w : {static_cast<QWidget*>(Text1[k]), static_cast<QWidget*>(Refr[k])}) {
            if (previous) setTabOrder(previous, w);
            previous = w;
        }
    }
    for (QWidget* w : std::initializer_list<QWidget*>{Command1, Command4, Command2, Command3, svinograf, List1, List2}) {
        setTabOrder(previous, w);
        previous = w;
    }
}

void Inpdat::buildMenus() {
    Models = menuBar()->addMenu(QStringLiteral("MODELS"));
    Models->setObjectName(QStringLiteral("Models"));
    Kepler = addItem(Models, QStringLiteral("Kepler"), QStringLiteral("Kepler'S"));
    Snell = Models->addMenu(QStringLiteral("Snell law"));
    Snell->setObjectName(QStringLiteral("Snell"));
    Snell_2 = addItem(Snell, QStringLiteral("Snell_2"), QStringLiteral("Snell: GIVE n"));
    Snell_1 = addItem(Snell, QStringLiteral("Snell_1"), QStringLiteral("Snell: n according to data"));
    empirikos = addItem(Models, QStringLiteral("empirikos"), QStringLiteral("EMPIRICAL"));
    pyknoareo = addItem(Models, QStringLiteral("pyknoareo"), QStringLiteral("REFRACTION ANGLE=3/2 INCIDENCE ANGLE"));
    toentrito1 = addItem(Models, QStringLiteral("toentrito1"), QStringLiteral("REFRACTION ANGLE=2/3 INCIDENCE ANGLE"));
    theoretikes = addItem(Models, QStringLiteral("theoretikes"), QStringLiteral("EXPECTED"));
    connect(Kepler, &QAction::triggered, this, &Inpdat::Kepler_Click);
    connect(Snell_2, &QAction::triggered, this, &Inpdat::Snell_2_Click);
    connect(Snell_1, &QAction::triggered, this, &Inpdat::Snell_1_Click);
    connect(empirikos, &QAction::triggered, this, &Inpdat::empirikos_Click);
    connect(pyknoareo, &QAction::triggered, this, &Inpdat::pyknoareo_Click);
    connect(toentrito1, &QAction::triggered, this, &Inpdat::toentrito1_Click);
    connect(theoretikes, &QAction::triggered, this, &Inpdat::theoretikes_Click);
    Models->addSeparator();
    residualsItem = addItem(Models, QStringLiteral("residuals"),
                            QStringLiteral("RESIDUALS ON THE SINE GRAPH  Υπόλοιπα στο γράφημα ημιτόνων"));
    residualsItem->setCheckable(true);
    connect(residualsItem, &QAction::toggled, this, &Inpdat::residuals_Toggled);

    using history::TableId;
    Histoire = menuBar()->addMenu(QStringLiteral("HISTORICAL DATA"));
    Histoire->setObjectName(QStringLiteral("Histoire"));
    auto tableItem = [this](TableId id, void (Inpdat::*handler)()) {
        const history::HistoricalTable& table = history::historicalTable(id);
        QAction* action = addItem(Histoire, fromUtf8(table.itemName), fromUtf8(table.menuCaption));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    newt2 = tableItem(TableId::newt2, &Inpdat::newt2_Click);
    Newt = tableItem(TableId::Newt, &Inpdat::Newt_Click);
    Alhazen2 = tableItem(TableId::Alhazen2, &Inpdat::Alhazen2_Click);
    Alhazen = tableItem(TableId::Alhazen, &Inpdat::Alhazen_Click);
    ptolemy2 = tableItem(TableId::ptolemy2, &Inpdat::ptolemy2_Click);
    ptolemeosprosarmogidedo =
        addItem(Histoire, QStringLiteral("ptolemeosprosarmogidedo"), QStringLiteral("PTOLEMY DATA MANIPULATION"));
    connect(ptolemeosprosarmogidedo, &QAction::triggered, this, &Inpdat::ptolemeosprosarmogidedo_Click);
    Ptolemy = tableItem(TableId::Ptolemy, &Inpdat::Ptolemy_Click);
    Vitello_water = tableItem(TableId::Vitello_water, &Inpdat::Vitello_water_Click);
    Vitello_Glass = tableItem(TableId::Vitello_Glass, &Inpdat::Vitello_Glass_Click);
    klinoistoria = addItem(Histoire, QStringLiteral("klinoistoria"), QStringLiteral("BACK FROM HISTORICAL"));
    connect(klinoistoria, &QAction::triggered, this, &Inpdat::klinoistoria_Click);

    History_notes = menuBar()->addMenu(QStringLiteral("HISTORY NOTES"));
    History_notes->setObjectName(QStringLiteral("History_notes"));
    const auto& notes = history::historyNotes();
    for (std::size_t k = 0; k < notes.size(); ++k) {
        QAction* action = addItem(History_notes, fromUtf8(notes[k].itemName), fromUtf8(notes[k].menuCaption));
        connect(action, &QAction::triggered, this, [this, k] { showNote(static_cast<int>(k)); });
        noteItems.push_back(action);
    }

    measurements = menuBar()->addMenu(QStringLiteral("FILE  Αρχείο"));
    measurements->setObjectName(QStringLiteral("measurements"));
    empiricalFitItem = addItem(measurements, QStringLiteral("empiricalFit"),
                               QStringLiteral("EMPIRICAL FIT OF MY DATA, LAST STORED SET-UP  "
                                              "Εμπειρική προσαρμογή, τελευταία αποθηκευμένη διάταξη"));
    recallItem = addItem(measurements, QStringLiteral("recall"),
                         QStringLiteral("RECALL A STORED SET-UP  Ανάκληση αποθηκευμένης διάταξης"));
    measurements->addSeparator();
    openTableItem = addItem(measurements, QStringLiteral("openTable"), QStringLiteral("Open table…  Άνοιγμα πίνακα…"));
    saveTableItem = addItem(measurements, QStringLiteral("saveTable"), QStringLiteral("Save table…  Αποθήκευση πίνακα…"));
    openTableItem->setShortcut(QKeySequence::Open);
    saveTableItem->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    connect(openTableItem, &QAction::triggered, this, &Inpdat::openTable);
    connect(saveTableItem, &QAction::triggered, this, &Inpdat::saveTable);
    labReportItem = addItem(measurements, QStringLiteral("labReport"),
                            QStringLiteral("Lab report (PDF)…  Αναφορά εργαστηρίου (PDF)…"));
    connect(labReportItem, &QAction::triggered, this, &Inpdat::labReport);
    connect(empiricalFitItem, &QAction::triggered, this, &Inpdat::empiricalFit);
    connect(recallItem, &QAction::triggered, this, &Inpdat::recallSetup);

    instruments = menuBar()->addMenu(QStringLiteral("INSTRUMENTS  Όργανα"));
    instruments->setObjectName(QStringLiteral("instruments"));
    ptolemaiosItem = addItem(instruments, QStringLiteral("ptolemaios"),
                             QStringLiteral("PTOLEMY'S INSTRUMENT  Η συσκευή του Πτολεμαίου"));
    xaithamosItem = addItem(instruments, QStringLiteral("xaithamos"),
                            QStringLiteral("AL HAYTHAM'S INSTRUMENT AND RULES  Η συσκευή και οι κανόνες του Αλ Χαϊθάμ"));
    connect(ptolemaiosItem, &QAction::triggered, this, [] { openPtolemyInstrument(); });
    connect(xaithamosItem, &QAction::triggered, this, [] { openAlHaythamInstrument(); });
}

void Inpdat::Form_Load() {
    // Typed data first: the lists show only once a table is loaded.
    List1->hide();
    List2->hide();
    Label3->hide();
    historicalDataFlag = false;
    // Wide enough for every menu of the menu bar.
    setMinimumWidth(menuBar()->sizeHint().width() + 20);
    resize(std::max(640, minimumWidth()), 760);
    QRect frame = outerRect(*this);
    frame.moveCenter(availableArea(this).center());
    placeWindow(*this, frame);
}

bool Inpdat::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        for (int k = 0; k < kRows; ++k) {
            if (watched == Text1[k]) {
                const int code = gridKeyCode(*Text1[k], key->key(), Column::Incidence);
                if (code == 0) return QMainWindow::eventFilter(watched, event);
                Text1_KeyDown(k, code);
                return true;
            }
            if (watched == Refr[k]) {
                // Any key in the refraction column, navigation or not.
                const int code = gridKeyCode(*Refr[k], key->key(), Column::Refraction);
                Refr_KeyDown(k, code);
                return code != 0;
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void Inpdat::Text1_Change(int index) {
    if (index < 0 || index >= kRows) return;
    Label3->hide();
    List1->hide();
    List2->hide();
    // Typed rows are marked; a box emptied again loses its mark.
    QPalette pal = Text1[index]->palette();
    pal.setColor(QPalette::Base, Text1[index]->text().isEmpty() ? palette().color(QPalette::Base) : kTypedRow);
    Text1[index]->setPalette(pal);
}

void Inpdat::Text1_KeyDown(int index, int keyCode) {
    if (index < 0 || index >= kRows) return;
    switch (keyCode) {
        case 13:
        case 40: Text1[(index + 1) % kRows]->setFocus(); break;
        case 38: Text1[(index + kRows - 1) % kRows]->setFocus(); break;
        case 39: Refr[index]->setFocus(); break;
        case 36:
            Text1[0]->setFocus();
            uncheckAirDataItems();
            drawingColour_ = Qt::black;
            break;
        default: break;
    }
}

void Inpdat::Refr_KeyDown(int index, int keyCode) {
    if (index < 0 || index >= kRows) return;
    uncheckAirDataItems();
    List1->hide();
    List2->hide();
    Label3->hide();
    switch (keyCode) {
        case 13:
        case 40: Refr[(index + 1) % kRows]->setFocus(); break;
        case 38: Refr[(index + kRows - 1) % kRows]->setFocus(); break;
        case 37: Text1[index]->setFocus(); break;
        case 36: Refr[0]->setFocus(); break;
        default: break;
    }
}

void Inpdat::uncheckAirDataItems() {
    for (QAction* item : {Newt, newt2, Alhazen, Alhazen2, Ptolemy, ptolemy2}) item->setChecked(false);
}

bool Inpdat::witeloChecked() const { return Vitello_water->isChecked() || Vitello_Glass->isChecked(); }

std::vector<history::TypedRow> Inpdat::typedRows() const {
    std::vector<history::TypedRow> rows;
    for (int k = 0; k < kRows; ++k) rows.push_back({Text1[k]->text().toStdString(), Refr[k]->text().toStdString()});
    return rows;
}

void Inpdat::klinoistoria_Click() {
    List1->hide();
    List2->hide();
    Label3->hide();
    historicalDataFlag = false;
    // Back to the pupil's own data: no table is marked any more.
    for (QAction* item : {Newt, newt2, Alhazen, Alhazen2, Ptolemy, ptolemy2, Vitello_water, Vitello_Glass})
        item->setChecked(false);
}

void Inpdat::Command2_Click() {
    // Back to the start: whatever led here or was opened from here (the
    // bench whose series was transferred, its lists, the graphs, the
    // instruments) goes too, and no animation runs on behind hidden screens.
    Rixo::stopInterpretationTimers();
    QWidget& menu = windowOf(Place::MainMenu);
    Forms::instance().hideAllBut(menu);
    showScreen(menu);
}

void Inpdat::Command3_Click() { endProgram(0); }

void Inpdat::Command4_Click() {
    hide();
    showInterpretationScreensFromData();
}

void Inpdat::ptolemeosprosarmogidedo_Click() { openPtolemyDataFitting(); }

void Inpdat::hideAnalysisText() { form<Analysis>().hideText(); }

void Inpdat::showGraphScreens() {
    placeGraphScreensBeside(*this);
    // Shown without taking the keyboard from the grid.
    for (QWidget* screen : {static_cast<QWidget*>(&form<Incref>()), static_cast<QWidget*>(&form<Analysis>())}) {
        showOnScreen(*screen, false);
        if (screen->layout()) screen->layout()->activate();
    }
}
