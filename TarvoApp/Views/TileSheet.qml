import QtQuick
import Tarvo

// The tiles of the disk, or those of a folder. They stay made while the other sheet is shown.
Item {
    id: sheet

    required property TileList tiles

    property bool slides: true
    // Colors alone, while the sheet travels.
    property bool bare: false
    // Where the keys are, and what is there: other tiles may be there after a look at the disk.
    property int current: 0
    property string currentKey: ""
    readonly property bool filling: faces.running

    signal focusBegun(MapTile tile)
    signal focusEnded(MapTile tile)
    signal hoverBegun(MapTile tile)
    signal hoverEnded(MapTile tile)
    signal menuWanted(string key, Item at)
    signal replacing
    signal zoomWanted(string key)

    function at(index: int): MapTile {
        return repeater.itemAt(index) as MapTile;
    }
    function take(tile: MapTile) {
        current = tile.index;
        currentKey = tile.key;
        focusBegun(tile);
    }
    // The tile under the pointer; null where there is none.
    function hovered(): MapTile {
        for (let index = 0; index < tiles.count; ++index) {
            const tile = at(index);
            if (tile && tile.hovered)
                return tile;
        }
        return null;
    }

    // Another folder is read from its largest.
    function start() {
        current = 0;
        currentKey = "";
    }
    // What the keys were on, while it is there; else the largest.
    function settle() {
        const before = at(current);
        const focused = before && before.activeFocus;
        let next = 0;
        for (let index = 0; index < tiles.count && next === 0; ++index)
            next = at(index)?.key === currentKey ? index : 0;
        // An item that has the focus must not leave the tab order.
        if (focused && next !== current)
            at(next)?.forceActiveFocus(Qt.TabFocusReason);
        else
            current = next;
    }

    onBareChanged: if (bare) writing.from = 0

    // Where drawing is done by software, a place that changes as a whole is far cheaper than a thousand places in it, and
    // what lies deepest is told first when the sheet goes.
    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Connections {
        function onReplacing() {
            sheet.replacing();
            faces.from = 0;
        }

        function onCountChanged() {
            Qt.callLater(sheet.settle);
        }

        target: sheet.tiles
    }
    // What is in the tiles follows them, tile by tile for as long as a frame has to spare.
    component Follower: FrameAnimation {
        property int from: 0
        property bool allowed: true

        running: allowed && from < sheet.tiles.count

        onTriggered: {
            const begun = Date.now();
            while (running && Date.now() - begun < 3)
                ++from;
        }
    }

    Follower {
        id: faces
    }
    // And so does what is written on them, when they have arrived.
    Follower {
        id: writing

        allowed: !sheet.bare
    }
    Repeater {
        id: repeater

        model: sheet.tiles

        MapTile {
            id: tile

            // What has the focus must not leave the tab order while the tiles are fewer for a moment.
            activeFocusOnTab: tile.activeFocus || tile.index === Math.min(sheet.current, sheet.tiles.count - 1) // qmllint disable unqualified
            bare: sheet.bare || tile.index >= writing.from // qmllint disable unqualified
            filled: tile.index < faces.from // qmllint disable unqualified
            slides: sheet.slides // qmllint disable unqualified

            onActiveFocusChanged: tile.activeFocus ? sheet.take(tile) : sheet.focusEnded(tile) // qmllint disable unqualified
            onHoveredChanged: tile.hovered ? sheet.hoverBegun(tile) : sheet.hoverEnded(tile) // qmllint disable unqualified
            onMenuWanted: (key, at) => sheet.menuWanted(key, at) // qmllint disable unqualified
            onZoomWanted: key => sheet.zoomWanted(key) // qmllint disable unqualified
        }
    }
}
