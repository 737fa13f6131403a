#include "app/history_page_view.h"

#include <QEvent>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "app/history_pages.h"
#include "canvas/fonts.h"
#include "canvas/palette.h"

namespace {

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
                       "border-color: %1;\"><tr>")
                       .arg(palette::pages::tableBorder.name());
    QStringList spoken;
    QStringList spokenHeadings;
    for (const auto& heading : headings) {
        const QString top = fromUtf8(heading.top);
        const QString bottom = fromUtf8(heading.bottom);
        html += QStringLiteral("<th align=\"center\" style=\"background-color: %1;\">%2<br>%3</th>")
                    .arg(palette::pages::tableHead.name(), top.toHtmlEscaped(), bottom.toHtmlEscaped());
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
            html += QStringLiteral("<td align=\"center\">%1</td>")
                        .arg(cell.isEmpty() ? QStringLiteral("&nbsp;") : cell.toHtmlEscaped());
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

}  // namespace

struct HistoryPageView::ScaledLabel {
    QLabel* label;
    double points;  // size at scale 1
};

struct HistoryPageView::Piece {
    QWidget* box;
    bool opensSection;
};

HistoryPageView::HistoryPageView(const history::HistoryPage& page, const QString& name, QWidget* parent)
    : QScrollArea(parent) {
    setUpScrolling(name);
    createSheet();
    createColumns();
    addBlocks(page);
    outer_->addLayout(columns_, 1);
    setSpacings();
    setWidget(sheet_);
    arrange();
}

void HistoryPageView::setUpScrolling(const QString& name) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll the page  Κύλιση της σελίδας"));
    horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll the page sideways  Κύλιση της σελίδας οριζόντια"));
    setFocusPolicy(Qt::StrongFocus);
}

void HistoryPageView::createSheet() {
    sheet_ = new QWidget;
    sheet_->setAutoFillBackground(true);
    QPalette pal = sheet_->palette();
    pal.setColor(QPalette::Window, Qt::white);
    pal.setColor(QPalette::WindowText, palette::pages::text);
    sheet_->setPalette(pal);
    setPalette(pal);
}

void HistoryPageView::createColumns() {
    outer_ = new QVBoxLayout(sheet_);
    columns_ = new QHBoxLayout;
    left_ = new QVBoxLayout;
    right_ = new QVBoxLayout;
    for (QVBoxLayout* column : {left_, right_}) {
        column->setContentsMargins(0, 0, 0, 0);
        column->addStretch(1);
        columns_->addLayout(column, 1);
    }
}

void HistoryPageView::addBlocks(const history::HistoryPage& page) {
    bodyFont_ = roleFont(FontRole::Reading, kBodyPoints);
    const QFont titleFont = roleFont(FontRole::Reading, 20.0, true);
    const QFont sectionFont = roleFont(FontRole::Reading, 15.0, true);
    QFont formulaFont = roleFont(FontRole::Reading, 15.0);
    formulaFont.setItalic(true);

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
        case history::BlockKind::Title: break;
        }
        previous = block.kind;
    }
}

HistoryPageView::~HistoryPageView() = default;

bool HistoryPageView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Resize) arrange();
    return QScrollArea::viewportEvent(event);
}

QLabel* HistoryPageView::keep(QLabel* label) {
    labels_.push_back({label, label->font().pointSizeF()});
    return label;
}

int HistoryPageView::gap() const { return QFontMetrics(bodyFont_).height(); }

// Average advance of running Greek text; the font's own average width
// overstates it, which would make lines far longer than intended.
double HistoryPageView::charWidth() const {
    static const QString sample = QStringLiteral("η γωνία διάθλασης είναι ανάλογη της γωνίας πρόσπτωσης, ");
    return std::max(1.0, QFontMetricsF(bodyFont_).horizontalAdvance(sample) / double(sample.size()));
}

// A large window (a full screen) gets a somewhat larger type, so that
// the page fills it without growing lines past a readable length. The
// page's own size is used, not the viewport's, which shrinks and grows
// with the scroll bar and would make the choice flicker.
void HistoryPageView::applyScale() {
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

QVBoxLayout* HistoryPageView::startPiece(bool opensSection) {
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setSpacing(gap() / 2);
    pieces_.push_back({box, opensSection});
    left_->insertWidget(left_->count() - 1, box);
    return layout;
}

void HistoryPageView::setSpacings() {
    const int spacing = gap();
    outer_->setSpacing(spacing);
    for (QVBoxLayout* column : {left_, right_}) column->setSpacing(spacing / 2);
    // A section's heading stands a full line below the text before it,
    // unless it heads a column.
    for (std::size_t k = 0; k < pieces_.size(); ++k) {
        const bool headsColumn = k == 0 || k == split_;
        pieces_[k].box->layout()->setSpacing(spacing / 2);
        pieces_[k].box->layout()->setContentsMargins(0, pieces_[k].opensSection && !headsColumn ? spacing / 2 : 0, 0,
                                                     0);
    }
}

// Two columns when the window is wide enough for two comfortable lines
// and the whole page then fits without scrolling (a reader should not
// have to scroll back up for the second column); otherwise one column.
// With two, the split makes the columns most nearly the same height.
HistoryPageView::Columns HistoryPageView::chooseColumns(int usable, int margin) const {
    const int spacing = gap();
    const int longestLine = int(92 * charWidth());   // a comfortable line of text
    const int shortestLine = int(50 * charWidth());  // narrower columns read badly
    const Columns one{pieces_.size(), std::min(usable, longestLine)};
    if (usable < 2 * shortestLine + spacing * 2) return one;

    const int twoWidth = std::min(usable, 2 * longestLine + spacing * 2);
    const int columnWidth = (twoWidth - spacing * 2) / 2;
    std::vector<int> heights;
    for (const Piece& piece : pieces_) heights.push_back(piece.box->heightForWidth(columnWidth) + spacing / 2);
    int best = std::numeric_limits<int>::max();
    std::size_t bestSplit = pieces_.size();
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
    if (2 * margin + titleHeight + best <= viewport()->height()) return {bestSplit, twoWidth};
    return one;
}

void HistoryPageView::arrange() {
    if (pieces_.empty()) return;
    applyScale();
    const int available = std::max(1, viewport()->width());
    const int spacing = gap();
    const int margin = std::clamp(available / 30, 8, 48);
    const int usable = std::max(1, available - 2 * margin);
    const auto [split, textWidth] = chooseColumns(usable, margin);
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
