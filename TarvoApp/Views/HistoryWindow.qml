import QtQuick
import QtQuick.Layouts
import Tarvo

// What the cleanups did, and putting single things back.
SideWindow {
    id: window

    readonly property bool hasCleanups: App.history.cleanups.length > 0

    height: 620
    minimumHeight: 520
    minimumWidth: 760
    title: SideWords.history
    width: 900

    onVisibleChanged: visible ? App.history.show() : App.history.forget()

    Shortcut {
        enabled: App.holding.canUndo && !App.activity.isBusy
        sequence: "Ctrl+Z"

        onActivated: App.holding.undoLastCleanup()
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Line {
            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 16
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: App.history.total
            visible: text.length > 0
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.fillWidth: true
            color: Theme.surface

            Line {
                anchors.centerIn: parent
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                text: App.history.isBusy ? SideWords.looking : App.history.emptyText
                visible: !window.hasCleanups
                width: Math.min(parent.width - 48, Math.round(420 * Theme.scale))
                wrapMode: Text.WordWrap
            }
            RowLayout {
                anchors.fill: parent
                spacing: 0
                visible: window.hasCleanups

                ChosenList {
                    id: list

                    Layout.fillHeight: true
                    Layout.leftMargin: 16
                    Layout.preferredWidth: window.width * 0.36
                    bottomMargin: 8
                    chosen: App.history.chosen
                    focus: true
                    model: App.history.cleanups.length
                    name: SideWords.cleanups
                    topMargin: 8
                    delegate: ChosenRow {
                        id: row

                        readonly property var cleanup: App.history.cleanups[index] ?? null

                        more: cleanup?.facts ?? ""
                        name: cleanup?.date ?? ""

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
                                wrapMode: Text.WordWrap
                            }
                        }
                    }

                    onPicked: index => {
                        window.told = "";
                        App.history.chosen = index;
                    }
                }
                Rectangle {
                    Layout.fillHeight: true
                    Layout.leftMargin: 8
                    color: Theme.hairline
                    implicitWidth: 1
                }
                HistoryItems {
                    Layout.fillHeight: true
                    Layout.fillWidth: true
                }
            }
        }
        SideFooter {
            Layout.fillWidth: true
            message: window.told.length > 0 ? window.told : window.hasCleanups ? App.history.emptyText : ""

            onCloseWanted: window.close()
        }
    }
}
