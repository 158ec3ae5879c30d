import QtQuick
import QtQuick.Layouts
import Tarvo

// The lower edge of a window beside the main one: what there is to be told, what can be done, and closing it.
Rectangle {
    id: footer

    property string message: ""
    default property alias actions: row.data

    signal closeWanted

    color: Theme.window
    implicitHeight: close.implicitHeight + 24

    Rectangle {
        color: Theme.hairline
        height: 1
        width: parent.width
    }
    Line {
        id: told

        anchors.left: parent.left
        anchors.leftMargin: 24
        anchors.right: row.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        maximumLineCount: 2
        text: footer.message
        wrapMode: Text.WordWrap
    }
    RowLayout {
        id: row

        anchors.right: close.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
    PlainButton {
        id: close

        anchors.right: parent.right
        anchors.rightMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        text: Words.close

        onClicked: footer.closeWanted()
    }
}
