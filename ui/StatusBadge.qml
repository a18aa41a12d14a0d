// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import Tonbrook.App
import Tonbrook.Localization

// A queue item's status: its word, its symbol and its colour.
TBBadge {
    id: root

    property int status: ProcessingStatus.Ready

    text: L.tr.statusName(status)
    spinning: status === ProcessingStatus.Analyzing || status === ProcessingStatus.Processing
    iconName: {
        switch (status) {
        case ProcessingStatus.Ready:
        case ProcessingStatus.Queued:
            return "circle";
        case ProcessingStatus.Done:
            return "checkmark";
        case ProcessingStatus.Warning:
            return "warning";
        case ProcessingStatus.Failed:
            return "xmark";
        default:
            return "";
        }
    }
    tint: {
        switch (status) {
        case ProcessingStatus.Analyzing:
            return TBTheme.info;
        case ProcessingStatus.Processing:
            return TBTheme.gold;
        case ProcessingStatus.Done:
            return TBTheme.success;
        case ProcessingStatus.Warning:
            return TBTheme.warning;
        case ProcessingStatus.Failed:
            return TBTheme.error;
        default:
            return TBTheme.muted;
        }
    }
}
