// Renders every screen in a state worth showing to PNG files, offscreen and
// at a fixed size, for the teacher's guide and the AppStream record.
// Usage: screenshots FOLDER   (QT_SCALE_FACTOR=2 gives the 200 % set)
#include <QApplication>
#include <QDir>
#include <QRadioButton>
#include <QScrollBar>
#include <QWidget>

#include <cstdio>
#include <deque>

#include "analysis/errors_screen.h"
#include "analysis/graph_screens.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/fonts.h"
#include "history/data_screen_opener.h"
#include "history/inpdat_screen.h"
#include "models/epiloges_screen.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "semicircle/list_of_data_screen.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/help_window.h"

namespace {

// Nothing may wait for a person: messages are dropped, questions answered
// from a short list.
class QuietDialogs : public DialogProvider {
public:
    std::deque<QString> answers;
    void message(const QString&, const QString&) override {}
    QString input(const QString&, const QString&, const QString&) override {
        if (answers.empty()) return {};
        QString a = answers.front();
        answers.pop_front();
        return a;
    }
};

QString folder;
int failures = 0;

void shoot(QWidget& screen, const char* name, QSize size = QSize(1000, 720)) {
    screen.resize(size);
    screen.show();
    for (int k = 0; k < 3; ++k) QCoreApplication::processEvents();
    const QString file = folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
    if (!screen.grab().save(file)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(file));
        ++failures;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: screenshots FOLDER\n");
        return 2;
    }
    folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) return 1;
    auto quiet = std::make_unique<QuietDialogs>();
    QuietDialogs& answers = *quiet;
    setDialogs(std::move(quiet));
    installFontSubstitutions();
    installHelpEverywhere(app);
    Main();
    auto& menu = form<Diathlasimeleti>();
    shoot(menu, "main_menu");

    // The bench: rays for every incidence angle through the glass block.
    menu.Command1_Click();
    auto& bench = form<Hmiky>();
    bench.findChild<QAction*>("moredens")->trigger();
    bench.Command4_Click();
    shoot(bench, "bench", QSize(760, 760));
    bench.listOfData_Click();
    shoot(form<ListOfData>(), "list_of_data", QSize(620, 560));
    bench.findChild<QScrollBar*>("hvalue")->setValue(50);  // a ray off the centre, so that the error has a minimum
    bench.findChild<QAction*>("Optimize")->trigger();
    shoot(form<Errors>(), "mean_error");

    // Ptolemy's glass table with Kepler's law over it.
    openDataScreen();
    auto& data = form<Inpdat>();
    data.Ptolemy_Click();
    data.Kepler_Click();
    shoot(data, "data_screen");
    shoot(form<Incref>(), "angle_graph", QSize(760, 560));
    shoot(form<Analysis>(), "sine_graph", QSize(760, 560));

    openPtolemyInstrument();
    auto& ptolemy = form<Ptolemaios>();
    // The body in air where the law puts it: the moment the reading is
    // taken, with the sight view showing it hiding the target.
    ptolemy.findChild<QScrollBar*>(QStringLiteral("metatopisipar"))->setValue(0);
    shoot(ptolemy, "ptolemy_instrument", QSize(560, 760));
    shoot(form<Emfanisi>(), "ptolemy_sight", QSize(480, 480));
    openPtolemyDataFitting();
    shoot(form<Ptolkam>(), "ptolemy_fitting");
    openAlHaythamInstrument();
    auto& haytham = form<Xaithamos>();
    haytham.findChild<QRadioButton*>(QStringLiteral("Option2"))->click();
    haytham.findChild<QScrollBar*>(QStringLiteral("strefo"))->setValue(60);
    shoot(haytham, "alhaytham_instrument", QSize(760, 720));
    haytham.svise_Click();
    shoot(form<Alhazencheck>(), "alhaytham_rules");

    // Interpretations: the panel's waves and corpuscles, then the index
    // and velocities.
    showInterpretationScreens();
    auto& panel = form<Rixotext>();
    panel.findChild<QScrollBar*>("prosptosi")->setValue(40);
    panel.Command1_Click();
    for (int tick = 0; tick < 60; ++tick) panel.Timer1_Timer();
    shoot(form<Rixo>(), "wave_screen");
    shoot(panel, "wave_panel", QSize(620, 560));
    auto& corpuscles = form<Somata>();
    corpuscles.fermat_Click();
    corpuscles.evresielaxistoy_Click();
    shoot(corpuscles, "corpuscles");
    form<Rixo>().epiloges_Click();
    answers.answers = {QStringLiteral("1.5")};
    auto& choices = form<Epiloges>();
    choices.deiktisdia_Click();
    shoot(choices, "index_velocities", QSize(760, 400));

    menu.Command4_Click();
    shoot(form<Storiopt>(), "history");

    showHelpFor(&bench);
    shoot(form<HelpWindow>(), "help", QSize(640, 720));

    Forms::instance().destroyAll();
    return failures == 0 ? 0 : 1;
}
