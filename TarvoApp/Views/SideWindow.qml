import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A window beside the main one. Escape closes it, unless what has the keyboard wants the key.
ApplicationWindow {
    id: side

    default property alias contents: body.data

    signal helpWanted

    function present(): void {
        if (visible) {
            raise();
        }
        show();
        requestActivate();
    }

    color: Theme.window
    height: 560
    minimumHeight: 420
    minimumWidth: 560
    width: 640

    palette {
        base: Theme.surface
        button: Theme.surface
        buttonText: Theme.text
        dark: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentInk
        light: Theme.raised
        mid: Theme.hairline
        midlight: Theme.raised
        text: Theme.text
        toolTipBase: Theme.surface
        toolTipText: Theme.text
        window: Theme.surface
        windowText: Theme.text
    }

    Shortcut {
        sequence: "F1"

        onActivated: side.helpWanted()
    }
    FocusScope {
        id: body

        anchors.fill: parent
        focus: true

        Keys.onEscapePressed: side.close()
    }
}
