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

    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.buttonRadius
    }
}
