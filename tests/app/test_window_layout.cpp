// Every window on one classroom screen: the pupil's road through the whole
// program, and after each step every window that is up is checked: its
// frame on the usable part of the screen, no menu command pushed into the
// menu bar's overflow, every button and label inside its window with its
// text whole.
//
// The screen is given by the platform (CTest runs this program once per
// screen); LAYOUT_SCREEN names the logical size and scale expected, so that
// a run on the wrong screen fails instead of passing.
#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QMenuBar>
#include <QRadioButton>
#include <QScreen>
#include <QToolButton>
#include <QtTest>

#include "analysis/errors_screen.h"
#include "analysis/graph_screens.h"
#include "app/history_screen.h"
#include "app/main_menu.h"
#include "app/module1.h"
#include "apparatus/alhaytham_screens.h"
#include "apparatus/apparatus_openers.h"
#include "apparatus/ptolemaios_screen.h"
#include "apparatus/ptolkam_screen.h"
#include "canvas/figure_export.h"
#include "canvas/fonts.h"
#include "canvas/presentation_scale.h"
#include "history/inpdat_screen.h"
#include "models/epiloges_screen.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "models/somata_screen.h"
#include "semicircle/hmiky_screen.h"
#include "test_support.h"
#include "ui/presentation_size.h"
#include "ui/window_placement.h"

namespace {

QList<QWidget*> shownWindows() {
    QList<QWidget*> windows;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->isWindow() && !(w->windowType() == Qt::Popup || w->windowType() == Qt::ToolTip))
            windows << w;
    return windows;
}

QString wh(QSize s) { return QStringLiteral("%1x%2").arg(s.width()).arg(s.height()); }
QString at(QPointF p) { return QStringLiteral("(%1, %2)").arg(p.x()).arg(p.y()); }

QString nameOf(const QWidget* w) {
    return w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName();
}

// The part of a control that its window shows: cut by every parent on the
// way up, except that inside a scrolled area it is enough to be reachable
// by scrolling, so there only the area itself is cut (`scrolled` tells).
QRect shownPart(const QWidget* control, const QWidget* window, bool& scrolled) {
    QRect part(control->mapTo(window, QPoint(0, 0)), control->size());
    scrolled = false;
    for (const QWidget* p = control->parentWidget(); p && p != window; p = p->parentWidget()) {
        const QRect box(p->mapTo(window, QPoint(0, 0)), p->size());
        scrolled = scrolled || qobject_cast<const QAbstractScrollArea*>(p);
        part = qobject_cast<const QAbstractScrollArea*>(p) ? box : part & box;
    }
    return part & window->rect();
}

// Why the text of a control does not fit it, or an empty string.
QString textProblem(const QWidget* control) {
    const QFontMetrics fm(control->font());
    const QRect r = control->rect();
    if (auto* caption = qobject_cast<const CaptionButton*>(control)) {
        const QRect room = r.adjusted(6, 6, -6, -6);
        const QRect text = fm.boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, caption->text());
        return room.contains(text) ? QString() : "caption needs " + wh(text.size()) + " in " + wh(room.size());
    }
    if (qobject_cast<const QRadioButton*>(control) || qobject_cast<const QCheckBox*>(control)) {
        const QSize hint = control->sizeHint();
        return hint.width() > r.width() || fm.height() > r.height() ? "needs " + wh(hint) + ", has " + wh(r.size())
                                                                    : QString();
    }
    if (auto* button = qobject_cast<const QAbstractButton*>(control)) {
        if (button->text().isEmpty()) return {};
        const int width = fm.horizontalAdvance(button->text());
        return width + 8 > r.width() || fm.height() + 2 > r.height()
                   ? QStringLiteral("text %1 wide in ").arg(width) + wh(r.size())
                   : QString();
    }
    if (auto* label = qobject_cast<const QLabel*>(control)) {
        if (label->text().isEmpty() || label->textFormat() == Qt::RichText || Qt::mightBeRichText(label->text()))
            return {};
        const QRect room = label->contentsRect();
        const int flags = static_cast<int>(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
        const QRect text = fm.boundingRect(room, flags, label->text());
        if (text.width() > room.width() || text.height() > room.height())
            return "text needs " + wh(text.size()) + " in " + wh(room.size());
    }
    return {};
}

