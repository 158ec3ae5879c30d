import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A button with one of our icons on it; its name is its tool tip.
Button {
    id: button

    required property string shape
    required property string name
    property string help: name
    property color ink: Theme.text
    property color backdrop: "transparent"
    property real side: Theme.controlHeight

    Accessible.description: help === name ? "" : help
    Accessible.name: name
    ToolTip.delay: 600
    ToolTip.text: help
    ToolTip.visible: hovered
    focusPolicy: Qt.StrongFocus
    implicitHeight: side
    implicitWidth: side
    opacity: enabled ? 1 : 0.4
    padding: Math.round(side * 0.14)

    Keys.onEnterPressed: button.clicked()
    Keys.onReturnPressed: button.clicked()

    background: Rectangle {
        color: button.backdrop
        radius: Theme.buttonRadius

        Rectangle {
            anchors.fill: parent
            color: button.ink
            opacity: button.down ? 0.16 : button.hovered ? 0.08 : 0
            radius: parent.radius

            Behavior on opacity {
                NumberAnimation { duration: Theme.hoverTime }
            }
        }
        FocusRing {
            visible: button.visualFocus
        }
    }
    contentItem: Glyph {
        color: button.ink
        shape: button.shape
    }
}
