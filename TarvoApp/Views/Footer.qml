import QtQuick
import QtQuick.Layouts
import Tarvo

// What is ticked, and what can be done with it.
Rectangle {
    id: footer

    property bool compact: false

    readonly property bool hasTicks: App.goalFraction > 0

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
            text: App.selectedText
            wrapMode: Text.WordWrap
        }
        PlainButton {
            enabled: footer.hasTicks
            help: Words.deselectAllHelp
            kind: PlainButton.Link
            text: Words.deselectAll

            onClicked: App.deselectAll()
        }
        PlainButton {
            help: ModelWords.selectSafeHelp
            text: Words.selectSafe

            onClicked: App.selectSafe()
        }
        PlainButton {
            enabled: footer.hasTicks
            help: App.cleanHelp
            implicitHeight: Math.round(36 * Theme.scale)
            kind: PlainButton.Primary
            leftPadding: 20
            text: footer.hasTicks ? App.cleanTitle + "…" : Words.clean

            onClicked: App.requestClean()
        }
    }
}
