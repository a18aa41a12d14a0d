// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tonbrook.App
import Tonbrook.Style
import Tonbrook.Ui

// What is written: container, sample rate, bit depth.
TBCard {
    id: root

    required property SettingsModel settings

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        TBSectionLabel {
            text: Strings.tr.outputFormatHeading()
        }
        TBDropdown {
            objectName: "formatPicker"
            model: root.settings.formatLabels
            currentIndex: root.settings.formatIndex
            onActivated: index => root.settings.formatIndex = index
            Accessible.description: Strings.tr.outputFormatHeading()
            Layout.fillWidth: true
        }
        TBSectionLabel {
            text: Strings.tr.sampleRateHeading()
            Layout.topMargin: 4
        }
        TBDropdown {
            objectName: "sampleRatePicker"
            model: root.settings.sampleRateLabels
            currentIndex: root.settings.sampleRateIndex
            onActivated: index => root.settings.sampleRateIndex = index
            Accessible.description: Strings.tr.sampleRateHeading()
            Layout.fillWidth: true
        }
        TBSectionLabel {
            text: Strings.tr.bitDepthHeading()
            Layout.topMargin: 4
        }
        TBSegmentedControl {
            objectName: "bitDepthPicker"
            enabled: root.settings.bitDepthApplies
            model: root.settings.bitDepthLabels
            currentIndex: root.settings.bitDepthIndex
            accessibleName: Strings.tr.bitDepthHeading()
            onActivated: index => root.settings.bitDepthIndex = index
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
