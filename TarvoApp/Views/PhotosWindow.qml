import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// Pictures and films beside those they compete with; the user decides which are set aside.
SideWindow {
    id: window

    readonly property bool hasChapters: App.photos.chapters.length > 0

    asks: App.question.isOpenInPhotos
    first: grid
    height: 700
    minimumHeight: 520
    minimumWidth: 760
    title: SideWords.photos
    width: 1060

    onVisibleChanged: visible ? App.photos.show() : App.photos.leave()

    Connections {
        // Whoever goes on choosing has read what was told.
        function onChosenChanged() {
            window.told = "";
        }

        target: App.photos
    }
    Shortcut {
        enabled: App.photos.mayUndo
        sequence: "Ctrl+Z"

        onActivated: App.photos.undo()
    }
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
                enabled: App.photos.mayUndo
                help: Words.undoHelp
                text: Words.undo
                visible: App.photos.offersUndo

                onClicked: App.photos.undo()
            }
            PlainButton {
                enabled: !App.isDemo
                text: SideWords.otherFolder

                onClicked: dialog.ask(FileChoice.Folders, SideWords.otherFolder, "", place => App.photos.lookIn(place))
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
                    PhotoGrid {
                        id: grid

                        Layout.fillHeight: true
                        Layout.fillWidth: true
                        Layout.leftMargin: 12
                        Layout.topMargin: 6
                        focus: true
                    }
                }
            }
        }
        SideFooter {
            Layout.fillWidth: true
            message: window.told.length > 0 ? window.told : App.photos.chosenText

            onCloseWanted: window.close()

            PlainButton {
                enabled: App.photos.hasChosen
                kind: PlainButton.Link
                text: SideWords.chooseNone

                onClicked: {
                    // Afterwards this is disabled, and would keep the focus where nobody sees it.
                    grid.forceActiveFocus(Qt.TabFocusReason);
                    App.photos.chooseNone();
                }
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
