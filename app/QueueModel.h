// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioFileItem.h"

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

// The queue itself, and the list the window shows. Items are values found by
// id; changing one item changes one row, so a queue of 100,000 stays cheap to
// keep on screen. The controller is the only writer.
class QueueModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the controller's queue")

public:
    enum Role
    {
        IdRole = Qt::UserRole + 1,
        FileNameRole,
        RelativePathRole,
        FolderRole, // the folder below the dropped one, "" for a file added on its own
        SourceLabelRole,
        LoudnessTextRole,
        LoudnessStateRole, // LoudnessState
        GainTextRole,      // "+5.5 dB" once written, else empty
        ProgressRole,      // how far a file being written has come, 0 to 1; -1 when not known
        OutputLabelRole,
        StatusRole,        // ProcessingStatus::Kind
        StatusTextRole,    // the badge's word in the interface language
        StatusMessageRole, // what a warning or failure says, else empty
        ErrorDetailsRole,
        SelectedRole,
        BusyRole, // analysing or processing
    };

    // What the LOUDNESS cell can say of a file.
    enum class LoudnessState
    {
        NotMeasured,
        Measured,
        // Measured, but silent or too short to have a loudness.
        Silent,
        Unreadable,
    };
    Q_ENUM(LoudnessState)

    explicit QueueModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<AudioFileItem> &items() const { return m_items; }
    // The items still to be measured (AudioFileItem::needsMeasuring). Kept up
    // to date item by item, so a result arriving for one file of a long queue
    // costs the same as for a short one.
    int unmeasuredCount() const { return m_unmeasured; }
    int folderCount() const { return static_cast<int>(m_folders.size()); }
    const AudioFileItem *find(const QUuid &id) const;
    std::optional<int> rowOf(const QUuid &id) const;

    void append(const QList<AudioFileItem> &items);
    // Changes the item with this id in place; false when there is none.
    bool update(const QUuid &id, const std::function<void(AudioFileItem &)> &change);
    // How far a file being written has come (absent: not being written, or not known).
    void setProgress(const QUuid &id, std::optional<double> fraction);
    // Gives these items one status, with one change signal for the rows they
    // span: an import of 100,000 files is queued for measuring in one step.
    void setStatus(const QList<QUuid> &ids, const ProcessingStatus &status);
    // Removes every item whose id is in the set, keeping the others' order.
    void remove(const QSet<QUuid> &ids);
    void clear();

    // The ticked items: only ever queued ones, dropped with their items.
    const QSet<QUuid> &selected() const { return m_selected; }
    bool allSelected() const { return !m_items.isEmpty() && m_selected.size() == m_items.size(); }
    // Ticks or unticks a queued item; false for an id not in the queue.
    bool toggleSelected(const QUuid &id);
    // Ticks every item, or none when all are ticked already.
    void toggleSelectAll();
    // Ticks and unticks these items with one change signal for the rows they
    // span, so a range of 100,000 rows costs one step; unknown ids are ignored.
    void setSelected(const QList<QUuid> &tick, const QList<QUuid> &untick);
    // The ticked ids in queue order, or every id when none is ticked.
    QList<QUuid> effectiveTargets() const;

    // What rows show beside the items themselves.
    void setOutputMode(OutputFormatMode mode);
    // Texts are read again in the interface language of the moment.
    void retranslate();

    static LoudnessState loudnessStateOf(const AudioFileItem &item);

Q_SIGNALS:
    // Ticks changed through one of the methods above (removals say so themselves).
    void selectionChanged();

private:
    void reindex();
    void count(const AudioFileItem &item, int sign);
    void everyRowChanged(const QList<int> &roles);

    QList<AudioFileItem> m_items;
    QHash<QUuid, int> m_rows;
    int m_unmeasured = 0;
    QHash<QString, int> m_folders; // items per folder
    QHash<QUuid, double> m_progress;
    QSet<QUuid> m_selected;
    OutputFormatMode m_outputMode = OutputFormatMode::KeepOriginal;
};
