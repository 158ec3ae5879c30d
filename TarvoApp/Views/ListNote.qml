import QtQuick
import QtQuick.Layouts
import Tarvo

// What holds for the whole list now, and the way to end that.
RowLayout {
    id: note

    required property string says
    required property string end
    // The way to end it is a sign, for want of room.
    property bool brief: false

    signal ended

    spacing: 4
    visible: says.length > 0

    Line {
        Accessible.role: Accessible.AlertMessage
        Layout.fillWidth: true
        Layout.leftMargin: 8
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        maximumLineCount: 2
        text: note.says
        wrapMode: Text.WordWrap
    }
    PlainButton {
        font.pixelSize: Theme.small
        implicitHeight: Math.round(26 * Theme.scale)
        kind: PlainButton.Link
        text: note.end
        visible: !note.brief

        onClicked: note.ended()
    }
    IconButton {
        name: note.end
        shape: "close"
        side: Math.round(26 * Theme.scale)
        visible: note.brief

        onClicked: note.ended()
    }
}
