// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/BuildInfo.h"
#include "engine/CancellationToken.h"
#include "engine/EngineError.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/NumberFormat.h"
#include "engine/ResourceLocator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>
#include <memory>

namespace {

QString figure(double value, int decimals)
{
    return NumberFormat::fixed(value, decimals);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tonbrook-cli"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(BuildInfo::version));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures the loudness of audio files with Tonbrook's bundled FFmpeg."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption targetOption(QStringLiteral("target"),
                                          QStringLiteral("Target loudness in LUFS (default -23)."),
                                          QStringLiteral("LUFS"), QStringLiteral("-23"));
    const QCommandLineOption ceilingOption(
        QStringLiteral("ceiling"), QStringLiteral("True-peak ceiling in dBTP (default -1)."),
        QStringLiteral("DBTP"), QStringLiteral("-1"));
    parser.addOption(targetOption);
    parser.addOption(ceilingOption);
    parser.addPositionalArgument(QStringLiteral("PATH"), QStringLiteral("Audio files to measure."),
                                 QStringLiteral("PATH..."));
    parser.process(app);

    QTextStream out(stdout);
    QTextStream err(stderr);
    const auto target = NumberFormat::parseDouble(parser.value(targetOption));
    const auto ceiling = NumberFormat::parseDouble(parser.value(ceilingOption));
    if (!target || !ceiling) {
        err << "tonbrook-cli: --target and --ceiling take numbers such as -23 or -1.5\n";
        return 2;
    }

    const ResourceLocator resources;
    const auto ffmpeg = resources.ffmpegPath();
    if (parser.positionalArguments().isEmpty()) {
        out << "Tonbrook " << BuildInfo::version << " (build " << BuildInfo::buildNumber << ")\n"
            << "Bundled FFmpeg " << BuildInfo::ffmpegVersion << ": "
            << ffmpeg.value_or(QStringLiteral("missing")) << "\n\n"
            << parser.helpText();
        return 0;
    }

    const LoudnessAnalysisService analyzer(std::make_shared<FFmpegRunner>(ffmpeg));
    const CancellationToken never;
    int failures = 0;
    for (const QString &path : parser.positionalArguments()) {
        const QString name = QFileInfo(path).fileName();
        try {
            const LoudnessMeasurement m = analyzer.analyze(path, *target, *ceiling, never);
            out << name << ": I " << figure(m.inputI, 2) << " LUFS, TP " << figure(m.inputTP, 2)
                << " dBTP, LRA " << figure(m.inputLRA, 2) << " LU, threshold "
                << figure(m.inputThresh, 2) << " LUFS\n";
        } catch (const EngineError &error) {
            ++failures;
            err << name << ": could not be measured (" << error.describe().left(300) << ")\n";
        }
        out.flush();
    }
    return failures == 0 ? 0 : 1;
}
