#pragma once
#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;
class QPainter;

// Lays a printed A4 page out top to bottom in millimetres from the top-left
// corner of its printable area (15 mm margins): lines of text that wrap,
// ruled lines to write on, labelled blanks and tables, each starting a new
// page when it does not fit. Reports and worksheets are printed with it,
// in the program's type at its designed size. A pen without a painter only
// measures, so that the room left on a page can be shared out first.
class PagePen {
public:
    static constexpr double kWidthMm = 180.0;   // A4 less 15 mm each side
    static constexpr double kHeightMm = 267.0;  // A4 less 15 mm top and bottom
    static constexpr double kRowMm = 6.0;       // a ruled line, a table's least row
    static constexpr double kBodyPoints = 10.0;

    PagePen(QPainter* painter, QPagedPaintDevice* device);
    double mm(double v) const { return v * dpi_ / 25.4; }
    // Millimetres laid out so far, over every page, and the pen's height on this one.
    double used() const { return total_; }
    double y() const { return y_; }
    QPainter* painter() const { return p_; }

    void text(const QString& text, double points, bool bold = false, double indentMm = 0.0,
              const QColor& colour = Qt::black);
    void gap(double heightMm);
    void lines(int count);
    void blanks(const QStringList& labels);
    // A grid with the heads in bold; a row is as tall as its longest cell
    // wrapped, and never shorter than a line to write on.
    void table(const QStringList& heads, const QList<QStringList>& rows);

private:
    void room(double heightMm);
    void advance(double heightMm);

    QPainter* p_;
    QPagedPaintDevice* device_;
    double dpi_;
    double y_ = 0.0;
    double total_ = 0.0;
};

// Gives the device an A4 upright page with the pen's margins.
void setA4Page(QPagedPaintDevice& device);
