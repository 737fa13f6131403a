#include "ui/help_window.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "canvas/fonts.h"
#include "core/version.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/help_pages.h"

HelpWindow::HelpWindow() {
    setObjectName(QStringLiteral("help"));
    setWindowTitle(QStringLiteral("HELP  ΒΟΗΘΕΙΑ"));
    setAttribute(Qt::WA_QuitOnClose, false);

    browser_ = new QTextBrowser(this);
    browser_->setObjectName(QStringLiteral("helpText"));
    browser_->setAccessibleName(QStringLiteral("Help page  Σελίδα βοήθειας"));
    browser_->setOpenExternalLinks(true);
    browser_->setFont(roleFont(FontRole::Panel, 11.0));

    back_ = new QPushButton(QStringLiteral("BACK ΠΙΣΩ"), this);
    back_->setObjectName(QStringLiteral("helpBack"));
    back_->setAccessibleName(back_->text());
    back_->setShortcut(QKeySequence::Back);
    back_->setEnabled(false);
    auto* contents = new QPushButton(QStringLiteral("CONTENTS ΠΕΡΙΕΧΟΜΕΝΑ"), this);
    contents->setObjectName(QStringLiteral("helpContents"));
    contents->setAccessibleName(contents->text());
    auto* about = new QPushButton(QStringLiteral("ABOUT ΣΧΕΤΙΚΑ"), this);
    about->setObjectName(QStringLiteral("helpAbout"));
    about->setAccessibleName(about->text());

    connect(back_, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(browser_, &QTextBrowser::backwardAvailable, back_, &QPushButton::setEnabled);
    connect(contents, &QPushButton::clicked, this, [this] { showPage(helpContentsPage()); });
    connect(about, &QPushButton::clicked, this, [] { showAbout(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(back_);
    buttons->addWidget(contents);
    buttons->addStretch(1);
    buttons->addWidget(about);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(browser_, 1);
    resize(640, 720);
}

void HelpWindow::showPage(const QString& page) {
    const QUrl url(helpUrl(page));
    if (browser_->source() != url) browser_->setSource(url, QTextDocument::MarkdownResource);
    browser_->verticalScrollBar()->setValue(0);
    showScreen(*this);
}

QString HelpWindow::currentPage() const { return browser_->source().fileName(); }

void showHelpFor(const QWidget* widget) { form<HelpWindow>().showPage(helpPageFor(widget)); }

void showHelpContents() { form<HelpWindow>().showPage(helpContentsPage()); }

QString aboutText() {
    // The families the program's Windows font names resolve to here, so a
    // teacher can tell which fonts to install when Greek looks wrong.
    QStringList fonts;
    for (FontRole role : {FontRole::Caption, FontRole::Reading, FontRole::Panel}) {
        const QString family = roleFamily(role);
        if (!fonts.contains(family)) fonts << family;
    }
    return QStringLiteral(
               "Refraction  Διάθλαση\n"
               "The law of refraction of light  Ο νόμος της διάθλασης του φωτός\n\n"
               "Version  Έκδοση  %1\n"
               "Licence  Άδεια  %2: free software, share and change it under its terms  "
               "ελεύθερο λογισμικό, διανέμεται και τροποποιείται ελεύθερα με τους ίδιους όρους\n"
               "Fonts  Γραμματοσειρές  %3\n"
               "%4")
        .arg(QStringLiteral(REFRACTION_VERSION), QStringLiteral(REFRACTION_LICENSE), fonts.join(QStringLiteral(", ")),
             QStringLiteral(REFRACTION_HOMEPAGE));
}

void showAbout() { messageBox(aboutText(), QStringLiteral("ABOUT ΣΧΕΤΙΚΑ")); }
