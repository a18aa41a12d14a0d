// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// Where: the output folder, a warning about it, revealing, the name prefix.
TBCard {
    id: root

    required property SettingsModel settings
    property string outputWarning

    signal chooseFolder

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        TBSectionLabel {
            text: L.tr.text(L.OutputFolderHeading)
        }
        RowLayout {
            spacing: 8
            Layout.fillWidth: true
            TBOutlinedButton {
                objectName: "chooseFolderButton"
                iconName: "folder"
                text: L.tr.text(L.ChooseFolder)
                onClicked: root.chooseFolder()
            }
            Label {
                objectName: "outputFolderPath"
                text: root.settings.hasOutputFolder ? root.settings.outputFolder : L.tr.text(L.NoFolderSelected)
                color: root.settings.hasOutputFolder ? TBTheme.text : TBTheme.muted
                font.pixelSize: 12
                elide: Text.ElideMiddle
                Layout.fillWidth: true
            }
        }
        RowLayout {
            visible: root.outputWarning.length > 0
            spacing: 6
            Layout.fillWidth: true
            TBIcon {
                name: "warning"
                color: TBTheme.warning
                size: 14
                Layout.alignment: Qt.AlignTop
            }
            Label {
                objectName: "outputWarning"
                text: root.outputWarning
                color: TBTheme.warning
                font.pixelSize: 11
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
        TBSwitch {
            objectName: "revealSwitch"
            text: L.tr.text(L.RevealWhenComplete)
            checked: root.settings.revealWhenComplete
            onToggled: root.settings.revealWhenComplete = checked
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: 8
            Layout.fillWidth: true
            TBSwitch {
                objectName: "prefixSwitch"
                text: L.tr.text(L.AddPrefix)
                checked: root.settings.addPrefix
                onToggled: root.settings.addPrefix = checked
            }
            TBTextField {
                objectName: "prefixField"
                enabled: root.settings.addPrefix
                text: root.settings.prefix
                onTextEdited: root.settings.prefix = text
                Accessible.name: L.tr.text(L.AddPrefix)
                Layout.fillWidth: true
            }
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
