// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PartFile.h"

#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "model/StandardPath.h"

#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype nameLimit = 255;

// The first eight hex digits of this boot's id: process ids are only
// meaningful within one boot.
const QString &bootTag()
{
    static const QString tag = [] {
        QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("00000000");
        const QString id = QString::fromLatin1(file.read(8));
        return id.size() == 8 ? id : QStringLiteral("00000000");
    }();
    return tag;
}

// Hidden files in flight, removed by the exit handler if the process ends
// without unwinding the stacks that own them.
struct Registry
{
    std::mutex lock;
    std::set<QByteArray> paths;

    static Registry &instance()
    {
        static Registry *registry = [] {
            auto *made = new Registry; // never destroyed: the exit handler may still need it
            std::atexit([] {
                Registry &r = *registry;
                const std::lock_guard guard(r.lock);
                for (const QByteArray &path : r.paths)
                    ::unlink(path.constData());
                r.paths.clear();
            });
            return made;
        }();
        return *registry;
    }

    void add(const QByteArray &path)
    {
        const std::lock_guard guard(lock);
        paths.insert(path);
    }

    void remove(const QByteArray &path)
    {
        const std::lock_guard guard(lock);
        paths.erase(path);
    }
};

struct Owner
{
    qint64 pid = 0;
    QString boot;
    QString destinationName;
};

std::optional<Owner> ownerOf(const QString &partFileName)
{
    if (!partFileName.startsWith(PartFile::prefix))
        return std::nullopt;
    const QStringView rest = QStringView(partFileName).mid(PartFile::prefix.size());
    // <pid>-<boot, 8>-<random, 8>-<name>
    const qsizetype dash = rest.indexOf(u'-');
    if (dash <= 0 || rest.size() < dash + 1 + 8 + 1 + 8 + 1)
        return std::nullopt;
    bool number = false;
    const qint64 pid = rest.left(dash).toLongLong(&number);
    if (!number || pid <= 0 || rest.at(dash + 9) != u'-' || rest.at(dash + 18) != u'-')
        return std::nullopt;
    return Owner{pid, rest.mid(dash + 1, 8).toString(), rest.mid(dash + 19).toString()};
}

} // namespace

QString PartFile::nameFor(const QString &destinationName)
{
    const QString tag =
        prefix.toString() + QString::number(::getpid()) + u'-' + bootTag() + u'-' +
        QString::number(QRandomGenerator::global()->generate(), 16).rightJustified(8, u'0') + u'-';
    QString name = destinationName;
    if (encodedPath(tag + name).size() > nameLimit) {
        const qsizetype dot = name.lastIndexOf(u'.');
        const QString suffix = dot > 0 ? name.mid(dot) : QString();
        QString base = name.chopped(suffix.size());
        while (!base.isEmpty() && encodedPath(tag + base + suffix).size() > nameLimit)
            base.chop(base.size() >= 2 && base.at(base.size() - 1).isLowSurrogate() &&
                              base.at(base.size() - 2).isHighSurrogate()
                          ? 2
                          : 1);
        name = base + suffix;
    }
    return tag + name;
}

QString PartFile::destinationName(const QString &partFileName)
{
    const auto owner = ownerOf(partFileName);
    return owner ? owner->destinationName : QString();
}

bool PartFile::isAbandoned(const QString &partFileName)
{
    const auto owner = ownerOf(partFileName);
    if (!owner)
        return false;
    if (owner->boot != bootTag())
        return true;
    if (owner->pid == ::getpid())
        return false;
    return ::kill(static_cast<pid_t>(owner->pid), 0) != 0 && errno == ESRCH;
}

int PartFile::removeAbandoned(const QString &folder)
{
    DIR *directory = ::opendir(encodedPath(folder).constData());
    if (!directory)
        return 0;
    int removed = 0;
    const QByteArray marker = prefix.toLatin1();
    while (const dirent *entry = ::readdir(directory)) {
        const QByteArray name(entry->d_name);
        if (name.startsWith(marker) && isAbandoned(decodedPath(name)) &&
            ::unlinkat(::dirfd(directory), entry->d_name, 0) == 0)
            ++removed;
    }
    ::closedir(directory);
    return removed;
}

PartFile::PartFile(QString destination)
    : m_destination(std::move(destination))
{
    const qsizetype slash = m_destination.lastIndexOf(u'/');
    m_path = m_destination.left(slash + 1) + nameFor(m_destination.mid(slash + 1));
    const QByteArray systemPath = encodedPath(m_path);
    Registry::instance().add(systemPath);
    const int fd = ::open(systemPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0) {
        const int error = errno;
        Registry::instance().remove(systemPath);
        // The reason names the file the user will have, not the hidden one.
        throw ProcessingError::writeFailed(systemErrorAt(error, m_destination));
    }
    ::close(fd);
}

PartFile::~PartFile()
{
    const QByteArray systemPath = encodedPath(m_path);
    if (!m_moved)
        ::unlink(systemPath.constData());
    Registry::instance().remove(systemPath);
}

QString PartFile::moveIntoPlace()
{
    const QByteArray from = encodedPath(m_path);
    QString target = m_destination;
    for (qint64 n = 2;; ++n) {
        const QByteArray to = encodedPath(target);
        int result =
            ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
        if (result != 0 && (errno == EINVAL || errno == ENOSYS || errno == ENOTSUP)) {
            // A file system without the exclusive rename: a hard link cannot
            // replace anything either. Without links, look, then move.
            result = ::link(from.constData(), to.constData());
            if (result == 0) {
                ::unlink(from.constData());
            } else if (errno == EPERM || errno == ENOTSUP || errno == EOPNOTSUPP) {
                struct stat info
                {};
                if (::lstat(to.constData(), &info) == 0)
                    errno = EEXIST, result = -1;
                else
                    result = std::rename(from.constData(), to.constData());
            }
        }
        if (result == 0) {
            m_moved = true;
            return target;
        }
        if (errno != EEXIST)
            throw ProcessingError::writeFailed(systemErrorAt(errno, target));
        target = numberedPath(m_destination, n);
    }
}
