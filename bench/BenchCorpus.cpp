// SPDX-License-Identifier: GPL-3.0-or-later
//
// Writes the audio the benchmarks run on, once per corpus folder:
//   effects/     300 sound effects of 1 to 2 s (48 kHz stereo)
//   programmes/  4 programmes of 4 minutes (48 kHz stereo)
//   shorts/      1,000 one-second files (hard links to one file; each is its own path)
//   one-second.wav
// A marker file makes a second call with the same folder a no-op.
//
// usage: tonbrook-bench-corpus DIR
#include "TestAudio.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include <unistd.h>

namespace {

using Segment = TestAudio::Segment;

constexpr int sampleRate = 48000;
constexpr int channels = 2;
constexpr auto marker = "corpus-v1.complete";

// A short effect: a noise transient, then a tone that falls away, at a level
// and length of its own.
std::vector<Segment> effect(int index)
{
    const double seconds = 1.0 + (index % 11) / 10.0;
    const double level = -12.0 - (index % 19);
    return {Segment::noise(level, seconds * 0.3),
            Segment::sine(level - 3, seconds * 0.4, 110.0 + 13.0 * (index % 37)),
            Segment::sine(level - 15, seconds * 0.3, 110.0 + 13.0 * (index % 37))};
}

// A programme: scenes of 8 to 30 s at levels from quiet to loud, with tone
// beds and short pauses, 240 s in all.
std::vector<Segment> programme(int index)
{
    std::vector<Segment> segments;
    double total = 0;
    for (int scene = 0; total < 240.0; ++scene) {
        const double seconds = std::min(8.0 + ((scene * 7 + index * 3) % 23), 240.0 - total);
        const double level = -34.0 + ((scene * 5 + index) % 17);
        if (scene % 5 == 4)
            segments.push_back(Segment::silence(seconds * 0.1));
        segments.push_back(scene % 3 == 2 ? Segment::sine(level + 3, seconds * 0.9, 220.0 + scene)
                                          : Segment::noise(level, seconds * 0.9));
        total += scene % 5 == 4 ? seconds : seconds * 0.9;
        if (scene % 5 != 4 && total < 240.0) {
            segments.push_back(Segment::noise(level - 20, std::min(seconds * 0.1, 240.0 - total)));
            total += std::min(seconds * 0.1, 240.0 - total);
        }
    }
    return segments;
}

bool write(QTextStream &err, const QString &path, const std::vector<Segment> &segments)
{
    QDir().mkpath(QFileInfo(path).path());
    if (TestAudio::writeWav(path, sampleRate, channels, segments))
        return true;
    err << "cannot write " << path << '\n';
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2) {
        err << "usage: tonbrook-bench-corpus DIR\n";
        return 2;
    }
    const QDir root(QFile::decodeName(argv[1]));
    if (QFile::exists(root.filePath(QLatin1StringView(marker))))
        return 0;
    QDir(root.path()).removeRecursively();

    for (int i = 0; i < 300; ++i)
        if (!write(
                err,
                root.filePath(QStringLiteral("effects/sfx %1.wav").arg(i + 1, 3, 10, QChar(u'0'))),
                effect(i)))
            return 1;
    for (int i = 0; i < 4; ++i)
        if (!write(err, root.filePath(QStringLiteral("programmes/programme %1.wav").arg(i + 1)),
                   programme(i)))
            return 1;
    const QString second = root.filePath(QStringLiteral("one-second.wav"));
    if (!write(err, second, {Segment::noise(-20, 0.5), Segment::sine(-14, 0.5, 440)}))
        return 1;
    root.mkpath(QStringLiteral("shorts"));
    for (int i = 0; i < 1000; ++i) {
        const QString link =
            root.filePath(QStringLiteral("shorts/short %1.wav").arg(i + 1, 4, 10, QChar(u'0')));
        if (::link(QFile::encodeName(second).constData(), QFile::encodeName(link).constData()) !=
                0 &&
            !QFile::copy(second, link)) {
            err << "cannot write " << link << '\n';
            return 1;
        }
    }
    QFile done(root.filePath(QLatin1StringView(marker)));
    return done.open(QIODevice::WriteOnly) ? 0 : 1;
}
