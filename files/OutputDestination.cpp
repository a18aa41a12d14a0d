// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputDestination.h"

#include "files/FileNamingService.h"
#include "model/StandardPath.h"

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
    path = FileNamingService::uniquePath(path + name, reserved);
    reserved.insert(standardizedPath(path));
    return {encoding, path};
}
