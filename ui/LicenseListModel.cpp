// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LicenseListModel.h"

#include "engine/BuildInfo.h"
#include "engine/ResourceLocator.h"
#include "localization/L.h"

#include <QFile>

#include <lame/lame.h>

std::optional<QString> LicenseInfo::fullText(const ResourceLocator &resources) const
{
    if (!licenseFileName)
        return std::nullopt;
    const auto path = resources.licenseTextPath(*licenseFileName + QStringLiteral(".txt"));
    if (!path)
        return std::nullopt;
    QFile file(*path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return QString::fromUtf8(file.readAll());
}

LicenseListModel::LicenseListModel(ResourceLocator resources, QObject *parent)
    : QAbstractListModel(parent)
    , m_resources(std::move(resources))
{
    retranslate();
}

void LicenseListModel::retranslate()
{
    beginResetModel();
    m_entries = {
        {QUuid::createUuid(), QStringLiteral("FFmpeg"),
         L::text(L::FfmpegBuildDescription, QLatin1StringView(BuildInfo::ffmpegVersion)),
         L::text(L::FfmpegSummary), QStringLiteral("FFmpeg-LGPLv3")},
        {QUuid::createUuid(), QStringLiteral("LAME"), QString::fromLatin1(get_lame_short_version()),
         L::text(L::LameSummary), QStringLiteral("LAME-LGPL")},
        {QUuid::createUuid(), QStringLiteral("Tonbrook"),
         QStringLiteral("%1 (%2)").arg(QLatin1StringView(BuildInfo::version),
                                       QLatin1StringView(BuildInfo::buildNumber)),
         L::text(L::Copyright), std::nullopt},
    };
    endResetModel();
}

int LicenseListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant LicenseListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const LicenseInfo &entry = m_entries.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.name;
    case VersionRole:
        return entry.version;
    case SummaryRole:
        return entry.summary;
    case HasTextRole:
        return entry.fullText(m_resources).has_value();
    case FullTextRole:
        return entry.fullText(m_resources).value_or(QString());
    default:
        return {};
    }
}

QHash<int, QByteArray> LicenseListModel::roleNames() const
{
    return {{NameRole, "name"},
            {VersionRole, "version"},
            {SummaryRole, "summary"},
            {HasTextRole, "hasText"},
            {FullTextRole, "fullText"}};
}
