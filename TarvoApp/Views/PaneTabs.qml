import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What is seen beside the map, or instead of it where the window is too narrow for both.
TabBar {
    id: bar

    required property list<string> panes

    signal chosen(pane: int)

    // By the keys what is shown turns with the tab.
    function turn(by: int) {
        const next = currentIndex + by;
        if (next < 0 || next >= count)
            return;
        chosen(next);
        const tab = itemAt(next) as TabButton;
        tab.forceActiveFocus(Qt.TabFocusReason);
        // It may have the focus since it was chosen, and for no reason that shows a ring.
        tab.focusReason = Qt.TabFocusReason;
    }

    component Tab: TabButton {
        id: tab

        Accessible.name: text
        // A button says its own role when it is complete.
        Component.onCompleted: Accessible.role = Accessible.PageTab
        font.pixelSize: Theme.body
        implicitHeight: Theme.controlHeight

        background: Rectangle {
            border.color: tab.checked ? Theme.hairline : "transparent"
            color: tab.checked ? Theme.surface : tab.hovered ? Theme.raised : "transparent"
            radius: Theme.buttonRadius

            FocusRing {
                visible: tab.visualFocus
            }
        }
        contentItem: Line {
            Accessible.ignored: true
            color: tab.checked ? Theme.text : Theme.secondaryText
            font.pixelSize: Theme.body
            font.weight: tab.checked ? Font.DemiBold : Font.Normal
            horizontalAlignment: Text.AlignHCenter
            text: tab.text
            verticalAlignment: Text.AlignVCenter
        }
    }

    Accessible.name: Words.panes
    Accessible.role: Accessible.PageTabList
    background: Item {}
    spacing: 4

    Repeater {
        model: bar.panes

        Tab {
            required property int index
            required property string modelData

            text: modelData

            Keys.onLeftPressed: bar.turn(-1) // qmllint disable unqualified
            Keys.onRightPressed: bar.turn(1) // qmllint disable unqualified
            onClicked: bar.chosen(index) // qmllint disable unqualified
        }
    }
}
