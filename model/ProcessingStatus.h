// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Where one queue item stands. Warning and Failed carry a message for the user;
// how a status is drawn belongs to the views.
class ProcessingStatus
{
public:
    enum class Kind
    {
        Warning,
        Failed,
        Ready,
        Analyzing,
        Processing,
        Done,
        Cancelled,
    };

    static ProcessingStatus warning(const QString &message) { return {Kind::Warning, message}; }
    static ProcessingStatus failed(const QString &message) { return {Kind::Failed, message}; }
    static ProcessingStatus ready() { return {Kind::Ready, {}}; }
    static ProcessingStatus analyzing() { return {Kind::Analyzing, {}}; }
    static ProcessingStatus processing() { return {Kind::Processing, {}}; }
    static ProcessingStatus done() { return {Kind::Done, {}}; }
    static ProcessingStatus cancelled() { return {Kind::Cancelled, {}}; }

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
