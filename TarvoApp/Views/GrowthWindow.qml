import QtQuick
import QtQuick.Layouts
import Tarvo

// How things grew and shrank over the scans that are stored.
SideWindow {
    id: window

    readonly property bool hasLines: App.growth.emptyText.length === 0 && App.growth.lines.length > 0
    readonly property string key: hasLines ? App.growth.lines[App.growth.chosen]?.key ?? "" : ""

    height: 640
    minimumHeight: 520
    minimumWidth: 760
    title: SideWords.growth
    width: 860

    onVisibleChanged: visible ? App.growth.show() : App.growth.forget()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Line {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.margins: 48
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            text: App.growth.emptyText.length > 0 ? App.growth.emptyText : SideWords.looking
            verticalAlignment: Text.AlignVCenter
            visible: !window.hasLines
            wrapMode: Text.WordWrap
        }
        Line {
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 16
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: App.growth.title
            visible: window.hasLines
        }
        Line {
            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 2
            color: Theme.secondaryText
            text: App.growth.facts
            visible: window.hasLines
            wrapMode: Text.WordWrap
        }
        GrowthChart {
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.preferredHeight: window.height * 0.34
            Layout.rightMargin: 24
            visible: window.hasLines
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.topMargin: 12
            color: Theme.surface
            visible: window.hasLines

            ChosenList {
                anchors.fill: parent
                anchors.leftMargin: 16
                anchors.rightMargin: 4
                bottomMargin: 8
                chosen: App.growth.chosen
                focus: true
                model: App.growth.lines.length
                name: SideWords.growth
                topMargin: 8
                delegate: GrowthRow {}

                onPicked: index => App.growth.chosen = index
            }
        }
        SideFooter {
            Layout.fillWidth: true
            message: window.hasLines ? SideWords.growthHelp : ""

            onCloseWanted: window.close()

            // A button that is disabled does not notice the pointer.
            Item {
                implicitHeight: show.implicitHeight
                implicitWidth: show.implicitWidth
                visible: window.hasLines

                HoverHandler {
                    id: over
                }
                Tip {
                    text: SideWords.notInList
                    visible: over.hovered && !show.enabled
                }
                PlainButton {
                    id: show

                    Accessible.description: enabled ? "" : SideWords.notInList
                    // Whatever the list shows now: it turns to what shows the row.
                    enabled: App.places.hasRow(window.key)
                    text: SideWords.showInList

                    onClicked: App.places.revealRow(window.key)
                }
            }
        }
    }
}
