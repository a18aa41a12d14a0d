// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ResourceLocator.h"

#include <QAbstractListModel>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <optional>

// One shipped component with its licence.
struct LicenseInfo
{
    QUuid id;
    QString name;
    QString version;
    QString summary;
    // Base name of the licence text among the shipped files; absent when there is none.
    std::optional<QString> licenseFileName;

    // The licence text, when the file is there and can be read.
    std::optional<QString> fullText(const ResourceLocator &resources) const;
};

// FFmpeg, LAME and Tonbrook itself, for the licences sheet.
class LicenseListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")

public:
    enum Role
    {
        NameRole = Qt::UserRole + 1,
        VersionRole,
        SummaryRole,
        HasTextRole,
        FullTextRole,
    };

    explicit LicenseListModel(ResourceLocator resources, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<LicenseInfo> &entries() const { return m_entries; }

public Q_SLOTS:
    void retranslate();

private:
    ResourceLocator m_resources;
    QList<LicenseInfo> m_entries;
};
