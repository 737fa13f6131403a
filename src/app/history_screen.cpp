#include "app/history_screen.h"

#include <QEvent>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "app/history_pages.h"
#include "canvas/fonts.h"

namespace {

const QString kBodyFace = QStringLiteral("Times New Roman Greek");

QString fromUtf8(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

QLabel* makeLabel(const QString& text, const QFont& font, Qt::Alignment alignment) {
    auto* label = new QLabel(text);
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment(alignment);
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleName(text);
    return label;
}

// Ptolemy's table as a rich-text table; its accessible name reads the same
// cells row by row.
QLabel* makeDifferenceTable(const QFont& font) {
    const auto rows = history::differenceTable(history::ptolemyWaterIncidence(), history::ptolemyWaterRefraction());
    const auto& headings = history::differenceTableHeadings();

    QString html = QStringLiteral(
        "<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\" style=\"border-collapse: collapse; "
        "border-color: #555555;\"><tr>");
    QStringList spoken;
    QStringList spokenHeadings;
    for (const auto& heading : headings) {
        const QString top = fromUtf8(heading.top);
        const QString bottom = fromUtf8(heading.bottom);
        html += QStringLiteral("<th align=\"center\" style=\"background-color: #e8eef6;\">%1<br>%2</th>")
                    .arg(top.toHtmlEscaped(), bottom.toHtmlEscaped());
        spokenHeadings << top + QLatin1Char(' ') + bottom;
    }
    html += QStringLiteral("</tr>");
    spoken << spokenHeadings.join(QStringLiteral(", "));

    for (const auto& row : rows) {
        QStringList cells{fromUtf8(history::formatDegrees(row.incidence)),
                          fromUtf8(history::formatDegrees(row.refraction)),
                          row.firstDifference ? fromUtf8(history::formatDegrees(*row.firstDifference)) : QString(),
                          row.secondDifference ? fromUtf8(history::formatDegrees(*row.secondDifference)) : QString()};
        html += QStringLiteral("<tr>");
        for (const QString& cell : cells)
            html += QStringLiteral("<td align=\"center\">%1</td>").arg(cell.isEmpty() ? QStringLiteral("&nbsp;")
                                                                                      : cell.toHtmlEscaped());
        html += QStringLiteral("</tr>");
        while (!cells.isEmpty() && cells.back().isEmpty()) cells.removeLast();
        spoken << cells.join(QStringLiteral(", "));
    }
    html += QStringLiteral("</table>");

    auto* table = new QLabel;
    table->setObjectName(QStringLiteral("ptolemyTable"));
    table->setTextFormat(Qt::RichText);
    table->setText(html);
    table->setFont(font);
    table->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    table->setAccessibleName(spoken.join(QStringLiteral("; ")));
    return table;
}

// One page: a white sheet in a scroll area. On a large window (a full
// screen) the text flows into two columns and the page needs no scrolling;
// otherwise it is one column that scrolls. Lines never grow past a readable
// length: extra width becomes margin.
class PageView : public QScrollArea {
public:
    PageView(const history::HistoryPage& page, const QString& name, QWidget* parent) : QScrollArea(parent) {
        setAccessibleName(name);
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll the page  Κύλιση της σελίδας"));
        horizontalScrollBar()->setAccessibleName(
            QStringLiteral("Scroll the page sideways  Κύλιση της σελίδας οριζόντια"));
        setFocusPolicy(Qt::StrongFocus);

        sheet_ = new QWidget;
        sheet_->setAutoFillBackground(true);
        QPalette pal = sheet_->palette();
        pal.setColor(QPalette::Window, Qt::white);
        pal.setColor(QPalette::WindowText, QColor(20, 20, 20));
        sheet_->setPalette(pal);
        setPalette(pal);

        bodyFont_ = programFont(kBodyFace, kBodyPoints);
        const QFont titleFont = programFont(kBodyFace, 20.0, true);
        const QFont sectionFont = programFont(kBodyFace, 15.0, true);
        QFont formulaFont = programFont(kBodyFace, 15.0);
        formulaFont.setItalic(true);

        outer_ = new QVBoxLayout(sheet_);
        columns_ = new QHBoxLayout;
        left_ = new QVBoxLayout;
        right_ = new QVBoxLayout;
        for (QVBoxLayout* column : {left_, right_}) {
            column->setContentsMargins(0, 0, 0, 0);
            column->addStretch(1);
            columns_->addLayout(column, 1);
        }

        QVBoxLayout* current = nullptr;
        auto previous = history::BlockKind::Title;
        for (const history::PageBlock& block : page.blocks) {
            const QString text = fromUtf8(block.text);
            if (block.kind == history::BlockKind::Title) {
                title_ = keep(makeLabel(text, titleFont, Qt::AlignHCenter | Qt::AlignTop));
                outer_->addWidget(title_);
                previous = block.kind;
                continue;
            }
            // A column may end before a section heading or before a paragraph
            // that opens a new sentence; never between a heading and its
            // text, nor before a formula or the words that go on after it.
            const bool opensSection = block.kind == history::BlockKind::Section;
            const bool opensSentence = block.kind == history::BlockKind::Paragraph && !text.isEmpty() &&
                                       text.front().isUpper() && previous != history::BlockKind::Section;
            if (!current || opensSection || opensSentence) current = startPiece(opensSection);
            switch (block.kind) {
            case history::BlockKind::Section:
                current->addWidget(keep(makeLabel(text, sectionFont, Qt::AlignLeft | Qt::AlignTop)));
                break;
            case history::BlockKind::Paragraph:
                current->addWidget(keep(makeLabel(text, bodyFont_, Qt::AlignJustify | Qt::AlignTop)));
                break;
            case history::BlockKind::Formula:
                current->addWidget(keep(makeLabel(text, formulaFont, Qt::AlignHCenter | Qt::AlignTop)));
                break;
            case history::BlockKind::Table:
                current->addWidget(keep(makeDifferenceTable(bodyFont_)), 0, Qt::AlignHCenter);
                break;
            case history::BlockKind::Title:
                break;
            }
            previous = block.kind;
        }
        outer_->addLayout(columns_, 1);
        setSpacings();
        setWidget(sheet_);
        arrange();
    }

protected:
    bool viewportEvent(QEvent* event) override {
        if (event->type() == QEvent::Resize) arrange();
        return QScrollArea::viewportEvent(event);
    }

private:
    static constexpr double kBodyPoints = 13.0;

    struct ScaledLabel {
        QLabel* label;
        double points;  // size at scale 1
    };

    QLabel* keep(QLabel* label) {
        labels_.push_back({label, label->font().pointSizeF()});
        return label;
    }

    int gap() const { return QFontMetrics(bodyFont_).height(); }

    // Average advance of running Greek text; the font's own average width
    // overstates it, which would make lines far longer than intended.
    double charWidth() const {
        static const QString sample = QStringLiteral("η γωνία διάθλασης είναι ανάλογη της γωνίας πρόσπτωσης, ");
        return std::max(1.0, QFontMetricsF(bodyFont_).horizontalAdvance(sample) / double(sample.size()));
    }

    // A large window (a full screen) gets a somewhat larger type, so that
    // the page fills it without growing lines past a readable length. The
    // page's own size is used, not the viewport's, which shrinks and grows
    // with the scroll bar and would make the choice flicker.
    void applyScale() {
        const double fit = std::min(width() / 1280.0, height() / 760.0);
        const double scale = std::round(std::clamp(fit, 1.0, 1.15) * 20.0) / 20.0;
        if (scale == scale_) return;
        scale_ = scale;
        bodyFont_.setPointSizeF(kBodyPoints * scale);
        for (const ScaledLabel& scaled : labels_) {
            QFont font = scaled.label->font();
            font.setPointSizeF(scaled.points * scale);
            scaled.label->setFont(font);
        }
        setSpacings();
    }

    // A piece of the page that is never split between columns.
    QVBoxLayout* startPiece(bool opensSection) {
        auto* box = new QWidget;
        auto* layout = new QVBoxLayout(box);
        layout->setSpacing(gap() / 2);
        pieces_.push_back({box, opensSection});
        left_->insertWidget(left_->count() - 1, box);
        return layout;
    }

    void setSpacings() {
        const int spacing = gap();
        outer_->setSpacing(spacing);
        for (QVBoxLayout* column : {left_, right_}) column->setSpacing(spacing / 2);
        // A section's heading stands a full line below the text before it,
        // unless it heads a column.
        for (std::size_t k = 0; k < pieces_.size(); ++k) {
            const bool headsColumn = k == 0 || k == split_;
            pieces_[k].box->layout()->setSpacing(spacing / 2);
            pieces_[k].box->layout()->setContentsMargins(
                0, pieces_[k].opensSection && !headsColumn ? spacing / 2 : 0, 0, 0);
        }
    }

    // Two columns when the window is wide enough for two comfortable lines
    // and the whole page then fits without scrolling (a reader should not
    // have to scroll back up for the second column); otherwise one column.
    // With two, the split makes the columns most nearly the same height.
    void arrange() {
        if (pieces_.empty()) return;
        applyScale();
        const int available = std::max(1, viewport()->width());
        const int spacing = gap();
        const int margin = std::clamp(available / 30, 8, 48);
        const int usable = std::max(1, available - 2 * margin);
        const int longestLine = int(92 * charWidth());   // a comfortable line of text
        const int shortestLine = int(50 * charWidth());  // narrower columns read badly

        std::size_t split = pieces_.size();
        int textWidth = std::min(usable, longestLine);
        if (usable >= 2 * shortestLine + spacing * 2) {
            const int twoWidth = std::min(usable, 2 * longestLine + spacing * 2);
            const int columnWidth = (twoWidth - spacing * 2) / 2;
            std::vector<int> heights;
            for (const Piece& piece : pieces_) heights.push_back(piece.box->heightForWidth(columnWidth) + spacing / 2);
            int best = std::numeric_limits<int>::max();
            std::size_t bestSplit = split;
            for (std::size_t s = 1; s < pieces_.size(); ++s) {
                int leftHeight = 0;
                int rightHeight = 0;
                for (std::size_t k = 0; k < heights.size(); ++k) (k < s ? leftHeight : rightHeight) += heights[k];
                if (std::max(leftHeight, rightHeight) < best) {
                    best = std::max(leftHeight, rightHeight);
                    bestSplit = s;
                }
            }
            const int titleHeight = title_ ? title_->heightForWidth(twoWidth) + spacing : 0;
            if (2 * margin + titleHeight + best <= viewport()->height()) {
                split = bestSplit;
                textWidth = twoWidth;
            }
        }
        const bool twoColumns = split < pieces_.size();
        const int side = std::max(margin, (available - textWidth) / 2);

        outer_->setContentsMargins(side, margin, side, margin);
        columns_->setSpacing(twoColumns ? spacing * 2 : 0);
        columns_->setStretch(1, twoColumns ? 1 : 0);
        if (split == split_) return;
        split_ = split;
        for (const Piece& piece : pieces_) {
            left_->removeWidget(piece.box);
            right_->removeWidget(piece.box);
        }
        for (std::size_t k = 0; k < pieces_.size(); ++k) {
            QVBoxLayout* column = k < split ? left_ : right_;
            column->insertWidget(column->count() - 1, pieces_[k].box);
        }
        setSpacings();
    }

    QWidget* sheet_ = nullptr;
    QLabel* title_ = nullptr;
    QFont bodyFont_;
    QVBoxLayout* outer_ = nullptr;
    QHBoxLayout* columns_ = nullptr;
    QVBoxLayout* left_ = nullptr;
    QVBoxLayout* right_ = nullptr;
    struct Piece {
        QWidget* box;
        bool opensSection;
    };
    std::vector<Piece> pieces_;
    std::vector<ScaledLabel> labels_;
    double scale_ = 1.0;
    std::size_t split_ = std::numeric_limits<std::size_t>::max();
};

QAction* addMenuCommand(QMenuBar* bar, const QString& caption, const QKeySequence& shortcut,
                        const QString& description, const QString& name) {
    QAction* action = bar->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WindowShortcut);
    action->setToolTip(description);
    action->setStatusTip(description);
    action->setWhatsThis(description);
    return action;
}

}  // namespace

