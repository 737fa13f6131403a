#pragma once
#include <QString>
#include <QtGlobal>

#include <memory>

class QPrinter;

// The one way screens ask the pupil something or tell them something, so that
// tests can answer for the pupil and read what was said.
class DialogProvider {
public:
    virtual ~DialogProvider() = default;
    // A modal message with an OK button.
    virtual void message(const QString& text, const QString& title) = 0;
    // A modal input box; returns the typed text, or an empty text on Cancel.
    virtual QString input(const QString& prompt, const QString& title, const QString& initial) = 0;
    // The desktop's file dialogs; an empty name on Cancel. Providers that
    // answer no file questions (a benchmark) need not override them.
    virtual QString openFileName(const QString& caption, const QString& filter) {
        Q_UNUSED(caption);
        Q_UNUSED(filter);
        return {};
    }
    virtual QString saveFileName(const QString& caption, const QString& filter, const QString& suggested) {
        Q_UNUSED(caption);
        Q_UNUSED(filter);
        Q_UNUSED(suggested);
        return {};
    }
    // The desktop's print dialog for the printer; false on Cancel.
    virtual bool choosePrinter(QPrinter& printer) {
        Q_UNUSED(printer);
        return false;
    }
};

// Real modal boxes.
class WidgetDialogs : public DialogProvider {
public:
    void message(const QString& text, const QString& title) override;
    QString input(const QString& prompt, const QString& title, const QString& initial) override;
    QString openFileName(const QString& caption, const QString& filter) override;
    QString saveFileName(const QString& caption, const QString& filter, const QString& suggested) override;
    bool choosePrinter(QPrinter& printer) override;
};

// Where the file dialogs start: the user's Documents folder (the home
// folder when there is none) the first time, and afterwards the folder of
// the last file chosen in this run, as long as it still exists.
class DialogFolders {
public:
    explicit DialogFolders(QString first = documentsOrHome());
    QString startFolder() const;
    // A save dialog's starting name: a bare suggested file name is put in
    // the start folder; a suggestion that names its folder is kept.
    QString startFor(const QString& suggested) const;
    // Remembers the folder of a chosen file (nothing on Cancel's empty
    // name) and gives the name back.
    QString remember(const QString& chosen);
    static QString documentsOrHome();

private:
    QString first_;
    QString last_;
};
DialogFolders& dialogFolders();

DialogProvider& dialogs();
// Installs another provider (tests); returns the one it replaces.
std::unique_ptr<DialogProvider> setDialogs(std::unique_ptr<DialogProvider> provider);

inline void messageBox(const QString& text, const QString& title = QString()) { dialogs().message(text, title); }
inline QString openFileDialog(const QString& caption, const QString& filter) {
    return dialogFolders().remember(dialogs().openFileName(caption, filter));
}
inline QString saveFileDialog(const QString& caption, const QString& filter, const QString& suggested = QString()) {
    return dialogFolders().remember(dialogs().saveFileName(caption, filter, dialogFolders().startFor(suggested)));
}
inline bool choosePrinterDialog(QPrinter& printer) { return dialogs().choosePrinter(printer); }
inline QString inputBox(const QString& prompt, const QString& title = QString(), const QString& initial = QString()) {
    return dialogs().input(prompt, title, initial);
}
