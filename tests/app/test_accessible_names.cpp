#include <QtTest>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextEdit>

#include "analysis/graph_screens.h"
#include "app/forms.h"
#include "app/main_menu.h"
#include "app/window_access.h"
#include "app/module1.h"
#include "apparatus/apparatus_openers.h"
#include "canvas/canvas.h"
#include "canvas/fonts.h"
#include "history/inpdat_screen.h"
#include "models/interpretation_openers.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"

namespace {

QString describe(const QWidget* w) {
    return QStringLiteral("%1 '%2' in %3").arg(QString::fromLatin1(w->metaObject()->className()), w->objectName(),
                                                w->window()->objectName());
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
    if (menu.Command5->isEnabled()) menu.Command5_Click();
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
            for (QScrollBar* bar : top->findChildren<QScrollBar*>())
                if (bar->isVisible() && !bar->parentWidget()->objectName().startsWith(QLatin1String("qt_scrollarea")) &&
                    QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Description).isEmpty())
                    undescribed << bar->objectName();
        }
        QVERIFY2(windows >= 10 && seen > 120, qPrintable(QStringLiteral("%1 windows, %2 objects").arg(windows).arg(seen)));
        QVERIFY2(wrongRoles.isEmpty(), qPrintable(wrongRoles.join('\n')));
        QVERIFY2(unnamed.isEmpty(), qPrintable(QString::number(unnamed.size()) + '\n' + unnamed.join('\n')));
        QVERIFY2(undescribed.isEmpty(), qPrintable(undescribed.join(' ')));

        // Bars say their value as the labels show it; drawings say what
        // they show before what they printed.
        Hmiky& bench = form<Hmiky>();
        bench.xcoor->setValue(2);
        QCOMPARE(bench.xcoor->accessibleDescription(), QStringLiteral("xc = 0.40"));
        QCOMPARE(bench.Indexn->accessibleDescription(), QStringLiteral("n = 1.50"));
        bench.xcoor->setValue(0);
        bench.moredens_Click();
        bench.Command4_Click();  // rays for 0° to 90°
        const QString rays = QAccessible::queryAccessibleInterface(bench.canvas)->text(QAccessible::Description);
        QVERIFY2(rays.startsWith(QLatin1String("Semicircle of radius")) && rays.contains(QLatin1String("Ray 1: incidence")) &&
                     rays.contains(QLatin1String("More rays")) && rays.contains(bench.canvas->printedTexts().last()),
                 qPrintable(rays));
        const QString sine = QAccessible::queryAccessibleInterface(form<Analysis>().canvas)->text(QAccessible::Description);
        QVERIFY2(sine.startsWith(QLatin1String("Graph: ")) && sine.contains(QLatin1String("8 points of PTOLEMY")) &&
                     sine.contains(QLatin1String("Fitted line")) && sine.contains(QLatin1String("1.519")),
                 qPrintable(sine));
        QCOMPARE(QAccessible::queryAccessibleInterface(bench.canvas)->role(), QAccessible::Canvas);
    }

    void everyControlOfEveryScreenHasAName() {
        ScreenTestScope scope;
        openEveryScreen();

        QStringList unnamed;
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
                if (!a || a->text(QAccessible::Name).trimmed().isEmpty()) unnamed << describe(w);
                if (auto* canvas = qobject_cast<Canvas*>(w); canvas && !canvas->printedTexts().isEmpty())
                    if (!a || a->text(QAccessible::Description).isEmpty()) unnamed << describe(w) + " (no description)";
            }
        }
        QVERIFY2(controls > 60, qPrintable(QString::number(controls)));
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join('\n')));
    }
};

QTEST_MAIN(TestAccessibleNames)
#include "test_accessible_names.moc"
