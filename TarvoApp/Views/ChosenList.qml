import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// Lines below each other of which one is chosen, with the keyboard or the pointer.
ListView {
    id: list

    required property string name
    property int chosen: -1

    signal picked(int index)

    Accessible.name: name
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightFollowsCurrentItem: false

    // What the list chooses by itself when its lines change is nobody's choice.
    onChosenChanged: currentIndex = chosen
    onCountChanged: currentIndex = chosen
    // Nothing is out of sight where there is no room yet.
    onCurrentIndexChanged: if (height > 0) positionViewAtIndex(currentIndex, ListView.Contain)
    Keys.onPressed: event => {
        const steps = new Map([[Qt.Key_Up, -1], [Qt.Key_Down, 1], [Qt.Key_Home, -count], [Qt.Key_End, count]]);
        if (!steps.has(event.key) || count === 0)
            return;
        event.accepted = true;
        picked(Math.max(0, Math.min(count - 1, chosen + steps.get(event.key))));
    }

    ScrollBar.vertical: ScrollBar {
        policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        width: 8
    }
}
