#include "canvas/text_runs.h"

#include <QGlyphRun>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

struct ShapeKey {
    QString text;
    QFont font;
    int dpi;
    Qt::LayoutDirection direction;
    bool operator==(const ShapeKey& other) const {
        return text == other.text && font == other.font && dpi == other.dpi && direction == other.direction;
    }
};

size_t qHash(const ShapeKey& key, size_t seed = 0) {
    return qHashMulti(seed, key.text, key.font, key.dpi, static_cast<int>(key.direction));
}

// More than a figure shows at once; past it the texts are shaped afresh.
constexpr qsizetype kKeptTexts = 4096;

// The glyph runs of a text shaped in the painter's font, placed from its
// origin on the baseline.
const QList<QGlyphRun>& shaped(QPainter& painter, const QString& text) {
    // Never destroyed: the runs hold fonts, which must not outlive the application.
    static auto* kept = new QHash<ShapeKey, QList<QGlyphRun>>;
    ShapeKey key{text, painter.font(), painter.device()->logicalDpiY(), painter.layoutDirection()};
    if (const auto it = kept->constFind(key); it != kept->constEnd()) return *it;
    if (kept->size() >= kKeptTexts) kept->clear();
    QTextLayout layout(text, key.font, painter.device());
    QTextOption option;
    option.setTextDirection(key.direction);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    QList<QGlyphRun> runs = layout.glyphRuns();
    for (QGlyphRun& run : runs) {
        QList<QPointF> at = run.positions();
        for (QPointF& p : at) p.ry() -= line.ascent();
        run.setPositions(at);
    }
    return *kept->insert(std::move(key), std::move(runs));
}

bool plainLine(const QString& text) {
    // Tabs and other controls are laid out by rules of their own.
    return std::none_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x20; });
}

}  // namespace

void paintTextLine(QPainter& painter, const QPointF& base, const QString& text) {
    if (painter.paintEngine()->type() != QPaintEngine::Raster || !plainLine(text)) {
        painter.drawText(base, text);
        return;
    }
    // drawText() starts the glyphs at x cut to a 64th of a pixel and places
    // each from there in 64ths: so do these, to land on the same pixels.
    const QPointF origin(std::trunc(base.x() * 64.0) / 64.0, base.y());
    for (const QGlyphRun& run : shaped(painter, text)) {
        QGlyphRun placed = run;
        QList<QPointF> at = run.positions();
        for (QPointF& p : at) p += origin;
        placed.setPositions(at);
        painter.drawGlyphRun(QPointF(), placed);
    }
}

// The font a text is painted in. Texts painted one after another mostly
// share their font and size, and a font made afresh looks its face up again
// (twice: to be measured and to be painted), so the last one is kept, and
// the painter keeps its own while it is the same.
void setPaintedFont(QPainter& painter, const QFont& font, double points) {
    struct Last {
        QFont font, sized;
        double points = -1.0;
    };
    static auto* last = new Last;  // never destroyed: fonts must not outlive the application
    if (points != last->points || font != last->font) {
        last->font = font;
        last->points = points;
        last->sized = font;
        last->sized.setPointSizeF(points);
    }
    if (painter.font() != last->sized) painter.setFont(last->sized);
}
