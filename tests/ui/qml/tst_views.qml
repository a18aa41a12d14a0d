// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Tonbrook.Style
import Tonbrook.App
import Tonbrook.Ui

TestCase {
    id: testCase
    name: "Views"
    when: windowShown
    width: 980
    height: 700
    visible: true

    ProcessingView {
        id: processing
        width: 600
        height: 400
    }
    ItemDetailView {
        id: details
    }
    ImportDropZoneView {
        id: dropZone
        width: 900
    }
    // Above the rest, where the mouse finds them.
    Column {
        z: 1
        TBCheckBox {
            id: checkBox
        }
        TBSegmentedControl {
            id: segmented
            width: 300
            model: ["One", "Two", "Three"]
        }
    }
    TBToolbarButton {
        id: toolbarButton
        text: "About"
        tip: "About Tonbrook"
        shortcutText: "Ctrl+I"
    }
    TBSpinBox {
        id: spin
        realValue: -1
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

    function findChild(item, name) {
        if (!item || item.objectName === name)
            return item;
        // Popups keep their items under contentItem, outside children.
        const kids = Array.from(item.children);
        if (item.contentItem && item.contentItem !== item)
            kids.push(item.contentItem);
        for (const kid of kids) {
            const found = findChild(kid, name);
            if (found)
                return found;
        }
        return null;
    }

    function test_progressNeverDividesByZero() {
        processing.processedCount = 0;
        processing.totalCount = 0;
        compare(findChild(processing, "progress").value, 0);
        compare(findChild(processing, "ofFiles").text, "0 of 0 files");
        processing.totalCount = 4;
        processing.processedCount = 3;
        compare(findChild(processing, "progress").value, 0.75);
        compare(findChild(processing, "currentFile").visible, false);
        processing.currentFileName = "Kick 01.wav";
        compare(findChild(processing, "currentFile").visible, true);
    }

    // Every opening starts folded; the details of a failure unfold on request.
    function test_detailSheetSizeAndDetails() {
        details.fileName = "a.wav";
        details.status = ProcessingStatus.Done;
        details.open();
        tryCompare(details, "opened", true);
        compare(details.height, 200);
        compare(findChild(details.contentItem, "detailsToggle").visible, false);
        compare(findChild(details.contentItem, "detailMessage").text, "Done");
        details.close();
        tryCompare(details, "visible", false);

        details.status = ProcessingStatus.Failed;
        details.statusMessage = "Could not process \u201ca.wav\u201d.";
        details.errorDetails = "ffmpeg exit code 1\n\nbroken";
        details.showDetails = true;
        details.open();
        tryCompare(details, "opened", true);
        compare(details.height, 360);
        compare(details.showDetails, false);
        compare(findChild(details.contentItem, "detailMessage").text, details.statusMessage);
        mouseClick(findChild(details.contentItem, "detailsToggle"));
        compare(findChild(details.contentItem, "detailsText").text, details.errorDetails);
        details.close();
    }

    function test_dropZoneSumsUpWhatIsLoaded() {
        compare(findChild(dropZone, "dropHere").visible, true);
        compare(findChild(dropZone, "loadedSummary").visible, false);
        dropZone.fileCount = 3;
        compare(findChild(dropZone, "loadedSummary").text, "3 files loaded  \u00b7  Individual files");
        dropZone.folderCount = 2;
        compare(findChild(dropZone, "loadedSummary").text, "3 files loaded  \u00b7  2 folders");
        compare(findChild(dropZone, "removeSelectedButton").enabled, false);
        dropZone.hasSelection = true;
        compare(findChild(dropZone, "removeSelectedButton").enabled, true);
        dropZone.canAnalyze = true;
        compare(findChild(dropZone, "analyzeButton").enabled, true);
        dropZone.isAnalyzing = true;
        compare(findChild(dropZone, "analyzeButton").enabled, false);
    }

    function test_checkBoxToggles() {
        mouseClick(checkBox);
        verify(checkBox.checked);
    }

    function test_segmentedControlReportsTheChoiceAndLeavesTheStateToItsOwner() {
        mouseClick(segmented, 250, segmented.height / 2);
        compare(activated.count, 1);
        compare(activated.signalArguments[0][0], 2);
        compare(segmented.currentIndex, 0);
    }

    function test_tooltipNamesTheShortcut() {
        compare(toolbarButton.Accessible.name, "About");
        compare(toolbarButton.toolTipText, "About Tonbrook (Ctrl+I)");
        toolbarButton.shortcutText = "";
        compare(toolbarButton.toolTipText, "About Tonbrook");
    }

    function test_spinBoxStepsTenthsAndStopsAtZero() {
        compare(spin.displayText, "-1.0");
        spin.increase();
        spin.valueModified();
        compare(edited.count, 1);
        fuzzyCompare(edited.signalArguments[0][0], -0.9, 1e-9);
        spin.realValue = 0;
        spin.increase();
        compare(spin.value, 0);
    }
}
