// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// Finds the files Tonbrook ships beside its executables. The build tree and the
// installed tree share one layout beside the executables' folder, set once in
// the build (BuildInfo::privateLibDir, BuildInfo::licenseDir):
//   bin/tonbrook, bin/tonbrook-cli
//   lib/tonbrook/ffmpeg
//   share/tonbrook/licenses/FFmpeg-LGPLv3.txt, LAME-LGPL.txt
// Nothing is ever looked up on PATH: Tonbrook runs its own ffmpeg or none.
class ResourceLocator
{
public:
    // Resolves against the running application's folder.
    ResourceLocator();
    // Resolves against another folder laid out like bin/ (tests, tools).
    explicit ResourceLocator(QString executableDirectory);

    // The shipped ffmpeg, or absent when it is not there.
    std::optional<QString> ffmpegPath() const;
    // A shipped licence text by file name ("FFmpeg-LGPLv3.txt"), or absent.
    std::optional<QString> licenseTextPath(const QString &fileName) const;

private:
    // relativePath is relative to the folder above bin/.
    std::optional<QString> existing(const QString &relativePath) const;

    QString m_executableDirectory;
};
