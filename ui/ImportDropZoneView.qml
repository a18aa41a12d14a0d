// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// Where files arrive: dropped on it (or anywhere on the screen) or chosen with
// its buttons; once something is loaded it sums the queue up.
TBCard {
    id: root

    padding: fileCount > 0 ? 6 : 16
    leftPadding: fileCount > 0 ? 12 : 16

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
    // Folders are being scanned; so many files found so far.
    property bool isImporting: false
    property int importFoundCount: 0
    // Which files the list shows (QueueView.Filter).
    property int filter: QueueView.All

    function filterName(filter: int): string {
        if (filter === QueueView.Failed)
            return L.tr.text(L.ShowFailed);
        if (filter === QueueView.NotMeasured)
            return L.tr.text(L.ShowNotMeasured);
        return L.tr.text(L.ShowAll);
    }

    signal selectFiles
    signal selectFolder
    signal analyze
    signal removeSelected
    signal clearQueue
    signal filterChosen(int filter)
    signal cancelImport

    background: Rectangle {
        color: root.isDragOver ? TBTheme.goldSubtle : TBTheme.panel
        radius: 10
        border.width: root.isDragOver ? 2 : 1
        border.color: root.isDragOver ? TBTheme.gold : TBTheme.panelBorder
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        // A scan under way, on an empty queue or a loaded one.
        RowLayout {
            objectName: "importBusy"
            visible: root.isImporting
            spacing: 10
            Layout.alignment: Qt.AlignHCenter
            TBSpinningIcon {
                name: "arrows"
                color: TBTheme.info
                size: 14
            }
            Label {
                objectName: "importScanning"
                text: L.tr.text(L.ImportScanning, root.importFoundCount)
                color: TBTheme.text
                font.pixelSize: 12
            }
            TBOutlinedButton {
                objectName: "cancelImportButton"
                text: L.tr.text(L.Cancel)
                Layout.preferredHeight: 26
                onClicked: root.cancelImport()
            }
        }

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

        // Something loaded: one bar, the summary beside the actions where both fit.
        GridLayout {
            id: loaded
            visible: root.fileCount > 0
            columns: summaryRow.implicitWidth + actionsRow.implicitWidth + columnSpacing <= width ? 2 : 1
            columnSpacing: 14
            rowSpacing: 8
            Layout.fillWidth: true
            RowLayout {
                id: summaryRow
                spacing: 12
                Layout.fillWidth: true
                TBIcon {
                    name: "waveform"
                    color: TBTheme.gold
                    size: 24
                }
                ColumnLayout {
                    spacing: 1
                    Layout.fillWidth: true
                    RowLayout {
                        spacing: 10
                        Layout.fillWidth: true
                        Label {
                            objectName: "loadedSummary"
                            text: L.tr.text(L.FilesLoaded, root.fileCount) + "  \u00b7  " + (root.folderCount > 0 ? L.tr.text(L.Folders, root.folderCount) : L.tr.text(L.IndividualFiles))
                            color: TBTheme.text
                            font.pixelSize: 14
                            font.weight: Font.DemiBold
                            // Counts are never cut off: narrow, it wraps.
                            wrapMode: Text.WordWrap
                            Layout.preferredWidth: implicitWidth
                            Layout.minimumWidth: Math.min(implicitWidth, 160)
                        }
                        TBToolbarButton {
                            id: filterButton
                            objectName: "filterButton"
                            iconName: "chevronDown"
                            text: root.filterName(root.filter)
                            checked: root.filter !== QueueView.All
                            font.pixelSize: 12
                            padding: 2
                            onClicked: filterMenu.open()
                            TBMenu {
                                id: filterMenu
                                objectName: "filterMenu"
                                y: filterButton.height + 2
                                Repeater {
                                    model: [QueueView.All, QueueView.Failed, QueueView.NotMeasured]
                                    delegate: TBMenuItem {
                                        required property int modelData
                                        text: root.filterName(modelData)
                                        current: root.filter === modelData
                                        onTriggered: root.filterChosen(modelData)
                                    }
                                }
                            }
                        }
                        Item {
                            Layout.fillWidth: true
                        }
                    }
                    Label {
                        objectName: "importNotice"
                        visible: root.importNotice.length > 0
                        text: root.importNotice
                        color: TBTheme.muted
                        font.pixelSize: 12
                        wrapMode: Text.WordWrap
                        Layout.fillWidth: true
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
            }
            RowLayout {
                id: actionsRow
                spacing: 8
                Layout.alignment: Qt.AlignRight | Qt.AlignVCenter
                TBOutlinedButton {
                    objectName: "addFilesButton"
                    iconName: "plus"
                    text: L.tr.text(L.AddFiles)
                    shortcutText: root.addFilesShortcut
                    Layout.preferredHeight: 28
                    onClicked: root.selectFiles()
                }
                TBOutlinedButton {
                    objectName: "addFolderButton"
                    iconName: "folder"
                    text: L.tr.text(L.AddFolder)
                    shortcutText: root.addFolderShortcut
                    Layout.preferredHeight: 28
                    onClicked: root.selectFolder()
                }
                TBOutlinedButton {
                    objectName: "removeSelectedButton"
                    text: L.tr.text(L.RemoveSelected)
                    enabled: root.hasSelection
                    shortcutText: root.removeShortcut
                    Layout.preferredHeight: 28
                    onClicked: root.removeSelected()
                }
                TBOutlinedButton {
                    objectName: "clearQueueButton"
                    text: L.tr.text(L.ClearQueue)
                    Layout.preferredHeight: 28
                    onClicked: root.clearQueue()
                }
                TBPrimaryButton {
                    objectName: "analyzeButton"
                    text: L.tr.text(L.AnalyzeLoudness)
                    enabled: root.canAnalyze && !root.isAnalyzing
                    Layout.preferredHeight: 28
                    onClicked: root.analyze()
                }
            }
        }
    }
}