QStringList windowProblems(QWidget* window) {
    QStringList problems;
    const QString name = nameOf(window);
    const QRect area = window->screen()->availableGeometry();
    const QRect frame = window->frameGeometry();
    if (!area.contains(frame))
        problems << name + ": frame at " + at(frame.topLeft()) + " " + wh(frame.size()) + " outside the screen's " +
                        wh(area.size());
    for (QMenuBar* bar : window->findChildren<QMenuBar*>()) {
        if (!bar->isVisibleTo(window)) continue;
        const auto* overflow = bar->findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button"));
        if (overflow && overflow->isVisibleTo(bar))
            problems << QStringLiteral("%1: menu bar %2 wide overflows").arg(name).arg(bar->width());
        for (QAction* action : bar->actions()) {
            if (!action->isVisible()) continue;
            const QRect at = bar->actionGeometry(action);
            if (at.isEmpty() || !bar->rect().contains(at))
                problems << QStringLiteral("%1: menu \"%2\" not on the menu bar").arg(name, action->text());
        }
    }
    QList<QWidget*> controls;
    for (QAbstractButton* b : window->findChildren<QAbstractButton*>()) controls << b;
    for (QLabel* l : window->findChildren<QLabel*>()) controls << l;
    for (QWidget* control : controls) {
        if (!control->isVisibleTo(window) || control->objectName().startsWith(QStringLiteral("qt_"))) continue;
        if (control->window() != window || control->size().isEmpty()) continue;
        const auto* label = qobject_cast<QLabel*>(control);
        const QString text = label ? label->text() : static_cast<QAbstractButton*>(control)->text();
        const QString what = QStringLiteral("%1/%2 \"%3\"").arg(name, nameOf(control), text.left(30));
        bool scrolled;
        const QRect part = shownPart(control, window, scrolled);
        if (scrolled ? part.isEmpty() : part != QRect(control->mapTo(window, QPoint(0, 0)), control->size()))
            problems << what + " cut by its window (" + wh(part.size()) + " of " + wh(control->size()) + " shown)";
        if (const QString p = textProblem(control); !p.isEmpty()) problems << what + QStringLiteral(": ") + p;
    }
    return problems;
}

// Whether the line runs through the rectangle.
bool crosses(const Canvas::DrawnLine& line, const QRectF& box) {
    if (box.contains(line.from) || box.contains(line.to)) return true;
    const QLineF l(line.from, line.to);
    const QLineF edges[] = {{box.topLeft(), box.topRight()},
                            {box.topRight(), box.bottomRight()},
                            {box.bottomRight(), box.bottomLeft()},
                            {box.bottomLeft(), box.topLeft()}};
    for (const QLineF& edge : edges)
        if (l.intersects(edge, nullptr) == QLineF::BoundedIntersection) return true;
    return false;
}

// Whether the filled disc reaches into the rectangle.
bool discMeets(const Canvas::DrawnDisc& disc, const QRectF& box) {
    return distanceToRect(disc.box.center(), box) < disc.box.width() / 2.0 - 0.5;
}

