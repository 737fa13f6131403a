// A seeded storm of random pupil events against every screen the program
// can reach from its main menu, found by walking the windows and their
// controls by type, so that screens added later are stormed too.
// Usage: storm [events] [seed]       (STORM_TRACE=1 prints every event)
// After every event: the program has not ended except through END (which
// restarts it), no round of event handling took longer than the budget, and
// no canvas skipped a drawing with a non-finite coordinate. On a failure or
// a sanitizer finding the seed and the event are printed: they replay it.
#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/module1.h"
#include "canvas/canvas.h"
#include "ui/dialogs.h"
#include "ui/forms.h"
#include "ui/program_exit.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

namespace {

// A handler may take 200 ms; instrumented code runs several times slower,
// so the sanitizer build allows five times as much.
constexpr qint64 kBudgetMs = kSanitized ? 1000 : 200;
// Reading or writing a file the pupil chose (a figure as a PNG of a large
// window) gets five times as long again.
constexpr qint64 kFileBudgetMs = 5 * kBudgetMs;

// What the storm is doing, kept in a fixed buffer so that a crash handler
// or the sanitizer's death callback can print it.
unsigned long long gSeed = 0;
long gEvent = -1;
char gDoing[512] = "starting";
bool gFinished = false;
bool gTrace = false;

void note(const QString& what) {
    const QByteArray bytes = what.toUtf8();
    std::snprintf(gDoing, sizeof gDoing, "%s", bytes.constData());
    if (gTrace) std::fprintf(stderr, "%ld: %s\n", gEvent, gDoing);
}

void printWhere() {
    char line[768];
    const int n = std::snprintf(line, sizeof line, "\nstorm: seed %llu, event %ld: %s\n", gSeed, gEvent, gDoing);
    if (n > 0) (void)!::write(2, line, static_cast<std::size_t>(std::min(n, static_cast<int>(sizeof line) - 1)));
}

[[maybe_unused]] void onFatalSignal(int signal) {
    printWhere();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

[[noreturn]] void fail(const QString& why) {
    std::fprintf(stderr, "STORM FAILURE: %s\n", why.toUtf8().constData());
    printWhere();
    std::fprintf(stderr, "replay: storm %ld %llu\n", gEvent + 1, gSeed);
    std::fflush(stderr);
    gFinished = true;
    std::_Exit(1);
}

// Anything that ends the process before the storm is done (exit() from a
// handler) is a failure: only END may end the program, and it is caught.
void onExit() {
    if (gFinished) return;
    std::fprintf(stderr, "STORM FAILURE: the process ended by itself\n");
    printWhere();
    std::_Exit(1);
}

// Typed answers, the usual mistakes and good values; "" is no text at all
// and "@" stands for 400 nines.
QStringList typed(std::initializer_list<const char*> list) {
    QStringList result;
    for (const char* text : list)
        result << (!*text ? QString() : *text == '@' ? QString(400, QLatin1Char('9')) : QString::fromUtf8(text));
    return result;
}

// Answers every question the program asks the pupil: input boxes with the
// usual mistakes and with good values, file dialogs with good, bad and
// impossible files.
class StormDialogs : public DialogProvider {
public:
    StormDialogs(std::mt19937_64& random, const QDir& folder) : random_(random), folder_(folder) {}
    int messages = 0;
    int questions = 0;
    // Set when the pupil chose a file in this event: writing a picture or a
    // table of the pupil's choosing may take longer than a click.
    bool fileChosen = false;

    void message(const QString&, const QString&) override { ++messages; }
    QString input(const QString&, const QString&, const QString&) override {
        ++questions;
        static const QStringList answers = typed({"", " ", "abc", "1,5", "1e999", "nan", "@", "0", "-1", "1", "2",
                                                  "1.5", "10", "30", "45", "60", "1.33", "81"});
        return pick(answers);
    }
    QString openFileName(const QString&, const QString&) override {
        return chosen(pick({QString(), at("good.csv"), at("greek.csv"), at("garbage.csv"), at("huge.csv"),
                            at("missing.csv"), at("folder"), at("fylaxi")}));
    }
    QString saveFileName(const QString&, const QString&, const QString&) override {
        return chosen(pick({QString(), at("saved.csv"), at("saved.png"), at("saved.svg"),
                            at("no/such/folder/saved.csv"), at("folder"), at("good.csv/inside.csv")}));
    }

private:
    QString chosen(const QString& name) {
        if (!name.isEmpty()) fileChosen = true;
        return name;
    }
    QString at(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
    QString pick(const QStringList& options) {
        return options[static_cast<qsizetype>(random_() % static_cast<unsigned long long>(options.size()))];
    }
    std::mt19937_64& random_;
    QDir folder_;
};

class Storm {
public:
    Storm(unsigned long long seed, const QDir& folder) : random_(seed), folder_(folder) {}

    void run(long events) {
        auto provider = std::make_unique<StormDialogs>(random_, folder_);
        dialogs_ = provider.get();
        setDialogs(std::move(provider));
        setProgramEnder([this](int) { ended_ = true; });
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, [] { fail(QStringLiteral("the application quit")); });

        // A popup or modal window of the toolkit's own (a context menu)
        // would wait for the pupil: close it as Escape would.
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
            if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
        });
        closer.start(50);

        start();
        for (gEvent = 0; gEvent < events; ++gEvent) {
            discover();
            dialogs_->fileChosen = false;
            const qint64 before = cpuMs();
            fire();
            slowest(cpuMs() - before, gDoing);
            settle();
            checkCanvases();
            if (ended_) {
                ++restarts_;
                note(QStringLiteral("restart after END"));
                Forms::instance().destroyAll();
                start();
            }
        }
        note(QStringLiteral("finished"));
        Forms::instance().destroyAll();
    }

