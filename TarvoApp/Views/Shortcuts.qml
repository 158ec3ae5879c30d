import QtQuick
import Tarvo

// What the keyboard does wherever it is.
Item {
    id: keys

    property bool active: true

    signal settingsWanted
    signal helpWanted

    component Key: Shortcut {
        enabled: keys.active
    }

    Key { sequence: "Ctrl+R"; onActivated: App.scan() }
    Key { sequence: "Ctrl+Shift+S"; onActivated: App.selectSafe() }
    Key { sequence: "Ctrl+Backspace"; onActivated: App.requestClean() }
    Key { sequence: "Ctrl+F"; onActivated: App.search() }
    Key { sequence: "Ctrl+Z"; enabled: keys.active && App.canUndo; onActivated: App.undoLastCleanup() }
    Key { sequence: "Ctrl+,"; onActivated: keys.settingsWanted() }
    Key { sequence: "F1"; onActivated: keys.helpWanted() }
    Key { sequence: "Esc"; enabled: keys.active && App.map.depth > 0; onActivated: App.map.zoomOut(App.map.depth - 1) }
}
