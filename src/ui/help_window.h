#pragma once
#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QObject;
class QPushButton;
class QTextBrowser;
class QUrl;

// The help window: one Markdown page per screen, the lessons and the model
// page, with links between them, a way back, the contents and a search
// over every page. A lesson's "show me" links open the screens it names,
// and its worksheet is saved or printed from here. It is a screen like the
// others: created on first use, hidden and shown again where the reader
// left it.
class HelpWindow : public QWidget {
public:
    HelpWindow();

    // Shows the page (named as helpUrl names it) and brings the window up.
    void showPage(const QString& page);
    // The page now shown, named the same way, for tests.
    QString currentPage() const;
    QTextBrowser* browser() const { return browser_; }

    // Follows a link of a page: another page, a lesson's "show me" step
    // (show:<name>) or a web address.
    void followLink(const QUrl& link);
    // Lists the pages that hold the words, each with the line it was found in.
    void search(const QString& words);
    // The shown lesson's worksheet written as a PDF file, whole or not at
    // all; false after a message.
    bool saveWorksheet(const QString& path);

private:
    void createSearch();
    void createWorksheetButton();
    void pageShown();
    void openResult(int row);
    void printWorksheet();

    QTextBrowser* browser_;
    QPushButton* back_;
    QPushButton* worksheet_;
    QLineEdit* search_;
    QLabel* found_;
    QListWidget* results_;
};

// Opens the help of the screen that holds the widget.
void showHelpFor(const QWidget* widget);
void showHelpContents();
// The list of lessons.
void showLessons();

// The About box's text: the program's names, version, licence and fonts.
QString aboutText();
void showAbout();

// Watches the application: every window gets F1 for its own help page when
// it is first shown, and the main menu a "?" button and a context menu with
// the contents and the About box; no screen needs code of its own.
void installHelpEverywhere(QObject& application);
