// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputDestination.h"

#include "files/FileNamingService.h"
#include "model/StandardPath.h"

#include <sys/stat.h>

namespace {

QString extensionOf(const QString &fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot > 0 ? fileName.mid(dot + 1) : QString();
}

QString baseNameOf(const QString &fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot > 0 ? fileName.left(dot) : fileName;
}

// The folders of a relative path, without its file name. Empty, "." and ".."
// parts are dropped, so no item can be written outside the output folder.
QString subfolderOf(const QString &relativePath)
{
    QStringList parts = relativePath.split(u'/');
    parts.removeLast();
    parts.removeIf(
        [](const QString &part) { return part.isEmpty() || part == u"." || part == u".."; });
    return parts.join(u'/');
}

// A regular file (or a link to one): what a finished run leaves behind.
bool holdsFile(const QString &path)
{
    struct stat info
    {};
    return ::stat(encodedPath(path).constData(), &info) == 0 && S_ISREG(info.st_mode);
}

} // namespace

OutputDestination OutputDestination::forItem(const AudioFileItem &item,
                                             const ProcessingSettings &settings,
                                             const QString &outputFolder, QSet<QString> &reserved)
{
    const QString sourceName = fileNameOf(item.sourcePath);
    const OutputEncoding encoding = OutputEncoding::resolve(
        item.sourceFormat, settings.outputFormatMode, settings.bitDepth, extensionOf(sourceName));

    QString name = baseNameOf(sourceName);
    if (!encoding.fileExtension.isEmpty())
        name += u'.' + encoding.fileExtension;
    // A prefix names files; it cannot make folders, nor hide what it names.
    QString prefix = settings.prefix;
    prefix.replace(u'/', u'_');
    while (prefix.startsWith(u'.'))
        prefix.remove(0, 1);
    if (settings.addPrefix && !prefix.isEmpty() && !name.startsWith(prefix))
        name = prefix + name;

    QString path = outputFolder.endsWith(u'/') ? outputFolder : outputFolder + u'/';
    const QString subfolder = subfolderOf(item.relativePath);
    if (!subfolder.isEmpty())
        path += subfolder + u'/';
    if (settings.skipExisting) {
        // A source is never its own output, whatever the folders.
        const QString plain = FileNamingService::unreservedPath(path + name, reserved);
        if (holdsFile(plain) && standardizedPath(plain) != standardizedPath(item.sourcePath)) {
            reserved.insert(standardizedPath(plain));
            return {encoding, plain, true};
        }
    }
    path = FileNamingService::uniquePath(path + name, reserved);
    reserved.insert(standardizedPath(path));
    return {encoding, path};
}
