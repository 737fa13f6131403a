#include "canvas/text_flow.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QRectF>

#include <algorithm>

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

double grownToFit(const TextOp& text, double magnify, double width, const ReplayArea& area) {
    // Advances grow a little out of proportion with the type: a margin
    // keeps the smaller text inside.
    constexpr double kMargin = 0.98;
    if (magnify <= 1.0) return magnify;
    double room = area.width;
    const double across = text.link == TextLink::None ? text.anchor.across : 0.0;
    if (across > 0.0) {
        const double mark = text.x * area.width + across * width / magnify;
        room = std::min(room, mark / across);
        if (across < 1.0) room = std::min(room, (area.width - mark) / (1.0 - across));
    }
    if (width <= room) return magnify;
    return std::max(1.0, magnify * kMargin * std::max(0.0, room) / width);
}

bool crowdedLabel(const TextOp& text, const QRectF& box, double magnify, std::vector<QRectF>& labels) {
    if (magnify == 1.0 || text.link != TextLink::None || text.anchor.across == 0.0) return false;
    // Touching above or below is not running into; side by side, figures
    // need a little gap, or "90" and "100" read as "90100".
    const QRectF inner = box.adjusted(-2, 1, 2, -1);
    for (const QRectF& other : labels)
        if (inner.intersects(other)) return true;
    labels.push_back(box);
    return false;
}

GrownText grownText(const TextOp& text, const ReplayArea& area, const QPaintDevice& device, double magnify) {
    GrownText g;
    double width = 0.0;
    g.grown = fittedGrowth(text, magnify, area, [&](double grown) {
        g.font = paintedFont(text, area, device, grown);
        width = QFontMetricsF(g.font, &device).horizontalAdvance(text.text);
        return width;
    });
    const QFontMetricsF fm(g.font, &device);
    g.size = QSizeF(width, fm.ascent() + fm.descent());
    return g;
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
        const GrownText g = grownText(*t, area, device, magnify);
        const QSizeF size = g.size;
        const QPointF at = placeText(*t, size, g.grown, area, magnify, placed);
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

QPointF placeText(const TextOp& text, QSizeF size, double grown, const ReplayArea& area, double magnify,
                  TextPlaces& placed) {
    const QPointF designed(text.x * area.width, text.y * area.height);
    QPointF at = designed;
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
    if (magnify != 1.0 && text.link == TextLink::None && grown > 0.0) {
        const QSizeF more = size - size / grown;
        at -= QPointF(more.width() * text.anchor.across, more.height() * text.anchor.down);
    }
    // A text that starts inside the area and grew past an edge comes back
    // inside (a continuation stays after the text it continues; the lines
    // of a block rise together, see textLifts).
    if (magnify != 1.0 && text.link != TextLink::After) {
        auto inside = [](double from, double extent, double designedFrom, double end) {
            if (designedFrom < 0.0 || designedFrom >= end) return from;
            return std::max(0.0, std::min(from, end - extent));
        };
        at.setX(inside(at.x(), size.width(), designed.x(), area.width));
        if (text.link == TextLink::None) at.setY(inside(at.y(), size.height(), designed.y(), area.height));
    }
    placed.add({at, at.x() + size.width(), at.y() + size.height()});
    return at;
}

}  // namespace canvas_ops
