// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/QueueModel.h"

#include <QSortFilterProxyModel>
#include <QtQml/qqmlregistration.h>

// The queue as the window lists it: sorted by a column the user picked and
// narrowed to the files that need attention. The queue itself keeps its order
// (runs follow it); selection and actions go by item id, so they do not care
// what is shown.
class QueueView : public QSortFilterProxyModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the controller's view of its queue")
    Q_PROPERTY(SortKey sortKey READ sortKey NOTIFY arrangementChanged)
    Q_PROPERTY(bool ascending READ ascending NOTIFY arrangementChanged)
    Q_PROPERTY(Filter filter READ filter WRITE setFilter NOTIFY arrangementChanged)
    Q_PROPERTY(int count READ rowCountShown NOTIFY countChanged)

public:
    enum class SortKey
    {
        QueueOrder,
        Name,
        Folder,
        Loudness,
        Status,
    };
    Q_ENUM(SortKey)

    enum class Filter
    {
        All,
        Failed,
        NotMeasured,
    };
    Q_ENUM(Filter)

    explicit QueueView(QueueModel &queue, QObject *parent = nullptr);

    SortKey sortKey() const { return m_sortKey; }
    bool ascending() const { return m_ascending; }
    Filter filter() const { return m_filter; }
    void setFilter(Filter filter);
    int rowCountShown() const { return rowCount(); }

    // Sorts by this key; the same key again turns the order round, and a
    // third time goes back to the queue's own order.
    Q_INVOKABLE void sortBy(QueueView::SortKey key);

    // Where a range ticked with Shift starts: the row last ticked or clicked
    // without Shift. It stays with its item as rows are sorted or filtered.
    Q_INVOKABLE void setAnchor(int row);
    // Ticks every row shown from the anchor to `row`, both included, in the
    // order shown. A range replaces the one before it from the same anchor, so
    // going back unticks what that range ticked; ticks made otherwise stay.
    // With no anchor shown (none set, or removed or filtered out since), the
    // range starts at `current`, which becomes the anchor.
    Q_INVOKABLE void extendSelection(int row, int current);

Q_SIGNALS:
    void arrangementChanged();
    void countChanged();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    QUuid idAt(int row) const;

    QueueModel &m_queue;
    SortKey m_sortKey = SortKey::QueueOrder;
    bool m_ascending = true;
    Filter m_filter = Filter::All;
    QUuid m_anchor;
    // What the last range from the anchor ticked that was not ticked before.
    QSet<QUuid> m_rangeTicked;
    bool m_extending = false;
};