Storiopt::Storiopt() {
    setObjectName(QStringLiteral("storiopt"));
    setWindowTitle(QStringLiteral("Σύντομη Ιστορία"));
    setFont(programFont(QStringLiteral("Tahoma"), 10.0));

    QMenuBar* bar = menuBar();
    bar->setAccessibleName(QStringLiteral("Pages  Σελίδες"));
    protomeros = addMenuCommand(bar, QStringLiteral("PROTO"), QKeySequence(Qt::ALT | Qt::Key_1),
                                QStringLiteral("First page  Πρώτο μέρος"), QStringLiteral("protomeros"));
    defteromeros = addMenuCommand(bar, QStringLiteral("DEFTERO"), QKeySequence(Qt::ALT | Qt::Key_2),
                                  QStringLiteral("Second page  Δεύτερο μέρος"), QStringLiteral("defteromeros"));
    klisimo = addMenuCommand(bar, QStringLiteral("KLISIMO"), QKeySequence(Qt::Key_Escape),
                             QStringLiteral("Close the history  Κλείσιμο της ιστορίας"), QStringLiteral("klisimo"));
    connect(protomeros, &QAction::triggered, this, &Storiopt::protomeros_Click);
    connect(defteromeros, &QAction::triggered, this, &Storiopt::defteromeros_Click);
    connect(klisimo, &QAction::triggered, this, &Storiopt::klisimo_Click);

    // The pages are placed by hand, not by a layout: choosing a page sizes
    // it to the client area, and a resize keeps the visible one fitted.
    auto* client = new QWidget;
    client->setObjectName(QStringLiteral("clientArea"));
    setCentralWidget(client);
    client->installEventFilter(this);

    Picture1 = new PageView(history::firstPage(), QStringLiteral("First page  Πρώτο μέρος"), client);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture2 = new PageView(history::secondPage(), QStringLiteral("Second page  Δεύτερο μέρος"), client);
    Picture2->setObjectName(QStringLiteral("Picture2"));

    resize(1024, 720);
    Form_Load();
}

