import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A whole number with its unit, to be counted up and down.
SpinBox {
    id: stepper

    required property string name
    // With %1 for the number.
    required property string unit
    // For a single one.
    property string oneUnit: unit

    Accessible.name: name
    editable: false
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    implicitWidth: Math.round(150 * Theme.scale)
    leftPadding: down.indicator.width
    rightPadding: up.indicator.width
    textFromValue: value => (value === 1 ? oneUnit : unit).arg(value)

    component Step: Rectangle {
        id: step

        required property string shape
        required property bool isPressed
        required property bool isHovered
        required property bool isPossible

        color: "transparent"
        height: stepper.height // qmllint disable unqualified
        implicitHeight: height
        implicitWidth: stepper.height // qmllint disable unqualified
        width: height

        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            color: Theme.text
            opacity: step.isPressed ? 0.16 : step.isHovered && step.isPossible ? 0.08 : 0
            radius: Theme.buttonRadius - 2
        }
        Glyph {
            anchors.fill: parent
            anchors.margins: parent.height * 0.22
            color: Theme.text
            opacity: step.isPossible ? 1 : 0.4
            shape: step.shape
        }
    }

    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.window
        radius: Theme.buttonRadius

        FocusRing {
            visible: stepper.visualFocus
        }
    }
    contentItem: Line {
        Accessible.ignored: true
        font: stepper.font
        horizontalAlignment: Text.AlignHCenter
        text: stepper.displayText
        verticalAlignment: Text.AlignVCenter
    }
    down.indicator: Step {
        isHovered: stepper.down.hovered
        isPossible: stepper.value > stepper.from
        isPressed: stepper.down.pressed
        shape: "minus"
    }
    up.indicator: Step {
        isHovered: stepper.up.hovered
        isPossible: stepper.value < stepper.to
        isPressed: stepper.up.pressed
        shape: "plus"
        x: stepper.width - width
    }
}
