// SPDX-License-Identifier: GPL-3.0-or-later
//
// Renders the application's SVG icon to the PNG sizes of the hicolor theme, at
// build time, so the PNGs can never drift from the drawing.
//
// usage: tonbrook-icon-renderer ICON.svg OUTPUT_DIR NAME SIZE...
// writes OUTPUT_DIR/<SIZE>x<SIZE>/apps/NAME.png
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char *argv[])
{
    // Painting into an image needs no window system, so none is started.
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 5) {
        std::fputs("usage: tonbrook-icon-renderer ICON.svg OUTPUT_DIR NAME SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer renderer(arguments.at(1));
    if (!renderer.isValid()) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(arguments.at(1)));
        return 1;
    }
    for (const QString &sizeText : arguments.mid(4)) {
        const int size = sizeText.toInt();
        if (size <= 0) {
            std::fprintf(stderr, "not a size: %s\n", qPrintable(sizeText));
            return 2;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter);
        painter.end();
        const QString folder =
            QStringLiteral("%1/%2x%2/apps").arg(arguments.at(2), QString::number(size));
        const QString file = folder + u'/' + arguments.at(3) + QStringLiteral(".png");
        if (!QDir().mkpath(folder) || !image.save(file, "PNG")) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
