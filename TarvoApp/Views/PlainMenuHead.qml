import QtQuick
import Tarvo

// What a menu is about, above what can be chosen in it.
Item {
    property alias text: line.text

    implicitHeight: line.implicitHeight + 12
    implicitWidth: Math.min(line.implicitWidth, Math.round(340 * Theme.scale)) + 24

    Line {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        color: Theme.secondaryText
        elide: Text.ElideMiddle
        font.pixelSize: Theme.small
        verticalAlignment: Text.AlignVCenter
    }
}
