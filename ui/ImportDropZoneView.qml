// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// Where files arrive: dropped on it (or anywhere on the screen) or chosen with
// its buttons; once something is loaded it sums the queue up.
TBCard {
    id: root

    property int fileCount: 0
    property int folderCount: 0
    property string importNotice
    // The installation cannot run ffmpeg: said once, in place of any work.
    property string problem
    property bool canAnalyze: false
    property bool isAnalyzing: false
    property bool hasSelection: false
    property bool isDragOver: false
    property string addFilesShortcut
    property string addFolderShortcut
    property string removeShortcut

    signal selectFiles
    signal selectFolder
    signal analyze
    signal removeSelected
    signal clearQueue

    background: Rectangle {
        color: root.isDragOver ? TBTheme.goldSubtle : TBTheme.panel
        radius: 10
        border.width: root.isDragOver ? 2 : 1
        border.color: root.isDragOver ? TBTheme.gold : TBTheme.panelBorder
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        // Nothing loaded yet.
        ColumnLayout {
            visible: root.fileCount === 0
            spacing: 12
            Layout.fillWidth: true
            Layout.topMargin: 6
            Layout.bottomMargin: 6
            TBIcon {
                name: "waveform"
                color: root.isDragOver ? TBTheme.gold : TBTheme.muted
                size: 34
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                objectName: "dropHere"
                text: root.isDragOver ? L.tr.text(L.DropToAdd) : L.tr.text(L.DropHere)
                color: TBTheme.text
                font.pixelSize: 15
                horizontalAlignment: Text.AlignHCenter
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: 10
                Layout.alignment: Qt.AlignHCenter
                TBOutlinedButton {
                    objectName: "selectFilesButton"
                    iconName: "file"
                    text: L.tr.text(L.SelectFiles)
                    shortcutText: root.addFilesShortcut
                    onClicked: root.selectFiles()
                }
                TBOutlinedButton {
                    objectName: "selectFolderButton"
                    iconName: "folder"
                    text: L.tr.text(L.SelectFolder)
                    shortcutText: root.addFolderShortcut
                    onClicked: root.selectFolder()
                }
            }
            Label {
                objectName: "emptyImportNotice"
                visible: root.importNotice.length > 0
                text: root.importNotice
                color: TBTheme.warning
                font.pixelSize: 12
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }

        // Something loaded.
        RowLayout {
            visible: root.fileCount > 0
            spacing: 14
            Layout.fillWidth: true
            TBIcon {
                name: "waveform"
                color: TBTheme.gold
                size: 26
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true
                Label {
                    objectName: "loadedSummary"
                    text: L.tr.text(L.FilesLoaded, root.fileCount) + "  \u00b7  " + (root.folderCount > 0 ? L.tr.text(L.Folders, root.folderCount) : L.tr.text(L.IndividualFiles))
                    color: TBTheme.text
                    font.pixelSize: 15
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    objectName: "importNotice"
                    visible: root.importNotice.length > 0
                    text: root.importNotice
                    color: TBTheme.muted
                    font.pixelSize: 12
                }
                Label {
                    objectName: "installationProblem"
                    visible: root.problem.length > 0
                    text: root.problem
                    color: TBTheme.error
                    font.pixelSize: 12
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
            TBPrimaryButton {
                objectName: "analyzeButton"
                text: L.tr.text(L.AnalyzeLoudness)
                enabled: root.canAnalyze && !root.isAnalyzing
                onClicked: root.analyze()
            }
        }
        Flow {
            visible: root.fileCount > 0
            spacing: 8
            Layout.fillWidth: true
            TBOutlinedButton {
                objectName: "addFilesButton"
                iconName: "plus"
                text: L.tr.text(L.AddFiles)
                shortcutText: root.addFilesShortcut
                onClicked: root.selectFiles()
            }
            TBOutlinedButton {
                objectName: "addFolderButton"
                iconName: "folder"
                text: L.tr.text(L.AddFolder)
                shortcutText: root.addFolderShortcut
                onClicked: root.selectFolder()
            }
            TBOutlinedButton {
                objectName: "removeSelectedButton"
                text: L.tr.text(L.RemoveSelected)
                enabled: root.hasSelection
                shortcutText: root.removeShortcut
                onClicked: root.removeSelected()
            }
            TBOutlinedButton {
                objectName: "clearQueueButton"
                text: L.tr.text(L.ClearQueue)
                onClicked: root.clearQueue()
            }
        }
    }
}
