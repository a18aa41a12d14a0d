// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ThreadHandOff.h"
#include "engine/CancellationToken.h"

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <vector>

// Runs blocking jobs, at most `width` at a time, on a thread pool: the first
// `width` entries start at once and each delivered result lets the next entry
// in, in list order. Results are delivered on the context object's thread in
// the order the jobs finish. Once the token is set, nothing more is started;
// what runs still delivers. When the last started job has delivered, finished
// runs.
//
// The context is held weakly: if it is destroyed, deliveries are dropped and
// jobs in flight just end. Jobs must therefore not touch the context.
template<typename Entry, typename Result>
class BoundedTaskGroup : public std::enable_shared_from_this<BoundedTaskGroup<Entry, Result>>
{
public:
    struct Callbacks
    {
        // Worker thread.
        std::function<Result(const Entry &)> work;
        // Context thread, just before an entry's job is queued.
        std::function<void(const Entry &)> submitted;
        // Context thread, in finishing order.
        std::function<void(const Entry &, Result &&)> delivered;
        // Context thread, after the last delivery.
        std::function<void()> finished;
    };

    static std::shared_ptr<BoundedTaskGroup> start(QObject *context, QThreadPool *pool, int width,
                                                   std::vector<Entry> entries,
                                                   std::shared_ptr<const CancellationToken> token,
                                                   Callbacks callbacks)
    {
        std::shared_ptr<BoundedTaskGroup> group(new BoundedTaskGroup(
            context, pool, std::move(entries), std::move(token), std::move(callbacks)));
        const size_t first =
            std::min(group->m_entries.size(), static_cast<size_t>(std::max(width, 1)));
        for (size_t i = 0; i < first; ++i)
            group->submitNext();
        if (group->m_running == 0 && group->m_callbacks.finished)
            group->m_callbacks.finished();
        return group;
    }

private:
    BoundedTaskGroup(QObject *context, QThreadPool *pool, std::vector<Entry> entries,
                     std::shared_ptr<const CancellationToken> token, Callbacks callbacks)
        : m_context(context)
        , m_pool(pool)
        , m_entries(std::move(entries))
        , m_token(std::move(token))
        , m_callbacks(std::move(callbacks))
    {}

    void submitNext()
    {
        const size_t index = m_next++;
        ++m_running;
        if (m_callbacks.submitted)
            m_callbacks.submitted(m_entries[index]);
        m_pool->start(
            std::function<void()>(Job{this->shared_from_this(), index, ThreadHandOff::Edge()}));
    }

    // The job on a worker thread; its result goes back as a queued Delivery.
    struct Job
    {
        std::shared_ptr<BoundedTaskGroup> group;
        size_t index;
        ThreadHandOff::Edge edge; // last

        void operator()() const
        {
            edge.arrive();
            QMetaObject::invokeMethod(group->m_context,
                                      Delivery{group, index,
                                               group->m_callbacks.work(group->m_entries[index]),
                                               ThreadHandOff::Edge()},
                                      Qt::QueuedConnection);
        }
    };

    struct Delivery
    {
        std::shared_ptr<BoundedTaskGroup> group;
        size_t index;
        Result result;
        ThreadHandOff::Edge edge; // last

        void operator()()
        {
            edge.arrive();
            group->deliver(index, std::move(result));
            edge.depart();
        }
    };

    void deliver(size_t index, Result &&result)
    {
        --m_running;
        m_callbacks.delivered(m_entries[index], std::move(result));
        if (!m_token->isCancelled() && m_next < m_entries.size())
            submitNext();
        if (m_running == 0 && m_callbacks.finished)
            m_callbacks.finished();
    }

    QObject *m_context;
    QThreadPool *m_pool;
    std::vector<Entry> m_entries;
    std::shared_ptr<const CancellationToken> m_token;
    Callbacks m_callbacks;
    size_t m_next = 0;
    int m_running = 0;
};
