import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// The folder explorer beside the map.
Rectangle {
    id: pane

    objectName: "explorer"

    signal menuWanted(row: ExplorerRow, at: Item)

    readonly property bool roomy: width > 620 * Theme.scale
    // Whatever stands above the rows takes as little of their height as it can.
    property bool tight: false
    readonly property bool wide: roomy || tight

    function takeFilter() {
        filter.take();
    }
    function takeFocus() {
        list.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    component Marks: ListNote {
        brief: pane.tight // qmllint disable unqualified
        end: SideWords.clearMarks
        says: App.explorer.markedText

        onEnded: App.explorer.clearMarks()
    }

    border.color: Theme.hairline
    color: Theme.surface
    radius: Theme.cardRadius

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: pane.tight ? 6 : 12
        spacing: pane.tight ? 2 : 4

        RowLayout {
            spacing: 6

            SearchField {
                id: filter

                Layout.fillWidth: true
                name: SideWords.filter
                narrowed: App.explorer.filter

                Keys.onDownPressed: pane.takeFocus()
                onWanted: letters => App.explorer.filter = letters
            }
            SortChoice {
                current: App.explorer.order
                helps: SideWords.entryOrderHelps
                orders: SideWords.entryOrders

                onChosen: order => App.explorer.order = order
            }
            AgeChoice {}
            PlainButton {
                enabled: App.explorer.markedText.length > 0 && App.cleaning.mayClean
                help: App.explorer.markedText.length === 0 ? SideWords.markFirst : SideWords.setAsideHelp
                kind: PlainButton.Primary
                leftPadding: 10
                rightPadding: 10
                text: SideWords.setAside

                onClicked: App.explorer.setAside(-1)
            }
        }
        // Below each other only where there is no room beside each other.
        GridLayout {
            columns: pane.wide ? 2 : 1
            rowSpacing: 4

            Breadcrumb {
                Layout.fillWidth: true
                amounts: App.explorer.amounts
                most: pane.roomy ? 3 : 1
                note: App.explorer.facts
                start: SideWords.homeFolder
                titles: App.explorer.titles

                onBackWanted: depth => App.explorer.leaveTo(depth)
            }
            Marks {
                visible: pane.wide && says.length > 0
            }
            ListNote {
                Layout.columnSpan: parent.columns
                Layout.fillWidth: true
                brief: pane.tight
                end: SideWords.anyAge
                says: App.explorer.ageText

                onEnded: App.explorer.age = 0
            }
        }
        ListView {
            id: list

            readonly property int last: App.explorer.titles.length - 1

            Accessible.name: SideWords.explore + ", " + (last < 0 ? SideWords.homeFolder : App.explorer.titles[last])
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            currentIndex: App.explorer.current
            highlightMoveDuration: 0
            model: App.explorer.entries

            // A note above takes its room from the list, and with it the row that was just marked.
            onHeightChanged: if (currentIndex >= 0) positionViewAtIndex(currentIndex, ListView.Contain)

            ScrollBar.vertical: ScrollBar {
                policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                width: 8
            }
            // Esc first ends what was done here, and only then what was done on the map.
            Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
                                              && (App.explorer.filter.length > 0 || App.explorer.markedText.length > 0)
            Keys.onPressed: event => {
                const previews = event.modifiers === Qt.AltModifier && [Qt.Key_Return, Qt.Key_Enter].includes(event.key);
                if (previews && currentItem)
                    App.places.showPreview((currentItem as ExplorerRow).key);
                event.accepted = previews || !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier)) && take(event);
            }

            function take(event: var): bool {
                const page = Math.max(1, Math.floor(height / Math.max(currentItem ? currentItem.height : 1, 1)) - 1);
                const steps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page],
                                       [Qt.Key_PageDown, page], [Qt.Key_Up, -1], [Qt.Key_Down, 1]]);
                if (steps.has(event.key)) {
                    App.explorer.moveTo(Math.max(0, Math.min(count - 1, currentIndex + steps.get(event.key))));
                    return true;
                }
                switch (event.key) {
                case Qt.Key_Return:
                case Qt.Key_Enter:
                case Qt.Key_Right:
                    App.explorer.enter(currentIndex);
                    return true;
                case Qt.Key_Backspace:
                case Qt.Key_Left:
                    App.explorer.leave();
                    return true;
                case Qt.Key_Space:
                    App.explorer.toggleMark(currentIndex);
                    return true;
                case Qt.Key_Delete:
                    App.explorer.setAside(-1);
                    return true;
                case Qt.Key_A:
                    App.explorer.showNextAge();
                    return true;
                case Qt.Key_Slash:
                    pane.takeFilter();
                    return true;
                case Qt.Key_Escape:
                    if (App.explorer.filter.length > 0)
                        App.explorer.filter = "";
                    else if (App.explorer.markedText.length > 0)
                        App.explorer.clearMarks();
                    else
                        return false;
                    return true;
                case Qt.Key_Menu:
                case Qt.Key_F10:
                    if (!currentItem || event.key === Qt.Key_F10 && !(event.modifiers & Qt.ShiftModifier))
                        return false;
                    pane.menuWanted(currentItem as ExplorerRow, currentItem);
                    return true;
                default:
                    return false;
                }
            }
            delegate: ExplorerRow {
                id: row

                width: ListView.view.width - 12

                onMenuWanted: at => pane.menuWanted(row, at)
                onPicked: {
                    ListView.view.forceActiveFocus(Qt.MouseFocusReason);
                    App.explorer.moveTo(index);
                }
            }

            Line {
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                padding: 24
                text: App.explorer.emptyText
                visible: text.length > 0
                width: parent.width
                wrapMode: Text.WordWrap
            }
        }
        // Its room is kept: a mark must not push the rows from below the pointer.
        Item {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.max(Math.round(26 * Theme.scale), marks.implicitHeight)
            visible: !pane.wide

            Marks {
                id: marks

                visible: says.length > 0
                width: parent.width
            }
        }
    }
}
