// The data screen's controls and menus, made once when the screen is.
#include <QGridLayout>
#include <QMenuBar>
#include <QVBoxLayout>

#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"

namespace {

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

QAction* addItem(QMenu* menu, const QString& name, const QString& caption) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

CaptionButton* button(const QString& name, const QString& caption, QWidget* parent) {
    auto* made = new CaptionButton(caption, parent);
    made->setObjectName(name);
    // On a narrow screen the data screen gives way to the graphs beside it:
    // its captions wrap rather than hold it wide.
    made->setSizePolicy(QSizePolicy::Preferred, made->sizePolicy().verticalPolicy());
    return made;
}

}  // namespace

void Inpdat::buildControls() {
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(createGrid(central));
    createLabel3(central);
    layout->addWidget(Label3);
    layout->addLayout(createButtons(central));
    createFileView(central);
    layout->addWidget(fileView);
    layout->addStretch(1);
    orderKeyboard();
}

QGridLayout* Inpdat::createGrid(QWidget* central) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(2);
    Label1 = new QLabel(QStringLiteral("INCIDENCE Πρόσπτωσης"), central);
    Label2 = new QLabel(QStringLiteral("REFRACTION Διάθλασης"), central);
    for (QLabel* label : {Label1, Label2}) {
        label->setWordWrap(true);
        label->setFont(roleFont(FontRole::Caption, 10.0, true));
        keepWrappedLines(*label, [label](int width) { return label->heightForWidth(width); });
    }
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2->setObjectName(QStringLiteral("Label2"));
    grid->addWidget(Label1, 0, 0);
    grid->addWidget(Label2, 0, 1);
    for (int k = 0; k < kRows; ++k) createRow(grid, central, k);

    List1 = new QListWidget(central);
    List2 = new QListWidget(central);
    List1->setObjectName(QStringLiteral("List1"));
    List2->setObjectName(QStringLiteral("List2"));
    List1->setAccessibleName(QStringLiteral("Incidence angles of the table  Γωνίες πρόσπτωσης του πίνακα"));
    List2->setAccessibleName(QStringLiteral("Refraction angles of the table  Γωνίες διάθλασης του πίνακα"));
    grid->addWidget(List1, 0, 2, kRows + 1, 1);
    grid->addWidget(List2, 0, 3, kRows + 1, 1);
    return grid;
}

