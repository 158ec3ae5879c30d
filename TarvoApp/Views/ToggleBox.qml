import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A box to tick with words beside it.
CheckBox {
    id: box

    Accessible.name: text
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    opacity: enabled ? 1 : 0.45
    padding: 2
    spacing: 6

    contentItem: Line {
        Accessible.ignored: true
        font: box.font
        leftPadding: box.indicator.width + box.spacing
        text: box.text
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Rectangle {
        border.color: box.checked ? Theme.accent : Theme.secondaryText
        border.width: 1.5
        color: box.checked ? Theme.accent : Theme.surface
        height: width
        radius: 4
        width: Math.round(16 * Theme.scale)
        x: box.leftPadding
        y: (box.height - height) / 2

        Glyph {
            anchors.fill: parent
            color: Theme.accentInk
            shape: "tick"
            visible: box.checked
            weight: 3.2
        }
        FocusRing {
            radius: 7
            visible: box.visualFocus
        }
    }
}
