// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/AudioMetadata.h"

#include "TestAudio.h"
#include "TestEnvironment.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cstring>

class AudioMetadataTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString encoded(const QString &name, int rate)
    {
        const QString wav = m_dir.filePath(name + QStringLiteral(".src.wav"));
        if (!TestAudio::writeWav(wav, rate, 2, {TestAudio::Segment::sine(-20, 0.5)}))
            return {};
        const QString path = m_dir.filePath(name);
        if (name.endsWith(QStringLiteral(".wav")))
            return QFile::rename(wav, path) ? path : QString();
        return TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path).isEmpty() ? path
                                                                                     : QString();
    }

private Q_SLOTS:
    void readsTheContainersRate_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("rate");
        QTest::newRow("wav") << "a.wav" << 96000;
        QTest::newRow("aiff") << "a.aiff" << 44100;
        QTest::newRow("caf") << "a.caf" << 48000;
        QTest::newRow("mp3") << "a.mp3" << 32000;
        QTest::newRow("m4a") << "a.m4a" << 22050;
    }

    void readsTheContainersRate()
    {
        QFETCH(QString, name);
        QFETCH(int, rate);
        const QString path = encoded(name, rate);
        QVERIFY(!path.isEmpty());
        QCOMPARE(AudioMetadata::sampleRate(path), std::optional(rate));
    }

    void fractionalCafRateRoundsHalfAwayFromZero()
    {
        const QString path = encoded(QStringLiteral("fraction.caf"), 44100);
        QVERIFY(!path.isEmpty());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        QCOMPARE(bytes.mid(8, 4), QByteArray("desc"));
        const double rate = 44099.6;
        quint64 bits;
        std::memcpy(&bits, &rate, sizeof bits);
        qToBigEndian(bits, bytes.data() + 20);
        file.seek(0);
        file.write(bytes);
        file.close();
        QCOMPARE(AudioMetadata::sampleRate(path), std::optional(44100));
    }

    void anythingElseIsAbsent()
    {
        const QString text = m_dir.filePath(QStringLiteral("notes.wav"));
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not audio");
        file.close();
        QCOMPARE(AudioMetadata::sampleRate(text), std::nullopt);
        QCOMPARE(AudioMetadata::sampleRate(m_dir.filePath(QStringLiteral("missing.wav"))),
                 std::nullopt);
        QCOMPARE(AudioMetadata::sampleRate(m_dir.path()), std::nullopt);
        QCOMPARE(AudioMetadata::roundedSampleRate(0), std::nullopt);
        QCOMPARE(AudioMetadata::roundedSampleRate(-44100), std::nullopt);
        QCOMPARE(AudioMetadata::roundedSampleRate(22049.5), std::optional(22050));
    }
};

QTEST_GUILESS_MAIN(AudioMetadataTest)
#include "AudioMetadataTest.moc"
