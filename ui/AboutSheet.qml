// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// The application's name, version and copyright.
TBSheet {
    id: root

    property string version

    objectName: "aboutSheet"
    width: 380

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        TBIcon {
            name: "waveform"
            color: TBTheme.gold
            size: 40
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: "Tonbrook"
            font.pixelSize: 22
            font.weight: Font.DemiBold
            color: TBTheme.text
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "aboutVersion"
            text: L.tr.text(L.Version) + " " + root.version
            font.pixelSize: 12
            color: TBTheme.muted
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: L.tr.text(L.Copyright)
            font.pixelSize: 11
            color: TBTheme.muted
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        TBOutlinedButton {
            objectName: "aboutClose"
            text: L.tr.text(L.Close)
            onClicked: root.close()
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 8
        }
    }
}
