// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A small capitalised heading above a group of controls.
Label {
    font.pixelSize: 11
    font.weight: Font.DemiBold
    font.letterSpacing: 1.2
    font.capitalization: Font.AllUppercase
    color: TBTheme.muted
    Accessible.role: Accessible.Heading
}
