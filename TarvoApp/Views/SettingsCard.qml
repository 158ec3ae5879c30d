import QtQuick
import QtQuick.Layouts
import Tarvo

// Settings that belong together, below their heading.
ColumnLayout {
    id: card

    property string heading: ""
    property string explanation: ""
    default property alias rows: column.data

    Layout.fillWidth: true
    spacing: 6

    Line {
        Accessible.name: text
        Accessible.role: Accessible.Heading
        Layout.fillWidth: true
        Layout.leftMargin: 4
        font.weight: Font.DemiBold
        text: card.heading
        visible: text.length > 0
        wrapMode: Text.WordWrap
    }
    Line {
        Layout.bottomMargin: 2
        Layout.fillWidth: true
        Layout.leftMargin: 4
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        text: card.explanation
        visible: text.length > 0
        wrapMode: Text.WordWrap
    }
    Rectangle {
        Layout.fillWidth: true
        border.color: Theme.hairline
        color: Theme.surface
        implicitHeight: column.implicitHeight + 24
        radius: Theme.cardRadius

        ColumnLayout {
            id: column

            anchors.fill: parent
            anchors.margins: 12
            anchors.leftMargin: 16
            anchors.rightMargin: 16
            spacing: 14
        }
    }
}