// Whether the part of the line inside the box can be seen there: a label's
// ground painted over a line hides it. Sampled a pixel apart along the
// line: seen when half the samples or more show the line's colour and some
// of them in an unbroken run longer than a glyph's stroke (glyphs of a
// like colour over a hidden line give only short runs).
bool showsThrough(const Canvas& canvas, const Canvas::DrawnLine& line, const QRectF& box) {
    const QLineF l(line.from, line.to);
    const int steps = std::max(1, static_cast<int>(std::ceil(l.length())));
    int inside = 0, seen = 0, run = 0, longest = 0;
    for (int k = 0; k <= steps; ++k) {
        const QPointF p = l.pointAt(static_cast<double>(k) / steps);
        if (!box.contains(p)) continue;
        ++inside;
        const QPointF user = canvas.toUser(p);
        const QColor c = canvas.pixelAt(user.x(), user.y());
        const bool like = std::abs(c.red() - line.colour.red()) + std::abs(c.green() - line.colour.green()) +
                              std::abs(c.blue() - line.colour.blue()) <
                          40;
        seen += like ? 1 : 0;
        run = like ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return inside > 0 && 2 * seen >= inside && longest >= std::min(inside, 8);
}

// Whether some pixel in the text's box has about the text's colour: a text
// painted over, or never painted, has none. Thin figures at small sizes,
// smoothed at a fraction of a pixel, may nowhere reach the full colour.
bool inked(const Canvas& canvas, const Canvas::DrawnText& text) {
    for (double y = text.box.top() + 1; y < text.box.bottom() - 1; y += 1.0)
        for (double x = text.box.left() + 1; x < text.box.right() - 1; x += 1.0) {
            const QPointF user = canvas.toUser(QPointF(x, y));
            const QColor c = canvas.pixelAt(user.x(), user.y());
            if (std::abs(c.red() - text.colour.red()) + std::abs(c.green() - text.colour.green()) +
                    std::abs(c.blue() - text.colour.blue()) <
                100)
                return true;
        }
    return false;
}

// Why a graph's printed texts cannot all be read whole: a text below 8 pt,
// one that runs off the drawing, two that overlap, one that a data point
// touches, one not painted, a line seen through one. The texts from `firstLawLabel` on are
// the labels of laws laid over the graph, each on a ground a couple of
// pixels wider that hides what it covers: none may cover a point or an axis.
QStringList graphProblems(const Canvas& canvas, const QString& name, std::size_t firstLawLabel) {
    QStringList problems;
    const auto texts = canvas.drawnTexts();
    const auto lines = canvas.drawnLines();
    const QRectF area = QRectF(QPointF(0, 0), QSizeF(canvas.size())).adjusted(-0.5, -0.5, 0.5, 0.5);
    // Boxes a pixel in from the type's full height: touching is not running into.
    auto inner = [](const QRectF& box) { return box.adjusted(1, 1, -1, -1); };
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto& t = texts[i];
        if (t.text.trimmed().isEmpty()) continue;
        const QString what = QStringLiteral("%1 \"%2\"").arg(name, t.text.left(40));
        if (t.points < 8.0) problems << QStringLiteral("%1 in %2 pt").arg(what).arg(t.points);
        if (!area.contains(t.box)) problems << what + " runs off the " + wh(canvas.size()) + " drawing";
        for (std::size_t j = i + 1; j < texts.size(); ++j)
            if (!texts[j].text.trimmed().isEmpty() && inner(t.box).intersects(inner(texts[j].box)))
                problems << QStringLiteral("%1 overlaps \"%2\"").arg(what, texts[j].text.left(40));
        const QRectF near = i >= firstLawLabel ? t.box.adjusted(-2, -2, 2, 2) : inner(t.box);
        for (const auto& disc : canvas.drawnDiscs())
            if (discMeets(disc, near)) problems << what + " meets the point at " + at(disc.box.center());
        for (const auto& line : lines)
            if (i >= firstLawLabel && line.colour == Qt::black && crosses(line, near))
                problems << what + " covers an axis";
        if (!inked(canvas, t)) problems << what + " not painted";  // hidden by a ground grown under it
        for (const auto& line : lines)
            if (crosses(line, inner(t.box)) && showsThrough(canvas, line, inner(t.box))) {
                problems << what + " crossed by a line from " + at(line.from) + " to " + at(line.to);
                break;
            }
    }
    return problems;
}

