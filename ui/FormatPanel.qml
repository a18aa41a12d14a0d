// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui
import Tonbrook.Localization

// What is written: container, sample rate, bit depth.
TBCard {
    id: root

    required property SettingsModel settings

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        TBSectionLabel {
            text: L.tr.text(L.OutputFormatHeading)
        }
        TBDropdown {
            objectName: "formatPicker"
            model: root.settings.formatLabels
            currentIndex: root.settings.formatIndex
            onActivated: index => root.settings.formatIndex = index
            Accessible.description: L.tr.text(L.OutputFormatHeading)
            Layout.fillWidth: true
        }
        TBSectionLabel {
            text: L.tr.text(L.SampleRateHeading)
            Layout.topMargin: 4
        }
        TBDropdown {
            objectName: "sampleRatePicker"
            model: root.settings.sampleRateLabels
            currentIndex: root.settings.sampleRateIndex
            onActivated: index => root.settings.sampleRateIndex = index
            Accessible.description: L.tr.text(L.SampleRateHeading)
            Layout.fillWidth: true
        }
        TBSectionLabel {
            text: L.tr.text(L.BitDepthHeading)
            Layout.topMargin: 4
        }
        TBSegmentedControl {
            objectName: "bitDepthPicker"
            enabled: root.settings.bitDepthApplies
            model: root.settings.bitDepthLabels
            currentIndex: root.settings.bitDepthIndex
            accessibleName: L.tr.text(L.BitDepthHeading)
            onActivated: index => root.settings.bitDepthIndex = index
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
