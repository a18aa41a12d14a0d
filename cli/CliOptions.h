// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/AppServices.h"
#include "localization/AppLanguage.h"
#include "model/ProcessingSettings.h"

#include <QStringList>

#include <optional>

// What the command line asked for.
struct CliOptions
{
    QStringList paths;
    ProcessingSettings settings;
    std::optional<QString> reportPath;
    AppLanguage language = AppLanguage::System;
    bool analyzeOnly = false;
    bool json = false;
    // Files measured at once, and files written at once.
    int parallelJobs = AppServices::defaultParallelJobs();
};

// Either the options, or the one-line complaint (naming the option) for a
// usage error, with the usage line. Help and version are printed and exit
// from inside.
struct CliParseResult
{
    std::optional<CliOptions> options;
    QString error;
    QString usage;
};

CliParseResult parseCliOptions(const QStringList &arguments);
