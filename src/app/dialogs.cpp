#include "app/dialogs.h"

#include <QApplication>
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
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), caption, QString(), filter);
}

QString WidgetDialogs::saveFileName(const QString& caption, const QString& filter, const QString& suggested) {
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), caption, suggested, filter);
}

bool WidgetDialogs::choosePrinter(QPrinter& printer) {
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted;
}

DialogProvider& dialogs() { return *current(); }

std::unique_ptr<DialogProvider> setDialogs(std::unique_ptr<DialogProvider> provider) {
    auto previous = std::move(current());
    current() = provider ? std::move(provider) : std::make_unique<WidgetDialogs>();
    return previous;
}
