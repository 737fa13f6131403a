#pragma once
#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPointer>
#include <QRectF>
#include <QStringList>
#include <QWidget>

#include <optional>
#include <variant>
#include <vector>

#include "canvas/fonts.h"
#include "canvas/recorded_ops.h"
#include "canvas/text_flow.h"
#include "canvas/user_scale.h"

// Where the pen goes after print(): to the start of the next line, or on
// along the same line just past the text.
enum class PrintEnd { NextLine, SameLine };

// A drawing area with a user coordinate system, a pen position and the
// classic drawing operations. Everything drawn goes into a persistent backing
// image, so the figure survives hiding and covering; the operations since the
// last cls() are also kept as a list in area fractions, so that a resized or
// re-scaled (high-DPI) window redraws them sharply at the new size.
//
// Coordinates that are not finite never reach the painter: such an operation
// is skipped (and counted in skippedOperations()). Coordinates that are finite
// but far outside the area are clipped before painting.
//
// One-pixel lines at whole user coordinates light whole pixels: user x maps to
// the pixel column that starts there, and thin pens are drawn through pixel
// centres, so a line along y = 0 on a 400-pixel bench is one crisp row.
//
// The canvas can host controls: placeControl() positions a child widget in
// user units. The control keeps its place in the area when the canvas is
// resized; a later change of scale leaves controls where they stand.
class Canvas : public QWidget {
    Q_OBJECT
public:
    explicit Canvas(QWidget* parent = nullptr);
    ~Canvas() override;

    // --- user scale -------------------------------------------------------
    // Until a scale is set the user units are the area's pixels.
    void scale(double x1, double y1, double x2, double y2);  // Scale (x1, y1)-(x2, y2)
    UserScale userScale() const;
    double scaleLeft() const { return userScale().left; }
    double scaleTop() const { return userScale().top; }
    double scaleWidth() const { return userScale().width; }
    double scaleHeight() const { return userScale().height; }
    void setScaleLeft(double v);
    void setScaleTop(double v);
    void setScaleWidth(double v);
    void setScaleHeight(double v);
    // User units per pixel of the area (signed: negative when the axis runs
    // against the screen's direction, as y does on a y-up scale).
    double userPerPixelX() const;
    double userPerPixelY() const;

    // --- pen position -----------------------------------------------------
    double currentX() const { return currentX_; }
    double currentY() const { return currentY_; }
    void setCurrentX(double x) { currentX_ = x; }
    void setCurrentY(double y) { currentY_ = y; }

    // --- drawing state ----------------------------------------------------
    QColor foreColor() const { return state_.foreColor; }
    void setForeColor(const QColor& c) { state_.foreColor = c; }
    QColor backColor() const { return backColor_; }
    void setBackColor(const QColor& c);  // like the classic property: also clears
    int drawWidth() const { return state_.drawWidth; }
    void setDrawWidth(int pixels);  // 1 … 1000
    DrawStyle drawStyle() const { return state_.drawStyle; }
    void setDrawStyle(DrawStyle s) { state_.drawStyle = s; }
    QColor fillColor() const { return state_.fillColor; }
    void setFillColor(const QColor& c) { state_.fillColor = c; }
    FillStyle fillStyle() const { return state_.fillStyle; }
    void setFillStyle(FillStyle s) { state_.fillStyle = s; }

    // --- font -------------------------------------------------------------
    FontRole fontRole() const { return fontRole_; }
    void setFontRole(FontRole role) { fontRole_ = role; }
    double fontSize() const { return fontSize_; }
    void setFontSize(double points);  // 1 … 500 points; other values are ignored or clamped
    bool fontBold() const { return fontBold_; }
    void setFontBold(bool bold);
    int fontCharset() const { return fontCharset_; }
    void setFontCharset(int charset) { fontCharset_ = charset; }  // every mapped face carries Greek

