#pragma once
#include <QPointF>
#include <QString>

class QFont;
class QPainter;

// Paints a line of text in the painter's font and pen with its baseline
// starting at `base`, pixel for pixel as QPainter::drawText() does. On raster
// images the glyphs a text is shaped into are kept, by text, font and
// resolution: a figure paints the same texts at every redraw, and shaping
// them costs more than painting their glyphs. Vector devices (SVG, PDF,
// paper) get the text as text.
void paintTextLine(QPainter& painter, const QPointF& base, const QString& text);

// Gives the painter the font at this size. Texts painted one after another
// mostly share their font, so the last one made is kept.
void setPaintedFont(QPainter& painter, const QFont& font, double points);
