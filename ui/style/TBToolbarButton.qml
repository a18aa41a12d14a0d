// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// A quiet button for the toolbar and for toggles inside cards.
TBButtonBase {
    id: root

    foreground: !enabled ? TBTheme.disabled : hovered || checked ? TBTheme.text : TBTheme.muted
    padding: 6
    leftPadding: 8
    rightPadding: 8
    background: Rectangle {
        implicitHeight: 30
        radius: 6
        color: root.down || root.checked ? TBTheme.rowHover : root.hovered ? TBTheme.rowAlt : "transparent"
        TBFocusRing {
            shown: root.visualFocus
            cornerRadius: 6
        }
    }
}
