import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A share between two, with a mark at the usual one.
Slider {
    id: slider

    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: Math.round(170 * Theme.scale)
    padding: 0
    snapMode: Slider.SnapAlways

    background: Rectangle {
        color: Theme.raised
        height: 4
        radius: 2
        width: slider.width
        y: (slider.height - height) / 2

        Rectangle {
            color: Theme.accent
            height: parent.height
            radius: 2
            width: slider.handle.x + slider.handle.width / 2
        }
        Rectangle {
            readonly property real usual: (1 - slider.from) / (slider.to - slider.from)

            color: Theme.secondaryText
            height: 10
            width: 2
            x: slider.handle.width / 2 + usual * (slider.width - slider.handle.width) - 1
            y: (parent.height - height) / 2
        }
    }
    handle: Rectangle {
        border.color: Theme.accent
        border.width: 2
        color: slider.pressed ? Theme.accent : Theme.surface
        height: width
        radius: width / 2
        width: Math.round(16 * Theme.scale)
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2

        FocusRing {
            radius: height / 2
            visible: slider.visualFocus
        }
    }
}
