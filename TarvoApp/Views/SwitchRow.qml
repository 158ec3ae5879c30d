import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// A setting that is on or off. All of the row can be clicked.
Switch {
    id: row

    property string more: ""

    Accessible.description: more
    Accessible.name: text
    Layout.fillWidth: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    padding: 0
    // Keeps the words from the indicator: a control sets the width of its contents itself.
    rightPadding: indicator.width + 16

    function flip(): void {
        toggle();
        toggled();
    }

    Keys.onEnterPressed: row.flip()
    Keys.onReturnPressed: row.flip()

    background: Item {
        FocusRing {
            anchors.margins: -6
            visible: row.visualFocus
        }
    }
    contentItem: SettingText {
        more: row.more
        silent: true
        title: row.text
    }
    indicator: Rectangle {
        border.color: row.checked ? Theme.accent : Theme.secondaryText
        border.width: 1.5
        color: row.checked ? Theme.accent : Theme.surface
        height: Math.round(20 * Theme.scale)
        radius: height / 2
        width: Math.round(36 * Theme.scale)
        x: row.width - width
        y: (row.height - height) / 2

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: row.checked ? Theme.accentInk : Theme.secondaryText
            height: width
            radius: width / 2
            width: Math.round(12 * Theme.scale)
            x: row.checked ? parent.width - width - 4 : 4

            Behavior on x {
                NumberAnimation { duration: Theme.hoverTime }
            }
        }
    }
}
