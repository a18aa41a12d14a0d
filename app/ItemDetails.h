// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingStatus.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// What the item-detail sheet shows of one queued file.
struct ItemDetails
{
    Q_GADGET
    QML_VALUE_TYPE(itemDetails)
    Q_PROPERTY(bool found MEMBER found CONSTANT)
    Q_PROPERTY(QString fileName MEMBER fileName CONSTANT)
    Q_PROPERTY(ProcessingStatusKinds::Kind status MEMBER status CONSTANT)
    Q_PROPERTY(QString statusMessage MEMBER statusMessage CONSTANT)
    Q_PROPERTY(QString errorDetails MEMBER errorDetails CONSTANT)
    Q_PROPERTY(QString changes MEMBER changes CONSTANT)
    Q_PROPERTY(QString input MEMBER input CONSTANT)
    Q_PROPERTY(QString gain MEMBER gain CONSTANT)
    Q_PROPERTY(QString output MEMBER output CONSTANT)
    Q_PROPERTY(QString outputPath MEMBER outputPath CONSTANT)

public:
    bool found = false;
    QString fileName;
    ProcessingStatus::Kind status = ProcessingStatus::Kind::Ready;
    QString statusMessage;
    QString errorDetails;
    // What the encoder's limits changed, a sentence a line.
    QString changes;
    // The measurement of the source: loudness, true peak, range; empty when unmeasured.
    QString input;
    // Once written: the gain applied, the written file's loudness and true
    // peak, and where it is; empty otherwise.
    QString gain;
    QString output;
    QString outputPath;
};
