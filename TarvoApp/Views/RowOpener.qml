import QtQuick
import Tarvo

// Shows all that is known of a row, or hides it again.
MouseArea {
    id: opener

    required property string key
    required property string title
    required property bool opened

    Accessible.name: opened ? Words.lessAbout.arg(title) : Words.moreAbout.arg(title)
    Accessible.role: Accessible.Button
    cursorShape: Qt.PointingHandCursor
    height: width
    hoverEnabled: true
    width: Math.round(20 * Theme.scale)

    Accessible.onPressAction: App.places.openRow(key, !opened)
    onClicked: App.places.openRow(key, !opened)

    Glyph {
        anchors.fill: parent
        color: opener.containsMouse ? Theme.text : Theme.secondaryText
        rotation: opener.opened ? 90 : 0
        shape: "next"

        Behavior on rotation {
            NumberAnimation { duration: Theme.hoverTime }
        }
    }
}
