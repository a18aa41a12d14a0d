// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegRunner.h"

#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "engine/SystemError.h"

#include <QByteArrayList>
#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

extern char **environ;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// A file descriptor that closes itself.
class Fd
{
public:
    Fd() = default;
    explicit Fd(int fd)
        : m_fd(fd)
    {}
    Fd(Fd &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {}
    Fd &operator=(Fd &&other) noexcept
    {
        reset(std::exchange(other.m_fd, -1));
        return *this;
    }
    Fd(const Fd &) = delete;
    Fd &operator=(const Fd &) = delete;
    ~Fd() { reset(); }

    int get() const { return m_fd; }
    void reset(int fd = -1)
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = fd;
    }

private:
    int m_fd = -1;
};

struct Pipe
{
    Fd read;
    Fd write;

    static Pipe make()
    {
        int fds[2];
        // Close-on-exec so that a pipe of one run never leaks into the child of
        // another run started at the same moment, which would hold its end open
        // and delay end-of-file for the first.
        if (::pipe2(fds, O_CLOEXEC) != 0)
            throw FFmpegError::launchFailed(systemErrorText(errno));
        return {Fd(fds[0]), Fd(fds[1])};
    }
};

// RAII wrappers for the two posix_spawn attribute objects.
struct SpawnFileActions
{
    posix_spawn_file_actions_t value;
    SpawnFileActions() { posix_spawn_file_actions_init(&value); }
    ~SpawnFileActions() { posix_spawn_file_actions_destroy(&value); }
    SpawnFileActions(const SpawnFileActions &) = delete;
    SpawnFileActions &operator=(const SpawnFileActions &) = delete;
};

struct SpawnAttributes
{
    posix_spawnattr_t value;
    SpawnAttributes() { posix_spawnattr_init(&value); }
    ~SpawnAttributes() { posix_spawnattr_destroy(&value); }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;
};

pid_t spawn(const QString &binaryPath, const QStringList &arguments, int stdoutFd, int stderrFd)
{
    const QByteArray program = QFile::encodeName(binaryPath);
    QByteArrayList encoded;
    encoded.reserve(arguments.size() + 1);
    encoded.append(program);
    for (const QString &argument : arguments)
        encoded.append(QFile::encodeName(argument));
    std::vector<char *> argv;
    argv.reserve(encoded.size() + 1);
    for (QByteArray &bytes : encoded)
        argv.push_back(bytes.data());
    argv.push_back(nullptr);

    SpawnFileActions actions;
    // ffmpeg watches standard input for key presses; a child reading the
    // terminal would swallow the user's typing or stop a backgrounded parent.
    posix_spawn_file_actions_addopen(&actions.value, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions.value, stdoutFd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions.value, stderrFd, STDERR_FILENO);
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 34))
    posix_spawn_file_actions_addclosefrom_np(&actions.value, STDERR_FILENO + 1);
#endif

    // The child starts with the signals that matter at their defaults and none
    // blocked, whatever the application did with its own, so that one SIGTERM
    // always reaches ffmpeg's handler.
    SpawnAttributes attributes;
    sigset_t noSignals;
    sigemptyset(&noSignals);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (int signal : {SIGTERM, SIGINT, SIGQUIT, SIGHUP, SIGPIPE, SIGCHLD, SIGUSR1, SIGUSR2})
        sigaddset(&defaults, signal);
    posix_spawnattr_setsigmask(&attributes.value, &noSignals);
    posix_spawnattr_setsigdefault(&attributes.value, &defaults);
    posix_spawnattr_setflags(&attributes.value, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    pid_t pid = 0;
    const int error = ::posix_spawn(&pid, program.constData(), &actions.value, &attributes.value,
                                    argv.data(), environ);
    if (error != 0)
        throw FFmpegError::launchFailed(systemErrorText(error));
    return pid;
}

QString decodeUtf8OrEmpty(const QByteArray &bytes)
{
    // Stateless: a multi-byte sequence cut off at the end counts as invalid
    // instead of being held back for input that will never come.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString() : text;
}

int statusToExitCode(int status)
{
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        return WTERMSIG(status);
    return status;
}

// One launched child: drains both pipes, watches the token and reaps the child,
// all from the calling thread.
class ChildRun
{
public:
    ChildRun(pid_t pid, Pipe &&stdoutPipe, Pipe &&stderrPipe, const CancellationToken &cancellation)
        : m_pid(pid)
        , m_cancellation(cancellation)
    {
        m_streams[0].fd = std::move(stdoutPipe.read);
        m_streams[1].fd = std::move(stderrPipe.read);
    }

