// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

// The hidden file an output is written to before it is moved into place. Its
// name says who writes it (".tbpart-<pid>-<boot>-<random>-<name>"), so that a
// later run can tell what a killed run left behind from what a live run is
// still writing, and removes only the former. While it exists it is also
// registered for removal should the process exit without unwinding (the X
// connection lost, say); the children die with the process (see FFmpegRunner).
class PartFile
{
public:
    static constexpr QStringView prefix = u".tbpart-";

    // Creates the hidden file beside `destination`, exclusively, so that no two
    // writers ever share one and the file system's own refusal (read-only, name
    // too long, no permission) is known before ffmpeg starts. Throws
    // ProcessingError::writeFailed with the system's reason.
    explicit PartFile(QString destination);
    // Removes the hidden file unless it was moved into place.
    ~PartFile();
    PartFile(const PartFile &) = delete;
    PartFile &operator=(const PartFile &) = delete;

    const QString &path() const { return m_path; }

    // Gives the file its destination's name without ever replacing anything:
    // when that name was taken meanwhile (another run, the user), the next free
    // numbered name is used. Returns the path written. Throws
    // ProcessingError::writeFailed.
    QString moveIntoPlace();

    // The name a destination's hidden file gets for this process.
    static QString nameFor(const QString &destinationName);
    // The destination name inside a hidden file's name; empty if it is not one of ours.
    static QString destinationName(const QString &partFileName);
    // True when the process that made the hidden file is gone: it ran before
    // the last boot, or no process has its id any more. Unknown names are never abandoned.
    static bool isAbandoned(const QString &partFileName);
    // Removes the abandoned hidden files directly inside `folder`; returns how many.
    static int removeAbandoned(const QString &folder);

private:
    QString m_destination;
    QString m_path;
    bool m_moved = false;
};
