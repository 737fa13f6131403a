#pragma once
#include <QString>
#include <QWidget>

class QObject;
class QPushButton;
class QTextBrowser;

// The help window: one Markdown page per screen, with links between them,
// a way back and the contents. It is a screen like the others: created on
// first use, hidden and shown again where the reader left it.
class HelpWindow : public QWidget {
public:
    HelpWindow();

    // Shows the page (a file name under qrc:/help/) and brings the window up.
    void showPage(const QString& page);
    // The page now shown (its file name), for tests.
    QString currentPage() const;
    QTextBrowser* browser() const { return browser_; }

private:
    QTextBrowser* browser_;
    QPushButton* back_;
};

// Opens the help of the screen that holds the widget.
void showHelpFor(const QWidget* widget);
void showHelpContents();

// The About box's text: the program's names, version, licence and fonts.
QString aboutText();
void showAbout();

// Watches the application: every window gets F1 for its own help page when
// it is first shown, and the main menu a "?" button and a context menu with
// the contents and the About box; no screen needs code of its own.
void installHelpEverywhere(QObject& application);