// The historical tables, as the data screen's menu loads them.
const std::pair<const char*, void (Inpdat::*)()> kTables[] = {
    {"Newton glass", &Inpdat::Newt_Click},          {"Newton water", &Inpdat::newt2_Click},
    {"Al Haytham glass", &Inpdat::Alhazen_Click},   {"Al Haytham water", &Inpdat::Alhazen2_Click},
    {"Ptolemy glass", &Inpdat::Ptolemy_Click},      {"Ptolemy water", &Inpdat::ptolemy2_Click},
    {"Witelo glass", &Inpdat::Vitello_Glass_Click}, {"Witelo water", &Inpdat::Vitello_water_Click}};

// Lines of one block at 100 % (the same type size, one under another,
// aligned left or centred: a hint, a caption, a title and the line under
// it) that run into each other at 175 or 200 %; a drawing whose first text
// moved aside or down, or whose export changed. Axis labels stand by their
// ticks and are not blocks.
QStringList stackedProblems(const Canvas& canvas, const QString& name) {
    setPresentationSize(100);
    QTest::qWait(20);  // painted, and so laid out, at 100 %
    const QSize size100 = canvas.size();
    const QImage exported = figureImage(canvas, 1.0);
    auto stacked = [](const Canvas::DrawnText& a, const Canvas::DrawnText& b) {
        const bool aligned =
            std::abs(a.box.left() - b.box.left()) < 0.5 || std::abs(a.box.center().x() - b.box.center().x()) < 0.5;
        return a.points == b.points && aligned && b.box.top() > a.box.top() &&
               b.box.top() - a.box.bottom() < 0.6 * a.box.height();
    };
    QStringList problems;
    for (const int size : {175, 200}) {
        setPresentationSize(size);
        QTest::qWait(20);  // a window that grew draws its figure again at its new size
        const auto texts = canvas.drawnTexts();
        const auto designed = [&canvas] {
            const DesignedScale asDesigned;
            return canvas.drawnTexts();
        }();
        const QString at = QStringLiteral("%1 at %2 %: ").arg(name).arg(size);
        // The first text grows from its designed place (down and right from
        // its corner, or about the end beside its mark), rising or coming
        // back from an edge only as far as it must to stay whole: it still
        // spans its designed left and starts no lower.
        if (!texts.empty()) {
            const QRectF& grown = texts.front().box;
            const QRectF& was = designed.front().box;
            if (was.left() < grown.left() - 0.5 || was.left() > grown.right() || grown.top() > was.top() + 0.5)
                problems << at + QStringLiteral("the first text moved");
        }
        for (std::size_t i = 0; i < texts.size(); ++i)
            for (std::size_t j = 0; j < texts.size(); ++j)
                if (stacked(designed[i], designed[j]) &&
                    texts[i].box.adjusted(1, 1, -1, -1).intersects(texts[j].box.adjusted(1, 1, -1, -1)))
                    problems << at + QStringLiteral("\"%1\" runs into \"%2\"").arg(texts[i].text, texts[j].text);
        if (canvas.size() == size100 && figureImage(canvas, 1.0) != exported) problems << at + "export changed";
    }
    setPresentationSize(100);
    return problems;
}

}  // namespace

class TestWindowLayout : public QObject {
    Q_OBJECT
    QStringList problems_;

    // Lets the windows settle, then checks every window that is up.
    void check(const QString& step) {
        QTest::qWait(20);
        for (QWidget* w : shownWindows()) {
            QVERIFY(QTest::qWaitForWindowExposed(w));
            for (const QString& p : windowProblems(w)) problems_ << step + QStringLiteral(": ") + p;
        }
    }

    static QStringList shownNames() {
        QStringList names;
        for (QWidget* w : shownWindows()) names << nameOf(w);
        names.sort();
        return names;
    }

private slots:
    void initTestCase() { installFontSubstitutions(); }

    void screenIsTheOneAskedFor() {
        const QString wanted = qEnvironmentVariable("LAYOUT_SCREEN");  // e.g. 1280x720@1.5
        if (wanted.isEmpty()) QSKIP("no screen named");
        const QScreen* screen = QGuiApplication::primaryScreen();
        QCOMPARE(wh(screen->geometry().size()) + '@' + QString::number(screen->devicePixelRatio()), wanted);
    }