    void report(long events) const {
        std::printf("storm: %ld events, seed %llu, %d restarts after END, %d messages, %d input boxes\n", events, gSeed,
                    restarts_, dialogs_->messages, dialogs_->questions);
        std::printf("storm: slowest round %lld ms of processor time (budget %lld ms): %s\n", slowestMs_, kBudgetMs,
                    slowestWhat_.c_str());
        std::printf("storm: slowest round with a chosen file %lld ms (budget %lld ms): %s\n", slowestFileMs_,
                    kFileBudgetMs, slowestFileWhat_.c_str());
        std::printf("storm: %zu kinds of window seen:", windowKinds_.size());
        for (const auto& kind : windowKinds_) std::printf(" %s", kind.c_str());
        std::printf("\nstorm: %zu distinct controls used\n", used_.size());
    }

private:
    std::mt19937_64 random_;
    QDir folder_;
    StormDialogs* dialogs_ = nullptr;
    bool ended_ = false;
    int restarts_ = 0;
    qint64 slowestMs_ = 0;
    std::string slowestWhat_;
    qint64 slowestFileMs_ = 0;
    std::string slowestFileWhat_;
    // Windows in the order they were first seen (a set of pointers has no
    // stable order, and the same seed must make the same choices).
    std::vector<QPointer<QWidget>> windows_;
    std::set<std::string> windowKinds_;
    std::set<QString> used_;

    void start() {
        ended_ = false;
        windows_.clear();
        Main();
        settle();
    }

