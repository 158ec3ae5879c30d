import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A question of the help, above its answer while that is wanted.
Button {
    id: row

    required property var modelData
    required property int index

    readonly property bool isExpanded: App.help.expandedHelp === modelData.id

    Accessible.description: isExpanded ? modelData.answer : SideWords.hidden
    Accessible.name: text
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    leftPadding: 8
    padding: 8
    rightPadding: 16
    text: modelData.question

    onActiveFocusChanged: if (activeFocus) ListView.view.currentIndex = index
    Keys.onEnterPressed: row.clicked()
    Keys.onReturnPressed: row.clicked()
    onClicked: App.help.expandedHelp = isExpanded ? "" : modelData.id

    background: Rectangle {
        border.color: row.isExpanded ? Theme.hairline : "transparent"
        color: row.isExpanded ? Theme.surface : row.hovered ? Theme.raised : "transparent"
        radius: Theme.buttonRadius

        FocusRing {
            anchors.margins: 0
            radius: Theme.buttonRadius
            visible: row.visualFocus
        }
    }
    contentItem: Item { // qmllint disable deferred-property-id
        implicitHeight: texts.implicitHeight

        Glyph {
            id: arrow

            color: Theme.secondaryText
            height: width
            rotation: row.isExpanded ? 90 : 0
            shape: "next"
            width: Math.round(16 * Theme.scale)
            y: (question.height / Math.max(question.lineCount, 1) - height) / 2

            Behavior on rotation {
                NumberAnimation { duration: Theme.hoverTime }
            }
        }
        Column {
            id: texts

            anchors.left: arrow.right
            anchors.leftMargin: 8
            anchors.right: parent.right
            spacing: 6

            Line {
                id: question

                Accessible.ignored: true
                font.weight: row.isExpanded ? Font.DemiBold : Font.Normal
                text: row.text
                width: parent.width
                wrapMode: Text.WordWrap
            }
            Line {
                Accessible.ignored: true
                bottomPadding: 4
                lineHeight: 1.3
                text: row.modelData.answer
                visible: row.isExpanded
                width: parent.width
                wrapMode: Text.WordWrap
            }
        }
    }
}
