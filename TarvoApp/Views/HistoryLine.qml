import QtQuick
import QtQuick.Layouts
import Tarvo

// A thing of a cleanup; or, below it, one of the pieces that were set aside.
Item {
    id: item

    required property var line
    readonly property bool isPiece: line?.isPiece ?? false
    readonly property bool failed: line?.failed ?? false
    readonly property string what: (isPiece ? line?.place : line?.title) ?? ""
    readonly property string more: line?.text ?? ""

    // The keyboard has come here.
    signal reached

    Accessible.name: [what, line?.bytes ?? "", more].filter(part => part.length > 0).join(", ")
    Accessible.role: Accessible.ListItem
    implicitHeight: row.implicitHeight + (isPiece ? 4 : 12)

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.leftMargin: item.isPiece ? 36 : 16
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Glyph {
            Layout.alignment: Qt.AlignTop
            Layout.preferredHeight: Layout.preferredWidth
            Layout.preferredWidth: Math.round(16 * Theme.scale)
            color: Theme.danger
            shape: "warning"
            visible: item.failed
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            Line {
                Accessible.ignored: true
                Layout.fillWidth: true
                color: item.isPiece ? Theme.secondaryText : Theme.text
                elide: item.isPiece ? Text.ElideMiddle : Text.ElideRight
                text: item.what
            }
            Line {
                Accessible.ignored: true
                Layout.fillWidth: true
                color: item.failed ? Theme.danger : Theme.secondaryText
                font.pixelSize: Theme.small
                text: item.more
                visible: text.length > 0
                wrapMode: Text.WordWrap
            }
        }
        Line {
            Accessible.ignored: true
            Layout.alignment: Qt.AlignTop
            elide: Text.ElideNone
            text: item.line?.bytes ?? ""
            visible: text.length > 0
        }
        PlainButton {
            Accessible.name: text + ": " + item.what
            enabled: !App.activity.isBusy
            help: SideWords.putBackHelp
            text: SideWords.putBack
            visible: (item.line?.key ?? "").length > 0

            onActiveFocusChanged: if (activeFocus) item.reached()
            onClicked: App.holding.putBack(item.line.key)
        }
    }
}
