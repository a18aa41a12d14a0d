// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Strings.h"

#include "app/QueueModel.h"
#include "localization/L.h"

#include <QCoreApplication>
#include <QEvent>

Strings::Strings(QObject *parent)
    : QObject(parent)
{
    // Installing or removing a catalogue sends the application a LanguageChange.
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
}

bool Strings::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
        Q_EMIT languageChanged();
    return QObject::eventFilter(watched, event);
}

QString Strings::appSubtitle() const
{
    return L::appSubtitle();
}

QString Strings::processingComplete() const
{
    return L::processingComplete();
}

QString Strings::files(int n) const
{
    return L::files(n);
}

QString Strings::folders(int n) const
{
    return L::folders(n);
}

QString Strings::filesProcessed(int n) const
{
    return L::filesProcessed(n);
}

QString Strings::reachedTarget(int n) const
{
    return L::reachedTarget(n);
}

QString Strings::converted(int n) const
{
    return L::converted(n);
}

QString Strings::peakLimited(int n) const
{
    return L::peakLimited(n);
}

QString Strings::failedCount(int n) const
{
    return L::failedCount(n);
}

QString Strings::revealOutputFolder() const
{
    return L::revealOutputFolder();
}

QString Strings::processNewFiles() const
{
    return L::processNewFiles();
}

QString Strings::dropHere() const
{
    return L::dropHere();
}

QString Strings::filesLoaded(int n) const
{
    return L::filesLoaded(n);
}

QString Strings::individualFiles() const
{
    return L::individualFiles();
}

QString Strings::analyzeLoudness() const
{
    return L::analyzeLoudness();
}

QString Strings::noOutputFolder() const
{
    return L::noOutputFolder();
}

QString Strings::normalizeLoudness() const
{
    return L::normalizeLoudness();
}

QString Strings::truePeakCeiling() const
{
    return L::truePeakCeiling();
}

QString Strings::noFolderSelected() const
{
    return L::noFolderSelected();
}

QString Strings::revealWhenComplete() const
{
    return L::revealWhenComplete();
}

QString Strings::noFilesInQueue() const
{
    return L::noFilesInQueue();
}

QString Strings::removeFromQueue() const
{
    return L::removeFromQueue();
}

QString Strings::ofFiles(int done, int total) const
{
    return L::ofFiles(done, total);
}

QString Strings::supportMenuItem() const
{
    return L::supportMenuItem();
}

QString Strings::supportTitle() const
{
    return L::supportTitle();
}

QString Strings::supportBody() const
{
    return L::supportBody();
}

QString Strings::supportChannelButton() const
{
    return L::supportChannelButton();
}

QString Strings::sampleRateHeading() const
{
    return L::sampleRateHeading();
}

QString Strings::bitDepthHeading() const
{
    return L::bitDepthHeading();
}

QString Strings::outputFormatHeading() const
{
    return L::outputFormatHeading();
}

QString Strings::selectFiles() const
{
    return L::selectFiles();
}

QString Strings::selectFolder() const
{
    return L::selectFolder();
}

QString Strings::addFiles() const
{
    return L::addFiles();
}

QString Strings::addFolder() const
{
    return L::addFolder();
}

QString Strings::removeSelected() const
{
    return L::removeSelected();
}

QString Strings::clearQueue() const
{
    return L::clearQueue();
}

QString Strings::columnFile() const
{
    return L::columnFile();
}

QString Strings::columnSource() const
{
    return L::columnSource();
}

QString Strings::columnLoudness() const
{
    return L::columnLoudness();
}

QString Strings::columnOutput() const
{
    return L::columnOutput();
}

QString Strings::columnStatus() const
{
    return L::columnStatus();
}

QString Strings::selectAll() const
{
    return L::selectAll();
}

QString Strings::processingTitle() const
{
    return L::processingTitle();
}

QString Strings::cancel() const
{
    return L::cancel();
}

QString Strings::exportReport() const
{
    return L::exportReport();
}

QString Strings::details() const
{
    return L::details();
}

QString Strings::done() const
{
    return L::done();
}

QString Strings::close() const
{
    return L::close();
}

QString Strings::version() const
{
    return L::version();
}

QString Strings::about() const
{
    return L::about();
}

QString Strings::licenses() const
{
    return L::licenses();
}

QString Strings::viewLicense() const
{
    return L::viewLicense();
}

QString Strings::hideLicense() const
{
    return L::hideLicense();
}

QString Strings::leaveTip() const
{
    return L::leaveTip();
}

QString Strings::language() const
{
    return L::language();
}

QString Strings::targetHeading() const
{
    return L::targetHeading();
}

QString Strings::presetLabel() const
{
    return L::presetLabel();
}

QString Strings::customTarget() const
{
    return L::customTarget();
}

QString Strings::outputFolderHeading() const
{
    return L::outputFolderHeading();
}

QString Strings::chooseFolder() const
{
    return L::chooseFolder();
}

QString Strings::addPrefix() const
{
    return L::addPrefix();
}

QString Strings::copyright() const
{
    return L::copyright();
}

QString Strings::ffmpegSummary() const
{
    return L::ffmpegSummary();
}

QString Strings::lameSummary() const
{
    return L::lameSummary();
}

QString Strings::dropToAdd() const
{
    return L::dropToAdd();
}

QString Strings::showDetails() const
{
    return L::showDetails();
}

QString Strings::statusName(const QString &status) const
{
    for (auto kind : {ProcessingStatus::Kind::Ready, ProcessingStatus::Kind::Analyzing,
                      ProcessingStatus::Kind::Processing, ProcessingStatus::Kind::Done,
                      ProcessingStatus::Kind::Warning, ProcessingStatus::Kind::Failed,
                      ProcessingStatus::Kind::Cancelled}) {
        if (QueueModel::statusName(kind) == status)
            return L::statusName(kind);
    }
    return status;
}

QString Strings::languageName(const QString &language) const
{
    return L::languageName(AppLanguages::fromRawValue(language).value_or(AppLanguage::System));
}
