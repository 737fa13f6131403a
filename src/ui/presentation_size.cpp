#include "ui/presentation_size.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QSettings>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "canvas/canvas.h"
#include "canvas/presentation_scale.h"
#include "ui/window_placement.h"

namespace {

constexpr const char* kSizeKey = "presentation/size";

struct Watcher {
    QPointer<QObject> owner;
    std::function<void(int)> changed;
};

std::vector<Watcher>& watchers() {
    static std::vector<Watcher> list;
    return list;
}

int nearestSize(int percent) {
    const auto& sizes = presentationSizes();
    return *std::min_element(sizes.begin(), sizes.end(),
                             [percent](int a, int b) { return std::abs(a - percent) < std::abs(b - percent); });
}

QFont grown(QFont font, double ratio) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * ratio);
    else if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * ratio + 0.5)));
    return font;
}

// Brings every window made so far from one scale to another: the program's
// font, every font a control set for itself, every drawing; then each
// shown window is fitted to its screen again.
void applyScale(double from, double to) {
    setPresentationScale(to);
    const double ratio = to / from;
    if (ratio == 1.0) return;
    // Read every font before changing any: a child's font follows its
    // parent's, which must not grow it twice.
    std::vector<std::pair<QPointer<QWidget>, QFont>> ownFonts;
    for (QWidget* w : QApplication::allWidgets())
        if (w->testAttribute(Qt::WA_SetFont)) ownFonts.emplace_back(w, grown(w->font(), ratio));
    QApplication::setFont(grown(QApplication::font(), ratio));
    for (auto& [w, font] : ownFonts)
        if (w) w->setFont(font);
    for (QWidget* w : QApplication::allWidgets())
        if (qobject_cast<Canvas*>(w)) w->update();
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible()) keepWindowOnScreen(*w);
}

int& sizeHeld() {
    static int percent = 100;
    return percent;
}

void applySize(int percent) {
    const int before = sizeHeld();
    sizeHeld() = nearestSize(percent);
    applyScale(before / 100.0, sizeHeld() / 100.0);
    std::erase_if(watchers(), [](const Watcher& w) { return w.owner.isNull(); });
    const auto list = watchers();  // a listener may add another
    for (const Watcher& w : list)
        if (w.owner) w.changed(sizeHeld());
}

}  // namespace

const std::vector<int>& presentationSizes() {
    static const std::vector<int> sizes{100, 125, 150, 175, 200};
    return sizes;
}

int presentationSize() { return sizeHeld(); }

void setPresentationSize(int percent) {
    applySize(percent);
    programSettings()->setValue(QString::fromLatin1(kSizeKey), sizeHeld());
}

void growPresentationSize() {
    const auto& sizes = presentationSizes();
    const auto next = std::upper_bound(sizes.begin(), sizes.end(), sizeHeld());
    if (next != sizes.end()) setPresentationSize(*next);
}

void shrinkPresentationSize() {
    const auto& sizes = presentationSizes();
    const auto here = std::lower_bound(sizes.begin(), sizes.end(), sizeHeld());
    if (here != sizes.begin()) setPresentationSize(*std::prev(here));
}

void restorePresentationSize() {
    bool ok = false;
    const int kept = programSettings()->value(QString::fromLatin1(kSizeKey), 100).toInt(&ok);
    applySize(ok ? kept : 100);
}

void watchPresentationSize(QObject* owner, std::function<void(int)> changed) {
    watchers().push_back({owner, std::move(changed)});
}

void wrapWhenShownLarger(QObject* owner, const std::vector<QLabel*>& labels) {
    std::vector<QPointer<QLabel>> kept(labels.begin(), labels.end());
    auto wrap = [kept](int percent) {
        for (const QPointer<QLabel>& label : kept)
            if (label) label->setWordWrap(percent > 100);
    };
    wrap(presentationSize());
    watchPresentationSize(owner, wrap);
}
