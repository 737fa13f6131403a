#include "ui/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

namespace {
std::unique_ptr<DialogProvider>& current() {
    static std::unique_ptr<DialogProvider> provider = std::make_unique<WidgetDialogs>();
    return provider;
}

QString titleOr(const QString& title) { return title.isEmpty() ? QApplication::applicationDisplayName() : title; }

// A box takes the focus while it is open; when it closes, the control that
// was used to open it gets it back, so that a keyboard user goes on where
// they were. (A window that had nothing focused is left to choose for
// itself when it comes to the front again.)
class FocusReturn {
public:
    FocusReturn() : control_(QApplication::focusWidget()) {}
    ~FocusReturn() {
        if (!control_ || !control_->isVisible()) return;
        control_->window()->activateWindow();
        control_->setFocus(Qt::PopupFocusReason);
    }
    FocusReturn(const FocusReturn&) = delete;
    FocusReturn& operator=(const FocusReturn&) = delete;

private:
    QPointer<QWidget> control_;
};
}  // namespace

void WidgetDialogs::message(const QString& text, const QString& title) {
    const FocusReturn focus;
    QMessageBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Ok, QApplication::activeWindow());
    // A box is as wide as its text; a short text under a longer title would
    // have the title cut by the window frame. The box sizes itself when
    // shown, so the room is reserved in its own layout, with space for the
    // frame's buttons.
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        // The desktop adds the program's name to the title, in a bold face.
        QFont bold = box.font();
        bold.setBold(true);
        const QString shown = box.windowTitle() + QStringLiteral(" — ") + QApplication::applicationDisplayName();
        const int titleWidth = QFontMetrics(bold).horizontalAdvance(shown) + 140;
        grid->addItem(new QSpacerItem(titleWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0,
                      1, grid->columnCount());
    }
    box.exec();
}

QString WidgetDialogs::input(const QString& prompt, const QString& title, const QString& initial) {
    const FocusReturn focus;
    bool ok = false;
    const QString text =
        QInputDialog::getText(QApplication::activeWindow(), titleOr(title), prompt, QLineEdit::Normal, initial, &ok);
    return ok ? text : QString();
}

QString WidgetDialogs::openFileName(const QString& caption, const QString& filter) {
    const FocusReturn focus;
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), caption, dialogFolders().startFolder(), filter);
}

QString WidgetDialogs::saveFileName(const QString& caption, const QString& filter, const QString& suggested) {
    const FocusReturn focus;
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), caption, suggested, filter);
}

bool WidgetDialogs::choosePrinter(QPrinter& printer) {
    const FocusReturn focus;
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted;
}

DialogFolders::DialogFolders(QString first) : first_(std::move(first)) {}

QString DialogFolders::documentsOrHome() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!documents.isEmpty() && QFileInfo(documents).isDir()) return documents;
    return QDir::homePath();
}

QString DialogFolders::startFolder() const {
    if (!last_.isEmpty() && QFileInfo(last_).isDir()) return last_;
    return first_;
}

QString DialogFolders::startFor(const QString& suggested) const {
    if (suggested.isEmpty()) return startFolder();
    if (suggested.contains(QLatin1Char('/')) || QDir::isAbsolutePath(suggested)) return suggested;
    return QDir(startFolder()).filePath(suggested);
}

QString DialogFolders::remember(const QString& chosen) {
    if (!chosen.isEmpty()) last_ = QFileInfo(chosen).absolutePath();
    return chosen;
}

DialogFolders& dialogFolders() {
    static DialogFolders folders;
    return folders;
}

DialogProvider& dialogs() { return *current(); }

std::unique_ptr<DialogProvider> setDialogs(std::unique_ptr<DialogProvider> provider) {
    auto previous = std::move(current());
    current() = provider ? std::move(provider) : std::make_unique<WidgetDialogs>();
    return previous;
}
