import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A line to type in.
TextField {
    id: field

    required property string name
    property string shape: ""

    Accessible.name: name
    color: Theme.text
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    leftPadding: shape.length > 0 ? glyph.width + 16 : 10
    placeholderTextColor: Theme.secondaryText
    selectByMouse: true
    selectedTextColor: Theme.accentInk
    selectionColor: Theme.accent
    verticalAlignment: TextInput.AlignVCenter

    background: Rectangle { // qmllint disable deferred-property-id
        border.color: field.activeFocus ? Theme.accent : Theme.hairline
        border.width: field.activeFocus ? 2 : 1
        color: Theme.surface
        radius: Theme.buttonRadius

        Glyph {
            id: glyph

            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondaryText
            height: width
            shape: field.shape
            width: Math.round(16 * Theme.scale)
        }
    }
}
