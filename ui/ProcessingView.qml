// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// While a run goes on: how far, which file, and the way out.
Item {
    id: root

    property int processedCount: 0
    property int totalCount: 0
    property string currentFileName
    property string cancelShortcut
    property string runTimeText
    // The files being written now, each {fileName, progress}.
    property var runningFiles: []
    property int failedSoFar: 0

    signal cancel

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 18
        width: 440

        TBSectionLabel {
            text: L.tr.text(L.ProcessingTitle)
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "ofFiles"
            text: L.tr.text(L.OfFiles, root.processedCount, root.totalCount)
            font.pixelSize: 22
            font.weight: Font.DemiBold
            color: TBTheme.text
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "currentFile"
            visible: root.currentFileName.length > 0 && root.runningFiles.length === 0
            text: root.currentFileName
            font.pixelSize: 12
            color: TBTheme.muted
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        Repeater {
            objectName: "runningFiles"
            model: root.runningFiles
            delegate: RowLayout {
                id: running
                required property var modelData
                spacing: 10
                Layout.fillWidth: true
                Label {
                    text: running.modelData.fileName
                    font.pixelSize: 12
                    color: TBTheme.muted
                    elide: Text.ElideMiddle
                    Layout.fillWidth: true
                }
                Rectangle {
                    implicitWidth: 120
                    implicitHeight: 4
                    radius: 2
                    color: TBTheme.btnBg
                    Rectangle {
                        width: parent.width * Math.max(0, running.modelData.progress)
                        height: parent.height
                        radius: 2
                        color: TBTheme.info
                    }
                }
                Label {
                    text: running.modelData.progress >= 0 ? Math.round(running.modelData.progress * 100) + "%" : ""
                    font.pixelSize: 11
                    font.family: "monospace"
                    color: TBTheme.muted
                    horizontalAlignment: Text.AlignRight
                    Layout.preferredWidth: 34
                }
            }
        }
        Label {
            objectName: "runTime"
            visible: root.runTimeText.length > 0
            text: root.runTimeText
            font.pixelSize: 12
            font.family: "monospace"
            color: TBTheme.muted
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "failedSoFar"
            visible: root.failedSoFar > 0
            text: L.tr.text(L.FailedCount, root.failedSoFar)
            font.pixelSize: 12
            color: TBTheme.error
            Layout.alignment: Qt.AlignHCenter
        }
        ProgressBar {
            id: bar
            objectName: "progress"
            from: 0
            to: 1
            // An empty run shows an empty bar, never a division by zero.
            value: root.totalCount > 0 ? root.processedCount / root.totalCount : 0
            implicitWidth: 420
            Layout.alignment: Qt.AlignHCenter
            background: Rectangle {
                implicitHeight: 10
                radius: 5
                color: TBTheme.btnBg
                border.width: 1
                border.color: TBTheme.border
            }
            contentItem: Item {
                implicitHeight: 10
                Rectangle {
                    width: bar.visualPosition * parent.width
                    height: parent.height
                    radius: 5
                    color: TBTheme.gold
                }
            }
        }
        TBOutlinedButton {
            objectName: "cancelButton"
            text: L.tr.text(L.Cancel)
            shortcutText: root.cancelShortcut
            onClicked: root.cancel()
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
