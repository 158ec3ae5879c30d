import QtQuick
import QtQuick.Layouts
import Tarvo

// What goes on instead of choosing: how far it is, and a way to stop that nobody misses.
Rectangle {
    id: bar

    property bool compact: false

    color: Theme.surface
    implicitHeight: row.implicitHeight + (compact ? 14 : 24)

    Rectangle {
        color: Theme.hairline
        height: 1
        width: parent.width
    }
    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.margins: 24
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 16

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 6

            Line {
                Accessible.name: text
                Accessible.role: Accessible.StaticText
                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: App.activity.progressText.length > 0 ? App.scanning.statusText + "  " + App.activity.progressText
                                                           : App.scanning.statusText
            }
            ProgressLine {
                Layout.fillWidth: true
            }
        }
        PlainButton {
            help: (App.activity.phase === Kinds.Cleaning ? Words.stopCleaningHelp : Words.stopHelp) + " (Esc)"
            implicitHeight: Math.round(36 * Theme.scale)
            text: Words.stop

            onClicked: App.activity.stop()
        }
    }
}
