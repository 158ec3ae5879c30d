import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A window beside the main one. Escape closes it, unless what has the keyboard wants the key.
ApplicationWindow {
    id: side

    default property alias contents: body.data

    // What was done from here came to this; what was said elsewhere is the main window's.
    property string told: ""

    // Whether something is asked in it, which is answered first.
    property bool asks: false

    property bool placed: false

    // Where the keys are when it opens; what had them before it was closed may be disabled by now.
    property Item first: null
    property bool opens: false

    signal helpWanted

    function present(over: Window): void {
        if (visible) {
            raise();
        } else if (!placed) {
            // From then on it is where somebody has pulled it.
            placed = true;
            Desktop.placeOver(side, over);
        }
        opens = opens || !visible;
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

    onVisibleChanged: told = ""

    // Before the window is active, a control gets the focus without its ring.
    onActiveChanged: if (active && opens) {
        opens = false;
        if (first) {
            first.forceActiveFocus(Qt.TabFocusReason);
            if (first instanceof Control)
                (first as Control).focusReason = Qt.TabFocusReason;
        }
    }

    Connections {
        function onNoticeChanged() {
            side.told = side.active ? App.activity.notice : "";
        }

        target: App.activity
    }
    Shortcut {
        sequence: "F1"

        onActivated: side.helpWanted()
    }
    Shortcut {
        enabled: !side.asks
        sequence: "Ctrl+W"

        onActivated: side.close()
    }
    FocusScope {
        id: body

        anchors.fill: parent
        focus: true

        Keys.onEscapePressed: side.close()
    }
}
