// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// The queue, one row per file; only the rows on screen exist.
TBCard {
    id: root

    property var model
    property bool allSelected: false
    property int count: 0
    property string selectAllShortcut

    signal toggleSelect(string id)
    signal toggleSelectAll
    signal remove(string id)
    signal showDetails(string id)

    padding: 0

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            color: TBTheme.headerBg
            radius: 10
            implicitHeight: 34
            Layout.fillWidth: true
            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 12
                spacing: 10
                TBCheckBox {
                    objectName: "selectAllCheck"
                    checked: root.allSelected
                    enabled: root.count > 0
                    tip: L.tr.text(L.SelectAll) + (root.selectAllShortcut.length > 0 ? " (" + root.selectAllShortcut + ")" : "")
                    onClicked: root.toggleSelectAll()
                    Layout.preferredWidth: 18
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnFile)
                    Layout.fillWidth: true
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnSource)
                    Layout.preferredWidth: 66
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnLoudness)
                    Layout.preferredWidth: 134
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnGain)
                    Layout.preferredWidth: 58
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnOutput)
                    Layout.preferredWidth: 60
                }
                TBSectionLabel {
                    text: L.tr.text(L.ColumnStatus)
                    Layout.preferredWidth: 96
                }
                Item {
                    Layout.preferredWidth: 20
                }
            }
        }
        Rectangle {
            color: TBTheme.border
            implicitHeight: 1
            Layout.fillWidth: true
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            ListView {
                id: list
                objectName: "queueList"
                anchors.fill: parent
                clip: true
                model: root.model
                reuseItems: true
                boundsBehavior: Flickable.StopAtBounds
                ScrollBar.vertical: ScrollBar {
                }
                delegate: QueueRowView {
                    width: list.width
                    onToggleSelect: id => root.toggleSelect(id)
                    onRemove: id => root.remove(id)
                    onShowDetails: id => root.showDetails(id)
                }
            }
            Label {
                objectName: "emptyQueue"
                anchors.centerIn: parent
                visible: root.count === 0
                text: L.tr.text(L.NoFilesInQueue)
                color: TBTheme.muted
                font.pixelSize: 13
            }
        }
    }
}
