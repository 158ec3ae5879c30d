import QtQuick
import QtQuick.Layouts
import Tarvo

// The way into the folder that is shown, and back.
RowLayout {
    id: way

    // Where the way begins, and the help of that.
    required property string start
    property string help: ""
    required property var titles
    required property var amounts
    // How many of the last folders are named; the way back to the others is one button.
    property int most: 100
    property bool loading: false
    property string note: ""

    readonly property int depth: titles.length

    signal backWanted(depth: int)
    signal stopWanted

    spacing: 2

    PlainButton {
        Accessible.name: Words.backTo.arg(way.start)
        enabled: way.depth > 0
        help: way.help
        kind: PlainButton.Link
        opacity: 1
        text: way.start

        onClicked: way.backWanted(0)
    }
    PlainButton {
        readonly property int at: way.depth - way.most - 1
        readonly property string folder: at >= 0 ? way.titles[at] : ""

        Accessible.name: Words.backTo.arg(folder)
        help: folder
        kind: PlainButton.Link
        text: "…"
        visible: way.depth > way.most

        onClicked: way.backWanted(way.depth - way.most)
    }
    Repeater {
        model: way.titles

        RowLayout {
            id: step

            required property int index
            required property string modelData
            readonly property bool last: index === way.depth - 1 // qmllint disable unqualified
            readonly property string amount: way.amounts[index] || "" // qmllint disable unqualified

            spacing: 2
            visible: index >= way.depth - way.most // qmllint disable unqualified

            Glyph {
                Layout.preferredHeight: Layout.preferredWidth
                Layout.preferredWidth: Math.round(14 * Theme.scale)
                color: Theme.secondaryText
                shape: "next"
            }
            PlainButton {
                Accessible.name: (step.last ? step.modelData : Words.backTo.arg(step.modelData)) + ", " + step.amount
                // Gives way where there is no room. Not by the width of the way itself, which would be laid out over and over.
                Layout.fillWidth: true
                Layout.maximumWidth: Layout.preferredWidth
                Layout.minimumWidth: Math.min(Layout.preferredWidth, Math.round(56 * Theme.scale))
                Layout.preferredWidth: Math.ceil(Math.min(200 * Theme.scale, implicitWidth))
                enabled: !step.last
                font.weight: step.last ? Font.DemiBold : Font.Normal
                kind: PlainButton.Link
                opacity: 1
                text: step.modelData

                onClicked: way.backWanted(step.index + 1) // qmllint disable unqualified
            }
            Line {
                Accessible.ignored: true
                Layout.rightMargin: 4
                color: Theme.secondaryText
                elide: Text.ElideNone
                font.pixelSize: Theme.small
                text: step.amount
                // Of a long way the end is what counts.
                visible: step.last || way.depth < 3 && way.most > 2 // qmllint disable unqualified
            }
        }
    }
    IconButton {
        name: Words.stop
        shape: "stop"
        side: Math.round(24 * Theme.scale)
        visible: way.loading

        onClicked: way.stopWanted()
    }
    Line {
        Layout.fillWidth: true
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        text: way.note
    }
}
