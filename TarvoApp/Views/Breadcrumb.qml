import QtQuick
import QtQuick.Layouts
import Tarvo

// The way into the folder that the map shows, and back.
RowLayout {
    id: way

    spacing: 2

    PlainButton {
        Accessible.name: Words.backTo.arg(Words.disk)
        enabled: App.map.depth > 0
        help: Words.escapeHelp
        kind: PlainButton.Link
        opacity: 1
        text: Words.disk

        onClicked: App.map.zoomOut(0)
    }
    Repeater {
        model: App.map.zoomTitles

        RowLayout {
            id: step

            required property int index
            required property string modelData
            readonly property bool last: index === App.map.depth - 1
            readonly property string amount: App.map.zoomAmounts[index] || ""

            spacing: 2

            Glyph {
                Layout.preferredHeight: Layout.preferredWidth
                Layout.preferredWidth: Math.round(14 * Theme.scale)
                color: Theme.secondaryText
                shape: "next"
            }
            PlainButton {
                Accessible.name: (step.last ? step.modelData : Words.backTo.arg(step.modelData)) + ", " + step.amount
                Layout.maximumWidth: Math.round(200 * Theme.scale)
                enabled: !step.last
                font.weight: step.last ? Font.DemiBold : Font.Normal
                kind: PlainButton.Link
                opacity: 1
                text: step.modelData

                onClicked: App.map.zoomOut(step.index + 1)
            }
            Line {
                Accessible.ignored: true
                Layout.rightMargin: 4
                color: Theme.secondaryText
                elide: Text.ElideNone
                font.pixelSize: Theme.small
                text: step.amount
                // Of a long way the end is what counts.
                visible: step.last || App.map.depth < 3
            }
        }
    }
    IconButton {
        name: Words.stop
        shape: "stop"
        side: Math.round(24 * Theme.scale)
        visible: App.map.zoomLoading

        onClicked: App.map.zoomOut(App.map.depth)
    }
    Line {
        Layout.fillWidth: true
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        text: App.map.zoomLoading ? Words.opening : App.map.skippedText ? Words.skipped.arg(App.map.skippedText) : ""
    }
}
