// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// The running-work icon, turning while it is shown.
TBIcon {
    id: root

    name: "arrows"

    RotationAnimator on rotation  {
        from: 0
        to: 360
        duration: 1200
        loops: Animation.Infinite
        running: root.visible
    }
}
