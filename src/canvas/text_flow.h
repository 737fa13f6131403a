#pragma once
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <optional>
#include <vector>

#include "canvas/recorded_ops.h"

// Texts that belong together stay apart where a screen shows them larger
// than designed: how each recorded text follows the ones before it, where
// it is painted after them, and the box (ground) it sits on.

namespace canvas_ops {

// Where the last few texts were painted, the newest first, for the texts
// that follow them.
struct TextPlaces {
    struct Place {
        QPointF topLeft;
        double right = 0.0;   // where the text ends
        double bottom = 0.0;  // and the bottom of its letters
    };
    static constexpr int kKept = 8;
    std::array<Place, kKept> newest{};
    int count = 0;
    void add(const Place& place);
};

// What painting has to know of the operations before the next one. A text
// grown on the screen must not run off the box it sits on (a readout, a
// legend, a label's ground): a filled box, its frame, and the lines and
// texts recorded on it right after it make a ground, which grows with its
// texts as painted, its lines keeping to the rows of the texts after them.
struct TextFlow {
    TextPlaces placed;
    struct Ground {
        std::vector<BoxOp> boxes;      // the filled box first, then its frame
        std::vector<Op> onIt;          // lines and texts, in order
        TextPlaces before;             // where the texts were before its first text
        std::size_t labelsBefore = 0;  // and how many labels were painted
        QRectF painted;                // a ground only for grown texts: as far as filled
    } ground;
    // Where the last text was painted and the height of its letters above
    // the base line; none when it was left out.
    struct Painted {
        QRectF box;
        double ascent = 0.0;
    };
    std::optional<Painted> lastText;
    // Whether a text at this designed place would sit on the present ground.
    bool onGround(double x, double y) const;
    // How much higher each text, in the order recorded, is painted than
    // its block puts it (see textLifts), and how many were painted.
    std::vector<double> lifts;
    std::size_t texts = 0;
    std::vector<QRectF> labels;  // where the labels beside marks were painted
};

// How much higher each text is painted, in the order recorded, so that a
// block of lines grown past the bottom of the area is seen whole: the
// block is raised by what it runs over, but never above the top. A text
// alone, and the texts on a ground, stay where they are.
std::vector<double> textLifts(const std::vector<Op>& ops, const ReplayArea& area, double magnify,
                              const QPaintDevice& device);

// Where a text of this painted size (advance, ascent + descent), grown
// `grown` times, has its top-left corner when texts are painted `magnify`
// times their designed size: as designed at 1; otherwise after the text it
// follows by `magnify` times the designed distance, or, following none,
// grown about its anchor; and a text that starts inside the area and grew
// past an edge comes back inside. Adds this text to the places.
QPointF placeText(const TextOp& text, QSizeF size, double grown, const ReplayArea& area, double magnify,
                  TextPlaces& placed);

// How many times its designed size a text is painted when texts are
// painted `magnify` times larger and this one would then be `width` wide:
// no wider than the area (a title is read whole, if a little smaller), and
// a label beside a mark no wider than the room between the mark and the
// edge it grows towards; but never smaller than designed.
double grownToFit(const TextOp& text, double magnify, double width, const ReplayArea& area);
// The same, measured again at each smaller size until it fits (advances do
// not shrink quite in proportion): widthAt(g) gives the text's width at g
// times its designed size, and is last called with the factor returned.
template <typename WidthAt>
double fittedGrowth(const TextOp& text, double magnify, const ReplayArea& area, WidthAt widthAt) {
    double grown = magnify;
    double width = widthAt(grown);
    for (int k = 0; k < 3; ++k) {
        const double smaller = grownToFit(text, grown, width, area);
        if (smaller == grown) break;
        grown = smaller;
        width = widthAt(grown);
    }
    return grown;
}

// Whether a label beside a mark, painted in this box, is left out because
// it would run into a label painted before it (labels only run into each
// other when grown: every second one of a crowded axis goes). Adds it to
// the labels when it is painted.
bool crowdedLabel(const TextOp& text, const QRectF& box, double magnify, std::vector<QRectF>& labels);

// The type size a text is painted in, `magnify` times its size on the
// area, on the device; and that font.
double paintedTextPoints(const TextOp& text, const ReplayArea& area, const QPaintDevice& device, double magnify);
QFont paintedFont(const TextOp& text, const ReplayArea& area, const QPaintDevice& device, double magnify);

// A text as painted when texts are painted `magnify` times larger: its
// font, how many times its designed size (see grownToFit) and its size.
struct GrownText {
    QFont font;
    double grown;
    QSizeF size;
};
GrownText grownText(const TextOp& text, const ReplayArea& area, const QPaintDevice& device, double magnify);

}  // namespace canvas_ops
