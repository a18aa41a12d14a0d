// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ImportRun.h"

#include "app/BoundedTaskGroup.h"

ImportRun::ImportRun(QThreadPool &pool, QObject *parent)
    : QObject(parent)
    , m_pool(pool)
{}

ImportRun::~ImportRun()
{
    m_token->cancel();
}

void ImportRun::start(const QStringList &paths, const QList<AudioFileItem> &queued,
                      std::shared_ptr<const FileImporting> importer)
{
    m_token = std::make_shared<CancellationToken>();
    const CancellationTokenPtr token = m_token;
    m_running = true;
    Q_EMIT runningChanged();

    // One path at a time: each job starts after the one before has delivered,
    // so the list it reads is never written meanwhile.
    auto seen = std::make_shared<QList<AudioFileItem>>(queued);
    auto totals = std::make_shared<ImportSummary>();
    BoundedTaskGroup<QString, ImportSummary>::Callbacks callbacks;
    callbacks.work = [importer, seen](const QString &path) {
        return importer->importPaths({path}, *seen);
    };
    callbacks.delivered = [this, seen, totals, token](const QString &, ImportSummary &&summary) {
        if (token->isCancelled())
            return;
        seen->append(summary.items);
        totals->duplicateCount += summary.duplicateCount;
        totals->unsupportedCount += summary.unsupportedCount;
        for (auto format = summary.unsupportedFormats.cbegin();
             format != summary.unsupportedFormats.cend(); ++format)
            totals->unsupportedFormats[format.key()] += format.value();
        totals->items.append(summary.items);
        Q_EMIT found(summary.items);
    };
    callbacks.finished = [this, totals, token] {
        if (token != m_token)
            return; // a later import took over
        m_running = false;
        Q_EMIT finished(*totals, token->isCancelled());
        Q_EMIT runningChanged();
    };
    std::vector<QString> entries(paths.cbegin(), paths.cend());
    BoundedTaskGroup<QString, ImportSummary>::start(this, &m_pool, 1, std::move(entries), token,
                                                    std::move(callbacks));
}

void ImportRun::cancel()
{
    m_token->cancel();
}
