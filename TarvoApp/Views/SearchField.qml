import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// Narrows a list.
TextField {
    id: field

    property string name: Words.search
    // What the list is narrowed to now, wherever that was said.
    required property string narrowed

    signal wanted(letters: string)

    function take() {
        forceActiveFocus(Qt.ShortcutFocusReason);
        selectAll();
    }

    Accessible.name: name
    color: Theme.text
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    leftPadding: glyph.width + 16
    placeholderText: name
    placeholderTextColor: Theme.secondaryText
    rightPadding: clear.width + 4
    selectByMouse: true
    selectedTextColor: Theme.accentInk
    selectionColor: Theme.accent
    verticalAlignment: TextInput.AlignVCenter

    // A search ends elsewhere as well: by asking for a row that it did not find.
    onNarrowedChanged: if (text !== narrowed) text = narrowed
    onTextEdited: wanted(text)
    // Esc ends the search before it does anything else.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape && text.length > 0
    Keys.onEscapePressed: event => {
        event.accepted = text.length > 0;
        if (text.length > 0) {
            clear.clicked();
        }
    }

    background: Rectangle { // qmllint disable deferred-property-id
        border.color: field.activeFocus ? Theme.accent : Theme.hairline
        border.width: field.activeFocus ? 2 : 1
        color: Theme.window
        radius: Theme.buttonRadius

        Glyph {
            id: glyph

            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondaryText
            height: width
            shape: "search"
            width: Math.round(16 * Theme.scale)
        }
    }

    IconButton {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        name: Words.clearSearch
        shape: "close"
        side: Math.round(26 * Theme.scale)
        visible: field.text.length > 0

        onClicked: {
            field.clear();
            field.wanted("");
        }
    }
}
