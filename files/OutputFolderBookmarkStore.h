// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <optional>

class QSettings;

// Remembers the output folder between launches, as its absolute path (UTF-8)
// under "outputFolderBookmark" in the user's preferences.
class OutputFolderBookmarkStore
{
public:
    static constexpr QLatin1StringView defaultKey{"outputFolderBookmark"};

    // Without a store nothing is remembered.
    explicit OutputFolderBookmarkStore(std::shared_ptr<QSettings> defaults,
                                       QString key = defaultKey);

    // The remembered folder, when the stored value is an absolute path and a
    // folder is there; otherwise absent, and the stored value is kept.
    std::optional<QString> restore() const;
    // Remembers the folder; a path that cannot be remembered (not absolute)
    // forgets the previous one instead.
    void save(const QString &folder) const;
    void remove() const;

    const QString &key() const { return m_key; }

private:
    std::shared_ptr<QSettings> m_defaults;
    QString m_key;
};
