import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// The other disks that are in use, to be looked into like a folder. Not there while there are none.
PlainButton {
    id: button

    text: Words.otherDisks
    visible: App.otherVolumes.length > 0

    onClicked: disks.popup(button, 0, button.height + 4)

    Menu {
        id: disks

        Instantiator {
            model: App.otherVolumes

            delegate: MenuItem {
                required property int index
                required property var modelData

                font.pixelSize: Theme.body
                text: modelData.name + " · " + modelData.free + " " + Words.freeOf.arg(modelData.total)

                onTriggered: App.openVolume(index)
            }

            onObjectAdded: (index, object) => disks.insertItem(index, object as Item)
            onObjectRemoved: (index, object) => disks.removeItem(object as Item)
        }
    }
}
