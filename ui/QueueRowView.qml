// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// One queued file: check box, name, source format, loudness, output format,
// status, remove.
Rectangle {
    id: root

    required property int index
    required property string itemId
    required property string fileName
    required property string relativePath
    required property string folder
    // The keyboard's current row in a focused list: outlined.
    property bool isCurrent: false
    // The name's part of the room it shares with the folder.
    property real nameShare: 0.6
    // The fixed columns' widths, from the heading.
    property real sourceWidth: 76
    property real loudnessWidth: 130
    property real gainWidth: 84
    property real outputWidth: 60
    property real statusWidth: 100
    required property string sourceLabel
    required property string loudnessText
    required property int loudnessState
    required property string gainText
    required property string outputLabel
    required property int status
    // How far the file being written has come, 0 to 1; -1 when not being written.
    required property real progress
    required property string statusMessage
    required property string errorDetails
    required property bool selected

    signal toggleSelect(string id)
    // Shift+click anywhere on the row: a range from the anchor to it.
    signal extendSelection
    signal remove(string id)
    signal showDetails(string id)

    implicitHeight: 30
    color: hover.hovered ? TBTheme.rowHover : index % 2 === 1 ? TBTheme.rowAlt : "transparent"
    Accessible.role: Accessible.ListItem
    Accessible.name: fileName
    Accessible.checkable: true
    Accessible.checked: selected

    HoverHandler {
        id: hover
    }
    // Above the row's controls, taking only clicks with Shift.
    Item {
        anchors.fill: parent
        z: 3
        TapHandler {
            acceptedModifiers: Qt.ShiftModifier
            gesturePolicy: TapHandler.WithinBounds
            onTapped: root.extendSelection()
        }
    }
    Rectangle {
        anchors.fill: parent
        visible: root.isCurrent
        color: "transparent"
        border.width: 2
        border.color: TBTheme.gold
        radius: 4
        z: 2
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        spacing: 10

        TBCheckBox {
            objectName: "rowCheck"
            checked: root.selected
            tip: root.fileName
            // The list takes the keys (Space ticks); Tab does not stop on each row.
            focusPolicy: Qt.NoFocus
            onClicked: root.toggleSelect(root.itemId)
            Layout.preferredWidth: 18
        }
        Label {
            objectName: "rowName"
            text: root.fileName
            color: TBTheme.text
            font.pixelSize: 13
            elide: Text.ElideMiddle
            Layout.fillWidth: true
            Layout.preferredWidth: root.nameShare
            TapHandler {
                onTapped: root.showDetails(root.itemId)
            }
            HoverHandler {
                id: nameHover
                cursorShape: Qt.PointingHandCursor
            }
            TBToolTip {
                visible: nameHover.hovered && root.relativePath !== root.fileName
                text: root.relativePath
            }
        }
        Label {
            objectName: "rowFolder"
            text: root.folder
            color: TBTheme.muted
            font.pixelSize: 12
            elide: Text.ElideMiddle
            Layout.fillWidth: true
            Layout.preferredWidth: 1 - root.nameShare
        }
        Label {
            text: root.sourceLabel
            color: TBTheme.muted
            font.pixelSize: 12
            Layout.preferredWidth: root.sourceWidth
        }
        Label {
            objectName: "rowLoudness"
            text: root.loudnessText
            color: root.loudnessState === QueueModel.Unreadable ? TBTheme.error : root.loudnessState === QueueModel.Measured ? TBTheme.text : TBTheme.muted
            font.pixelSize: 12
            font.family: "monospace"
            font.italic: root.loudnessState === QueueModel.Silent
            // Right aligned in figures of one width: the decimal points line up.
            horizontalAlignment: Text.AlignRight
            Layout.preferredWidth: root.loudnessWidth
            HoverHandler {
                id: loudnessHover
            }
            TBToolTip {
                visible: loudnessHover.hovered && root.loudnessState !== QueueModel.Measured
                text: root.loudnessState === QueueModel.Silent ? L.tr.text(L.LoudnessSilentTip) : root.loudnessState === QueueModel.Unreadable ? L.tr.text(L.LoudnessUnreadableTip) : L.tr.text(L.LoudnessNotMeasured)
            }
        }
        Label {
            objectName: "rowGain"
            text: root.gainText
            color: TBTheme.text
            font.pixelSize: 12
            font.family: "monospace"
            horizontalAlignment: Text.AlignRight
            Layout.preferredWidth: root.gainWidth
        }
        Label {
            text: root.outputLabel
            color: TBTheme.muted
            font.pixelSize: 12
            Layout.preferredWidth: root.outputWidth
        }
        Item {
            implicitHeight: badge.implicitHeight
            Layout.preferredWidth: root.statusWidth
            StatusBadge {
                id: badge
                status: root.status
                anchors.verticalCenter: parent.verticalCenter
                TapHandler {
                    onTapped: root.showDetails(root.itemId)
                }
            }
            Rectangle {
                objectName: "rowProgress"
                visible: root.progress >= 0
                anchors.left: badge.left
                anchors.top: badge.bottom
                anchors.topMargin: 1
                width: badge.width
                height: 2
                radius: 1
                color: TBTheme.btnBg
                Rectangle {
                    width: parent.width * Math.max(0, root.progress)
                    height: parent.height
                    radius: 1
                    color: TBTheme.gold
                }
            }
        }
        TBToolbarButton {
            objectName: "rowRemove"
            iconName: "xmark"
            tip: L.tr.text(L.RemoveFromQueue)
            focusPolicy: Qt.NoFocus
            padding: 2
            leftPadding: 2
            rightPadding: 2
            onClicked: root.remove(root.itemId)
            Layout.preferredWidth: 20
            Layout.preferredHeight: 20
        }
    }
}
