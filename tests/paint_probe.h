#pragma once
// A paint device that draws nothing and notes where things would go: the
// box of every text and the bounds of all other ink, in device pixels.
// It lets a test see what a printer would be given without reading PDF.
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPolygonF>
#include <QTextItem>

#include <vector>

struct ProbedText {
    QString text;
    QRectF box;  // device pixels
};

class ProbeEngine : public QPaintEngine {
public:
    ProbeEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    std::vector<ProbedText> texts;
    QRectF ink;  // everything but texts

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return User; }

    void drawTextItem(const QPointF& p, const QTextItem& item) override {
        const QFontMetricsF fm(item.font(), paintDevice());
        const QRectF box(p.x(), p.y() - fm.ascent(), item.width(), fm.ascent() + fm.descent());
        texts.push_back({item.text(), state->transform().mapRect(box)});
    }
    void drawPath(const QPainterPath& path) override { note(path.boundingRect()); }
    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i) note(QRectF(lines[i].p1(), lines[i].p2()).normalized());
    }
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) note(rects[i]);
    }
    void drawEllipse(const QRectF& r) override { note(r); }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override {
        note(QPolygonF(QList<QPointF>(points, points + count)).boundingRect());
    }
    void drawPoints(const QPointF* points, int count) override {
        for (int i = 0; i < count; ++i) note(QRectF(points[i], QSizeF(0, 0)));
    }
    void drawPixmap(const QRectF& r, const QPixmap&, const QRectF&) override { note(r); }
    void drawImage(const QRectF& r, const QImage&, const QRectF&, Qt::ImageConversionFlags) override { note(r); }

private:
    void note(const QRectF& r) {
        const QRectF mapped = state->transform().mapRect(r);
        ink = ink.isNull() ? mapped : ink.united(mapped);
    }
};

class ProbeDevice : public QPaintDevice {
public:
    ProbeDevice(QSize size, int dpi) : size_(size), dpi_(dpi) {}
    QPaintEngine* paintEngine() const override { return &engine; }
    mutable ProbeEngine engine;

protected:
    int metric(PaintDeviceMetric m) const override {
        switch (m) {
        case PdmWidth: return size_.width();
        case PdmHeight: return size_.height();
        case PdmWidthMM: return size_.width() * 254 / (10 * dpi_);
        case PdmHeightMM: return size_.height() * 254 / (10 * dpi_);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY: return dpi_;
        case PdmDevicePixelRatioScaled: return static_cast<int>(devicePixelRatioFScale());
        case PdmDepth: return 32;
        default: return QPaintDevice::metric(m);
        }
    }

private:
    QSize size_;
    int dpi_;
};
