import QtQuick
import QtQuick.Layouts
import Tarvo

// The picture of the disk. No layout as a whole: as wide as all that is in it, that would push the map under the list. Its
// first line is one: where the way into a folder took its width from a row beside it, its steps were laid out after they
// had been deleted.
Item {
    id: view

    // In a low window the map has every line that can be spared.
    property bool compact: false

    signal menuWanted(string key, Item at)

    readonly property int depth: App.map.depth
    // Turned only after it is known where the focus was.
    property bool opened: false
    readonly property TileSheet shown: opened ? inside : overview
    // The last one that the pointer was on.
    property MapTile pointed: null

    function move(dx: int, dy: int) {
        goTo(App.map.neighbour(shown.current, dx, dy));
    }
    function goTo(index: int) {
        if (index < 0)
            return;
        // Becomes the current one by that; an item that has the focus must not leave the tab order.
        shown.at(index).forceActiveFocus(Qt.TabFocusReason);
        dwelling.byKeys = true;
    }

    function point(tile: MapTile) {
        leaving.stop();
        pointed = tile;
        App.places.mapHovered = tile.key;
    }
    function leave(tile: MapTile) {
        if (!tile.hovered && App.places.mapHovered === tile.key)
            leaving.restart();
    }
    function letGo(tile: MapTile) {
        dwelling.byKeys = false;
        leave(tile);
    }

    function zoomInto(key: string) {
        App.map.zoomInto(key);
    }

    // Back from another window nobody has gone to the tile that has the focus again.
    readonly property bool current: Window.active

    onCurrentChanged: Qt.callLater(dwelling.stop)
    onDepthChanged: {
        const hadFocus = area.activeFocus;
        App.places.mapHovered = "";
        opened = depth > 0;
        if (opened)
            inside.start();
        if (hadFocus && App.map.count > 0)
            shown.at(Math.min(shown.current, App.map.count - 1)).forceActiveFocus(Qt.TabFocusReason);
        sheet.travel(depth > sheet.depth);
        sheet.depth = depth;
    }

    RowLayout {
        id: head

        readonly property bool zoomed: App.map.depth > 0 || App.map.zoomLoading
        // The legend keeps its words: where there is no room for them beside the rest they go below. By the width
        // alone: what measured the rest would change it in the middle of the layout, and a map that is as high with
        // a folder open as without keeps its tiles where they are, and what is written on them.
        readonly property bool stacked: view.width < (view.compact ? 650 : 1000) * Theme.scale

        height: Theme.controlHeight
        spacing: 12
        width: parent.width

        Breadcrumb {
            Layout.fillWidth: true
            Layout.leftMargin: -6
            amounts: App.map.zoomAmounts
            help: Words.escapeHelp
            loading: App.map.zoomLoading
            most: head.stacked || !view.compact ? 100 : 1
            note: App.map.zoomLoading ? Words.opening : App.map.skippedText ? Words.skipped.arg(App.map.skippedText) : ""
            start: Words.disk
            titles: App.map.zoomTitles
            visible: head.zoomed || head.stacked

            onBackWanted: depth => App.map.zoomOut(depth)
            onStopWanted: App.map.zoomOut(App.map.depth)
        }
        ToggleBox {
            id: whole

            readonly property var row: App.places.openedRow

            Accessible.name: Words.tickAll.arg(row.title || "")
            checked: row.ticked === true
            enabled: row.tick === true && !App.activity.isBusy
            text: Words.tickWhole
            visible: App.map.depth > 0 && row.title !== undefined && (row.tick === true || row.reason.length > 0)

            onToggled: {
                App.places.toggle(row.key);
                checked = Qt.binding(() => whole.row.ticked === true);
            }

            Tip {
                text: whole.row.reason || whole.Accessible.name
                visible: whole.hovered
            }
        }
        Legend {
            visible: !head.stacked
        }
        Item {
            Layout.fillWidth: true
            visible: !head.zoomed && !head.stacked
        }
        DisksButton {
            visible: offers && (!head.zoomed || view.width > 700 * Theme.scale)
        }
        ToggleBox {
            checked: App.settings.showWholeDisk
            text: Words.wholeDisk
            visible: App.map.depth === 0

            onToggled: App.settings.showWholeDisk = checked
        }
    }
    Legend {
        id: below

        visible: head.stacked
        x: -2
        y: head.height + 6
    }
    FocusScope {
        id: area

        Accessible.name: Words.mapName
        Accessible.role: Accessible.Grouping
        // Always: what is drawn of the map would be put together anew for each journey.
        clip: true
        height: Math.max(0, view.height - y)
        width: view.width
        y: head.height + 6 + (head.stacked ? below.height + 6 : 0)

        onHeightChanged: {
            settled.restart();
            App.map.height = height;
        }
        onWidthChanged: {
            settled.restart();
            App.map.width = width;
        }

        Keys.onPressed: event => {
            event.accepted = App.map.count > 0 && [Qt.Key_Home, Qt.Key_End].includes(event.key);
            if (event.accepted)
                view.goTo(event.key === Qt.Key_Home ? 0 : App.map.count - 1);
        }
        Keys.onDownPressed: view.move(0, 1)
        Keys.onLeftPressed: view.move(-1, 0)
        Keys.onRightPressed: view.move(1, 0)
        Keys.onUpPressed: view.move(0, -1)

        // Tiles follow the window's edge at once, and slide only when the disk changes.
        Timer {
            id: settled

            interval: 250
        }
        // Tiles for a full map, before there is one.
        FrameAnimation {
            running: App.map.wantsSpare && !overview.filling && !inside.filling

            onTriggered: App.map.makeSpare()
        }
        Item {
            id: sheet

            property int depth: 0
            // Where the tiles are while the map travels, in parts of the map; all of it when it has arrived.
            property rect start: Qt.rect(0, 0, 1, 1)
            property real progress: 1
            // What is left of the way then is less than a pixel, and texts are written once, in their places.
            readonly property bool arrived: !travelling.running || progress > 0.998
            readonly property real ahead: arrived ? 0 : 1 - progress
            readonly property bool slides: Theme.moves && !settled.running

            // Into a folder the map grows out of its tile, and back it shrinks until that tile is where it was.
            function travel(inwards: bool) {
                // Before the map has a place of its own there is none to come from.
                if (width <= 0 || height <= 0)
                    return;
                const place = App.map.zoomPlace;
                // From nearer than that nothing could be followed.
                const wide = Math.max(place.width / width, 0.2);
                const high = Math.max(place.height / height, 0.2);
                const left = Math.max(0, Math.min(place.x / width, 1 - wide));
                const top = Math.max(0, Math.min(place.y / height, 1 - high));
                start = inwards ? Qt.rect(left, top, wide, high)
                                : Qt.rect(-left / wide, -top / high, 1 / wide, 1 / high);
                travelling.restart();
            }

            anchors.fill: parent

            transform: [
                Scale {
                    xScale: 1 + (sheet.start.width - 1) * sheet.ahead
                    yScale: 1 + (sheet.start.height - 1) * sheet.ahead
                },
                Translate {
                    x: sheet.start.x * sheet.width * sheet.ahead
                    y: sheet.start.y * sheet.height * sheet.ahead
                }
            ]

            NumberAnimation {
                id: travelling

                duration: Theme.zoomTime
                easing.type: Easing.OutQuint
                from: 0
                property: "progress"
                target: sheet
                to: 1

                // Another tile is below the pointer now, which has not moved.
                onFinished: {
                    const tile = view.shown.hovered();
                    if (tile)
                        view.point(tile);
                }
            }

            TileSheet {
                id: overview

                anchors.fill: parent
                bare: !sheet.arrived
                slides: sheet.slides
                tiles: App.map.overview
                visible: !view.opened

                onFocusBegun: dwelling.restart()
                onFocusEnded: tile => view.letGo(tile)
                onHoverBegun: tile => view.point(tile)
                onHoverEnded: tile => view.leave(tile)
                onMenuWanted: (key, at) => view.menuWanted(key, at)
                onReplacing: settled.restart()
                onZoomWanted: key => view.zoomInto(key)
            }
            TileSheet {
                id: inside

                anchors.fill: parent
                bare: !sheet.arrived
                slides: sheet.slides
                tiles: App.map.inside
                visible: view.opened

                onFocusBegun: dwelling.restart()
                onFocusEnded: tile => view.letGo(tile)
                onHoverBegun: tile => view.point(tile)
                onHoverEnded: tile => view.leave(tile)
                onMenuWanted: (key, at) => view.menuWanted(key, at)
                onReplacing: settled.restart()
                onZoomWanted: key => view.zoomInto(key)
            }
            // The map appears from below it, and all of it changes as one place while it travels.
            Rectangle {
                anchors.fill: parent
                color: Qt.alpha(Theme.window, Math.max(0.005, sheet.ahead - 0.2))
                visible: !sheet.arrived
            }
        }
        // The gap between two tiles is no reason to let go of the first.
        Timer {
            id: leaving

            interval: 80

            onTriggered: App.places.mapHovered = ""
        }
        // Whoever stays on a tile with the keys is told of it as with the pointer, which may lie on the map meanwhile.
        Timer {
            id: dwelling

            property bool byKeys: false

            interval: 400

            onTriggered: {
                const tile = view.shown.at(view.shown.current);
                if (!tile || !tile.activeFocus || !byKeys && view.shown.hovered())
                    return;
                if (sheet.arrived)
                    view.point(tile);
                else
                    restart();
            }
        }
        TileCard {
            area: sheet
            tile: view.pointed && view.pointed.key.length > 0 && view.pointed.key === App.places.mapHovered ? view.pointed
                                                                                                            : null
        }
    }
}
