#include "ui/window_keys.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QShortcut>
#include <QTextEdit>

#include <vector>

#include "canvas/canvas.h"
#include "canvas/figure_export.h"
#include "ui/figure_commands.h"
#include "ui/presentation_size.h"
#include "ui/window_placement.h"

namespace {

constexpr const char* kGraphWindow = "graphWindow";
constexpr const char* kKeysInstalled = "windowKeysInstalled";

bool isTextEntry(const QWidget* w) {
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QTextEdit*>(w) ||
           qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QAbstractSpinBox*>(w);
}

// The program's own windows: not menus, tool tips or the modal boxes, which
// keep their own keys.
bool isProgramWindow(const QWidget* w) {
    if (!w || !w->isWindow() || qobject_cast<const QDialog*>(w) || qobject_cast<const QMenu*>(w)) return false;
    const Qt::WindowType type = w->windowType();
    return type == Qt::Window || type == Qt::Widget;
}

bool canTakeFocus(const QWidget* w) {
    return (w->focusPolicy() & Qt::TabFocus) && w->isVisible() && w->isEnabled() && !w->isWindow();
}

QWidget* firstControl(QWidget& window) {
    for (QWidget* w = window.nextInFocusChain(); w && w != &window; w = w->nextInFocusChain())
        if (canTakeFocus(w) && w->window() == &window) return w;
    return nullptr;
}

void bringToFront(QWidget& window) { showOnScreen(window); }

class WindowKeyWatcher : public QObject {
public:
    explicit WindowKeyWatcher(QObject* parent) : QObject(parent) { current = this; }
    ~WindowKeyWatcher() override {
        if (current == this) current = nullptr;
    }

    static inline WindowKeyWatcher* current = nullptr;

