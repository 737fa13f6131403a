#include "history/inpdat_screen.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>

#include <algorithm>
#include <iterator>

#include "analysis/graph_screens.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "ui/forms.h"
#include "ui/navigation.h"
#include "ui/program_exit.h"
#include "ui/window_placement.h"

namespace {

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
    setFont(roleFont(FontRole::Caption, 10.0));
    buildControls();
    buildMenus();
    Form_Load();
}

void Inpdat::Form_Load() {
    // Typed data first: the lists show only once a table is loaded.
    List1->hide();
    List2->hide();
    Label3->hide();
    historicalDataFlag = false;
    resize(std::max(640, widthForMenusOnOneRow()), 760);
    QRect frame = outerRect(*this);
    frame.moveCenter(availableArea(this).center());
    placeWindow(*this, frame);
}

int Inpdat::widthForMenusOnOneRow() const { return menuBar()->sizeHint().width() + 20; }

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
    pal.setColor(QPalette::Base,
                 Text1[index]->text().isEmpty() ? palette().color(QPalette::Base) : palette::data::typedRow);
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

void Inpdat::showPairs(const std::vector<history::TypedRow>& rows) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(kRows); ++k) {
        const bool filled = k < rows.size();
        Text1[k]->setText(filled ? QString::fromStdString(rows[k].incidence) : QString());
        Refr[k]->setText(filled ? QString::fromStdString(rows[k].refraction) : QString());
    }
}

void Inpdat::takeMeasuredPairs(const std::vector<MeasuredPair>& pairs) {
    std::vector<history::TypedRow> rows;
    for (const MeasuredPair& pair : pairs)
        rows.push_back(
            {fmt(pair.incidenceDegrees, "0.0").toStdString(), fmt(pair.refractionDegrees, "0.00").toStdString()});
    takeRows(rows, QStringLiteral("BENCH MEASUREMENTS: %1 rays  Μετρήσεις του πάγκου: %1 ακτίνες").arg(rows.size()));
}

void Inpdat::takeRows(const std::vector<history::TypedRow>& rows, const QString& caption) {
    klinoistoria_Click();
    if (rows.size() <= static_cast<std::size_t>(kRows)) {
        showPairs(rows);
        return;
    }
    // More pairs than the grid has rows: they go in the lists, where a table
    // of any length is shown and analysed, and are analysed at once as a
    // loaded table is. A row without a refraction angle cannot be analysed
    // and has no place in the lists.
    showPairs({});
    measuredSetShown_ = true;
    historicalDataFlag = true;
    std::vector<history::TypedRow> measured;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(measured), [](const history::TypedRow& row) {
        return !QString::fromStdString(row.refraction).trimmed().isEmpty();
    });
    form<Analysis>().setTitle(QStringLiteral("SIN(REFRACTION) VS SIN(INCIDENCE)"));
    form<Incref>().setTitle(QStringLiteral("REFRACTION ANGLE VS INCIDENCE ANGLE"));
    showTable(QStringLiteral("INCIDENCE Πρόσπτωσης"), QStringLiteral("REFRACTION Διάθλασης"), measured, caption);
}

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
    measuredSetShown_ = false;
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
