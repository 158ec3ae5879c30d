import QtQuick
import QtQuick.Layouts
import Tarvo

// The picture of the disk.
ColumnLayout {
    id: view

    signal menuWanted(string key)

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

    function zoomInto(key: string) {
        App.map.zoomInto(key);
    }

    spacing: 6

    onDepthChanged: {
        App.mapHovered = "";
        current = 0;
        if (area.activeFocus && tiles.count > 0)
            tiles.itemAt(0).forceActiveFocus(Qt.TabFocusReason);
        appear.restart();
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        Breadcrumb {
            Layout.fillWidth: true
            Layout.leftMargin: -6
            visible: App.map.depth > 0 || App.map.zoomLoading
        }
        Legend {
            visible: App.map.depth === 0 && !App.map.zoomLoading
        }
        Item {
            Layout.fillWidth: true
            visible: App.map.depth === 0
        }
        DisksButton {}
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
        Item {
            id: sheet

            anchors.fill: parent

            Repeater {
                id: tiles

                model: App.map

                MapTile {
                    id: tile

                    activeFocusOnTab: tile.index === Math.min(view.current, App.map.count - 1) // qmllint disable unqualified
                    dimmed: App.map.depth === 0 && App.hovered.length > 0 && App.hovered !== tile.key
                    slides: Theme.moves && !settled.running // qmllint disable unqualified

                    onActiveFocusChanged: if (tile.activeFocus) view.current = tile.index // qmllint disable unqualified
                    onHoveredChanged: {
                        if (tile.hovered) {
                            leaving.stop(); // qmllint disable unqualified
                            App.mapHovered = tile.key;
                        } else if (App.mapHovered === tile.key) {
                            leaving.restart(); // qmllint disable unqualified
                        }
                    }
                    onMenuWanted: key => view.menuWanted(key) // qmllint disable unqualified
                    onZoomWanted: key => view.zoomInto(key) // qmllint disable unqualified
                }
            }
        }
        // The gap between two tiles is no reason to let go of the first.
        Timer {
            id: leaving

            interval: 80

            onTriggered: App.mapHovered = ""
        }
        TileCard {
            area: sheet
            tile: {
                for (let at = 0; at < tiles.count; ++at) {
                    const item = tiles.itemAt(at) as MapTile;
                    if (item && item.key === App.mapHovered)
                        return item;
                }
                return null;
            }
        }
        NumberAnimation {
            id: appear

            duration: Theme.shortTime
            from: 0
            property: "opacity"
            target: sheet
            to: 1
        }
    }
}
