// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/L.h"

#include <QCoreApplication>

namespace L {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("L", text);
}

} // namespace

std::optional<QString> presetName(QStringView presetId)
{
    if (presetId == u"theatre_ambience")
        return tr(QT_TRANSLATE_NOOP("L", "Theatre Ambience"));
    if (presetId == u"active_ambience")
        return tr(QT_TRANSLATE_NOOP("L", "Active Ambience"));
    if (presetId == u"music_playback")
        return tr(QT_TRANSLATE_NOOP("L", "Music / Playback"));
    if (presetId == u"voice_dialogue")
        return tr(QT_TRANSLATE_NOOP("L", "Voice / Dialogue"));
    if (presetId == u"podcast")
        return tr(QT_TRANSLATE_NOOP("L", "Podcast"));
    if (presetId == u"streaming")
        return tr(QT_TRANSLATE_NOOP("L", "Streaming"));
    if (presetId == u"custom")
        return tr(QT_TRANSLATE_NOOP("L", "Custom"));
    return std::nullopt;
}

QString sampleRateLabel(SampleRateMode mode)
{
    switch (mode) {
    case SampleRateMode::PreserveOriginal:
        return tr(QT_TRANSLATE_NOOP("L", "Preserve original"));
    case SampleRateMode::Rate44100:
        return QStringLiteral("44.1 kHz");
    case SampleRateMode::Rate48000:
        return QStringLiteral("48 kHz");
    }
    return {};
}

} // namespace L
