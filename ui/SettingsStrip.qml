// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Localization

// The settings in one line above a loaded queue: what the next run will do
// and where it writes, and the way to the panels.
TBCard {
    id: root

    property string summary
    property string outputFolder
    property string outputWarning
    property bool expanded: false

    signal toggle

    padding: 4
    leftPadding: 12

    RowLayout {
        anchors.fill: parent
        spacing: 12
        Label {
            objectName: "settingsSummary"
            text: root.summary
            color: TBTheme.text
            font.pixelSize: 13
            font.weight: Font.DemiBold
            // The choices first, whole (it wraps where narrow); the folder takes what is left.
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
            Layout.preferredWidth: implicitWidth
            Layout.maximumWidth: implicitWidth
            Layout.minimumWidth: Math.min(implicitWidth, 220)
        }
        TBIcon {
            name: root.outputWarning.length > 0 || root.outputFolder.length === 0 ? "warning" : "folder"
            color: root.outputWarning.length > 0 || root.outputFolder.length === 0 ? TBTheme.warning : TBTheme.muted
            size: 14
        }
        Label {
            objectName: "settingsFolder"
            text: root.outputFolder.length > 0 ? root.outputFolder : L.tr.text(L.NoFolderSelected)
            color: root.outputFolder.length > 0 ? TBTheme.muted : TBTheme.warning
            font.pixelSize: 12
            elide: Text.ElideMiddle
            Layout.fillWidth: true
            Layout.preferredWidth: 120
            Layout.minimumWidth: 80
        }
        TBOutlinedButton {
            objectName: "settingsToggle"
            iconName: "chevronDown"
            text: root.expanded ? L.tr.text(L.HideSettings) : L.tr.text(L.ShowSettings)
            checked: root.expanded
            Layout.preferredHeight: 28
            onClicked: root.toggle()
        }
    }
}
