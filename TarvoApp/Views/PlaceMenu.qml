import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What can be done with a row or several together, a tile or an entry of the explorer.
PlainMenu {
    id: menu

    // What it opens over where the pointer is: a row that it was opened at may be gone.
    required property Item ground

    // Several of rows only.
    property list<string> keys: []
    readonly property string key: keys[0] || ""
    property string about: ""
    property var can: ({})
    // Of an entry, which may be elsewhere in its list by the time something is chosen.
    property bool ofEntry: false
    property bool isFolder: false
    property bool isMarked: false
    // Of an entry that no cleanup takes.
    property bool isKept: false
    // Of an entry that also holds what is not shown.
    property bool isPart: false
    // How many entries are set aside with it.
    property int together: 1

    function openForEntry(row: ExplorerRow, at: Item) {
        ofEntry = true;
        isFolder = row.isFolder;
        isMarked = row.isMarked;
        isPart = row.isPart;
        isKept = row.isProtected;
        together = App.explorer.togetherWith(App.explorer.rowOf(row.key));
        show([row.key], at);
    }
    function openFor(wanted: string, at: Item) {
        ofEntry = false;
        isPart = false;
        isKept = false;
        show([wanted], at);
    }
    // Of a row of the list, and of all that are chosen with it; else none of them stays chosen.
    function openForRow(wanted: string, at: Item) {
        ofEntry = false;
        isPart = false;
        isKept = false;
        const together = App.list.chosenWith(wanted);
        if (together.length === 1)
            App.list.chooseNone();
        show(together, at);
    }
    // At the item that has the focus, or where the pointer is.
    function show(wanted: list<string>, at: Item) {
        keys = wanted;
        can = App.places.offers(wanted);
        about = wanted.length > 1 ? Words.theseRows.arg(wanted.length) : can.title;
        if (at) {
            popup(at, Math.min(24, at.width / 2), Math.min(24, at.height / 2));
            goToEnd(false);
        } else {
            popup(ground);
        }
    }

    PlainMenuHead {
        text: menu.about
    }
    PlainMenuItem {
        enabled: menu.ofEntry ? !menu.isKept || menu.isMarked : menu.can.tick === true
        text: !menu.ofEntry ? Words.tickText(menu.can.ticked === true, menu.can.tickOf || "")
            : menu.isMarked ? SideWords.unmark : SideWords.mark

        onTriggered: menu.ofEntry ? App.explorer.toggleMark(App.explorer.rowOf(menu.key)) : App.places.toggleAll(menu.keys)
    }
    PlainMenuItem {
        enabled: menu.ofEntry ? menu.isFolder : menu.can.zoom === true
        text: menu.ofEntry ? SideWords.goIn : Words.zoom

        onTriggered: menu.ofEntry ? App.explorer.enter(App.explorer.rowOf(menu.key)) : App.map.zoomInto(menu.key)
    }
    PlainMenuItem {
        enabled: menu.ofEntry || menu.can.explain === true
        text: Words.explainThis

        onTriggered: menu.ofEntry ? App.explorer.explain(App.explorer.rowOf(menu.key)) : App.places.explain(menu.key)
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
        enabled: menu.can.copy === true
        text: menu.can.several ? Words.copyPaths : Words.copyPath

        onTriggered: Desktop.copyPaths(menu.keys)
    }
    MenuSeparator {}
    PlainMenuItem {
        enabled: (menu.ofEntry ? !menu.isKept : menu.can.aside === true) && App.cleaning.mayClean
        text: menu.ofEntry && menu.together > 1 ? SideWords.setAsideMarked.arg(menu.together) : SideWords.setAside

        onTriggered: {
            if (!menu.ofEntry)
                return App.places.setAside(menu.keys);
            const row = App.explorer.rowOf(menu.key);
            if (row >= 0)
                App.explorer.setAside(row);
        }
    }
    PlainMenuItem {
        enabled: menu.can.archive === true && !menu.isPart && !menu.isKept
        text: Words.archive

        onTriggered: App.archiving.requestArchive(menu.key)
    }
    PlainMenuItem {
        enabled: menu.can.protect === true && !menu.isKept
        text: menu.isKept ? Words.isKept : menu.can.several ? Words.protectAll
                : menu.ofEntry && !menu.isFolder ? Words.protectFile : Words.protect

        onTriggered: App.places.protect(menu.keys)
    }
}