    void everyWindowOnTheScreen() {
        ScreenTestScope scope;
        Main();
        auto& menu = form<Diathlasimeleti>();
        check(QStringLiteral("menu"));

        // The bench and the two screens it opens; BACK takes all three away.
        menu.Command1_Click();
        check(QStringLiteral("bench"));
        auto& bench = form<Hmiky>();
        bench.Raref_Click();
        bench.listOfData_Click();
        bench.sygr_Click();
        check(QStringLiteral("bench-lists"));
        bench.Command3_Click();
        QCOMPARE(shownNames(), QStringList{nameOf(&menu)});

        menu.Command4_Click();
        check(QStringLiteral("history1"));
        form<Storiopt>().defteromeros_Click();
        check(QStringLiteral("history2"));
        form<Storiopt>().klisimo_Click();

        // The data screen with a table analysed, a note, and the instruments.
        menu.Command2_Click();
        auto& data = form<Inpdat>();
        data.Newt_Click();
        check(QStringLiteral("data"));
        data.showNote(0);
        check(QStringLiteral("data-note"));
        openPtolemyInstrument();
        check(QStringLiteral("ptolemy"));
        form<Ptolemaios>().Command1_Click();
        check(QStringLiteral("ptolemy-hidden"));
        openAlHaythamInstrument();
        check(QStringLiteral("alhaytham"));
        form<Xaithamos>().svise_Click();
        check(QStringLiteral("alhaytham-check"));
        // The check screen leaves the rules page to be watched.
        QVERIFY(!form<Alhazencheck>().frameGeometry().intersects(form<Incref>().frameGeometry()) ||
                form<Alhazencheck>().frameGeometry().intersected(form<Incref>().frameGeometry()).height() <
                    form<Incref>().frameGeometry().height() / 4);
        openPtolemyDataFitting();
        check(QStringLiteral("ptolemy-fitting"));

        // The interpretation screens from the data screen, and back.
        data.Command4_Click();
        check(QStringLiteral("interpretation"));
        form<Rixo>().epiloges_Click();
        check(QStringLiteral("interpretation-choices"));
        form<Rixo>().Endof_Click();
        check(QStringLiteral("data-again"));

        // INITIAL leaves the main menu alone on the screen, whatever was up.
        menu.Command1_Click();
        bench.listOfData_Click();
        form<ListOfData>().Command2_Click();  // the series to the data screen
        data.Command2_Click();
        QCOMPARE(shownNames(), QStringList{nameOf(&menu)});

        menu.Command5_Click();
        form<Rixotext>().Command1_Click();
        check(QStringLiteral("waves-and-particles"));
        form<Rixo>().Endof_Click();
        QCOMPARE(shownNames(), QStringList{nameOf(&menu)});

        QVERIFY2(problems_.isEmpty(), qPrintable(QStringLiteral("\n") + problems_.join(QLatin1Char('\n'))));

        // A window stretched far beyond the screen (by hand or by a window
        // manager) grows no larger than the screens together, so its drawing
        // and backing store stay bounded.
        menu.Command1_Click();
        QVERIFY(QTest::qWaitForWindowExposed(&bench));
        QRect all;
        for (const QScreen* screen : QGuiApplication::screens()) all |= screen->geometry();
        QTest::qWait(1600);  // past the moments after showing, when placement still watches
        bench.resize(8000, 8000);
        QVERIFY(bench.width() <= all.width() && bench.height() <= all.height());
        QVERIFY(bench.drawing().width() <= all.width());
    }

