// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "localization/LanguageManager.h"

#include <QSettings>
#include <QTemporaryDir>

// A LanguageManager on a throw-away preferences file, to switch the language inside a test.
class LanguageFixture
{
public:
    explicit LanguageFixture(const QStringList &preferredLanguages = {QStringLiteral("en-US")})
        : m_manager(std::make_unique<QSettings>(path(), QSettings::IniFormat), preferredLanguages)
    {}

    LanguageManager &manager() { return m_manager; }
    QString path() const { return m_dir.filePath(QStringLiteral("preferences.ini")); }

private:
    QTemporaryDir m_dir;
    LanguageManager m_manager;
};
