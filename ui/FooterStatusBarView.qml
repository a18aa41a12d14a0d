// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui

// The status bar: how many files, and where they go.
Rectangle {
    id: root

    property string leadingText
    property string trailingText

    implicitHeight: 28
    color: TBTheme.panel

    Rectangle {
        anchors.top: parent.top
        width: parent.width
        height: 1
        color: TBTheme.border
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        spacing: 16
        Label {
            objectName: "footerLeading"
            text: root.leadingText
            color: TBTheme.muted
            font.pixelSize: 11
        }
        Item {
            Layout.fillWidth: true
        }
        Label {
            objectName: "footerTrailing"
            text: root.trailingText
            color: TBTheme.muted
            font.pixelSize: 11
            elide: Text.ElideMiddle
            Layout.maximumWidth: root.width * 0.7
        }
    }
}
