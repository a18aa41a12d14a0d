// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/QueueModel.h"

#include "localization/L.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <algorithm>

namespace {

QString outputLabel(const AudioFileItem &item, OutputFormatMode mode)
{
    if (mode == OutputFormatMode::KeepOriginal)
        return SourceAudioFormats::rawValue(item.sourceFormat).toUpper();
    return OutputFormatModes::rawValue(mode).toUpper();
}

} // namespace

QueueModel::QueueModel(QObject *parent)
    : QAbstractListModel(parent)
{}

int QueueModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant QueueModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_items.size())
        return {};
    const AudioFileItem &item = m_items.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case FileNameRole:
        return fileNameOf(item.sourcePath);
    case IdRole:
        return item.id.toString(QUuid::WithoutBraces);
    case RelativePathRole:
        return item.relativePath;
    case FolderRole:
        return item.folder();
    case SourceLabelRole:
        return SourceAudioFormats::rawValue(item.sourceFormat).toUpper();
    case LoudnessTextRole:
        switch (loudnessStateOf(item)) {
        case LoudnessState::Measured:
            // Once written: what it was and what the written file measures.
            if (item.result && item.result->finalLUFS)
                return QString(
                    NumberFormat::fixed(*item.measuredLUFS, 1) + QStringLiteral(" \u2192 ") +
                    NumberFormat::fixed(*item.result->finalLUFS, 1) + QStringLiteral(" LUFS"));
            return QString(NumberFormat::fixed(*item.measuredLUFS, 1) + QStringLiteral(" LUFS"));
        case LoudnessState::Silent:
            return L::text(L::LoudnessSilent);
        case LoudnessState::Unreadable:
            return L::text(L::LoudnessUnreadable);
        case LoudnessState::NotMeasured:
            break;
        }
        return QStringLiteral("\u2014");
    case LoudnessStateRole:
        return QVariant::fromValue(loudnessStateOf(item));
    case ProgressRole:
        return m_progress.value(item.id, -1.0);
    case GainTextRole:
        return item.result && item.result->appliedGain
                   ? QString(NumberFormat::signedFixed(*item.result->appliedGain, 1) +
                             QStringLiteral(" dB"))
                   : QString();
    case OutputLabelRole:
        return outputLabel(item, m_outputMode);
    case StatusRole:
        return QVariant::fromValue(item.status.kind());
    case StatusTextRole:
        return L::statusName(item.status.kind());
    case StatusMessageRole:
        return item.status.message();
    case ErrorDetailsRole:
        return item.errorDetails.value_or(QString());
    case SelectedRole:
        return m_selected.contains(item.id);
    case BusyRole:
        return item.status.kind() == ProcessingStatus::Kind::Analyzing ||
               item.status.kind() == ProcessingStatus::Kind::Processing;
    default:
        return {};
    }
}

QHash<int, QByteArray> QueueModel::roleNames() const
{
    return {{IdRole, "itemId"},
            {FileNameRole, "fileName"},
            {RelativePathRole, "relativePath"},
            {FolderRole, "folder"},
            {SourceLabelRole, "sourceLabel"},
            {LoudnessTextRole, "loudnessText"},
            {LoudnessStateRole, "loudnessState"},
            {GainTextRole, "gainText"},
            {ProgressRole, "progress"},
            {OutputLabelRole, "outputLabel"},
            {StatusRole, "status"},
            {StatusTextRole, "statusText"},
            {StatusMessageRole, "statusMessage"},
            {ErrorDetailsRole, "errorDetails"},
            {SelectedRole, "selected"},
            {BusyRole, "busy"}};
}

const AudioFileItem *QueueModel::find(const QUuid &id) const
{
    const auto row = m_rows.constFind(id);
    return row == m_rows.cend() ? nullptr : &m_items.at(*row);
}

std::optional<int> QueueModel::rowOf(const QUuid &id) const
{
    const auto row = m_rows.constFind(id);
    return row == m_rows.cend() ? std::nullopt : std::optional(*row);
}

void QueueModel::append(const QList<AudioFileItem> &items)
{
    if (items.isEmpty())
        return;
    const int first = static_cast<int>(m_items.size());
    beginInsertRows({}, first, first + static_cast<int>(items.size()) - 1);
    m_items.append(items);
    m_rows.reserve(m_items.size());
    for (int row = first; row < m_items.size(); ++row) {
        m_rows.insert(m_items.at(row).id, row);
        count(m_items.at(row), 1);
    }
    endInsertRows();
}

bool QueueModel::update(const QUuid &id, const std::function<void(AudioFileItem &)> &change)
{
    const auto row = rowOf(id);
    if (!row)
        return false;
    AudioFileItem &item = m_items[*row];
    const bool wasUnmeasured = item.needsMeasuring();
    change(item);
    m_unmeasured += int(item.needsMeasuring()) - int(wasUnmeasured);
    const QModelIndex at = index(*row);
    Q_EMIT dataChanged(at, at);
    return true;
}

