import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What else can be done with a row or a tile.
Menu {
    id: menu

    property string key: ""
    property bool inList: false

    function openFor(wanted: string) {
        key = wanted;
        popup();
    }

    component Choice: MenuItem {
        Accessible.name: text
        font.pixelSize: Theme.body
    }

    Choice {
        enabled: App.rows.indexOf(menu.key) >= 0
        text: Words.showInList

        onTriggered: App.revealRow(menu.key)
    }
    Choice {
        enabled: App.canPreview(menu.key)
        text: Words.preview

        onTriggered: App.showPreview(menu.key)
    }
    Choice {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.showInFiles

        onTriggered: Desktop.showInFiles(menu.key)
    }
    Choice {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.copyPath

        onTriggered: Desktop.copyPath(menu.key)
    }
    Choice {
        enabled: Desktop.hasPlace(menu.key) && !App.isBusy
        text: Words.archive

        onTriggered: App.requestArchive(menu.key)
    }
    MenuSeparator {}
    Choice {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.protect

        onTriggered: App.protect(menu.key)
    }
}
