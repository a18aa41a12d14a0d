// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ResourceLocator.h"

#include "engine/BuildInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

ResourceLocator::ResourceLocator()
    : m_executableDirectory(QCoreApplication::applicationDirPath())
{}

ResourceLocator::ResourceLocator(QString executableDirectory)
    : m_executableDirectory(std::move(executableDirectory))
{}

std::optional<QString> ResourceLocator::ffmpegPath() const
{
    return existing(QLatin1StringView(BuildInfo::privateLibDir) + QStringLiteral("/ffmpeg"));
}

std::optional<QString> ResourceLocator::licenseTextPath(const QString &fileName) const
{
    if (fileName.isEmpty() || fileName.contains(u'/'))
        return std::nullopt;
    return existing(QLatin1StringView(BuildInfo::licenseDir) + u'/' + fileName);
}

std::optional<QString> ResourceLocator::existing(const QString &relativePath) const
{
    if (m_executableDirectory.isEmpty())
        return std::nullopt;
    const QString path =
        QDir::cleanPath(m_executableDirectory + QStringLiteral("/../") + relativePath);
    // Existence only: whether it can be executed is the launch's business, so
    // that a damaged install reports the system's own reason.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    return path;
}
