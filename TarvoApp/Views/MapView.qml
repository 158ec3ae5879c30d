import QtQuick
import QtQuick.Layouts
import Tarvo

// The picture of the disk.
ColumnLayout {
    id: view

    signal menuWanted(string key, Item at)

    property string hot: ""
    property int current: 0
    readonly property int depth: App.map.depth

    function move(dx: int, dy: int) {
        const next = App.map.neighbour(current, dx, dy);
        if (next >= 0) {
            // Becomes the current one by that; an item that has the focus must not leave the tab order.
            tiles.itemAt(next).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    // After a journey another tile is below the pointer, which has not moved.
    function tellHovered() {
        for (let at = 0; at < App.map.count; ++at) {
            const tile = tiles.itemAt(at) as MapTile;
            if (tile && tile.hovered)
                App.places.mapHovered = tile.key;
        }
    }

    function zoomInto(key: string) {
        App.map.zoomInto(key);
    }

    spacing: 6

    onDepthChanged: {
        App.places.mapHovered = "";
        current = 0;
        if (area.activeFocus && App.map.count > 0)
            tiles.itemAt(0).forceActiveFocus(Qt.TabFocusReason);
        sheet.travel(depth > sheet.depth);
        sheet.depth = depth;
    }

    Connections {
        function onReplacing() {
            settled.restart();
            filling.from = 0;
        }

        target: App.map
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        Breadcrumb {
            Layout.fillWidth: true
            Layout.leftMargin: -6
            amounts: App.map.zoomAmounts
            help: Words.escapeHelp
            loading: App.map.zoomLoading
            note: App.map.zoomLoading ? Words.opening : App.map.skippedText ? Words.skipped.arg(App.map.skippedText) : ""
            start: Words.disk
            titles: App.map.zoomTitles
            visible: App.map.depth > 0 || App.map.zoomLoading

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
            // Where the way into a folder needs the room, the words are in the tips.
            compact: view.width < (App.map.depth > 0 || App.map.zoomLoading ? 1000 : 600) * Theme.scale
        }
        Item {
            Layout.fillWidth: true
            visible: App.map.depth === 0 && !App.map.zoomLoading
        }
        DisksButton {
            visible: offers && (App.map.depth === 0 || view.width > 700 * Theme.scale)
        }
        ToggleBox {
            checked: App.settings.showWholeDisk
            text: Words.wholeDisk
            visible: App.map.depth === 0

            onToggled: App.settings.showWholeDisk = checked
        }
    }
    FocusScope {
        id: area

        Accessible.name: Words.mapName
        Accessible.role: Accessible.Grouping
        Layout.fillHeight: true
        Layout.fillWidth: true
        clip: travelling.running

        onHeightChanged: {
            settled.restart();
            App.map.height = height;
        }
        onWidthChanged: {
            settled.restart();
            App.map.width = width;
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
        // What is in the tiles follows them a few tiles a frame.
        FrameAnimation {
            id: filling

            property int from: 0

            running: from < App.map.count

            onTriggered: from += 4
        }
        // Tiles for a full map, before there is one.
        FrameAnimation {
            running: App.map.wantsSpare && !filling.running

            onTriggered: App.map.makeSpare()
        }
        Item {
            id: sheet

            property int depth: 0
            // Where the tiles are while the map travels, in parts of the map; all of it when it has arrived.
            property rect start: Qt.rect(0, 0, 1, 1)
            property real progress: 1

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
            opacity: Math.min(1, 0.2 + progress)

            transform: [
                Scale {
                    xScale: sheet.start.width + (1 - sheet.start.width) * sheet.progress
                    yScale: sheet.start.height + (1 - sheet.start.height) * sheet.progress
                },
                Translate {
                    x: sheet.start.x * sheet.width * (1 - sheet.progress)
                    y: sheet.start.y * sheet.height * (1 - sheet.progress)
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

                onFinished: view.tellHovered()
            }

            Repeater {
                id: tiles

                model: App.map

                MapTile {
                    id: tile

                    activeFocusOnTab: tile.index === Math.min(view.current, App.map.count - 1) // qmllint disable unqualified
                    bare: travelling.running && sheet.progress < 0.97 // qmllint disable unqualified
                    filled: tile.index < filling.from // qmllint disable unqualified
                    slides: Theme.moves && !settled.running // qmllint disable unqualified

                    onActiveFocusChanged: if (tile.activeFocus) view.current = tile.index // qmllint disable unqualified
                    onHoveredChanged: {
                        if (tile.hovered) {
                            leaving.stop(); // qmllint disable unqualified
                            App.places.mapHovered = tile.key;
                        } else if (App.places.mapHovered === tile.key) {
                            leaving.restart(); // qmllint disable unqualified
                        }
                    }
                    onMenuWanted: (key, at) => view.menuWanted(key, at) // qmllint disable unqualified
                    onZoomWanted: key => view.zoomInto(key) // qmllint disable unqualified
                }
            }
        }
        // The gap between two tiles is no reason to let go of the first.
        Timer {
            id: leaving

            interval: 80

            onTriggered: App.places.mapHovered = ""
        }
        TileCard {
            area: sheet
            tile: {
                for (let at = 0; at < App.map.count; ++at) {
                    const item = tiles.itemAt(at) as MapTile;
                    if (item && item.key === App.places.mapHovered)
                        return item;
                }
                return null;
            }
        }
    }
}
