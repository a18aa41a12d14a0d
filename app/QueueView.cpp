// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/QueueView.h"

#include "model/NaturalOrder.h"

#include <cmath>

namespace {

// Where a status comes in the STATUS order: what needs attention first.
int statusRank(ProcessingStatus::Kind kind)
{
    switch (kind) {
    case ProcessingStatus::Kind::Failed:
        return 0;
    case ProcessingStatus::Kind::Warning:
        return 1;
    case ProcessingStatus::Kind::Processing:
        return 2;
    case ProcessingStatus::Kind::Analyzing:
        return 3;
    case ProcessingStatus::Kind::Queued:
        return 4;
    case ProcessingStatus::Kind::Ready:
        return 5;
    case ProcessingStatus::Kind::Cancelled:
        return 6;
    case ProcessingStatus::Kind::Done:
        return 7;
    case ProcessingStatus::Kind::Skipped:
        return 8;
    }
    return 9;
}

const QCollator &collator()
{
    static const QCollator natural = naturalOrder();
    return natural;
}

} // namespace

QueueView::QueueView(QueueModel &queue, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_queue(queue)
{
    setSourceModel(&queue);
    // Rows follow their items as statuses and figures change.
    setDynamicSortFilter(true);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(this, signal, this, &QueueView::countChanged);
    connect(this, &QAbstractItemModel::modelReset, this, &QueueView::countChanged);
    connect(this, &QAbstractItemModel::layoutChanged, this, &QueueView::countChanged);
    // A tick made otherwise ends the range: going back will not untick it.
    connect(&queue, &QueueModel::selectionChanged, this, [this] {
        if (!m_extending)
            m_rangeTicked.clear();
    });
}

void QueueView::setFilter(Filter filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    invalidateFilter();
    Q_EMIT arrangementChanged();
    Q_EMIT countChanged();
}

void QueueView::sortBy(SortKey key)
{
    if (key != m_sortKey || key == SortKey::QueueOrder) {
        m_sortKey = key;
        m_ascending = true;
    } else if (m_ascending) {
        m_ascending = false;
    } else {
        m_sortKey = SortKey::QueueOrder;
        m_ascending = true;
    }
    if (m_sortKey == SortKey::QueueOrder)
        sort(-1);
    else {
        sort(-1);
        sort(0, m_ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    Q_EMIT arrangementChanged();
}

QUuid QueueView::idAt(int row) const
{
    if (row < 0 || row >= rowCount())
        return {};
    return m_queue.items().at(mapToSource(index(row, 0)).row()).id;
}

void QueueView::setAnchor(int row)
{
    m_anchor = idAt(row);
    m_rangeTicked.clear();
}

void QueueView::extendSelection(int row, int current)
{
    if (row < 0 || row >= rowCount())
        return;
    const auto sourceRow = m_queue.rowOf(m_anchor);
    int from = sourceRow ? mapFromSource(m_queue.index(*sourceRow)).row() : -1;
    if (from < 0) {
        from = current >= 0 && current < rowCount() ? current : row;
        setAnchor(from);
    }
    QList<QUuid> tick;
    tick.reserve(std::abs(row - from) + 1);
    for (int at = std::min(from, row); at <= std::max(from, row); ++at)
        tick.append(idAt(at));
    const QSet<QUuid> range(tick.cbegin(), tick.cend());
    QList<QUuid> untick;
    for (const QUuid &id : std::as_const(m_rangeTicked))
        if (!range.contains(id))
            untick.append(id);
    QSet<QUuid> ticked;
    for (const QUuid &id : std::as_const(tick))
        if (m_rangeTicked.contains(id) || !m_queue.selected().contains(id))
            ticked.insert(id);
    m_extending = true;
    m_queue.setSelected(tick, untick);
    m_extending = false;
    m_rangeTicked = std::move(ticked);
}

bool QueueView::filterAcceptsRow(int sourceRow, const QModelIndex &) const
{
    const AudioFileItem &item = m_queue.items().at(sourceRow);
    switch (m_filter) {
    case Filter::All:
        return true;
    case Filter::Failed:
        return item.status.kind() == ProcessingStatus::Kind::Failed;
    case Filter::NotMeasured:
        return !item.measurement;
    }
    return true;
}

bool QueueView::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const AudioFileItem &a = m_queue.items().at(left.row());
    const AudioFileItem &b = m_queue.items().at(right.row());
    const auto byQueue = [&] { return left.row() < right.row(); };
    switch (m_sortKey) {
    case SortKey::QueueOrder:
        return byQueue();
    case SortKey::Name: {
        const int order = collator().compare(
            QStringView(a.relativePath).mid(a.relativePath.lastIndexOf(u'/') + 1),
            QStringView(b.relativePath).mid(b.relativePath.lastIndexOf(u'/') + 1));
        return order != 0 ? order < 0 : byQueue();
    }
    case SortKey::Folder: {
        const int order = collator().compare(a.folder(), b.folder());
        return order != 0 ? order < 0 : byQueue();
    }
    case SortKey::Loudness: {
        // Unmeasured files last either way round would need two orders; they
        // sort as the quietest, which keeps them together.
        const double x = a.measuredLUFS.value_or(-INFINITY);
        const double y = b.measuredLUFS.value_or(-INFINITY);
        return x != y ? x < y : byQueue();
    }
    case SortKey::Status: {
        const int x = statusRank(a.status.kind());
        const int y = statusRank(b.status.kind());
        return x != y ? x < y : byQueue();
    }
    }
    return byQueue();
}
