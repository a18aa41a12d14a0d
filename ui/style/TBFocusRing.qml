// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// Where keyboard focus is: a ring just outside its parent, so that it shows on
// gold and dark controls alike. Hidden while the mouse is in use.
Rectangle {
    property bool shown: false
    property real cornerRadius: 7

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -3
    radius: cornerRadius + 3
    color: "transparent"
    border.width: 2
    border.color: TBTheme.focus
    visible: shown
}
