// SPDX-License-Identifier: GPL-3.0-or-later
//
// The ffmpeg that ships: where it is found, what it is, what it links.
#include "TestEnvironment.h"
#include "engine/BuildInfo.h"
#include "engine/ResourceLocator.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString runFFmpeg(const QStringList &arguments)
{
    QProcess process;
    process.start(TestEnvironment::ffmpegPath(), arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

} // namespace

class BundledFFmpegTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foundBesideTheExecutables()
    {
        const ResourceLocator resources(TestEnvironment::buildBinDirectory());
        QCOMPARE(resources.ffmpegPath(), std::optional(TestEnvironment::ffmpegPath()));
        QVERIFY(resources.licenseTextPath(QStringLiteral("FFmpeg-LGPLv3.txt")).has_value());
        QVERIFY(resources.licenseTextPath(QStringLiteral("LAME-LGPL.txt")).has_value());
        QVERIFY(
            !resources.licenseTextPath(QStringLiteral("../licenses/LAME-LGPL.txt")).has_value());

        // Anywhere else there is simply none: no search path, no system ffmpeg.
        QTemporaryDir elsewhere;
        QVERIFY(!ResourceLocator(elsewhere.path()).ffmpegPath().has_value());
    }

    void isThePinnedLgplBuildWithLame()
    {
        const QString version =
            runFFmpeg({QStringLiteral("-hide_banner"), QStringLiteral("-version")});
        QVERIFY2(version.startsWith(QStringLiteral("ffmpeg version %1")
                                        .arg(QLatin1StringView(BuildInfo::ffmpegVersion))),
                 qPrintable(version.left(200)));
        QCOMPARE(QLatin1StringView(BuildInfo::ffmpegVersion), QLatin1StringView("7.1.5"));
        QVERIFY(version.contains(QStringLiteral("--enable-version3")));
        QVERIFY(version.contains(QStringLiteral("--enable-libmp3lame")));
        QVERIFY(!version.contains(QStringLiteral("--enable-gpl")));

        const QString licence = runFFmpeg({QStringLiteral("-hide_banner"), QStringLiteral("-L")});
        QVERIFY(licence.contains(QStringLiteral("GNU Lesser General Public License")));
        QVERIFY(licence.contains(QStringLiteral("version 3")));

        const QString encoders =
            runFFmpeg({QStringLiteral("-hide_banner"), QStringLiteral("-encoders")});
        for (const char *name :
             {"libmp3lame", "aac", "pcm_s16le", "pcm_s24le", "pcm_s16be", "pcm_s24be"})
            QVERIFY2(encoders.contains(QLatin1StringView(name)), name);
    }

    void linksNeitherLameNorLibavDynamically()
    {
        const QString ldd = QStandardPaths::findExecutable(QStringLiteral("ldd"));
        if (ldd.isEmpty())
            QSKIP("ldd is not installed");
        QProcess process;
        process.start(ldd, {TestEnvironment::ffmpegPath()});
        QVERIFY(process.waitForFinished(10000));
        const QString libraries = QString::fromUtf8(process.readAllStandardOutput());
        QVERIFY(libraries.contains(QStringLiteral("libc.so")));
        QVERIFY2(!libraries.contains(QStringLiteral("libmp3lame")), qPrintable(libraries));
        QVERIFY2(!libraries.contains(QStringLiteral("libav")), qPrintable(libraries));
        QVERIFY2(!libraries.contains(QStringLiteral("libsw")), qPrintable(libraries));
    }
};

QTEST_GUILESS_MAIN(BundledFFmpegTest)
#include "BundledFFmpegTest.moc"
