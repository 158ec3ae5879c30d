import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What the colors of the map mean. Pressing one shows what is of that color alone.
Row {
    id: legend

    spacing: 2

    Repeater {
        model: Words.groups

        Button {
            id: entry

            required property int index
            required property string modelData
            readonly property bool only: App.list.onlyGroup === index
            // So that it is asked for again when there are other rows.
            readonly property bool something: App.rows.count >= 0 && App.list.hasGroup(index)

            Accessible.checkable: true
            Accessible.checked: only
            Accessible.description: Words.onlyHelp
            Accessible.name: Words.only.arg(modelData)
            enabled: something || only
            focusPolicy: Qt.StrongFocus
            implicitHeight: Math.round(26 * Theme.scale)
            leftPadding: 7
            rightPadding: leftPadding
            text: modelData

            Keys.onEnterPressed: clicked()
            Keys.onReturnPressed: clicked()
            onClicked: App.list.toggleGroup(index)

            Tip {
                text: entry.only ? Words.onlyAgain : Words.only.arg(entry.modelData)
                visible: entry.hovered
            }

            background: Rectangle {
                border.color: entry.only ? Theme.hairline : Qt.alpha(Theme.hairline, 0)
                color: Qt.alpha(entry.only ? Theme.surface : Theme.text, entry.only ? 1 : entry.hovered ? 0.07 : 0)
                radius: Theme.buttonRadius

                FocusRing {
                    visible: entry.visualFocus
                }
            }
            contentItem: Row {
                opacity: !entry.enabled ? 0.45 : App.list.onlyGroup < 0 || entry.only ? 1 : 0.6
                spacing: 6

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.groups[entry.index]
                    height: width
                    radius: 3
                    width: 10
                }
                Line {
                    Accessible.ignored: true
                    anchors.verticalCenter: parent.verticalCenter
                    color: entry.only ? Theme.text : Theme.secondaryText
                    font.pixelSize: Theme.small
                    text: entry.modelData
                }
            }
        }
    }
}
