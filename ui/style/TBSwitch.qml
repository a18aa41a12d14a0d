// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// An on/off setting with its label.
Switch {
    id: root

    font.pixelSize: 13
    spacing: 10
    Accessible.name: text

    indicator: Rectangle {
        implicitWidth: 34
        implicitHeight: 18
        x: root.leftPadding
        y: (root.height - height) / 2
        radius: 9
        color: root.checked ? TBTheme.gold : TBTheme.btnBg
        border.width: 1
        border.color: root.checked ? TBTheme.gold : TBTheme.btnBorder
        Rectangle {
            width: 14
            height: 14
            radius: 7
            y: 2
            x: root.checked ? parent.width - width - 2 : 2
            color: root.checked ? TBTheme.bg : TBTheme.muted
            Behavior on x  {
                NumberAnimation {
                    duration: 120
                }
            }
        }
    }
    background: Item {
        TBFocusRing {
            shown: root.visualFocus
            cornerRadius: 6
        }
    }
    contentItem: Label {
        text: root.text
        font: root.font
        color: root.enabled ? TBTheme.text : TBTheme.disabled
        leftPadding: root.indicator.width + root.spacing
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
}
