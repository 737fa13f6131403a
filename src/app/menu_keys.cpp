#include "app/menu_keys.h"

#include <QEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

#include <set>

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

void installMenuKeys(QMainWindow& window) {
    if (window.property("menuKeysInstalled").toBool()) return;
    window.setProperty("menuKeysInstalled", true);
    QMenuBar* bar = window.menuBar();
    QList<QAction*> menus;
    QStringList captions;
    for (QAction* action : bar->actions()) {
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
            if (!menu->isVisible() || !menu->isEnabled()) return;
            // In a narrow window the menu may stand on a further row.
            for (QObject* holder : menu->associatedObjects())
                if (auto* row = qobject_cast<QMenuBar*>(holder)) {
                    row->setActiveAction(menu);
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
    application.installEventFilter(new MenuKeyWatcher(&application));
}
