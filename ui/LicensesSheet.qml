// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// What ships inside Tonbrook, under which licence; one licence text open at a time.
TBSheet {
    id: root

    property var model
    property int expandedIndex: -1

    objectName: "licensesSheet"
    width: Math.min(620, parent ? parent.width - 80 : 620)
    height: Math.min(560, parent ? parent.height - 80 : 560)
    onAboutToShow: expandedIndex = -1

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        RowLayout {
            Layout.fillWidth: true
            Label {
                text: L.tr.text(L.Licenses)
                font.pixelSize: 18
                font.weight: Font.DemiBold
                color: TBTheme.text
                Layout.fillWidth: true
            }
            TBOutlinedButton {
                objectName: "licensesDone"
                text: L.tr.text(L.CloseSheet)
                onClicked: root.close()
            }
        }
        ListView {
            id: list
            clip: true
            spacing: 10
            model: root.model
            Layout.fillWidth: true
            Layout.fillHeight: true
            ScrollBar.vertical: ScrollBar {
            }
            delegate: TBCard {
                id: card

                required property int index
                required property string name
                required property string version
                required property string summary
                required property bool hasText
                required property string fullText

                readonly property bool expanded: root.expandedIndex === index

                width: list.width
                ColumnLayout {
                    anchors.fill: parent
                    spacing: 6
                    RowLayout {
                        Layout.fillWidth: true
                        ColumnLayout {
                            spacing: 2
                            Layout.fillWidth: true
                            Label {
                                text: card.name
                                font.pixelSize: 14
                                font.weight: Font.DemiBold
                                color: TBTheme.text
                                Layout.fillWidth: true
                            }
                            Label {
                                text: card.version
                                font.pixelSize: 12
                                color: TBTheme.gold
                            }
                        }
                        TBToolbarButton {
                            objectName: "licenseToggle_" + card.index
                            visible: card.hasText
                            text: card.expanded ? L.tr.text(L.HideLicense) : L.tr.text(L.ViewLicense)
                            onClicked: root.expandedIndex = card.expanded ? -1 : card.index
                        }
                    }
                    Label {
                        text: card.summary
                        font.pixelSize: 12
                        color: TBTheme.muted
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                    }
                    ScrollView {
                        id: licenseScroll
                        contentWidth: availableWidth
                        visible: card.expanded
                        Layout.fillWidth: true
                        Layout.preferredHeight: 220
                        background: Rectangle {
                            color: TBTheme.bg
                            border.color: TBTheme.border
                            radius: 6
                        }
                        TextArea {
                            text: card.expanded ? card.fullText : ""
                            readOnly: true
                            selectByMouse: true
                            wrapMode: Text.Wrap
                            font.family: "monospace"
                            font.pixelSize: 11
                            color: TBTheme.text
                            selectionColor: TBTheme.goldPressed
                            selectedTextColor: TBTheme.bg
                            background: null
                        }
                    }
                }
            }
        }
    }
}
