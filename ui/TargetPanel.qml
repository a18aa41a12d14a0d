// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// How loud: normalise or not, the preset (or a custom target), the ceiling.
TBCard {
    id: root

    required property SettingsModel settings

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        TBSectionLabel {
            text: L.tr.text(L.TargetHeading)
        }
        TBSwitch {
            objectName: "normalizeSwitch"
            text: L.tr.text(L.NormalizeLoudness)
            checked: root.settings.normalizeLoudness
            onToggled: root.settings.normalizeLoudness = checked
            Layout.fillWidth: true
        }
        TBDropdown {
            objectName: "presetPicker"
            enabled: root.settings.normalizeLoudness
            model: root.settings.presetLabels
            currentIndex: root.settings.presetIndex
            onActivated: index => root.settings.presetIndex = index
            Accessible.description: L.tr.text(L.PresetLabel)
            Layout.fillWidth: true
        }
        RowLayout {
            visible: root.settings.customPreset
            spacing: 8
            Layout.fillWidth: true
            Label {
                text: L.tr.text(L.CustomTarget)
                color: TBTheme.muted
                font.pixelSize: 12
                Layout.fillWidth: true
            }
            TBTextField {
                id: customField
                objectName: "customTargetField"
                enabled: root.settings.normalizeLoudness
                text: root.settings.customTargetLUFS.toFixed(1)
                horizontalAlignment: Text.AlignRight
                implicitWidth: 80
                validator: RegularExpressionValidator {
                    regularExpression: /^-?\d{0,2}([.,]\d?)?$/
                }
                readonly property real typed: parseFloat(text.replace(",", "."))
                invalid: !root.settings.acceptsCustomTarget(typed)
                // Within the range the typed value is the target, as typed.
                onTextEdited: if (!invalid)
                    root.settings.customTargetLUFS = typed
                onEditingFinished: text = root.settings.customTargetLUFS.toFixed(1)
                Accessible.name: L.tr.text(L.CustomTarget)
            }
            Label {
                text: "LUFS"
                color: TBTheme.muted
                font.pixelSize: 12
            }
        }
        RowLayout {
            spacing: 8
            Layout.fillWidth: true
            Label {
                text: L.tr.text(L.TruePeakCeiling)
                color: TBTheme.muted
                font.pixelSize: 12
                Layout.fillWidth: true
            }
            TBSpinBox {
                objectName: "ceilingField"
                enabled: root.settings.normalizeLoudness
                realValue: root.settings.truePeakCeiling
                realFrom: root.settings.ceilingFrom
                realTo: root.settings.ceilingTo
                suffix: "dBTP"
                onRealValueEdited: value => root.settings.truePeakCeiling = value
            }
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
