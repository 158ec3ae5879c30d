import QtQuick
import QtQuick.Layouts
import Tarvo

// What is ticked, and what can be done with it.
Rectangle {
    id: footer

    color: Theme.surface
    implicitHeight: row.implicitHeight + 24

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
            enabled: App.selectedBytes > 0
            help: Words.deselectAllHelp
            kind: PlainButton.Link
            text: Words.deselectAll

            onClicked: App.deselectAll()
        }
        PlainButton {
            help: Words.selectSafeHelp
            text: Words.selectSafe

            onClicked: App.selectSafe()
        }
        PlainButton {
            enabled: App.selectedBytes > 0
            help: App.cleanHelp
            implicitHeight: Math.round(36 * Theme.scale)
            kind: PlainButton.Primary
            leftPadding: 20
            text: App.selectedBytes > 0 ? App.cleanTitle + "…" : Words.clean

            onClicked: App.requestClean()
        }
    }
}
