#include "app/history_screen.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QLayout>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>

#include "app/history_page_view.h"
#include "app/history_pages.h"
#include "canvas/fonts.h"

namespace {

QAction* addMenuCommand(QMenuBar* bar, const QString& caption, const QKeySequence& shortcut, const QString& description,
                        const QString& name) {
    QAction* action = bar->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WindowShortcut);
    action->setToolTip(description);
    action->setStatusTip(description);
    action->setWhatsThis(description);
    return action;
}

}  // namespace

Storiopt::Storiopt() {
    setObjectName(QStringLiteral("storiopt"));
    setWindowTitle(QStringLiteral("Σύντομη Ιστορία"));
    setFont(roleFont(FontRole::Panel, 10.0));
    createMenu();
    createPages();
    resize(1024, 720);
    Form_Load();
}

void Storiopt::createMenu() {
    QMenuBar* bar = menuBar();
    bar->setAccessibleName(QStringLiteral("Pages  Σελίδες"));
    protomeros = addMenuCommand(bar, QStringLiteral("PROTO"), QKeySequence(Qt::ALT | Qt::Key_1),
                                QStringLiteral("First page  Πρώτο μέρος"), QStringLiteral("protomeros"));
    defteromeros = addMenuCommand(bar, QStringLiteral("DEFTERO"), QKeySequence(Qt::ALT | Qt::Key_2),
                                  QStringLiteral("Second page  Δεύτερο μέρος"), QStringLiteral("defteromeros"));
    klisimo = addMenuCommand(bar, QStringLiteral("KLISIMO"), QKeySequence(Qt::Key_Escape),
                             QStringLiteral("Close the history  Κλείσιμο της ιστορίας"), QStringLiteral("klisimo"));
    connect(protomeros, &QAction::triggered, this, &Storiopt::protomeros_Click);
    connect(defteromeros, &QAction::triggered, this, &Storiopt::defteromeros_Click);
    connect(klisimo, &QAction::triggered, this, &Storiopt::klisimo_Click);
}

void Storiopt::createPages() {
    // The pages are placed by hand, not by a layout: choosing a page sizes
    // it to the client area, and a resize keeps the visible one fitted.
    auto* client = new QWidget;
    client->setObjectName(QStringLiteral("clientArea"));
    setCentralWidget(client);
    client->installEventFilter(this);

    Picture1 = new HistoryPageView(history::firstPage(), QStringLiteral("First page  Πρώτο μέρος"), client);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture2 = new HistoryPageView(history::secondPage(), QStringLiteral("Second page  Δεύτερο μέρος"), client);
    Picture2->setObjectName(QStringLiteral("Picture2"));
}

QRect Storiopt::clientArea() {
    // A hidden window does not lay out its central widget when its geometry
    // changes (the main menu sizes this screen before showing it); let the
    // layout catch up so that the page fits the size just set.
    if (!isVisible()) {
        if (QLayout* frame = layout()) {
            frame->invalidate();
            frame->activate();
        }
    }
    return centralWidget()->rect();
}

void Storiopt::showPage(QWidget* shown, QWidget* hidden) {
    hidden->hide();
    shown->setGeometry(clientArea());
    if (auto* page = qobject_cast<QScrollArea*>(shown)) page->verticalScrollBar()->setValue(0);
    shown->show();
    shown->setFocus();
}

void Storiopt::Form_Load() { showPage(Picture1, Picture2); }

void Storiopt::protomeros_Click() { showPage(Picture1, Picture2); }

void Storiopt::defteromeros_Click() { showPage(Picture2, Picture1); }

void Storiopt::klisimo_Click() { hide(); }

void Storiopt::sizeVisiblePage() {
    const QRect area = centralWidget()->rect();
    for (QWidget* page : {Picture1, Picture2})
        if (!page->isHidden()) page->setGeometry(area);
}

void Storiopt::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    sizeVisiblePage();
}

bool Storiopt::eventFilter(QObject* watched, QEvent* event) {
    if (watched == centralWidget() && event->type() == QEvent::Resize) sizeVisiblePage();
    return QMainWindow::eventFilter(watched, event);
}
