#include "canvas/figure_export.h"

#include <QAction>
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <utility>

#include "canvas/canvas.h"
#include "canvas/graph_axes.h"
#include "canvas/presentation_scale.h"
#include "core/outside_files.h"

namespace {

FigureCommands& commands() {
    static FigureCommands installed;
    return installed;
}

}  // namespace

QString figureTitle(const Canvas& canvas) {
    const QWidget* window = canvas.window();
    const QString title = window ? window->windowTitle() : QString();
    return title.isEmpty() ? canvas.accessibleName() : title;
}

void setFigureCommands(FigureCommands figureCommands) { commands() = std::move(figureCommands); }

void followImageRatio(QPainter& painter) {
    const qreal wanted = painter.device()->devicePixelRatio();
    const qreal applied = painter.deviceTransform().m11();
    if (applied > 0.0 && !qFuzzyCompare(applied, wanted)) painter.scale(wanted / applied, wanted / applied);
}

QImage figureImage(const Canvas& canvas, double scale) {
    const QSize logical = canvas.size().expandedTo(QSize(1, 1));
    double s = std::isfinite(scale) ? std::clamp(scale, 0.1, 8.0) : 2.0;
    // A window as large as a 4K screen at twice its size would be a
    // 48-megapixel PNG, seconds of encoding and hundreds of megabytes: the
    // long side stays within what any screen or printer can use.
    constexpr double kLongestSide = 4096.0;
    s = std::min(s, kLongestSide / std::max(logical.width(), logical.height()));
    QImage image(
        QSize(static_cast<int>(std::lround(logical.width() * s)), static_cast<int>(std::lround(logical.height() * s))),
        QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(s);
    image.fill(Qt::white);
    QPainter painter(&image);
    followImageRatio(painter);  // a window over 2048 pixels across gets a scale below 1
    renderAsDesigned(canvas, painter);
    painter.end();
    return image;
}

QByteArray figureSvg(const Canvas& canvas, const QString& title) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    const QSize size = canvas.size().expandedTo(QSize(1, 1));
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setTitle(title);
    generator.setDescription(canvas.printedTexts().join(QLatin1Char('\n')));
    generator.setResolution(canvas.logicalDpiX());
    QPainter painter(&generator);
    renderAsDesigned(canvas, painter);
    painter.end();
    return bytes;
}

QRectF figureOnPage(const QSizeF& figure, const QSizeF& page) {
    const QSizeF f = figure.expandedTo(QSizeF(1, 1));
    const double scale = std::min(page.width() / f.width(), page.height() / f.height());
    if (!std::isfinite(scale) || scale <= 0.0) return {};
    const QSizeF size = f * scale;
    return {QPointF((page.width() - size.width()) / 2.0, 0.0), size};
}

QString figureHeading(const Canvas& canvas, QDate date) {
    QStringList parts{figureTitle(canvas).trimmed(), date.toString(Qt::ISODate)};
    if (!canvas.printNote().isEmpty()) parts << canvas.printNote();
    parts << QStringLiteral("Name  Όνομα: ____________________");
    parts.removeAll(QString());
    return parts.join(QStringLiteral("     "));
}

namespace {

constexpr double kHeadingPoints = 10.0;

// Prints the heading from the page's top-left corner, on one line or, when
// that is too wide, broken before the name's blank; returns the height it
// took, with a gap under it.
double paintHeading(QPainter& painter, const QSizeF& page, const QString& heading) {
    painter.save();
    painter.setFont(designedRoleFont(FontRole::Caption, kHeadingPoints));
    painter.setPen(Qt::black);
    const QFontMetricsF metrics(painter.font(), painter.device());
    QStringList lines{heading};
    if (metrics.horizontalAdvance(heading) > page.width()) {
        const qsizetype name = heading.lastIndexOf(QStringLiteral("Name"));
        if (name > 0) lines = QStringList{heading.left(name).trimmed(), heading.mid(name)};
    }
    double y = 0.0;
    for (const QString& line : lines) {
        painter.drawText(QRectF(0.0, y, page.width(), metrics.height()), Qt::AlignLeft | Qt::AlignVCenter, line);
        y += metrics.height();
    }
    painter.restore();
    return y + metrics.height() / 2.0;
}

}  // namespace

void paintFigureOnPage(const Canvas& canvas, QPainter& painter, const QSizeF& page, const QString& heading) {
    const double band = heading.isEmpty() ? 0.0 : paintHeading(painter, page, heading);
    QRectF place = figureOnPage(QSizeF(canvas.size()), QSizeF(page.width(), page.height() - band));
    if (place.isEmpty()) return;
    place.translate(0.0, band);
    painter.save();
    painter.translate(place.topLeft());
    const double scale = place.width() / std::max(1, canvas.width());
    painter.scale(scale, scale);
    painter.setClipRect(QRectF(QPointF(0, 0), QSizeF(canvas.size())));
    renderAsDesigned(canvas, painter);
    painter.restore();
}

bool printFigure(const Canvas& canvas, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    // The painter starts at the top-left corner of the printable area.
    paintFigureOnPage(canvas, painter, printer.pageLayout().paintRectPixels(printer.resolution()).size(),
                      figureHeading(canvas, QDate::currentDate()));
    return painter.end();
}

QString saveFigureFile(const Canvas& canvas, const QString& path) {
    const bool svg = QFileInfo(path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) == 0;
    QByteArray bytes;
    if (svg) {
        bytes = figureSvg(canvas, figureTitle(canvas));
    } else {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!figureImage(canvas).save(&buffer, "PNG")) return QStringLiteral("the image could not be made");
    }
    const FileWriteResult written =
        replaceFile(std::filesystem::path(QFile::encodeName(path).toStdString()),
                    std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    return written.ok ? QString() : QString::fromStdString(written.reason);
}

void installFigureActions(Canvas& canvas) {
    // The keys belong to the window (any control may have the focus when the
    // pupil presses them); the menu only shows them.
    const auto keys = [](QKeySequence::StandardKey key) {
        return QLatin1Char('\t') + QKeySequence(key).toString(QKeySequence::NativeText);
    };
    auto* save = new QAction(QStringLiteral("Save figure…  Αποθήκευση σχήματος…") + keys(QKeySequence::Save), &canvas);
    auto* print = new QAction(QStringLiteral("Print…  Εκτύπωση…") + keys(QKeySequence::Print), &canvas);
    save->setObjectName(QStringLiteral("saveFigure"));
    print->setObjectName(QStringLiteral("printFigure"));
    QObject::connect(save, &QAction::triggered, &canvas, [&canvas] {
        if (commands().save) commands().save(canvas);
    });
    QObject::connect(print, &QAction::triggered, &canvas, [&canvas] {
        if (commands().print) commands().print(canvas);
    });
    canvas.addAction(save);
    canvas.addAction(print);
    canvas.setContextMenuPolicy(Qt::ActionsContextMenu);
}
