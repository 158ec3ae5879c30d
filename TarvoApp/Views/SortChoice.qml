import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// How a list is sorted.
PlainButton {
    id: button

    required property list<string> orders
    required property list<string> helps
    required property int current

    signal chosen(order: int)

    Accessible.name: Words.sortedBy.arg(text)
    help: menu.visible ? "" : Words.sortedBy.arg(helps[current])
    leftPadding: 10
    rightPadding: 10
    text: orders[current]

    onClicked: menu.popup(button, 0, button.height + 4)

    PlainMenu {
        id: menu

        Instantiator {
            model: button.orders

            delegate: PlainMenuItem {
                required property int index
                required property string modelData

                Accessible.checkable: true
                Accessible.checked: current
                current: index === button.current // qmllint disable unqualified
                text: modelData

                onTriggered: button.chosen(index) // qmllint disable unqualified
            }

            onObjectAdded: (index, object) => menu.insertItem(index, object as Item)
            onObjectRemoved: (index, object) => menu.removeItem(object as Item)
        }
    }
}
