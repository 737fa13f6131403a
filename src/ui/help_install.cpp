// How every window reaches its help: F1 on first show, and on the main menu
// a "?" button in its top right corner plus a context menu.
#include <QAction>
#include <QEvent>
#include <QFont>
#include <QPointer>
#include <QShortcut>
#include <QToolButton>
#include <QWidget>

#include "ui/help_window.h"

namespace {

constexpr int kQuestionSize = 24;

void placeQuestionButton(QWidget& menu) {
    if (auto* button = menu.findChild<QToolButton*>(QStringLiteral("helpButton"), Qt::FindDirectChildrenOnly))
        button->move(menu.width() - kQuestionSize - 4, 4);
}

// The main menu's captions and layout stay as they are: the "?" sits in the
// corner above everything, and the contents, the lessons and the About box
// are also on the window's context menu.
void addMainMenuHelp(QWidget& menu) {
    auto* button = new QToolButton(&menu);
    button->setObjectName(QStringLiteral("helpButton"));
    button->setText(QStringLiteral("?"));
    button->setToolTip(QStringLiteral("Help  Βοήθεια (F1)"));
    button->setAccessibleName(QStringLiteral("Help contents  Περιεχόμενα βοήθειας"));
    QFont bold = button->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.4);
    button->setFont(bold);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);  // leaves the captions' keyboard order alone
    button->resize(kQuestionSize, kQuestionSize);
    QObject::connect(button, &QToolButton::clicked, &menu, [] { showHelpContents(); });
    placeQuestionButton(menu);
    button->raise();
    button->show();

    auto* contents = new QAction(QStringLiteral("Help contents  Περιεχόμενα βοήθειας"), &menu);
    contents->setObjectName(QStringLiteral("helpContentsAction"));
    QObject::connect(contents, &QAction::triggered, &menu, [] { showHelpContents(); });
    auto* lessons = new QAction(QStringLiteral("Lessons  Μαθήματα"), &menu);
    lessons->setObjectName(QStringLiteral("helpLessonsAction"));
    QObject::connect(lessons, &QAction::triggered, &menu, [] { showLessons(); });
    auto* about = new QAction(QStringLiteral("About  Σχετικά"), &menu);
    about->setObjectName(QStringLiteral("aboutAction"));
    QObject::connect(about, &QAction::triggered, &menu, [] { showAbout(); });
    menu.addAction(contents);
    menu.addAction(lessons);
    menu.addAction(about);
    menu.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void installHelp(QWidget& window) {
    if (window.property("helpInstalled").toBool()) return;
    window.setProperty("helpInstalled", true);
    auto* f1 = new QShortcut(QKeySequence::HelpContents, &window);
    f1->setContext(Qt::WindowShortcut);
    QPointer<QWidget> target(&window);
    QObject::connect(f1, &QShortcut::activated, &window, [target] {
        if (target) showHelpFor(target);
    });
    if (window.objectName() == QLatin1String("diathlasimeleti")) addMainMenuHelp(window);
}

class HelpWatcher : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show || event->type() == QEvent::Resize) {
            if (auto* window = qobject_cast<QWidget*>(watched); window && window->isWindow() && isScreen(*window)) {
                if (event->type() == QEvent::Show) installHelp(*window);
                if (window->objectName() == QLatin1String("diathlasimeleti")) placeQuestionButton(*window);
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // Screens only: a modal dialog would block the help it opened, and
    // pop-ups, menus and tool tips have no page.
    static bool isScreen(const QWidget& w) { return w.windowType() == Qt::Window; }
};

}  // namespace

void installHelpEverywhere(QObject& application) { application.installEventFilter(new HelpWatcher(&application)); }
