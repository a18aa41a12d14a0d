// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CliOptions.h"

#include <QObject>
#include <QTextStream>

#include <memory>

class MainViewModel;
class QSocketNotifier;

// One command-line run: import, measure, process, report, each step driven
// through the same controller the window uses, printing as it goes.
class CliSession : public QObject
{
    Q_OBJECT

public:
    CliSession(CliOptions options, std::unique_ptr<MainViewModel> controller);
    ~CliSession() override;

    // Starts the run; finished(status) follows.
    void start();
    // Ctrl-C and the other stopping signals: stop what runs, exactly as the
    // window's Cancel does, and end with the status a shell expects (128 + signal).
    void interrupt(int signal);

Q_SIGNALS:
    void finished(int exitStatus);

private:
    void analysisMoved();
    void beginProcessing();
    void itemFinished(const QUuid &id);
    void screenChanged();
    void finishAnalyzeOnly();
    void finishRun();
    void end(int status);
    // The bundled ffmpeg cannot run: says so once and ends (status 3).
    bool endedByInstallationProblem();
    void showProgress();
    void clearProgress();
    void printJson();

    CliOptions m_options;
    std::unique_ptr<MainViewModel> m_controller;
    QTextStream m_out;
    QTextStream m_err;
    bool m_progressShown = false;
    bool m_interactive = false;
    bool m_processing = false;
    bool m_ended = false;
    bool m_started = false;
    bool m_interrupted = false;
    // 1 once a named path turned out not to exist.
    int m_pathStatus = 0;
};
