import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// The photos of the chapter that is shown, row by row. No view of the library's: those make what they show anew while
// it is scrolled, which takes longer than a frame.
Flickable {
    id: grid

    // Another chapter begins at its beginning.
    readonly property string title: App.photos.chapters[App.photos.chapter]?.title ?? ""
    // A few photos are larger where there is room, but no larger than the pictures that are kept of them.
    readonly property int columns: Math.max(1, Math.min(columnsOf(176), Math.max(count, columnsOf(240))))
    readonly property int cellHeight: Math.round(186 * Theme.scale) + Math.max(0, cellWidth - Math.round(208 * Theme.scale))
    readonly property int cellWidth: Math.floor((width - 12) / columns)
    readonly property int count: App.photos.photos.count
    // A row more on each side, whose pictures are there before they are seen.
    readonly property int firstRow: Math.floor(contentY / cellHeight) - 1
    readonly property int rows: Math.ceil(height / cellHeight) + 3

    function columnsOf(side: int): int {
        return Math.floor((width - 12) / Math.round(side * Theme.scale));
    }
    function look(): void {
        App.photos.places.look(firstRow, rows, columns);
    }
    // The keyboard goes there, and it is seen.
    function reach(photo: int): void {
        App.photos.places.current = photo;
        const top = Math.floor(App.photos.places.current / columns) * cellHeight;
        contentY = Math.max(Math.min(contentY, top), top + cellHeight - height);
    }

    Accessible.name: title
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: Math.ceil(count / columns) * cellHeight

    Component.onCompleted: look()
    onColumnsChanged: look()
    onFirstRowChanged: look()
    onRowsChanged: look()
    onTitleChanged: {
        App.photos.places.current = 0;
        contentY = 0;
    }
    Keys.onPressed: event => {
        const page = columns * Math.max(1, Math.floor(height / cellHeight));
        const steps = new Map([[Qt.Key_Left, -1], [Qt.Key_Right, 1], [Qt.Key_Up, -columns], [Qt.Key_Down, columns]]);
        // These end where the photos do.
        const leaps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page],
            [Qt.Key_PageDown, page]]);
        const current = App.photos.places.current;
        if (count === 0)
            return;
        if (event.key === Qt.Key_Space) {
            App.photos.toggle(current);
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            App.photos.preview(current);
        } else if (event.key === Qt.Key_Delete) {
            App.photos.setAside();
        } else if (steps.has(event.key)) {
            const next = current + steps.get(event.key);
            if (next >= 0 && next < count)
                reach(next);
        } else if (leaps.has(event.key)) {
            reach(current + leaps.get(event.key));
        } else {
            return;
        }
        event.accepted = true;
    }

    ScrollBar.vertical: ScrollBar {
        policy: grid.contentHeight > grid.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        width: 8
    }

    Repeater {
        model: App.photos.places

        PhotoTile {
            current: photo === App.photos.places.current && grid.activeFocus
            grouped: App.photos.proposes
            height: grid.cellHeight
            visible: photo >= 0
            width: grid.cellWidth
            x: photo % grid.columns * grid.cellWidth
            y: Math.floor(photo / grid.columns) * grid.cellHeight

            onPicked: {
                grid.forceActiveFocus(Qt.MouseFocusReason);
                grid.reach(photo);
            }
            onPreviewWanted: App.photos.preview(photo)
            onToggled: {
                grid.reach(photo);
                App.photos.toggle(photo);
            }
        }
    }
}
