// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

// The chunks of a RIFF or RF64 WAVE file that ffmpeg drops or rewrites
// wrongly: the broadcast extension (bext), iXML, cue points with their
// labels (LIST/adtl) and sampler loops (smpl). Read without touching the
// audio, carried into a written WAV, sample positions rescaled when the rate
// changes so that they keep their time.
class WavChunks
{
public:
    struct Chunk
    {
        QByteArray id;
        QByteArray body;

        friend bool operator==(const Chunk &, const Chunk &) = default;
    };

    // A cue point with its label, at a position in sample frames.
    struct Marker
    {
        quint32 id = 0;
        quint64 position = 0;
        QByteArray name;

        friend bool operator==(const Marker &, const Marker &) = default;
    };

    // The bext fields, as EBU Tech 3285 lays them out.
    struct Bext
    {
        QByteArray description;
        QByteArray originator;
        QByteArray originatorReference;
        QByteArray originationDate;
        QByteArray originationTime;
        quint64 timeReference = 0;
        QByteArray umid; // 64 bytes
        QByteArray codingHistory;
    };

    // The source's chunks; absent when it is not a WAVE file. A malformed
    // chunk list (a size past the end, a chunk too large to be metadata)
    // gives none of them, and says so.
    static std::optional<WavChunks> read(const QString &path);
    bool isDamaged() const { return m_damaged; }

    std::optional<Bext> bext() const;
    // iXML, cue, LIST/adtl and smpl, positions scaled from one rate to another.
    QList<Chunk> carried(int fromRate, int toRate) const;
    // The names of what this file carries that a format other than WAV drops.
    QStringList kinds() const;
    // The cue points with their labels (LIST/adtl), positions scaled between rates.
    QList<Marker> markers(int fromRate, int toRate) const;

    // Appends the markers to a written AIFF (a MARK chunk) or CAF (mark and
    // strg chunks) and corrects an AIFF's FORM size. False, with the file
    // unchanged, when it is not one.
    static bool appendAiffMarkers(const QString &path, const QList<Marker> &markers);
    static bool appendCafMarkers(const QString &path, const QList<Marker> &markers);

    // ffmpeg's arguments that write the bext chunk: its fields, the time
    // reference scaled to the new rate, one line added to the coding history.
    static QStringList bextArguments(const Bext &bext, int fromRate, int toRate,
                                     const QString &historyLine);
    // Appends the chunks after everything in a written WAV and corrects its
    // RIFF (or RF64) size. False, with the file unchanged, when it is not a WAVE.
    static bool append(const QString &path, const QList<Chunk> &chunks);

    const QList<Chunk> &chunks() const { return m_chunks; }

private:
    QList<Chunk> m_chunks;
    bool m_damaged = false;
};
