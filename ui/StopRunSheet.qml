// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.Style
import Tonbrook.Localization

// Asked before a run that has gone on for a while is stopped, by Cancel or by
// closing the window.
TBSheet {
    id: root

    property int processedCount: 0
    property int totalCount: 0
    // Closing the window asked for it: the application quits once stopped.
    property bool quitAfter: false

    signal stop(bool quitAfter)

    objectName: "stopRunSheet"
    width: 420

    ColumnLayout {
        anchors.fill: parent
        spacing: 12
        Label {
            text: L.tr.text(L.StopRunQuestion)
            font.pixelSize: 15
            font.weight: Font.DemiBold
            color: TBTheme.text
        }
        Label {
            objectName: "stopRunBody"
            text: L.tr.text(L.StopRunBody, root.processedCount, root.totalCount)
            font.pixelSize: 13
            color: TBTheme.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: 10
            Layout.alignment: Qt.AlignRight
            TBOutlinedButton {
                objectName: "stopRunConfirm"
                text: L.tr.text(L.StopRun)
                onClicked: {
                    root.close();
                    root.stop(root.quitAfter);
                }
            }
            TBPrimaryButton {
                objectName: "keepGoing"
                text: L.tr.text(L.KeepGoing)
                focus: true
                onClicked: root.close()
            }
        }
    }
}