    // At every presentation size the bench's drawing shows its texts larger
    // by the size and says the same; every window stays on the screen with
    // its controls' texts whole, and no drawn text falls under 8 pt. After
    // Data Analysis at 150 % the graph, instrument and interpretation windows
    // leave the data screen's title, menus, grid and buttons clear, and their
    // own texts whole, on every screen.
    void presentationSizesFit() {
        ScreenTestScope scope;
        programSettings()->clear();
        Main();
        auto& menu = form<Diathlasimeleti>();
        menu.Command1_Click();
        const Canvas& bench = form<Hmiky>().drawing();
        const auto designed = bench.drawnTexts();
        const QString summary = bench.summary();
        QVERIFY(!designed.empty());
        auto drawnProblems = [this](const QString& step) {
            QTest::qWait(20);
            for (QWidget* w : shownWindows())
                for (const QString& p : windowProblems(w)) problems_ << step + QStringLiteral(": ") + p;
            for (QWidget* w : shownWindows()) {
                if (!w->screen()->availableGeometry().contains(w->frameGeometry()))
                    problems_ << step + ": " + nameOf(w) + " off the screen";
                for (const Canvas* c : w->findChildren<Canvas*>())
                    for (const auto& t : c->drawnTexts())
                        if (c->isVisible() && t.points < 8.0)
                            problems_ << step + QStringLiteral(": \"%1\" in %2 pt").arg(t.text).arg(t.points);
            }
        };
        for (const int size : presentationSizes()) {
            setPresentationSize(size);
            const auto texts = bench.drawnTexts();
            QCOMPARE(texts.size(), designed.size());
            // Larger by the size, or as much larger as the drawing's width lets it.
            for (std::size_t k = 0; k < texts.size(); ++k)
                QVERIFY2(
                    std::abs(texts[k].points - designed[k].points * size / 100.0) < 0.01 ||
                        (texts[k].points > designed[k].points && texts[k].points < designed[k].points * size / 100.0 &&
                         texts[k].box.width() <= bench.width()),
                    qPrintable(texts[k].text + QStringLiteral(" %1 pt").arg(texts[k].points)));
            QCOMPARE(bench.summary(), summary);
            drawnProblems(QStringLiteral("bench at %1 %").arg(size));
        }
        problems_ << stackedProblems(bench, QStringLiteral("bench"));
        form<Hmiky>().Command3_Click();
        setPresentationSize(150);
        menu.Command2_Click();
        auto& data = form<Inpdat>();
        data.Ptolemy_Click();
        // Beside the data screen the graph windows are about 500 pixels wide
        // at 150 % on the laptop, 400 on the smallest screen: every table's
        // graphs read whole there. Where they are as wide as on the laptop,
        // Kepler's long label finds a free place as well (on a smaller one
        // it hides as few points as it can).
        for (const auto& [name, load] : kTables) {
            (data.*load)();
            const std::size_t graphTexts = form<Incref>().canvas()->drawnTexts().size();
            if (form<Incref>().canvas()->width() >= 480) data.Kepler_Click();
            QTest::qWait(20);
            for (const Canvas* canvas : {form<Incref>().canvas(), form<Analysis>().canvas()}) {
                const std::size_t laws = canvas == form<Incref>().canvas() ? graphTexts : SIZE_MAX;
                for (const QString& p : graphProblems(*canvas, nameOf(canvas->window()), laws))
                    problems_ << QStringLiteral("%1 at 150 %: %2").arg(QLatin1String(name), p);
            }
        }
        // At 200 % the sine graph still reads whole: the set's name right of
        // it takes more lines rather than running back over the data, and
        // the incidence title stands under the grown x labels.
        setPresentationSize(200);
        data.Ptolemy_Click();
        QTest::qWait(20);
        for (const QString& p : graphProblems(*form<Analysis>().canvas(), QStringLiteral("analysis"), SIZE_MAX))
            problems_ << QStringLiteral("Ptolemy glass at 200 %: ") + p;
        setPresentationSize(150);
        data.Vitello_water_Click();
        data.Kepler_Click();
        // Saved or printed, a graph with a law is as at 100 %, though on the
        // screen its bands and labels are laid out for the size shown (and
        // laid out again when the size changes).
        const QImage shownAt150 = figureImage(*form<Incref>().canvas(), 1.0);
        setPresentationSize(100);
        QCOMPARE(figureImage(*form<Incref>().canvas(), 1.0), shownAt150);  // before it is painted again
        QTest::qWait(20);
        QCOMPARE(figureImage(*form<Incref>().canvas(), 1.0), shownAt150);
        setPresentationSize(150);
        data.Ptolemy_Click();
        problems_ << stackedProblems(*form<Incref>().canvas(), QStringLiteral("angle graph"));
        for (std::size_t k = 0; k < history::historyNotes().size(); ++k) {
            data.showNote(static_cast<int>(k));
            problems_ << stackedProblems(*form<Analysis>().canvas(), QStringLiteral("note %1").arg(k));
        }
        setPresentationSize(150);
        data.Newt_Click();
        drawnProblems(QStringLiteral("data at 150 %"));
        // The parts to keep clear are taken while the data screen is up.
        auto keptClear = [this, &data](const QString& step, const std::vector<QRect>& parts) {
            if (parts.empty()) problems_ << step + ": the data screen is not up";
            for (QWidget* w : shownWindows())
                for (const QRect& kept : parts)
                    if (w != &data && w != &form<Diathlasimeleti>() && w->frameGeometry().intersects(kept))
                        problems_ << step + ": " + nameOf(w) + " covers the data screen at " + at(kept.topLeft()) +
                                         " " + wh(kept.size());
        };
        QVERIFY(form<Incref>().isVisible() && form<Analysis>().isVisible());
        keptClear(QStringLiteral("data analysis"), workingParts(data));
        openPtolemyInstrument();
        keptClear(QStringLiteral("ptolemy"), workingParts(data));
        drawnProblems(QStringLiteral("ptolemy at 150 %"));
        form<Ptolemaios>().Command1_Click();
        openAlHaythamInstrument();
        keptClear(QStringLiteral("alhaytham"), workingParts(data));
        drawnProblems(QStringLiteral("alhaytham at 150 %"));
        // The interpretation screens hide the data screen and share the
        // display; when it comes back with some of them up, they step aside.
        data.Command4_Click();
        QVERIFY(!data.isVisible());
        drawnProblems(QStringLiteral("interpretation at 150 %"));
        form<Rixo>().epiloges_Click();
        form<Epiloges>().Endof_Click();  // back to the data screen; what has room beside it stays up
        keptClear(QStringLiteral("data again"), workingParts(data));
        drawnProblems(QStringLiteral("data again at 150 %"));
        setPresentationSize(100);
        QVERIFY2(problems_.isEmpty(), qPrintable(QStringLiteral("\n") + problems_.join(QLatin1Char('\n'))));
    }

