import QtQuick
import Tarvo

// Where the keyboard is.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    border.color: Theme.accent
    border.width: 2
    color: "transparent"
    radius: Theme.buttonRadius + 3
}
