// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A choice from a list of texts.
ComboBox {
    id: root

    font.pixelSize: 12
    hoverEnabled: true
    Accessible.name: displayText

    contentItem: Label {
        leftPadding: 8
        rightPadding: 26
        text: root.displayText
        font: root.font
        color: root.enabled ? TBTheme.text : TBTheme.disabled
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: TBIcon {
        x: root.width - width - 10
        y: (root.height - height) / 2
        name: "chevronDown"
        color: TBTheme.muted
        size: 14
    }
    background: Rectangle {
        implicitHeight: 32
        implicitWidth: 200
        radius: 7
        color: TBTheme.btnBg
        border.width: 1
        border.color: root.hovered ? TBTheme.goldBorder : TBTheme.btnBorder
        TBFocusRing {
            shown: root.visualFocus
        }
    }
    delegate: ItemDelegate {
        id: option

        required property int index
        required property var modelData

        width: root.width
        text: modelData
        highlighted: root.highlightedIndex === index
        contentItem: Label {
            text: option.text
            font: root.font
            color: option.index === root.currentIndex ? TBTheme.gold : TBTheme.text
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            color: option.highlighted ? TBTheme.rowHover : "transparent"
        }
    }
    popup: Popup {
        y: root.height + 2
        width: root.width
        implicitHeight: contentItem.implicitHeight + 8
        padding: 4
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            // qmllint disable type
            model: root.popup.visible ? root.delegateModel : null
            // qmllint enable type
            currentIndex: root.highlightedIndex
        }
        background: Rectangle {
            color: TBTheme.panel2
            radius: 7
            border.color: TBTheme.btnBorder
        }
    }
}
