import QtQuick
import QtQuick.Layouts
import Tarvo

// The folders that no cleanup touches.
SettingsCard {
    id: card

    explanation: SettingsWords.protectedMore
    heading: SettingsWords.protectedFolders

    Line {
        Layout.fillWidth: true
        color: Theme.secondaryText
        text: SettingsWords.nothingProtected
        visible: App.settings.protectedFolders.length === 0
    }
    Repeater {
        model: App.settings.protectedFolders

        RowLayout {
            id: folder

            required property string modelData
            required property int index

            Layout.bottomMargin: -6
            Layout.fillWidth: true
            Layout.topMargin: -6
            spacing: 8

            Line {
                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: folder.modelData
            }
            IconButton {
                name: SettingsWords.unprotect.arg(folder.modelData)
                shape: "close"

                // The button goes with its folder.
                onClicked: {
                    add.forceActiveFocus(Qt.TabFocusReason);
                    App.settings.unprotect(folder.index);
                }
            }
        }
    }
    PlainButton {
        id: add

        text: SettingsWords.addFolder

        onClicked: dialog.ask(FileChoice.Folders, SettingsWords.addFolder, "", place => Desktop.protectFolder(place))
    }
    FileChoice {
        id: dialog
    }
}
