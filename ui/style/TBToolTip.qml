// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// The tooltip every TB control uses.
ToolTip {
    id: root

    delay: 500
    contentItem: Label {
        text: root.text
        color: TBTheme.text
        font.pixelSize: 12
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        color: TBTheme.panel2
        border.color: TBTheme.btnBorder
        radius: 6
    }
}
