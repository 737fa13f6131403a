#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QRadioButton>
#include <QtTest>

#include "analysis/errors_screen.h"
#include "analysis/graph_screens.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "history/data_state.h"
#include "history/inpdat_screen.h"
#include "history/refraction_laws.h"
#include "models/interpretation_openers.h"
#include "models/rixo_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/window_access.h"

namespace {

QString said(const QWidget* w, QAccessible::Text t = QAccessible::Description) {
    return QAccessible::queryAccessibleInterface(const_cast<QWidget*>(w))->text(t);
}

// The parts the text lacks, with the text, or nothing when it has them all.
QString missing(const QString& text, const QStringList& parts) {
    QStringList lacks;
    for (const QString& part : parts)
        if (!text.contains(part)) lacks << part;
    return lacks.isEmpty() ? QString() : lacks.join(" | ") + " not in: " + text;
}

QString deg(double value, const char* pattern = "0.00") { return fmt(value, pattern) + QStringLiteral("°"); }

QString describe(const QWidget* w) {
    return QStringLiteral("%1 '%2' in %3")
        .arg(QString::fromLatin1(w->metaObject()->className()), w->objectName(), w->window()->objectName());
}

bool inside(const QWidget* w, const char* className) {
    for (const QWidget* p = w->parentWidget(); p; p = p->parentWidget())
        if (p->inherits(className)) return true;
    return false;
}

void openEveryScreen() {
    Main();
    Diathlasimeleti& menu = form<Diathlasimeleti>();
    menu.Command1_Click();
    form<Hmiky>().Command4_Click();
    form<Hmiky>().listOfData_Click();
    menu.Command4_Click();
    menu.Command2_Click();
    form<Inpdat>().Ptolemy_Click();
    openPtolemyInstrument();
    openAlHaythamInstrument();
    openPtolemyDataFitting();
    menu.Command5_Click();
    QCoreApplication::processEvents();
}

QString path(QAccessibleInterface* a) {
    QStringList parts;
    for (QAccessibleInterface* p = a; p; p = p->parent()) {
        const QObject* o = p->object();
        parts.prepend(o ? QString::fromLatin1(o->metaObject()->className()) + QLatin1Char(':') + o->objectName()
                        : QString::number(p->role()));
        if (o && o->isWidgetType() && static_cast<const QWidget*>(o)->isWindow()) break;
    }
    return parts.join(QLatin1String(" > "));
}

// Everything a screen reader can land on below the interface that has no
// name: every shown control, and every shown object with nothing inside.
void collectUnnamed(QAccessibleInterface* a, QStringList& unnamed, int& seen) {
    if (!a || a->state().invisible) return;
    static const QSet<QAccessible::Role> quiet{QAccessible::Separator, QAccessible::MenuBar, QAccessible::PopupMenu,
                                               QAccessible::ToolTip};
    if (quiet.contains(a->role())) return;
    const int children = a->childCount();
    ++seen;
    // Qt's own inner parts (the viewport of a text box) are read as part of their control.
    const bool qtPart = a->object() && a->object()->objectName().startsWith(QLatin1String("qt_"));
    if (children == 0 && !qtPart && a->text(QAccessible::Name).trimmed().isEmpty() &&
        !(a->role() == QAccessible::StaticText && a->text(QAccessible::Value).isEmpty()))
        unnamed << path(a);
    for (int k = 0; k < children; ++k) collectUnnamed(a->child(k), unnamed, seen);
}

}  // namespace

