#pragma once
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class DialogProvider;
class QWidget;

// "Show me" links: a lesson links a step to a screen with show:<name>, and
// following the link sets the screen up as the step says. The help window
// stands below the screens and cannot open them; the shell, which sees
// every screen, registers what each name does at start-up.

// A step shows its screen and returns nothing, or returns why it could not
// (English then Greek).
using ShowMeStep = std::function<QString()>;
void setShowMe(const QString& name, ShowMeStep step);
QStringList showMeNames();

// Follows a link: false, after a message that says why, when the name is
// unknown or the step could not be shown.
bool followShowMe(const QString& name);

// The pupil's own commands, so that a link does nothing a pupil could not:
// each finds the control by its object name on the screen and returns
// nothing when done, or what was missing.
QString chooseMenuItem(QWidget& screen, const QString& action);
QString pressButton(QWidget& screen, const QString& button);
QString moveScrollBar(QWidget& screen, const QString& bar, int value);
QString typeText(QWidget& screen, const QString& box, const QString& text);

// Answers the screens' next input boxes with these texts, in order, as if
// the pupil had typed them; every other question (messages, files) goes to
// the dialogs it stands in for, which come back when it ends.
class TypedAnswers {
public:
    explicit TypedAnswers(QStringList answers);
    ~TypedAnswers();
    TypedAnswers(const TypedAnswers&) = delete;
    TypedAnswers& operator=(const TypedAnswers&) = delete;
    // Whether every answer was asked for.
    bool allUsed() const;

private:
    std::unique_ptr<DialogProvider> replaced_;
    std::shared_ptr<QStringList> left_;
};
