import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A line of a menu; what cannot be chosen now is faint.
MenuItem {
    id: choice

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
        font: choice.font
        opacity: choice.enabled ? 1 : 0.45
        text: choice.text
        verticalAlignment: Text.AlignVCenter
    }
}