    // --- operations -------------------------------------------------------
    // Fills with BackColor, puts the pen at the top-left corner of the user
    // scale and forgets the texts printed so far.
    void cls();
    // A straight line in ForeColor (or the colour given); the pen ends at (x2, y2).
    void line(double x1, double y1, double x2, double y2, std::optional<QColor> colour = std::nullopt);
    // A line from the pen position.
    void lineTo(double x2, double y2, std::optional<QColor> colour = std::nullopt);
    // The outline of the box with corners (x1, y1) and (x2, y2).
    void box(double x1, double y1, double x2, double y2, std::optional<QColor> colour = std::nullopt);
    // The box filled with the colour (ForeColor when none is given), edge to
    // edge: a box from ScaleLeft to ScaleLeft + ScaleWidth fills the width.
    void filledBox(double x1, double y1, double x2, double y2, std::optional<QColor> colour = std::nullopt);
    // A ground of BackColor for the texts printed next on it, painted only
    // where the screen shows texts larger: there it grows with them and
    // hides the lines they grow over (a title between grid lines); the
    // picture as designed, and every export, stay as they were. The pen
    // stays where it is.
    void groundForTexts(double x1, double y1, double x2, double y2);
    // A circle, or with start/end angles (radians, counter-clockwise from +x
    // on the screen) an arc; a negative angle also draws the radius to that
    // end of the arc (its magnitude is the angle; −0.001 stands for 0). The
    // arc runs counter-clockwise from the start to the end. The radius is in
    // x user units; aspect ≠ 1 draws an ellipse whose height/width is aspect
    // (above 1 the radius is the height). Filled with FillColor when
    // FillStyle is Solid: a whole circle, or a closed pie when both radii are
    // drawn. The pen ends at the centre.
    void circle(double x, double y, double radius, std::optional<QColor> colour = std::nullopt,
                std::optional<double> startAngle = std::nullopt, std::optional<double> endAngle = std::nullopt,
                double aspect = 1.0);
    // A filled disc in the given colour, regardless of FillStyle.
    void filledCircle(double x, double y, double radius, const QColor& colour);
    // One pixel (a dot DrawWidth across when the pen is wider).
    void pset(double x, double y, std::optional<QColor> colour = std::nullopt);
    // Writes the text in ForeColor with its top-left corner at the pen
    // position; '\n' starts new lines at ScaleLeft. Afterwards the pen is at
    // ScaleLeft one line further down (NextLine), or just after the text on
    // its last line (SameLine).
    void print(const QString& text, PrintEnd end = PrintEnd::NextLine);
    // Texts printed from now on get a thin rim of this colour round their
    // letters, so that they stay readable where a line runs through them;
    // an invalid colour (the default) prints them plain.
    void setTextHalo(const QColor& colour) { textHalo_ = colour; }
    // Texts printed from now on grow about this point of their box where
    // the screen shows them larger (a label beside a tick: its end next to
    // the tick) and follow no text before them; {0, 0}, the default, is the
    // top-left corner, and leaves them following the texts they continue.
    void setTextAnchor(canvas_ops::TextAnchor anchor) { textAnchor_ = anchor; }

    // Extent of a text in user units in the current font (always positive).
    double textWidth(const QString& text) const;
    double textHeight(const QString& text = QStringLiteral("Ag")) const;

    // --- placing controls -------------------------------------------------
    // Places a child widget with its top-left corner at (left, top) in user
    // units; a width/height (user units) of 0 keeps the widget's own size.
    // The widget becomes a child of the canvas and stays visible unless it
    // was hidden on purpose.
    void placeControl(QWidget* control, double left, double top, double width = 0.0, double height = 0.0);

    // --- inspection (tests, accessibility) --------------------------------
    // The backing image, in device pixels (size() × devicePixelRatio, but
    // no larger than the largest screen: a larger window gets an image of
    // a lower pixel ratio, scaled up when shown).
    const QImage& image() const;
    // The colour at a user coordinate.
    QColor pixelAt(double x, double y) const;
    // Device pixel of a user coordinate.
    QPointF toDevice(double x, double y) const;
    QPointF toLogical(double x, double y) const;  // in widget coordinates
    QPointF toUser(const QPointF& widgetPoint) const;
    // Texts printed since the last cls(), in order (the newest few thousand).
    const QStringList& printedTexts() const { return printed_; }
    int skippedOperations() const { return skipped_; }
    // The texts and straight lines recorded since the last cls(), where they
    // are painted at the present size, in widget pixels: each text's box and
    // the type size it is painted in, each line's ends, each filled disc's
    // bounding box. Empty once the record overflowed.
    struct DrawnText {
        QString text;
        QRectF box;
        double points;
        QColor colour;
    };
    struct DrawnLine {
        QPointF from, to;
        QColor colour;
    };
    struct DrawnDisc {
        QRectF box;
        QColor colour;
    };
    std::vector<DrawnText> drawnTexts() const;
    std::vector<DrawnLine> drawnLines() const;
    std::vector<DrawnDisc> drawnDiscs() const;
    int recordedOperations() const { return static_cast<int>(ops_.size()); }

    QSize sizeHint() const override { return {640, 480}; }

