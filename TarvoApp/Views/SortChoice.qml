import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// How the list is sorted within its groups.
PlainButton {
    id: button

    Accessible.name: Words.sortedBy.arg(text)
    help: orders.visible ? "" : Words.sortedBy.arg(Words.orderHelps[App.list.order])
    leftPadding: 10
    text: Words.orders[App.list.order]

    onClicked: orders.popup(button, 0, button.height + 4)

    PlainMenu {
        id: orders

        Instantiator {
            model: Words.orders

            delegate: PlainMenuItem {
                required property int index
                required property string modelData

                Accessible.checkable: true
                Accessible.checked: current
                current: index === App.list.order
                text: modelData

                onTriggered: App.list.order = index
            }

            onObjectAdded: (index, object) => orders.insertItem(index, object as Item)
            onObjectRemoved: (index, object) => orders.removeItem(object as Item)
        }
    }
}
