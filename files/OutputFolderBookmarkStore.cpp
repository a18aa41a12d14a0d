// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputFolderBookmarkStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <utility>

OutputFolderBookmarkStore::OutputFolderBookmarkStore(std::shared_ptr<QSettings> defaults,
                                                     QString key)
    : m_defaults(std::move(defaults))
    , m_key(std::move(key))
{}

std::optional<QString> OutputFolderBookmarkStore::restore() const
{
    if (!m_defaults)
        return std::nullopt;
    const QVariant stored = m_defaults->value(m_key);
    if (!stored.isValid())
        return std::nullopt;
    const QString path = QString::fromUtf8(stored.toByteArray());
    if (path.isEmpty() || !QDir::isAbsolutePath(path) || !QFileInfo(path).isDir())
        return std::nullopt;
    return path;
}

void OutputFolderBookmarkStore::save(const QString &folder) const
{
    if (!m_defaults)
        return;
    if (folder.isEmpty() || !QDir::isAbsolutePath(folder)) {
        remove();
        return;
    }
    m_defaults->setValue(m_key, QDir::cleanPath(folder).toUtf8());
    m_defaults->sync();
}

void OutputFolderBookmarkStore::remove() const
{
    if (!m_defaults)
        return;
    m_defaults->remove(m_key);
    m_defaults->sync();
}
