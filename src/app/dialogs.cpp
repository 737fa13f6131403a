#include "app/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace {
std::unique_ptr<DialogProvider>& current() {
    static std::unique_ptr<DialogProvider> provider = std::make_unique<WidgetDialogs>();
    return provider;
}

QString titleOr(const QString& title) {
    return title.isEmpty() ? QApplication::applicationDisplayName() : title;
}
}  // namespace

void WidgetDialogs::message(const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Ok, QApplication::activeWindow());
    box.exec();
}

QString WidgetDialogs::input(const QString& prompt, const QString& title, const QString& initial) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(QApplication::activeWindow(), titleOr(title), prompt, QLineEdit::Normal, initial, &ok);
    return ok ? text : QString();
}

QString WidgetDialogs::openFileName(const QString& caption, const QString& filter) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), caption, dialogFolders().startFolder(), filter);
}

QString WidgetDialogs::saveFileName(const QString& caption, const QString& filter, const QString& suggested) {
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), caption, suggested, filter);
}

bool WidgetDialogs::choosePrinter(QPrinter& printer) {
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
