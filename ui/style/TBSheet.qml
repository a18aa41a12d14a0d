// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic
import QtQuick.Templates as T

// A modal sheet over the window; Escape closes it.
Popup {
    id: root

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: 22
    closePolicy: Popup.CloseOnEscape

    background: Rectangle {
        color: TBTheme.bg
        radius: 12
        border.width: 1
        border.color: TBTheme.border
    }
    T.Overlay.modal: Rectangle {
        color: Qt.rgba(TBTheme.bg.r, TBTheme.bg.g, TBTheme.bg.b, 0.72)
    }
}
