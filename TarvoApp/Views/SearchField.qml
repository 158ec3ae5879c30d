import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// Narrows the list.
TextField {
    id: field

    function take() {
        forceActiveFocus(Qt.ShortcutFocusReason);
        selectAll();
    }

    Accessible.name: Words.search
    color: Theme.text
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    leftPadding: glyph.width + 16
    placeholderText: Words.search
    placeholderTextColor: Theme.secondaryText
    rightPadding: clear.width + 4
    selectByMouse: true
    selectedTextColor: Theme.accentInk
    selectionColor: Theme.accent
    verticalAlignment: TextInput.AlignVCenter

    onTextEdited: App.list.searchText = text
    Keys.onEscapePressed: event => {
        event.accepted = text.length > 0;
        if (text.length > 0) {
            clear.clicked();
        }
    }

    // A search ends elsewhere as well: by asking for a row that it did not find.
    Connections {
        function onSearchChanged() {
            if (field.text !== App.list.searchText)
                field.text = App.list.searchText;
        }

        target: App.list
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
            App.list.searchText = "";
        }
    }
}
