// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A one-line entry.
TextField {
    id: root

    property bool invalid: false

    font.pixelSize: 13
    color: enabled ? TBTheme.text : TBTheme.disabled
    placeholderTextColor: TBTheme.muted
    selectionColor: TBTheme.goldPressed
    selectedTextColor: TBTheme.bg
    leftPadding: 8
    rightPadding: 8
    background: Rectangle {
        implicitHeight: 30
        implicitWidth: 120
        radius: 6
        color: TBTheme.bg
        border.width: 1
        border.color: root.invalid ? TBTheme.error : root.activeFocus ? TBTheme.goldBorder : TBTheme.btnBorder
        TBFocusRing {
            shown: root.activeFocus
            cornerRadius: 6
        }
    }
}
