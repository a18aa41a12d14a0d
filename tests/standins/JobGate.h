// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/CancellationToken.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

// Jobs, keyed by file name, that wait for an answer (or for their token).
template<typename Answer>
class JobGate
{
public:
    Answer await(const QString &key, const CancellationToken &token, Answer whenCancelled)
    {
        std::unique_lock lock(m_mutex);
        m_started.append(key);
        m_running.insert(key);
        for (;;) {
            if (auto found = m_answers.find(key); found != m_answers.end()) {
                Answer answer = found->second;
                m_answers.erase(found);
                m_running.remove(key);
                return answer;
            }
            if (token.isCancelled()) {
                m_running.remove(key);
                m_cancelled.append(key);
                return whenCancelled;
            }
            // How the real runner notices a token: by looking at it now and then.
            m_changed.wait_for(lock, std::chrono::milliseconds(5));
        }
    }

    void release(const QString &key, Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answers[key] = std::move(answer);
        m_changed.notify_all();
    }

    QStringList started() const
    {
        const std::lock_guard lock(m_mutex);
        return m_started;
    }

    QStringList running() const
    {
        const std::lock_guard lock(m_mutex);
        QStringList keys(m_running.cbegin(), m_running.cend());
        keys.sort();
        return keys;
    }

    QStringList cancelled() const
    {
        const std::lock_guard lock(m_mutex);
        return m_cancelled;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<QString, Answer> m_answers;
    QStringList m_started;
    QSet<QString> m_running;
    QStringList m_cancelled;
};
