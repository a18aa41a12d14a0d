// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A panel: rounded, outlined, on the panel colour.
Pane {
    padding: 16
    background: Rectangle {
        color: TBTheme.panel
        radius: 10
        border.width: 1
        border.color: TBTheme.panelBorder
    }
}
