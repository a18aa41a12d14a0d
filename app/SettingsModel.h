// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingSettings.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class MainViewModel;

// The settings panels' view of the controller's settings: one property per
// control, choices as index and labels, every write going straight into the
// controller's settings value.
class SettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(
        bool normalizeLoudness READ normalizeLoudness WRITE setNormalizeLoudness NOTIFY changed)
    Q_PROPERTY(int presetIndex READ presetIndex WRITE setPresetIndex NOTIFY changed)
    Q_PROPERTY(QStringList presetLabels READ presetLabels NOTIFY labelsChanged)
    Q_PROPERTY(bool customPreset READ customPreset NOTIFY changed)
    Q_PROPERTY(
        double customTargetLUFS READ customTargetLUFS WRITE setCustomTargetLUFS NOTIFY changed)
    Q_PROPERTY(double truePeakCeiling READ truePeakCeiling WRITE setTruePeakCeiling NOTIFY changed)
    Q_PROPERTY(double ceilingFrom READ ceilingFrom CONSTANT)
    Q_PROPERTY(double ceilingTo READ ceilingTo CONSTANT)
    Q_PROPERTY(int formatIndex READ formatIndex WRITE setFormatIndex NOTIFY changed)
    Q_PROPERTY(QStringList formatLabels READ formatLabels NOTIFY labelsChanged)
    Q_PROPERTY(int sampleRateIndex READ sampleRateIndex WRITE setSampleRateIndex NOTIFY changed)
    Q_PROPERTY(QStringList sampleRateLabels READ sampleRateLabels NOTIFY labelsChanged)
    Q_PROPERTY(int bitDepthIndex READ bitDepthIndex WRITE setBitDepthIndex NOTIFY changed)
    Q_PROPERTY(QStringList bitDepthLabels READ bitDepthLabels CONSTANT)
    Q_PROPERTY(bool bitDepthApplies READ bitDepthApplies NOTIFY changed)
    Q_PROPERTY(QString outputFolder READ outputFolder NOTIFY changed)
    Q_PROPERTY(bool hasOutputFolder READ hasOutputFolder NOTIFY changed)
    Q_PROPERTY(
        bool revealWhenComplete READ revealWhenComplete WRITE setRevealWhenComplete NOTIFY changed)
    Q_PROPERTY(bool addPrefix READ addPrefix WRITE setAddPrefix NOTIFY changed)
    Q_PROPERTY(QString prefix READ prefix WRITE setPrefix NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY summaryChanged)

public:
    // The ranges the panels offer are the settings' own.
    static double ceilingFrom() { return ProcessingSettings::minimumCeiling; }
    static double ceilingTo() { return ProcessingSettings::maximumCeiling; }
    Q_INVOKABLE bool acceptsCustomTarget(double target) const
    {
        return ProcessingSettings::isTargetInRange(target);
    }

    explicit SettingsModel(MainViewModel &controller, QObject *parent = nullptr);

    bool normalizeLoudness() const;
    void setNormalizeLoudness(bool on);
    int presetIndex() const;
    void setPresetIndex(int index);
    QStringList presetLabels() const;
    bool customPreset() const;
    double customTargetLUFS() const;
    // A typed value within -70..-5 is taken as it stands (not rounded to a step).
    void setCustomTargetLUFS(double target);
    double truePeakCeiling() const;
    // Held to -9..0 dBTP in 0.1 dB steps.
    void setTruePeakCeiling(double ceiling);
    int formatIndex() const;
    void setFormatIndex(int index);
    QStringList formatLabels() const;
    int sampleRateIndex() const;
    void setSampleRateIndex(int index);
    QStringList sampleRateLabels() const;
    int bitDepthIndex() const;
    void setBitDepthIndex(int index);
    QStringList bitDepthLabels() const;
    // MP3 has no bit depth.
    bool bitDepthApplies() const;
    QString outputFolder() const;
    // The settings in one line, for the compact settings strip:
    // "Podcast -16 LUFS · ceiling -1.0 dBTP · Keep original · 24-bit".
    QString summary() const;
    bool hasOutputFolder() const;
    bool revealWhenComplete() const;
    void setRevealWhenComplete(bool on);
    bool addPrefix() const;
    void setAddPrefix(bool on);
    QString prefix() const;
    void setPrefix(const QString &prefix);

public Q_SLOTS:
    void retranslate();

Q_SIGNALS:
    void changed();
    void labelsChanged();
    void summaryChanged();

private:
    template<typename Change>
    void edit(Change change);

    MainViewModel &m_controller;
};
