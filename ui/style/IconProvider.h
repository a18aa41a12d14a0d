// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

// Draws the shipped monochrome SVG icons in any colour at any size:
// "image://tbicon/<name>/<#rrggbb or #aarrggbb>". The SVGs paint with
// "currentColor", which is replaced before rendering, so one file serves every
// theme colour and every screen density.
class IconProvider final : public QQuickImageProvider
{
public:
    IconProvider();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    // The icons there are, by name.
    static QStringList names();
};
