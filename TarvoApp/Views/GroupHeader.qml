import QtQuick
import QtQuick.Layouts
import Tarvo

// The name of a group of rows and what they come to.
Item {
    id: header

    required property int group
    required property string title
    required property string bytes

    Accessible.name: title + ", " + bytes
    Accessible.role: Accessible.Heading
    implicitHeight: Math.round(36 * Theme.scale)

    RowLayout {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        anchors.left: parent.left
        anchors.right: parent.right
        spacing: 8

        Rectangle {
            Layout.preferredHeight: 8
            Layout.preferredWidth: 8
            color: Theme.groups[header.group]
            radius: 4
        }
        Line {
            Accessible.ignored: true
            Layout.fillWidth: !explain.visible
            Layout.maximumWidth: implicitWidth + 1
            font.weight: Font.DemiBold
            text: header.title
        }
        PlainButton {
            id: explain

            enabled: !App.activity.isBusy && App.explaining.canExplain
            font.pixelSize: Theme.small
            help: App.explaining.aiUnavailableReason
            implicitHeight: Math.round(24 * Theme.scale)
            text: Words.explain
            visible: header.group === Kinds.Unclassified

            onClicked: App.explaining.explain()
        }
        Item {
            Layout.fillWidth: true
        }
        Line {
            Accessible.ignored: true
            color: Theme.secondaryText
            elide: Text.ElideNone
            font.weight: Font.DemiBold
            text: header.bytes
        }
    }
}
