// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsModel.h"

#include "app/MainViewModel.h"
#include "localization/L.h"
#include "model/NumberFormat.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

template<typename Enum, std::size_t N>
int indexIn(const std::array<Enum, N> &cases, Enum value)
{
    const auto found = std::find(cases.begin(), cases.end(), value);
    return found == cases.end() ? 0 : static_cast<int>(found - cases.begin());
}

template<typename Enum, std::size_t N>
std::optional<Enum> caseAt(const std::array<Enum, N> &cases, int index)
{
    if (index < 0 || index >= static_cast<int>(N))
        return std::nullopt;
    return cases[static_cast<std::size_t>(index)];
}

template<typename Enum, std::size_t N, typename Label>
QStringList labelsOf(const std::array<Enum, N> &cases, Label label)
{
    QStringList labels;
    for (Enum value : cases)
        labels.append(label(value));
    return labels;
}

} // namespace

SettingsModel::SettingsModel(MainViewModel &controller, QObject *parent)
    : QObject(parent)
    , m_controller(controller)
{
    connect(&m_controller, &MainViewModel::settingsChanged, this, &SettingsModel::changed);
    connect(this, &SettingsModel::changed, this, &SettingsModel::summaryChanged);
    connect(this, &SettingsModel::labelsChanged, this, &SettingsModel::summaryChanged);
}

void SettingsModel::retranslate()
{
    Q_EMIT labelsChanged();
}

QString SettingsModel::summary() const
{
    const ProcessingSettings &settings = m_controller.settings();
    QStringList parts;
    if (!settings.normalizeLoudness) {
        parts.append(L::text(L::LoudnessUnchanged));
    } else {
        const LoudnessPreset &preset = settings.selectedPreset;
        parts.append(preset.isCustom || !preset.targetLUFS
                         ? L::presetName(preset) + u' ' +
                               NumberFormat::fixed(settings.customTargetLUFS, 1) +
                               QStringLiteral(" LUFS")
                         : L::presetLabel(preset));
        parts.append(L::text(L::CeilingShort, NumberFormat::fixed(settings.truePeakCeiling, 1)));
    }
    parts.append(L::outputFormatLabel(settings.outputFormatMode));
    if (settings.sampleRateMode != SampleRateMode::PreserveOriginal)
        parts.append(L::sampleRateLabel(settings.sampleRateMode));
    if (bitDepthApplies())
        parts.append(L::bitDepthLabel(settings.bitDepth));
    // Where the line wraps, a number keeps its unit: "24 bit", "-1.0 dBTP".
    static const QRegularExpression numberSpace(QStringLiteral("(\\d) "));
    return parts.join(QStringLiteral(" \u00b7 ")).replace(numberSpace, QStringLiteral("\\1\u00a0"));
}

template<typename Change>
void SettingsModel::edit(Change change)
{
    ProcessingSettings settings = m_controller.settings();
    change(settings);
    m_controller.setSettings(settings);
}

bool SettingsModel::normalizeLoudness() const
{
    return m_controller.settings().normalizeLoudness;
}

void SettingsModel::setNormalizeLoudness(bool on)
{
    edit([&](ProcessingSettings &settings) { settings.normalizeLoudness = on; });
}

int SettingsModel::presetIndex() const
{
    const QList<LoudnessPreset> &presets = LoudnessPreset::builtIn();
    const qsizetype index = presets.indexOf(m_controller.settings().selectedPreset);
    return index < 0 ? 0 : static_cast<int>(index);
}

void SettingsModel::setPresetIndex(int index)
{
    if (index < 0 || index >= LoudnessPreset::builtIn().size())
        return;
    edit([&](ProcessingSettings &settings) {
        settings.selectedPreset = LoudnessPreset::builtIn().at(index);
    });
}

QStringList SettingsModel::presetLabels() const
{
    QStringList labels;
    for (const LoudnessPreset &preset : LoudnessPreset::builtIn())
        labels.append(L::presetLabel(preset));
    return labels;
}

bool SettingsModel::customPreset() const
{
    return m_controller.settings().selectedPreset.isCustom;
}

double SettingsModel::customTargetLUFS() const
{
    return m_controller.settings().customTargetLUFS;
}

void SettingsModel::setCustomTargetLUFS(double target)
{
    if (!ProcessingSettings::isTargetInRange(target))
        return;
    edit([&](ProcessingSettings &settings) { settings.customTargetLUFS = target; });
}

double SettingsModel::truePeakCeiling() const
{
    return m_controller.settings().truePeakCeiling;
}

void SettingsModel::setTruePeakCeiling(double ceiling)
{
    if (!std::isfinite(ceiling))
        return;
    const double stepped = std::round(std::clamp(ceiling, ProcessingSettings::minimumCeiling,
                                                 ProcessingSettings::maximumCeiling) *
                                      10) /
                           10;
    edit([&](ProcessingSettings &settings) { settings.truePeakCeiling = stepped; });
}

int SettingsModel::formatIndex() const
{
    return indexIn(OutputFormatModes::all, m_controller.settings().outputFormatMode);
}

void SettingsModel::setFormatIndex(int index)
{
    if (const auto mode = caseAt(OutputFormatModes::all, index))
        edit([&](ProcessingSettings &settings) { settings.outputFormatMode = *mode; });
}

QStringList SettingsModel::formatLabels() const
{
    return labelsOf(OutputFormatModes::all, L::outputFormatLabel);
}

int SettingsModel::sampleRateIndex() const
{
    return indexIn(SampleRateModes::all, m_controller.settings().sampleRateMode);
}

void SettingsModel::setSampleRateIndex(int index)
{
    if (const auto mode = caseAt(SampleRateModes::all, index))
        edit([&](ProcessingSettings &settings) { settings.sampleRateMode = *mode; });
}

QStringList SettingsModel::sampleRateLabels() const
{
    return labelsOf(SampleRateModes::all, L::sampleRateLabel);
}

int SettingsModel::bitDepthIndex() const
{
    return indexIn(OutputBitDepths::all, m_controller.settings().bitDepth);
}

void SettingsModel::setBitDepthIndex(int index)
{
    if (const auto depth = caseAt(OutputBitDepths::all, index))
        edit([&](ProcessingSettings &settings) { settings.bitDepth = *depth; });
}

QStringList SettingsModel::bitDepthLabels() const
{
    return labelsOf(OutputBitDepths::all, L::bitDepthLabel);
}

bool SettingsModel::bitDepthApplies() const
{
    return m_controller.settings().outputFormatMode != OutputFormatMode::Mp3;
}

QString SettingsModel::outputFolder() const
{
    return m_controller.settings().outputFolder.value_or(QString());
}

bool SettingsModel::hasOutputFolder() const
{
    return m_controller.settings().outputFolder.has_value();
}

bool SettingsModel::revealWhenComplete() const
{
    return m_controller.settings().revealInFinderWhenComplete;
}

void SettingsModel::setRevealWhenComplete(bool on)
{
    edit([&](ProcessingSettings &settings) { settings.revealInFinderWhenComplete = on; });
}

bool SettingsModel::addPrefix() const
{
    return m_controller.settings().addPrefix;
}

void SettingsModel::setAddPrefix(bool on)
{
    edit([&](ProcessingSettings &settings) { settings.addPrefix = on; });
}

QString SettingsModel::prefix() const
{
    return m_controller.settings().prefix;
}

void SettingsModel::setPrefix(const QString &prefix)
{
    edit([&](ProcessingSettings &settings) { settings.prefix = prefix; });
}
