#include "ui/menu_rows.h"

#include <QAction>
#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QTimer>

#include <vector>

namespace {

// The window's own menu bar keeps the first row; each further row is a menu
// bar of its own laid over the lower part of the first, which is made tall
// enough to hold them all. The window's menuBar() stays the same object.
constexpr auto kName = "menuRows";

class MenuRows : public QObject {
public:
    explicit MenuRows(QMenuBar& first) : QObject(&first), first_(&first), all_(first.actions()) {
        setObjectName(kName);
        first.installEventFilter(this);
        relayout();
    }

    const QList<QAction*>& all() const { return all_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == first_ && event->type() == QEvent::Resize && first_->width() != laidOutWidth_) relayout();
        // Larger type (the presentation size) makes the menus wider: laid out
        // again once the bar has measured them in the new font.
        if (watched == first_ && event->type() == QEvent::FontChange)
            QTimer::singleShot(0, this, [this] { relayout(); });
        return QObject::eventFilter(watched, event);
    }

private:
    static bool hidden(QMenuBar& bar, QAction* action) {
        const QRect at = bar.actionGeometry(action);
        return at.isEmpty() || !bar.rect().contains(at);
    }

    QMenuBar& row(std::size_t k) {
        while (more_.size() < k) {
            auto* bar = new QMenuBar(first_);
            bar->setObjectName(QStringLiteral("menuRow%1").arg(more_.size() + 2));
            bar->setNativeMenuBar(false);
            more_.push_back(bar);
        }
        return k == 0 ? *first_ : *more_[k - 1];
    }

    void relayout() {
        if (busy_) return;
        busy_ = true;
        laidOutWidth_ = first_->width();
        // All menus back on the first row, in their order (removed, not
        // cleared: clearing would delete the commands the bar owns).
        for (QMenuBar* bar : more_)
            for (QAction* action : bar->actions()) bar->removeAction(action);
        if (first_->actions() != all_) {
            for (QAction* action : first_->actions()) first_->removeAction(action);
            first_->addActions(all_);
        }
        first_->setMinimumHeight(0);
        const int rowHeight = first_->sizeHint().height();
        const int width = first_->width();

        // Fill each row until a menu would be hidden, then start the next.
        QList<QAction*> rest = all_;
        std::size_t k = 0;
        while (!rest.isEmpty()) {
            QMenuBar& bar = row(k);
            if (k > 0) {
                bar.setGeometry(0, rowHeight * static_cast<int>(k), width, rowHeight);
                bar.addActions(rest);
                bar.show();
            }
            qsizetype fits = 0;
            while (fits < rest.size() && !hidden(bar, rest[fits])) ++fits;
            if (fits == 0) fits = 1;  // a menu wider than the window still gets a row
            for (qsizetype i = fits; i < rest.size(); ++i) bar.removeAction(rest[i]);
            rest = rest.mid(fits);
            ++k;
        }
        for (std::size_t i = k > 0 ? k - 1 : 0; i < more_.size(); ++i) more_[i]->hide();
        first_->setMinimumHeight(rowHeight * static_cast<int>(k));
        busy_ = false;
    }

    QMenuBar* first_;
    QList<QAction*> all_;
    std::vector<QMenuBar*> more_;
    int laidOutWidth_ = -1;
    bool busy_ = false;
};

}  // namespace

void letMenusWrap(QMainWindow& window) {
    if (window.property("menuRows").toBool()) return;
    window.setProperty("menuRows", true);
    QMenuBar* bar = window.menuBar();
    if (bar->actions().isEmpty() || bar->isNativeMenuBar()) return;
    new MenuRows(*bar);
}

QList<QAction*> menusOfAllRows(const QMainWindow& window) {
    const QMenuBar* bar = window.menuBar();
    if (const auto* rows = bar->findChild<QObject*>(QLatin1String(kName), Qt::FindDirectChildrenOnly))
        return static_cast<const MenuRows*>(rows)->all();
    return bar->actions();
}
