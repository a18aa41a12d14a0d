// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A square check box: outlined when clear, a gold square with a check when set.
AbstractButton {
    id: root

    property string tip

    checkable: true
    hoverEnabled: true
    implicitWidth: 18
    implicitHeight: 18
    Accessible.role: Accessible.CheckBox
    Accessible.name: tip
    Accessible.checked: checked

    contentItem: Item {
        TBIcon {
            anchors.centerIn: parent
            visible: !root.checked
            name: "square"
            color: root.hovered ? TBTheme.text : TBTheme.muted
            size: 18
        }
        TBIcon {
            anchors.centerIn: parent
            visible: root.checked
            name: "squareFilled"
            color: TBTheme.gold
            size: 18
        }
        TBIcon {
            anchors.centerIn: parent
            visible: root.checked
            name: "checkmark"
            color: TBTheme.bg
            size: 12
        }
    }

    background: Item {
        TBFocusRing {
            shown: root.visualFocus
            cornerRadius: 3
        }
    }

    TBToolTip {
        visible: root.hovered && root.tip.length > 0
        text: root.tip
    }
}