    // --- random choices ---------------------------------------------------
    std::size_t below(std::size_t n) { return n == 0 ? 0 : static_cast<std::size_t>(random_() % n); }
    int between(int low, int high) { return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1))); }
    bool chance(int percent) { return static_cast<int>(below(100)) < percent; }
    template <class T>
    T* pickFrom(const std::vector<T*>& items) {
        if (items.empty()) return nullptr;
        // Now and then prefer a control never used yet, so that the storm
        // goes deep into screens rather than circling the main menu.
        if (chance(40)) {
            std::vector<T*> fresh;
            for (T* item : items)
                if (!used_.count(keyOf(item))) fresh.push_back(item);
            if (!fresh.empty()) return fresh[below(fresh.size())];
        }
        return items[below(items.size())];
    }

    static QString keyOf(QObject* object) {
        QString key = QString::fromLatin1(object->metaObject()->className()) + QLatin1Char('/') + object->objectName();
        if (auto* action = qobject_cast<QAction*>(object)) key += QLatin1Char('/') + action->text();
        if (auto* button = qobject_cast<QAbstractButton*>(object)) key += QLatin1Char('/') + button->text();
        for (QObject* p = object->parent(); p; p = p->parent())
            if (auto* w = qobject_cast<QWidget*>(p); w && w->isWindow()) {
                key.prepend(QString::fromLatin1(w->metaObject()->className()) + QLatin1Char(':'));
                break;
            }
        return key;
    }

    // --- what exists --------------------------------------------------------
    void discover() {
        std::vector<QWidget*> fresh;
        for (QWidget* w : QApplication::topLevelWidgets())  // popups are reached through their actions
            if (!qobject_cast<QMenu*>(w) && std::find(windows_.begin(), windows_.end(), w) == windows_.end())
                fresh.push_back(w);
        const auto kind = [](QWidget* w) {
            return std::pair(QString::fromLatin1(w->metaObject()->className()), w->objectName());
        };
        std::sort(fresh.begin(), fresh.end(), [&kind](QWidget* a, QWidget* b) { return kind(a) < kind(b); });
        for (QWidget* w : fresh) {
            windows_.emplace_back(w);
            windowKinds_.insert(w->metaObject()->className());
        }
        std::erase_if(windows_, [](const QPointer<QWidget>& p) { return !p; });
    }

    std::vector<QWidget*> windows(bool visible) const {
        std::vector<QWidget*> list;
        for (const QPointer<QWidget>& w : windows_)
            if (w && w->isVisible() == visible) list.push_back(w);
        return list;
    }

    // The controls of a kind the pupil can reach: visible and enabled, in
    // visible windows. Qt's own helpers (named "qt_…", a menu bar's arrow)
    // are the toolkit's; buttons that pop up a menu are reached through the
    // menu's actions instead.
    static bool ownControl(QWidget* w) {
        if (w->objectName().startsWith(QLatin1String("qt_"))) return false;
        if (auto* button = qobject_cast<QPushButton*>(w); button && button->menu()) return false;
        if (qobject_cast<QToolButton*>(w)) return false;
        return !qobject_cast<QMenuBar*>(w);
    }

    template <class T>
    std::vector<T*> controls() const {
        std::vector<T*> list;
        for (QWidget* window : windows(true))
            for (T* control : window->findChildren<T*>())
                if (control->isVisible() && control->isEnabled() && ownControl(control)) list.push_back(control);
        return list;
    }

    std::vector<QAction*> actions() const {
        std::vector<QAction*> list;
        for (QWidget* window : windows(true))
            for (QAction* action : window->findChildren<QAction*>())
                if (!action->isSeparator() && !action->menu() && action->isEnabled() && action->isVisible())
                    list.push_back(action);
        return list;
    }

    // --- events -------------------------------------------------------------
    void fire() {
        const int kind = between(0, 99);
        if (kind < 22) return pressButton();
        if (kind < 34) return triggerAction();
        if (kind < 46) return moveSlider();
        if (kind < 60) return typeText();
        if (kind < 64) return chooseItem();
        if (kind < 76) return clickCanvas();
        if (kind < 82) return resizeWindow();
        if (kind < 88) return showOrHide();
        if (kind < 93) return pressKey();
        return letTimersRun();
    }

    void pressButton() {
        QAbstractButton* button = pickFrom(controls<QAbstractButton>());
        if (!button) return letTimersRun();
        used_.insert(keyOf(button));
        note(QStringLiteral("click ") + keyOf(button));
        QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
    }

    void triggerAction() {
        QAction* action = pickFrom(actions());
        if (!action) return pressButton();
        used_.insert(keyOf(action));
        note(QStringLiteral("menu ") + keyOf(action));
        action->trigger();
    }

    void moveSlider() {
        QAbstractSlider* slider = pickFrom(controls<QAbstractSlider>());
        if (!slider) return pressButton();
        used_.insert(keyOf(slider));
        const int where = between(0, 5);
        const int value = where == 0   ? slider->minimum()
                          : where == 1 ? slider->maximum()
                                       : between(slider->minimum(), slider->maximum());
        note(QStringLiteral("slider %1 (%2..%3) ").arg(value).arg(slider->minimum()).arg(slider->maximum()) +
             keyOf(slider));
        if (where == 5) {
            static const QAbstractSlider::SliderAction steps[] = {
                QAbstractSlider::SliderSingleStepAdd, QAbstractSlider::SliderSingleStepSub,
                QAbstractSlider::SliderPageStepAdd,   QAbstractSlider::SliderPageStepSub,
                QAbstractSlider::SliderToMinimum,     QAbstractSlider::SliderToMaximum};
            slider->triggerAction(steps[below(std::size(steps))]);
        } else {
            slider->setValue(value);
        }
    }

    QString badOrGoodText() {
        static const QStringList texts =
            typed({"",   " ",  "abc",  "1,5",    "1e999", "-1e999", "nan",    "inf",  "@",
                   "0",  "-1", "-0",   "1e-320", "0x10",  "γωνία",  "\t\r\n", "1.5",  "10",
                   "30", "45", "89.9", "90",     "180",   "181",    "-45",    "1.33", "2.42"});
        return texts[static_cast<qsizetype>(below(static_cast<std::size_t>(texts.size())))];
    }

    // Key by key; letters outside ASCII come as the keyboard sends them,
    // with their text and no key code of their own.
    static void typeKeys(QWidget* box, const QString& text) {
        QPointer<QWidget> guard(box);
        for (const QChar c : text) {
            if (!guard) return;
            if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
                QTest::keyClick(box, Qt::Key_Return);
            } else if (c == QLatin1Char('\t')) {
                QTest::keyClick(box, Qt::Key_Tab);
            } else if (c.unicode() >= 0x20 && c.unicode() < 0x7f) {
                QTest::keyClick(box, static_cast<char>(c.unicode()));
            } else {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
                QApplication::sendEvent(box, &press);
                QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(c));
                if (guard) QApplication::sendEvent(box, &release);
            }
        }
    }

    void typeText() {
        std::vector<QWidget*> boxes;
        for (QLineEdit* e : controls<QLineEdit>())
            if (!e->isReadOnly()) boxes.push_back(e);
        for (QTextEdit* e : controls<QTextEdit>()) boxes.push_back(e);
        for (QPlainTextEdit* e : controls<QPlainTextEdit>()) boxes.push_back(e);
        QWidget* box = pickFrom(boxes);
        if (!box) return pressButton();
        used_.insert(keyOf(box));
        const QString text = badOrGoodText();
        note(QStringLiteral("type \"%1\" into ").arg(text.left(40)) + keyOf(box));
        box->setFocus();
        if (chance(50)) {
            // Select all and type over it, key by key, then confirm.
            QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
            typeKeys(box, text);
        } else if (auto* line = qobject_cast<QLineEdit*>(box)) {
            line->setText(text);  // as a paste does
        } else {
            typeKeys(box, text);
        }
        if (chance(50)) QTest::keyClick(box, chance(50) ? Qt::Key_Return : Qt::Key_Tab);
    }

    void chooseItem() {
        std::vector<QWidget*> lists;
        for (QListWidget* l : controls<QListWidget>()) lists.push_back(l);
        for (QComboBox* c : controls<QComboBox>()) lists.push_back(c);
        QWidget* list = pickFrom(lists);
        if (!list) return pressButton();
        used_.insert(keyOf(list));
        if (auto* l = qobject_cast<QListWidget*>(list)) {
            if (l->count() == 0) return letTimersRun();
            const int row = between(0, l->count() - 1);
            note(QStringLiteral("list row %1 of ").arg(row) + keyOf(list));
            QListWidgetItem* item = l->item(row);
            l->scrollToItem(item);
            const QPoint at = l->visualItemRect(item).center();
            if (chance(30))
                QTest::mouseDClick(l->viewport(), Qt::LeftButton, {}, at);
            else
                QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, at);
        } else if (auto* c = qobject_cast<QComboBox*>(list)) {
            if (c->count() == 0) return letTimersRun();
            const int index = between(0, c->count() - 1);
            note(QStringLiteral("combo item %1 of ").arg(index) + keyOf(list));
            c->setCurrentIndex(index);
        }
    }

    void clickCanvas() {
        Canvas* canvas = pickFrom(controls<Canvas>());
        if (!canvas) return pressButton();
        used_.insert(keyOf(canvas));
        constexpr auto shift = Qt::ShiftModifier, control = Qt::ControlModifier, alt = Qt::AltModifier;
        static const Qt::KeyboardModifiers modifiers[] = {
            Qt::NoModifier, shift, control, alt, Qt::MetaModifier, shift | control, shift | control | alt};
        static const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
        const Qt::KeyboardModifiers modifier = modifiers[below(std::size(modifiers))];
        const Qt::MouseButton button = buttons[below(std::size(buttons))];
        const int w = std::max(canvas->width(), 1), h = std::max(canvas->height(), 1);
        // Corners and edges as often as anywhere inside.
        const int x = chance(30) ? (chance(50) ? 0 : w - 1) : between(0, w - 1);
        const int y = chance(30) ? (chance(50) ? 0 : h - 1) : between(0, h - 1);
        note(QStringLiteral("mouse %1 at %2,%3 modifiers %4 on ").arg(int(button)).arg(x).arg(y).arg(int(modifier)) +
             keyOf(canvas));
        QPointer<Canvas> guard(canvas);
        QTest::mousePress(canvas, button, modifier, QPoint(x, y));
        if (guard) QTest::mouseRelease(canvas, button, modifier, QPoint(between(0, w - 1), between(0, h - 1)));
    }

    void resizeWindow() {
        QWidget* window = pickFrom(windows(true));
        if (!window) return showOrHide();
        const int size = between(0, 3);  // the smallest, a huge one, or any
        const int w = size == 0 ? 1 : size == 1 ? 4000 : between(1, 4000);
        const int h = size == 0 ? 1 : size == 1 ? 3000 : between(1, 3000);
        note(QStringLiteral("resize to %1x%2 ").arg(w).arg(h) + keyOf(window));
        window->resize(w, h);
    }

    void showOrHide() {
        std::vector<QWidget*> shown = windows(true), hidden = windows(false);
        if (!hidden.empty() && (shown.empty() || chance(50))) {
            QWidget* window = hidden[below(hidden.size())];
            note(QStringLiteral("show ") + keyOf(window));
            window->show();
            window->raise();
        } else if (!shown.empty()) {
            QWidget* window = shown[below(shown.size())];
            note(QStringLiteral("close or hide ") + keyOf(window));
            // The title bar's close button, or the window simply going.
            chance(50) ? void(window->close()) : window->hide();
        }
    }

    void pressKey() {
        std::vector<QWidget*> targets;
        for (QWidget* w : controls<QWidget>())
            if (w->focusPolicy() != Qt::NoFocus) targets.push_back(w);
        QWidget* target = pickFrom(targets);
        if (!target) return letTimersRun();
        static const Qt::Key keys[] = {Qt::Key_Left,      Qt::Key_Right,    Qt::Key_Up,    Qt::Key_Down,
                                       Qt::Key_PageUp,    Qt::Key_PageDown, Qt::Key_Home,  Qt::Key_End,
                                       Qt::Key_Return,    Qt::Key_Escape,   Qt::Key_Space, Qt::Key_Tab,
                                       Qt::Key_Backspace, Qt::Key_Delete,   Qt::Key_F1,    Qt::Key_Minus,
                                       Qt::Key_Period,    Qt::Key_Comma,    Qt::Key_9,     Qt::Key_E};
        const Qt::Key key = keys[below(std::size(keys))];
        const Qt::KeyboardModifiers modifier = chance(20) ? Qt::ShiftModifier : Qt::NoModifier;
        note(QStringLiteral("key %1 into ").arg(int(key)) + keyOf(target));
        target->setFocus();
        QTest::keyClick(target, key, modifier);
    }

    void letTimersRun() {
        const int ms = between(10, 120);
        note(QStringLiteral("let timers run for %1 ms").arg(ms));
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < ms) {
            const qint64 before = cpuMs();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            slowest(cpuMs() - before, "a timer tick while waiting");
            ::usleep(1000);
        }
    }

    // Deliver what the event left behind (repaints, posted events) and time it.
    void settle() {
        const qint64 before = cpuMs();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        slowest(cpuMs() - before, gDoing);
    }

    // Time spent by this thread, not by the clock on the wall: on a machine
    // shared with other builds the wall clock measures the neighbours.
    static qint64 cpuMs() {
        timespec t{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<qint64>(t.tv_sec) * 1000 + t.tv_nsec / 1000000;
    }

    void slowest(qint64 ms, const char* what) {
        qint64& worst = dialogs_->fileChosen ? slowestFileMs_ : slowestMs_;
        if (ms > worst) {
            worst = ms;
            (dialogs_->fileChosen ? slowestFileWhat_ : slowestWhat_) = what;
        }
        const qint64 budget = dialogs_->fileChosen ? kFileBudgetMs : kBudgetMs;
        if (ms > budget)
            fail(QStringLiteral("a handler took %1 ms of processor time (budget %2 ms)").arg(ms).arg(budget));
    }

    void checkCanvases() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QList<Canvas*> canvases = window->findChildren<Canvas*>();
            if (auto* own = qobject_cast<Canvas*>(window)) canvases.append(own);
            for (Canvas* canvas : canvases)
                if (canvas->skippedOperations() != 0)
                    fail(QStringLiteral("%1 skipped %2 drawing operations with non-finite coordinates")
                             .arg(keyOf(canvas))
                             .arg(canvas->skippedOperations()));
        }
    }
};

