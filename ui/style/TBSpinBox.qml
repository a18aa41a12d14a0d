// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Tonbrook.Style
import QtQuick.Controls.Basic

// A number with one decimal, stepped with the arrows or typed.
SpinBox {
    id: root

    property real realValue: 0
    property real realFrom: -9
    property real realTo: 0
    property string suffix

    signal realValueEdited(real value)

    from: Math.round(realFrom * 10)
    to: Math.round(realTo * 10)
    stepSize: 1
    value: Math.round(realValue * 10)
    editable: true
    font.pixelSize: 13
    Accessible.name: displayText

    textFromValue: function (value, locale) {
        return (value / 10).toFixed(1) + (root.suffix.length > 0 ? " " + root.suffix : "");
    }
    valueFromText: function (text, locale) {
        const number = parseFloat(text.replace(",", "."));
        return isNaN(number) ? root.value : Math.round(number * 10);
    }
    validator: RegularExpressionValidator {
        regularExpression: /^\s*-?\d{0,2}([.,]\d?)?\s*[A-Za-z]*\s*$/
    }
    onValueModified: root.realValueEdited(value / 10)

    contentItem: TextInput {
        text: root.displayText
        font: root.font
        color: root.enabled ? TBTheme.text : TBTheme.disabled
        selectionColor: TBTheme.goldPressed
        selectedTextColor: TBTheme.bg
        horizontalAlignment: Qt.AlignHCenter
        verticalAlignment: Qt.AlignVCenter
        readOnly: !root.editable
        validator: root.validator
        inputMethodHints: Qt.ImhFormattedNumbersOnly
    }
    up.indicator: Rectangle {
        x: root.width - width
        height: root.height
        implicitWidth: 28
        color: root.up.pressed ? TBTheme.panel2 : "transparent"
        radius: 7
        TBIcon {
            anchors.centerIn: parent
            name: "plus"
            color: root.up.hovered ? TBTheme.text : TBTheme.muted
            size: 12
        }
    }
    down.indicator: Rectangle {
        x: 0
        height: root.height
        implicitWidth: 28
        color: root.down.pressed ? TBTheme.panel2 : "transparent"
        radius: 7
        Rectangle {
            anchors.centerIn: parent
            width: 10
            height: 1.6
            color: root.down.hovered ? TBTheme.text : TBTheme.muted
        }
    }
    background: Rectangle {
        implicitWidth: 130
        implicitHeight: 32
        radius: 7
        color: TBTheme.btnBg
        border.width: 1
        border.color: root.activeFocus ? TBTheme.goldBorder : TBTheme.btnBorder
        TBFocusRing {
            shown: root.activeFocus
        }
    }
}
