import QtQuick
import QtQuick.Layouts
import Tarvo

// One line across the window with an icon before it, and whatever can be done about it after it.
Rectangle {
    id: banner

    required property string shape
    required property string message
    property string more: ""
    property bool linesBelow: false
    property bool compact: false
    default property alias actions: row.data

    Accessible.description: more
    Accessible.name: message
    Accessible.role: Accessible.StaticText
    color: Theme.surface
    implicitHeight: Math.max(Theme.controlHeight, texts.implicitHeight) + (compact ? 8 : 16)

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 24
        anchors.rightMargin: 24
        spacing: 8

        Glyph {
            Layout.preferredHeight: Layout.preferredWidth
            Layout.preferredWidth: Math.round(18 * Theme.scale)
            color: Theme.secondaryText
            shape: banner.shape
        }
        ColumnLayout {
            id: texts

            Layout.fillWidth: true
            Layout.rightMargin: 8
            spacing: 1

            Line {
                Accessible.ignored: true
                Layout.fillWidth: true
                font.weight: banner.more.length > 0 ? Font.DemiBold : Font.Normal
                maximumLineCount: 2
                text: banner.message
                wrapMode: Text.WordWrap
            }
            Line {
                Accessible.ignored: true
                Layout.fillWidth: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                maximumLineCount: 2
                text: banner.more
                visible: text.length > 0 && !banner.compact
                wrapMode: Text.WordWrap
            }
        }
    }
    Rectangle {
        color: Theme.hairline
        height: 1
        width: parent.width
        y: banner.linesBelow ? parent.height - 1 : 0
    }
}
