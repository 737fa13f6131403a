#include "ui/window_placement.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QScreen>
#include <QSettings>
#include <QTimer>
#include <QVariant>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <optional>

#include "ui/menu_rows.h"

namespace {

constexpr const char* kPlacedFrame = "placedFrame";
constexpr const char* kPlacedMargins = "placedFrameMargins";
constexpr const char* kAskedFrame = "askedFrame";  // where the program wants it
constexpr const char* kOwnPlace = "ownPlace";      // the pupil placed it himself
constexpr const char* kPlacesGroup = "windows";

// Moves and resizes made by the program itself while it places a window;
// anything else that moves a shown window is the pupil's doing.
int& placing() {
    static int depth = 0;
    return depth;
}
struct Placing {
    Placing() { ++placing(); }
    ~Placing() { --placing(); }
    Placing(const Placing&) = delete;
    Placing& operator=(const Placing&) = delete;
};

QString placeKey(const QWidget& window) {
    const QString name =
        window.objectName().isEmpty() ? QString::fromLatin1(window.metaObject()->className()) : window.objectName();
    return QString::fromLatin1(kPlacesGroup) + QLatin1Char('/') + name;
}

void rememberPlace(QWidget& window) {
    window.setProperty(kOwnPlace, true);
    programSettings()->setValue(placeKey(window), window.saveGeometry());
}

void placeAt(QWidget& window, const QRect& frame);

// The last frame a window manager really drew: the best guess for a window
// that has not been framed yet.
std::optional<QMargins>& lastSeenFrame() {
    static std::optional<QMargins> seen;
    return seen;
}

const QScreen* screenFor(const QWidget* window, std::optional<QPoint> near = std::nullopt) {
    if (near) {
        if (const QScreen* at = QGuiApplication::screenAt(*near)) return at;
    }
    if (window && window->isVisible() && window->screen()) return window->screen();
    return QGuiApplication::primaryScreen();
}

QRect areaOf(const QScreen* screen) {
    // Without any screen (which a running program never meets) a small
    // classroom projector is the safest assumption.
    return screen ? screen->availableGeometry() : QRect(0, 0, 1024, 700);
}

// Keeps a just-shown window inside the screen while the window manager
// frames and places it: the frame's size is only known some moments after
// the window is mapped, and a window manager may move it as well. After
// that short while the pupil may drag the window wherever he likes.
class ScreenKeeper : public QObject {
public:
    explicit ScreenKeeper(QWidget& window) : QObject(&window), window_(&window) { window.installEventFilter(this); }

