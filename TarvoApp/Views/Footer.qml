import QtQuick
import QtQuick.Layouts
import Tarvo

// What is ticked, and what can be done with it.
Rectangle {
    id: footer

    property bool compact: false

    readonly property bool cleans: App.cleaning.mayClean && App.ticked.hasTicked
    // What can be pressed and does nothing is a riddle.
    readonly property string cleanHelp: !App.cleaning.mayClean ? Words.cleanLater : App.ticked.hasTicked ? App.ticked.cleanHelp : Words.tickFirst

    color: Theme.surface
    implicitHeight: row.implicitHeight + (compact ? 14 : 24)

    Rectangle {
        color: Theme.hairline
        height: 1
        width: parent.width
    }
    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.margins: 24
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Line {
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            Layout.fillWidth: true
            font.pixelSize: Theme.strong
            maximumLineCount: 2
            text: App.ticked.selectedText
            wrapMode: Text.WordWrap
        }
        PlainButton {
            enabled: App.ticked.hasTicked
            help: Words.deselectAllHelp
            kind: PlainButton.Link
            text: Words.deselectAll

            onClicked: App.ticked.deselectAll()
        }
        PlainButton {
            enabled: App.cleaning.mayClean
            help: ModelWords.selectSafeHelp
            text: Words.selectSafe

            onClicked: App.ticked.selectSafe()
        }
        // A button that is disabled does not notice the pointer.
        Item {
            implicitHeight: clean.implicitHeight
            implicitWidth: clean.implicitWidth

            HoverHandler {
                id: over
            }
            Tip {
                text: footer.cleanHelp
                visible: over.hovered
            }
            PlainButton {
                id: clean

                Accessible.description: footer.cleanHelp
                anchors.fill: parent
                enabled: footer.cleans
                implicitHeight: Math.round(36 * Theme.scale)
                kind: PlainButton.Primary
                leftPadding: 20
                text: App.ticked.hasTicked ? App.ticked.cleanTitle + "…" : Words.clean

                onClicked: App.cleaning.requestClean()
            }
        }
    }
}
