// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic
import QtQuick.Layouts

// A small pill: an optional icon (turning for running work) and a word, in a tint.
Rectangle {
    id: root

    property string text
    property string iconName
    property bool spinning: false
    property color tint: TBTheme.muted

    implicitWidth: row.implicitWidth + 16
    implicitHeight: 22
    radius: height / 2
    color: "transparent"
    border.width: 1
    border.color: root.tint
    opacity: 0.95
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    RowLayout {
        id: row
        anchors.centerIn: parent
        spacing: 5
        TBIcon {
            visible: root.iconName.length > 0 && !root.spinning
            name: root.iconName
            color: root.tint
            size: 12
        }
        TBSpinningIcon {
            visible: root.spinning
            color: root.tint
            size: 12
        }
        Label {
            text: root.text
            color: root.tint
            font.pixelSize: 11
            font.weight: Font.DemiBold
        }
    }
}
