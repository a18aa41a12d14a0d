// SPDX-License-Identifier: GPL-3.0-or-later
//
// The ffmpeg that ships: where it is found, what it is, what it links, and
// what its libavformat reads of a file's header.
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/AudioMetadata.h"
#include "engine/BuildInfo.h"
#include "engine/ResourceLocator.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cstring>

namespace {

QString output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

QString ffmpeg(const char *option)
{
    return output(TestEnvironment::ffmpegPath(),
                  {QStringLiteral("-hide_banner"), QString::fromLatin1(option)});
}

} // namespace

class BundledFFmpegTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void foundBesideTheExecutablesOnly()
    {
        const ResourceLocator resources(TestEnvironment::buildBinDirectory());
        QCOMPARE(resources.ffmpegPath(), std::optional(TestEnvironment::ffmpegPath()));
        QVERIFY(resources.licenseTextPath(QStringLiteral("FFmpeg-LGPLv3.txt")));
        QVERIFY(resources.licenseTextPath(QStringLiteral("LAME-LGPL.txt")));
        QVERIFY(!resources.licenseTextPath(QStringLiteral("../licenses/LAME-LGPL.txt")));
        // Anywhere else there is simply none: no search path, no system ffmpeg.
        QTemporaryDir elsewhere;
        QVERIFY(!ResourceLocator(elsewhere.path()).ffmpegPath());
    }

    void isThePinnedLgplBuildWithLame()
    {
        const QString version = ffmpeg("-version");
        QVERIFY2(
            version.startsWith(u"ffmpeg version " + QLatin1StringView(BuildInfo::ffmpegVersion)),
            qPrintable(version.left(200)));
        QVERIFY(version.contains(QStringLiteral("--enable-version3")));
        QVERIFY(version.contains(QStringLiteral("--enable-libmp3lame")));
        QVERIFY(!version.contains(QStringLiteral("--enable-gpl")));
        const QString licence = ffmpeg("-L");
        QVERIFY(licence.contains(QStringLiteral("GNU Lesser General Public License")));
        QVERIFY(licence.contains(QStringLiteral("version 3")));
    }

    void linksNeitherLameNorLibavDynamically()
    {
        const QString ldd = QStandardPaths::findExecutable(QStringLiteral("ldd"));
        if (ldd.isEmpty())
            QSKIP("ldd is not installed");
        const QString libraries = output(ldd, {TestEnvironment::ffmpegPath()});
        QVERIFY(libraries.contains(QStringLiteral("libc.so")));
        for (const char *name : {"libmp3lame", "libav", "libsw"})
            QVERIFY2(!libraries.contains(QLatin1StringView(name)), qPrintable(libraries));
    }

    // A CAF declares its rate as a float64, which libavformat truncates:
    // the header's own value is read, rounded half away from zero.
    void readsTheRateACafDeclares()
    {
        const QString path = m_dir.filePath(QStringLiteral("a.caf"));
        QVERIFY(
            TestAudio::writeWav(path + u".wav", 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        QCOMPARE(TestAudio::encode(TestEnvironment::ffmpegPath(), path + u".wav", path), QString());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(8));
        QCOMPARE(file.read(4), QByteArray("desc"));
        const double declared = 44099.6;
        quint64 bits;
        std::memcpy(&bits, &declared, sizeof bits);
        bits = qToBigEndian(bits);
        QVERIFY(file.seek(20) && file.write(reinterpret_cast<const char *>(&bits), 8) == 8);
        file.close();
        QCOMPARE(AudioMetadata::sampleRate(path), std::optional(44100));
        QCOMPARE(AudioMetadata::roundedSampleRate(0), std::nullopt);
        QCOMPARE(AudioMetadata::roundedSampleRate(-44100), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(BundledFFmpegTest)
#include "BundledFFmpegTest.moc"