void QueueModel::remove(const QSet<QUuid> &ids)
{
    QList<int> rows;
    for (const QUuid &id : ids) {
        if (const auto row = rowOf(id))
            rows.append(*row);
    }
    if (rows.isEmpty())
        return;
    m_selected.subtract(ids);
    for (const QUuid &id : ids)
        m_progress.remove(id);
    if (rows.size() == 1) {
        beginRemoveRows({}, rows.first(), rows.first());
        count(m_items.at(rows.first()), -1);
        m_items.removeAt(rows.first());
        reindex();
        endRemoveRows();
        return;
    }
    // Many scattered rows: one reset is far cheaper for views than a signal per row.
    // They are counted out in the same pass, in row order: visiting them in the
    // set's order reads memory at random and took twice as long.
    beginResetModel();
    m_items.removeIf([&](const AudioFileItem &item) {
        if (!ids.contains(item.id))
            return false;
        count(item, -1);
        return true;
    });
    reindex();
    endResetModel();
}

void QueueModel::clear()
{
    if (m_items.isEmpty())
        return;
    beginResetModel();
    m_items.clear();
    m_rows.clear();
    m_unmeasured = 0;
    m_folders.clear();
    m_selected.clear();
    m_progress.clear();
    endResetModel();
}

bool QueueModel::toggleSelected(const QUuid &id)
{
    const auto row = rowOf(id);
    if (!row)
        return false;
    if (!m_selected.remove(id))
        m_selected.insert(id);
    const QModelIndex at = index(*row);
    Q_EMIT dataChanged(at, at, {SelectedRole});
    Q_EMIT selectionChanged();
    return true;
}

void QueueModel::toggleSelectAll()
{
    const bool all = allSelected();
    m_selected.clear();
    if (!all) {
        m_selected.reserve(m_items.size());
        for (const AudioFileItem &item : std::as_const(m_items))
            m_selected.insert(item.id);
    }
    everyRowChanged({SelectedRole});
    Q_EMIT selectionChanged();
}

void QueueModel::setSelected(const QList<QUuid> &tick, const QList<QUuid> &untick)
{
    int first = static_cast<int>(m_items.size());
    int last = -1;
    const auto change = [&](const QList<QUuid> &ids, bool selected) {
        for (const QUuid &id : ids) {
            const auto row = rowOf(id);
            if (!row || m_selected.contains(id) == selected)
                continue;
            if (selected)
                m_selected.insert(id);
            else
                m_selected.remove(id);
            first = std::min(first, *row);
            last = std::max(last, *row);
        }
    };
    change(untick, false);
    change(tick, true);
    if (last < first)
        return;
    Q_EMIT dataChanged(index(first), index(last), {SelectedRole});
    Q_EMIT selectionChanged();
}

QList<QUuid> QueueModel::effectiveTargets() const
{
    QList<QUuid> selected;
    QList<QUuid> all;
    all.reserve(m_items.size());
    for (const AudioFileItem &item : m_items) {
        all.append(item.id);
        if (m_selected.contains(item.id))
            selected.append(item.id);
    }
    return selected.isEmpty() ? all : selected;
}

void QueueModel::setOutputMode(OutputFormatMode mode)
{
    if (mode == m_outputMode)
        return;
    m_outputMode = mode;
    everyRowChanged({OutputLabelRole});
}

void QueueModel::retranslate()
{
    everyRowChanged({StatusTextRole, LoudnessTextRole});
}

QueueModel::LoudnessState QueueModel::loudnessStateOf(const AudioFileItem &item)
{
    if (item.measuredLUFS)
        return LoudnessState::Measured;
    // Digital silence and files shorter than one gating block measure -inf.
    if (item.measurement)
        return LoudnessState::Silent;
    return item.unreadable ? LoudnessState::Unreadable : LoudnessState::NotMeasured;
}

void QueueModel::reindex()
{
    m_rows.clear();
    m_rows.reserve(m_items.size());
    for (int row = 0; row < m_items.size(); ++row)
        m_rows.insert(m_items.at(row).id, row);
}

void QueueModel::count(const AudioFileItem &item, int sign)
{
    if (item.needsMeasuring())
        m_unmeasured += sign;
    const QString folder = item.folder();
    if (folder.isEmpty())
        return;
    if (sign > 0) {
        ++m_folders[folder];
    } else if (const auto entry = m_folders.find(folder);
               entry != m_folders.end() && --*entry == 0) {
        m_folders.erase(entry);
    }
}

void QueueModel::setProgress(const QUuid &id, std::optional<double> fraction)
{
    const auto row = rowOf(id);
    if (!row)
        return;
    if (fraction)
        m_progress.insert(id, *fraction);
    else if (!m_progress.remove(id))
        return;
    const QModelIndex at = index(*row);
    Q_EMIT dataChanged(at, at, {ProgressRole});
}

void QueueModel::setStatus(const QList<QUuid> &ids, const ProcessingStatus &status)
{
    int first = static_cast<int>(m_items.size());
    int last = -1;
    for (const QUuid &id : ids) {
        if (const auto row = rowOf(id)) {
            m_items[*row].status = status;
            first = std::min(first, *row);
            last = std::max(last, *row);
        }
    }
    if (last >= first)
        Q_EMIT dataChanged(index(first), index(last), {StatusRole, StatusTextRole, BusyRole});
}

void QueueModel::everyRowChanged(const QList<int> &roles)
{
    if (!m_items.isEmpty())
        Q_EMIT dataChanged(index(0), index(static_cast<int>(m_items.size()) - 1), roles);
}
