import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// The answer to the last question, and the topics to read on with.
Rectangle {
    id: card

    border.color: Theme.hairline
    color: Theme.surface
    implicitHeight: Math.min(column.implicitHeight, Math.round(190 * Theme.scale)) + 24
    radius: Theme.cardRadius
    visible: App.help.helpBusy || App.help.helpAnswer.length > 0

    Flickable {
        anchors.bottomMargin: 12
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: close.width + 8
        anchors.topMargin: 12
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: column.implicitHeight
        contentWidth: width

        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: column

            spacing: 6
            width: parent.width - 8

            Line {
                Accessible.name: text
                Accessible.role: Accessible.StaticText
                Layout.fillWidth: true
                color: App.help.helpBusy ? Theme.secondaryText : Theme.text
                lineHeight: 1.3
                text: App.help.helpBusy ? SideWords.thinking : App.help.helpAnswer
                wrapMode: Text.WordWrap
            }
            Line {
                Layout.fillWidth: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                text: Words.byAIHelp
                visible: App.help.helpByAI
                wrapMode: Text.WordWrap
            }
            Line {
                Layout.topMargin: 4
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                text: SideWords.related
                visible: links.count > 0
            }
            Repeater {
                id: links

                model: App.help.helpSources

                HelpLink {
                    required property var modelData

                    Layout.fillWidth: true
                    text: modelData.question

                    onClicked: App.help.show(modelData.id)
                }
            }
        }
    }
    IconButton {
        id: close

        anchors.margins: 6
        anchors.right: parent.right
        anchors.top: parent.top
        name: SideWords.closeAnswer
        shape: "close"
        side: Math.round(26 * Theme.scale)

        onClicked: App.help.forget()
    }
}
