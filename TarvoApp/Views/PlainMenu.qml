import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A menu that is as wide as its longest line.
Menu {
    id: menu

    margins: 6
    padding: 4
    width: {
        let widest = Math.round(180 * Theme.scale);
        for (let at = 0; at < count; ++at) {
            const item = itemAt(at);
            if (item)
                widest = Math.max(widest, item.implicitWidth);
        }
        return Math.ceil(widest) + leftPadding + rightPadding;
    }

    // The first or last line that can be chosen.
    function goToEnd(isLast: bool) {
        for (let step = 0; step < count; ++step) {
            const at = isLast ? count - 1 - step : step;
            const item = itemAt(at) as MenuItem;
            if (item && item.enabled) {
                currentIndex = at;
                return;
            }
        }
    }

    contentItem: ListView {
        clip: true
        currentIndex: menu.currentIndex
        focus: true
        implicitHeight: contentHeight
        interactive: contentHeight > height
        keyNavigationEnabled: false
        model: menu.contentModel

        Keys.onPressed: event => {
            const isLast = event.key === Qt.Key_End || event.key === Qt.Key_Up && menu.currentIndex < 0;
            event.accepted = isLast || event.key === Qt.Key_Home;
            if (event.accepted)
                menu.goToEnd(isLast);
        }
    }
    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.buttonRadius
    }
}
