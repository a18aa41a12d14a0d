// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// The queue, one row per file; only the rows on screen exist.
TBCard {
    id: root

    // The queue as listed (QueueView): sorted and filtered.
    property QueueView model
    property bool allSelected: false
    // Files in the queue, shown or not.
    property int total: 0
    property string selectAllShortcut
    // The folder column shares the name column's room.
    readonly property real nameShare: 0.6
    // The fixed columns are as wide as their heading and their widest content in
    // the language shown, so that neither is ever cut off.
    readonly property real sourceWidth: Math.max(76, sourceHeader.implicitWidth)
    readonly property real loudnessWidth: Math.max(loudnessSample.advanceWidth + 6, loudnessHeader.implicitWidth)
    readonly property real gainWidth: Math.max(gainSample.advanceWidth + 6, gainHeader.implicitWidth)
    readonly property real outputWidth: Math.max(60, outputHeader.implicitWidth)
    readonly property real statusWidth: {
        let widest = statusHeader.implicitWidth;
        for (let i = 0; i < badgeSamples.count; ++i) {
            const badge = badgeSamples.itemAt(i);
            if (badge)
                widest = Math.max(widest, badge.implicitWidth + 4);
        }
        return widest;
    }

    signal toggleSelect(string id)
    signal toggleSelectAll
    signal remove(string id)
    signal showDetails(string id)

    padding: 0

    TextMetrics {
        id: loudnessSample
        font.family: "monospace"
        font.pixelSize: 12
        text: "-00.0 \u2192 -00.0 LUFS"
    }
    TextMetrics {
        id: gainSample
        font.family: "monospace"
        font.pixelSize: 12
        text: "+00.0 dB"
    }
    Item {
        visible: false
        Repeater {
            id: badgeSamples
            model: [ProcessingStatus.Ready, ProcessingStatus.Queued, ProcessingStatus.Analyzing, ProcessingStatus.Processing, ProcessingStatus.Done, ProcessingStatus.Warning, ProcessingStatus.Failed, ProcessingStatus.Cancelled]
            delegate: StatusBadge {
                required property int modelData
                status: modelData
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            color: TBTheme.headerBg
            radius: 10
            implicitHeight: 30
            Layout.fillWidth: true
            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 12
                spacing: 10
                TBCheckBox {
                    objectName: "selectAllCheck"
                    checked: root.allSelected
                    enabled: root.total > 0
                    tip: L.tr.text(L.SelectAll) + (root.selectAllShortcut.length > 0 ? " (" + root.selectAllShortcut + ")" : "")
                    onClicked: root.toggleSelectAll()
                    Layout.preferredWidth: 18
                }
                SortHeader {
                    objectName: "sortName"
                    text: L.tr.text(L.ColumnFile)
                    sorted: root.model.sortKey === QueueView.Name
                    ascending: root.model.ascending
                    onClicked: root.model.sortBy(QueueView.Name)
                    Layout.fillWidth: true
                    Layout.preferredWidth: root.nameShare
                }
                SortHeader {
                    objectName: "sortFolder"
                    text: L.tr.text(L.ColumnFolder)
                    sorted: root.model.sortKey === QueueView.Folder
                    ascending: root.model.ascending
                    onClicked: root.model.sortBy(QueueView.Folder)
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1 - root.nameShare
                }
                TBSectionLabel {
                    id: sourceHeader
                    text: L.tr.text(L.ColumnSource)
                    Layout.preferredWidth: root.sourceWidth
                }
                SortHeader {
                    id: loudnessHeader
                    objectName: "sortLoudness"
                    text: L.tr.text(L.ColumnLoudness)
                    sorted: root.model.sortKey === QueueView.Loudness
                    ascending: root.model.ascending
                    onClicked: root.model.sortBy(QueueView.Loudness)
                    horizontalAlignment: Text.AlignRight
                    Layout.preferredWidth: root.loudnessWidth
                }
                TBSectionLabel {
                    id: gainHeader
                    text: L.tr.text(L.ColumnGain)
                    horizontalAlignment: Text.AlignRight
                    Layout.preferredWidth: root.gainWidth
                }
                TBSectionLabel {
                    id: outputHeader
                    text: L.tr.text(L.ColumnOutput)
                    Layout.preferredWidth: root.outputWidth
                }
                SortHeader {
                    id: statusHeader
                    objectName: "sortStatus"
                    text: L.tr.text(L.ColumnStatus)
                    sorted: root.model.sortKey === QueueView.Status
                    ascending: root.model.ascending
                    onClicked: root.model.sortBy(QueueView.Status)
                    Layout.preferredWidth: root.statusWidth
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
                // A keyboard list: Tab reaches it, the arrows, Page keys and
                // Home/End move the current row (with Shift they tick from the
                // anchor to it), Space ticks it, Enter opens its details and
                // Delete removes its file. Ticks and ranges are the
                // controller's; the list only says which rows.
                activeFocusOnTab: true
                keyNavigationEnabled: true
                Accessible.role: Accessible.List
                Accessible.name: L.tr.text(L.ColumnFile)
                function openCurrent() {
                    const row = currentItem as QueueRowView;
                    if (row)
                        root.showDetails(row.itemId);
                }
                // Makes `row` current; with Shift, ticks from the anchor to it.
                function moveTo(row: int, extend: bool) {
                    if (count === 0)
                        return;
                    const to = Math.max(0, Math.min(row, count - 1));
                    if (extend)
                        root.model.extendSelection(to, currentIndex);
                    currentIndex = to;
                    positionViewAtIndex(to, ListView.Contain);
                }
                function tickCurrent() {
                    const row = currentItem as QueueRowView;
                    if (!row)
                        return;
                    root.model.setAnchor(currentIndex);
                    root.toggleSelect(row.itemId);
                }
                // The list keeps the current index: the next file takes the
                // removed one's place (the one before, at the end).
                function removeCurrent() {
                    const row = currentItem as QueueRowView;
                    if (row)
                        root.remove(row.itemId);
                }
                // A row clicked: it becomes current, and the anchor unless
                // Shift extends a range to it.
                function pick(row: int, extend: bool) {
                    forceActiveFocus(Qt.MouseFocusReason);
                    if (extend) {
                        moveTo(row, true);
                    } else {
                        root.model.setAnchor(row);
                        currentIndex = row;
                    }
                }
                readonly property int pageRows: Math.max(1, Math.floor(height / (currentItem ? currentItem.height : 30)) - 1)
                // Hidden (a run has the screen): its keys go with it.
                onVisibleChanged: {
                    if (!visible)
                        focus = false;
                }
                Keys.onReturnPressed: openCurrent()
                Keys.onEnterPressed: openCurrent()
                // Delete here removes the current file, not the ticked ones.
                Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace
                Keys.onPressed: event => {
                    const extend = (event.modifiers & Qt.ShiftModifier) !== 0;
                    event.accepted = true;
                    switch (event.key) {
                    case Qt.Key_Up:
                        moveTo(currentIndex - 1, extend);
                        break;
                    case Qt.Key_Down:
                        moveTo(currentIndex + 1, extend);
                        break;
                    case Qt.Key_PageUp:
                        moveTo(currentIndex - pageRows, extend);
                        break;
                    case Qt.Key_PageDown:
                        moveTo(currentIndex + pageRows, extend);
                        break;
                    case Qt.Key_Home:
                        moveTo(0, extend);
                        break;
                    case Qt.Key_End:
                        moveTo(count - 1, extend);
                        break;
                    case Qt.Key_Space:
                        tickCurrent();
                        break;
                    case Qt.Key_Delete:
                    case Qt.Key_Backspace:
                        removeCurrent();
                        break;
                    default:
                        event.accepted = false;
                    }
                }

                ScrollBar.vertical: ScrollBar {
                }
                delegate: QueueRowView {
                    id: row
                    width: list.width
                    isCurrent: ListView.isCurrentItem && list.activeFocus
                    nameShare: root.nameShare
                    sourceWidth: root.sourceWidth
                    loudnessWidth: root.loudnessWidth
                    gainWidth: root.gainWidth
                    outputWidth: root.outputWidth
                    statusWidth: root.statusWidth
                    onToggleSelect: id => {
                        list.pick(row.index, false);
                        root.toggleSelect(id);
                    }
                    onExtendSelection: list.pick(row.index, true)
                    onRemove: id => root.remove(id)
                    onShowDetails: id => {
                        list.pick(row.index, false);
                        root.showDetails(id);
                    }
                }
            }
            Label {
                objectName: "emptyQueue"
                anchors.centerIn: parent
                visible: list.count === 0
                text: root.total === 0 ? L.tr.text(L.NoFilesInQueue) : L.tr.text(L.NoFilesShown)
                color: TBTheme.muted
                font.pixelSize: 13
            }
        }
    }
}
