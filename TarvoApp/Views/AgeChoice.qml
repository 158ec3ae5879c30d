import QtQuick
import Tarvo

// How old what the explorer shows has to be.
IconButton {
    id: button

    help: menu.visible ? "" : SideWords.ageHelp
    ink: App.explorer.age > 0 ? Theme.accent : Theme.text
    name: SideWords.age
    shape: "clock"

    onClicked: menu.popup(button, 0, button.height + 4)

    ChoiceMenu {
        id: menu

        current: App.explorer.age
        words: App.explorer.ages

        onChosen: index => App.explorer.age = index
    }
}
