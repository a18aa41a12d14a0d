// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegProgress.h"

#include <QTest>

class FFmpegProgressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reportsTheNewestPosition_data()
    {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QList<qint64>>("positions"); // after each piece; -1 for none

        QTest::newRow("one block") << QByteArrayList{"frame=0\nout_time_us=1500000\nout_time=00:00:"
                                                     "01.5\nprogress=continue\n"}
                                   << QList<qint64>{1500000};
        QTest::newRow("split inside the key and the number")
            << QByteArrayList{"out_ti", "me_us=25", "00000\nprogress=end\n"}
            << QList<qint64>{-1, -1, 2500000};
        QTest::newRow("two blocks in one piece: the newer")
            << QByteArrayList{"out_time_us=100\nprogress=continue\nout_time_us=200\n"}
            << QList<qint64>{200};
        QTest::newRow("before the first frame ffmpeg writes N/A")
            << QByteArrayList{"out_time_us=N/A\n", "out_time_us=-5\n", "out_time_us=7\n"}
            << QList<qint64>{-1, -1, 7};
        QTest::newRow("a line not yet ended waits")
            << QByteArrayList{"out_time_us=300", "\n"} << QList<qint64>{-1, 300};
        QTest::newRow("other keys ending in the same letters are not it")
            << QByteArrayList{"xout_time_us=9\nout_time_ms=9\n"} << QList<qint64>{-1};
    }

    void reportsTheNewestPosition()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QList<qint64>, positions);
        FFmpegProgress progress;
        for (qsizetype i = 0; i < pieces.size(); ++i)
            QCOMPARE(progress.feed(pieces[i]).value_or(-1), positions[i]);
    }
};

QTEST_GUILESS_MAIN(FFmpegProgressTest)
#include "FFmpegProgressTest.moc"
