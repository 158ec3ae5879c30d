import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A button with one of our icons on it; its name is its tool tip.
Button {
    id: button

    required property string shape
    required property string name
    property bool tipped: false
    property string help: name
    property color ink: Theme.text
    property color backdrop: "transparent"
    property real side: Theme.controlHeight

    Accessible.description: help === name ? "" : help
    Accessible.name: name
    focusPolicy: Qt.StrongFocus
    implicitHeight: side
    implicitWidth: side
    opacity: enabled ? 1 : 0.4
    padding: Math.round(side * 0.14)

    onHoveredChanged: if (hovered && !tipped) {
        tipped = true;
        tip.createObject(button);
    }
    Keys.onEnterPressed: button.clicked()
    Keys.onReturnPressed: button.clicked()

    // Made when it is first wanted: there are hundreds of buttons.
    Component {
        id: tip

        Tip {
            text: button.help // qmllint disable unqualified
            visible: button.hovered && text.length > 0 // qmllint disable unqualified
        }
    }

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
