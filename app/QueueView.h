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

Q_SIGNALS:
    void arrangementChanged();
    void countChanged();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    QueueModel &m_queue;
    SortKey m_sortKey = SortKey::QueueOrder;
    bool m_ascending = true;
    Filter m_filter = Filter::All;
};
