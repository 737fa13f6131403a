#pragma once
// Helpers shared by the screen tests: scripted answers for the dialog seam,
// a recorder for the program's end, and fresh screens per test.
#include <QLineF>
#include <QPrinter>
#include <QRectF>
#include <QStringList>

#include <algorithm>
#include <deque>
#include <memory>
#include <vector>

#include "app/routes.h"
#include "ui/dialogs.h"
#include "ui/figure_commands.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

// A message a pupil can read in either language: it has Latin and Greek
// letters.
inline bool bilingual(const QString& text) {
    bool latin = false, greek = false;
    for (const QChar c : text) {
        latin = latin || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
        greek = greek || (c.unicode() >= 0x0370 && c.unicode() <= 0x03FF);
    }
    return latin && greek;
}

// How far the point lies from the rectangle (0 inside it).
inline double distanceToRect(const QPointF& p, const QRectF& r) {
    return QLineF(p, QPointF(std::clamp(p.x(), r.left(), r.right()), std::clamp(p.y(), r.top(), r.bottom()))).length();
}

// A screen's control found by its object name; the test stops at once,
// naming it, when there is none, instead of crashing on a null pointer.
template <class T = QWidget>
T* named(const QObject& screen, const QString& name) {
    T* found = screen.findChild<T*>(name);
    if (!found) qFatal("no control named %s", qPrintable(name));
    return found;
}

// Answers input boxes from a queue (an empty answer when the queue runs out,
// as Cancel would) and records every message and prompt.
class ScriptedDialogs : public DialogProvider {
public:
    std::deque<QString> answers;
    QStringList messages;
    QStringList messageTitles;
    QStringList prompts;
    // Answers of the file dialogs (an empty name, as Cancel, when none is left).
    std::deque<QString> openFiles;
    std::deque<QString> saveFiles;

    void message(const QString& text, const QString& title) override {
        messages.append(text);
        messageTitles.append(title);
    }
    QString input(const QString& prompt, const QString&, const QString&) override {
        prompts.append(prompt);
        if (answers.empty()) return QString();
        QString answer = answers.front();
        answers.pop_front();
        return answer;
    }
    // The print dialog: prints into this PDF file, or is cancelled when empty.
    QString printToPdf;
    bool choosePrinter(QPrinter& printer) override {
        if (printToPdf.isEmpty()) return false;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(printToPdf);
        return true;
    }
    QString openFileName(const QString&, const QString&) override { return next(openFiles); }
    // The names the save dialogs were offered (in the folder they start in).
    QStringList saveSuggestions;
    QString saveFileName(const QString&, const QString&, const QString& suggested) override {
        saveSuggestions.append(suggested);
        return next(saveFiles);
    }

private:
    static QString next(std::deque<QString>& queue) {
        if (queue.empty()) return QString();
        QString answer = queue.front();
        queue.pop_front();
        return answer;
    }
};

// Installs a ScriptedDialogs and a recording program ender for the lifetime
// of the object, and gives every screen back at the end.
class ScreenTestScope {
public:
    ScreenTestScope() {
        auto scripted = std::make_unique<ScriptedDialogs>();
        dialogs_ = scripted.get();
        previousDialogs_ = setDialogs(std::move(scripted));
        previousEnder_ = setProgramEnder([this](int status) { endStatuses.push_back(status); });
        installFigureCommands();
        connectRoutes();
    }
    ~ScreenTestScope() {
        Forms::instance().destroyAll();
        setDialogs(std::move(previousDialogs_));
        setProgramEnder(previousEnder_);
    }
    ScreenTestScope(const ScreenTestScope&) = delete;
    ScreenTestScope& operator=(const ScreenTestScope&) = delete;

    ScriptedDialogs& dialogs() { return *dialogs_; }
    std::vector<int> endStatuses;

private:
    ScriptedDialogs* dialogs_;
    std::unique_ptr<DialogProvider> previousDialogs_;
    ProgramEnder previousEnder_;
};
