// SPDX-License-Identifier: GPL-3.0-or-later
//
// tonbrook-cli: the window's work without the window.
#include "app/MainViewModel.h"
#include "cli/CliOptions.h"
#include "cli/CliPanelPresenter.h"
#include "cli/CliSession.h"
#include "engine/BuildInfo.h"
#include "localization/LanguageManager.h"
#include "model/StandardPath.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSettings>
#include <QSocketNotifier>
#include <QTextStream>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int signalPipe[2] = {-1, -1};

// The signals that end a run the way Ctrl-C does: a closed terminal, a
// `kill` or `timeout`, a reader of our output that went away.
constexpr int stoppingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

void onStoppingSignal(int signal)
{
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, 1);
}

// The arguments as the system gave them: file names that are not UTF-8 keep their bytes.
QStringList rawArguments(int argc, char *argv[])
{
    QStringList arguments;
    arguments.reserve(argc);
    for (int i = 0; i < argc; ++i)
        arguments.append(decodedPath(QByteArray(argv[i])));
    return arguments;
}

// --language is read before anything else, so that even --help speaks it.
AppLanguage requestedLanguage(const QStringList &arguments)
{
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        QString value;
        if (arguments[i] == u"--language" && i + 1 < arguments.size())
            value = arguments[i + 1];
        else if (arguments[i].startsWith(QStringLiteral("--language=")))
            value = arguments[i].mid(11);
        else
            continue;
        return AppLanguages::fromRawValue(value).value_or(AppLanguage::System);
    }
    return AppLanguage::System;
}

} // namespace

int main(int argc, char *argv[])
{
    const QStringList arguments = rawArguments(argc, argv);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tonbrook-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral("%1 (build %2), FFmpeg %3")
                                                .arg(QLatin1StringView(BuildInfo::version),
                                                     QLatin1StringView(BuildInfo::buildNumber),
                                                     QLatin1StringView(BuildInfo::ffmpegVersion)));

    // The language of this run only: the window's stored choice is neither
    // read nor written.
    LanguageManager language(nullptr, QLocale::system().uiLanguages());
    language.setSelection(requestedLanguage(arguments));

    const CliParseResult parsed = parseCliOptions(arguments);
    if (!parsed.options) {
        QTextStream err(stderr);
        err << "tonbrook-cli: " << parsed.error << Qt::endl << parsed.usage << Qt::endl;
        return 2;
    }
    const CliOptions &options = *parsed.options;

    // The window's remembered output folder is not touched either: the
    // services' own store remembers nothing.
    CliSession session(
        options, std::make_unique<MainViewModel>(AppServices{
                     .panelPresenter = std::make_shared<CliPanelPresenter>(options.reportPath),
                     .parallelJobs = options.parallelJobs}));

    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) == 0) {
        auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &session, [&session] {
            char byte = 0;
            if (::read(signalPipe[0], &byte, 1) != 1)
                return;
            const int signal = static_cast<unsigned char>(byte);
            // A second Ctrl-C (or TERM, or HUP) is the user insisting: leave at
            // once. Output nobody reads any more is simply not written.
            for (int stopping : stoppingSignals)
                std::signal(stopping, stopping == SIGPIPE ? SIG_IGN : SIG_DFL);
            session.interrupt(signal);
        });
        for (int stopping : stoppingSignals)
            std::signal(stopping, onStoppingSignal);
    }

    int status = 0;
    QObject::connect(&session, &CliSession::finished, &app, [&status](int exitStatus) {
        status = exitStatus;
        QCoreApplication::exit(exitStatus);
    });
    QMetaObject::invokeMethod(&session, &CliSession::start, Qt::QueuedConnection);
    app.exec();
    return status;
}
