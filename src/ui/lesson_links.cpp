#include "ui/lesson_links.h"

#include <QAction>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>

#include "ui/dialogs.h"

namespace {

QMap<QString, ShowMeStep>& steps() {
    static QMap<QString, ShowMeStep> registered;
    return registered;
}

QString missing(const QString& what, const QString& name, const QWidget& screen) {
    return QStringLiteral("%1 %2 is missing on %3.  Λείπει το %2 από την οθόνη %3.")
        .arg(what, name, screen.windowTitle());
}

// The dialogs a lesson's step answers for the pupil: typed answers first,
// the rest to the dialogs behind.
class AnsweringDialogs : public DialogProvider {
public:
    AnsweringDialogs(DialogProvider& behind, std::shared_ptr<QStringList> answers)
        : behind_(behind), answers_(std::move(answers)) {}
    void message(const QString& text, const QString& title) override { behind_.message(text, title); }
    QString input(const QString& prompt, const QString& title, const QString& initial) override {
        if (answers_->isEmpty()) return behind_.input(prompt, title, initial);
        return answers_->takeFirst();
    }
    QString openFileName(const QString& caption, const QString& filter) override {
        return behind_.openFileName(caption, filter);
    }
    QString saveFileName(const QString& caption, const QString& filter, const QString& suggested) override {
        return behind_.saveFileName(caption, filter, suggested);
    }
    bool choosePrinter(QPrinter& printer) override { return behind_.choosePrinter(printer); }

private:
    DialogProvider& behind_;
    std::shared_ptr<QStringList> answers_;
};

}  // namespace

void setShowMe(const QString& name, ShowMeStep step) { steps().insert(name, std::move(step)); }

QStringList showMeNames() { return steps().keys(); }

bool followShowMe(const QString& name) {
    const auto found = steps().constFind(name);
    const QString failure = found == steps().constEnd() ? QStringLiteral(
                                                              "This link names no screen of the program: %1.  "
                                                              "Ο σύνδεσμος δεν οδηγεί σε οθόνη του προγράμματος: %1.")
                                                              .arg(name)
                                                        : (*found)();
    if (failure.isEmpty()) return true;
    messageBox(
        QStringLiteral("The lesson's step could not be shown.  Το βήμα του μαθήματος δεν εμφανίστηκε.\n") + failure,
        QStringLiteral("Show me  Δείξε μου"));
    return false;
}

QString chooseMenuItem(QWidget& screen, const QString& action) {
    auto* item = screen.findChild<QAction*>(action);
    if (!item || !item->isEnabled()) return missing(QStringLiteral("The menu item"), action, screen);
    item->trigger();
    return {};
}

QString pressButton(QWidget& screen, const QString& button) {
    auto* b = screen.findChild<QPushButton*>(button);
    if (!b || !b->isEnabled()) return missing(QStringLiteral("The button"), button, screen);
    b->click();
    return {};
}

QString moveScrollBar(QWidget& screen, const QString& bar, int value) {
    auto* s = screen.findChild<QScrollBar*>(bar);
    if (!s || value < s->minimum() || value > s->maximum())
        return missing(QStringLiteral("The scroll bar (or its value)"), bar, screen);
    s->setValue(value);
    return {};
}

QString typeText(QWidget& screen, const QString& box, const QString& text) {
    auto* edit = screen.findChild<QLineEdit*>(box);
    if (!edit || edit->isReadOnly()) return missing(QStringLiteral("The text box"), box, screen);
    edit->setText(text);
    return {};
}

TypedAnswers::TypedAnswers(QStringList answers) : left_(std::make_shared<QStringList>(std::move(answers))) {
    DialogProvider& behind = dialogs();
    auto answering = std::make_unique<AnsweringDialogs>(behind, left_);
    replaced_ = setDialogs(std::move(answering));
}

TypedAnswers::~TypedAnswers() { setDialogs(std::move(replaced_)); }

bool TypedAnswers::allUsed() const { return left_->isEmpty(); }