    QWidget* openerOf(const QWidget& window) const {
        for (const Record& r : windows_)
            if (r.window == &window) return r.opener;
        return nullptr;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Show:
            if (auto* window = qobject_cast<QWidget*>(watched); isProgramWindow(window)) shown(*window);
            break;
        case QEvent::WindowActivate:
            if (auto* window = qobject_cast<QWidget*>(watched); isProgramWindow(window)) activated(*window);
            break;
        case QEvent::KeyPress:
            if (auto* button = qobject_cast<QAbstractButton*>(watched))
                return enterOnButton(*button, *static_cast<QKeyEvent*>(event));
            break;
        default: break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    struct Record {
        QPointer<QWidget> window;
        QPointer<QWidget> opener;
    };
    std::vector<Record> windows_;  // in the order they were first shown: the order F6 walks

    void shown(QWidget& window) {
        std::erase_if(windows_, [](const Record& r) { return r.window.isNull(); });
        QWidget* front = QApplication::activeWindow();
        auto it =
            std::find_if(windows_.begin(), windows_.end(), [&window](const Record& r) { return r.window == &window; });
        if (it == windows_.end()) it = windows_.insert(windows_.end(), Record{&window, nullptr});
        if (front && front != &window && isProgramWindow(front)) it->opener = front;
        installKeys(window);
    }

    void activated(QWidget& window) {
        if (window.focusWidget()) return;
        QWidget* target = nullptr;
        if (window.property(kGraphWindow).toBool()) target = windowDrawing(window);
        if (!target) target = firstControl(window);
        if (target) target->setFocus(Qt::ActiveWindowFocusReason);
    }

    // Space presses a focused button by Qt's own rule; Enter does only in
    // dialog boxes. Outside them it presses the button too.
    static bool enterOnButton(QAbstractButton& button, const QKeyEvent& key) {
        const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
        const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
        if (!enter || modifiers != Qt::NoModifier || !button.hasFocus() || !button.isEnabled()) return false;
        if (qobject_cast<QDialog*>(button.window())) return false;
        button.click();
        return true;
    }

    void installKeys(QWidget& window) {
        if (window.property(kKeysInstalled).toBool()) return;
        window.setProperty(kKeysInstalled, true);
        QPointer<QWidget> w(&window);
        auto add = [&window](const QKeySequence& keys, auto action) {
            auto* shortcut = new QShortcut(keys, &window);
            QObject::connect(shortcut, &QShortcut::activated, &window, action);
        };
        add(QKeySequence::Save, [w] {
            if (Canvas* c = w ? windowDrawing(*w) : nullptr) saveFigureInteractive(*c);
        });
        add(QKeySequence::Print, [w] {
            if (Canvas* c = w ? windowDrawing(*w) : nullptr) printFigureInteractive(*c);
        });
        add(QKeySequence(Qt::Key_Menu), [w] { openDrawingMenu(w); });
        add(QKeySequence(Qt::SHIFT | Qt::Key_F10), [w] { openDrawingMenu(w); });
        // The presentation size, for the whole program from any window; Ctrl+=
        // is Ctrl++ without Shift on most keyboards.
        add(QKeySequence::ZoomIn, [] { growPresentationSize(); });
        add(QKeySequence(Qt::CTRL | Qt::Key_Equal), [] { growPresentationSize(); });
        add(QKeySequence::ZoomOut, [] { shrinkPresentationSize(); });
        add(QKeySequence(Qt::CTRL | Qt::Key_0), [] { setPresentationSize(100); });
        add(QKeySequence(Qt::Key_F6), [this, w] { cycle(w, +1); });
        add(QKeySequence(Qt::SHIFT | Qt::Key_F6), [this, w] { cycle(w, -1); });
        if (window.property(kGraphWindow).toBool())
            add(QKeySequence(Qt::Key_Escape), [this, w] {
                if (QWidget* opener = w ? openerOf(*w) : nullptr) bringToFront(*opener);
            });
    }

    static void openDrawingMenu(QWidget* window) {
        if (!window) return;
        // A text box has its own menu (copy, paste).
        if (QWidget* focus = window->focusWidget(); focus && isTextEntry(focus)) {
            const QPoint centre = focus->rect().center();
            QContextMenuEvent event(QContextMenuEvent::Keyboard, centre, focus->mapToGlobal(centre));
            QCoreApplication::sendEvent(focus, &event);
            return;
        }
        Canvas* canvas = windowDrawing(*window);
        if (!canvas || canvas->actions().isEmpty()) return;
        auto* menu = new QMenu(canvas);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addActions(canvas->actions());
        menu->popup(canvas->mapToGlobal(canvas->rect().center()));
    }

    void cycle(QWidget* from, int step) {
        std::vector<QWidget*> open;
        for (const Record& r : windows_)
            if (r.window && r.window->isVisible() && !r.window->isMinimized()) open.push_back(r.window);
        if (open.size() < 2 || !from) return;
        const auto it = std::find(open.begin(), open.end(), from);
        const auto n = static_cast<std::ptrdiff_t>(open.size());
        const std::ptrdiff_t here = it == open.end() ? 0 : it - open.begin();
        bringToFront(*open[static_cast<std::size_t>(((here + step) % n + n) % n)]);
    }
};

}  // namespace

Canvas* windowDrawing(QWidget& window) {
    if (auto* focused = qobject_cast<Canvas*>(window.focusWidget()); focused && focused->isVisible()) return focused;
    Canvas* largest = nullptr;
    qint64 largestArea = 0;
    for (Canvas* c : window.findChildren<Canvas*>()) {
        if (!c->isVisible() || c->window() != &window) continue;
        const qint64 area = qint64{c->width()} * c->height();
        if (area > largestArea) {
            largest = c;
            largestArea = area;
        }
    }
    if (!largest)
        if (auto* self = qobject_cast<Canvas*>(&window)) return self;
    return largest;
}

void markGraphWindow(QWidget& window) { window.setProperty(kGraphWindow, true); }

QWidget* windowOpener(const QWidget& window) {
    return WindowKeyWatcher::current ? WindowKeyWatcher::current->openerOf(window) : nullptr;
}

void installWindowKeysEverywhere(QObject& application) {
    if (WindowKeyWatcher::current) return;
    application.installEventFilter(new WindowKeyWatcher(&application));
}
