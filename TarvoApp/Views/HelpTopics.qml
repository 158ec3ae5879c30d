import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// The questions of the help; one at a time shows its answer.
ListView {
    id: list

    bottomMargin: 8
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    model: App.help.topics
    spacing: 2
    topMargin: 8

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
