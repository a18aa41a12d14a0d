// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// One file's status in words, and what lies behind a failure.
TBSheet {
    id: root

    property string fileName
    property int status: ProcessingStatus.Ready
    property string statusMessage
    property string errorDetails
    // What the output format's limits changed, a sentence a line.
    property string changes
    // The measured source, and what was written: figures as the controller gives them.
    property string input
    property string gain
    property string output
    property string outputPath
    property bool showDetails: false

    readonly property bool hasDetails: errorDetails.length > 0

    objectName: "itemDetailSheet"
    width: 460
    height: (hasDetails ? 360 : 200) + (changes.length > 0 ? 40 : 0) + (input.length > 0 ? 24 : 0) + (output.length > 0 ? 72 : 0)
    padding: 18
    onAboutToShow: showDetails = false

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        RowLayout {
            spacing: 10
            Layout.fillWidth: true
            TBIcon {
                name: root.status === ProcessingStatus.Warning ? "warning" : root.status === ProcessingStatus.Failed ? "octagon" : "info"
                color: root.status === ProcessingStatus.Warning ? TBTheme.warning : root.status === ProcessingStatus.Failed ? TBTheme.error : TBTheme.muted
                size: 22
            }
            Label {
                objectName: "detailName"
                text: root.fileName
                font.pixelSize: 14
                font.weight: Font.DemiBold
                color: TBTheme.text
                elide: Text.ElideMiddle
                Layout.fillWidth: true
            }
        }
        Label {
            objectName: "detailMessage"
            text: root.status === ProcessingStatus.Warning || root.status === ProcessingStatus.Failed ? root.statusMessage : L.tr.statusName(root.status)
            font.pixelSize: 13
            color: TBTheme.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        GridLayout {
            objectName: "detailFigures"
            visible: root.input.length > 0 || root.output.length > 0
            columns: 2
            columnSpacing: 12
            rowSpacing: 4
            Layout.fillWidth: true
            Label {
                visible: root.input.length > 0
                text: L.tr.text(L.ResultInput)
                color: TBTheme.muted
                font.pixelSize: 12
            }
            Label {
                objectName: "detailInput"
                visible: root.input.length > 0
                text: root.input
                color: TBTheme.text
                font.pixelSize: 12
                font.family: "monospace"
                Layout.fillWidth: true
            }
            Label {
                visible: root.gain.length > 0
                text: L.tr.text(L.ResultGain)
                color: TBTheme.muted
                font.pixelSize: 12
            }
            Label {
                objectName: "detailGain"
                visible: root.gain.length > 0
                text: root.gain
                color: TBTheme.text
                font.pixelSize: 12
                font.family: "monospace"
                Layout.fillWidth: true
            }
            Label {
                visible: root.output.length > 0
                text: L.tr.text(L.ResultOutput)
                color: TBTheme.muted
                font.pixelSize: 12
            }
            Label {
                objectName: "detailOutput"
                visible: root.output.length > 0
                text: root.output
                color: TBTheme.text
                font.pixelSize: 12
                font.family: "monospace"
                Layout.fillWidth: true
            }
            Label {
                visible: root.outputPath.length > 0
                text: L.tr.text(L.ResultWrittenTo)
                color: TBTheme.muted
                font.pixelSize: 12
            }
            Label {
                objectName: "detailOutputPath"
                visible: root.outputPath.length > 0
                text: root.outputPath
                color: TBTheme.text
                font.pixelSize: 12
                elide: Text.ElideMiddle
                Layout.fillWidth: true
            }
        }
        Label {
            objectName: "detailChanges"
            visible: root.changes.length > 0
            text: root.changes
            font.pixelSize: 12
            color: TBTheme.muted
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        TBToolbarButton {
            objectName: "detailsToggle"
            visible: root.hasDetails
            text: L.tr.text(L.Details)
            iconName: "chevronDown"
            font.pixelSize: 12
            checked: root.showDetails
            onClicked: root.showDetails = !root.showDetails
        }
        ScrollView {
            id: detailsScroll
            contentWidth: availableWidth
            visible: root.hasDetails && root.showDetails
            Layout.fillWidth: true
            Layout.preferredHeight: 160
            Layout.minimumHeight: 90
            Layout.fillHeight: true
            background: Rectangle {
                color: TBTheme.panel
                border.color: TBTheme.border
                radius: 6
            }
            TextArea {
                objectName: "detailsText"
                text: root.errorDetails
                readOnly: true
                selectByMouse: true
                wrapMode: Text.WrapAnywhere
                font.family: "monospace"
                font.pixelSize: 11
                color: TBTheme.text
                selectionColor: TBTheme.goldPressed
                selectedTextColor: TBTheme.bg
                background: null
            }
        }
        Item {
            Layout.fillHeight: true
        }
        TBOutlinedButton {
            objectName: "detailDone"
            text: L.tr.text(L.CloseSheet)
            onClicked: root.close()
            Layout.alignment: Qt.AlignRight
        }
    }
}
