// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// An ordinary action: outlined, on the button colour.
TBButtonBase {
    id: root

    foreground: enabled ? TBTheme.text : TBTheme.disabled
    background: Rectangle {
        implicitHeight: 32
        radius: 7
        color: root.down ? TBTheme.panel2 : TBTheme.btnBg
        border.width: 1
        border.color: root.hovered && root.enabled ? TBTheme.goldBorder : TBTheme.btnBorder
        TBFocusRing {
            shown: root.visualFocus
        }
    }
}
