// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingSettings.h"

#include <QSize>

#include <memory>
#include <optional>

class QSettings;

// The processing settings and the window's size as the user left them, in
// the preferences file, so that the next launch starts there and not at the
// defaults. The output folder has a store of its own (OutputFolderBookmarkStore).
// Without a file nothing is remembered; a stored value that is not one the
// settings can take is left out, and its default stays.
class SettingsStore
{
public:
    explicit SettingsStore(std::shared_ptr<QSettings> file);

    // The stored choices laid over `defaults` (whose output folder stays).
    ProcessingSettings restore(const ProcessingSettings &defaults) const;
    void save(const ProcessingSettings &settings) const;

    std::optional<QSize> windowSize() const;
    void saveWindowSize(QSize size) const;

private:
    std::shared_ptr<QSettings> m_file;
};
