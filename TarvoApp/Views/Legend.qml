import QtQuick
import Tarvo

// What the colors of the map mean.
Row {
    id: legend

    spacing: 16

    Repeater {
        model: Words.groups

        Row {
            id: entry

            required property int index
            required property string modelData

            spacing: 6

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.groups[entry.index]
                height: width
                radius: 3
                width: 10
            }
            Line {
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                text: entry.modelData
            }
        }
    }
}
