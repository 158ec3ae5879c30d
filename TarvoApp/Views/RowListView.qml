import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// All that was found, group by group.
Rectangle {
    id: pane

    objectName: "list"

    // The one row that shows all that is known of it.
    property string opened: ""

    signal menuWanted(string key)

    function takeSearch() {
        search.take();
    }

    border.color: Theme.hairline
    color: Theme.surface
    radius: Theme.cardRadius

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        spacing: 4

        SearchField {
            id: search

            Layout.fillWidth: true
        }
        ListView {
            id: list

            Accessible.name: Words.list
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            keyNavigationEnabled: true
            model: App.rows

            ScrollBar.vertical: ScrollBar {
                policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                width: 8
            }
            Keys.onPressed: event => {
                const page = Math.max(1, Math.floor(height / Math.max(currentItem ? currentItem.height : 1, 1)) - 1);
                const steps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page],
                                       [Qt.Key_PageDown, page]]);
                if (!steps.has(event.key) || count === 0)
                    return;
                event.accepted = true;
                currentIndex = Math.max(0, Math.min(count - 1, currentIndex + steps.get(event.key)));
                positionViewAtIndex(currentIndex, ListView.Contain);
                currentItem.forceActiveFocus(Qt.TabFocusReason);
            }
            delegate: RowDelegate {
                id: row

                opened: pane.opened === row.key
                width: ListView.view.width - 12

                onMenuWanted: key => pane.menuWanted(key)
                onOpenWanted: open => {
                    if (open) {
                        pane.opened = row.key;
                        settling.restart();
                    } else if (row.opened) {
                        pane.opened = "";
                    }
                }
            }
            displaced: Transition {
                NumberAnimation { duration: Theme.shortTime; easing.type: Easing.OutCubic; property: "y" }
            }
            footer: Column {
                width: ListView.view.width - 12

                // Where the first row would be, and above what else there is to tell.
                Line {
                    color: Theme.secondaryText
                    elide: Text.ElideMiddle
                    horizontalAlignment: Text.AlignHCenter
                    maximumLineCount: 2
                    padding: 24
                    text: App.places.searchText.length > 0 ? Words.nothingFound.arg(App.places.searchText) : Words.nothingToClean
                    visible: App.rows.count === 0
                    width: parent.width
                    wrapMode: Text.Wrap
                }
                Line {
                    color: Theme.secondaryText
                    font.pixelSize: Theme.small
                    leftPadding: 8
                    rightPadding: 8
                    text: App.scanning.unreadable
                    topPadding: 12
                    visible: text.length > 0 && App.places.searchText.length === 0
                    width: parent.width
                    wrapMode: Text.WordWrap
                }
                GrowthList {
                    searched: App.places.searchText.length > 0
                    width: parent.width
                }
            }
            move: Transition {
                NumberAnimation { duration: Theme.shortTime; easing.type: Easing.OutCubic; property: "y" }
            }

            // Until what was opened has its height.
            Timer {
                id: settling

                interval: 30

                onTriggered: list.positionViewAtIndex(App.rows.indexOf(pane.opened), ListView.Contain)
            }
        }
    }
    // Whoever stays on a tile sees its row.
    Timer {
        id: staying

        interval: 300

        onTriggered: {
            const at = App.rows.indexOf(App.places.mapHovered);
            if (at >= 0)
                list.positionViewAtIndex(at, ListView.Contain);
        }
    }
    Connections {
        function onHoverChanged() {
            if (App.places.mapHovered.length > 0)
                staying.restart();
            else
                staying.stop();
        }
        function onScrollChanged() {
            const at = App.rows.indexOf(App.places.scrollToRow);
            if (at >= 0) {
                list.currentIndex = at;
                list.positionViewAtIndex(at, ListView.Center);
            }
        }

        target: App.places
    }
}
