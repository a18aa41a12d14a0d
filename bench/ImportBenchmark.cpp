// SPDX-License-Identifier: GPL-3.0-or-later
//
// Import of large generated trees: wall time of importPaths and the memory it
// takes. Prints one table row per tree size; the median of several runs, and
// "result<TAB>key<TAB>value" lines for bench/run.
//
// usage: tonbrook-bench-import [--runs N] [--sizes 10000,100000]
#include "files/FileImportService.h"
#include "files/FolderScanner.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

// Resident memory now and the peak since the last reset, in MiB (Linux).
std::pair<double, double> residentMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    double now = 0;
    double peak = 0;
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:"))
                now = line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
            if (line.startsWith("VmHWM:"))
                peak = line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
        }
    }
    return {now, peak};
}

void resetPeak()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

// A sessions-like tree: 100 folders of 10 sub-folders, files spread evenly,
// with a few names that are not audio.
void makeTree(const QString &root, int files)
{
    const char *extensions[] = {"wav", "aiff", "mp3", "m4a", "caf", "WAV", "txt"};
    for (int i = 0; i < files; ++i) {
        const QString folder =
            QStringLiteral("%1/Reel %2/Scene %3").arg(root).arg(i % 100).arg((i / 100) % 10);
        if (i < 1000)
            QDir().mkpath(folder);
        const QString path = QStringLiteral("%1/Take %2.%3")
                                 .arg(folder)
                                 .arg(i)
                                 .arg(QLatin1StringView(extensions[i % 7]));
        const int fd =
            ::open(QFile::encodeName(path).constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
        if (fd >= 0)
            ::close(fd);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption runsOption(QStringLiteral("runs"), QStringLiteral("Runs per size."),
                                        QStringLiteral("N"), QStringLiteral("5"));
    const QCommandLineOption sizesOption(QStringLiteral("sizes"), QStringLiteral("Tree sizes."),
                                         QStringLiteral("LIST"), QStringLiteral("10000,100000"));
    parser.addOptions({runsOption, sizesOption});
    parser.process(app);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    QTextStream out(stdout);
    out << "import of generated trees (median of " << runs << " runs)\n";
    out << QStringLiteral("%1 %2 %3 %4\n")
               .arg(QStringLiteral("files"), 8)
               .arg(QStringLiteral("items"), 8)
               .arg(QStringLiteral("importPaths s"), 13)
               .arg(QStringLiteral("peak +MiB"), 10);
    for (const QString &size : parser.value(sizesOption).split(u',')) {
        const int files = size.toInt();
        QTemporaryDir dir;
        makeTree(dir.path(), files);
        const FileImportService service(std::make_shared<FolderScanner>());
        std::vector<double> seconds;
        double peakGrowth = 0;
        qsizetype items = 0;
        for (int run = 0; run < runs; ++run) {
            resetPeak();
            const double before = residentMiB().first;
            QElapsedTimer timer;
            timer.start();
            const ImportSummary summary = service.importPaths({dir.path()}, {});
            seconds.push_back(timer.nsecsElapsed() / 1e9);
            // Growth of the peak while the result is held; the allocator keeps
            // what it freed, so the first run is the one that shows it.
            peakGrowth = std::max(peakGrowth, residentMiB().second - before);
            items = summary.items.size();
        }
        std::sort(seconds.begin(), seconds.end());
        out << QStringLiteral("%1 %2 %3 %4\n")
                   .arg(files, 8)
                   .arg(items, 8)
                   .arg(seconds[seconds.size() / 2], 13, 'f', 3)
                   .arg(peakGrowth, 10, 'f', 1);
        out << "result\timport_" << files << "_s\t" << seconds[seconds.size() / 2] << '\n';
        out << "result\timport_" << files << "_peak_mib\t" << peakGrowth << '\n';
        out.flush();
    }
    return 0;
}
