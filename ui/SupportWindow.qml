// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// The small separate thank-you window.
Window {
    id: root

    property string tipAddress
    property string channelAddress

    objectName: "supportWindow"
    title: L.tr.text(L.SupportMenuItem)
    color: TBTheme.bg
    width: 420
    height: 330
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowCloseButtonHint

    Shortcut {
        sequence: "Escape"
        onActivated: root.close()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 26
        spacing: 12

        TBIcon {
            name: "heart"
            color: TBTheme.gold
            size: 34
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: L.tr.text(L.SupportTitle)
            font.pixelSize: 17
            font.weight: Font.DemiBold
            color: TBTheme.text
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: L.tr.text(L.SupportBody)
            font.pixelSize: 12
            color: TBTheme.muted
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
        RowLayout {
            spacing: 10
            Layout.alignment: Qt.AlignHCenter
            TBPrimaryButton {
                objectName: "tipButton"
                text: L.tr.text(L.LeaveTip)
                onClicked: Qt.openUrlExternally(root.tipAddress)
            }
            TBOutlinedButton {
                objectName: "channelButton"
                text: L.tr.text(L.SupportChannelButton)
                onClicked: Qt.openUrlExternally(root.channelAddress)
            }
        }
        TBToolbarButton {
            objectName: "supportClose"
            text: L.tr.text(L.Close)
            onClicked: root.close()
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
