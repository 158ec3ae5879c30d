import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// The questions of the help; one at a time shows its answer.
ListView {
    id: list

    // Above the first question.
    signal leaveWanted

    function goTo(index: int) {
        if (count === 0)
            return;
        if (index < 0)
            return leaveWanted();
        currentIndex = Math.min(index, count - 1);
        positionViewAtIndex(currentIndex, ListView.Contain);
        currentItem.forceActiveFocus(Qt.TabFocusReason);
    }

    bottomMargin: 8
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    keyNavigationEnabled: false
    model: App.help.topics
    spacing: 2
    topMargin: 8

    Keys.onPressed: event => {
        const wanted = new Map([[Qt.Key_Up, currentIndex - 1], [Qt.Key_Down, currentIndex + 1],
                                [Qt.Key_Home, 0], [Qt.Key_End, count - 1]]);
        event.accepted = wanted.has(event.key);
        if (event.accepted)
            goTo(wanted.get(event.key));
    }

    ScrollBar.vertical: ScrollBar {}
    delegate: HelpTopicRow {
        width: list.width - 32 // qmllint disable unqualified
        x: 16
    }

    Line {
        anchors.fill: parent
        anchors.margins: 24
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
        text: SideWords.nothingFound
        visible: list.count === 0
        wrapMode: Text.WordWrap
    }
    Connections {
        function onExpandedChanged() {
            const index = App.help.topicIndex(App.help.expandedHelp);
            if (index >= 0) {
                // The answer takes its room first.
                Qt.callLater(() => list.positionViewAtIndex(index, ListView.Contain));
            }
        }

        target: App.help
    }
}
