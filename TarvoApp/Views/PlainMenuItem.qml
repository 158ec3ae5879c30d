import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A line of a menu; what cannot be chosen now is faint.
MenuItem {
    id: choice

    // One of several of which one holds now.
    property bool current: false

    Accessible.name: text
    font.pixelSize: Theme.body
    horizontalPadding: 12
    implicitHeight: Theme.controlHeight

    background: Rectangle { // qmllint disable deferred-property-id
        color: Qt.alpha(Theme.text, choice.highlighted && choice.enabled ? 0.09 : 0)
        radius: Theme.tileRadius
    }
    contentItem: Line { // qmllint disable deferred-property-id
        Accessible.ignored: true
        font.pixelSize: Theme.body
        font.weight: choice.current ? Font.DemiBold : Font.Normal
        opacity: choice.enabled ? 1 : 0.45
        text: choice.text
        verticalAlignment: Text.AlignVCenter
    }
}
