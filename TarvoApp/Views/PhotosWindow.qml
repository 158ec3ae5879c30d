import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// Pictures and films beside those they compete with; the user decides which are set aside.
SideWindow {
    id: window

    readonly property bool hasChapters: App.photos.chapters.length > 0

    height: 700
    minimumHeight: 520
    minimumWidth: 760
    title: SideWords.photos
    width: 1060

    onVisibleChanged: visible ? App.photos.show() : App.photos.forget()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.bottomMargin: 12
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 16
            spacing: 16

            ColumnLayout {
                spacing: 2

                Line {
                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.title
                    font.weight: Font.DemiBold
                    text: App.photos.folder
                }
                Line {
                    Layout.fillWidth: true
                    color: Theme.secondaryText
                    text: App.photos.busyText.length > 0 ? App.photos.busyText : App.photos.message
                    visible: text.length > 0 && window.hasChapters
                }
            }
            PlainButton {
                enabled: !App.isDemo
                text: SideWords.otherFolder

                onClicked: dialog.ask(FileChoice.Folder, SideWords.otherFolder, "", place => App.photos.lookIn(place))
            }
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.fillWidth: true
            color: Theme.surface

            Line {
                anchors.centerIn: parent
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                text: App.photos.busyText.length > 0 ? App.photos.busyText : App.photos.message
                visible: !window.hasChapters
                width: Math.min(parent.width - 48, Math.round(420 * Theme.scale))
                wrapMode: Text.WordWrap
            }
            RowLayout {
                anchors.fill: parent
                spacing: 0
                visible: window.hasChapters

                ChosenList {
                    id: list

                    Layout.fillHeight: true
                    Layout.leftMargin: 16
                    Layout.preferredWidth: Math.round(Math.min(220 * Theme.scale, window.width * 0.3))
                    bottomMargin: 8
                    chosen: App.photos.chapter
                    model: App.photos.chapters.length
                    name: SideWords.chapters
                    topMargin: 8
                    delegate: ChosenRow {
                        id: row

                        readonly property var chapter: App.photos.chapters[index] ?? null

                        more: chapter?.facts ?? ""
                        name: chapter?.title ?? ""

                        Column {
                            spacing: 2
                            width: parent.width

                            Line {
                                Accessible.ignored: true
                                font.weight: row.chosen ? Font.DemiBold : Font.Normal
                                text: row.name
                                width: parent.width
                            }
                            Line {
                                Accessible.ignored: true
                                color: Theme.secondaryText
                                font.pixelSize: Theme.small
                                text: row.more
                                width: parent.width
                            }
                        }
                    }

                    onPicked: index => App.photos.chapter = index
                }
                Rectangle {
                    Layout.fillHeight: true
                    Layout.leftMargin: 8
                    color: Theme.hairline
                    implicitWidth: 1
                }
                ColumnLayout {
                    Layout.fillHeight: true
                    Layout.fillWidth: true
                    spacing: 0

                    Line {
                        Layout.fillWidth: true
                        Layout.leftMargin: 16
                        Layout.rightMargin: 16
                        Layout.topMargin: 10
                        color: Theme.secondaryText
                        text: App.photos.hint
                        wrapMode: Text.WordWrap
                    }
                    GridView {
                        id: grid

                        // Another chapter begins at its beginning.
                        readonly property string title: App.photos.chapters[App.photos.chapter]?.title ?? ""
                        readonly property int columns: Math.max(1, Math.floor((width - 12) / Math.round(176 * Theme.scale)))

                        Accessible.name: title
                        Accessible.role: Accessible.List
                        Layout.fillHeight: true
                        Layout.fillWidth: true
                        Layout.leftMargin: 12
                        Layout.topMargin: 6
                        activeFocusOnTab: true
                        boundsBehavior: Flickable.StopAtBounds
                        cacheBuffer: cellHeight * 2
                        cellHeight: Math.round(186 * Theme.scale)
                        cellWidth: Math.floor((width - 12) / columns)
                        clip: true
                        focus: true
                        keyNavigationEnabled: true
                        model: App.photos.photos
                        reuseItems: true

                        onTitleChanged: {
                            currentIndex = 0;
                            positionViewAtBeginning();
                        }
                        Keys.onPressed: event => {
                            const page = columns * Math.max(1, Math.floor(height / cellHeight));
                            const steps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page], [Qt.Key_PageDown, page]]);
                            if (count === 0)
                                return;
                            if (event.key === Qt.Key_Space) {
                                App.photos.toggle(currentIndex);
                            } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
                                App.photos.preview(currentIndex);
                            } else if (steps.has(event.key)) {
                                currentIndex = Math.max(0, Math.min(count - 1, currentIndex + steps.get(event.key)));
                            } else {
                                return;
                            }
                            event.accepted = true;
                        }

                        ScrollBar.vertical: ScrollBar {
                            policy: grid.contentHeight > grid.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                            width: 8
                        }
                        delegate: PhotoTile {
                            current: GridView.isCurrentItem && grid.activeFocus
                            grouped: App.photos.proposes
                            height: grid.cellHeight
                            width: grid.cellWidth

                            onPicked: {
                                grid.forceActiveFocus(Qt.MouseFocusReason);
                                grid.currentIndex = index;
                            }
                            onPreviewWanted: App.photos.preview(index)
                            onToggled: {
                                grid.currentIndex = index;
                                App.photos.toggle(index);
                            }
                        }
                    }
                }
            }
        }
        SideFooter {
            Layout.fillWidth: true
            message: App.activity.notice.length > 0 ? App.activity.notice : App.photos.chosenText

            onCloseWanted: window.close()

            PlainButton {
                enabled: App.photos.hasChosen
                kind: PlainButton.Link
                text: SideWords.chooseNone

                onClicked: App.photos.chooseNone()
            }
            PlainButton {
                help: SideWords.chooseRestHelp
                text: SideWords.chooseRest
                visible: App.photos.proposes

                onClicked: App.photos.chooseRest()
            }
            PlainButton {
                enabled: App.photos.hasChosen && App.cleaning.mayClean
                kind: PlainButton.Primary
                text: SideWords.setAside

                onClicked: App.photos.setAside()
            }
        }
    }
    Question {
        asks: App.question.isOpenInPhotos
    }
    FileChoice {
        id: dialog
    }
}