// Files for the file dialogs to offer: a good table, a Greek one, garbage,
// one too large to be a table, and a folder.
void prepareFiles(const QDir& folder) {
    auto write = [&folder](const char* name, const QByteArray& bytes) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    };
    write("good.csv", "incidence,refraction\n10,6.5\n20,13\n30,19.5\n40,25\n50,30.5\n60,35\n");
    write("greek.csv", "πρόσπτωση;x\r\n10,5;6\r\n20;13\r\n");
    QByteArray garbage;
    for (int k = 0; k < 2000; ++k) garbage.append(static_cast<char>((k * 7919) % 256));
    write("garbage.csv", garbage);
    write("huge.csv", QByteArray(200 * 1024, '1'));
    folder.mkpath(QStringLiteral("folder"));
}

// The offscreen platform says for every raise() and resize that it cannot
// do it; thousands of such lines would bury what matters.
QtMessageHandler gStandardHandler = nullptr;

void quietPlatform(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith(QLatin1String("This plugin does not support"))) return;
    gStandardHandler(type, context, text);  // never null: the default one if none was installed
}

}  // namespace

int main(int argc, char** argv) {
    const long events = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 3000;
    gSeed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 20261123ULL;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::atexit(onExit);
#if defined(__SANITIZE_ADDRESS__)
    // The sanitizer reports first (its own handlers catch the signals).
    __sanitizer_set_death_callback(printWhere);
#else
    for (int s : {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS}) std::signal(s, onFatalSignal);
#endif
    gStandardHandler = qInstallMessageHandler(quietPlatform);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    // The program reads and writes its measurement file in the current
    // folder: give it a scratch one.
    QTemporaryDir scratch;
    if (!scratch.isValid() || !QDir::setCurrent(scratch.path())) {
        std::fprintf(stderr, "storm: no scratch folder\n");
        gFinished = true;
        return 2;
    }
    const QDir folder(scratch.path());
    prepareFiles(folder);

    std::printf("storm: %ld events, seed %llu%s\n", events, gSeed, kSanitized ? " (sanitizer build)" : "");
    std::fflush(stdout);
    Storm storm(gSeed, folder);
    gTrace = qEnvironmentVariableIsSet("STORM_TRACE");
    storm.run(events);
    storm.report(events);
    gFinished = true;
    QDir::setCurrent(QDir::tempPath());
    return 0;
}
