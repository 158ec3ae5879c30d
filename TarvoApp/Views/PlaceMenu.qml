import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What can be done with a row or a tile.
PlainMenu {
    id: menu

    property string key: ""
    property var can: ({})

    // At the item that has the focus, or where the pointer is.
    function openFor(wanted: string, at: Item) {
        key = wanted;
        can = App.places.offers(wanted);
        if (at) {
            popup(at, Math.min(24, at.width / 2), Math.min(24, at.height / 2));
            currentIndex = 0;
        } else {
            popup();
        }
    }

    PlainMenuItem {
        enabled: menu.can.tick === true
        text: Words.tickText(menu.can.ticked === true, menu.can.tickOf || "")

        onTriggered: App.places.toggle(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.zoom === true
        text: Words.zoom

        onTriggered: App.map.zoomInto(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.explain === true
        text: Words.explainThis

        onTriggered: App.places.explain(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.preview === true
        text: Words.preview

        onTriggered: App.places.showPreview(menu.key)
    }
    MenuSeparator {}
    PlainMenuItem {
        enabled: menu.can.open === true
        text: Words.openOutside

        onTriggered: Desktop.open(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.open === true
        text: Words.showInFiles

        onTriggered: Desktop.showInFiles(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.open === true
        text: Words.copyPath

        onTriggered: Desktop.copyPath(menu.key)
    }
    MenuSeparator {}
    PlainMenuItem {
        enabled: menu.can.archive === true
        text: Words.archive

        onTriggered: App.archiving.requestArchive(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.protect === true
        text: menu.can.several ? Words.protectAll : Words.protect

        onTriggered: App.places.protect(menu.key)
    }
}
