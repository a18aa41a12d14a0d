// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegRunner.h"

#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "engine/SystemError.h"
#include "model/StandardPath.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <optional>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

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

// Everything the child needs, made before the fork: between vfork and exec
// the child may only make system calls.
struct LaunchPlan
{
    QByteArray program;
    QByteArrayList encoded;
    std::vector<char *> argv;
    pid_t parent = ::getpid();

    LaunchPlan(const QString &binaryPath, const QStringList &arguments)
        : program(encodedPath(binaryPath))
    {
        encoded.reserve(arguments.size() + 1);
        encoded.append(program);
        for (const QString &argument : arguments)
            encoded.append(encodedPath(argument));
        argv.reserve(encoded.size() + 1);
        for (QByteArray &bytes : encoded)
            argv.push_back(bytes.data());
        argv.push_back(nullptr);
    }
};

// The child's side of the fork. Async-signal-safe calls only.
[[noreturn]] void becomeFFmpeg(const LaunchPlan &plan, int stdoutFd, int stderrFd, int errorFd)
{
    // The child dies with the thread that started it, which waits for it for
    // as long as it runs, so a Tonbrook killed outright (SIGKILL, a crash)
    // leaves no ffmpeg writing on. If the parent is already gone, so are we.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != plan.parent)
        ::_exit(127);
    // A group of its own: Ctrl-C or a closed terminal reaches Tonbrook, which
    // then stops its children on purpose, rather than killing ffmpeg behind
    // its back (a measurement cut short would read as a damaged file).
    ::setpgid(0, 0);
    // Behind the desktop, not in its way (the kernel stops at 19). This task
    // only: between vfork and exec it is the child, not the thread that started it.
    ::setpriority(PRIO_PROCESS, 0, ::getpriority(PRIO_PROCESS, 0) + FFmpegRunner::childNiceness);
    // Every signal at its default and none blocked, whatever the application
    // did with its own: no handler of Tonbrook's may run in this child, which
    // shares its memory until exec, and one SIGTERM always reaches ffmpeg's.
    struct sigaction defaults
    {};
    defaults.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        if (signal != SIGKILL && signal != SIGSTOP)
            ::sigaction(signal, &defaults, nullptr);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    // ffmpeg watches standard input for key presses; a child reading the
    // terminal would swallow the user's typing or stop a backgrounded parent.
    const int input = ::open("/dev/null", O_RDONLY);
    if (input < 0 || ::dup2(input, STDIN_FILENO) < 0 || ::dup2(stdoutFd, STDOUT_FILENO) < 0 ||
        ::dup2(stderrFd, STDERR_FILENO) < 0)
        ::_exit(127);
    // Nothing else of the application's (its display connection, files of
    // other runs) reaches ffmpeg.
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execv(plan.program.constData(), plan.argv.data());
    // Tell the parent why, through the close-on-exec pipe that exec would have closed.
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(errorFd, &error, sizeof error);
    ::_exit(127);
}

pid_t spawn(const QString &binaryPath, const QStringList &arguments, int stdoutFd, int stderrFd)
{
    const LaunchPlan plan(binaryPath, arguments);
    Pipe execError = Pipe::make();
    // vfork, as posix_spawn does: no copy of a large process's page tables
    // for every run. Signals stay blocked until the child has reset them.
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &previous);
    const pid_t pid = ::vfork();
    if (pid == 0)
        becomeFFmpeg(plan, stdoutFd, stderrFd, execError.write.get());
    const int forkError = errno;
    ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    if (pid < 0)
        throw FFmpegError::launchFailed(systemErrorText(forkError));
    execError.write.reset();
    int error = 0;
    ssize_t got;
    do {
        got = ::read(execError.read.get(), &error, sizeof error);
    } while (got < 0 && errno == EINTR);
    if (got == static_cast<ssize_t>(sizeof error)) {
        int status = 0;
        while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
        }
        throw FFmpegError::launchFailed(systemErrorText(error));
    }
    return pid;
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
    ChildRun(pid_t pid, Pipe &&stdoutPipe, Pipe &&stderrPipe, const CancellationToken &cancellation,
             std::optional<std::chrono::seconds> timeLimit, FFmpegRunning::OutputListener onOutput)
        : m_pid(pid)
        , m_cancellation(cancellation)
        , m_onOutput(std::move(onOutput))
    {
        if (timeLimit)
            m_deadline = Clock::now() + *timeLimit;
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
        // ffmpeg echoes file names, which need not be UTF-8: their bytes are
        // kept the way paths keep them, and everything else reads as it is.
        return {statusToExitCode(m_status), decodedPath(m_streams[0].bytes),
                decodedPath(m_streams[1].bytes)};
    }

    bool timedOut() const { return m_timedOut; }

