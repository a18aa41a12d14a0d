// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

// The kinds in a namespace of their own, so that QML can name them
// (ProcessingStatus.Ready, ...).
namespace ProcessingStatusKinds {
Q_NAMESPACE

enum class Kind
{
    Warning,
    Failed,
    Ready,
    // Waiting for its turn to be measured.
    Queued,
    Analyzing,
    Processing,
    Done,
    Cancelled,
    // Not written again: its output was already there.
    Skipped,
};
Q_ENUM_NS(Kind)

} // namespace ProcessingStatusKinds

// Where one queue item stands. Warning, Failed and Skipped carry a message for the user;
// how a status is drawn belongs to the views.
class ProcessingStatus
{
public:
    using Kind = ProcessingStatusKinds::Kind;

    // "ready", "failed", ...: the kind's name in machine-read output (JSON).
    static QString rawValue(Kind kind);

    static ProcessingStatus warning(const QString &message) { return {Kind::Warning, message}; }
    static ProcessingStatus failed(const QString &message) { return {Kind::Failed, message}; }
    static ProcessingStatus ready() { return {Kind::Ready, {}}; }
    static ProcessingStatus queued() { return {Kind::Queued, {}}; }
    static ProcessingStatus analyzing() { return {Kind::Analyzing, {}}; }
    static ProcessingStatus processing() { return {Kind::Processing, {}}; }
    static ProcessingStatus done() { return {Kind::Done, {}}; }
    static ProcessingStatus cancelled() { return {Kind::Cancelled, {}}; }
    static ProcessingStatus skipped(const QString &message) { return {Kind::Skipped, message}; }

    // A new item's: ready.
    ProcessingStatus()
        : ProcessingStatus(Kind::Ready, {})
    {}

    Kind kind() const { return m_kind; }
    // Empty for the kinds without a message.
    const QString &message() const { return m_message; }

    friend bool operator==(const ProcessingStatus &, const ProcessingStatus &) = default;

private:
    ProcessingStatus(Kind kind, QString message)
        : m_kind(kind)
        , m_message(std::move(message))
    {}

    Kind m_kind;
    QString m_message;
};