    // --- the figure in words (screen readers) ---------------------------------
    // The screen that draws sets a short summary of what the figure shows
    // after each drawing; cls() forgets it with the printed texts.
    void setSummary(const QString& summary);
    // Adds a sentence to the summary, for what is drawn over the figure
    // afterwards (a law laid over the data).
    void addToSummary(const QString& sentence);
    const QString& summary() const { return summary_; }
    // What a printout's heading states besides the window's title and the
    // date: the figure's fitted index ("n = 1.523") where it has one. Set
    // after each drawing; cls() forgets it.
    void setPrintNote(const QString& note) { printNote_ = note; }
    const QString& printNote() const { return printNote_; }
    // The accessible description: the summary, then the newest printed
    // texts, one per line.
    QString description() const;
    // Gives every canvas its accessible role and description (done by the
    // first canvas made).
    static void installAccessibility();

    // --- the figure outside the screen ----------------------------------------
    // Paints the whole figure (background and every operation since cls)
    // through the painter, in the area's logical pixels: a PNG at any
    // resolution, an SVG or a printed page gets lines as lines and texts as
    // texts. When the record overflowed, the backing image stands in.
    void renderFigure(QPainter& painter) const;

signals:
    // Mouse events in user coordinates.
    void mousePressed(double x, double y, Qt::MouseButton button);
    void mouseReleased(double x, double y, Qt::MouseButton button);
    void clicked(double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    using PenState = canvas_ops::PenState;
    using Op = canvas_ops::Op;

    // A placed control, in area fractions like the drawing (0 = own size).
    struct Placement {
        QPointer<QWidget> control;
        double left, top, width, height;
    };

    void record(Op op);
    // Which of the last texts a text printed at (x, y), in area fractions,
    // follows, how, and how far under it it is designed.
    struct Follows {
        canvas_ops::TextLink link = canvas_ops::TextLink::None;
        int behind = 0;  // texts between the two
        double below = 0.0;
    };
    Follows followedText(double x, double y) const;
    // The present size of the area, for painting recorded operations.
    canvas_ops::ReplayArea replayArea() const;
    void syncImage() const;
    void rebuildImage(const QSize& device, qreal dpr) const;
    // Paints the operations recorded since the image was last brought up to date.
    void paintPending() const;
    static void beginPainting(QPainter& painter);
    void placeControls();
    void setUserScale(const UserScale& s);
    QFont currentFont() const;
    QFontMetricsF metrics(const QFont& font) const;
    double fracX(double x) const;
    double fracY(double y) const;
    double areaWidth() const;
    double areaHeight() const;
    static bool finite(std::initializer_list<double> values);
    void skip() { ++skipped_; }
    void notePrinted(const QString& text);
    void forgetDescription();
    void descriptionChanged();

    UserScale scale_{0, 0, 640, 480};
    bool customScale_ = false;  // until a scale is set the scale follows the pixel size
    double currentX_ = 0.0;
    double currentY_ = 0.0;
    PenState state_;
    QColor backColor_{Qt::white};
    FontRole fontRole_{FontRole::Caption};
    double fontSize_ = 10.0;
    QColor textHalo_;
    canvas_ops::TextAnchor textAnchor_;
    bool fontBold_ = false;
    int fontCharset_ = 161;

    // The image follows the widget's size and pixel ratio lazily: Qt delivers
    // no resize event to a hidden widget, yet screens draw before showing.
    mutable QImage image_;
    // The presentation size the image is painted at, and how many of ops_ it shows.
    mutable double paintedScale_ = 0.0;
    mutable std::size_t painted_ = 0;
    std::vector<Op> ops_;
    // The last few texts recorded, the newest last, and where print() left
    // the pen after the newest, in area fractions: for the next text to
    // tell whether it follows one of them.
    struct TextTrail {
        double x, y;      // the text's top-left
        double rowLeft;   // the left of the first text on its row
        double lineStep;  // its line height
    };
    std::vector<TextTrail> trail_;
    struct PenAfterText {
        double x, y;
        bool sameLine;  // left on the text's line, just after it
    } pen_{};
    // Where the texts painted into the image so far left off.
    mutable canvas_ops::TextFlow flow_;
    // The ground as recorded so far; painting may lag behind recording.
    canvas_ops::TextFlow recordedGround_;
    bool opsComplete_ = true;  // false once the list overflowed: resize then rescales pixels
    QStringList printed_;
    QString summary_;
    QString printNote_;
    bool descriptionChangePending_ = false;
    int skipped_ = 0;
    std::vector<Placement> placements_;
};