private:
    struct Stream
    {
        Fd fd;
        QByteArray bytes;
    };

    bool watching() const { return !m_exited && !m_killSent; }

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
    // token or the time limit gets one polite termination request, and a
    // child that has not gone a while later is killed.
    void watch()
    {
        if (!watching())
            return;
        reapIfExited();
        if (m_exited)
            return;
        const Clock::time_point now = Clock::now();
        if (m_terminationSent) {
            if (now >= m_killAt) {
                ::kill(m_pid, SIGKILL);
                m_killSent = true;
            }
            return;
        }
        const bool overTime = m_deadline && now >= *m_deadline;
        if (m_cancellation.isCancelled() || overTime) {
            m_timedOut = overTime && !m_cancellation.isCancelled();
            ::kill(m_pid, SIGTERM);
            m_terminationSent = true;
            m_killAt = now + FFmpegRunner::terminationGrace;
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
            if (count > 0) {
                m_streams[i].bytes.append(buffer, count);
                if (i == 0 && m_onOutput)
                    m_onOutput(QByteArrayView(buffer, count));
            } else if (count == 0 || (errno != EINTR && errno != EAGAIN))
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
    FFmpegRunning::OutputListener m_onOutput;
    std::array<Stream, 2> m_streams;
    int m_status = 0;
    bool m_exited = false;
    bool m_terminationSent = false;
    bool m_killSent = false;
    bool m_timedOut = false;
    std::optional<Clock::time_point> m_deadline;
    Clock::time_point m_killAt;
};

// The input named after "-i", if it is a regular file.
std::optional<qint64> inputSize(const QStringList &arguments)
{
    const qsizetype at = arguments.indexOf(QStringLiteral("-i"));
    if (at < 0 || at + 1 >= arguments.size())
        return std::nullopt;
    struct stat info
    {};
    if (::stat(encodedPath(arguments[at + 1]).constData(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    return static_cast<qint64>(info.st_size);
}

} // namespace

FFmpegRunner::FFmpegRunner(std::optional<QString> binaryPath)
    : m_binaryPath(std::move(binaryPath))
{}

FFmpegResult FFmpegRunner::run(const QStringList &arguments,
                               const CancellationToken &cancellation) const
{
    return runListening(arguments, cancellation, {});
}

FFmpegResult FFmpegRunner::runListening(const QStringList &arguments,
                                        const CancellationToken &cancellation,
                                        const OutputListener &onOutput) const
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

    const std::optional<qint64> size = inputSize(arguments);
    const std::optional<std::chrono::seconds> limit =
        size ? std::optional(timeLimitFor(*size)) : std::nullopt;
    ChildRun child(pid, std::move(stdoutPipe), std::move(stderrPipe), cancellation, limit,
                   onOutput);
    FFmpegResult result = child.finish();
    if (child.timedOut())
        throw FFmpegError::timedOut(limit->count());
    return result;
}

std::chrono::seconds FFmpegRunner::timeLimitFor(qint64 inputBytes)
{
    constexpr qint64 mebibyte = 1024 * 1024;
    return timeLimitBase + std::chrono::seconds(timeLimitPerMebibyte.count() *
                                                std::max<qint64>(inputBytes, 0) / mebibyte);
}
