import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// A line of a menu; what cannot be chosen now is faint.
MenuItem {
    id: choice

    // One of several of which one holds now.
    property bool current: false
    // What the keyboard does the same with; empty for nothing.
    property string keys: ""

    Accessible.description: keys
    Accessible.name: text
    // The keys pass by what cannot be chosen.
    activeFocusOnTab: enabled
    font.pixelSize: Theme.body
    horizontalPadding: 12
    implicitHeight: Theme.controlHeight

    background: Rectangle { // qmllint disable deferred-property-id
        color: Qt.alpha(Theme.text, choice.highlighted && choice.enabled ? 0.09 : 0)
        radius: Theme.tileRadius
    }
    contentItem: RowLayout { // qmllint disable deferred-property-id
        opacity: choice.enabled ? 1 : 0.45
        spacing: 24

        Line {
            Accessible.ignored: true
            Layout.fillWidth: true
            font.pixelSize: Theme.body
            font.weight: choice.current ? Font.DemiBold : Font.Normal
            text: choice.text
        }
        Line {
            Accessible.ignored: true
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: choice.keys
            visible: text.length > 0
        }
    }
}
