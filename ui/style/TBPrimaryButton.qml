// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// The one main action of a screen: gold.
TBButtonBase {
    id: root

    foreground: enabled ? TBTheme.bg : TBTheme.muted
    font.weight: Font.DemiBold
    background: Rectangle {
        implicitHeight: 32
        radius: 7
        color: !root.enabled ? TBTheme.btnBg : root.down ? TBTheme.goldPressed : TBTheme.gold
        border.width: root.enabled ? 0 : 1
        border.color: TBTheme.btnBorder
        TBFocusRing {
            shown: root.visualFocus
        }
    }
}
