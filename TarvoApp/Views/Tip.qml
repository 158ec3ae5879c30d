import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What a thing does, below the pointer after a moment; never over the thing itself.
ToolTip {
    id: tip

    readonly property bool below: parent ? parent.mapToItem(null, 0, 0).y < 160 : true

    delay: 600
    margins: 6
    padding: 8
    width: Math.min(Math.ceil(words.implicitWidth) + 2 * padding, Math.round(340 * Theme.scale))
    y: below ? (parent ? parent.height : 0) + 4 : -height - 4

    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.tileRadius
    }
    contentItem: Line { // qmllint disable deferred-property-id
        id: words

        Accessible.ignored: true
        text: tip.text
        wrapMode: Text.Wrap
    }
}
