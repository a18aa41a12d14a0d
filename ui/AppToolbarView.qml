// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// The top bar: the brand, what is going on, the language, About and Licenses,
// and the process button.
Rectangle {
    id: root

    property string statusText
    property string processButtonTitle
    property bool canProcess: false
    property bool showProcessButton: true
    property int languageSelection: AppLanguage.System
    // What the language menu offers, in its order.
    property var languages: []
    property string processShortcut

    signal process
    signal showLicenses
    signal showAbout
    signal showSupport
    signal languageChosen(int language)

    // Below this width the language button keeps only its globe, so the
    // longest Russian process title still fits beside everything else.
    readonly property bool compact: width < 960

    implicitHeight: 68
    color: TBTheme.panel

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: TBTheme.border
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 18
        anchors.rightMargin: 14
        spacing: 6

        ColumnLayout {
            spacing: 0
            Layout.minimumWidth: 190
            Layout.maximumWidth: 230
            Label {
                text: "QUILLMERE TOOLS"
                font.pixelSize: 11
                font.bold: true
                font.letterSpacing: 2
                color: TBTheme.muted
            }
            Label {
                text: "Tonbrook"
                font.pixelSize: 19
                font.weight: Font.DemiBold
                color: TBTheme.text
            }
            Label {
                objectName: "subtitle"
                text: L.tr.text(L.AppSubtitle)
                font.pixelSize: 11
                color: TBTheme.muted
                wrapMode: Text.Wrap
                maximumLineCount: 2
                Layout.fillWidth: true
            }
        }

        Label {
            objectName: "statusText"
            text: root.statusText
            color: TBTheme.muted
            font.pixelSize: 12
            // It carries the only progress numbers on the idle screen: where it is
            // narrow it wraps between words, it never cuts them off.
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
            Layout.minimumWidth: Math.min(implicitWidth, 150)
            Accessible.role: Accessible.StatusBar
        }

        TBToolbarButton {
            id: languageButton
            objectName: "languageButton"
            iconName: "globe"
            text: root.compact ? "" : L.tr.text(L.Language)
            tip: L.tr.text(L.Language)
            onClicked: languageMenu.open()

            TBMenu {
                id: languageMenu
                objectName: "languageMenu"
                y: languageButton.height + 4
                Repeater {
                    model: root.languages
                    delegate: TBMenuItem {
                        required property int modelData
                        required property int index
                        objectName: "language_" + index
                        text: L.tr.languageName(modelData)
                        current: root.languageSelection === modelData
                        onTriggered: root.languageChosen(modelData)
                    }
                }
            }
        }
        TBToolbarButton {
            objectName: "supportButton"
            iconName: "heart"
            tip: L.tr.text(L.SupportMenuItem)
            onClicked: root.showSupport()
        }
        TBToolbarButton {
            objectName: "aboutButton"
            text: L.tr.text(L.About)
            onClicked: root.showAbout()
        }
        TBToolbarButton {
            objectName: "licensesButton"
            text: L.tr.text(L.Licenses)
            onClicked: root.showLicenses()
        }
        TBPrimaryButton {
            objectName: "processButton"
            visible: root.showProcessButton
            enabled: root.canProcess
            text: root.processButtonTitle
            shortcutText: root.processShortcut
            onClicked: root.process()
        }
    }
}
