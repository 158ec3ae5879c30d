import QtQuick
import Tarvo

// What the keyboard does wherever it is.
Item {
    id: keys

    property bool active: true
    // Something goes on that is not done until it ends.
    property bool works: false

    signal settingsWanted
    signal helpWanted
    signal quitWanted
    signal historyWanted
    signal growthWanted
    signal photosWanted
    signal exploreWanted
    signal openWanted
    signal saveReportWanted
    signal savePlanWanted

    Shortcut { enabled: keys.active; sequence: "Ctrl+R"; onActivated: App.scanning.scan() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+Shift+S"; onActivated: App.ticked.selectSafe() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+Backspace"; onActivated: App.cleaning.requestClean() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+F"; onActivated: App.list.search() }
    Shortcut { enabled: keys.active && App.holding.canUndo; sequence: "Ctrl+Z"; onActivated: App.holding.undoLastCleanup() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+,"; onActivated: keys.settingsWanted() }
    Shortcut { enabled: keys.active; sequence: "F1"; onActivated: keys.helpWanted() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+H"; onActivated: keys.historyWanted() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+G"; onActivated: keys.growthWanted() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+E"; onActivated: keys.exploreWanted() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+P"; onActivated: keys.photosWanted() }
    Shortcut { enabled: keys.active && App.files.mayOpen; sequence: "Ctrl+O"; onActivated: keys.openWanted() }
    Shortcut { enabled: keys.active && App.files.maySaveReport; sequence: "Ctrl+S"; onActivated: keys.saveReportWanted() }
    Shortcut { enabled: keys.active && App.files.maySavePlan; sequence: "Ctrl+Alt+S"; onActivated: keys.savePlanWanted() }
    Shortcut { context: Qt.ApplicationShortcut; sequence: "Ctrl+Q"; onActivated: keys.quitWanted() }
    Shortcut {
        readonly property bool zoomed: App.map.depth > 0 || App.map.zoomLoading
        readonly property bool chosen: App.list.chosenText.length > 0
        readonly property bool only: App.list.onlyGroup >= 0 || App.list.onlyKind >= 0

        enabled: keys.active && (chosen || zoomed || only || keys.works)
        sequence: "Esc"

        // What was done last is what one wants to be rid of first.
        onActivated: {
            if (chosen)
                App.list.chooseNone();
            else if (zoomed)
                App.map.zoomOut(App.map.zoomLoading ? App.map.depth : App.map.depth - 1);
            else if (only)
                App.list.showAllGroups();
            else
                App.activity.stop();
        }
    }
}
