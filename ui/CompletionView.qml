// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// After a run: what happened, and what next.
Item {
    id: root

    property completionSummary summary
    property bool canRevealOutputFolder: false
    property string reportError
    // The run's failed files, each {fileName, message}.
    property var failures: []

    signal backToQueue
    signal retryFailed
    signal revealOutputFolder
    signal exportReport
    signal processNewFiles

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 18

        TBSectionLabel {
            text: L.tr.text(L.ProcessingComplete)
            Layout.alignment: Qt.AlignHCenter
        }
        ColumnLayout {
            spacing: 6
            Layout.alignment: Qt.AlignHCenter
            Label {
                objectName: "filesProcessed"
                text: L.tr.text(L.FilesProcessed, root.summary.totalProcessed)
                font.pixelSize: 22
                font.weight: Font.DemiBold
                font.family: "monospace"
                color: TBTheme.text
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                objectName: "reachedLine"
                text: root.summary.normalized ? L.tr.text(L.ReachedTarget, root.summary.reachedTarget) : L.tr.text(L.Converted, root.summary.reachedTarget)
                font.pixelSize: 12
                color: TBTheme.muted
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                objectName: "peakLimitedLine"
                visible: root.summary.peakLimited > 0
                text: L.tr.text(L.PeakLimited, root.summary.peakLimited)
                font.pixelSize: 12
                color: TBTheme.warning
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                objectName: "failedLine"
                visible: root.summary.failed > 0
                text: L.tr.text(L.FailedCount, root.summary.failed)
                font.pixelSize: 12
                color: TBTheme.error
                Layout.alignment: Qt.AlignHCenter
            }
        }
        ListView {
            id: failureList
            objectName: "failureList"
            visible: count > 0
            model: root.failures
            clip: true
            spacing: 6
            boundsBehavior: Flickable.StopAtBounds
            Layout.preferredWidth: 560
            Layout.preferredHeight: Math.min(contentHeight, 180)
            Layout.alignment: Qt.AlignHCenter
            ScrollBar.vertical: ScrollBar {
            }
            delegate: ColumnLayout {
                id: failure
                required property var modelData
                width: failureList.width - 12
                spacing: 1
                Label {
                    text: failure.modelData.fileName
                    color: TBTheme.text
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    elide: Text.ElideMiddle
                    Layout.fillWidth: true
                }
                Label {
                    text: failure.modelData.message
                    color: TBTheme.error
                    font.pixelSize: 12
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
        }
        RowLayout {
            spacing: 10
            Layout.alignment: Qt.AlignHCenter
            TBOutlinedButton {
                objectName: "backToQueueButton"
                text: L.tr.text(L.BackToQueue)
                onClicked: root.backToQueue()
            }
            TBOutlinedButton {
                objectName: "retryFailedButton"
                visible: root.summary.failed > 0
                text: L.tr.text(L.RetryFailed)
                onClicked: root.retryFailed()
            }
        }
        RowLayout {
            spacing: 10
            Layout.alignment: Qt.AlignHCenter
            TBOutlinedButton {
                objectName: "revealButton"
                iconName: "folder"
                text: L.tr.text(L.RevealOutputFolder)
                enabled: root.canRevealOutputFolder
                onClicked: root.revealOutputFolder()
            }
            TBOutlinedButton {
                objectName: "exportButton"
                iconName: "download"
                text: L.tr.text(L.ExportReport)
                onClicked: root.exportReport()
            }
            TBPrimaryButton {
                objectName: "newFilesButton"
                text: L.tr.text(L.ProcessNewFiles)
                onClicked: root.processNewFiles()
            }
        }
        Label {
            objectName: "reportError"
            visible: root.reportError.length > 0
            text: root.reportError
            color: TBTheme.error
            font.pixelSize: 12
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Layout.maximumWidth: 520
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
