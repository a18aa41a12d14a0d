// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

// Test inputs made on the spot: WAV files of tones, noise and silence at exact
// levels, and the other formats encoded from them by the bundled ffmpeg.
class TestAudio
{
public:
    struct Segment
    {
        enum class Kind
        {
            Sine,
            Square,
            Noise,
            Silence,
        };
        Kind kind = Kind::Sine;
        double levelDBFS = -20; // sine and square: peak; noise: RMS
        double seconds = 1;
        double frequency = 1000;
        // A sine from this phase (degrees) with 10 ms fades, as the true-peak
        // test tones are; negative carries on from the segment before.
        double phaseDegrees = -1;

        static Segment sine(double levelDBFS, double seconds, double frequency = 1000)
        {
            return {Kind::Sine, levelDBFS, seconds, frequency};
        }
        static Segment noise(double levelDBFS, double seconds)
        {
            return {Kind::Noise, levelDBFS, seconds};
        }
        static Segment silence(double seconds) { return {Kind::Silence, 0, seconds}; }
    };

    // 32-bit float WAV with the same signal, in phase, on every channel.
    static bool writeWav(const QString &path, int sampleRate, int channels,
                         const std::vector<Segment> &segments);

    // Encodes a WAV into the container its extension names (aiff, aif, caf,
    // mp3, m4a, or wav as 16-bit PCM); an MP3 or M4A may carry a PNG front
    // cover in an ID3 tag, as taggers store album art. Empty on success, else
    // ffmpeg's complaint.
    static QString encode(const QString &ffmpegPath, const QString &wavPath,
                          const QString &outputPath, bool withCover = false);
};
