import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What is beside the things that were found: the home folder as a whole and the other disks that are in use.
PlainButton {
    id: button

    readonly property bool offers: !App.isDemo || App.volumes.otherVolumes.length > 0

    help: disks.visible ? "" : Words.lookIntoHelp
    text: Words.lookInto
    visible: offers

    onClicked: disks.popup(button, 0, button.height + 4)

    PlainMenu {
        id: disks

        PlainMenuItem {
            enabled: !App.isDemo
            text: ModelWords.homeFolder

            onTriggered: App.places.openHome()
        }
        Instantiator {
            model: App.volumes.otherVolumes

            delegate: PlainMenuItem {
                required property int index
                required property var modelData

                text: modelData.name + " · " + modelData.free + " " + Words.freeOf.arg(modelData.total)

                onTriggered: App.volumes.openVolume(index)
            }

            onObjectAdded: (index, object) => disks.insertItem(index + 1, object as Item)
            onObjectRemoved: (index, object) => disks.removeItem(object as Item)
        }
    }
}
