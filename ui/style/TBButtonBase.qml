// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic
import QtQuick.Layouts

// What the TB buttons share: an optional icon, the label, a tooltip (with the
// keyboard shortcut when there is one), and the accessible name.
Button {
    id: root

    property string iconName
    property color foreground: TBTheme.text
    property string tip
    property string shortcutText
    readonly property string toolTipText: shortcutText.length > 0 ? (tip.length > 0 ? tip : text) + " (" + shortcutText + ")" : tip

    padding: 8
    leftPadding: 14
    rightPadding: 14
    font.pixelSize: 13
    hoverEnabled: true
    Accessible.name: text.length > 0 ? text : tip

    contentItem: RowLayout {
        spacing: 6
        TBIcon {
            visible: root.iconName.length > 0
            name: root.iconName
            color: root.foreground
            size: 15
        }
        Label {
            visible: root.text.length > 0
            text: root.text
            font: root.font
            color: root.foreground
            elide: Text.ElideRight
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
        }
    }

    TBToolTip {
        visible: root.hovered && root.toolTipText.length > 0
        text: root.toolTipText
    }
}
