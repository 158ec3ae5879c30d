import QtQuick
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

    ChoiceMenu {
        id: menu

        current: button.current
        words: button.orders

        onChosen: index => button.chosen(index)
    }
}
