// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import Tonbrook.Ui

// A queue item's status: its word, its symbol and its colour.
TBBadge {
    id: root

    property string status: "ready"

    text: Strings.tr.statusName(status)
    spinning: status === "analyzing" || status === "processing"
    iconName: ({
            "ready": "circle",
            "done": "checkmark",
            "warning": "warning",
            "failed": "xmark"
        })[status] ?? ""
    tint: ({
            "ready": TBTheme.muted,
            "analyzing": TBTheme.info,
            "processing": TBTheme.gold,
            "done": TBTheme.success,
            "warning": TBTheme.warning,
            "failed": TBTheme.error,
            "cancelled": TBTheme.muted
        })[status] ?? TBTheme.muted
}
