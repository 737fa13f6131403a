#include "canvas/page_pen.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>

#include "canvas/fonts.h"
#include "canvas/palette.h"
#include "canvas/presentation_scale.h"

namespace {
constexpr int kCellFlags = Qt::AlignCenter | Qt::TextWordWrap;
}  // namespace

PagePen::PagePen(QPainter* painter, QPagedPaintDevice* device)
    : p_(painter), device_(device), dpi_(device->logicalDpiY()) {}

void PagePen::text(const QString& text, double points, bool bold, double indentMm, const QColor& colour) {
    QFont font = designedRoleFont(FontRole::Caption, points, bold);
    const QRectF area(mm(indentMm), 0, mm(kWidthMm - indentMm), mm(kHeightMm));
    const double height =
        QFontMetricsF(font, device_).boundingRect(area, Qt::TextWordWrap, text).height() * 25.4 / dpi_;
    room(height);
    if (p_) {
        p_->setFont(font);
        p_->setPen(colour);
        p_->drawText(area.translated(0, mm(y_)), Qt::TextWordWrap, text);
    }
    advance(height + 0.8);
}

void PagePen::gap(double heightMm) { advance(std::min(heightMm, kHeightMm - y_)); }

void PagePen::lines(int count) {
    for (int k = 0; k < count; ++k) {
        room(kRowMm);
        advance(kRowMm);
        if (p_) {
            p_->setPen(QPen(palette::worksheet::rule, mm(0.2)));
            p_->drawLine(QPointF(mm(6.0), mm(y_)), QPointF(mm(kWidthMm), mm(y_)));
        }
    }
    advance(2.0);
}

void PagePen::blanks(const QStringList& labels) {
    room(kRowMm + 2.0);
    const double width = kWidthMm / labels.size();
    for (int k = 0; k < labels.size(); ++k) {
        if (!p_) continue;
        p_->setFont(designedRoleFont(FontRole::Caption, kBodyPoints));
        p_->setPen(Qt::black);
        const QRectF cell(mm(k * width), mm(y_), mm(width - 4.0), mm(kRowMm));
        const QRectF label = p_->boundingRect(cell, Qt::AlignLeft | Qt::AlignBottom, labels[k]);
        p_->drawText(cell, Qt::AlignLeft | Qt::AlignBottom, labels[k]);
        p_->drawLine(QPointF(label.right() + mm(2.0), cell.bottom()), QPointF(cell.right(), cell.bottom()));
    }
    advance(kRowMm + 3.0);
}

void PagePen::table(const QStringList& heads, const QList<QStringList>& rows) {
    if (heads.isEmpty()) return;
    const double column = kWidthMm / heads.size();
    for (int r = -1; r < rows.size(); ++r) {
        const QFont font = designedRoleFont(FontRole::Caption, kBodyPoints, r < 0);
        const QStringList& cells = r < 0 ? heads : rows[r];
        double height = kRowMm;
        for (const QString& text : cells) {
            const QRectF box(0, 0, mm(column - 2.0), mm(kHeightMm));
            height = std::max(
                height, QFontMetricsF(font, device_).boundingRect(box, kCellFlags, text).height() * 25.4 / dpi_ + 2.0);
        }
        room(height);
        if (p_) {
            p_->setFont(font);
            p_->setPen(QPen(Qt::black, mm(0.25)));
            for (int c = 0; c < heads.size(); ++c) {
                const QRectF cell(mm(c * column), mm(y_), mm(column), mm(height));
                p_->drawRect(cell);
                if (c < cells.size()) p_->drawText(cell.adjusted(mm(1.0), 0, -mm(1.0), 0), kCellFlags, cells[c]);
            }
        }
        advance(height);
    }
    advance(2.0);
}

void PagePen::room(double heightMm) {
    if (y_ + heightMm <= kHeightMm || y_ == 0.0) return;
    if (p_) device_->newPage();
    total_ += kHeightMm - y_;
    y_ = 0.0;
}

void PagePen::advance(double heightMm) {
    y_ += heightMm;
    total_ += heightMm;
}

void setA4Page(QPagedPaintDevice& device) {
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                                     QPageLayout::Millimeter));
}
