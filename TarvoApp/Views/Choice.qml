import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// One of a few words. The arrows go from one to the next.
Rectangle {
    id: choice

    required property list<string> words
    property int current: 0
    property int role: Accessible.RadioButton
    readonly property Item currentWord: items.count > 0 ? items.itemAt(current) : null

    signal chosen(index: int)

    border.color: Theme.dark ? Theme.hairline : "transparent"
    color: Theme.dark ? Theme.window : Theme.raised
    implicitHeight: row.implicitHeight + 4
    implicitWidth: row.implicitWidth + 4
    radius: Theme.buttonRadius

    function go(index: int): void {
        const word = items.itemAt(index);
        if (word) {
            word.forceActiveFocus(Qt.TabFocusReason);
            chosen(index);
        }
    }

    Row {
        id: row

        anchors.centerIn: parent

        Repeater {
            id: items

            model: choice.words

            Button {
                id: word

                required property string modelData
                required property int index
                readonly property bool isChosen: index === choice.current // qmllint disable unqualified

                Accessible.checkable: true
                Accessible.checked: isChosen
                Accessible.name: modelData
                Accessible.selected: isChosen
                activeFocusOnTab: isChosen
                focusPolicy: Qt.StrongFocus
                font.pixelSize: Theme.body
                font.weight: isChosen ? Font.DemiBold : Font.Normal
                implicitHeight: Theme.controlHeight
                leftPadding: 14
                rightPadding: 14
                text: modelData

                Keys.onLeftPressed: choice.go(index - 1) // qmllint disable unqualified
                Keys.onRightPressed: choice.go(index + 1) // qmllint disable unqualified
                // A button says its own role when it is complete.
                Component.onCompleted: Accessible.role = choice.role // qmllint disable unqualified
                onClicked: choice.chosen(index) // qmllint disable unqualified

                background: Rectangle {
                    border.color: word.isChosen ? Theme.hairline : "transparent"
                    color: !word.isChosen ? "transparent" : Theme.dark ? Theme.raised : Theme.surface
                    radius: Theme.buttonRadius - 1

                    FocusRing {
                        anchors.margins: -2
                        visible: word.visualFocus
                    }
                }
                contentItem: Line {
                    Accessible.ignored: true
                    color: word.isChosen || word.hovered ? Theme.text : Theme.secondaryText
                    font: word.font
                    horizontalAlignment: Text.AlignHCenter
                    text: word.text
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
