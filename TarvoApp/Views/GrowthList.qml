import QtQuick
import QtQuick.Layouts
import Tarvo

// What grew most since an earlier day.
ColumnLayout {
    id: list

    // What is searched for is looked for in the rows alone.
    property bool searched: false

    signal growthWanted

    spacing: 0
    visible: App.growth.growth.length > 0 && !searched

    RowLayout {
        Layout.bottomMargin: 4
        Layout.leftMargin: 8
        Layout.topMargin: 12
        spacing: 8

        Line {
            Layout.fillWidth: true
            font.weight: Font.DemiBold
            maximumLineCount: 2
            text: Words.grew.arg(App.growth.growthSince)
            wrapMode: Text.WordWrap
        }
        PlainButton {
            kind: PlainButton.Link
            text: SideWords.growthLink

            onClicked: list.growthWanted()
        }
    }
    Repeater {
        model: App.growth.growth

        RowLayout {
            id: grown

            required property var modelData

            Accessible.name: modelData.name + ", " + modelData.delta
            Accessible.role: Accessible.StaticText
            Layout.bottomMargin: 3
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            Layout.topMargin: 3
            spacing: 10

            Line {
                Accessible.ignored: true
                Layout.fillWidth: true
                text: grown.modelData.name
            }
            Line {
                Accessible.ignored: true
                color: Theme.secondaryText
                elide: Text.ElideNone
                font.pixelSize: Theme.small
                text: grown.modelData.now
            }
            Line {
                Accessible.ignored: true
                Layout.minimumWidth: Math.round(70 * Theme.scale)
                elide: Text.ElideNone
                horizontalAlignment: Text.AlignRight
                text: grown.modelData.delta
            }
        }
    }
}
