import QtQuick
import QtQuick.Layouts
import Tarvo

// What is ticked, and what can be done with it.
Rectangle {
    id: footer

    property bool compact: false

    readonly property bool cleans: App.cleaning.mayClean && App.ticked.hasTicked
    // What can be pressed and does nothing is a riddle.
    readonly property string cleanHelp: !App.cleaning.mayClean ? Words.cleanLater : App.ticked.hasTicked ? App.ticked.cleanHelp : Words.tickFirst

    readonly property int edge: compact ? 7 : 12
    // What is set aside is told whole: in smaller letters where it takes more lines, and above the buttons where even
    // those were too many.
    readonly property real beside: width - 48 - 16 - row.implicitWidth
    readonly property real lines: metrics.advanceWidth / Math.max(1, beside)
    readonly property bool above: lines > 2.6

    color: Theme.surface
    implicitHeight: 2 * edge + (above ? said.height + 8 + row.implicitHeight : Math.max(said.height, row.implicitHeight))

    Rectangle {
        color: Theme.hairline
        height: 1
        width: parent.width
    }
    TextMetrics {
        id: metrics

        font.pixelSize: Theme.strong
        text: said.text
    }
    Line {
        id: said

        Accessible.name: App.ticked.selectedText
        Accessible.role: Accessible.StaticText
        anchors.left: parent.left
        anchors.leftMargin: 24
        font.pixelSize: footer.lines > 1.8 ? Theme.body : Theme.strong
        maximumLineCount: 3
        text: Words.unbroken(App.ticked.selectedText)
        width: footer.above ? footer.width - 48 : footer.beside
        wrapMode: Text.WordWrap
        y: footer.above ? footer.edge : Math.round((footer.height - height) / 2)
    }
    RowLayout {
        id: row

        anchors.bottom: parent.bottom
        anchors.bottomMargin: footer.above ? footer.edge : Math.round((footer.height - height) / 2)
        anchors.right: parent.right
        anchors.rightMargin: 24
        spacing: 8

        PlainButton {
            enabled: App.ticked.hasTicked
            help: Words.deselectAllHelp
            kind: PlainButton.Link
            text: Words.deselectAll

            onClicked: {
                // Afterwards this is disabled, and would keep the focus where nobody sees it.
                if (activeFocus)
                    safe.forceActiveFocus(Qt.TabFocusReason);
                App.ticked.deselectAll();
            }
        }
        PlainButton {
            id: safe

            enabled: App.cleaning.mayClean
            help: ModelWords.selectSafeHelp
            text: Words.selectSafe

            onClicked: App.ticked.selectSafe()
        }
        // A button that is disabled does not notice the pointer.
        Item {
            implicitHeight: clean.implicitHeight
            implicitWidth: clean.implicitWidth

            HoverHandler {
                id: over
            }
            Tip {
                text: footer.cleanHelp
                visible: over.hovered
            }
            PlainButton {
                id: clean

                Accessible.description: footer.cleanHelp
                anchors.fill: parent
                enabled: footer.cleans
                implicitHeight: Math.round(36 * Theme.scale)
                kind: PlainButton.Primary
                leftPadding: 20
                text: App.ticked.hasTicked ? App.ticked.cleanTitle + "…" : Words.clean

                onClicked: App.cleaning.requestClean()
            }
        }
    }
}
