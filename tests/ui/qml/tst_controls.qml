// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Tonbrook.Style

// The style module's controls on their own: what a click, a key or a step does.
TestCase {
    name: "Controls"
    when: windowShown
    width: 400
    height: 200
    visible: true

    Column {
        TBCheckBox {
            id: checkBox
        }
        TBSegmentedControl {
            id: segmented
            width: 300
            model: ["One", "Two", "Three"]
        }
        TBSpinBox {
            id: spin
            realValue: -1
        }
    }
    SignalSpy {
        id: activated
        target: segmented
        signalName: "activated"
    }
    SignalSpy {
        id: edited
        target: spin
        signalName: "realValueEdited"
    }

    function test_checkBoxTogglesOnItsOwn() {
        mouseClick(checkBox);
        verify(checkBox.checked);
    }

    // The owner decides what is chosen: a click or a key only asks.
    function test_segmentedControlAsksAndLeavesTheChoiceToItsOwner() {
        mouseClick(segmented, 250, segmented.height / 2);
        segmented.forceActiveFocus();
        keyClick(Qt.Key_Right);
        compare(activated.signalArguments.map(args => args[0]), [2, 1]);
        compare(segmented.currentIndex, 0);
    }

    function test_spinBoxStepsTenthsAndStopsAtZero() {
        compare(spin.displayText, "-1.0");
        spin.increase();
        spin.valueModified();
        fuzzyCompare(edited.signalArguments[0][0], -0.9, 1e-9);
        spin.realValue = 0;
        spin.increase();
        compare(spin.value, 0);
    }
}
