import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A menu of a few words of which one holds.
PlainMenu {
    id: menu

    required property var words
    required property int current

    signal chosen(index: int)

    Instantiator {
        model: menu.words

        delegate: PlainMenuItem {
            required property int index
            required property string modelData

            Accessible.checkable: true
            Accessible.checked: current
            current: index === menu.current // qmllint disable unqualified
            text: modelData

            onTriggered: menu.chosen(index) // qmllint disable unqualified
        }

        onObjectAdded: (index, object) => menu.insertItem(index, object as Item)
        onObjectRemoved: (index, object) => menu.removeItem(object as Item)
    }
}
