import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// What a folder holds, largest first.
ListView {
    id: list

    Accessible.name: SideWords.contents
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    keyNavigationEnabled: true
    model: App.preview.largest

    ScrollBar.vertical: ScrollBar {
        policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        width: 8
    }
    delegate: RowLayout {
        id: part

        required property var modelData

        Accessible.name: modelData.name + ", " + modelData.bytes
        Accessible.role: Accessible.ListItem
        height: Math.round(30 * Theme.scale)
        spacing: 12
        width: ListView.view.width - 12

        Line {
            Accessible.ignored: true
            Layout.fillWidth: true
            elide: Text.ElideMiddle
            text: part.modelData.name + (part.modelData.isFolder ? "/" : "")
        }
        ShareBar {
            Layout.preferredWidth: Math.round(96 * Theme.scale)
            share: part.modelData.share
        }
        Line {
            Accessible.ignored: true
            Layout.minimumWidth: Math.round(72 * Theme.scale)
            elide: Text.ElideNone
            horizontalAlignment: Text.AlignRight
            text: part.modelData.bytes
        }
    }
}
