// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Tonbrook.Style

// A column heading that sorts the queue when clicked; an arrow shows the order.
TBSectionLabel {
    id: root

    property bool sorted: false
    property bool ascending: true

    signal clicked

    text: ""
    color: sorted ? TBTheme.text : hover.hovered ? TBTheme.text : TBTheme.muted
    rightPadding: 12
    elide: Text.ElideRight
    Accessible.role: Accessible.ColumnHeader
    Accessible.onPressAction: root.clicked()

    Text {
        visible: root.sorted
        text: root.ascending ? "\u25b4" : "\u25be"
        color: TBTheme.gold
        font.pixelSize: 11
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
    }
    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        onTapped: root.clicked()
    }
}
