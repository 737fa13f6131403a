#include <QFontMetricsF>
#include <QPaintDevice>
#include <QRectF>

#include <algorithm>

#include "canvas/text_flow.h"

// Where grown texts go: after the texts they follow, and a block of lines
// raised where it would run past the bottom of the area.

namespace canvas_ops {

double paintedTextPoints(const TextOp& o, const ReplayArea& area, const QPaintDevice& device, double magnify) {
    // Points become pixels at the device's resolution, but the figure is
    // laid out in the screen's pixels: a printer at 1200 dots per inch
    // would otherwise get texts twelve times too large for the lines around
    // them.
    return paintedPoints(o, area.width, area.height) * magnify *
           (static_cast<double>(area.layoutDpiY) / std::max(1, device.logicalDpiY()));
}

QFont paintedFont(const TextOp& o, const ReplayArea& area, const QPaintDevice& device, double magnify) {
    QFont font = o.font;
    font.setPointSizeF(paintedTextPoints(o, area, device, magnify));
    return font;
}

std::vector<double> textLifts(const std::vector<Op>& ops, const ReplayArea& area, double magnify,
                              const QPaintDevice& device) {
    struct Block {
        double top, bottom;
        int lines = 0;
        bool onGround = false;
    };
    std::vector<Block> blocks;
    std::vector<std::size_t> blockOf;                     // each text's block
    std::array<std::size_t, TextPlaces::kKept> recent{};  // the blocks of the newest texts
    TextPlaces placed;
    for (const Op& op : ops) {
        const auto* t = std::get_if<TextOp>(&op);
        if (!t) continue;
        const QFontMetricsF fm(paintedFont(*t, area, device, magnify), &device);
        const QSizeF size(fm.horizontalAdvance(t->text), fm.ascent() + fm.descent());
        const QPointF at = placeText(*t, size, area, magnify, placed);
        const bool follows = t->link != TextLink::None && t->behind >= 0 && t->behind < placed.count - 1;
        if (!follows) blocks.push_back({at.y(), at.y() + size.height()});
        const std::size_t b = follows ? recent[static_cast<std::size_t>(t->behind)] : blocks.size() - 1;
        Block& block = blocks[b];
        block.top = std::min(block.top, at.y());
        block.bottom = std::max(block.bottom, at.y() + size.height());
        ++block.lines;
        block.onGround = block.onGround || t->onGround;
        std::move_backward(recent.begin(), recent.end() - 1, recent.end());
        recent.front() = b;
        blockOf.push_back(b);
    }
    std::vector<double> lifts;
    lifts.reserve(blockOf.size());
    for (const std::size_t b : blockOf) {
        const Block& block = blocks[b];
        const bool raised = magnify != 1.0 && block.lines > 1 && !block.onGround;
        lifts.push_back(raised ? std::clamp(block.bottom - area.height, 0.0, std::max(0.0, block.top)) : 0.0);
    }
    return lifts;
}

void TextPlaces::add(const Place& place) {
    std::move_backward(newest.begin(), newest.end() - 1, newest.end());
    newest.front() = place;
    count = std::min(count + 1, kKept);
}

bool TextFlow::onGround(double x, double y) const {
    if (ground.boxes.empty()) return false;
    const BoxOp& b = ground.boxes.front();
    const QRectF r = QRectF(QPointF(b.x1, b.y1), QPointF(b.x2, b.y2)).normalized();
    return x >= r.left() && x <= r.right() && y >= r.top() && y <= r.bottom();
}

QPointF placeText(const TextOp& text, QSizeF size, const ReplayArea& area, double magnify, TextPlaces& placed) {
    QPointF at(text.x * area.width, text.y * area.height);
    // As designed, the designed places are exact: exports stay the same
    // whatever the texts before them.
    if (magnify != 1.0 && text.behind >= 0 && text.behind < placed.count) {
        const TextPlaces::Place& before = placed.newest[static_cast<std::size_t>(text.behind)];
        switch (text.link) {
        case TextLink::Below:
            // Type does not grow quite in proportion: never into the text above.
            at.setY(std::max(before.topLeft.y() + magnify * text.below * area.height, before.bottom));
            break;
        case TextLink::SameRow: at.setY(before.topLeft.y()); break;
        case TextLink::After: at = QPointF(before.right, before.topLeft.y()); break;
        case TextLink::None: break;
        }
    }
    // A text that starts inside the area and grew past its right edge comes
    // back inside (a continuation stays after the text it continues).
    if (magnify != 1.0 && text.link != TextLink::After && at.x() < area.width && at.x() + size.width() > area.width)
        at.setX(std::max(0.0, area.width - size.width()));
    placed.add({at, at.x() + size.width(), at.y() + size.height()});
    return at;
}

}  // namespace canvas_ops