void Inpdat::createRow(QGridLayout* grid, QWidget* central, int k) {
    Text1[k] = new QLineEdit(central);
    Refr[k] = new QLineEdit(central);
    Text1[k]->setObjectName(QStringLiteral("Text1_%1").arg(k));
    Refr[k]->setObjectName(QStringLiteral("Refr_%1").arg(k));
    Text1[k]->setAccessibleName(QStringLiteral("Incidence angle, row %1  Γωνία πρόσπτωσης, γραμμή %1").arg(k + 1));
    Refr[k]->setAccessibleName(QStringLiteral("Refraction angle, row %1  Γωνία διάθλασης, γραμμή %1").arg(k + 1));
    for (QLineEdit* box : {Text1[k], Refr[k]}) {
        box->setMaxLength(40);
        box->setMinimumWidth(70);
        // At a large presentation size on a small screen the fourteen rows
        // give up a little of their padding so that the headings keep their
        // lines; where there is room they keep their natural height.
        box->setSizePolicy(box->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
        box->setMinimumHeight(16);
        box->installEventFilter(this);
    }
    grid->addWidget(Text1[k], k + 1, 0);
    grid->addWidget(Refr[k], k + 1, 1);
    connect(Text1[k], &QLineEdit::textChanged, this, [this, k] { Text1_Change(k); });
}

void Inpdat::createLabel3(QWidget* central) {
    Label3 = new QLabel(central);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label3->setWordWrap(true);
    Label3->setFont(roleFont(FontRole::Caption, 11.0, true));
}

QGridLayout* Inpdat::createButtons(QWidget* central) {
    Command1 = button(QStringLiteral("Command1"), QStringLiteral("Data Analysis Ανάλυση δεδομένων"), central);
    Command2 = button(QStringLiteral("Command2"), QStringLiteral("INITIAL Αρχική"), central);
    Command3 = button(QStringLiteral("Command3"), QStringLiteral("END Τέλος"), central);
    Command4 = button(QStringLiteral("Command4"), QStringLiteral("INTERPRETATION  OF lAW Ερμηνεία του νόμου"), central);
    svinograf = new QCheckBox(QStringLiteral("ERASE Σβήσε γρα φικές"), central);
    svinograf->setObjectName(QStringLiteral("svinograf"));
    svinograf->setAccessibleName(svinograf->text());
    svinograf->setToolTip(
        QStringLiteral("A model draws the data again first  Ένα μοντέλο σχεδιάζει πρώτα ξανά τα δεδομένα"));

    auto* buttons = new QGridLayout;
    buttons->addWidget(Command1, 0, 0);
    buttons->addWidget(Command4, 0, 1);
    buttons->addWidget(Command2, 1, 0);
    buttons->addWidget(Command3, 1, 1);
    buttons->addWidget(svinograf, 2, 0, 1, 2);
    connect(Command1, &QPushButton::clicked, this, &Inpdat::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Inpdat::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &Inpdat::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &Inpdat::Command4_Click);
    return buttons;
}

void Inpdat::createFileView(QWidget* central) {
    fileView = new Canvas(central);
    fileView->setObjectName(QStringLiteral("fileView"));
    fileView->setAccessibleName(QStringLiteral("Stored set-up of the bench  Αποθηκευμένη διάταξη του πάγκου"));
    fileView->setMinimumHeight(48);   // gives way first when a large presentation size needs the room
    fileView->setMaximumHeight(150);  // a few lines of the stored set-up
    fileView->setFontRole(FontRole::Caption);
}

void Inpdat::orderKeyboard() {
    // The grid row by row, then the buttons and the check box.
    QWidget* previous = nullptr;
    for (int k = 0; k < kRows; ++k) {
        for (QWidget* w : {static_cast<QWidget*>(Text1[k]), static_cast<QWidget*>(Refr[k])}) {
            if (previous) setTabOrder(previous, w);
            previous = w;
        }
    }
    for (QWidget* w :
         std::initializer_list<QWidget*>{Command1, Command4, Command2, Command3, svinograf, List1, List2}) {
        setTabOrder(previous, w);
        previous = w;
    }
}

void Inpdat::buildMenus() {
    createModelsMenu();
    createHistoireMenu();
    createNotesMenu();
    createFileMenu();
    createInstrumentsMenu();
}

void Inpdat::createModelsMenu() {
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
}

void Inpdat::createHistoireMenu() {
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
}

void Inpdat::createNotesMenu() {
    History_notes = menuBar()->addMenu(QStringLiteral("HISTORY NOTES"));
    History_notes->setObjectName(QStringLiteral("History_notes"));
    const auto& notes = history::historyNotes();
    for (std::size_t k = 0; k < notes.size(); ++k) {
        QAction* action = addItem(History_notes, fromUtf8(notes[k].itemName), fromUtf8(notes[k].menuCaption));
        connect(action, &QAction::triggered, this, [this, k] { showNote(static_cast<int>(k)); });
    }
}

void Inpdat::createFileMenu() {
    QMenu* measurements = menuBar()->addMenu(QStringLiteral("FILE  Αρχείο"));
    measurements->setObjectName(QStringLiteral("measurements"));
    QAction* empiricalFitItem = addItem(measurements, QStringLiteral("empiricalFit"),
                                        QStringLiteral("EMPIRICAL FIT OF MY DATA, LAST STORED SET-UP  "
                                                       "Εμπειρική προσαρμογή, τελευταία αποθηκευμένη διάταξη"));
    QAction* recallItem = addItem(measurements, QStringLiteral("recall"),
                                  QStringLiteral("RECALL A STORED SET-UP  Ανάκληση αποθηκευμένης διάταξης"));
    measurements->addSeparator();
    QAction* openTableItem =
        addItem(measurements, QStringLiteral("openTable"), QStringLiteral("Open table…  Άνοιγμα πίνακα…"));
    QAction* saveTableItem =
        addItem(measurements, QStringLiteral("saveTable"), QStringLiteral("Save table…  Αποθήκευση πίνακα…"));
    openTableItem->setShortcut(QKeySequence::Open);
    saveTableItem->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    connect(openTableItem, &QAction::triggered, this, &Inpdat::openTable);
    connect(saveTableItem, &QAction::triggered, this, &Inpdat::saveTable);
    QAction* labReportItem = addItem(measurements, QStringLiteral("labReport"),
                                     QStringLiteral("Lab report (PDF)…  Αναφορά εργαστηρίου (PDF)…"));
    connect(labReportItem, &QAction::triggered, this, &Inpdat::labReport);
    connect(empiricalFitItem, &QAction::triggered, this, &Inpdat::empiricalFit);
    connect(recallItem, &QAction::triggered, this, &Inpdat::recallSetup);
}

void Inpdat::createInstrumentsMenu() {
    QMenu* instruments = menuBar()->addMenu(QStringLiteral("INSTRUMENTS  Όργανα"));
    instruments->setObjectName(QStringLiteral("instruments"));
    QAction* ptolemaiosItem = addItem(instruments, QStringLiteral("ptolemaios"),
                                      QStringLiteral("PTOLEMY'S INSTRUMENT  Η συσκευή του Πτολεμαίου"));
    QAction* xaithamosItem =
        addItem(instruments, QStringLiteral("xaithamos"),
                QStringLiteral("AL HAYTHAM'S INSTRUMENT AND RULES  Η συσκευή και οι κανόνες του Αλ Χαϊθάμ"));
    connect(ptolemaiosItem, &QAction::triggered, this, [] { openPtolemyInstrument(); });
    connect(xaithamosItem, &QAction::triggered, this, [] { openAlHaythamInstrument(); });
}