    // Every historical table on both graphs, at the size the graph windows
    // get on this screen, and the sine graph again with an explanation open
    // above it and with the residual bars: every label and title whole, in
    // 8 pt or more, clear of each other and of every line.
    void graphsReadWhole() {
        ScreenTestScope scope;
        Main();
        form<Diathlasimeleti>().Command2_Click();
        auto& data = form<Inpdat>();
        QStringList problems;
        auto checkGraphs = [&](const QString& step, std::size_t firstLawLabel = SIZE_MAX) {
            QTest::qWait(20);
            for (const Canvas* canvas : {form<Incref>().canvas(), form<Analysis>().canvas()})
                for (const QString& p : graphProblems(*canvas, nameOf(canvas->window()),
                                                      canvas == form<Incref>().canvas() ? firstLawLabel : SIZE_MAX))
                    problems << step + QStringLiteral(": ") + p;
        };
        const auto& tables = kTables;
        for (const auto& [name, load] : tables) {
            (data.*load)();
            checkGraphs(QLatin1String(name));
            QVERIFY(!form<Incref>().canvas()->drawnTexts().empty());
        }
        // An explanation opened above the sine graph takes part of its height.
        auto& sine = form<Analysis>();
        data.Vitello_Glass_Click();
        const int fullHeight = sine.canvas()->height();
        sine.showText(QStringLiteral("An explanation  Μια εξήγηση"));
        QTest::qWait(20);
        QVERIFY(sine.canvas()->height() < fullHeight);
        checkGraphs(QStringLiteral("Witelo glass under a text"));
        sine.hideText();
        named<QAction>(data, "residuals")->setChecked(true);
        data.Ptolemy_Click();
        checkGraphs(QStringLiteral("Ptolemy glass with residuals"));
        named<QAction>(data, "residuals")->setChecked(false);
        // A law laid over the data: its label on a ground that reaches as
        // far down as its lines (its type size is checked with four laws below).
        data.Kepler_Click();
        QTest::qWait(20);
        const Canvas& angles = *form<Incref>().canvas();
        double lowest = 0.0;
        for (const auto& t : angles.drawnTexts())
            if (t.colour == QColor(255, 0, 0)) lowest = std::max(lowest, t.box.bottom());
        QVERIFY(lowest > 0.0);
        // Beside the end of the label's last line, the ground.
        QCOMPARE(angles.pixelAt(99.5, angles.toUser(QPointF(0, lowest - 2)).y()), QColor(255, 255, 0));
        QVERIFY(lowest < angles.toLogical(0, 0).y());  // above the x axis and its labels
        // The 2/3 line stays clear of its own label, which 8 points make
        // wider on a small window.
        data.newt2_Click();
        data.toentrito1_Click();
        QTest::qWait(20);
        const QColor fixedLine(165, 100, 80);
        for (const auto& t : angles.drawnTexts())
            for (const auto& line : angles.drawnLines())
                if (line.colour == fixedLine)
                    QVERIFY2(!crosses(line, t.box.adjusted(1, 1, -1, -1)), qPrintable(t.text));
        // Several laws laid one after another over three tables, as a
        // pupil compares them: every label readable, none over another's,
        // no line seen through one; and still so once the window is resized.
        auto& graph = form<Incref>();
        const QSize placed = graph.size();
        for (const int table : {4, 1, 2}) {  // Ptolemy glass, Newton water, Al Haytham glass
            const auto& [name, load] = tables[table];
            (data.*load)();
            const std::size_t graphTexts = graph.canvas()->drawnTexts().size();
            data.Kepler_Click();
            data.toentrito1_Click();
            data.pyknoareo_Click();
            data.Snell_1_Click();
            const QString laws = QLatin1String(name) + QStringLiteral(" with four laws");
            checkGraphs(laws);
            QCOMPARE(data.lastAnalysis()->laws.size(), 4);
            const QSize smaller(std::max(480, placed.width() * 4 / 5), std::max(340, placed.height() * 4 / 5));
            for (const QSize size : {smaller, placed}) {
                graph.resize(size);
                QTest::qWait(30);
                const QString sized =
                    laws + QStringLiteral(" at %1x%2").arg(graph.canvas()->width()).arg(graph.canvas()->height());
                checkGraphs(sized, graphTexts);
                // The laws are drawn again at the new size, not left squeezed.
                QStringList fixed, snell, kepler;
                for (const auto& t : angles.drawnTexts()) {
                    if (t.colour == QColor(165, 155, 80)) fixed << t.text;
                    if (t.text.startsWith(QStringLiteral("n="))) snell << t.text;
                    if (t.colour == QColor(255, 0, 0) && t.text.contains(QStringLiteral("Kepler"))) kepler << t.text;
                }
                QVERIFY2(
                    fixed.size() >= 2 && snell.size() == 1 && !kepler.isEmpty(),
                    qPrintable(laws + QStringLiteral(": ") + (fixed + snell + kepler).join(QStringLiteral(" | "))));
            }
        }
        data.Newt_Click();
        // The lettered figures of the notes, beside their texts: letters
        // and captions clear of the figure's lines and of each other.
        for (std::size_t k = 0; k < history::historyNotes().size(); ++k) {
            data.showNote(static_cast<int>(k));
            checkGraphs(QStringLiteral("note %1").arg(k));
        }
        QVERIFY2(problems.isEmpty(), qPrintable(QStringLiteral("\n") + problems.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(TestWindowLayout)
#include "test_window_layout.moc"
