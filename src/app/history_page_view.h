#pragma once
#include <QFont>
#include <QScrollArea>

#include <cstddef>
#include <limits>
#include <vector>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace history {
struct HistoryPage;
}

// One page of the history: a white sheet in a scroll area. On a large
// window (a full screen) the text flows into two columns and the page needs
// no scrolling; otherwise it is one column that scrolls. Lines never grow
// past a readable length: extra width becomes margin.
class HistoryPageView : public QScrollArea {
public:
    HistoryPageView(const history::HistoryPage& page, const QString& name, QWidget* parent);
    ~HistoryPageView() override;

protected:
    bool viewportEvent(QEvent* event) override;

private:
    static constexpr double kBodyPoints = 13.0;

    struct ScaledLabel;  // a label and its type size at scale 1
    struct Piece;        // a piece of the page that is never split between columns

    void setUpScrolling(const QString& name);
    void createSheet();
    void createColumns();
    void addBlocks(const history::HistoryPage& page);
    QLabel* keep(QLabel* label);
    int gap() const;
    double charWidth() const;
    void applyScale();
    QVBoxLayout* startPiece(bool opensSection);
    void setSpacings();
    // Where the page's pieces go: the first piece of the right column (the
    // number of pieces for one column) and the width of the text.
    struct Columns {
        std::size_t split;
        int textWidth;
    };
    Columns chooseColumns(int usable, int margin) const;
    void arrange();

    QWidget* sheet_ = nullptr;
    QLabel* title_ = nullptr;
    QFont bodyFont_;
    QVBoxLayout* outer_ = nullptr;
    QHBoxLayout* columns_ = nullptr;
    QVBoxLayout* left_ = nullptr;
    QVBoxLayout* right_ = nullptr;
    std::vector<Piece> pieces_;
    std::vector<ScaledLabel> labels_;
    double scale_ = 1.0;
    std::size_t split_ = std::numeric_limits<std::size_t>::max();
};
