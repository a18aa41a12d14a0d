// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliOptions.h"

#include "localization/L.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <QCommandLineParser>

namespace {

constexpr int maximumJobs = 64;

QString presetChoices()
{
    QStringList ids;
    for (const LoudnessPreset &preset : LoudnessPreset::builtIn())
        ids.append(preset.id);
    return ids.join(QStringLiteral(", "));
}

// Absolute and clean, its bytes kept (QFileInfo would lose those of a name that is not UTF-8).
QString absolute(const QString &path)
{
    return standardizedPath(path);
}

} // namespace

CliParseResult parseCliOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(L::text(L::CliDescription));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                                    L::text(L::CliOutputOption), QStringLiteral("DIR"));
    const QCommandLineOption preset(QStringLiteral("preset"),
                                    L::text(L::CliPresetOption, presetChoices()),
                                    QStringLiteral("ID"));
    const QCommandLineOption target(QStringLiteral("target"), L::text(L::CliTargetOption),
                                    QStringLiteral("LUFS"));
    const QCommandLineOption ceiling(QStringLiteral("ceiling"), L::text(L::CliCeilingOption),
                                     QStringLiteral("DBTP"));
    const QCommandLineOption noNormalize(QStringLiteral("no-normalize"),
                                         L::text(L::CliNoNormalizeOption));
    const QCommandLineOption format(QStringLiteral("format"), L::text(L::CliFormatOption),
                                    QStringLiteral("MODE"));
    const QCommandLineOption sampleRate(QStringLiteral("sample-rate"),
                                        L::text(L::CliSampleRateOption), QStringLiteral("MODE"));
    const QCommandLineOption bitDepth(QStringLiteral("bit-depth"), L::text(L::CliBitDepthOption),
                                      QStringLiteral("N"));
    const QCommandLineOption prefix(QStringLiteral("prefix"), L::text(L::CliPrefixOption),
                                    QStringLiteral("TEXT"));
    const QCommandLineOption report(QStringLiteral("report"), L::text(L::CliReportOption),
                                    QStringLiteral("FILE"));
    const QCommandLineOption analyzeOnly(QStringLiteral("analyze-only"),
                                         L::text(L::CliAnalyzeOnlyOption));
    const QCommandLineOption json(QStringLiteral("json"), L::text(L::CliJsonOption));
    const QCommandLineOption language(QStringLiteral("language"), L::text(L::CliLanguageOption),
                                      QStringLiteral("L"));
    const QCommandLineOption jobs(
        QStringLiteral("jobs"),
        L::text(L::CliJobsOption, QString::number(AppServices::defaultParallelJobs())),
        QStringLiteral("N"));
    const QCommandLineOption skipExisting(QStringLiteral("skip-existing"),
                                          L::text(L::CliSkipExistingOption));
    parser.addOptions({output, preset, target, ceiling, noNormalize, format, sampleRate, bitDepth,
                       prefix, report, analyzeOnly, json, language, jobs, skipExisting});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("PATH"), L::text(L::CliPathsArgument),
                                 QStringLiteral("PATH..."));

    CliParseResult parsed;
    parsed.usage = L::text(L::CliUsage, QStringLiteral("tonbrook-cli"));
    if (!parser.parse(arguments)) {
        parsed.error = parser.errorText();
        return parsed;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();

    CliOptions options;
    const auto invalid = [&parsed, &parser](const QCommandLineOption &option) {
        parsed.error = L::text(L::CliInvalidValue, QString(u"--" + option.names().constLast()),
                               parser.value(option));
        return parsed;
    };
    if (parser.isSet(preset)) {
        const auto chosen = LoudnessPreset::builtIn(parser.value(preset));
        if (!chosen)
            return invalid(preset);
        options.settings.selectedPreset = *chosen;
    }
    if (parser.isSet(target)) {
        const auto value = NumberFormat::parseDouble(parser.value(target));
        if (!value || !ProcessingSettings::isTargetInRange(*value))
            return invalid(target);
        options.settings.selectedPreset = *LoudnessPreset::builtIn(u"custom");
        options.settings.customTargetLUFS = *value;
    }
    if (parser.isSet(ceiling)) {
        const auto value = NumberFormat::parseDouble(parser.value(ceiling));
        if (!value || !ProcessingSettings::isCeilingInRange(*value))
            return invalid(ceiling);
        options.settings.truePeakCeiling = *value;
    }
    options.settings.normalizeLoudness = !parser.isSet(noNormalize);
    if (parser.isSet(format)) {
        const auto mode = OutputFormatModes::fromRawValue(parser.value(format));
        if (!mode)
            return invalid(format);
        options.settings.outputFormatMode = *mode;
    }
    if (parser.isSet(sampleRate)) {
        const auto mode = SampleRateModes::fromRawValue(parser.value(sampleRate));
        if (!mode)
            return invalid(sampleRate);
        options.settings.sampleRateMode = *mode;
    }
    if (parser.isSet(bitDepth)) {
        bool number = false;
        const auto depth = OutputBitDepths::fromRawValue(parser.value(bitDepth).toInt(&number));
        if (!number || !depth)
            return invalid(bitDepth);
        options.settings.bitDepth = *depth;
    }
    if (parser.isSet(prefix)) {
        if (parser.value(prefix).isEmpty())
            return invalid(prefix);
        options.settings.addPrefix = true;
        options.settings.prefix = parser.value(prefix);
    }
    if (parser.isSet(language)) {
        const auto chosen = AppLanguages::fromRawValue(parser.value(language));
        if (!chosen)
            return invalid(language);
        options.language = *chosen;
    }
    if (parser.isSet(jobs)) {
        bool number = false;
        const int count = parser.value(jobs).toInt(&number);
        if (!number || count < 1 || count > maximumJobs)
            return invalid(jobs);
        options.parallelJobs = count;
    }
    options.analyzeOnly = parser.isSet(analyzeOnly);
    // Measuring only writes nothing, so there is nothing to leave out.
    options.settings.skipExisting = parser.isSet(skipExisting) && !options.analyzeOnly;
    options.json = parser.isSet(json);
    if (parser.isSet(report))
        options.reportPath = absolute(parser.value(report));
    if (parser.isSet(output))
        options.settings.outputFolder = absolute(parser.value(output));
    else if (!options.analyzeOnly) {
        parsed.error = L::text(L::CliNeedsOutput);
        return parsed;
    }
    // The window's "reveal when done" has no meaning here.
    options.settings.revealInFinderWhenComplete = false;
    for (const QString &path : parser.positionalArguments())
        options.paths.append(absolute(path));
    if (options.paths.isEmpty()) {
        parsed.error = L::text(L::CliNeedsPaths);
        return parsed;
    }
    parsed.options = options;
    return parsed;
}