// A pupil with a screen reader hears every control by its name: the
// caption of a button, what a scroll bar, text box, list or drawing stands
// for; a drawing also tells what it printed.
class TestAccessibleNames : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        installFontSubstitutions();
        installWindowAccessEverywhere(*QCoreApplication::instance());
    }

    // What a screen reader walks: every window is a frame, nothing in it
    // that can be reached is without a name, every bar of the program says
    // its value as the screen shows it.
    void everyWindowAsAReaderSeesIt() {
        ScreenTestScope scope;
        openEveryScreen();
        QStringList unnamed, wrongRoles, undescribed;
        int windows = 0, seen = 0;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!top->isVisible()) continue;
            ++windows;
            QAccessibleInterface* a = QAccessible::queryAccessibleInterface(top);
            QVERIFY(a);
            if (a->role() != QAccessible::Window && a->role() != QAccessible::Dialog) wrongRoles << path(a);
            collectUnnamed(a, unnamed, seen);
            // Every bar, those of the text boxes and lists included.
            for (QScrollBar* bar : top->findChildren<QScrollBar*>())
                if (bar->isVisible() &&
                    QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Description).isEmpty())
                    undescribed << bar->accessibleName();
        }
        QVERIFY2(windows >= 10 && seen > 120,
                 qPrintable(QStringLiteral("%1 windows, %2 objects").arg(windows).arg(seen)));
        QVERIFY2(wrongRoles.isEmpty(), qPrintable(wrongRoles.join('\n')));
        QVERIFY2(unnamed.isEmpty(), qPrintable(QString::number(unnamed.size()) + '\n' + unnamed.join('\n')));
        QVERIFY2(undescribed.isEmpty(), qPrintable(undescribed.join(' ')));
        // The same by kind of control, in hidden windows too, with the
        // parts the walk above reads as one (lists, tables).
        QStringList nameless;
        int controls = 0;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            QList<QWidget*> widgets = top->findChildren<QWidget*>();
            widgets.prepend(top);
            for (QWidget* w : widgets) {
                const bool control = qobject_cast<QAbstractButton*>(w) || qobject_cast<QAbstractSlider*>(w) ||
                                     qobject_cast<QLineEdit*>(w) || qobject_cast<QTextEdit*>(w) ||
                                     qobject_cast<Canvas*>(w) ||
                                     (qobject_cast<QAbstractItemView*>(w) && !w->parentWidget()->inherits("QComboBox"));
                // The scroll bars of a list or a text box, the headers of a
                // table: parts of a control that is itself checked.
                if (!control || (w->inherits("QScrollBar") && inside(w, "QAbstractScrollArea")) ||
                    inside(w, "QAbstractItemView"))
                    continue;
                if (w->objectName().startsWith(QLatin1String("qt_"))) continue;  // Qt's own parts
                ++controls;
                QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
                if (!a || a->text(QAccessible::Name).trimmed().isEmpty()) nameless << describe(w);
                if (auto* canvas = qobject_cast<Canvas*>(w); canvas && !canvas->printedTexts().isEmpty())
                    if (!a || a->text(QAccessible::Description).isEmpty())
                        nameless << describe(w) + " (no description)";
            }
        }
        QVERIFY2(controls > 60, qPrintable(QString::number(controls)));
        QVERIFY2(nameless.isEmpty(), qPrintable(nameless.join('\n')));

        // Bars say their value as the labels show it; drawings say what
        // they show before what they printed.
        Hmiky& bench = form<Hmiky>();
        auto* xcoor = bench.findChild<QScrollBar*>("xcoor");
        xcoor->setValue(2);
        QCOMPARE(xcoor->accessibleDescription(), QStringLiteral("xc = 0.40"));
        QCOMPARE(bench.findChild<QScrollBar*>("Indexn")->accessibleDescription(), QStringLiteral("n = 1.50"));
        xcoor->setValue(0);
        bench.moredens_Click();
        bench.Command4_Click();  // rays for 0° to 90°
        auto* benchCanvas = bench.findChild<Canvas*>("bench");
        const QString rays = QAccessible::queryAccessibleInterface(benchCanvas)->text(QAccessible::Description);
        QVERIFY(rays.startsWith(QLatin1String("Semicircle of radius")));
        QCOMPARE(missing(rays, {"Ray 1: incidence", "More rays", benchCanvas->printedTexts().last()}), QString());
        const QString sine =
            QAccessible::queryAccessibleInterface(form<Analysis>().canvas())->text(QAccessible::Description);
        QVERIFY(sine.startsWith(QLatin1String("Graph: ")));
        QCOMPARE(missing(sine, {"8 points of PTOLEMY", "Fitted line", "1.519"}), QString());
        QCOMPARE(QAccessible::queryAccessibleInterface(benchCanvas)->role(), QAccessible::Canvas);
        const QString menuPicture = said(form<Diathlasimeleti>().findChild<Canvas*>(QStringLiteral("illustration")));
        QCOMPARE(
            missing(menuPicture, {"refraction " + deg(std::asin(std::sin(50.0 * M_PI / 180.0) / 1.5) * 180.0 / M_PI)}),
            QString());
        // A blank drawing says so.
        Canvas* fileView = named<Canvas>(form<Inpdat>(), "fileView");
        if (fileView->recordedOperations() == 0) QCOMPARE(said(fileView), QStringLiteral("Empty  Κενό"));

        // The mean-error graph says where the error is least, from its curve.
        bench.findChild<QScrollBar*>("hvalue")->setValue(25);
        bench.Optimize_Click();
        const Errors& errors = form<Errors>();
        const auto& points = errors.curve().points;
        const auto least = std::min_element(
            points.begin(), points.end(), [](const auto& a, const auto& b) { return a.errorPercent < b.errorPercent; });
        QVERIFY(least != points.end());
        QString text = said(&errors.drawing());
        QVERIFY(text.startsWith(QLatin1String("Graph: mean error")));
        QCOMPARE(missing(text, {QStringLiteral("Least %1 % at radius %2")
                                    .arg(fmt(least->errorPercent, "0.00"), fmt(least->radius, "0"))}),
                 QString());

        // Each law laid over the data is named in the graph's summary with its
        // figure, after the data it goes over.
        Inpdat& d = form<Inpdat>();
        scope.dialogs().messages.clear();
        d.Ptolemy_Click();
        named<QCheckBox>(d, "svinograf")->setChecked(false);
        const history::HistoricalTable& table = history::historicalTable(history::TableId::Ptolemy);
        std::vector<history::AnglePair> pairs;
        for (std::size_t k = 0; k < table.incidence.size(); ++k)
            pairs.push_back({static_cast<float>(table.incidence[k]), static_cast<float>(table.refraction[k])});
        const double kepler = *history::keplerModel(pairs).ratio;
        d.Kepler_Click();
        d.Snell_1_Click();
        d.toentrito1_Click();
        text = said(form<Incref>().canvas());
        const qsizetype dataAt = text.indexOf(QLatin1String("points"));
        const qsizetype keplerAt = text.indexOf(QStringLiteral("Kepler's model, k = ") + fmt(kepler, "0.00"));
        const qsizetype snellAt =
            text.indexOf(QStringLiteral("Snell's law, n = ") + fmt(sharedState<DataState>().dataIndex(), "0.000"));
        QVERIFY2(scope.dialogs().messages.isEmpty(), qPrintable(scope.dialogs().messages.join(QLatin1Char('\n'))));
        QVERIFY2(dataAt >= 0 && keplerAt > dataAt && snellAt > keplerAt &&
                     text.contains(QLatin1String("refraction = 2/3 incidence")),
                 qPrintable(text));
        named<QCheckBox>(d, "svinograf")->setChecked(true);
        d.Snell_1_Click();  // ERASE: the data drawn again, one law over them
        QVERIFY(!said(form<Incref>().canvas()).contains(QLatin1String("Kepler's model")));
    }

    // The instruments and the animations say their state in words, with
    // the figures the picture is drawn from, and their bars say the values
    // the screen shows; both follow every change.
    void instrumentsAndAnimationsSayWhatTheyShow() {
        ScreenTestScope scope;
        openPtolemyInstrument();
        Ptolemaios& p = form<Ptolemaios>();
        const Canvas& sight = form<Emfanisi>().drawing();
        auto* inWater = p.findChild<QScrollBar*>(QStringLiteral("goniaprosptosis"));
        auto* inAir = p.findChild<QScrollBar*>(QStringLiteral("metatopisipar"));
        auto* target = p.findChild<QScrollBar*>(QStringLiteral("dgonia"));
        inWater->setValue(40);
        inAir->setValue(100);
        const double expected = *ptolemy::expectedAirAngle(40);
        QString text = said(&p.drawing());
        QVERIFY(text.startsWith(QLatin1String("Ptolemy's instrument")));
        QCOMPARE(missing(text, {deg(40, "0"), deg(expected), deg(expected + 1.0), "not aligned"}), QString());
        QCOMPARE(missing(said(&sight), {deg(1.0) + " below"}), QString());
        QCOMPARE(inWater->accessibleDescription(), QStringLiteral("angle in water = 40°"));
        const double half = target->value() / 4.0;
        QCOMPARE(inAir->accessibleDescription(),
                 QStringLiteral("body in air = %1° to %2°")
                     .arg(fmt(expected + 1 - half, "0.00"), fmt(expected + 1 + half, "0.00")));
        inAir->setValue(0);
        QVERIFY(p.lastCovered());
        QCOMPARE(missing(said(&p.drawing()), {"Z, E and H are aligned"}), QString());
        QVERIFY(said(&sight).contains(QLatin1String("aligned")));
        // The angle in water moves the body in air: its bar says so too.
        inWater->setValue(20);
        QVERIFY(inAir->accessibleDescription().contains(fmt(*ptolemy::expectedAirAngle(20) - half, "0.00")));
        // Beyond the critical angle the lowered angle is told.
        inWater->setValue(88);
        const int lowered = ptolemy::guardWaterAngle(88).angle;
        QCOMPARE(missing(said(&p.drawing()), {"lowered from 88° to " + deg(lowered, "0")}), QString());
        QCOMPARE(inWater->accessibleDescription(), QStringLiteral("angle in water = %1°").arg(lowered));
        target->setValue(7);
        QCOMPARE(target->accessibleDescription(), QStringLiteral("target's angle = 3.5°"));

        openAlHaythamInstrument();
        Xaithamos& x = form<Xaithamos>();
        auto* incidence = x.findChild<QScrollBar*>(QStringLiteral("strefo"));
        auto* stylus = x.findChild<QScrollBar*>(QStringLiteral("timiepi"));
        incidence->setValue(50);
        text = said(&x.drawing());
        QCOMPARE(missing(text, {"incidence 50°, refraction " + deg(alhaytham::refractionInWaterDegrees(50), "0.0"),
                                "ruler is hidden"}),
                 QString());
        QCOMPARE(incidence->accessibleDescription(), QStringLiteral("incidence = 50°"));
        x.findChild<QRadioButton*>(QStringLiteral("Option2"))->setChecked(true);  // toggled, as a screen reader does
        stylus->setValue(7);
        QCOMPARE(missing(said(&x.drawing()), {"stylus stands at 0.7 of the radius"}), QString());
        QCOMPARE(stylus->accessibleDescription(), QStringLiteral("stylus = 0.7 of the radius"));

        x.svise_Click();
        Alhazencheck& check = form<Alhazencheck>();
        auto* index = check.findChild<QScrollBar*>(QStringLiteral("timidikti"));
        for (int value : {200, 50, 100}) {
            index->setValue(value);
            const double n = value / 100.0;
            const auto steps = alhaytham::checkSteps(n);
            text = said(&check.drawing());
            QCOMPARE(index->accessibleDescription(), QStringLiteral("n = ") + fmt(n, "0.00"));
            const auto broken5 =
                std::find_if(steps.begin(), steps.end(), [](const auto& s) { return s.rule5Violated; });
            QCOMPARE(missing(text, {"n = " + fmt(n, "0.00"), "to " + deg(steps.back().incidenceDegrees + 1, "0"),
                                    broken5 == steps.end()
                                        ? QStringLiteral("Rule (5), d < i/2, holds")
                                        : "Rule (5), d < i/2, is broken from " + deg(broken5->incidenceDegrees, "0")}),
                     QString());
            QCOMPARE(text.contains(QLatin1String("total reflection beyond")), n < 1.0);
        }
        QVERIFY(said(form<Incref>().canvas()).startsWith(QLatin1String("Al Haytham's eight rules")));

        openPtolemyDataFitting();
        Ptolkam& k = form<Ptolkam>();
        for (const char* option : {"Option1", "Option2"}) {
            k.findChild<QRadioButton*>(QString::fromLatin1(option))->setChecked(true);
            const ptolemy_fit::DataSet& set = k.chosenSet();
            const auto snell = ptolemy_fit::snellRefraction(set);
            text = said(&k.drawing());
            const QString from = deg(set.incidence[3], "0") + " → ";
            QCOMPARE(missing(text, {QStringLiteral("%1 pairs").arg(set.incidence.size()),
                                    from + deg(set.refraction[3], "0.0"), from + deg(*snell[3], "0.0"),
                                    fmt(ptolemy_fit::proportionalRatio(set), "0.000")}),
                     QString());
        }
        scope.dialogs().answers = {QStringLiteral("2")};
        k.Enallagi_Click();
        const auto adjusted = ptolemy_fit::adjustFromPair(k.chosenSet(), 2);
        QCOMPARE(missing(said(&k.drawing()), {"adjusted from the pair 2", deg(adjusted[6], "0.0")}), QString());

        // The animations' drawings say the model, the index and the angles;
        // Fermat's says the bodies and the time that its label shows.
        showInterpretationScreens();
        Rixo& rixo = form<Rixo>();
        rixo.aktina_Click();
        const kymatiko::Refraction r = rixo.refraction();
        text = said(&rixo.drawing());
        const QString refraction = "refraction " + deg(kymatiko::degrees(r.refraction));
        QCOMPARE(missing(text, {"n = " + fmt(rixo.index(), "0.00"), "incidence " + deg(rixo.incidenceDegrees(), "0"),
                                refraction}),
                 QString());

        Somata& s = form<Somata>();
        s.SOMATIDIA_Click();
        text = said(&s.drawing());
        QVERIFY(text.startsWith(QLatin1String("Corpuscles, Newton's model")));
        QCOMPARE(missing(text, {refraction}), QString());
        s.STAMATHMA_Click();
        s.fermat_Click();
        s.Form_MouseDown(Qt::LeftButton, Qt::ShiftModifier, s.field().width * 0.3, s.field().height * 0.9);
        const kymatiko::PathTime t =
            kymatiko::travelTime(s.bodyCentre(Somata::Magenta), s.bodyCentre(Somata::Blue), s.bodyCentre(Somata::Green),
                                 s.field().boundary(), s.speeds());
        text = said(&s.drawing());
        QVERIFY(text.startsWith(QLatin1String("Fermat's principle")));
        QCOMPARE(missing(text, {"travel time " + fmt(t.time, "0.00"), "above the boundary"}), QString());
        QVERIFY(s.findChild<QLabel*>("Label1")->text().contains(fmt(t.time, "0.00")));
        s.evresielaxistoy_Click();
        const kymatiko::LeastTimeSearch least = kymatiko::findLeastTime(
            s.bodyCentre(Somata::Magenta), s.bodyCentre(Somata::Green), s.field().boundary(), s.speeds());
        QCOMPARE(missing(said(&s.drawing()), {"Least time " + fmt(least.bestTime, "0.00")}), QString());
        QVERIFY(s.findChild<QScrollBar*>("fermatscr")
                    ->accessibleDescription()
                    .startsWith(QLatin1String("blue body at x = ")));
    }
};

QTEST_MAIN(TestAccessibleNames)
#include "test_accessible_names.moc"