    void shown() {
        since_.start();
        for (int delay : {0, 150, 500}) {
            QTimer::singleShot(delay, this, [this] {
                if (window_ && window_->isVisible()) keepWindowOnScreen(*window_);
            });
        }
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != window_ || !window_->isVisible() || busy_ || placing() > 0)
            return QObject::eventFilter(watched, event);
        const QEvent::Type type = event->type();
        const bool moved = type == QEvent::Move || type == QEvent::Resize;
        if (moved && since_.isValid() && since_.elapsed() < kSettleMs) {
            busy_ = true;
            keepWindowOnScreen(*window_);
            busy_ = false;
        } else if ((moved && event->spontaneous()) || type == QEvent::WindowStateChange) {
            // Past the moments of framing, what the window system reports
            // (a drag, a maximising) is the pupil's doing.
            rememberPlace(*window_);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static constexpr qint64 kSettleMs = 1500;
    QPointer<QWidget> window_;
    QElapsedTimer since_;
    bool busy_ = false;
};

ScreenKeeper& keeperOf(QWidget& window) {
    for (QObject* child : window.children())
        if (auto* keeper = dynamic_cast<ScreenKeeper*>(child)) return *keeper;
    return *new ScreenKeeper(window);
}

}  // namespace

QRect availableArea(const QWidget* window) { return areaOf(screenFor(window)); }

QMargins windowFrameMargins(const QWidget& window) {
    if (window.isVisible()) {
        if (const QWindow* handle = window.windowHandle()) {
            const QMargins real = handle->frameMargins();
            if (!real.isNull()) {
                lastSeenFrame() = real;
                return real;
            }
        }
    }
    if (lastSeenFrame()) return *lastSeenFrame();
    // A title bar holds one line of the system font with room round it.
    const int line = window.fontMetrics().height();
    const int border = std::max(4, line / 4);
    return {border, std::max(28, line * 2), border, border};
}

QRect outerRect(const QWidget& window) {
    if (window.isVisible() && window.windowHandle() && !window.windowHandle()->frameMargins().isNull())
        return window.frameGeometry();
    return window.geometry().marginsAdded(windowFrameMargins(window));
}

QRect titleBarAndMenus(const QMainWindow& window) {
    const QRect outer = outerRect(window);
    const QWidget* bar = window.menuWidget();
    const int bottom = bar ? bar->mapToGlobal(QPoint(0, bar->height())).y() : window.mapToGlobal(QPoint()).y();
    return QRect(outer.topLeft(), QPoint(outer.right(), bottom));
}

QRect leastCoveringPlace(QSize frameSize, const QRect& area, const std::vector<QRect>& keepClear) {
    const QSize size = frameSize.boundedTo(area.size());
    std::vector<QPoint> tried;
    for (const QRect& r : keepClear) {
        tried.push_back({r.right() + 1, r.top()});
        tried.push_back({r.left(), r.bottom() + 1});
        tried.push_back({r.left() - size.width(), r.top()});
        tried.push_back({r.left(), r.top() - size.height()});
    }
    const int right = area.right() + 1 - size.width();
    const int bottom = area.bottom() + 1 - size.height();
    for (const QPoint corner :
         {QPoint(right, area.top()), QPoint(right, bottom), QPoint(area.left(), bottom), area.topLeft()})
        tried.push_back(corner);

    QRect best;
    double bestCost = 0.0;
    for (const QPoint at : tried) {
        const QRect place = fitRectInside(QRect(at, size), area);
        double cost = 0.0;
        double weight = 1.0;
        for (auto it = keepClear.rbegin(); it != keepClear.rend(); ++it) {
            const QRect covered = place & *it;
            if (!covered.isEmpty()) cost += weight * static_cast<double>(covered.width()) * covered.height();
            weight *= 1.0 + static_cast<double>(area.width()) * area.height();
        }
        if (best.isNull() || cost < bestCost) {
            best = place;
            bestCost = cost;
        }
    }
    return best;
}

QRect clearPlace(QSize wanted, QSize least, const QRect& area, const std::vector<QRect>& mustStayClear,
                 const std::vector<QRect>& keepClear) {
    std::vector<QRect> all = mustStayClear;
    all.insert(all.end(), keepClear.begin(), keepClear.end());
    least = least.boundedTo(wanted);
    constexpr int kSteps = 8;
    for (int step = 0; step <= kSteps; ++step) {
        const QSize size(wanted.width() - (wanted.width() - least.width()) * step / kSteps,
                         wanted.height() - (wanted.height() - least.height()) * step / kSteps);
        const QRect place = leastCoveringPlace(size, area, all);
        if (std::none_of(mustStayClear.begin(), mustStayClear.end(),
                         [&place](const QRect& r) { return place.intersects(r); }))
            return place;
    }
    return leastCoveringPlace(least, area, all);
}

QRect controlsOnScreen(const QWidget& window) {
    QRect held;
    for (const QWidget* w : window.findChildren<QWidget*>()) {
        const bool control = qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QLineEdit*>(w) ||
                             qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QComboBox*>(w);
        if (control && w->isVisibleTo(&window) && w->window() == &window)
            held |= QRect(w->mapToGlobal(QPoint(0, 0)), w->size());
    }
    return held;
}

std::vector<QRect> workingParts(const QWidget& window) {
    if (!window.isVisible()) return {};
    const auto* main = qobject_cast<const QMainWindow*>(&window);
    return {main ? titleBarAndMenus(*main) : outerRect(window), controlsOnScreen(window)};
}

QRect fitRectInside(QRect rect, const QRect& area) {
    if (area.isEmpty()) return rect;
    rect.setWidth(std::min(rect.width(), area.width()));
    rect.setHeight(std::min(rect.height(), area.height()));
    rect.moveLeft(std::clamp(rect.left(), area.left(), area.right() + 1 - rect.width()));
    rect.moveTop(std::clamp(rect.top(), area.top(), area.bottom() + 1 - rect.height()));
    return rect;
}

namespace {

// Gives the window the place the pupil left it in, if he left it anywhere.
bool takeOwnPlace(QWidget& window) {
    if (window.isVisible() && window.property(kOwnPlace).toBool()) return true;  // where he left it
    const QByteArray saved = programSettings()->value(placeKey(window)).toByteArray();
    if (saved.isEmpty() || !window.restoreGeometry(saved)) return false;
    window.setProperty(kOwnPlace, true);
    // A screen unplugged since (a projector) leaves no window out of sight.
    if (!window.isMaximized() && !window.isFullScreen()) placeAt(window, outerRect(window));
    return true;
}

}  // namespace

void placeWindow(QWidget& window, const QRect& frame) {
    const Placing self;
    window.setProperty(kAskedFrame, frame);
    if (takeOwnPlace(window)) return;
    placeAt(window, frame);
}

std::unique_ptr<QSettings> programSettings() {
    // A program (or a test) that named no organisation still keeps its
    // settings apart from every other program's.
    const QString organisation = QCoreApplication::organizationName();
    return std::make_unique<QSettings>(organisation.isEmpty() ? QStringLiteral("diathlasi") : organisation,
                                       QCoreApplication::applicationName());
}

void resetWindowPlaces() {
    programSettings()->remove(QString::fromLatin1(kPlacesGroup));
    const Placing self;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->property(kOwnPlace).toBool()) continue;
        window->setProperty(kOwnPlace, QVariant());
        if (window->isMaximized() || window->isFullScreen())
            window->setWindowState(window->windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
        const QVariant asked = window->property(kAskedFrame);
        if (asked.isValid()) placeAt(*window, asked.toRect());
    }
}

