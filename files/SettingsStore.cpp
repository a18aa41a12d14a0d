// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/SettingsStore.h"

#include <QSettings>

#include <utility>

namespace {

// One key per choice, under the group "processing" of the preferences file.
constexpr QLatin1StringView normalizeKey{"processing/normalizeLoudness"};
constexpr QLatin1StringView presetKey{"processing/preset"};
constexpr QLatin1StringView customTargetKey{"processing/customTargetLUFS"};
constexpr QLatin1StringView ceilingKey{"processing/truePeakCeiling"};
constexpr QLatin1StringView formatKey{"processing/outputFormat"};
constexpr QLatin1StringView sampleRateKey{"processing/sampleRate"};
constexpr QLatin1StringView bitDepthKey{"processing/bitDepth"};
constexpr QLatin1StringView revealKey{"processing/revealWhenComplete"};
constexpr QLatin1StringView addPrefixKey{"processing/addPrefix"};
constexpr QLatin1StringView prefixKey{"processing/prefix"};
constexpr QLatin1StringView windowSizeKey{"window/size"};

std::optional<double> number(const QSettings &file, QLatin1StringView key)
{
    bool ok = false;
    const double value = file.value(key).toDouble(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

std::optional<bool> flag(const QSettings &file, QLatin1StringView key)
{
    const QVariant value = file.value(key);
    const QString text = value.toString();
    if (text == u"true" || text == u"false")
        return text == u"true";
    return std::nullopt;
}

} // namespace

SettingsStore::SettingsStore(std::shared_ptr<QSettings> file)
    : m_file(std::move(file))
{}

ProcessingSettings SettingsStore::restore(const ProcessingSettings &defaults) const
{
    ProcessingSettings settings = defaults;
    if (!m_file)
        return settings;
    const QSettings &file = *m_file;
    if (const auto on = flag(file, normalizeKey))
        settings.normalizeLoudness = *on;
    if (const auto preset = LoudnessPreset::builtIn(file.value(presetKey).toString()))
        settings.selectedPreset = *preset;
    if (const auto target = number(file, customTargetKey);
        target && ProcessingSettings::isTargetInRange(*target))
        settings.customTargetLUFS = *target;
    if (const auto ceiling = number(file, ceilingKey);
        ceiling && ProcessingSettings::isCeilingInRange(*ceiling))
        settings.truePeakCeiling = *ceiling;
    if (const auto format = OutputFormatModes::fromRawValue(file.value(formatKey).toString()))
        settings.outputFormatMode = *format;
    if (const auto rate = SampleRateModes::fromRawValue(file.value(sampleRateKey).toString()))
        settings.sampleRateMode = *rate;
    if (const auto depth = OutputBitDepths::fromRawValue(file.value(bitDepthKey).toInt()))
        settings.bitDepth = *depth;
    if (const auto reveal = flag(file, revealKey))
        settings.revealInFinderWhenComplete = *reveal;
    if (const auto prefixed = flag(file, addPrefixKey))
        settings.addPrefix = *prefixed;
    if (const QVariant prefix = file.value(prefixKey); prefix.isValid())
        settings.prefix = prefix.toString();
    return settings;
}

void SettingsStore::save(const ProcessingSettings &settings) const
{
    if (!m_file)
        return;
    QSettings &file = *m_file;
    file.setValue(normalizeKey, settings.normalizeLoudness);
    file.setValue(presetKey, settings.selectedPreset.id);
    file.setValue(customTargetKey, settings.customTargetLUFS);
    file.setValue(ceilingKey, settings.truePeakCeiling);
    file.setValue(formatKey, OutputFormatModes::rawValue(settings.outputFormatMode));
    file.setValue(sampleRateKey, SampleRateModes::rawValue(settings.sampleRateMode));
    file.setValue(bitDepthKey, OutputBitDepths::rawValue(settings.bitDepth));
    file.setValue(revealKey, settings.revealInFinderWhenComplete);
    file.setValue(addPrefixKey, settings.addPrefix);
    file.setValue(prefixKey, settings.prefix);
    file.sync();
}

std::optional<QSize> SettingsStore::windowSize() const
{
    if (!m_file)
        return std::nullopt;
    const QSize size = m_file->value(windowSizeKey).toSize();
    return size.isValid() && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

void SettingsStore::saveWindowSize(QSize size) const
{
    if (!m_file || !size.isValid())
        return;
    m_file->setValue(windowSizeKey, size);
    m_file->sync();
}