    FFmpegResult finish()
    {
        // The first look at the token comes right after the launch.
        watch();
        Clock::time_point nextWatch = Clock::now() + FFmpegRunner::cancellationPollInterval;
        while (drainOnce(nextWatch)) {
            if (Clock::now() >= nextWatch) {
                watch();
                nextWatch = Clock::now() + FFmpegRunner::cancellationPollInterval;
            }
        }
        waitForExit();
        return {statusToExitCode(m_status), decodeUtf8OrEmpty(m_streams[0].bytes),
                decodeUtf8OrEmpty(m_streams[1].bytes)};
    }

private:
    struct Stream
    {
        Fd fd;
        QByteArray bytes;
    };

    bool watching() const { return !m_exited && !m_terminationSent; }

    void reapIfExited()
    {
        if (m_exited)
            return;
        pid_t reaped;
        do {
            reaped = ::waitpid(m_pid, &m_status, WNOHANG);
        } while (reaped < 0 && errno == EINTR);
        if (reaped == m_pid || (reaped < 0 && errno == ECHILD))
            m_exited = true;
    }

    // The watcher's step: a child that has already ended is left alone; a set
    // token gets exactly one polite termination request, never a kill.
    void watch()
    {
        if (!watching())
            return;
        reapIfExited();
        if (!m_exited && m_cancellation.isCancelled()) {
            ::kill(m_pid, SIGTERM);
            m_terminationSent = true;
        }
    }

    // Waits for output or the next watch; false once both streams are at end.
    bool drainOnce(Clock::time_point nextWatch)
    {
        std::array<pollfd, 2> fds{};
        int open = 0;
        for (size_t i = 0; i < m_streams.size(); ++i) {
            fds[i] = {m_streams[i].fd.get(), POLLIN, 0};
            if (fds[i].fd >= 0)
                ++open;
        }
        if (open == 0)
            return false;

        int timeout = -1;
        if (watching()) {
            const auto left =
                std::chrono::duration_cast<milliseconds>(nextWatch - Clock::now()).count();
            timeout = static_cast<int>(std::max<long long>(0, left));
        }
        const int ready = ::poll(fds.data(), fds.size(), timeout);
        if (ready <= 0)
            return true;

        for (size_t i = 0; i < m_streams.size(); ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0)
                continue;
            char buffer[65536];
            const ssize_t count = ::read(fds[i].fd, buffer, sizeof buffer);
            if (count > 0)
                m_streams[i].bytes.append(buffer, count);
            else if (count == 0 || (errno != EINTR && errno != EAGAIN))
                m_streams[i].fd.reset();
        }
        return true;
    }

    void waitForExit()
    {
        // Both pipes are closed, which a child does as it exits; the exit status
        // follows within moments. Poll with a growing pause so the token is
        // still honoured for a child that closed its output and kept running.
        auto pause = std::chrono::microseconds(100);
        while (watching()) {
            watch();
            if (!watching())
                break;
            std::this_thread::sleep_for(pause);
            pause = std::min<std::chrono::microseconds>(pause * 2,
                                                        FFmpegRunner::cancellationPollInterval);
        }
        while (!m_exited) {
            const pid_t reaped = ::waitpid(m_pid, &m_status, 0);
            if (reaped == m_pid || (reaped < 0 && errno != EINTR))
                m_exited = true;
        }
    }

    pid_t m_pid;
    const CancellationToken &m_cancellation;
    std::array<Stream, 2> m_streams;
    int m_status = 0;
    bool m_exited = false;
    bool m_terminationSent = false;
};

} // namespace

FFmpegRunner::FFmpegRunner(std::optional<QString> binaryPath)
    : m_binaryPath(std::move(binaryPath))
{}

FFmpegResult FFmpegRunner::run(const QStringList &arguments,
                               const CancellationToken &cancellation) const
{
    if (!m_binaryPath)
        throw FFmpegError::binaryNotFound();

    Pipe stdoutPipe = Pipe::make();
    Pipe stderrPipe = Pipe::make();
    const pid_t pid =
        spawn(*m_binaryPath, arguments, stdoutPipe.write.get(), stderrPipe.write.get());
    // Only the child may hold the write ends, or end-of-file would never come.
    stdoutPipe.write.reset();
    stderrPipe.write.reset();

    ChildRun child(pid, std::move(stdoutPipe), std::move(stderrPipe), cancellation);
    return child.finish();
}