namespace {

void placeAt(QWidget& window, const QRect& frame) {
    const Placing self;
    const QRect area = areaOf(screenFor(&window, frame.center()));
    const QMargins margins = windowFrameMargins(window);
    const QRect fitted = fitRectInside(frame, area);
    const QRect client = fitted.marginsRemoved(margins);
    // Kept so that the place can be given again once the real frame is known.
    window.setProperty(kPlacedFrame, fitted);
    window.setProperty(kPlacedMargins, QVariant::fromValue(margins));
    // A window that asks for more room than the screen has gets what there is.
    if (window.minimumWidth() > client.width() || window.minimumHeight() > client.height())
        window.setMinimumSize(std::min(window.minimumWidth(), client.width()),
                              std::min(window.minimumHeight(), client.height()));
    if (client != window.geometry()) window.setGeometry(client);
}

}  // namespace

void keepWindowOnScreen(QWidget& window) {
    // A maximised window is the window manager's to fit.
    if (window.isMaximized() || window.isFullScreen()) return;
    const Placing self;
    const QVariant lastPlace = window.property(kPlacedFrame);
    if (lastPlace.isValid() && window.property(kPlacedMargins).value<QMargins>() != windowFrameMargins(window)) {
        // Placed with a guessed frame that turned out otherwise.
        placeAt(window, lastPlace.toRect());
        return;
    }
    QRect frame = window.geometry().marginsAdded(windowFrameMargins(window));
    const bool placed = window.testAttribute(Qt::WA_Moved);
    // Never placed by the program: in the middle of the screen.
    if (!placed) frame.moveCenter(availableArea(&window).center());
    if (placed && areaOf(screenFor(&window, frame.center())).contains(frame)) return;
    placeAt(window, frame);
}

QRect screenShare(const QWidget& window, double left, double top, double width, double height) {
    const QRect area = availableArea(&window);
    auto part = [](int length, double share) { return static_cast<int>(std::lround(length * share)); };
    return {area.left() + part(area.width(), left), area.top() + part(area.height(), top), part(area.width(), width),
            part(area.height(), height)};
}

void limitToScreens(QWidget& window) {
    // Nothing beyond all the screens together can be seen, and a window's
    // backing store grows with its size: a window stretched to 8000×8000
    // would hold a quarter of a gigabyte for pixels nobody sees.
    QRect all;
    for (const QScreen* screen : QGuiApplication::screens()) all |= screen->geometry();
    if (all.isEmpty()) return;
    if (window.maximumSize() != all.size()) window.setMaximumSize(all.size());
}

void showOnScreen(QWidget& window, bool takeFocus) {
    const Placing self;
    if (auto* main = qobject_cast<QMainWindow*>(&window)) letMenusWrap(*main);
    limitToScreens(window);
    ScreenKeeper& keeper = keeperOf(window);
    keepWindowOnScreen(window);
    window.show();
    keepWindowOnScreen(window);  // the frame may be known now
    keeper.shown();
    window.raise();
    if (takeFocus) window.activateWindow();
}
