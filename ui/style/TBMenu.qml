// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A drop-down menu.
Menu {
    padding: 4
    background: Rectangle {
        implicitWidth: 190
        color: TBTheme.panel2
        radius: 8
        border.color: TBTheme.btnBorder
    }
}
