#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/canvas_limits.h"
#include "canvas/fonts.h"
#include "canvas/presentation_scale.h"

using namespace canvas_limits;
using namespace canvas_ops;

// Text: the font, printing at the pen position and measuring in user units.

void Canvas::setFontSize(double points) {
    if (std::isfinite(points) && points > 0) fontSize_ = std::clamp(points, kMinFontPoints, kMaxFontPoints);
}

void Canvas::setFontBold(bool bold) { fontBold_ = bold; }

// Laid out at the designed size whatever the presentation size: the
// figure's user coordinates, its summary and its exports stay the same, and
// only the screen paints the texts larger (canvas_replay.cpp).
QFont Canvas::currentFont() const { return designedRoleFont(fontRole_, fontSize_, fontBold_); }

// Text is measured on the image it is painted on, so that what print()
// advances and what the painter draws agree on any screen.
QFontMetricsF Canvas::metrics(const QFont& font) const { return QFontMetricsF(font, &image()); }

void Canvas::print(const QString& text, PrintEnd end) {
    if (!finite({currentX_, currentY_, fracX(currentX_), fracY(currentY_)})) {
        skip();
        return;
    }
    const UserScale s = userScale();
    const QFont font = currentFont();
    const QFontMetricsF fm = metrics(font);
    // One line down the screen, in user units (negative on a y-up scale).
    const double lineStep = fm.lineSpacing() * s.height / areaHeight();
    QString cleaned = text;
    cleaned.remove(QLatin1Char('\r'));
    const QStringList lines = cleaned.split(QLatin1Char('\n'));
    double x = currentX_;
    double y = currentY_;
    bool recordedHere = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            x = s.left;
            y += lineStep;
        }
        if (lines[i].isEmpty()) continue;
        const double fx = fracX(x), fy = fracY(y);
        double below = trail_ ? fy - trail_->y : 0.0;
        const TextLink link = recordedHere ? TextLink::Below : linkToLastText(fx, fy, below);
        record(TextOp{fx, fy, lines[i], font, state_.foreColor, areaWidth(), areaHeight(), textHalo_, link, below,
                      flow_.onGround(fx, fy)});
        const bool onRow = trail_ && (link == TextLink::SameRow || link == TextLink::After);
        trail_ = TextTrail{fx, fy, onRow ? trail_->rowLeft : fx, fm.lineSpacing() / areaHeight(), fx, fy, false};
        recordedHere = true;
    }
    if (end == PrintEnd::NextLine) {
        currentX_ = s.left;
        currentY_ = y + lineStep;
    } else {
        currentX_ = x + fm.horizontalAdvance(lines.back()) * s.width / areaWidth();
        currentY_ = y;
    }
    // An empty print on the same line leaves the pen, and what it follows, as they were.
    const bool penStays = end == PrintEnd::SameLine && lines.size() == 1 && lines.front().isEmpty();
    if (trail_ && !penStays) {
        trail_->penX = fracX(currentX_);
        trail_->penY = fracY(currentY_);
        trail_->penAfter = end == PrintEnd::SameLine && !lines.back().isEmpty();
    }

    notePrinted(text);
}

TextLink Canvas::linkToLastText(double x, double y, double& below) const {
    if (!trail_) return TextLink::None;
    const TextTrail& last = *trail_;
    // Places computed from the pen or from the same expression differ
    // by rounding only.
    constexpr double kSamePixels = 0.01;
    const double w = areaWidth(), h = areaHeight();
    below = y - last.y;
    const bool atPenY = std::fabs(y - last.penY) * h < kSamePixels;
    if (last.penAfter && atPenY && std::fabs(x - last.penX) * w < kSamePixels) return TextLink::After;
    if (std::fabs(below) * h < kSamePixels) return TextLink::SameRow;
    if (below <= 0.0) return TextLink::None;
    // Where print() left the pen, at any left: the next of centred or
    // indented lines.
    if (atPenY && !last.penAfter) return TextLink::Below;
    // Stacked by hand: at the left of the row above, a line or a little
    // more under it.
    const bool sameLeft = std::fabs(x - last.rowLeft) * w < kSamePixels;
    return sameLeft && below >= 0.95 * last.lineStep && below <= 1.6 * last.lineStep ? TextLink::Below : TextLink::None;
}

double Canvas::textWidth(const QString& text) const {
    const QFontMetricsF fm = metrics(currentFont());
    double widest = 0.0;
    QString cleaned = text;
    cleaned.remove(QLatin1Char('\r'));
    for (const QString& lineText : cleaned.split(QLatin1Char('\n')))
        widest = std::max(widest, fm.horizontalAdvance(lineText));
    return widest * std::fabs(userPerPixelX());
}

double Canvas::textHeight(const QString& text) const {
    const auto lines = text.count(QLatin1Char('\n')) + 1;
    return metrics(currentFont()).lineSpacing() * static_cast<double>(lines) * std::fabs(userPerPixelY());
}
