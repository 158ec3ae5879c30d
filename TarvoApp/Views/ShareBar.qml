import QtQuick
import Tarvo

// A part of the whole, as a line.
Rectangle {
    id: bar

    required property real share
    property color ink: Theme.accent

    color: Theme.raised
    implicitHeight: 4
    radius: 2

    Rectangle {
        color: bar.ink
        height: parent.height
        radius: parent.radius
        width: Math.max(height, parent.width * bar.share)
    }
}
