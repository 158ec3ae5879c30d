import QtQuick
import Tarvo

// What the keyboard does wherever it is.
Item {
    id: keys

    property bool active: true

    signal settingsWanted
    signal helpWanted
    signal quitWanted

    Shortcut { enabled: keys.active; sequence: "Ctrl+R"; onActivated: App.scanning.scan() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+Shift+S"; onActivated: App.ticked.selectSafe() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+Backspace"; onActivated: App.cleaning.requestClean() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+F"; onActivated: App.places.search() }
    Shortcut { enabled: keys.active && App.holding.canUndo; sequence: "Ctrl+Z"; onActivated: App.holding.undoLastCleanup() }
    Shortcut { enabled: keys.active; sequence: "Ctrl+,"; onActivated: keys.settingsWanted() }
    Shortcut { enabled: keys.active; sequence: "F1"; onActivated: keys.helpWanted() }
    Shortcut { context: Qt.ApplicationShortcut; sequence: "Ctrl+Q"; onActivated: keys.quitWanted() }
    Shortcut {
        readonly property bool zoomed: App.map.depth > 0 || App.map.zoomLoading
        readonly property bool chosen: App.places.chosenText.length > 0

        enabled: keys.active && (chosen || zoomed || App.places.onlyGroup >= 0)
        sequence: "Esc"

        // What was done last is what one wants to be rid of first.
        onActivated: {
            if (chosen)
                App.places.chooseNone();
            else if (zoomed)
                App.map.zoomOut(App.map.zoomLoading ? App.map.depth : App.map.depth - 1);
            else
                App.places.showAllGroups();
        }
    }
}
