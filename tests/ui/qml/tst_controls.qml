// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Tonbrook.Style

TestCase {
    id: testCase
    name: "Controls"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: checkBox
        TBCheckBox {}
    }
    Component {
        id: segmented
        TBSegmentedControl {
            width: 300
            model: ["One", "Two", "Three"]
        }
    }
    Component {
        id: primary
        TBPrimaryButton {
            text: "Go"
        }
    }
    Component {
        id: toolbarButton
        TBToolbarButton {
            text: "About"
            tip: "About Tonbrook"
            shortcutText: "Ctrl+I"
        }
    }
    Component {
        id: spin
        TBSpinBox {
            realValue: -1
        }
    }

    function test_checkBoxTogglesAndShowsItsState() {
        const box = createTemporaryObject(checkBox, testCase);
        verify(!box.checked);
        mouseClick(box);
        verify(box.checked);
        // Checked: the filled square and the check are what shows.
        const icons = box.contentItem.children;
        compare(icons[0].visible, false);
        compare(icons[1].visible, true);
        compare(icons[1].color, TBTheme.gold);
        compare(icons[2].color, TBTheme.bg);
    }

    function test_segmentedControlReportsTheChoiceAndLeavesTheStateToItsOwner() {
        const control = createTemporaryObject(segmented, testCase);
        const spy = createTemporaryObject(signalSpyComponent, testCase, {target: control, signalName: "activated"});
        mouseClick(control, 250, control.height / 2);
        compare(spy.count, 1);
        compare(spy.signalArguments[0][0], 2);
        compare(control.currentIndex, 0);
    }

    function test_primaryButtonColoursFollowItsState() {
        const button = createTemporaryObject(primary, testCase);
        compare(button.background.color, TBTheme.gold);
        compare(button.foreground, TBTheme.bg);
        button.enabled = false;
        compare(button.background.color, TBTheme.btnBg);
        compare(button.foreground, TBTheme.muted);
    }

    function test_tooltipNamesTheShortcut() {
        const button = createTemporaryObject(toolbarButton, testCase);
        compare(button.Accessible.name, "About");
        compare(button.toolTipText, "About Tonbrook (Ctrl+I)");
        button.shortcutText = "";
        compare(button.toolTipText, "About Tonbrook");
    }

    function test_spinBoxStepsTenthsAndReportsEdits() {
        const box = createTemporaryObject(spin, testCase);
        const spy = createTemporaryObject(signalSpyComponent, testCase, {target: box, signalName: "realValueEdited"});
        compare(box.displayText, "-1.0");
        box.increase();
        box.valueModified();
        compare(spy.count, 1);
        fuzzyCompare(spy.signalArguments[0][0], -0.9, 1e-9);
        box.realValue = 0;
        box.increase();
        compare(box.value, 0); // the ceiling stops at 0 dBTP
    }

    property Component signalSpyComponent: Component {
        SignalSpy {}
    }
}
