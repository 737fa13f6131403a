#include "ui/menu_keys.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProxyStyle>
#include <QShortcut>
#include <QStyleOptionMenuItem>

#include <set>

#include "ui/menu_rows.h"

QList<QChar> menuLetters(const QStringList& captions) {
    QList<QChar> letters;
    std::set<char16_t> taken;
    for (const QString& caption : captions) {
        QChar chosen('\0');
        for (const QChar c : caption) {
            if (!c.isLetterOrNumber() || c.unicode() > 0x7f) continue;  // keys of a Latin keyboard
            const QChar upper = c.toUpper();
            if (taken.insert(upper.unicode()).second) {
                chosen = upper;
                break;
            }
        }
        letters << chosen;
    }
    return letters;
}

namespace {

// Opens the menu as a mnemonic would: dropped down with its first item
// highlighted, so that the next key already acts in the menu (Down goes to
// the second item, Enter runs the first). The menu's own Down key does the
// highlighting, so a first item that is a submenu is highlighted, not opened.
void openFromKeyboard(QMenuBar& bar, QAction& menu) {
    if (!menu.isVisible() || !menu.isEnabled()) return;
    bar.setActiveAction(&menu);
    QMenu* popup = menu.menu();
    if (!popup || !popup->isVisible() || popup->activeAction()) return;
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(popup, &down);
}

// Alt pressed and released alone puts the menu bar in keyboard mode: its
// first title is highlighted and the arrows move along the titles, Down or
// Enter opens one. Qt's menu bar does this where the style asks for it, and
// some styles draw the chosen title exactly like the others until its menu
// opens: this style asks for it always, and fills the title that has the
// keyboard as an open one is filled.
class MenuBarStyle : public QProxyStyle {
public:
    explicit MenuBarStyle(const QString& base) : QProxyStyle(base) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        if (hint == SH_MenuBar_AltKeyNavigation) return 1;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_MenuBarItem && (option->state & State_Selected) && widget && widget->hasFocus()) {
            if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
                QStyleOptionMenuItem chosen = *item;
                chosen.state |= State_Sunken;
                QProxyStyle::drawControl(element, &chosen, painter, widget);
                return;
            }
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

}  // namespace

void installMenuKeys(QMainWindow& window) {
    if (window.property("menuKeysInstalled").toBool()) return;
    window.setProperty("menuKeysInstalled", true);
    QMenuBar* bar = window.menuBar();
    auto* style = new MenuBarStyle(QApplication::style()->name());
    style->setParent(bar);
    bar->setStyle(style);
    QList<QAction*> menus;
    QStringList captions;
    for (QAction* action : menusOfAllRows(window)) {
        if (!action->menu() || action->text().isEmpty()) continue;
        menus << action;
        captions << action->text();
    }
    const QList<QChar> letters = menuLetters(captions);
    for (int k = 0; k < menus.size(); ++k) {
        if (letters[k].isNull()) continue;
        QAction* menu = menus[k];
        const QKeySequence keys(QStringLiteral("Alt+") + letters[k]);
        auto* shortcut = new QShortcut(keys, &window);
        QObject::connect(shortcut, &QShortcut::activated, bar, [menu] {
            // In a narrow window the menu may stand on a further row.
            for (QObject* holder : menu->associatedObjects())
                if (auto* row = qobject_cast<QMenuBar*>(holder)) {
                    openFromKeyboard(*row, *menu);
                    return;
                }
        });
        const QString hint = keys.toString(QKeySequence::NativeText);
        menu->setToolTip(menu->text() + QStringLiteral("  (") + hint + QLatin1Char(')'));
        menu->menu()->setToolTip(menu->toolTip());
        menu->menu()->setAccessibleDescription(hint);
    }
}

namespace {

class MenuKeyWatcher : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show)
            if (auto* window = qobject_cast<QMainWindow*>(watched); window && window->isWindow())
                installMenuKeys(*window);
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void installMenuKeysEverywhere(QObject& application) {
    if (application.property("menuKeysEverywhere").toBool()) return;
    application.setProperty("menuKeysEverywhere", true);
    application.installEventFilter(new MenuKeyWatcher(&application));
}
