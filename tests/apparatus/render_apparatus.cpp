// Not a test: saves pictures of the apparatus screens to a folder, to look
// at them as a pupil would. Usage: render_apparatus <folder>
#include <QApplication>
#include <QDir>
#include <QWidget>

#include <cmath>

#include "analysis/graph_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "ui/forms.h"
#include "core/shared_state.h"
#include "canvas/fonts.h"
#include "test_support.h"

namespace {
QString folder;
void save(QWidget& w, const QString& name) {
    QCoreApplication::processEvents();
    w.grab().save(folder + "/" + name + ".png");
}
}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    installFontSubstitutions();
    folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("/tmp");
    QDir().mkpath(folder);
    module1().pi = 4.0 * std::atan(1.0);
    ScreenTestScope scope;

    openPtolemyInstrument();
    Ptolemaios& p = form<Ptolemaios>();
    p.resize(560, 760);
    save(p, "ptolemaios_start");
    save(form<Emfanisi>(), "emfanisi_start");
    p.metatopisipar->setValue(0);  // where the law puts the body
    save(p, "ptolemaios_aligned");
    save(form<Emfanisi>(), "emfanisi_aligned");
    p.dgonia->setValue(20);
    p.goniaprosptosis->setValue(88);
    save(p, "ptolemaios_88");
    save(form<Emfanisi>(), "emfanisi_88");
    p.resize(900, 1000);
    save(p, "ptolemaios_resized");
    p.Command1_Click();
    save(form<Incref>(), "incref_ptolemy");
    save(form<Analysis>(), "analysis_ptolemy");

    openAlHaythamInstrument();
    Xaithamos& x = form<Xaithamos>();
    save(x, "xaithamos_start");
    save(form<Incref>(), "incref_rules_start");
    x.Option2->click();
    x.timiepi->setValue(6);
    x.strefo->setValue(60);
    save(x, "xaithamos_ruler");
    x.svise_Click();
    Alhazencheck& c = form<Alhazencheck>();
    save(c, "check_133");
    c.timidikti->setValue(200);
    save(c, "check_200");
    save(form<Incref>(), "incref_rules_200");
    c.timidikti->setValue(50);
    save(c, "check_050");
    save(form<Incref>(), "incref_rules_050");
    save(form<Analysis>(), "analysis_alhaytham");

    openPtolemyDataFitting();
    Ptolkam& k = form<Ptolkam>();
    k.resize(1000, 760);
    save(k, "ptolkam_water");
    scope.dialogs().answers = {"2"};
    k.Enallagi_Click();
    save(k, "ptolkam_water_k2");
    k.Option1_Click();
    save(k, "ptolkam_glass");
    return 0;
}
