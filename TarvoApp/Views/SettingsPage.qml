import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// One tab of the settings: cards below each other, scrolled where the window is too low for them.
Flickable {
    id: page

    default property alias cards: column.data

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: column.implicitHeight + 32
    contentWidth: width

    ScrollBar.vertical: ScrollBar {}

    // What the keyboard goes to is brought into sight.
    function reveal(item: Item): void {
        for (let above = item; above !== null; above = above.parent) {
            if (above === column) {
                const top = item.mapToItem(column, 0, 0).y + 16;
                contentY = Math.max(Math.min(contentY, top - 16), top + item.height + 16 - height, 0);
                return;
            }
        }
    }

    Connections {
        function onActiveFocusItemChanged() {
            page.reveal(page.Window.activeFocusItem);
        }

        target: page.Window.window
    }
    ColumnLayout {
        id: column

        spacing: 16
        width: page.width - 48
        x: 24
        y: 16
    }
}
