#include <QtTest>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QTextEdit>

#include "app/forms.h"
#include "app/main_menu.h"
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

}  // namespace

// A pupil with a screen reader hears every control by its name: the
// caption of a button, what a scroll bar, text box, list or drawing stands
// for; a drawing also tells what it printed.
class TestAccessibleNames : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    void everyControlOfEveryScreenHasAName() {
        ScreenTestScope scope;
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
