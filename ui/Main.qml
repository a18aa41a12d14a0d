// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui

// The main window: toolbar, the screen of the moment, footer, and the sheets.
// Every value comes from the controller and every action goes to it.
ApplicationWindow {
    id: window

    readonly property MainViewModel viewModel: App.viewModel
    readonly property SettingsModel settings: App.settings
    readonly property bool idle: viewModel.screenState === AppScreen.Idle
    // The settings panels shown above a loaded queue.
    property bool settingsOpen: false

    // Cancel, Escape or closing the window: asked first when the run has gone on a while.
    function stopRun(quitAfter) {
        if (viewModel.stoppingNeedsConfirmation) {
            stopRunSheet.quitAfter = quitAfter;
            stopRunSheet.open();
            return;
        }
        stopNow(quitAfter);
    }

    function stopNow(quitAfter) {
        viewModel.cancelProcessing();
        if (quitAfter)
            App.quit();
    }

    function openDetails(id) {
        const item = viewModel.itemData(id);
        if (!item.found)
            return;
        detailSheet.fileName = item.fileName;
        detailSheet.status = item.status;
        detailSheet.statusMessage = item.statusMessage;
        detailSheet.errorDetails = item.errorDetails;
        detailSheet.changes = item.changes;
        detailSheet.input = item.input;
        detailSheet.gain = item.gain;
        detailSheet.output = item.output;
        detailSheet.outputPath = item.outputPath;
        detailSheet.open();
    }

    objectName: "mainWindow"
    title: viewModel.windowTitle
    minimumWidth: 900
    minimumHeight: 680
    width: 980
    height: 720
    visible: true
    color: TBTheme.bg
    palette.shadow: TBTheme.bg

    Component.onCompleted: viewModel.restoreOutputFolder()
    onClosing: close => {
        if (viewModel.screenState === AppScreen.Processing && viewModel.stoppingNeedsConfirmation) {
            close.accepted = false;
            stopRun(true);
        }
    }

    header: AppToolbarView {
        statusText: window.viewModel.statusText
        processButtonTitle: window.viewModel.processButtonTitle
        canProcess: window.viewModel.canProcess
        showProcessButton: window.idle
        languageSelection: App.languageSelection
        languages: App.languages
        processShortcut: processShortcut.nativeText
        onProcess: window.viewModel.process()
        onShowAbout: aboutSheet.open()
        onShowLicenses: licensesSheet.open()
        onShowSupport: window.viewModel.showSupport()
        onLanguageChosen: language => App.languageSelection = language
    }

    footer: FooterStatusBarView {
        leadingText: window.viewModel.footerLeadingText
        trailingText: window.viewModel.footerTrailingText
    }

    // The three screens cross-fade.
    Item {
        anchors.fill: parent

        Item {
            id: idleScreen
            objectName: "idleScreen"
            anchors.fill: parent
            opacity: window.idle ? 1 : 0
            // Fading out it takes no clicks and no keys.
            enabled: window.idle
            visible: opacity > 0
            Behavior on opacity  {
                NumberAnimation {
                    duration: 180
                }
            }

            DropArea {
                id: drop
                objectName: "dropArea"
                anchors.fill: parent
                keys: ["text/uri-list"]
                onDropped: event => {
                    if (event.hasUrls) {
                        window.viewModel.importURLs(event.urls);
                        event.acceptProposedAction();
                    }
                }
            }

            // The queue gets the room: settings show as one line while files are
            // loaded, as panels when the queue is empty or when asked for.
            ColumnLayout {
                id: column
                objectName: "idleColumn"
                anchors.fill: parent
                anchors.margins: 8
                spacing: 8

                ImportDropZoneView {
                    objectName: "dropZone"
                    fileCount: window.viewModel.fileCount
                    folderCount: window.viewModel.folderCount
                    importNotice: window.viewModel.importNotice
                    problem: window.viewModel.installationProblem
                    canAnalyze: window.viewModel.canAnalyze
                    isAnalyzing: window.viewModel.isAnalyzing
                    hasSelection: window.viewModel.hasSelection
                    isDragOver: drop.containsDrag
                    addFilesShortcut: addFilesShortcut.nativeText
                    addFolderShortcut: addFolderShortcut.nativeText
                    removeShortcut: removeShortcut.nativeText
                    onSelectFiles: window.viewModel.selectFiles()
                    onSelectFolder: window.viewModel.selectFolder()
                    onAnalyze: window.viewModel.analyzeQueue()
                    onRemoveSelected: window.viewModel.removeSelected()
                    onClearQueue: window.viewModel.clearQueue()
                    filter: window.viewModel.queueView.filter
                    isImporting: window.viewModel.isImporting
                    importFoundCount: window.viewModel.importFoundCount
                    onCancelImport: window.viewModel.cancelImport()
                    onFilterChosen: filter => window.viewModel.queueView.filter = filter
                    Layout.fillWidth: true
                }

                SettingsStrip {
                    objectName: "settingsStrip"
                    visible: window.viewModel.fileCount > 0
                    summary: window.settings.summary
                    outputFolder: window.settings.outputFolder
                    outputWarning: window.viewModel.outputWarning
                    expanded: window.settingsOpen
                    onToggle: window.settingsOpen = !window.settingsOpen
                    Layout.fillWidth: true
                }

                GridLayout {
                    objectName: "settingsPanels"
                    visible: window.viewModel.fileCount === 0 || window.settingsOpen
                    columns: column.width >= 3 * 280 + 2 * 8 ? 3 : 1
                    columnSpacing: 8
                    rowSpacing: 8
                    Layout.fillWidth: true
                    TargetPanel {
                        settings: window.settings
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        Layout.preferredWidth: 280
                    }
                    FormatPanel {
                        settings: window.settings
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        Layout.preferredWidth: 280
                    }
                    OutputPanel {
                        settings: window.settings
                        outputWarning: window.viewModel.outputWarning
                        onChooseFolder: window.viewModel.chooseOutputFolder()
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        Layout.preferredWidth: 280
                    }
                }

                QueueTableView {
                    objectName: "queueTable"
                    model: window.viewModel.queueView
                    total: window.viewModel.fileCount
                    allSelected: window.viewModel.allSelected
                    selectAllShortcut: selectAllShortcut.nativeText
                    onToggleSelect: id => window.viewModel.toggleSelection(id)
                    onToggleSelectAll: window.viewModel.toggleSelectAll()
                    onRemove: id => window.viewModel.removeItem(id)
                    onShowDetails: id => window.openDetails(id)
                    visible: window.viewModel.fileCount > 0
                    Layout.fillWidth: true
                    // The rest of the window: the list scrolls within it.
                    Layout.fillHeight: true
                    Layout.minimumHeight: 120
                }

                Item {
                    visible: window.viewModel.fileCount === 0
                    Layout.fillHeight: true
                }
            }
        }

        ProcessingView {
            objectName: "processingScreen"
            anchors.fill: parent
            opacity: window.viewModel.screenState === AppScreen.Processing ? 1 : 0
            visible: opacity > 0
            processedCount: window.viewModel.processedCount
            totalCount: window.viewModel.runTotal
            currentFileName: window.viewModel.currentFileName
            cancelShortcut: cancelShortcut.nativeText
            runTimeText: window.viewModel.runTimeText
            runningFiles: window.viewModel.runningFiles
            failedSoFar: window.viewModel.failedSoFar
            onCancel: window.stopRun(false)
            Behavior on opacity  {
                NumberAnimation {
                    duration: 180
                }
            }
        }

        CompletionView {
            objectName: "completionScreen"
            anchors.fill: parent
            opacity: window.viewModel.screenState === AppScreen.Completed ? 1 : 0
            visible: opacity > 0
            summary: window.viewModel.completionSummary
            canRevealOutputFolder: window.settings.hasOutputFolder
            reportError: window.viewModel.reportError
            failures: window.viewModel.failures
            onBackToQueue: window.viewModel.backToQueue()
            onRetryFailed: window.viewModel.retryFailed()
            onRevealOutputFolder: window.viewModel.revealOutputFolder()
            onExportReport: window.viewModel.exportReport()
            onProcessNewFiles: window.viewModel.startNewBatch()
            Behavior on opacity  {
                NumberAnimation {
                    duration: 180
                }
            }
        }
    }

    ItemDetailView {
        id: detailSheet
    }
    StopRunSheet {
        id: stopRunSheet
        processedCount: window.viewModel.processedCount
        totalCount: window.viewModel.runTotal
        onStop: quitAfter => window.stopNow(quitAfter)
    }
    AboutSheet {
        id: aboutSheet
        version: App.version
    }
    LicensesSheet {
        id: licensesSheet
        model: App.licenses
    }

    // Keyboard: each action also named in its control's tooltip.
    Shortcut {
        id: addFilesShortcut
        sequence: "Ctrl+O"
        enabled: window.idle
        onActivated: window.viewModel.selectFiles()
    }
    Shortcut {
        id: addFolderShortcut
        sequence: "Ctrl+Shift+O"
        enabled: window.idle
        onActivated: window.viewModel.selectFolder()
    }
    Shortcut {
        id: processShortcut
        sequence: "Ctrl+Return"
        enabled: window.idle && window.viewModel.canProcess
        onActivated: window.viewModel.process()
    }
    Shortcut {
        id: removeShortcut
        sequence: "Delete"
        enabled: window.idle && window.viewModel.hasSelection
        onActivated: window.viewModel.removeSelected()
    }
    Shortcut {
        id: selectAllShortcut
        sequence: "Ctrl+A"
        enabled: window.idle && !window.viewModel.allSelected
        onActivated: window.viewModel.toggleSelectAll()
    }
    Shortcut {
        id: cancelShortcut
        sequence: "Escape"
        enabled: window.viewModel.screenState === AppScreen.Processing
        onActivated: window.stopRun(false)
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: App.quit()
    }
}
