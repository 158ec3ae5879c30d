import QtQuick
import Tarvo

// One photo of the review: the picture, what it is, and what becomes of it.
Item {
    id: tile

    required property int photo
    required property string source
    required property string name
    required property string facts
    required property bool isFilm
    required property int group
    required property bool isFirst
    required property bool isProposed
    required property bool isChosen

    // Whether the keyboard is on it.
    property bool current: false
    property bool grouped: false

    signal picked
    signal toggled
    signal previewWanted

    // A date is never torn apart.
    readonly property string parts: facts.split(" · ").map(part => part.replace(/ /g, "\u00a0")).join(" · ")
    readonly property string state_: isChosen ? SideWords.chosenToGo : isProposed ? SideWords.proposed : ""

    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.description: state_
    Accessible.focusable: true
    Accessible.name: name + ", " + (isFilm ? SideWords.film + ", " : "") + facts
    Accessible.role: Accessible.CheckBox

    Accessible.onPressAction: tile.toggled()
    Accessible.onToggleAction: tile.toggled()

    Rectangle {
        id: card

        anchors.fill: parent
        anchors.margins: 4
        border.color: tile.current ? Theme.accent : tile.isChosen ? Theme.danger : "transparent"
        border.width: 2
        // Neighboring groups are told apart without a word.
        color: tile.grouped && tile.group % 2 === 1 ? Theme.raised : Theme.surface
        radius: Theme.buttonRadius

        Item {
            id: frame

            anchors.bottom: words.top
            anchors.left: parent.left
            anchors.margins: 6
            anchors.right: parent.right
            anchors.top: parent.top

            Glyph {
                anchors.centerIn: parent
                color: Theme.secondaryText
                height: 40
                opacity: 0.45
                shape: tile.isFilm ? "film" : "photos"
                visible: picture.status !== Image.Ready || picture.implicitWidth <= 1
                width: 40
            }
            Image {
                id: picture

                anchors.fill: parent
                asynchronous: true
                cache: false
                fillMode: Image.PreserveAspectFit
                opacity: tile.isChosen ? 0.45 : 1
                source: tile.source
            }
            Rectangle {
                anchors.right: parent.right
                anchors.top: parent.top
                color: Theme.surface
                height: box.height + 8
                radius: height / 2
                width: box.width + 8

                TickBox {
                    id: box

                    anchors.centerIn: parent
                    ink: tile.isChosen ? Theme.danger : Theme.text
                    tickState: tile.isChosen ? Kinds.Selected : Kinds.Unselected
                }
                TapHandler {
                    onTapped: tile.toggled()
                }
            }
            Rectangle {
                anchors.left: parent.left
                anchors.top: parent.top
                color: Theme.reached
                height: kept.implicitHeight + 6
                radius: height / 2
                visible: tile.isProposed
                width: kept.implicitWidth + 14

                Line {
                    id: kept

                    anchors.centerIn: parent
                    color: Theme.dark ? Theme.darkInk : Theme.lightInk
                    font.pixelSize: Theme.small
                    text: SideWords.proposed
                }
            }
        }
        Column {
            id: words

            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.margins: 6
            anchors.right: parent.right

            Line {
                Accessible.ignored: true
                elide: Text.ElideMiddle
                font.pixelSize: Theme.small
                text: tile.name
                width: parent.width
            }
            Line {
                Accessible.ignored: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                maximumLineCount: 2
                text: tile.parts
                width: parent.width
                wrapMode: Text.WordWrap
            }
        }
        TapHandler {
            onDoubleTapped: tile.previewWanted()
            onTapped: tile.picked()
        }
    }
}
