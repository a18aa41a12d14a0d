// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A row of mutually exclusive choices.
Rectangle {
    id: root

    // The choices' texts, in order.
    property var model: []
    property int currentIndex: 0
    property string accessibleName

    signal activated(int index)

    implicitHeight: 30
    implicitWidth: segments.implicitWidth + 4
    radius: 7
    color: TBTheme.btnBg
    border.width: 1
    border.color: TBTheme.btnBorder
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.PageTabList
    Accessible.name: accessibleName
    // One Tab stop; the arrows move the choice, as in a group of radio buttons.
    activeFocusOnTab: true
    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)

    function step(by) {
        const index = currentIndex + by;
        if (index >= 0 && index < model.length)
            activated(index);
    }

    TBFocusRing {
        shown: root.activeFocus
    }

    Row {
        id: segments
        anchors.fill: parent
        anchors.margins: 2
        spacing: 2

        Repeater {
            model: root.model
            delegate: AbstractButton {
                id: segment

                required property int index
                required property string modelData

                width: (segments.width - (root.model.length - 1) * segments.spacing) / root.model.length
                height: segments.height
                hoverEnabled: true
                focusPolicy: Qt.NoFocus
                checkable: true
                checked: index === root.currentIndex
                Accessible.role: Accessible.PageTab
                Accessible.name: modelData
                onClicked: root.activated(index)

                contentItem: Label {
                    text: segment.modelData
                    font.pixelSize: 12
                    font.weight: segment.checked ? Font.DemiBold : Font.Normal
                    color: segment.checked ? TBTheme.bg : segment.hovered ? TBTheme.text : TBTheme.muted
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                background: Rectangle {
                    radius: 5
                    color: segment.checked ? TBTheme.gold : "transparent"
                }
            }
        }
    }
}
