// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style

// One of the shipped icons, drawn in a theme colour at the item's size (and
// the screen's density).
Image {
    id: root

    property string name
    property color color: TBTheme.text
    property int size: 16

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    source: name.length > 0 ? "image://tbicon/" + name + "/" + color : ""
    fillMode: Image.PreserveAspectFit
    asynchronous: false
    smooth: true
    Accessible.ignored: true
}
