// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic
import QtQuick.Layouts

// A menu entry with room for a check mark.
MenuItem {
    id: root

    property bool current: false

    font.pixelSize: 13
    Accessible.name: text
    Accessible.checked: current

    contentItem: RowLayout {
        spacing: 8
        TBIcon {
            name: "checkmark"
            color: TBTheme.gold
            size: 14
            opacity: root.current ? 1 : 0
        }
        Label {
            text: root.text
            font: root.font
            color: TBTheme.text
            Layout.fillWidth: true
        }
    }
    background: Rectangle {
        implicitHeight: 30
        radius: 5
        color: root.highlighted ? TBTheme.rowHover : "transparent"
    }
}
