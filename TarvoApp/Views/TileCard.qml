import QtQuick
import QtQuick.Layouts
import Tarvo

// All that is known about the tile under the pointer.
Rectangle {
    id: card

    required property Item tile
    required property Item area

    // A low map has no room for all of it, and its window has.
    readonly property Item window: area.Window.contentItem
    property point corner: Qt.point(0, 0)

    // The last tile stays on the card while it fades.
    property MapTile told: null

    onTileChanged: {
        if (!tile)
            return;
        // The area itself may be on its way into a folder.
        corner = area.parent.mapToItem(window, 0, 0);
        told = tile as MapTile;
    }

    // The tile itself says all of it.
    component Told: Line { Accessible.ignored: true }

    border.color: Theme.hairline
    color: Theme.surface
    height: texts.implicitHeight + 24
    opacity: tile ? 1 : 0
    parent: window
    radius: Theme.cardRadius
    visible: opacity > 0
    width: Math.round(270 * Math.sqrt(Theme.scale))
    x: {
        if (!told)
            return 0;
        const right = told.x + told.width + 8;
        const left = told.x - width - 8;
        const beside = right + width <= area.width ? right : left >= 0 ? left : area.width - width - 12;
        // The map may have come below the pointer before it had its place.
        return Math.round(Math.max(8, Math.min(corner.x + beside, (window ? window.width : 0) - width - 8)));
    }
    y: told && window ? Math.round(Math.max(8, Math.min(corner.y + told.y + 8,
                                                        Math.max(corner.y + area.height, window.height - 8) - height))) : 0
    z: 10

    Behavior on opacity {
        NumberAnimation { duration: Theme.hoverTime }
    }

    ColumnLayout {
        id: texts

        anchors.left: parent.left
        anchors.margins: 12
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 4

        Told {
            Layout.fillWidth: true
            font.pixelSize: Theme.strong
            font.weight: Font.DemiBold
            maximumLineCount: 2
            text: card.told ? card.told.label : ""
            wrapMode: Text.Wrap
        }
        Told {
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            text: card.told ? card.told.bytes : ""
        }
        Told {
            Layout.fillWidth: true
            color: Theme.secondaryText
            maximumLineCount: 4
            text: card.told ? card.told.detail : ""
            visible: text.length > 0
            wrapMode: Text.Wrap
        }
        Told {
            Layout.fillWidth: true
            maximumLineCount: 4
            text: card.told ? card.told.known : ""
            visible: text.length > 0
            wrapMode: Text.Wrap
        }
        Rectangle {
            Layout.bottomMargin: 2
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            Layout.topMargin: 4
            color: Theme.hairline
        }
        Told {
            Layout.fillWidth: true
            font.weight: Font.DemiBold
            text: card.told ? card.told.word : ""
            visible: text.length > 0
        }
        Told {
            Layout.fillWidth: true
            maximumLineCount: 3
            text: card.told ? card.told.status : ""
            wrapMode: Text.Wrap
        }
        Told {
            Layout.fillWidth: true
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: Words.magnifier
            visible: card.told ? card.told.canZoom : false
            wrapMode: Text.Wrap
        }
    }
}
