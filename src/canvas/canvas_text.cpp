#include <QHash>

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
// advances and what the painter draws agree on any screen. Measuring needs
// the image's resolution, not the operations still waiting to be painted.
QFontMetricsF Canvas::metrics(const QFont& font) const {
    syncImage();
    return QFontMetricsF(font, &image_);
}

namespace {

// The advance of one line of text in a font at a resolution. Graphs measure
// each label several times while placing it, and again at every redraw:
// shaping the same text again costs more than painting it. The advances of
// the last font used are kept (never destroyed: fonts must not outlive the
// application).
double advanceOf(const QFontMetricsF& fm, const QFont& font, int dpi, const QString& text) {
    struct Kept {
        QFont font;
        int dpi = 0;
        QHash<QString, double> advances;
    };
    static auto* kept = new Kept;
    if (kept->dpi != dpi || kept->font != font || kept->advances.size() >= 4096) {
        kept->font = font;
        kept->dpi = dpi;
        kept->advances.clear();
    }
    auto it = kept->advances.constFind(text);
    if (it == kept->advances.constEnd()) it = kept->advances.insert(text, fm.horizontalAdvance(text));
    return *it;
}

}  // namespace

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
        const Follows follows = textAnchor_ != TextAnchor{} ? Follows{}
                                : recordedHere              ? Follows{TextLink::Below, 0, fy - trail_.back().y}
                                                            : followedText(fx, fy);
        record(TextOp{fx, fy, lines[i], font, state_.foreColor, areaWidth(), areaHeight(), textHalo_, follows.link,
                      follows.behind, follows.below, recordedGround_.onGround(fx, fy), textAnchor_});
        const bool onRow = follows.link == TextLink::SameRow || follows.link == TextLink::After;
        const double rowLeft = onRow ? trail_.back().rowLeft : fx;
        if (trail_.size() == static_cast<std::size_t>(TextPlaces::kKept)) trail_.erase(trail_.begin());
        trail_.push_back({fx, fy, rowLeft, fm.lineSpacing() / areaHeight()});
        recordedHere = true;
    }
    if (end == PrintEnd::NextLine) {
        currentX_ = s.left;
        currentY_ = y + lineStep;
    } else {
        currentX_ = x + advanceOf(fm, font, image_.logicalDpiY(), lines.back()) * s.width / areaWidth();
        currentY_ = y;
    }
    // An empty print on the same line leaves the pen, and what it follows, as they were.
    const bool penStays = end == PrintEnd::SameLine && lines.size() == 1 && lines.front().isEmpty();
    if (!penStays) pen_ = {fracX(currentX_), fracY(currentY_), end == PrintEnd::SameLine && !lines.back().isEmpty()};

    notePrinted(text);
}

Canvas::Follows Canvas::followedText(double x, double y) const {
    if (trail_.empty()) return {};
    const TextTrail& last = trail_.back();
    // Places computed from the pen or from the same expression differ
    // by rounding only.
    constexpr double kSamePixels = 0.01;
    const double w = areaWidth(), h = areaHeight();
    if (pen_.sameLine && std::fabs(y - pen_.y) * h < kSamePixels && std::fabs(x - pen_.x) * w < kSamePixels)
        return {TextLink::After, 0, 0.0};
    if (std::fabs(y - last.y) * h < kSamePixels) return {TextLink::SameRow, 0, 0.0};
    // Where print() left the pen or a little under it, at any left: the next
    // of centred or indented lines, or the next band of a title block (a
    // graph's axis title under its index line, a small gap between).
    const double underPen = (y - pen_.y) * h;
    if (!pen_.sameLine && y > last.y && underPen > -kSamePixels && underPen <= 0.5 * last.lineStep * h)
        return {TextLink::Below, 0, y - last.y};
    // Stacked by hand: at the left of a row printed shortly before, a line
    // or a little more under it (a text elsewhere may come between, as an
    // axis title between a graph's title and the line under it).
    for (int behind = 0; behind < static_cast<int>(trail_.size()); ++behind) {
        const TextTrail& t = trail_[trail_.size() - 1 - static_cast<std::size_t>(behind)];
        const double below = y - t.y;
        if (std::fabs(x - t.rowLeft) * w < kSamePixels && below >= 0.95 * t.lineStep && below <= 1.6 * t.lineStep)
            return {TextLink::Below, behind, below};
    }
    return {};
}

double Canvas::textWidth(const QString& text) const {
    const QFont font = currentFont();
    const QFontMetricsF fm = metrics(font);
    const int dpi = image_.logicalDpiY();
    double widest = 0.0;
    QString cleaned = text;
    cleaned.remove(QLatin1Char('\r'));
    for (const QString& lineText : cleaned.split(QLatin1Char('\n')))
        widest = std::max(widest, advanceOf(fm, font, dpi, lineText));
    return widest * std::fabs(userPerPixelX());
}

double Canvas::textHeight(const QString& text) const {
    const auto lines = text.count(QLatin1Char('\n')) + 1;
    return metrics(currentFont()).lineSpacing() * static_cast<double>(lines) * std::fabs(userPerPixelY());
}
