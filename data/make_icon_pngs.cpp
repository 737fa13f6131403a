// Renders the scalable icon to the PNG sizes that desktops look for:
// make_icon_pngs icon.svg output-folder size...
// writes output-folder/<size>x<size>/<icon name>.png for each size.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "usage: make_icon_pngs icon.svg output-folder size...\n");
        return 2;
    }
    const QString svg = QString::fromLocal8Bit(argv[1]);
    const QString out = QString::fromLocal8Bit(argv[2]);
    QSvgRenderer renderer(svg);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    for (int k = 3; k < argc; ++k) {
        const int size = QString::fromLocal8Bit(argv[k]).toInt();
        if (size <= 0 || size > 1024) return 2;
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter);
        painter.end();
        const QString folder = QStringLiteral("%1/%2x%2").arg(out).arg(size);
        QDir().mkpath(folder);
        if (!image.save(folder + QLatin1Char('/') + QFileInfo(svg).completeBaseName() + QStringLiteral(".png"))) return 1;
    }
    return 0;
}