QRect Storiopt::clientArea() {
    // A hidden window does not lay out its central widget when its geometry
    // changes (the main menu sizes this screen before showing it); let the
    // layout catch up so that the page fits the size just set.
    if (!isVisible()) {
        if (QLayout* frame = layout()) {
            frame->invalidate();
            frame->activate();
        }
    }
    return centralWidget()->rect();
}

void Storiopt::showPage(QWidget* shown, QWidget* hidden) {
    hidden->hide();
    shown->setGeometry(clientArea());
    if (auto* page = qobject_cast<QScrollArea*>(shown)) page->verticalScrollBar()->setValue(0);
    shown->show();
    shown->setFocus();
}

void Storiopt::Form_Load() { showPage(Picture1, Picture2); }

void Storiopt::protomeros_Click() { showPage(Picture1, Picture2); }

void Storiopt::defteromeros_Click() { showPage(Picture2, Picture1); }

void Storiopt::klisimo_Click() { hide(); }

void Storiopt::sizeVisiblePage() {
    const QRect area = centralWidget()->rect();
    for (QWidget* page : {Picture1, Picture2})
        if (!page->isHidden()) page->setGeometry(area);
}

void Storiopt::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    sizeVisiblePage();
}

bool Storiopt::eventFilter(QObject* watched, QEvent* event) {
    if (watched == centralWidget() && event->type() == QEvent::Resize) sizeVisiblePage();
    return QMainWindow::eventFilter(watched, event);
}
