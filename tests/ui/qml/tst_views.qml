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

    Component {
        id: badge
        StatusBadge {}
    }
    Component {
        id: processing
        ProcessingView {
            width: 600
            height: 400
        }
    }
    Component {
        id: details
        ItemDetailView {}
    }
    Component {
        id: dropZone
        ImportDropZoneView {
            width: 900
        }
    }
    Component {
        id: footer
        FooterStatusBarView {
            width: 600
        }
    }

    function findChild(item, name) {
        if (!item)
            return null;
        if (item.objectName === name)
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

    function test_badge_data() {
        return [
            {tag: "ready", status: ProcessingStatus.Ready, text: "Ready", tint: TBTheme.muted, icon: "circle", spinning: false},
            {tag: "analyzing", status: ProcessingStatus.Analyzing, text: "Analyzing", tint: TBTheme.info, icon: "", spinning: true},
            {tag: "processing", status: ProcessingStatus.Processing, text: "Processing", tint: TBTheme.gold, icon: "", spinning: true},
            {tag: "done", status: ProcessingStatus.Done, text: "Done", tint: TBTheme.success, icon: "checkmark", spinning: false},
            {tag: "warning", status: ProcessingStatus.Warning, text: "Warning", tint: TBTheme.warning, icon: "warning", spinning: false},
            {tag: "failed", status: ProcessingStatus.Failed, text: "Failed", tint: TBTheme.error, icon: "xmark", spinning: false},
            {tag: "cancelled", status: ProcessingStatus.Cancelled, text: "Cancelled", tint: TBTheme.muted, icon: "", spinning: false}
        ];
    }

    function test_badge(data) {
        const item = createTemporaryObject(badge, testCase, {status: data.status});
        compare(item.text, data.text);
        compare(item.tint, data.tint);
        compare(item.iconName, data.icon);
        compare(item.spinning, data.spinning);
    }

    function test_progressNeverDividesByZero() {
        const view = createTemporaryObject(processing, testCase, {processedCount: 0, totalCount: 0});
        compare(findChild(view, "progress").value, 0);
        compare(findChild(view, "ofFiles").text, "0 of 0 files");
        view.totalCount = 4;
        view.processedCount = 3;
        compare(findChild(view, "progress").value, 0.75);
        compare(findChild(view, "currentFile").visible, false);
        view.currentFileName = "Kick 01.wav";
        compare(findChild(view, "currentFile").visible, true);
    }

    function test_detailSheetSizeAndDetails() {
        const sheet = createTemporaryObject(details, testCase, {fileName: "a.wav", status: ProcessingStatus.Done});
        sheet.open();
        tryCompare(sheet, "opened", true);
        compare(sheet.height, 200);
        compare(findChild(sheet.contentItem, "detailsToggle").visible, false);
        compare(findChild(sheet.contentItem, "detailMessage").text, "Done");
        sheet.close();
        tryCompare(sheet, "visible", false);

        sheet.status = ProcessingStatus.Failed;
        sheet.statusMessage = "Could not process \u201ca.wav\u201d.";
        sheet.errorDetails = "ffmpeg exit code 1\n\nbroken";
        sheet.showDetails = true;
        sheet.open(); // every opening starts folded
        tryCompare(sheet, "opened", true);
        compare(sheet.height, 360);
        compare(sheet.showDetails, false);
        compare(findChild(sheet.contentItem, "detailMessage").text, "Could not process \u201ca.wav\u201d.");
        const toggle = findChild(sheet.contentItem, "detailsToggle");
        compare(toggle.visible, true);
        mouseClick(toggle);
        compare(sheet.showDetails, true);
        compare(findChild(sheet.contentItem, "detailsText").text, "ffmpeg exit code 1\n\nbroken");
        sheet.close();
    }

    function test_dropZoneSumsUpWhatIsLoaded() {
        const zone = createTemporaryObject(dropZone, testCase, {fileCount: 0});
        compare(findChild(zone, "dropHere").visible, true);
        compare(findChild(zone, "loadedSummary").visible, false);
        zone.fileCount = 3;
        compare(findChild(zone, "loadedSummary").text, "3 files loaded  \u00b7  Individual files");
        zone.folderCount = 2;
        compare(findChild(zone, "loadedSummary").text, "3 files loaded  \u00b7  2 folders");
        compare(findChild(zone, "removeSelectedButton").enabled, false);
        zone.hasSelection = true;
        compare(findChild(zone, "removeSelectedButton").enabled, true);
        zone.canAnalyze = true;
        compare(findChild(zone, "analyzeButton").enabled, true);
        zone.isAnalyzing = true;
        compare(findChild(zone, "analyzeButton").enabled, false);
        zone.isDragOver = true;
        compare(zone.background.color, TBTheme.goldSubtle);
    }

    function test_footerShowsBothTexts() {
        const bar = createTemporaryObject(footer, testCase, {leadingText: "3 files", trailingText: "/out"});
        compare(findChild(bar, "footerLeading").text, "3 files");
        compare(findChild(bar, "footerTrailing").text, "/out");
        compare(bar.color, TBTheme.panel);
    }
}
