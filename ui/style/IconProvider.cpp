// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/style/IconProvider.h"

#include "ui/style/TBTheme.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace {

const QString folder = QStringLiteral(":/Tonbrook/Style/icons/");

} // namespace

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{}

QStringList IconProvider::names()
{
    QStringList names = QDir(folder).entryList({QStringLiteral("*.svg")}, QDir::Files);
    for (QString &name : names)
        name.chop(4);
    return names;
}

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const qsizetype slash = id.indexOf(u'/');
    const QString name = id.left(slash);
    const QString colour = slash < 0 ? TBTheme::text().name() : id.mid(slash + 1);
    QFile file(folder + name + QStringLiteral(".svg"));
    const QSize target =
        requestedSize.isValid() && !requestedSize.isEmpty() ? requestedSize : QSize(24, 24);
    if (size)
        *size = target;
    QImage image(target, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (!file.open(QIODevice::ReadOnly))
        return image;
    // SVG knows no alpha in hex colours: the colour goes in opaque, its alpha as opacity.
    const QColor ink(colour);
    QByteArray svg = file.readAll();
    svg.replace("currentColor", ink.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(svg);
    QPainter painter(&image);
    painter.setOpacity(ink.alphaF());
    renderer.render(&painter);
    return image;
}
