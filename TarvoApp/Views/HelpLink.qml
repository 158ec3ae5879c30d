import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A question that leads to its topic.
Button {
    id: link

    Accessible.name: text
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    font.underline: hovered || visualFocus
    horizontalPadding: 0
    verticalPadding: 2

    // A button says its own role when it is complete.
    Component.onCompleted: Accessible.role = Accessible.Link
    Keys.onEnterPressed: link.clicked()
    Keys.onReturnPressed: link.clicked()

    background: Item {
        FocusRing {
            anchors.margins: 0
            visible: link.visualFocus
        }
    }
    contentItem: Line { // qmllint disable deferred-property-id
        Accessible.ignored: true
        font: link.font
        leftPadding: arrow.width + 4
        text: link.text
        wrapMode: Text.WordWrap

        Glyph {
            id: arrow

            color: Theme.secondaryText
            height: width
            shape: "next"
            width: Math.round(14 * Theme.scale)
            y: Math.round(2 * Theme.scale)
        }
    }
}
