// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

// The string table as QML reads it: `Strings.tr.dropHere()`, `Strings.tr.files(3)`.
// Reading `tr` makes a binding depend on the language: when Qt announces a
// language change, `tr` notifies and every such binding reads its text again.
class Strings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(Strings *tr READ tr NOTIFY languageChanged)

public:
    explicit Strings(QObject *parent = nullptr);

    Strings *tr() { return this; }

    Q_INVOKABLE QString appSubtitle() const;
    Q_INVOKABLE QString processingComplete() const;
    Q_INVOKABLE QString files(int n) const;
    Q_INVOKABLE QString folders(int n) const;
    Q_INVOKABLE QString filesProcessed(int n) const;
    Q_INVOKABLE QString reachedTarget(int n) const;
    Q_INVOKABLE QString converted(int n) const;
    Q_INVOKABLE QString peakLimited(int n) const;
    Q_INVOKABLE QString failedCount(int n) const;
    Q_INVOKABLE QString revealOutputFolder() const;
    Q_INVOKABLE QString processNewFiles() const;
    Q_INVOKABLE QString dropHere() const;
    Q_INVOKABLE QString filesLoaded(int n) const;
    Q_INVOKABLE QString individualFiles() const;
    Q_INVOKABLE QString analyzeLoudness() const;
    Q_INVOKABLE QString noOutputFolder() const;
    Q_INVOKABLE QString normalizeLoudness() const;
    Q_INVOKABLE QString truePeakCeiling() const;
    Q_INVOKABLE QString noFolderSelected() const;
    Q_INVOKABLE QString revealWhenComplete() const;
    Q_INVOKABLE QString noFilesInQueue() const;
    Q_INVOKABLE QString removeFromQueue() const;
    Q_INVOKABLE QString ofFiles(int done, int total) const;
    Q_INVOKABLE QString supportMenuItem() const;
    Q_INVOKABLE QString supportTitle() const;
    Q_INVOKABLE QString supportBody() const;
    Q_INVOKABLE QString supportChannelButton() const;
    Q_INVOKABLE QString sampleRateHeading() const;
    Q_INVOKABLE QString bitDepthHeading() const;
    Q_INVOKABLE QString outputFormatHeading() const;
    Q_INVOKABLE QString statusName(const QString &status) const;
    Q_INVOKABLE QString selectFiles() const;
    Q_INVOKABLE QString selectFolder() const;
    Q_INVOKABLE QString addFiles() const;
    Q_INVOKABLE QString addFolder() const;
    Q_INVOKABLE QString removeSelected() const;
    Q_INVOKABLE QString clearQueue() const;
    Q_INVOKABLE QString columnFile() const;
    Q_INVOKABLE QString columnSource() const;
    Q_INVOKABLE QString columnLoudness() const;
    Q_INVOKABLE QString columnOutput() const;
    Q_INVOKABLE QString columnStatus() const;
    Q_INVOKABLE QString selectAll() const;
    Q_INVOKABLE QString processingTitle() const;
    Q_INVOKABLE QString cancel() const;
    Q_INVOKABLE QString exportReport() const;
    Q_INVOKABLE QString details() const;
    Q_INVOKABLE QString done() const;
    Q_INVOKABLE QString close() const;
    Q_INVOKABLE QString version() const;
    Q_INVOKABLE QString about() const;
    Q_INVOKABLE QString licenses() const;
    Q_INVOKABLE QString viewLicense() const;
    Q_INVOKABLE QString hideLicense() const;
    Q_INVOKABLE QString leaveTip() const;
    Q_INVOKABLE QString language() const;
    Q_INVOKABLE QString languageName(const QString &language) const;
    Q_INVOKABLE QString targetHeading() const;
    Q_INVOKABLE QString presetLabel() const;
    Q_INVOKABLE QString customTarget() const;
    Q_INVOKABLE QString outputFolderHeading() const;
    Q_INVOKABLE QString chooseFolder() const;
    Q_INVOKABLE QString addPrefix() const;
    Q_INVOKABLE QString copyright() const;
    Q_INVOKABLE QString ffmpegSummary() const;
    Q_INVOKABLE QString lameSummary() const;
    Q_INVOKABLE QString dropToAdd() const;
    Q_INVOKABLE QString showDetails() const;

Q_SIGNALS:
    void languageChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
