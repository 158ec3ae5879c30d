import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// All that was found, group by group.
Rectangle {
    id: pane

    objectName: "list"

    signal growthWanted
    signal menuWanted(string key, Item at)

    // There is room for the kinds without anybody asking for them.
    property bool roomy: false
    property bool sideAsked: App.list.onlyKind >= 0
    property bool sideClosed: false
    readonly property bool sideOpen: !sideClosed && (sideAsked || roomy)
    readonly property int sideWidth: sideOpen ? Math.round(168 * Theme.scale) + 8 : 0
    readonly property string kindNote: App.list.onlyKind < 0 || App.items.kinds.length === 0
                                       ? "" : App.items.noteOf(App.list.onlyKind)

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

        RowLayout {
            spacing: 6

            SearchField {
                id: search

                Layout.fillWidth: true
                narrowed: App.list.searchText

                onWanted: letters => App.list.searchText = letters
                // What was searched for is gone through without the pointer.
                Keys.onDownPressed: list.goTo(0)
            }
            PlainButton {
                Accessible.checkable: true
                Accessible.checked: pane.sideOpen
                help: Words.closerLookHelp
                leftPadding: 10
                rightPadding: 10
                text: Words.closerLook

                onClicked: {
                    pane.sideClosed = pane.sideOpen;
                    pane.sideAsked = !pane.sideClosed;
                }
            }
            SortChoice {
                current: App.list.order
                helps: Words.orderHelps
                orders: Words.orders

                onChosen: order => App.list.order = order
            }
        }
        ListNote {
            Layout.fillWidth: true
            end: Words.showAll
            // The kinds show by themselves which of them it is.
            says: App.list.onlyGroup >= 0 ? Words.only.arg(Words.groups[App.list.onlyGroup])
                : App.list.onlyKind >= 0 && !pane.sideOpen ? Words.only.arg(App.items.kinds[App.list.onlyKind].title) : ""

            onEnded: App.list.showAllGroups()
        }
        ListNote {
            Layout.fillWidth: true
            end: Words.chooseNone
            says: App.list.chosenText

            onEnded: App.list.chooseNone()
        }
        // No layout: one that was hidden with the list does not always hear that the kinds are there now.
        Item {
            Layout.fillHeight: true
            Layout.fillWidth: true

            KindsSide {
                anchors.bottom: parent.bottom
                anchors.left: parent.left
                anchors.top: parent.top
                visible: pane.sideOpen
                width: pane.sideWidth - 8
            }
            ListView {
                id: list

                Accessible.name: Words.list
                Accessible.role: Accessible.List
                anchors.fill: parent
                anchors.leftMargin: pane.sideWidth
                activeFocusOnTab: true
                boundsBehavior: Flickable.StopAtBounds
                clip: true
                keyNavigationEnabled: true
                model: App.rows

                function goTo(index: int) {
                    if (count === 0)
                        return;
                    currentIndex = index;
                    positionViewAtIndex(index, ListView.Contain);
                    currentItem.forceActiveFocus(Qt.TabFocusReason);
                    // A row that was just made has its whole height only after this.
                    Qt.callLater(list.showCurrent);
                }
                function showCurrent() {
                    forceLayout();
                    positionViewAtIndex(currentIndex, ListView.Contain);
                }

                // Whatever is reached by the keys in a row or below the last one is seen.
                readonly property Item reached: Window.activeFocusItem

                onReachedChanged: if (reached && (reached as Button)?.visualFocus) Qt.callLater(list.showReached)
                function showReached() {
                    let above = reached;
                    while (above && above !== contentItem)
                        above = above.parent;
                    if (!above)
                        return;
                    const top = reached.mapToItem(contentItem, 0, 0).y - 6;
                    contentY = Math.max(Math.min(contentY, top), top + reached.height + 12 - height);
                }

                // What has no row is told from the top, wherever the rows were scrolled to.
                onCountChanged: if (count === 0) Qt.callLater(list.positionViewAtBeginning)
                // A note above takes its room from the list.
                onHeightChanged: if (currentItem && currentItem.activeFocus) positionViewAtIndex(currentIndex, ListView.Contain)

                ScrollBar.vertical: ScrollBar {
                    policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                    width: 8
                }
                Keys.onPressed: event => {
                    const page = Math.max(1, Math.floor(height / Math.max(currentItem ? currentItem.height : 1, 1)) - 1);
                    const steps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page],
                                           [Qt.Key_PageDown, page], [Qt.Key_Up, -1], [Qt.Key_Down, 1]]);
                    if (!steps.has(event.key) || count === 0)
                        return;
                    event.accepted = true;
                    const before = App.rows.keyAt(currentIndex);
                    goTo(Math.max(0, Math.min(count - 1, currentIndex + steps.get(event.key))));
                    if (event.modifiers & Qt.ShiftModifier)
                        App.list.chooseTo(before, App.rows.keyAt(currentIndex));
                    else
                        App.list.chooseNone();
                }
                delegate: RowDelegate {
                    id: row

                    opened: App.places.opened === row.key
                    width: ListView.view.width - 12

                    onMenuWanted: (key, at) => pane.menuWanted(key, at)
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
                        // What was searched for may be of any length; what we say is said to its end.
                        maximumLineCount: App.list.searchText.length > 0 ? 2 : 12
                        padding: 24
                        text: App.list.searchText.length > 0 ? Words.nothingFound.arg(App.list.searchText)
                            : App.list.onlyKind >= 0 ? pane.kindNote
                            : App.scanning.hasSeenHome ? Words.nothingToClean : Words.homeUnseen
                        visible: App.rows.count === 0
                        width: parent.width
                        wrapMode: Text.Wrap
                    }
                    Line {
                        color: Theme.secondaryText
                        font.pixelSize: Theme.small
                        leftPadding: 8
                        rightPadding: 8
                        text: App.list.onlyKind < 0 ? App.scanning.unreadable : App.rows.count > 0 ? pane.kindNote : ""
                        topPadding: 12
                        visible: text.length > 0 && App.list.searchText.length === 0
                        width: parent.width
                        wrapMode: Text.Wrap
                    }
                    GrowthList {
                        searched: App.list.searchText.trim().length > 0 || App.list.onlyKind >= 0
                        width: parent.width

                        onGrowthWanted: pane.growthWanted()
                    }
                }
                // Only what a cleanup takes is seen to go: a list that shows something else now may be torn out of
                // the fading, and then rows that are gone stay to be seen.
                remove: App.cleaning.inHand.length > 0 ? fading : null
                move: Transition {
                    NumberAnimation { duration: Theme.shortTime; easing.type: Easing.OutCubic; property: "y" }
                }

                Transition {
                    id: fading

                    NumberAnimation { duration: Theme.shortTime; property: "opacity"; to: 0 }
                }
                // Until what was opened has its height.
                Timer {
                    id: settling

                    interval: 30

                    onTriggered: list.positionViewAtIndex(App.rows.indexOf(App.places.opened), ListView.Contain)
                }
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
        // What the list shows now is read from its first row on.
        function onViewChanged() {
            list.positionViewAtBeginning();
        }

        target: App.list
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
                // Whoever asked what it is reads on there.
                if (App.places.opened === App.places.scrollToRow && list.currentItem)
                    list.currentItem.forceActiveFocus(Qt.OtherFocusReason);
            }
        }
        function onOpenedChanged() {
            if (App.places.opened.length > 0)
                settling.restart();
        }

        target: App.places
    }
}
