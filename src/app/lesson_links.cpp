#include "app/lesson_links.h"

#include <QAction>

#include <functional>
#include <iterator>
#include <utility>
#include <vector>

#include "app/main_menu.h"
#include "apparatus/apparatus_openers.h"
#include "history/data_screen_opener.h"
#include "history/inpdat_screen.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/list_of_data_screen.h"
#include "ui/forms.h"
#include "ui/lesson_links.h"

namespace {

using Command = std::function<QString()>;

// The commands in turn as one step, which stops at the first that cannot
// be given.
Command steps(std::vector<Command> commands) {
    return [commands = std::move(commands)] {
        for (const Command& c : commands)
            if (QString failure = c(); !failure.isEmpty()) return failure;
        return QString();
    };
}

Command menuItem(QWidget& (*screen)(), const char* action) {
    return [=] { return chooseMenuItem(screen(), QString::fromLatin1(action)); };
}
Command button(QWidget& (*screen)(), const char* name) {
    return [=] { return pressButton(screen(), QString::fromLatin1(name)); };
}
Command scrollBar(QWidget& (*screen)(), const char* bar, int value) {
    return [=] { return moveScrollBar(screen(), QString::fromLatin1(bar), value); };
}
// A button that asks for a number, answered as the pupil would type it.
Command typed(QWidget& (*screen)(), const char* name, const char* answer) {
    return [=] {
        TypedAnswers answers({QString::fromLatin1(answer)});
        const QString failure = pressButton(screen(), QString::fromLatin1(name));
        return failure.isEmpty() && !answers.allUsed()
                   ? QStringLiteral("The screen did not ask for %1.  Η οθόνη δεν ζήτησε το %1.").arg(answer)
                   : failure;
    };
}

template <class Screen>
QWidget& screen() {
    return form<Screen>();
}

// The class's readings in the lesson on measuring an index: the bench's
// angles for glass read to half a degree, as a protractor gives them.
constexpr std::pair<const char*, const char*> kHalfDegreeReadings[] = {{"10", "6.5"},  {"20", "13.0"}, {"30", "19.5"},
                                                                       {"40", "25.5"}, {"50", "30.5"}, {"60", "35.5"},
                                                                       {"70", "39.0"}, {"80", "41.0"}};

// The data screen's grid typed row by row (the rows under them emptied),
// then analysed.
QString typeReadingsAndAnalyse() {
    openDataScreen();
    QWidget& data = form<Inpdat>();
    QString failure = chooseMenuItem(data, QStringLiteral("klinoistoria"));  // the grid, not a table
    for (int row = 0; failure.isEmpty() && row < Inpdat::kRows; ++row) {
        const bool given = row < static_cast<int>(std::size(kHalfDegreeReadings));
        const auto [i, r] = given ? kHalfDegreeReadings[row] : std::pair{"", ""};
        failure = typeText(data, QStringLiteral("Text1_%1").arg(row), QString::fromLatin1(i));
        if (failure.isEmpty()) failure = typeText(data, QStringLiteral("Refr_%1").arg(row), QString::fromLatin1(r));
    }
    return failure.isEmpty() ? pressButton(data, QStringLiteral("Command1")) : failure;
}

// A mystery block left from an earlier step is left first, as the pupil
// would untick it: its index is hidden and its bar cannot be moved.
QString leaveMysteryBlock() {
    const auto* mystery = form<Hmiky>().findChild<QAction*>(QStringLiteral("mystery"));
    return mystery && mystery->isChecked() ? chooseMenuItem(form<Hmiky>(), QStringLiteral("mystery")) : QString();
}

// The bench from the main menu, cleared (the centre, tilt and height back
// at 0), the block turned one way and the index in tenths.
Command bench(const char* direction, int indexTenths) {
    return [=] {
        form<Diathlasimeleti>().Command1_Click();
        return steps({leaveMysteryBlock, button(screen<Hmiky>, "Command2"), menuItem(screen<Hmiky>, direction),
                      scrollBar(screen<Hmiky>, "Indexn", indexTenths)})();
    };
}

// The data screen from the main menu with a historical table and a law.
Command tableWithLaw(const char* table, const char* law) {
    return [=] {
        openDataScreen();
        return steps({menuItem(screen<Inpdat>, table), menuItem(screen<Inpdat>, law)})();
    };
}

// RAYS FOR incidence = 0° to 90° with the block turned one way, and the list.
Command sweep(const char* direction) {
    return steps({bench(direction, 15), button(screen<Hmiky>, "Command4"), button(screen<Hmiky>, "listOfData")});
}

// The three interpretation screens from the main menu, glass (n2/n1 =
// 1.50) at 40°.
Command glassAt40() {
    return steps({[] {
                      showInterpretationScreens();
                      return QString();
                  },
                  menuItem(screen<Rixo>, "okitis1"), scrollBar(screen<Rixotext>, "n1overn2", 150),
                  scrollBar(screen<Rixotext>, "prosptosi", 40)});
}

void connectBenchLinks() {
    // Snell's law on the bench: the flat face to the light, glass n = 1.5.
    setShowMe(QStringLiteral("bench-30"), steps({bench("moredens", 15), typed(screen<Hmiky>, "Command1", "30")}));
    setShowMe(QStringLiteral("bench-rays"), sweep("moredens"));
    // A hidden index: the class measures it, the program checks it.
    setShowMe(QStringLiteral("bench-mystery"), steps({bench("moredens", 15), menuItem(screen<Hmiky>, "mystery"),
                                                      typed(screen<Hmiky>, "Command1", "30")}));
    // Total reflection: the curved face to the light, so that the light
    // leaves the glass at the flat face.
    setShowMe(QStringLiteral("bench-critical"), steps({bench("Raref", 15), menuItem(screen<Hmiky>, "kritikal")}));
    setShowMe(QStringLiteral("bench-inside-30"), steps({bench("Raref", 15), typed(screen<Hmiky>, "Command1", "30")}));
    setShowMe(QStringLiteral("bench-inside-60"), steps({bench("Raref", 15), typed(screen<Hmiky>, "Command1", "60")}));
    setShowMe(QStringLiteral("bench-right-rays"), sweep("Raref"));
}

void connectDataLinks() {
    // The bench's pairs carried to the data screen and analysed.
    setShowMe(QStringLiteral("data-from-bench"),
              steps({button(screen<ListOfData>, "clear"), sweep("moredens"), button(screen<ListOfData>, "Command2"),
                     button(screen<Inpdat>, "Command1")}));
    setShowMe(QStringLiteral("data-typed"), typeReadingsAndAnalyse);
    setShowMe(QStringLiteral("data-ptolemy-kepler"), tableWithLaw("Ptolemy", "Kepler"));
    setShowMe(QStringLiteral("data-ptolemy-snell"), tableWithLaw("Ptolemy", "Snell_1"));
    setShowMe(QStringLiteral("data-ptolemy-proportional"), tableWithLaw("Ptolemy", "toentrito1"));
    setShowMe(QStringLiteral("ptolemy-fitting"), [] {
        openDataScreen();
        return chooseMenuItem(form<Inpdat>(), QStringLiteral("ptolemeosprosarmogidedo"));
    });
}

void connectInterpretationLinks() {
    setShowMe(QStringLiteral("waves-glass-40"), steps({glassAt40(), menuItem(screen<Rixo>, "aktina")}));
    // Light meeting a medium where it is twice as fast (c = 0,5), past the
    // critical angle.
    setShowMe(QStringLiteral("waves-past-critical"),
              steps({glassAt40(), menuItem(screen<Rixo>, "okitismiso"), menuItem(screen<Rixo>, "aktina")}));
    setShowMe(QStringLiteral("corpuscles-newton"), steps({glassAt40(), menuItem(screen<Somata>, "neftonas")}));
    for (const auto& [name, law] : {std::pair{"fermat-minimum", "fermalaw"}, {"fermat-descartes", "descartes"}})
        setShowMe(QString::fromLatin1(name),
                  steps({glassAt40(), menuItem(screen<Somata>, "fermat"), menuItem(screen<Somata>, law),
                         menuItem(screen<Somata>, "evresielaxistoy")}));
}

}  // namespace

void connectLessonLinks() {
    connectBenchLinks();
    connectDataLinks();
    connectInterpretationLinks();
}
