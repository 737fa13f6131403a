#include "ui/help_window.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <filesystem>

#include "canvas/fonts.h"
#include "core/message_text.h"
#include "core/outside_files.h"
#include "core/version.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/help_pages.h"
#include "ui/help_search.h"
#include "ui/lesson_links.h"
#include "ui/worksheet.h"

namespace {

std::optional<Worksheet> worksheetOfPage(const QString& page) {
    return page.startsWith(QLatin1String("../lessons/")) ? worksheetOf(helpPageSource(page)) : std::nullopt;
}

}  // namespace

HelpWindow::HelpWindow() {
    setObjectName(QStringLiteral("help"));
    setWindowTitle(QStringLiteral("HELP  ΒΟΗΘΕΙΑ"));
    setAttribute(Qt::WA_QuitOnClose, false);

    browser_ = new QTextBrowser(this);
    browser_->setObjectName(QStringLiteral("helpText"));
    browser_->setAccessibleName(QStringLiteral("Help page  Σελίδα βοήθειας"));
    browser_->setOpenLinks(false);  // pages, show-me steps and web addresses are told apart here
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

    connect(browser_, &QTextBrowser::anchorClicked, this, &HelpWindow::followLink);
    connect(browser_, &QTextBrowser::historyChanged, this, &HelpWindow::pageShown);
    connect(back_, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(browser_, &QTextBrowser::backwardAvailable, back_, &QPushButton::setEnabled);
    connect(contents, &QPushButton::clicked, this, [this] { showPage(helpContentsPage()); });
    connect(about, &QPushButton::clicked, this, [] { showAbout(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(back_);
    buttons->addWidget(contents);
    createWorksheetButton();
    buttons->addWidget(worksheet_);
    buttons->addStretch(1);
    buttons->addWidget(about);
    createSearch();
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(search_, 1);
    searchRow->addWidget(found_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addLayout(searchRow);
    layout->addWidget(results_);
    layout->addWidget(browser_, 1);
    resize(640, 720);
}

void HelpWindow::createSearch() {
    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("helpSearch"));
    search_->setPlaceholderText(QStringLiteral("Search  Αναζήτηση (Ctrl+F)"));
    search_->setAccessibleName(QStringLiteral("Search the help  Αναζήτηση στη βοήθεια"));
    search_->setClearButtonEnabled(true);
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, search_, [this] { search_->setFocus(Qt::ShortcutFocusReason); });
    addAction(find);
    found_ = new QLabel(this);
    found_->setObjectName(QStringLiteral("helpFound"));
    results_ = new QListWidget(this);
    results_->setObjectName(QStringLiteral("helpResults"));
    results_->setAccessibleName(QStringLiteral("Pages found  Σελίδες που βρέθηκαν"));
    results_->setWordWrap(true);
    results_->setMaximumHeight(180);
    results_->hide();
    connect(search_, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        if (results_->count() > 0) openResult(std::max(0, results_->currentRow()));
    });
    // Down from the field into the list, as in a search box with suggestions.
    auto* down = new QShortcut(QKeySequence(Qt::Key_Down), search_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, results_, [this] {
        if (results_->isVisible()) results_->setFocus(Qt::TabFocusReason);
    });
    connect(results_, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { openResult(results_->row(item)); });
}

void HelpWindow::createWorksheetButton() {
    worksheet_ = new QPushButton(QStringLiteral("WORKSHEET  ΦΥΛΛΟ ΕΡΓΑΣΙΑΣ"), this);
    worksheet_->setObjectName(QStringLiteral("helpWorksheet"));
    worksheet_->setAccessibleName(QStringLiteral("The lesson's worksheet  Το φύλλο εργασίας του μαθήματος"));
    worksheet_->setEnabled(false);
    auto* menu = new QMenu(worksheet_);
    QAction* pdf = menu->addAction(QStringLiteral("Save as PDF…  Αποθήκευση ως PDF…"));
    pdf->setObjectName(QStringLiteral("worksheetPdf"));
    connect(pdf, &QAction::triggered, this, [this] {
        const QString name = QFileInfo(currentPage()).completeBaseName() + QStringLiteral("_worksheet.pdf");
        const QString path = saveFileDialog(QStringLiteral("Save the worksheet  Αποθήκευση φύλλου εργασίας"),
                                            QStringLiteral("PDF (*.pdf)"), name);
        if (!path.isEmpty()) saveWorksheet(path);
    });
    QAction* print = menu->addAction(QStringLiteral("Print…  Εκτύπωση…"));
    print->setObjectName(QStringLiteral("worksheetPrint"));
    connect(print, &QAction::triggered, this, &HelpWindow::printWorksheet);
    worksheet_->setMenu(menu);
}

void HelpWindow::pageShown() { worksheet_->setEnabled(worksheetOfPage(currentPage()).has_value()); }

void HelpWindow::followLink(const QUrl& link) {
    if (link.scheme() == QLatin1String("show")) {
        followShowMe(link.path());
    } else if (link.scheme() == QLatin1String("https") || link.scheme() == QLatin1String("http")) {
        QDesktopServices::openUrl(link);
    } else {
        browser_->setSource(browser_->source().resolved(link), QTextDocument::MarkdownResource);
    }
}

void HelpWindow::search(const QString& words) {
    if (search_->text() != words) search_->setText(words);  // comes back here once
    results_->clear();
    const QList<HelpMatch> matches = searchHelp(words);
    for (const HelpMatch& m : matches) {
        auto* item = new QListWidgetItem(m.title + QStringLiteral("\n    ") + m.line, results_);
        item->setData(Qt::UserRole, m.page);
    }
    results_->setVisible(!words.trimmed().isEmpty());
    if (results_->count() > 0) results_->setCurrentRow(0);
    found_->setText(words.trimmed().isEmpty() ? QString()
                    : matches.isEmpty()       ? QStringLiteral("Nothing found  Δεν βρέθηκε τίποτα")
                                              : QStringLiteral("%1 pages  σελίδες").arg(matches.size()));
}

void HelpWindow::openResult(int row) {
    if (QListWidgetItem* item = results_->item(row)) showPage(item->data(Qt::UserRole).toString());
}

bool HelpWindow::saveWorksheet(const QString& path) {
    const std::optional<Worksheet> sheet = worksheetOfPage(currentPage());
    const QByteArray pdf = sheet ? worksheetPdf(*sheet) : QByteArray();
    const FileWriteResult written =
        pdf.isEmpty() ? FileWriteResult{false, "this page has no worksheet"}
                      : replaceFile(std::filesystem::path(QFile::encodeName(path).toStdString()),
                                    std::string_view(pdf.constData(), static_cast<std::size_t>(pdf.size())));
    if (!written.ok)
        messageBox(QStringLiteral("The worksheet could not be saved in %1 (%2); nothing was changed.  "
                                  "Το φύλλο εργασίας δεν αποθηκεύτηκε στο %1· δεν άλλαξε τίποτα.")
                       .arg(QString::fromStdString(quotedForMessage(QFileInfo(path).fileName().toStdString())),
                            QString::fromStdString(written.reason)));
    return written.ok;
}

void HelpWindow::printWorksheet() {
    const std::optional<Worksheet> sheet = worksheetOfPage(currentPage());
    if (!sheet) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(sheet->title);
    if (!choosePrinterDialog(printer)) return;
    if (!paintWorksheet(printer, *sheet))
        messageBox(QStringLiteral("The worksheet could not be printed.  Το φύλλο εργασίας δεν τυπώθηκε."));
}

void HelpWindow::showPage(const QString& page) {
    const QUrl url(helpUrl(page));
    if (browser_->source() != url) browser_->setSource(url, QTextDocument::MarkdownResource);
    pageShown();
    browser_->verticalScrollBar()->setValue(0);
    showScreen(*this);
}

QString HelpWindow::currentPage() const { return helpPageOf(browser_->source()); }

void showHelpFor(const QWidget* widget) { form<HelpWindow>().showPage(helpPageFor(widget)); }

void showHelpContents() { form<HelpWindow>().showPage(helpContentsPage()); }

void showLessons() { form<HelpWindow>().showPage(QStringLiteral("../lessons/index.md")); }

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
